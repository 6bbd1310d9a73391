#pragma once

#include "assetconnector/host/ferrite/Guid.h"

#include <charconv>
#include <string>
#include <string_view>
#include <utility>

namespace Session {

/// Writes JSON as text, value by value, on one line: the caller opens and closes arrays and objects, commas
/// come by themselves. Bytes that are not UTF-8 and unpaired surrogates become U+FFFD.
class JsonText
{
public:
    void BeginObject() { Open('{'); }
    void EndObject() { Close('}'); }
    void BeginArray() { Open('['); }
    void EndArray() { Close(']'); }

    /// The name of the member whose value comes next. \param name Plain ASCII without quotes.
    void Name(std::string_view name);

    /// The same from a value whose text is a name.
    template <class Text>
    void NameFrom(const Text& text)
    {
        String(text);
        mText += ':';
        mNeedsComma = false;
    }

    void Null() { Bare("null"); }
    void Bool(bool value) { Bare(value ? "true" : "false"); }

    template <class Integer>
    void Number(Integer value)
    {
        char digits[24];
        const auto end = std::to_chars(std::begin(digits), std::end(digits), value).ptr;
        Bare({digits, static_cast<std::size_t>(end - digits)});
    }

    /// \param text UTF-8.
    void String(std::string_view text);
    void String(std::u16string_view text);
    void String(const ferrite::utility::Guid& guid);

    /// Puts in a value that is JSON on one line already.
    void Bare(std::string_view json)
    {
        Separate();
        mText += json;
        mNeedsComma = true;
    }

    /// Ends a line: what follows begins another value.
    void EndLine()
    {
        mText += '\n';
        mNeedsComma = false;
    }

    const std::string& Text() const noexcept { return mText; }

    /// \return The text; what is left is empty.
    std::string Take()
    {
        mNeedsComma = false;
        return std::exchange(mText, {});
    }

private:
    void Separate()
    {
        if (mNeedsComma)
            mText += ',';
    }
    void Open(char bracket)
    {
        Separate();
        mText += bracket;
        mNeedsComma = false;
    }
    void Close(char bracket)
    {
        mText += bracket;
        mNeedsComma = true;
    }

    /// Appends what needs no repair.
    void Escape(std::string_view text);

    std::string mText;
    bool mNeedsComma = false;
};

}  // namespace Session
