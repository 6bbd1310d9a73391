// Runs a fuzz target over the files of a folder, or over single files.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using std::filesystem::path;

void Run(const path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> input{std::istreambuf_iterator<char>(stream), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

/// \return The file itself, or the files of a folder; nothing for what is not there.
std::vector<path> FilesOf(const path& name)
{
    std::vector<path> files;
    if (std::filesystem::is_directory(name))
        for (const auto& entry : std::filesystem::directory_iterator(name))
            files.push_back(entry.path());
    else if (std::filesystem::exists(name))
        files.push_back(name);
    return files;
}

}  // namespace

int main(int argc, char** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i)
        for (const path& file : FilesOf(argv[i])) {
            Run(file);
            ++count;
        }
    std::printf("%d inputs\n", count);
    return count == 0 ? 1 : 0;
}
