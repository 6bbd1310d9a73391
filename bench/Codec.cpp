#include "bench/Codec.h"

namespace Bench {
namespace {

constexpr std::size_t kManyItems = 30000;
constexpr int kFewRepetitions = 3;

std::vector<Codec>& Codecs()
{
    static std::vector<Codec> codecs;
    return codecs;
}

void MeasureDirection(const char* directionName, const Codec& codec, const Direction& direction,
                      const WorkKind& kind)
{
    const bool isAssets = &kind == &WorkKinds().front();
    if (direction.prepare == nullptr || !(isAssets || direction.everyKind))
        return;
    for (const std::size_t items : kind.sizes) {
        const std::string name =
            std::string(directionName) + "/" + kind.name + "/" + std::to_string(items) + "/" + codec.name;
        const auto prepare = [&kind, items, prepare = direction.prepare, counts = codec.countsMemory] {
            const Work& work = WorkOf(kind, items);
            return Prepared{prepare(work), counts ? work.utf16.size() * sizeof(char16_t) : 0};
        };
        benchmark::internal::Benchmark& measured = Measure(name, items, prepare);
        if (direction.isQuadratic && items >= kManyItems)
            measured.Iterations(1)->Repetitions(kFewRepetitions);
    }
}

}  // namespace

AddedCodec::AddedCodec(const Codec& codec)
{
    Codecs().push_back(codec);
}

benchmark::internal::Benchmark& Measure(const std::string& name, std::size_t items,
                                        const boost::function<Prepared()>& prepare)
{
    return *benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        const Prepared prepared = prepare();
        for (auto unused : state)
            prepared.round();
        state.counters["items"] = static_cast<double>(items);
        if (prepared.bytes != 0)
            state.counters["peak"] =
                static_cast<double>(PeakBytes(prepared.round)) / static_cast<double>(prepared.bytes);
    });
}

void MeasureCodecs()
{
    for (const WorkKind& kind : WorkKinds())
        for (const Codec& codec : Codecs()) {
            MeasureDirection("decode", codec, codec.decode, kind);
            if (kind.isEncoded)
                MeasureDirection("encode", codec, codec.encode, kind);
        }
}

}  // namespace Bench
