#include "assetconnector/host/keel/MarkerUtilities.h"
#include "assetconnector/host/kiln/PathUtils.h"
#include "assetconnector/host/ridge/AssetItem.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "assetconnector/message/RidgeRecords.h"
#include "conformance/CheckTables.h"
#include "conformance/IngestLibraryProbes.h"
#include "conformance/Probes.h"

#include <boost/smart_ptr/make_shared_object.hpp>

namespace Conformance {
namespace {

using Ridge::AssetMediaInfo;
using Ridge::AssetMediaType;

void MediaInfo(Context& context)
{
    const Ridge::MediaInfoArguments arguments = SampleArguments(UniquePath());
    const auto info = Create(arguments);
    const auto other = Create(arguments);
    ExpectValues(context, arguments, *info);
    context.ExpectEqual("two media infos of the same values are one object", false, info == other);
    context.ExpectEqual("GetForceLoadFromLocalDisk, which nobody has set", -1,
                        info->GetForceLoadFromLocalDisk());
    context.ExpectNoThrow("SetNeedSavePreCheck", [&info] { info->SetNeedSavePreCheck(true); });
}

void MasterClip(Context& context)
{
    const Ridge::MediaInfoArguments sample = SampleArguments(UniquePath());
    const auto info = AssetMediaInfo::CreateMasterClipMediaInfo(
        sample.guid, sample.mediaPath, u"a.mov", sample.xmp, sample.customMetadata, sample.createTime,
        sample.lastModifyTime, UTF16String());
    if (info == nullptr)
        Context::NotChecked("the host makes no media info of a master clip");
    context.ExpectEqual("type", static_cast<int>(AssetMediaType::kMasterClip),
                        static_cast<int>(info->GetAssetMediaType()));
    context.ExpectEqual("GUID", sample.guid, info->GetAssetMediaInfoGUID());
    context.ExpectEqual("media path", sample.mediaPath, info->GetMediaPath());
    context.ExpectEqual("custom metadata", sample.customMetadata, info->GetCustomMetadata());
    context.ExpectEqual("create time", sample.createTime, info->GetCreateTime());
    context.ExpectEqual("last modify time", sample.lastModifyTime, info->GetLastModifyTime());
    context.ExpectEqual("XMP", *sample.xmp, PacketOf(*info));
}

void NullXMP(Context& context)
{
    Ridge::MediaInfoArguments arguments = SampleArguments(UniquePath());
    arguments.xmp = nullptr;
    context.ExpectNoThrow("a media info without XMP", [&context, &arguments] {
        context.ExpectEqual("XMP of a media info without any", "", PacketOf(*Create(arguments)));
    });
}

void SharedXMP(Context& context)
{
    const auto project = OpenProject();
    const Ridge::MediaInfoArguments first = SampleArguments(UniquePath());
    Ridge::MediaInfoArguments second = SampleArguments(UniquePath());
    second.xmp = first.xmp;
    const auto refreshed = Create(first);
    const auto kept = Create(second);
    const std::string before = *first.xmp;
    project->RegisterAssetMediaInfoList({}, {refreshed, kept}, false, false);
    project->RefreshAssetMediaInfoByPath(first.mediaPath, boost::make_shared<std::string>("<new/>"));
    context.ExpectEqual("XMP of an info when another one with the same packet was refreshed", before,
                        PacketOf(*kept));
    context.ExpectEqual("the packet that both were made with", before, *first.xmp);
}

void Registered(Context& context)
{
    const auto project = OpenProject();
    const Ridge::MediaInfoArguments arguments = SampleArguments(UniquePath());
    project->RegisterAssetMediaInfoList({}, {Create(arguments)}, false, false);
    const auto found = project->GetAssetMediaInfo(arguments.mediaPath, false);
    if (context.Expect(found != nullptr, "a registered path", "a media info", "null"))
        context.ExpectEqual("GUID of what is found", arguments.guid, found->GetAssetMediaInfoGUID());
}

void Unknown(Context& context)
{
    const auto project = OpenProject();
    const UTF16String path = UniquePath();
    context.ExpectNoThrow("refreshing a path that is not registered", [&project, &path] {
        project->RefreshAssetMediaInfoByPath(path, boost::make_shared<std::string>("<new/>"));
    });
    context.Expect(project->GetAssetMediaInfo(path, false) == nullptr, "a path that is not registered",
                   "null", "a media info");
}

void NullEntries(Context& context)
{
    const auto project = OpenProject();
    const Ridge::MediaInfoArguments arguments = SampleArguments(UniquePath());
    const auto item = boost::make_shared<Ridge::AssetItem>(Ridge::AssetItemValues());
    context.ExpectNoThrow("registering lists with null entries", [&] {
        project->RegisterAssetMediaInfoList({nullptr, item}, {nullptr, Create(arguments), nullptr}, false,
                                            false);
    });
    context.Expect(project->GetAssetMediaInfo(arguments.mediaPath, false) != nullptr,
                   "an info between null entries", "registered", "not registered");
}

void Refreshed(Context& context)
{
    const auto project = OpenProject();
    const Ridge::MediaInfoArguments arguments = SampleArguments(UniquePath());
    project->RegisterAssetMediaInfoList({}, {Create(arguments)}, false, false);
    project->RefreshAssetMediaInfoByPath(arguments.mediaPath, boost::make_shared<std::string>("<new/>"));
    const auto found = project->GetAssetMediaInfo(arguments.mediaPath, false);
    if (context.Expect(found != nullptr, "a refreshed path", "a media info", "null"))
        context.ExpectEqual("XMP of a refreshed path", "<new/>", PacketOf(*found));
}

void SurvivesProject(Context& context)
{
    const Ridge::MediaInfoArguments arguments = SampleArguments(UniquePath());
    boost::shared_ptr<AssetMediaInfo> info = Create(arguments);
    OpenProject()->RegisterAssetMediaInfoList({}, {info}, false, false);
    info = OpenProject()->GetAssetMediaInfo(arguments.mediaPath, false);
    if (!context.Expect(info != nullptr, "a registered path", "a media info", "null"))
        return;
    const std::vector<std::string> before = ShownValues(*info);
    const ClosedProject closed(context);
    context.ExpectEqual("values when the project is closed", before, ShownValues(*info));
}

void NoProject(Context& context)
{
    const ClosedProject closed(context);
    context.ExpectNoThrow("asking for the project where none is open", [&context] {
        context.Expect(Ridge::SRProject::GetInstance() == nullptr, "the project where none is open", "null",
                       "a project");
    });
}

void CachedXMP(Context& context)
{
    const auto& setCachedXMP = context.GetSubject().setCachedXMP;
    Context::Require(setCachedXMP, "setCachedXMP");
    const UTF16String path = UniquePath();
    const std::string packet = "<x:xmpmeta>\xE2\x82\xAC</x:xmpmeta>";
    setCachedXMP(path, packet);
    const auto holder = boost::make_shared<std::string>();
    UTF16String scratch;
    const Ridge::ResultCode code = Ridge::SRLibrarySupport::ReadXMPFromCache(path, holder, scratch);
    context.Expect(code >= 0, "result of a path with XMP", "0 or positive", std::to_string(code));
    context.ExpectEqual("the holder", packet, *holder);
}

void UnknownXMP(Context& context)
{
    const auto& setCachedXMP = context.GetSubject().setCachedXMP;
    if (setCachedXMP)
        setCachedXMP(UniquePath(), "<other/>");
    const auto holder = boost::make_shared<std::string>();
    UTF16String scratch;
    const Ridge::ResultCode code = Ridge::SRLibrarySupport::ReadXMPFromCache(UniquePath(), holder, scratch);
    context.Expect(code < 0 || holder->empty(), "a file that never was", "a failure, or no packet",
                   std::to_string(code) + " and " + Describe(*holder));
}

void CustomMetadata(Context& context)
{
    const auto textOf = [](const std::set<UTF16String>& keywords) {
        Ridge::CustomMetadata metadata;
        metadata.minimumMetadata.keywords = keywords;
        return Ridge::Utilities::CreateCustomMetadataStr(metadata);
    };
    context.ExpectNoThrow("the text of an empty block", [&textOf] { textOf({}); });
    const UTF16String beach = textOf({u"beach"});
    context.Expect(beach != textOf({u"harbour"}), "texts of two blocks with different keywords", "different",
                   "both " + Describe(beach));
}

void OddPathsOfMedia(Context& context)
{
    const auto holder = boost::make_shared<std::string>();
    for (const UTF16String& path : OddPaths())
        context.ExpectNoThrow("media of the path " + Describe(path), [&] {
            UTF16String scratch;
            const bool supports = Ridge::Utilities::PathSupportsXMP(path);
            context.ExpectEqual("PathSupportsXMP of " + Describe(path) + ", asked again", supports,
                                Ridge::Utilities::PathSupportsXMP(path));
            Ridge::SRLibrarySupport::ReadXMPFromCache(path, holder, scratch);
        });
}

void Providers(Context& context)
{
    context.ExpectNoThrow("registering metadata providers again", [] {
        const UTF16String path = Kiln::PathUtils::ToNormalizedPath(UniquePath());
        for (int i = 0; i < 2; ++i) {
            Ridge::Utilities::RegisterDBMetadataProvider();
            Ridge::Utilities::RegisterDBMetadataProviderForPath(path);
        }
    });
}

void Core(Context& context)
{
    const auto info = Create(SampleArguments(UniquePath()));
    const auto item = boost::make_shared<Ridge::AssetItem>(Ridge::AssetItemValues());
    context.ExpectNoThrow("registering with the library's core", [&info, &item] {
        for (unsigned flags = 0; flags < 16; ++flags) {
            const auto flag = [flags](unsigned number) { return (flags >> number & 1U) != 0; };
            Ridge::SRLibrarySupport::RegisterAssetMediaInfoToSRCore({}, {}, flag(0), flag(1), flag(2),
                                                                    flag(3));
            Ridge::SRLibrarySupport::RegisterAssetMediaInfoToSRCore({info}, {item}, flag(0), flag(1), flag(2),
                                                                    flag(3));
        }
    });
}

void Marker(Context& context)
{
    Context::Require(context.GetSubject().makeMarker, "makeMarker");
    const Kiln::InterfaceRef<Keel::IMarker> marker = context.GetSubject().makeMarker();
    if (!marker)
        Context::NotChecked("the host makes no marker");
    const UTF16String text =
        Keel::MarkerUtilities::ToPropertyXML(marker, tempora::FrameRate{tempora::kTicksPerSecond / 25});
    context.Expect(!text.empty(), "property XML of a marker at 25 frames per second", "a text", "none");
    context.ExpectNoThrow("property XML at the rate zero", [&marker] {
        Keel::MarkerUtilities::ToPropertyXML(marker, tempora::kFrameRate_Zero);
    });
}

void Threads(Context& context)
{
    constexpr int kRounds = 20;
    context.ExpectNoThrow("the ingest library on other threads", [&context] {
        OnTwoThreads([&context] {
            for (int i = 0; i < kRounds; ++i) {
                const Ridge::MediaInfoArguments arguments = SampleArguments(UniquePath());
                const auto info = Create(arguments);
                context.ExpectEqual("path of a media info of one of two threads", arguments.mediaPath,
                                    info->GetMediaPath());
                const auto holder = boost::make_shared<std::string>();
                UTF16String scratch;
                Ridge::SRLibrarySupport::ReadXMPFromCache(arguments.mediaPath, holder, scratch);
                Ridge::Utilities::PathSupportsXMP(arguments.mediaPath);
                Ridge::Utilities::RegisterDBMetadataProviderForPath(
                    Kiln::PathUtils::ToNormalizedPath(arguments.mediaPath));
                if (const auto project = Ridge::SRProject::GetInstance()) {
                    project->RegisterAssetMediaInfoList({}, {info}, false, false);
                    const auto found = project->GetAssetMediaInfo(arguments.mediaPath, false);
                    if (context.Expect(found != nullptr, "a path that one of two threads registered",
                                       "a media info", "null"))
                        context.ExpectEqual("path of what one of two threads registered", arguments.mediaPath,
                                            found->GetMediaPath());
                    project->RefreshAssetMediaInfoByPath(arguments.mediaPath, holder);
                }
            }
        });
    });
}

}  // namespace

std::vector<Check> IngestLibraryChecks()
{
    return {
        {"library.media-info", "A media info is a new object and gives each value that it was made with.",
         "Panels show wrong values, and save them.", MediaInfo},
        {"library.master-clip",
         "The media info of a master clip has the type of one, and gives what it was made with.",
         "Imported clips lose their metadata and times.", MasterClip},
        {"library.null-xmp", "A media info may be without XMP.", "A file without XMP cannot be imported.",
         NullXMP},
        {"library.shared-xmp",
         "Refreshing gives a media info another packet; the one it had, which others share, stays as it is.",
         "The metadata of one clip turns up at others.", SharedXMP},
        {"library.registered", "The project finds a registered media info by its path.",
         "Metadata of known clips is read from disk again, or not at all.", Registered},
        {"library.unknown",
         "A path that is not registered has no media info, and refreshing it does nothing.",
         "Panels get empty metadata for unknown clips, or reading a file's XMP fails.", Unknown},
        {"library.null-entries", "The project skips null entries of lists.",
         "One entry that could not be made, and the assets around it are not registered.", NullEntries},
        {"library.refreshed", "Refreshing a registered path gives it the new packet.",
         "Panels see the metadata of before.", Refreshed},
        {"library.survives-project", "Media infos keep their values when the project is closed.",
         "A notification under way names nothing when the user closes the project.", SurvivesProject},
        {"library.no-project", "Without an open project the project is null.",
         "Every request that looks at the project fails until one is open.", NoProject},
        {"library.cached-xmp", "The XMP packet of a path gets into the holder that was given.",
         "Panels get empty packets, and write them back.", CachedXMP},
        {"library.unknown-xmp", "A file that is not known has no packet.",
         "A clip gets the metadata of another one.", UnknownXMP},
        {"library.custom-metadata", "The text form of metadata says what the metadata says.",
         "What the user typed in is lost.", CustomMetadata},
        {"library.odd-paths", "Any path may be asked for, with or without an extension.",
         "One odd path of a panel, and its request ends without an answer.", OddPathsOfMedia},
        {"library.providers", "A metadata provider may be registered again.",
         "The second export of a session fails.", Providers},
        {"library.core", "The library's core takes empty lists and every combination of flags.",
         "Messages that carry no assets fail.", Core},
        {"library.marker", "A marker with properties has a property XML; any rate may be asked for.",
         "Panels lose the markers of clips.", Marker},
        {"library.threads",
         "The ingest library is used on any thread, several at once.",
         "Reports of background threads fail.",
         Threads,
         {"files.threads"}},
    };
}

}  // namespace Conformance
