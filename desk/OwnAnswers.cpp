#include "desk/OwnAnswers.h"

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "session/ValueReader.h"

namespace Desk {
namespace {

using ferrite::utility::UTF16to8;

struct Row
{
    const UTF16String* request;
    const UTF16String* status;
    bool tellsAssets;
};

constexpr Row kAnswers[] = {
    {&AC::kPlexaEventType_RequestInitInfo, &AC::kPlexaEventType_NotificationRequestInitInfoStatus, true},
    {&AC::kPlexaEventType_InsertDynamicColumns, &AC::kPlexaEventType_NotificationInsertDynamicColumnsStatus,
     false},
    {&AC::kPlexaEventType_DeleteDynamicColumns, &AC::kPlexaEventType_NotificationDeleteDynamicColumnsStatus,
     false},
    {&AC::kPlexaEventType_UpdateDynamicColumnFields,
     &AC::kPlexaEventType_NotificationUpdateDynamicColumnFieldsStatus, false},
};

}  // namespace

std::vector<std::string> OwnAnswers::Handles() const
{
    std::vector<std::string> handles;
    for (const Row& row : kAnswers)
        handles.push_back(UTF16to8(*row.request));
    return handles;
}

void OwnAnswers::Answer(Host& host, const Origin& asker, const std::string& type,
                        const std::string& xml) const
{
    AC::ACMessage request;
    if (!AC::ACMessageDecoder::DecodeXMLString(ferrite::utility::UTF8to16(xml), request))
        return;
    for (const Row& row : kAnswers) {
        if (UTF16to8(*row.request) != type)
            continue;
        AC::ACMessage answer;
        if (row.tellsAssets) {
            host.FlushRecording();
            answer = Session::ValueReader::Read<AC::ACMessage>(
                mTraffic.WithOverview([](const Overview& overview) { return overview.Assets(); }));
        }
        answer.header = request.header;
        answer.header.browserID = ferrite::utility::UTF8to16(
            asker.kind == PanelKind::kMediaCollection ? "MediaCollection" : asker.browserID);
        answer.result = u"OK";
        host.Tell(UTF16to8(*row.status), AC::ACMessageEncoder::EncodeUTF8(answer, AC::kNotificationRoot));
    }
}

}  // namespace Desk
