#include "assetconnector/xml/TextPlaces.h"

#include <algorithm>

namespace AC {
namespace {

/// What begins with a < and is no element, and what ends it.
struct Passage
{
    std::u16string_view opening;
    std::u16string_view closing;
};
constexpr Passage kPassages[] = {{u"</", u">"}, {u"<!--", u"-->"}, {u"<?", u"?>"}, {u"<![CDATA[", u"]]>"}};

/// \return The end of the passage that begins there; 0 for an element.
std::size_t EndOfPassage(std::u16string_view text, std::size_t open)
{
    for (const Passage& passage : kPassages)
        if (text.compare(open, passage.opening.size(), passage.opening) == 0)
            return text.find(passage.closing, open + passage.opening.size());
    return 0;
}

}  // namespace

const TextPlace& TextPlaces::PlaceOf(std::size_t at)
{
    for (; mAt < std::min(at, mText.size()); ++mAt) {
        const bool endsLine =
            mText[mAt] == u'\n' || (mText[mAt] == u'\r' && mText.substr(mAt + 1, 1) != u"\n");
        mPlace.line += endsLine ? 1 : 0;
        mPlace.column = endsLine ? 1 : mPlace.column + 1;
    }
    return mPlace;
}

const TextPlace& TextPlaces::NextElement()
{
    std::size_t open = mText.find(u'<', mNext);
    while (open < mText.size()) {
        const std::size_t end = EndOfPassage(mText, open);
        if (end == 0)
            break;
        open = mText.find(u'<', end);
    }
    mNext = open + 1;  // a value may hold >, but no <
    return PlaceOf(open);
}

}  // namespace AC
