#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Desk {

/// A file as it is served.
struct Page
{
    std::string content;
    const char* type;  ///< Of its content.
};

/// The folder that is served. Only files of the kinds that pages are made of, only by their plain names:
/// no address leaves the folder, by its text or by a link. Any thread.
class Pages
{
public:
    /// \throws std::runtime_error when there is no such folder.
    explicit Pages(const std::filesystem::path& folder);

    /// \param target Of a request, such as "/client/index.js"; "/" is "/index.html".
    /// \return Null where nothing is served.
    std::optional<Page> Read(std::string_view target) const;

private:
    std::filesystem::path mFolder;  ///< Without links.
};

}  // namespace Desk
