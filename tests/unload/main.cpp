// Loads the plugin, and with it the shared library, a hundred times: each time both must really go.
// usage: unload_test PLUGIN LIBRARY

#include <xercesc/util/PlatformUtils.hpp>

#include <cstdio>
#include <dlfcn.h>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();  // the XML library stays loaded
    for (int round = 0; round < 100; ++round) {
        void* const plugin = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        if (plugin == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            return 1;
        }
        const auto use = reinterpret_cast<int (*)()>(dlsym(plugin, "UseLibrary"));
        const int left = use();
        dlclose(plugin);
        for (int i = 1; i < argc; ++i) {
            if (dlopen(argv[i], RTLD_NOW | RTLD_NOLOAD) != nullptr || left != 0) {
                std::fprintf(stderr, "round %d: %s stays, %d blocks left\n", round, argv[i], left);
                return 1;
            }
        }
    }
    xercesc::XMLPlatformUtils::Terminate();
    return 0;
}
