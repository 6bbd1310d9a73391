#include "reference_host/Files.h"

#include "assetconnector/host/ferrite/Unicode.h"

#include <filesystem>
#include <string_view>
#include <system_error>

namespace ReferenceHost {
namespace {

std::filesystem::path Native(std::u16string_view path)
{
    return ferrite::utility::UTF16to8(path);
}

/// What is at the path, links followed. A NUL would cut the path short: such a path names nothing.
std::filesystem::file_status StatusOf(const UTF16String& path)
{
    if (path.find(u'\0') != UTF16String::npos)
        return std::filesystem::file_status(std::filesystem::file_type::not_found);
    std::error_code error;
    return std::filesystem::status(Native(path), error);
}

UTF16String Normalized(std::u16string_view path)
{
    return ferrite::utility::UTF8to16(Native(path).lexically_normal().native());
}

}  // namespace

bool Files::ExistsOnDisk(const UTF16String& path)
{
    return std::filesystem::exists(StatusOf(path));
}

bool Files::IsDirectory(const UTF16String& path)
{
    return std::filesystem::is_directory(StatusOf(path));
}

UTF16String Files::ToNormalizedPath(const UTF16String& path)
{
    return Normalized(path);
}

UTF16String Files::NormalizePathWithoutUNC(const UTF16String& path)
{
    constexpr std::u16string_view kLong = u"\\\\?\\";
    constexpr std::u16string_view kLongShare = u"\\\\?\\UNC\\";
    const std::u16string_view text = path;
    if (text.substr(0, kLongShare.size()) == kLongShare)
        return Normalized(u"\\\\" + path.substr(kLongShare.size()));
    if (text.substr(0, kLong.size()) == kLong)
        return Normalized(text.substr(kLong.size()));
    return Normalized(text);
}

}  // namespace ReferenceHost
