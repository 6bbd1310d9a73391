#include "reference_host/Files.h"

#include "reference_host/Disk.h"

#include <string_view>

namespace ReferenceHost {
namespace {

/// A NUL would cut the path short: such a path names nothing.
Disk::Kind LookAt(const UTF16String& path)
{
    return path.find(u'\0') != UTF16String::npos ? Disk::Kind::kMissing : Disk::LookAt(path);
}

}  // namespace

bool Files::ExistsOnDisk(const UTF16String& path)
{
    return LookAt(path) != Disk::Kind::kMissing;
}

bool Files::IsDirectory(const UTF16String& path)
{
    return LookAt(path) == Disk::Kind::kFolder;
}

UTF16String Files::ToNormalizedPath(const UTF16String& path)
{
    return Disk::Normalized(path);
}

UTF16String Files::NormalizePathWithoutUNC(const UTF16String& path)
{
    constexpr std::u16string_view kLong = u"\\\\?\\";
    constexpr std::u16string_view kLongShare = u"\\\\?\\UNC\\";
    if (path.compare(0, kLongShare.size(), kLongShare) == 0)
        return Disk::Normalized(u"\\\\" + path.substr(kLongShare.size()));
    if (path.compare(0, kLong.size(), kLong) == 0)
        return Disk::Normalized(path.substr(kLong.size()));
    return Disk::Normalized(path);
}

}  // namespace ReferenceHost
