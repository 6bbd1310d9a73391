// Writes files for panel authors, each told by its name: protocol_files PATH...

#include "protocol/ClientModel.h"
#include "protocol/Schemas.h"
#include "protocol/TypeScript.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

constexpr struct
{
    const char* name;
    std::string (*make)(const Protocol::Model& model);
} kFiles[] = {
    {"notifications.xsd", Protocol::NotificationsXsd},
    {"requests.rng", Protocol::RequestsRng},
    {"assetconnector.d.ts", Protocol::TypeScript},
    {"model.js", Protocol::ClientModel},
};

void Write(const std::filesystem::path& path)
{
    const auto* const file = std::find_if(std::begin(kFiles), std::end(kFiles),
                                          [&path](const auto& row) { return path.filename() == row.name; });
    if (file == std::end(kFiles))
        throw std::runtime_error("nothing is known of a file " + path.string());
    std::ofstream stream(path, std::ios::binary);
    if (!(stream << file->make(Protocol::ThisModel())).flush())
        throw std::runtime_error(path.string() + " cannot be written");
}

}  // namespace

int main(int count, char** arguments)
{
    try {
        std::for_each(arguments + 1, arguments + count, Write);
        return 0;
    } catch (const std::exception& exception) {
        std::cerr << "error: " << exception.what() << '\n';
        return 1;
    }
}
