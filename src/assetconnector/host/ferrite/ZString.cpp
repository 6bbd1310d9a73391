#include "assetconnector/host/ferrite/ZString.h"

#include "assetconnector/host/Host.h"

#include <cstddef>

namespace ferrite {

const config::Localizer& config::Localizer::Get()
{
    static const Localizer instance;
    return instance;
}

UTF16String config::Localizer::Lookup(const UTF16String& key) const
{
    return AC::InstalledHost().texts.Localize(key);
}

ZString::ZString(const UTF16String& key, const Replacements& replacements)
{
    const UTF16String text = config::Localizer::Get().Lookup(key);
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool mark =
            text[at] == u'@' && at + 1 < text.size() && text[at + 1] >= u'0' && text[at + 1] <= u'9';
        if (mark)
            mText += replacements[static_cast<std::size_t>(text[++at] - u'0')];
        else
            mText += text[at];
    }
}

}  // namespace ferrite
