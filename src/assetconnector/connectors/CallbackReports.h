#pragma once

#include "assetconnector/host/ridge/IIngestLibraryNotifier.h"
#include "assetconnector/message/ACMessage.h"

/// What the two callbacks that each connector handles in its own way were called with. References are the
/// caller's and hold during the call.
namespace AC {

/// Of Ridge::IIngestLibraryNotifier::OnImportXMPFinished.
struct ImportXMPReport
{
    const ferrite::utility::Guid& task;
    const ferrite::utility::Guid& message;
    Ridge::ResultCode code;
    const ferrite::utility::Guid& batch;
    const ferrite::utility::Guid& taskItem;
    const Ridge::AssetMediaInfoList& infos;
    const Ridge::AssetItemList& items;
};

/// Of Ridge::IIngestLibraryNotifier::OnReadXMPFinished.
struct ReadXMPReport
{
    const ferrite::utility::Guid& task;
    const ferrite::utility::Guid& message;
    Ridge::ResultCode code;
    const UTF16String& mediaPath;
    const ferrite::utility::Guid& mediaInfo;
    const Ridge::CustomMetadata& metadata;
    const Ridge::XMPText& xmp;
    const UTF16String& createTime;
    const UTF16String& lastModifyTime;
    const ferrite::utility::Guid& batch;
    const ferrite::utility::Guid& taskItem;
    const Ridge::ErrorRecordList& errors;
    const Kiln::InterfaceRef<KilnUnknown>& requestContext;
};

/// Appends the media info of the file that was read, unless the host makes none.
void AppendMasterClip(const ReadXMPReport& report, const UTF16String& customMetadata, ACMessage& record);

}  // namespace AC
