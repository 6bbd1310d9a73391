// Measures this library and its peers in one run, and tells the ratios.
//
//     assetconnector_bench [--json FILE] [--benchmark_... options]

#include "assetconnector/host/XMLPlatform.h"
#include "bench/Codec.h"
#include "bench/Report.h"

#include <fstream>
#include <iostream>
#include <string_view>

int main(int argc, char** argv)
{
    char repetitions[] = "--benchmark_repetitions=7";
    char interleaved[] = "--benchmark_enable_random_interleaving=true";
    char minimum[] = "--benchmark_min_time=0.1";
    std::vector<char*> arguments{argv[0], repetitions, interleaved, minimum};
    const char* jsonFile = nullptr;
    for (int i = 1; i < argc; ++i)
        if (std::string_view(argv[i]) == "--json" && i + 1 < argc)
            jsonFile = argv[++i];
        else
            arguments.push_back(argv[i]);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;

    const AC::XMLPlatform platform;
    Bench::Report report;
    {
        ReferenceHost::Host host(ReferenceHost::Stations::Delivery::kByHand);
        const ReferenceHost::Installation installation(host);
        Bench::MeasureCodecs();
        Bench::MeasureHostile();
        Bench::MeasureConnectors(host);
        Bench::MeasureRecorded(host);
        benchmark::RunSpecifiedBenchmarks(&report);
        benchmark::Shutdown();  // what the benchmarks hold needs the host
    }
    std::ofstream json;
    if (jsonFile != nullptr)
        json.open(jsonFile);
    report.Print(std::cout, jsonFile == nullptr ? nullptr : &json);
    if (!json.flush()) {
        std::cerr << "error: cannot write " << jsonFile << '\n';
        return 1;
    }
    return 0;
}
