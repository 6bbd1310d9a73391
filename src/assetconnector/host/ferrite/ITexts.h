#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/ferrite/UTF16String.h"

namespace ferrite {

/// Localised texts, the error report that the user sees, and fresh GUIDs.
/// Implemented by the host, called by connectors on the thread that called them; several threads may
/// call at once. What an operation throws travels untouched to the caller of the connector.
class ITexts
{
public:
    virtual ~ITexts() = default;

    /// \param key "$$$/", the key path, "=" and the default text.
    /// \return The text in the user's language; the default text where there is no translation. "@0" to
    ///         "@9" in it stand for replacements and are left as they are here.
    virtual UTF16String Localize(const UTF16String& key) = 0;

    /// Reports an error to the user.
    /// \param text The localised text. \param detail Empty at every call of the library.
    virtual void SetSDKInfoString(const UTF16String& text, const UTF16String& detail) = 0;

    /// \return A GUID that is not zero and was never returned before.
    virtual utility::Guid CreateUniqueGuid() = 0;
};

}  // namespace ferrite
