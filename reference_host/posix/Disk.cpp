#include "reference_host/Disk.h"

#include "assetconnector/host/ferrite/Unicode.h"

#include <filesystem>
#include <system_error>

namespace ReferenceHost::Disk {
namespace {

std::filesystem::path Native(const UTF16String& path)
{
    return ferrite::utility::UTF16to8(path);
}

}  // namespace

Kind LookAt(const UTF16String& path)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(Native(path), error);
    if (!std::filesystem::exists(status))
        return Kind::kMissing;
    return std::filesystem::is_directory(status) ? Kind::kFolder : Kind::kFile;
}

UTF16String Normalized(const UTF16String& path)
{
    return ferrite::utility::UTF8to16(Native(path).lexically_normal().native());
}

}  // namespace ReferenceHost::Disk
