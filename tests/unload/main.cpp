// Loads the plugin, and with it the shared library, a hundred times: each time both must really go.
// usage: unload_test PLUGIN LIBRARY

#include "tests/support/System.h"

#include <xercesc/util/PlatformUtils.hpp>

#include <cstdio>

namespace {

/// \return How many blocks of the host's memory are left; -1 when the plugin cannot be used.
int Use(const char* file)
{
    const TestSystem::Module plugin(file);
    const auto use = reinterpret_cast<int (*)()>(plugin.Find("UseLibrary"));
    return use == nullptr ? -1 : use();
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();  // the XML library stays loaded
    for (int round = 0; round < 100; ++round) {
        const int left = Use(argv[1]);
        for (int i = 1; i < argc; ++i) {
            if (TestSystem::Module::IsLoaded(argv[i]) || left != 0) {
                std::fprintf(stderr, "round %d: %s stays, %d blocks left\n", round, argv[i], left);
                return 1;
            }
        }
    }
    xercesc::XMLPlatformUtils::Terminate();
    return 0;
}
