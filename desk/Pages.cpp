#include "desk/Pages.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace Desk {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestFile = std::uintmax_t{16} << 20;

struct Type
{
    std::string_view extension;
    const char* name;
};

constexpr Type kTypes[] = {
    {".html", "text/html; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".json", "application/json"},
    {".svg", "image/svg+xml"},
    {".png", "image/png"},
};

const char* TypeOf(std::string_view name)
{
    const auto found = std::find_if(std::begin(kTypes), std::end(kTypes), [name](const Type& type) {
        return name.size() > type.extension.size() &&
               name.substr(name.size() - type.extension.size()) == type.extension;
    });
    return found == std::end(kTypes) ? nullptr : found->name;
}

constexpr bool IsPlain(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.';
}

/// \return Whether the target is made of plain names alone, none of which begins with a point. Nothing in it
///         is decoded, so there is one spelling of each file.
bool IsPlainTarget(std::string_view target)
{
    if (target.empty() || target.front() != '/')
        return false;
    char before = '\0';
    for (const char c : target) {
        if (c == '/' ? before == '/' : !IsPlain(c) || (c == '.' && before == '/'))
            return false;
        before = c;
    }
    return true;
}

bool IsBelow(const fs::path& path, const fs::path& folder)
{
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

}  // namespace

Pages::Pages(const fs::path& folder)
{
    std::error_code error;
    mFolder = fs::canonical(folder, error);
    if (error || !fs::is_directory(mFolder, error))
        throw std::runtime_error("there is no folder of pages at " + folder.string());
}

std::optional<Page> Pages::Read(std::string_view requested) const
{
    std::string target(requested);
    if (!target.empty() && target.back() == '/')
        target += "index.html";
    const char* const type = TypeOf(target);
    if (type == nullptr || !IsPlainTarget(target))
        return std::nullopt;
    std::error_code error;
    const fs::path path = fs::canonical(mFolder / target.substr(1), error);
    if (error || !IsBelow(path, mFolder) || !fs::is_regular_file(path, error))
        return std::nullopt;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size > kLargestFile)
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    std::string content(static_cast<std::size_t>(size), '\0');
    file.read(content.data(), static_cast<std::streamsize>(size));
    if (!file.is_open() || file.bad())
        return std::nullopt;
    content.resize(static_cast<std::size_t>(file.gcount()));  // it may have become shorter meanwhile
    return Page{std::move(content), type};
}

std::string Pages::Version() const
{
    constexpr int kMostFiles = 10000;
    std::size_t version = 0;
    int files = 0;
    std::error_code error;
    for (fs::recursive_directory_iterator each(mFolder, fs::directory_options::skip_permission_denied, error),
         end;
         !error && each != end && files < kMostFiles; each.increment(error)) {
        if (each->path().filename().native().front() == '.') {  // nothing below is served
            each.disable_recursion_pending();
            continue;
        }
        ++files;
        std::error_code gone;
        const auto time = fs::last_write_time(each->path(), gone).time_since_epoch().count();
        const std::size_t parts[] = {fs::hash_value(each->path()), static_cast<std::size_t>(time)};
        for (const std::size_t part : parts)
            version = version * 31 + part;
    }
    return std::to_string(version);
}

Site::Site(const fs::path& pages, const fs::path& author) : mPages(pages)
{
    if (!author.empty())
        mAuthor.emplace(author);
}

const std::string& Site::AuthorVersion() const
{
    constexpr int kShare = 10;
    const Clock::time_point now = Clock::now();
    if (now >= mNextLook) {
        mVersion = mAuthor->Version();
        mNextLook = Clock::now() + kShare * (Clock::now() - now);
    }
    return mVersion;
}

std::optional<Page> Site::Read(std::string_view target) const
{
    constexpr std::string_view kFolder = "/panel";
    if (target == "/favicon.ico")  // browsers ask for it where a page names no icon
        target = "/icon.svg";
    if (!mAuthor)
        return mPages.Read(target);
    if (target == "/panel-version")
        return Page{AuthorVersion(), "text/plain; charset=utf-8"};
    if (target.substr(0, kFolder.size() + 1) != "/panel/")
        return mPages.Read(target);
    std::optional<Page> page = mAuthor->Read(target.substr(kFolder.size()));
    if (page && page->type == TypeOf("a.html"))
        page->content += "<script type=\"module\" src=\"/desk/reload.js\"></script>\n";
    return page;
}

}  // namespace Desk
