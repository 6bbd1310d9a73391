#include "protocol/generator/RecordingHost.h"

#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ridge/SRProject.h"
#include "protocol/facts/PlaceFacts.h"

#include <string_view>

namespace Protocol::Generator {
namespace {

/// What of a payload is no record.
Json WritePayload(const Ridge::InsertedColumns& columns)
{
    return Json::array({JsonOf(columns.newNames), JsonOf(columns.previousNames)});
}
template <class Payload>
Json WritePayload(const Payload& payload)
{
    return JsonOf(payload);
}

template <class Payload>
std::string TypeOfPayload()
{
    if constexpr (std::is_same_v<Payload, Ridge::InsertedColumns>)
        return "list:" + TypeOf<Ridge::ColumnTexts>();  // the new names, the previous ones
    else
        return TypeOf<Payload>();
}

/// \return The media file that the samples speak of.
UTF16String SamplePath()
{
    for (std::size_t i = 0; i < kPlaceFactCount; ++i)
        if (std::string_view(kPlaceFacts[i].path) == "assetMediaInfoList/assetMediaInfo/filePath@path")
            return ferrite::utility::UTF8to16(kPlaceFacts[i].sample);
    return {};
}

}  // namespace

const std::vector<MessageClass>& MessageClasses()
{
    static const std::vector<MessageClass> kClasses{
#define AC_STATION_MESSAGE(NAMESPACE, NAME, TYPE_NAME, PAYLOAD)                             \
    {NAMESPACE::NAME::TypeID(), #NAMESPACE "::" #NAME, TYPE_NAME, TypeOfPayload<PAYLOAD>(), \
     [](const Kiln::Message& message) {                                                     \
         return WritePayload(static_cast<const NAMESPACE::NAME&>(message).GetPayload());    \
     }},
#include "assetconnector/connectors/StationMessages.def"
#undef AC_STATION_MESSAGE
    };
    return kClasses;
}

bool Recorder::HasEffect(std::string_view operation)
{
    return operation.find("::") == std::string_view::npos ||  // the dispatcher's
           operation == kNotification || operation.find("::Register") != std::string_view::npos ||
           operation.find("::Refresh") != std::string_view::npos;
}

void Recorder::operator()(const char* operation, const ferrite::utility::ImmutableString& station,
                          const Kiln::Message& message, const bool& /*flag*/)
{
    for (const MessageClass& row : MessageClasses())
        if (row.typeID == message.MessageTypeID())
            mEffects.push_back(
                {operation, Json::array({row.name, station.AsUTF8(), row.payloadOf(message)})});
}

bool Paths::IsDirectory(const UTF16String& path)
{
    return path.find(u'.', path.find_last_of(u"/\\") + 1) == UTF16String::npos;
}

RecordingHost::RecordingHost()
    : mInstallation(
          {mForwardedPanelEvents, mForwardedStations, mForwardedIngestLibrary, mPaths, mTexts, mMemory},
          mStations)
{
    const UTF16String path = SamplePath();
    Ridge::AssetMediaInfoValues known;
    known.mediaPath = path;
    known.xmpString = boost::make_shared<std::string>(Library::kPacket);
    mIngestLibrary.GetProject()->RegisterAssetMediaInfoList(
        {}, {boost::make_shared<ReferenceHost::MediaInfo>(known)}, false, false);
    mPanelEvents.SetBrowserID(kBrowserID);
    AC::AddTandemEvents();
    mRecorder.Take();
}

std::vector<Effect> RecordingHost::Raise(const UTF16String& type, const std::string& text)
{
    mPanelEvents.Raise(type, ferrite::utility::UTF8to16(text));
    mStations.DropPosted();
    return mRecorder.Take();
}

}  // namespace Protocol::Generator
