#include "tests/support/System.h"

#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <pthread.h>
#include <unistd.h>
#include <utility>

namespace TestSystem {

const char* const kTemporaryDirectory = "TMPDIR";

std::size_t ResidentBytes()
{
    std::ifstream file("/proc/self/statm");
    std::size_t size = 0;
    std::size_t resident = 0;
    file >> size >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

bool RunOnStack(std::size_t size, void (*run)(void*), void* argument)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, size);
    std::pair<void (*)(void*), void*> call(run, argument);
    pthread_t thread;
    const auto start = [](void* given) -> void* {
        const auto& what = *static_cast<decltype(call)*>(given);
        what.first(what.second);
        return nullptr;
    };
    const bool isStarted = pthread_create(&thread, &attributes, start, &call) == 0;
    if (isStarted)
        pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return isStarted;
}

void SetVariable(const char* name, const char* value)
{
    if (value == nullptr)
        unsetenv(name);
    else
        setenv(name, value, 1);
}

Module::Module(const std::string& file) : mHandle(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {}

Module::~Module()
{
    if (mHandle != nullptr)
        dlclose(mHandle);
}

void* Module::Find(const char* function) const
{
    return mHandle == nullptr ? nullptr : dlsym(mHandle, function);
}

bool Module::IsLoaded(const std::string& file)
{
    return dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr;
}

}  // namespace TestSystem
