#pragma once

#include "assetconnector/host/ferrite/ITexts.h"

#include <boost/function.hpp>
#include <boost/uuid/random_generator.hpp>

#include <map>
#include <mutex>

namespace ReferenceHost {

/// One report to the user.
struct SDKInfo
{
    UTF16String text;
    UTF16String detail;
};

/// Texts from a table of translations, reports to a handler, random GUIDs. Any thread.
class Texts : public ferrite::ITexts
{
public:
    /// \return The translation of the key's path; else what stands behind the first "=", or the whole key
    ///         when it has none.
    UTF16String Localize(const UTF16String& key) override;

    /// \param keyPath What stands between "$$$/" and "=" in a key.
    void SetTranslation(const UTF16String& keyPath, UTF16String text);

    /// Passes the report to the handler, whose exceptions reach the caller.
    void SetSDKInfoString(const UTF16String& text, const UTF16String& detail) override;

    /// \param handler Empty for none. It runs on the thread that reports, without a lock.
    void SetSDKInfoHandler(boost::function<void(const SDKInfo&)> handler);

    /// \return A random GUID (version 4).
    ferrite::utility::Guid CreateUniqueGuid() override;

private:
    std::mutex mMutex;
    std::map<UTF16String, UTF16String> mTranslations;
    boost::function<void(const SDKInfo&)> mInfoHandler;
    boost::uuids::random_generator mRandomGuids;
};

}  // namespace ReferenceHost
