#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/UTF16String.h"

#include <array>

namespace ferrite {

namespace config {

/// The host's localiser. Get() is safe on any thread.
class Localizer
{
public:
    AC_API static const Localizer& Get();

    /// \param key See ITexts::Localize, to which this goes.
    /// \throws std::logic_error without an installed host; what the host's text service throws.
    AC_API UTF16String Lookup(const UTF16String& key) const;

private:
    Localizer() = default;
};

}  // namespace config

/// A localised text with its replacements put in.
class ZString
{
public:
    /// What stands for "@0" to "@9".
    using Replacements = std::array<UTF16String, 10>;

    /// Looks the key up. One pass: what a replacement put in is not scanned again.
    /// \throws As Localizer::Lookup.
    AC_API ZString(const UTF16String& key, const Replacements& replacements);

    const UTF16String& Text() const noexcept { return mText; }

private:
    UTF16String mText;
};

}  // namespace ferrite
