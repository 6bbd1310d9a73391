#pragma once

#include <chrono>
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

    /// \param target Of a request, such as "/client/index.js"; one that ends with "/" means "index.html"
    /// there. \return Null where nothing is served.
    std::optional<Page> Read(std::string_view target) const;

    /// \return A text that changes when a file in the folder does, of the first 10,000.
    std::string Version() const;

private:
    std::filesystem::path mFolder;  ///< Without links.
};

/// The desk's pages, and below "/panel/" those of a panel under work, which load themselves anew when a file
/// of theirs changes. One thread.
class Site
{
public:
    /// \param author Empty: there is no such panel. \throws std::runtime_error when there is no such folder.
    Site(const std::filesystem::path& pages, const std::filesystem::path& author);

    /// As Pages::Read.
    std::optional<Page> Read(std::string_view target) const;

private:
    using Clock = std::chrono::steady_clock;

    /// Looks through the folder for a tenth of the time at most, however large it is: who reads pages waits
    /// meanwhile.
    const std::string& AuthorVersion() const;

    Pages mPages;
    std::optional<Pages> mAuthor;
    mutable std::string mVersion;  ///< Of the author's.
    mutable Clock::time_point mNextLook;
};

}  // namespace Desk
