#include "assetconnector/message/ACMessage.h"

namespace AC {

void ACMessageHeader::Set(const ferrite::utility::Guid& inTaskID, const ferrite::utility::Guid& inMsgID,
                          const UTF16String& inBrowserID)
{
    taskID = inTaskID;
    msgID = inMsgID;
    if (&inBrowserID != &browserID)
        browserID = inBrowserID;
}

// Defined here and not in every user: the record has some fifty members.
ACMessage::ACMessage() = default;
ACMessage::ACMessage(const ACMessage& other) = default;
ACMessage::ACMessage(ACMessage&& other) noexcept = default;
ACMessage& ACMessage::operator=(const ACMessage& other) = default;
ACMessage& ACMessage::operator=(ACMessage&& other) noexcept = default;
ACMessage::~ACMessage() = default;

}  // namespace AC
