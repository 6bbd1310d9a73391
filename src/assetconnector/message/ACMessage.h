#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/kiln/KilnUnknown.h"
#include "assetconnector/message/MessageConstants.h"
#include "assetconnector/message/Records.h"
#include "assetconnector/message/RidgeRecords.h"

#include <cstdint>

namespace AC {

/// Whom a message belongs to.
struct ACMessageHeader
{
    UTF16String browserID;  ///< The panel that it comes from or goes to.
    ferrite::utility::Guid taskID;
    ferrite::utility::Guid msgID;

    /// Note the order. The browser id may be this header's own.
    AC_API void Set(const ferrite::utility::Guid& inTaskID, const ferrite::utility::Guid& inMsgID,
                    const UTF16String& inBrowserID);
};

/// The one form in memory of every message: requests are decoded into it, notifications encoded from it.
/// Each kind fills the few members it needs and leaves the others at their construction values, which count
/// as absent. A member is named like the XML element that carries it. "tri-state" is kACMessage_Undefine,
/// kACMessage_True or kACMessage_False.
///
/// Copies share the items of lists and the request context. Not locked: whoever holds a record keeps other
/// threads from changing it.
struct AC_API ACMessage
{
    ACMessage();
    ACMessage(const ACMessage& other);
    ACMessage(ACMessage&& other) noexcept;
    ACMessage& operator=(const ACMessage& other);
    ACMessage& operator=(ACMessage&& other) noexcept;
    ~ACMessage();

    ACMessageHeader header;
    Ridge::AssetMediaInfoList assetMediaInfoList;
    Ridge::AssetItemList assetItemList;
    bool saveFlag = false;  ///< Not in XML: for station listeners.
    UTF16String filePath;
    UTF16String clipFormat;
    ferrite::utility::Guid taskItemID;
    ferrite::utility::Guid batchID;
    UTF16String errorInfo;
    UTF16String fileContent;
    std::int32_t mediaUseLocalFile = -1;     ///< tri-state
    std::int32_t roughCutUseLocalFile = -1;  ///< tri-state
    std::int32_t deleteOnDisk = -1;          ///< tri-state
    UTF16String result;                      ///< A result name, such as kACMessage_ResultOK.
    Ridge::IngestItemList ingestItemList;
    Ridge::PathList fileList;
    std::int32_t percentage = -1;  ///< -1 is not set.
    ThumbnailRequest thumbnailRequest;
    std::int32_t allowExit = -1;  ///< tri-state
    Ridge::GuidList taskIDList;
    Ridge::ActionResultList actionResultList;
    std::list<UTF16String> commandList;
    UTF16String host;
    Ridge::FileInfoList fileInfoList;
    Ridge::CustomMetadata customMetadata;
    EventInfo event;
    Ridge::TransferItemList transferItemList;
    std::int32_t transferOption = 0;  ///< 1 overwrites.
    FtpSetting ftpSetting;
    std::int32_t transferType = 0;  ///< 1 is FTP, 0 local.
    RenameItemList renameItemList;
    IngestMediaSettings ingestMediaItemList;
    Ridge::TransferResultList transferResultList;
    SelectedItemInfoList selectedItemInfoList;
    MediaPropertyInfo mediaPropertyInfo;
    UTF16String targetBin;
    UTF16String presetPath;
    UTF16String outputDirectory;
    UTF16String outputFileName;
    Ridge::TranscodeItemList transcodeItemList;
    Ridge::ConcatenationItemList concatenationItemList;
    UTF16String outputFilePath;
    bool outputXMP = true;
    Ridge::ColumnTexts newDynamicColumns;    ///< Column to name.
    Ridge::ColumnTexts previousColumnNames;  ///< Column to the name it had, where there is one.
    Ridge::ColumnSet deleteDynamicColumns;
    Ridge::ColumnFieldValues dynamicColumnFieldValues;
    ExportResultInfo exportResultInfo;
    UTF16String currentWorkMode;
    std::int32_t installed = -1;  ///< tri-state
    Ridge::TagTemplateInfoList tagTemplateInfoList;
    TagTemplateResultList tagTemplateResultList;
    std::int32_t tagTemplateOption = 0;  ///< 1 overwrites.
    MarkerInfoList markerInfoList;
    Kiln::InterfaceRef<KilnUnknown> requestContext;  ///< Not in XML; lives until the last copy goes.
};

}  // namespace AC
