#pragma once

#include <cstddef>
#include <string>

/// What tests ask of the system, once for each: posix/System.cpp and windows/System.cpp.
namespace TestSystem {

/// \return The memory of this process that is not swapped out.
std::size_t ResidentBytes();

/// Runs the function on a thread with so much stack. \return Whether there was one.
bool RunOnStack(std::size_t size, void (*run)(void*), void* argument);

/// The variable of the environment that tells where temporary files go.
extern const char* const kTemporaryDirectory;

/// \param value Null: removes the variable.
void SetVariable(const char* name, const char* value);

/// A module that is loaded as long as this object lives.
class Module
{
public:
    explicit Module(const std::string& file);
    ~Module();
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    /// \return Null when it could not be loaded, or has no such function.
    void* Find(const char* function) const;

    /// \return Whether somebody has it loaded.
    static bool IsLoaded(const std::string& file);

private:
    void* mHandle;
};

}  // namespace TestSystem
