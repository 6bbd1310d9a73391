#include "session/format/Passwords.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/xml/XMLUtilities.h"

#include <algorithm>
#include <cstddef>

namespace Session {
namespace {

constexpr std::string_view kPassword = "ftpPassword";
constexpr std::string_view kMask = "***";
constexpr std::string_view kBlanks = " \t\r\n";

bool IsWellFormed(const std::string& xml)
{
    AC::MessageParser parser;
    xercesc::DOMDocument* document = nullptr;
    Ridge::XMLUtilities::GetDOMDocument(parser, ferrite::utility::UTF8to16(xml), document);
    return document != nullptr;
}

/// Masks in one pass over a well-formed text.
class Masker
{
public:
    explicit Masker(std::string_view xml) : mXml(xml) {}

    std::string Mask()
    {
        while (mAt < mXml.size()) {
            if (StartsWith(kPassword))
                MaskMention();
            else
                Step();
        }
        return std::move(mMasked);
    }

private:
    enum class Place
    {
        kContent,
        kCdata,
        kTag,
        kValue,  ///< Of an attribute.
    };

    bool StartsWith(std::string_view text) const { return mXml.compare(mAt, text.size(), text) == 0; }

    void CopyTo(std::size_t end)
    {
        mMasked += mXml.substr(mAt, end - mAt);
        mAt = std::min(end, mXml.size());
    }

    void Step()
    {
        const char c = mXml[mAt];
        if (mPlace == Place::kCdata && StartsWith(kCdataEnd))
            mPlace = Place::kContent;
        else if (mPlace == Place::kContent && StartsWith("<![CDATA["))
            mPlace = Place::kCdata;
        else if (mPlace == Place::kContent && c == '<')
            mPlace = Place::kTag;
        else if (mPlace == Place::kTag && c == '>')
            mPlace = Place::kContent;
        else if (mPlace == Place::kTag && (c == '"' || c == '\'')) {
            mPlace = Place::kValue;
            mQuote = c;
        } else if (mPlace == Place::kValue && c == mQuote)
            mPlace = Place::kTag;
        CopyTo(mAt + 1);
    }

    void MaskMention()
    {
        CopyTo(mAt + kPassword.size());
        if (mPlace == Place::kTag)
            return MaskAttribute();
        const std::size_t end = mPlace == Place::kValue   ? mXml.find(mQuote, mAt)
                                : mPlace == Place::kCdata ? mXml.find(kCdataEnd, mAt)
                                                          : mXml.find('<', mAt);
        mMasked += "=***";
        mAt = std::min(end, mXml.size());
    }

    /// Behind the name of an attribute; of another one, if that only begins so.
    void MaskAttribute()
    {
        const std::size_t equals = mXml.find_first_not_of(kBlanks, mAt);
        if (equals == std::string_view::npos || mXml[equals] != '=')
            return;
        const std::size_t quote = mXml.find_first_of("\"'", equals);
        if (quote == std::string_view::npos)
            return;
        CopyTo(quote + 1);
        const std::size_t end = mXml.find(mXml[quote], mAt);
        if (end != mAt)
            mMasked += kMask;
        mAt = std::min(end, mXml.size());
        CopyTo(mAt + 1);
    }

    static constexpr std::string_view kCdataEnd = "]]>";

    std::string_view mXml;
    std::size_t mAt = 0;
    Place mPlace = Place::kContent;
    char mQuote = 0;
    std::string mMasked;
};

}  // namespace

bool MentionsPassword(std::string_view text)
{
    return text.find(kPassword) != std::string_view::npos;
}

std::string WithoutPassword(std::string text)
{
    const std::size_t name = text.find(kPassword);
    if (name != std::string::npos)
        text.replace(name + kPassword.size(), std::string::npos, "=***");
    return text;
}

std::string PasswordsMaskedInXML(std::string xml)
{
    if (!MentionsPassword(xml))
        return xml;
    if (!IsWellFormed(xml))
        return WithoutPassword(std::move(xml));
    return Masker(xml).Mask();
}

}  // namespace Session
