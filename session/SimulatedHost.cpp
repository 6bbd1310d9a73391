#include "session/SimulatedHost.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/message/RidgeRecords.h"

namespace Session {

using ferrite::utility::Guid;

Guid SimulatedTexts::CreateUniqueGuid()
{
    ++mCount;
    if (mGuids.empty())
        return {0x0000000000004000, 0x8000000000000000 | mCount};
    const Guid guid = mGuids.front();
    mGuids.pop_front();
    return guid;
}

boost::shared_ptr<Ridge::AssetMediaInfo> SimulatedIngestLibrary::CreateMediaInfo(
    const Ridge::MediaInfoArguments& arguments)
{
    return mFailing.count(arguments.mediaPath) != 0 ? nullptr : IngestLibrary::CreateMediaInfo(arguments);
}

boost::shared_ptr<Ridge::AssetMediaInfo> SimulatedIngestLibrary::CreateMasterClipMediaInfo(
    const Guid& guid, const UTF16String& mediaPath, const UTF16String& fileName, const Ridge::XMPText& xmp,
    const UTF16String& customMetadata, const UTF16String& createTime, const UTF16String& lastModifyTime,
    const UTF16String& reservedText)
{
    if (mFailing.count(mediaPath) != 0)
        return nullptr;
    return IngestLibrary::CreateMasterClipMediaInfo(guid, mediaPath, fileName, xmp, customMetadata,
                                                    createTime, lastModifyTime, reservedText);
}

UTF16String SimulatedIngestLibrary::CreateCustomMetadataStr(const Ridge::CustomMetadata& metadata)
{
    return ferrite::utility::UTF8to16(SimulatedObjects::WriterFor(Style::kSession).TextOf(metadata));
}

SimulatedHost::SimulatedHost(Recorder& recorder, const Wrap& wrap)
    : mRecorder(recorder), mInstallation(wrap ? wrap(Services()) : Services(), mStations)
{
}

AC::HostServices SimulatedHost::Services()
{
    return {mForwardedPanelEvents, mForwardedStations, mForwardedIngestLibrary,
            mForwardedFiles,       mForwardedTexts,    mMemory};
}

}  // namespace Session
