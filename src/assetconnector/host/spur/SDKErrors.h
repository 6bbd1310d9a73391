#pragma once

#include "assetconnector/host/Host.h"

namespace Spur::SDKErrors {

/// The host's error report; forwards to ferrite::ITexts::SetSDKInfoString.
/// \throws std::logic_error without an installed host; what the host throws.
inline void SetSDKInfoString(const UTF16String& text, const UTF16String& detail)
{
    AC::InstalledHost().texts.SetSDKInfoString(text, detail);
}

}  // namespace Spur::SDKErrors
