#include "session/format/Passwords.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/xml/XMLUtilities.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <system_error>

namespace Session {
namespace {

/// In lower case: who writes the name in other capitals gets no password across, but has written it.
constexpr std::string_view kPassword = "ftppassword";
constexpr std::string_view kMask = "***";
constexpr std::string_view kBlanks = " \t\r\n";

char LowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// \return Where the next mention begins; npos without one.
std::size_t FindPassword(std::string_view text, std::size_t from = 0)
{
    const auto found =
        std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), kPassword.begin(),
                    kPassword.end(), [](char a, char b) { return LowerCase(a) == b; });
    return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
}

bool IsWellFormed(const std::string& xml)
{
    AC::MessageParser parser;
    xercesc::DOMDocument* document = nullptr;
    Ridge::XMLUtilities::GetDOMDocument(parser, ferrite::utility::UTF8to16(xml), document);
    return document != nullptr;
}

/// Whether a mention may stand in the text in pieces or as references to characters.
bool MayMentionInPieces(std::string_view xml)
{
    return xml.find("&#") != std::string_view::npos || xml.find("<!") != std::string_view::npos;
}

/// Masks in one pass over a well-formed text, whose mentions it sees as the reader of the text does: written
/// with references to characters, or in sections and around comments.
class Masker
{
public:
    explicit Masker(std::string_view xml) : mXml(xml) {}

    std::string Mask()
    {
        while (mAt < mXml.size())
            Step();
        return std::move(mMasked);
    }

    /// \return Where the first mention ends; npos without one.
    std::size_t FirstMention() const { return mFirstMention; }

private:
    enum class Place
    {
        kContent,
        kCdata,
        kComment,
        kInstruction,
        kTag,
        kValue,  ///< Of an attribute.
    };

    bool StartsWith(std::string_view text) const { return mXml.compare(mAt, text.size(), text) == 0; }

    void CopyTo(std::size_t end)
    {
        end = std::min(end, mXml.size());
        mMasked += mXml.substr(mAt, end - mAt);
        mAt = end;
    }
    void SkipTo(std::size_t end) { mAt = std::min(end, mXml.size()); }

    /// Passes a mark over if it stands here. \return Whether it does.
    bool Pass(std::string_view mark, Place next)
    {
        if (!StartsWith(mark))
            return false;
        CopyTo(mAt + mark.size());
        mPlace = next;
        return true;
    }

    void Step()
    {
        switch (mPlace) {
            case Place::kContent:
                if (Pass(kCdataBegin, Place::kCdata) || Pass(kCommentBegin, Place::kComment) ||
                    Pass(kInstructionBegin, Place::kInstruction))
                    return;
                if (Pass("<", Place::kTag)) {
                    mMatched = 0;
                    mIsClosing = StartsWith("/");
                    mIsOfPassword = false;
                    return;
                }
                break;
            case Place::kCdata:
                if (Pass(kCdataEnd, Place::kContent))
                    return;
                break;
            case Place::kComment:
                return StepAside(kCommentEnd);
            case Place::kInstruction:
                return StepAside(kInstructionEnd);
            case Place::kTag:
                return StepInTag();
            case Place::kValue:
                if (mXml[mAt] == mQuote) {
                    CopyTo(mAt + 1);
                    mPlace = Place::kTag;
                    mMatched = 0;
                    return;
                }
                break;
        }
        if (!Match(mPlace == Place::kCdata ? 1 : LengthOfReference()))
            return;
        mMasked += "=***";
        if (mPlace == Place::kValue)
            SkipTo(mXml.find(mQuote, mAt));
        else
            SkipText();
    }

    /// Comments and instructions are no part of the text around them.
    void StepAside(std::string_view endMark)
    {
        const std::size_t end = mXml.find(endMark, mAt);
        const std::size_t mention = FindPassword(mXml.substr(0, std::min(end, mXml.size())), mAt);
        if (mention != std::string_view::npos) {
            CopyTo(mention + kPassword.size());
            Mentioned();
            mMasked += "=***";
            SkipTo(end);
        }
        CopyTo(end == std::string_view::npos ? end : end + endMark.size());
        mPlace = Place::kContent;
    }

    void StepInTag()
    {
        const char c = mXml[mAt];
        if (c == '>') {
            const bool isEmpty = mXml[mAt - 1] == '/';
            CopyTo(mAt + 1);
            mPlace = Place::kContent;
            mMatched = 0;
            const bool isText = mAt < mXml.size() && (mXml[mAt] != '<' || StartsWith("<!"));
            if (mIsOfPassword && !isEmpty && isText) {
                mMasked += kMask;
                SkipText();
            }
        } else if (c == '"' || c == '\'') {
            mQuote = c;
            CopyTo(mAt + 1);
            mPlace = Place::kValue;
            mMatched = 0;
            if (mIsOfPassword)
                MaskValue();
        } else if (Match(1)) {
            CopyTo(mXml.find_first_of(kEndsName, mAt));
            const std::size_t equals = mXml.find_first_not_of(kBlanks, mAt);
            if (equals == std::string_view::npos || mXml[equals] != '=') {
                mIsOfPassword = !mIsClosing;
                return;
            }
            CopyTo(mXml.find_first_not_of(kBlanks, equals + 1));
            if (mAt < mXml.size() && (mXml[mAt] == '"' || mXml[mAt] == '\'')) {
                mQuote = mXml[mAt];
                CopyTo(mAt + 1);
                mPlace = Place::kValue;
                MaskValue();
            }
        }
    }

