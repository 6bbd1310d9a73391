#include "assetconnector/connectors/SendRoad.h"

#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/plexa/PlexaManager.h"

namespace AC {

using ferrite::utility::Guid;

std::string EncodeDecodedNotification(const ACMessage& message)
{
    return ACMessageEncoder::EncodeDecodedUTF8(message, kNotificationRoot);
}

void Send(const UTF16String& notification, const ACMessage& message, Encoding encoding)
{
    const std::string identifier = ferrite::utility::UTF16to8(notification);
    PlexaManager::DispatchApplicationEvent(identifier,
                                           encoding == Encoding::kDecoded
                                               ? EncodeDecodedNotification(message)
                                               : ACMessageEncoder::EncodeUTF8(message, kNotificationRoot));
}

void SetHeader(const CallbackRow& row, const Guid& task, const Guid& message, ACMessageHeader& header)
{
    const UTF16String browserID = row.browser == BrowserRule::kCurrent
                                      ? ferrite::utility::UTF8to16(PlexaManager::GetBrowserID())
                                      : kNativeBrowserID;
    switch (row.header) {
        case HeaderRule::kFromCall:
            header.Set(task, message, browserID);
            break;
        case HeaderRule::kTaskAndUnique:
            header.Set(task, Guid::CreateUnique(), browserID);
            break;
        case HeaderRule::kTaskTwice:
            header.Set(task, task, browserID);
            break;
        case HeaderRule::kUniqueTwice: {
            const Guid unique = Guid::CreateUnique();
            header.Set(unique, unique, browserID);
            break;
        }
    }
}

}  // namespace AC
