#include "tests/support/System.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

// clang-format off
#include <windows.h>
#include <psapi.h>  // needs the other one before it
// clang-format on

namespace TestSystem {

const char* const kTemporaryDirectory = "TMP";

std::size_t ResidentBytes()
{
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
    return counters.WorkingSetSize;
}

bool RunOnStack(std::size_t size, void (*run)(void*), void* argument)
{
    std::pair<void (*)(void*), void*> call(run, argument);
    const auto start = [](void* given) -> DWORD {
        const auto& what = *static_cast<decltype(call)*>(given);
        what.first(what.second);
        return 0;
    };
    const HANDLE thread =
        CreateThread(nullptr, size, start, &call, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr)
        return false;
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    return true;
}

void SetVariable(const char* name, const char* value)
{
    _putenv_s(name, value == nullptr ? "" : value);
    SetEnvironmentVariableA(name, value);
}

Module::Module(const std::string& file) : mHandle(LoadLibraryW(std::filesystem::u8path(file).c_str())) {}

Module::~Module()
{
    if (mHandle != nullptr)
        FreeLibrary(static_cast<HMODULE>(mHandle));
}

void* Module::Find(const char* function) const
{
    return mHandle == nullptr
               ? nullptr
               : reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(mHandle), function));
}

bool Module::IsLoaded(const std::string& file)
{
    return GetModuleHandleW(std::filesystem::u8path(file).filename().c_str()) != nullptr;
}

}  // namespace TestSystem
