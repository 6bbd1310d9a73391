#include "assetconnector/message/MessageConstants.h"

namespace AC {

const int kACMessage_True = 1;
const int kACMessage_False = 0;
const int kACMessage_Undefine = -1;

const UTF16String kACMessage_ResultOK = u"OK";
const UTF16String kACMessage_ResultFailure = u"ERROR";
const UTF16String kACMessage_ResultIgnore = u"Ignore";
const UTF16String kACMessage_ResultUserCanceled = u"Canceled";
const UTF16String kACMessage_ResultAccessDenied = u"AccessDenied";
const UTF16String kACMessage_ResultDirty = u"Dirty";
const UTF16String kACMessage_ResultUndirty = u"Undirty";

const UTF16String kACMessage_TypeInfo = u"INFO";
const UTF16String kACMessage_TypeWarn = u"WARN";
const UTF16String kACMessage_TypeError = u"ERROR";

const UTF16String kMessageRoot = u"browserMessage";
const UTF16String kNotificationRoot = u"hostNotification";

const UTF16String kNativeBrowserID = u"MediaCollection";

const UTF16String kName = u"Name";
const UTF16String kDuration = u"Duration";
const UTF16String kDropFrame = u"DropFrame";
const UTF16String kVideoFrameRate = u"VideoFrameRate";
const UTF16String kMediaStart = u"MediaStart";
const UTF16String kIsAudioOnly = u"IsAudioOnly";
const UTF16String kIsStillImage = u"IsStillImage";
const UTF16String kCustomMetadataContent = u"CustomMetadataContent";

}  // namespace AC