    /// Behind the quote.
    void MaskValue()
    {
        const std::size_t end = mXml.find(mQuote, mAt);
        if (end != mAt)
            mMasked += kMask;
        SkipTo(end);
    }

    /// Drops what is left of a text, up to the next tag.
    void SkipText()
    {
        while (mAt < mXml.size()) {
            if (mPlace == Place::kCdata) {
                SkipTo(mXml.find(kCdataEnd, mAt));
                Pass(kCdataEnd, Place::kContent);
            } else if (StartsWith(kCdataBegin)) {
                SkipTo(mXml.find(kCdataEnd, mAt));
                SkipTo(mAt + kCdataEnd.size());
            } else if (StartsWith(kCommentBegin)) {
                SkipTo(mXml.find(kCommentEnd, mAt));
                SkipTo(mAt + kCommentEnd.size());
            } else if (StartsWith(kInstructionBegin)) {
                SkipTo(mXml.find(kInstructionEnd, mAt));
                SkipTo(mAt + kInstructionEnd.size());
            } else if (mXml[mAt] == '<') {
                break;
            } else {
                SkipTo(mXml.find('<', mAt));
            }
        }
        mMatched = 0;
    }

    /// \return How many bytes stand for the next character; mReferred is it where they are a reference.
    std::size_t LengthOfReference()
    {
        if (!StartsWith("&#"))
            return 1;
        const bool isHex = mAt + 2 < mXml.size() && mXml[mAt + 2] == 'x';
        const char* const begin = mXml.data() + mAt + (isHex ? 3 : 2);
        std::uint32_t code = 0;
        const auto read = std::from_chars(begin, mXml.data() + mXml.size(), code, isHex ? 16 : 10);
        if (read.ec != std::errc() || read.ptr == mXml.data() + mXml.size() || *read.ptr != ';')
            return 1;
        mReferred = code < 0x80 ? static_cast<char>(code) : '\0';
        return static_cast<std::size_t>(read.ptr - mXml.data()) + 1 - mAt;
    }

    /// Copies the next character. \return Whether a mention ends with it.
    bool Match(std::size_t length)
    {
        const char c = LowerCase(length == 1 ? mXml[mAt] : mReferred);
        CopyTo(mAt + length);
        if (c == kPassword[mMatched])
            ++mMatched;
        else
            mMatched = c == kPassword[0] ? 1 : 0;  // no other letter of it is the first one
        if (mMatched < kPassword.size())
            return false;
        mMatched = 0;
        Mentioned();
        return true;
    }

    void Mentioned()
    {
        if (mFirstMention == std::string_view::npos)
            mFirstMention = mAt;
    }

    static constexpr std::string_view kCdataBegin = "<![CDATA[";
    static constexpr std::string_view kCdataEnd = "]]>";
    static constexpr std::string_view kCommentBegin = "<!--";
    static constexpr std::string_view kCommentEnd = "-->";
    static constexpr std::string_view kInstructionBegin = "<?";
    static constexpr std::string_view kInstructionEnd = "?>";
    static constexpr std::string_view kEndsName = " \t\r\n=/>\"'";

    std::string_view mXml;
    std::size_t mAt = 0;
    Place mPlace = Place::kContent;
    char mQuote = 0;
    char mReferred = 0;
    bool mIsClosing = false;
    bool mIsOfPassword = false;  ///< The element is named so.
    std::size_t mMatched = 0;    ///< Letters of a mention so far.
    std::size_t mFirstMention = std::string_view::npos;
    std::string mMasked;
};

}  // namespace

bool MayMentionPassword(std::string_view text)
{
    return MentionsPassword(text) || MayMentionInPieces(text);
}

bool MentionsPassword(std::string_view text)
{
    return FindPassword(text) != std::string_view::npos;
}

std::string WithoutPassword(std::string text)
{
    const std::size_t name = FindPassword(text);
    if (name != std::string::npos)
        text.replace(name + kPassword.size(), std::string::npos, "=***");
    return text;
}

std::string PasswordsMaskedInXML(std::string xml)
{
    if (!MentionsPassword(xml) && !MayMentionInPieces(xml))
        return xml;
    Masker masker(xml);
    std::string masked = masker.Mask();
    if (masker.FirstMention() == std::string::npos)
        return xml;
    if (IsWellFormed(xml))
        return masked;
    xml.erase(masker.FirstMention());
    return WithoutPassword(xml + "=***");
}

}  // namespace Session
