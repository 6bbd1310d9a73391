#pragma once

#include "protocol/generator/Values.h"
#include "reference_host/Forwarders.h"
#include "reference_host/ForwardingDispatcher.h"
#include "reference_host/Host.h"

#include <string>
#include <utility>
#include <vector>

namespace Protocol::Generator {

/// Something that the library did.
struct Effect
{
    std::string operation;
    Json arguments;
};

inline bool operator==(const Effect& a, const Effect& b)
{
    return a.operation == b.operation && a.arguments == b.arguments;
}

/// Takes down what is called with an effect: the dispatcher's operations, notifications, posts,
/// registrations. The hook of the forwarders.
class Recorder
{
public:
    template <class... Arguments>
    void operator()(const char* operation, const Arguments&... arguments)
    {
        if (HasEffect(operation))
            mEffects.push_back({operation, Json::array({JsonOf(arguments)...})});
    }
    void operator()(const char* operation, const ferrite::utility::ImmutableString& station,
                    const Kiln::Message& message, const bool& flag);

    /// \return What was done since the last time.
    std::vector<Effect> Take() { return std::exchange(mEffects, {}); }

    static constexpr const char* kNotification = "PlexaManager::DispatchApplicationEvent";
    static constexpr const char* kPost = "Kiln::StationUtils::PostMessageToUIThread";

private:
    static bool HasEffect(std::string_view operation);

    std::vector<Effect> mEffects;
};

/// Every path without a point in its last part is a folder, every other one a file.
class Paths final : public Kiln::IFiles
{
public:
    bool ExistsOnDisk(const UTF16String& /*path*/) override { return true; }
    bool IsDirectory(const UTF16String& path) override;
    UTF16String ToNormalizedPath(const UTF16String& path) override { return path; }
    UTF16String NormalizePathWithoutUNC(const UTF16String& path) override { return path; }
};

/// The cache has the XMP packet of every path.
class Library final : public ReferenceHost::IngestLibrary
{
public:
    AC_CONSTANT static constexpr const char* kPacket = "<xmpmeta title=\"A001\"/>";

    Ridge::ResultCode ReadXMPFromCache(const UTF16String& /*mediaPath*/, const Ridge::XMPText& holder,
                                       UTF16String& /*scratch*/) override
    {
        *holder = kPacket;
        return 0;
    }
};

/// Every fresh GUID is the same.
class FixedTexts final : public ReferenceHost::Texts
{
public:
    AC_CONSTANT static constexpr ferrite::utility::Guid kFresh{0x1, 0x2};

    ferrite::utility::Guid CreateUniqueGuid() override { return kFresh; }
};

/// A host that knows the file of the samples and records what the library does. Installed as long as it
/// lives.
class RecordingHost
{
public:
    RecordingHost();

    AC_CONSTANT static constexpr const char* kBrowserID = "panel-now";

    ALD::IAssetLibraryDispatcher* Dispatcher() { return &mDispatcher; }

    /// A panel raises a request. \return What happened.
    std::vector<Effect> Raise(const UTF16String& type, const std::string& text);

    /// \return What happened since the last time.
    std::vector<Effect> TakeEffects() { return mRecorder.Take(); }

private:
    Recorder mRecorder;
    ReferenceHost::Memory mMemory;
    Paths mPaths;
    FixedTexts mTexts;
    Library mIngestLibrary;
    ReferenceHost::Stations mStations{ReferenceHost::Stations::Delivery::kByHand};
    ReferenceHost::PanelEvents mPanelEvents{mStations};
    ReferenceHost::ForwardingIngestLibrary<Recorder> mForwardedIngestLibrary{mIngestLibrary, mRecorder};
    ReferenceHost::ForwardingStations<Recorder> mForwardedStations{mStations, mRecorder};
    ReferenceHost::ForwardingPanelEvents<Recorder> mForwardedPanelEvents{mPanelEvents, mRecorder};
    ReferenceHost::ForwardingDispatcher<Recorder> mDispatcher{mRecorder};
    ReferenceHost::Installation mInstallation;
};

/// A class of station messages.
struct MessageClass
{
    std::uint32_t typeID;
    const char* name;
    const char* typeName;
    std::string payload;  ///< As Member::type.
    Json (*payloadOf)(const Kiln::Message& message);
};

/// \return Every class of the library.
const std::vector<MessageClass>& MessageClasses();

}  // namespace Protocol::Generator
