#include "assetconnector/xml/TextCheck.h"

#include "assetconnector/xml/MessageLimits.h"

#include <cstdint>

namespace AC {
namespace {

constexpr std::size_t kNowhere = std::u16string_view::npos;
using MessageLimits::kMostAttributes;
constexpr std::size_t kBlock = 128;
static_assert(kBlock <= kMostAttributes, "or a tag with more could hide in one block");

/// What a block of units has.
struct Marks
{
    bool hasSuspects;  ///< Zeros, or halves of surrogate pairs.
    bool hasTags;      ///< At least <, which begins every tag.
    std::size_t equals;
};

/// All is counted in the width of a unit and to the end, so that the compiler takes several at a time.
Marks MarksOf(std::u16string_view block)
{
    std::uint16_t suspects = 0;
    std::uint16_t tags = 0;
    std::uint16_t equals = 0;
    for (const char16_t unit : block) {
        suspects |=
            static_cast<std::uint16_t>(unit == 0) | static_cast<std::uint16_t>((unit & 0xF800U) == 0xD800U);
        tags |= static_cast<std::uint16_t>(unit == u'<');
        equals = static_cast<std::uint16_t>(equals + (unit == u'='));
    }
    return {suspects != 0, tags != 0, equals};
}

/// A zero or half a pair.
bool IsStray(std::u16string_view text, std::size_t at)
{
    const auto isLead = [](char16_t unit) { return (unit & 0xFC00U) == 0xD800U; };
    const auto isTrail = [](char16_t unit) { return (unit & 0xFC00U) == 0xDC00U; };
    return text[at] == 0 || (isLead(text[at]) && (at + 1 == text.size() || !isTrail(text[at + 1])));
}

/// \return The first between two places.
std::size_t FindStray(std::u16string_view text, std::size_t begin, std::size_t end)
{
    while (begin != end && !IsStray(text, begin))
        ++begin;
    return begin == end ? kNowhere : begin;
}

/// \param open The < of what may be a tag.
/// \return Where the tag has one attribute too many.
std::size_t FindSurplus(std::u16string_view text, std::size_t open)
{
    std::size_t attributes = 0;
    char16_t quote = 0;
    for (std::size_t at = open + 1; at < text.size() && text[at] != u'<';
         ++at) {  // < ends it, also in a value
        const char16_t unit = text[at];
        if (quote != 0)
            quote = unit == quote ? u'\0' : quote;
        else if (unit == u'"' || unit == u'\'')
            quote = unit;
        else if (unit == u'>')
            break;
        else if (unit == u'=' && ++attributes > kMostAttributes)
            return at;
    }
    return kNowhere;
}

/// Comments, processing instructions and CDATA sections, where < begins no tag.
class Sections
{
public:
    explicit Sections(std::u16string_view text) : mText(text) {}

    /// \param at Of a <, none before one that was asked for earlier. \return Whether it stands in a section.
    bool Cover(std::size_t at)
    {
        while (mEnd <= at)
            Take(mText.find(u'<', mEnd));
        return mIsSection;
    }

private:
    struct Kind
    {
        std::u16string_view opening;
        std::u16string_view closing;
    };
    static constexpr Kind kKinds[] = {{u"<!--", u"-->"}, {u"<?", u"?>"}, {u"<![CDATA[", u"]]>"}};

    /// Goes on behind what begins with a <.
    void Take(std::size_t open)
    {
        mIsSection = false;
        mEnd = open + 1;
        for (const Kind& kind : kKinds)
            if (mText.substr(open, kind.opening.size()) == kind.opening) {
                const std::size_t closing = mText.find(kind.closing, open + kind.opening.size());
                mIsSection = true;
                mEnd = closing == kNowhere ? mText.size() : closing + kind.closing.size();
            }
    }

    std::u16string_view mText;
    bool mIsSection = false;  // what was taken last
    std::size_t mEnd = 0;
};

}  // namespace

std::optional<TextFlaw> FindFlaw(std::u16string_view text)
{
    Sections sections(text);
    std::size_t equals = 0;  // since the last <, or more
    bool isKnown = true;     // that what the last < begins has not too many attributes
    for (std::size_t at = 0; at < text.size(); at += kBlock) {
        const std::u16string_view block = text.substr(at, kBlock);
        const Marks marks = MarksOf(block);
        if (marks.hasSuspects)
            if (const std::size_t stray = FindStray(text, at, at + block.size()); stray != kNowhere)
                return TextFlaw{stray, text[stray] == 0 ? u"a zero character is not accepted"
                                                        : u"half a surrogate pair is not accepted"};
        equals += marks.equals;
        if (equals > kMostAttributes && !isKnown) {
            const std::size_t open = text.rfind(u'<', at);
            const std::size_t surplus = FindSurplus(text, open);
            if (surplus != kNowhere && !sections.Cover(open))
                return TextFlaw{surplus, u"an element has too many attributes"};
            isKnown = true;
        }
        if (marks.hasTags) {
            equals = marks.equals;
            isKnown = false;
        }
    }
    return std::nullopt;
}

}  // namespace AC
