#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <string>
#include <utility>

namespace ferrite::utility {

/// A UTF-8 text that never changes: copies share it. Names stations. Safe to read on any thread.
class ImmutableString
{
public:
    /// \param text A name that lives as long as the process, in UTF-8.
    static ImmutableString CreateStatic(const char* text) { return ImmutableString(text); }

    /// \param text UTF-8.
    explicit ImmutableString(std::string text) : mText(boost::make_shared<const std::string>(std::move(text)))
    {
    }

    // Without a move, which would leave a string without a text.
    ImmutableString(const ImmutableString&) = default;
    ImmutableString& operator=(const ImmutableString&) = default;
    ~ImmutableString() = default;

    const std::string& AsUTF8() const noexcept { return *mText; }

    friend bool operator==(const ImmutableString& a, const ImmutableString& b) noexcept
    {
        return *a.mText == *b.mText;
    }
    friend bool operator!=(const ImmutableString& a, const ImmutableString& b) noexcept { return !(a == b); }
    friend bool operator<(const ImmutableString& a, const ImmutableString& b) noexcept
    {
        return *a.mText < *b.mText;
    }

private:
    boost::shared_ptr<const std::string> mText;
};

}  // namespace ferrite::utility
