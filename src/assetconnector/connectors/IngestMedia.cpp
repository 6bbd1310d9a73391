#include "assetconnector/connectors/IngestMedia.h"

#include "assetconnector/connectors/SendRoad.h"
#include "assetconnector/host/ferrite/ZString.h"
#include "assetconnector/host/kiln/PathUtils.h"
#include "assetconnector/host/spur/SDKErrors.h"
#include "assetconnector/message/ResultNames.h"

#include <boost/make_shared.hpp>

#include <utility>

namespace AC {
namespace {

// clang-format off
constexpr char16_t kSourceFailure[] =
    u"$$$/Brisel/SRLibrarySupport/IngestMediaSrcFail="
    u"Ingestion of @0 failed. Either the path is non-existent or it is a directory";
constexpr char16_t kDestinationFailure[] =
    u"$$$/Brisel/SRLibrarySupport/IngestMediaDstFail="
    u"Copy to @0 failed. Either the path is non-existent or it is not a directory";
// clang-format on

/// \return Whether the request asks for copies of what it ingests.
bool IsCopy(const IngestMediaSettings& settings)
{
    return settings.isCopy == u"Copy";
}

/// The checks of one ingest request: one result for each path that was looked at.
class IngestMediaCheck
{
public:
    explicit IngestMediaCheck(IngestMediaSettings& settings) : mSettings(settings)
    {
        CheckSources();
        if (mFirstFound && IsCopy(mSettings) && !mSettings.copyToFolder.empty())
            CheckDestination();
    }

    /// The first source is usable: others that are not do not stop the ingest.
    bool CanStart() const { return mFirstFound; }

    bool IsGood() const { return mGood && !(IsCopy(mSettings) && mSettings.copyToFolder.empty()); }

    Ridge::TransferResultList TakeResults() { return std::move(mResults); }

private:
    void CheckSources()
    {
        mGood = !mSettings.items.empty();
        UTF16String folder;
        for (const UTF16String& item : mSettings.items) {
            const bool isFirst = item == mSettings.items.front();
            const UTF16String path = isFirst ? item : folder + item;
            const bool usable = IsUsableSource(path);
            if (usable)
                AddResult(path, 0);
            else
                AddFailure(path, kSourceFailure, item);
            if (!isFirst)
                continue;
            if (!usable)
                return;
            folder = FolderOf(path);
            mFirstFound = true;
        }
    }

    static bool IsUsableSource(const UTF16String& path)
    {
        return !path.empty() && Kiln::PathUtils::ExistsOnDisk(path) && !Kiln::PathUtils::IsDirectory(path);
    }

    static UTF16String FolderOf(const UTF16String& path)
    {
        UTF16String drive;
        UTF16String folder;
        Kiln::PathUtils::SplitPath(path, &drive, &folder, nullptr, nullptr);
        return drive + folder;
    }

    /// A destination that cannot be used is dropped: the ingest goes ahead without copying.
    void CheckDestination()
    {
        const UTF16String& folder = mSettings.copyToFolder;
        if (Kiln::PathUtils::ExistsOnDisk(folder) && Kiln::PathUtils::IsDirectory(folder)) {
            AddResult(folder, 0);
            return;
        }
        const UTF16String rejected = std::exchange(mSettings.copyToFolder, {});
        AddFailure(rejected, kDestinationFailure, rejected);
    }

    void AddResult(const UTF16String& path, Ridge::ResultCode code)
    {
        auto result = boost::make_shared<Ridge::TransferResult>();
        result->src = path;
        result->result = code;
        mResults.push_back(std::move(result));
    }

    /// \param named The path as the panel gave it, which the user's text names.
    void AddFailure(const UTF16String& path, const UTF16String& key, const UTF16String& named)
    {
        mGood = false;
        const ferrite::ZString text(key, {named});
        AddResult(path, Ridge::kFailure);
        Spur::SDKErrors::SetSDKInfoString(text.Text(), UTF16String());
    }

    IngestMediaSettings& mSettings;
    Ridge::TransferResultList mResults;
    bool mFirstFound = false;
    bool mGood = false;
};

}  // namespace

void IngestMedia(const RequestCall& call)
{
    ACMessage& request = call.request;
    IngestMediaCheck check(request.ingestMediaItemList);

    ACMessage status;
    status.header = request.header;
    status.result = ResultName(check.IsGood() ? 0 : Ridge::kFailure);
    status.transferResultList = check.TakeResults();
    Send(*call.row.reply, status, Encoding::kPlain);

    if (check.CanStart() && call.dispatcher != nullptr)
        call.dispatcher->StartMediaIngest(request.header.taskID, request.header.msgID,
                                          request.ingestMediaItemList);
}

}  // namespace AC
