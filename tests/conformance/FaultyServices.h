#pragma once

#include "tests/conformance/Rig.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <vector>

/// Services with one fault each.
namespace FaultyServices {

struct Misaligned : ReferenceHost::Memory
{
    static constexpr std::size_t kOff = 8;

    void* Allocate(std::size_t size) override
    {
        auto* const memory = static_cast<std::byte*>(Memory::Allocate(size + kOff));
        return memory == nullptr ? nullptr : memory + kOff;
    }
    void Dispose(void* memory, std::size_t size) noexcept override
    {
        Memory::Dispose(static_cast<std::byte*>(memory) - kOff, size + kOff);
    }
};

struct OneLargeBlock : ReferenceHost::Memory
{
    static constexpr std::size_t kLarge = 65536;

    void* Allocate(std::size_t size) override
    {
        return size > kLarge ? large.data() : Memory::Allocate(size);
    }
    void Dispose(void* memory, std::size_t size) noexcept override
    {
        if (size <= kLarge)
            Memory::Dispose(memory, size);
    }
    std::vector<std::max_align_t> large = std::vector<std::max_align_t>(kLarge);
};

struct MemoryOfOneThread : ReferenceHost::Memory
{
    void* Allocate(std::size_t size) override { return thread.IsHere() ? Memory::Allocate(size) : nullptr; }
    OneThread thread;
};

struct ThrowsWithoutMemory : ReferenceHost::Memory
{
    void* Allocate(std::size_t size) override
    {
        void* const memory = Memory::Allocate(size);
        if (memory == nullptr)
            throw std::bad_alloc();
        return memory;
    }
};

using ReferenceHost::Files;

struct AnythingIsAFolder : Files
{
    bool IsDirectory(const UTF16String& path) override { return ExistsOnDisk(path); }
};

struct NothingIsAFolder : Files
{
    bool IsDirectory(const UTF16String& /*path*/) override { return false; }
};

struct LooksAtFoldersAlone : Files
{
    bool ExistsOnDisk(const UTF16String& path) override
    {
        const std::size_t separator = path.find_last_of(u"/\\");
        return Files::ExistsOnDisk(path) ||
               (separator != UTF16String::npos && Files::IsDirectory(path.substr(0, separator)));
    }
};

struct EmptyIsHere : Files
{
    bool ExistsOnDisk(const UTF16String& path) override { return Files::ExistsOnDisk(OrHere(path)); }
    bool IsDirectory(const UTF16String& path) override { return Files::IsDirectory(OrHere(path)); }
    static UTF16String OrHere(const UTF16String& path) { return path.empty() ? u"." : path; }
};

struct PathsInASCII : Files
{
    bool ExistsOnDisk(const UTF16String& path) override
    {
        return std::all_of(path.begin(), path.end(), [](char16_t unit) { return unit < 0x80; }) &&
               Files::ExistsOnDisk(path);
    }
};

struct ComparesPathTexts : Files
{
    bool ExistsOnDisk(const UTF16String& path) override
    {
        return path.find(u"/..") == UTF16String::npos && Files::ExistsOnDisk(path);
    }
    bool IsDirectory(const UTF16String& path) override
    {
        return ExistsOnDisk(path) && Files::IsDirectory(path);
    }
};

struct ThrowsForLongNames : Files
{
    bool ExistsOnDisk(const UTF16String& path) override
    {
        return std::filesystem::exists(std::filesystem::path(path));
    }
};

struct WantsWellFormedPaths : Files
{
    UTF16String ToNormalizedPath(const UTF16String& path) override
    {
        if (path.find(u'\xD800') != UTF16String::npos)
            throw std::invalid_argument("half a character");
        return Files::ToNormalizedPath(path);
    }
};

struct NumbersForms : Files
{
    UTF16String NormalizePathWithoutUNC(const UTF16String& path) override
    {
        return path.find_first_of(u"/\\") == UTF16String::npos ? path + UTF16String(++count, u'/')
                                                               : Files::NormalizePathWithoutUNC(path);
    }
    std::atomic<std::size_t> count{0};
};

struct FilesOfOneThread : Files
{
    UTF16String ToNormalizedPath(const UTF16String& path) override
    {
        thread.Require();
        return Files::ToNormalizedPath(path);
    }
    OneThread thread;
};

using ReferenceHost::Texts;

struct LocalizesToASCII : Texts
{
    UTF16String Localize(const UTF16String& key) override
    {
        UTF16String text = Texts::Localize(key);
        std::replace_if(
            text.begin(), text.end(), [](char16_t unit) { return unit >= 0x80; }, u'?');
        return text;
    }
};

struct FillsPlaces : Texts
{
    UTF16String Localize(const UTF16String& key) override
    {
        UTF16String text = Texts::Localize(key);
        const std::size_t place = text.find(u"@0");
        return place == UTF16String::npos ? text : text.erase(place, 2);
    }
};

struct ReportsDetailsAlone : Texts
{
    void SetSDKInfoString(const UTF16String& text, const UTF16String& detail) override
    {
        if (!detail.empty())
            Texts::SetSDKInfoString(text, detail);
    }
};

struct GuidsTwice : Texts
{
    ferrite::utility::Guid CreateUniqueGuid() override { return {1, (2 + count++) / 2}; }
    std::atomic<std::uint64_t> count{0};
};

struct GuidsOfEachThread : Texts
{
    ferrite::utility::Guid CreateUniqueGuid() override
    {
        thread_local std::uint64_t count = 0;
        return {1, ++count};
    }
};

struct TextsOfOneThread : Texts
{
    UTF16String Localize(const UTF16String& key) override
    {
        thread.Require();
        return Texts::Localize(key);
    }
    OneThread thread;
};

}  // namespace FaultyServices
