#include "assetconnector/host/ferrite/ZString.h"
#include "assetconnector/host/keel/MarkerUtilities.h"
#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "assetconnector/host/spur/SDKErrors.h"
#include "reference_host/Marker.h"
#include "reference_host/MediaInfo.h"
#include "tests/support/HostTest.h"

#include <boost/make_shared.hpp>

#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <stdexcept>
#include <system_error>

namespace {

using Log = std::vector<std::string>;

struct NamedPanel : ReferenceHost::Panel
{
    NamedPanel(std::string inName, Log& inLog) : name(std::move(inName)), log(inLog) {}
    void OnNotification(const std::string& type, const std::string& data) override
    {
        log.push_back(name + ":" + type + ":" + data);
    }
    std::string name;
    Log& log;
};

class ServicesTest : public HostTest
{
};

TEST_F(ServicesTest, PanelEventsAreRaisedWhileRegistered)
{
    struct Receiver : Kiln::Listener
    {
        Receiver() { Kiln::StationUtils::AddListener(Ridge::GetPlexaStationID(), this); }
        void OnStationMessage(const Kiln::Message& message) override
        {
            ASSERT_EQ(message.MessageTypeID(), Ridge::TandemEvent::TypeID());
            received.push_back(static_cast<const Ridge::TandemEvent&>(message).GetData());
        }
        std::vector<UTF16String> received;
    } receiver;
    ReferenceHost::PanelEvents& panels = host.GetPanelEvents();

    EXPECT_FALSE(panels.Raise(u"t", u"before"));
    panels.AddTandemEventListener(u"t", nullptr);
    panels.AddTandemEventListener(u"t", nullptr);
    EXPECT_TRUE(panels.Raise(u"t", u"data"));
    EXPECT_FALSE(panels.Raise(u"other", u"data"));
    panels.RemoveTandemEventListener(u"t", nullptr);
    EXPECT_FALSE(panels.Raise(u"t", u"after"));
    EXPECT_EQ(receiver.received, std::vector<UTF16String>{u"data"});
}

TEST_F(ServicesTest, PanelsGetNotificationsInOrderOfAttachment)
{
    Log log;
    ReferenceHost::PanelEvents& panels = host.GetPanelEvents();
    const auto second = boost::make_shared<NamedPanel>("second", log);
    panels.Attach(boost::make_shared<NamedPanel>("first", log));
    panels.Attach(second);
    panels.DispatchApplicationEvent("t", "1");
    panels.Detach(*second);
    panels.Detach(*second);
    panels.DispatchApplicationEvent("t", "2");
    EXPECT_EQ(log, (Log{"first:t:1", "second:t:1", "first:t:2"}));
}

TEST_F(ServicesTest, TheLastInfoOfAPathWinsAndIsRefreshed)
{
    const auto info = [](const char16_t* path, const char16_t* alias) {
        Ridge::AssetMediaInfoValues values;
        values.mediaPath = path;
        values.aliasName = alias;
        return boost::make_shared<ReferenceHost::MediaInfo>(values);
    };
    const auto project = Ridge::SRProject::GetInstance();
    const auto old = info(u"/b", u"new");
    project->RegisterAssetMediaInfoList({nullptr}, {info(u"/b", u"old"), nullptr, old, info(u"/a", u"")},
                                        false, false);
    project->RefreshAssetMediaInfoByPath(u"/b", boost::make_shared<std::string>("xmp"));
    project->RefreshAssetMediaInfoByPath(u"/unknown", nullptr);

    const auto found = project->GetAssetMediaInfo(u"/b", false);
    EXPECT_EQ(found->GetAliasName(), u"new");
    EXPECT_EQ(*found->GetXMPString(), "xmp");
    EXPECT_EQ(old->GetXMPString(), nullptr);
    EXPECT_EQ(project->GetAssetMediaInfo(u"/a", false)->GetXMPString(), nullptr);
    EXPECT_EQ(project->GetAssetMediaInfo(u"/unknown", false), nullptr);
}

TEST_F(ServicesTest, MediaInfosHoldTheirArguments)
{
    const auto xmp = boost::make_shared<std::string>("xmp");
    const auto any = Ridge::AssetMediaInfo::Create(Ridge::AssetMediaType::kRoughCut, {1, 2}, u"path", xmp,
                                                   u"content", u"custom", u"created", u"modified", u"base",
                                                   u"ntsc", u"alias", false, u"");
    EXPECT_EQ(any->GetFileContent() + any->GetCustomMetadata() + any->GetCreateTime() +
                  any->GetLastModifyTime() + any->GetRateTimeBase() + any->GetRateNtsc() +
                  any->GetAliasName(),
              u"contentcustomcreatedmodifiedbasentscalias");
    EXPECT_EQ(any->GetForceLoadFromLocalDisk(), -1);

    const auto clip = Ridge::AssetMediaInfo::CreateMasterClipMediaInfo(
        {1, 2}, u"path", u"name", xmp, u"custom", u"created", u"modified", u"");
    EXPECT_EQ(clip->GetAssetMediaType(), Ridge::AssetMediaType::kMasterClip);
    EXPECT_EQ(
        clip->GetAliasName() + clip->GetCustomMetadata() + clip->GetCreateTime() + clip->GetLastModifyTime(),
        u"namecustomcreatedmodified");
}

TEST_F(ServicesTest, TheXMPCacheFillsTheHolderWhateverTheCode)
{
    auto& library = host.GetIngestLibrary();
    library.SetCachedXMP(u"/full", 0, "packet");
    library.SetCachedXMP(u"/failed", -5, "packet");
    library.SetCachedXMP(u"/none", 3);
    struct
    {
        const char16_t* path;
        Ridge::ResultCode code;
        const char* holder;
    } const rows[] = {
        {u"/full", 0, "packet"}, {u"/failed", -5, "packet"}, {u"/none", 3, "was"}, {u"/x", -1, "was"}};
    for (const auto& row : rows) {
        const auto holder = boost::make_shared<std::string>("was");
        UTF16String scratch;
        EXPECT_EQ(Ridge::SRLibrarySupport::ReadXMPFromCache(row.path, holder, scratch), row.code);
        EXPECT_EQ(*holder, row.holder) << Narrow(row.path);
    }
}

TEST_F(ServicesTest, XMPSupportGoesByExtensionAndByPath)
{
    EXPECT_TRUE(Ridge::Utilities::PathSupportsXMP(u"D:\\media\\A.MOV"));
    EXPECT_FALSE(Ridge::Utilities::PathSupportsXMP(u"/media.mov/a"));
    host.GetIngestLibrary().SetXMPExtensions({});
    host.GetIngestLibrary().SetXMPPaths({u"/a"});
    EXPECT_FALSE(Ridge::Utilities::PathSupportsXMP(u"/a.mov"));
    EXPECT_TRUE(Ridge::Utilities::PathSupportsXMP(u"/a"));
}

TEST_F(ServicesTest, AMarkerLivesAsLongAsItsReferences)
{
    auto marker = ReferenceHost::Marker::Make(u"<m/>");
    const auto copy = marker;
    marker.Clear();
    EXPECT_EQ(Keel::MarkerUtilities::ToPropertyXML(copy, tempora::kFrameRate_Zero), u"<m/>");
}

TEST_F(ServicesTest, FilesLooksAtTheDisk)
{
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() /
                            ("reference-host-" + Narrow(host.GetTexts().CreateUniqueGuid().AsString()));
    fs::create_directories(folder / u"ordner-ä");
    std::ofstream(folder / u"€.mov") << "media";
    std::error_code ignored;  // not every system has links
    fs::create_symlink(folder / "gone", folder / "link", ignored);
    const UTF16String root = folder.u16string() + u'/';
    struct
    {
        UTF16String path;
        bool exists;
        bool isFolder;
    } const rows[] = {
        {root + u"ordner-ä", true, true},
        {root + u"ordner-ä/../€.mov", true, false},
        {root + u"missing.mov", false, false},
        {root + u"€.mov/below", false, false},
        {root + u"link", false, false},
        {u"", false, false},
        {root + u'\0' + u"x", false, false},
        {root + UTF16String(1, u'\xD800'), false, false},
        {root + UTF16String(100000, u'x'), false, false},
    };
    auto& files = host.GetFiles();
    for (const auto& row : rows) {
        EXPECT_EQ(files.ExistsOnDisk(row.path), row.exists) << Narrow(row.path).substr(0, 200);
        EXPECT_EQ(files.IsDirectory(row.path), row.isFolder) << Narrow(row.path).substr(0, 200);
    }
    fs::remove_all(folder);
}

TEST_F(ServicesTest, PathsHaveANormalForm)
{
    auto& files = host.GetFiles();
    const auto native = [](const char16_t* path) {
        return std::filesystem::path(path).make_preferred().u16string();
    };
    EXPECT_EQ(files.ToNormalizedPath(u"/a/./b/../c//d.mov"), native(u"/a/c/d.mov"));
    EXPECT_EQ(files.ToNormalizedPath(u"\\\\?\\D:\\a"), u"\\\\?\\D:\\a");
    EXPECT_EQ(files.NormalizePathWithoutUNC(u"\\\\?\\D:\\a"), u"D:\\a");
    EXPECT_EQ(files.NormalizePathWithoutUNC(u"\\\\?\\UNC\\server\\a"), u"\\\\server\\a");
    EXPECT_EQ(files.NormalizePathWithoutUNC(u"/a/../b"), native(u"/b"));
    EXPECT_EQ(files.NormalizePathWithoutUNC(u""), u"");
}

TEST_F(ServicesTest, TextsAreTranslatedByTheirKeyPath)
{
    host.GetTexts().SetTranslation(u"a/b", u"übersetzt");
    struct
    {
        const char16_t* key;
        const char16_t* text;
    } const rows[] = {{u"$$$/a/b=default", u"übersetzt"},
                      {u"$$$/a/b", u"übersetzt"},
                      {u"$$$/a=x=y", u"x=y"},
                      {u"$$$/a", u"$$$/a"},
                      {u"=x", u"x"},
                      {u"", u""}};
    for (const auto& row : rows)
        EXPECT_EQ(ferrite::config::Localizer::Get().Lookup(row.key), row.text) << Narrow(row.key);
    EXPECT_EQ(ferrite::ZString(u"@0@9@@1@:@/@", {u"@1", u"1", {}, {}, {}, {}, {}, {}, {}, u"9"}).Text(),
              u"@19@1@:@/@")
        << "what was put in is not scanned again";
    EXPECT_EQ(ferrite::ZString(u"@0", {u"alone"}).Text(), u"alone");
}

TEST_F(ServicesTest, ReportsReachTheirHandlerAndProvidersAreKnownByPath)
{
    UTF16String reported;
    host.GetTexts().SetSDKInfoHandler(
        [&reported](const ReferenceHost::SDKInfo& info) { reported = info.text + u"|" + info.detail; });
    Spur::SDKErrors::SetSDKInfoString(u"text", u"detail");
    EXPECT_EQ(reported, u"text|detail");

    Ridge::Utilities::RegisterDBMetadataProviderForPath(u"/b");
    Ridge::Utilities::RegisterDBMetadataProvider();
    Ridge::Utilities::RegisterDBMetadataProviderForPath(u"/b");
    EXPECT_EQ(host.GetIngestLibrary().MetadataProviders(), (std::set<UTF16String>{u"", u"/b"}));
}

TEST_F(ServicesTest, FreshGuidsAreRandomAndOfVersion4)
{
    std::set<UTF16String> seen;
    for (int i = 0; i < 200; ++i) {
        const UTF16String text = ferrite::utility::Guid::CreateUnique().AsString();
        EXPECT_EQ(text[14], u'4');
        EXPECT_NE(UTF16String(u"89ab").find(text[19]), UTF16String::npos);
        EXPECT_TRUE(seen.insert(text).second);
    }
}

TEST_F(ServicesTest, MemoryRunsOutWhenTold)
{
    const Ridge::TandemEvent message(u"t", u"d");
    auto& memory = host.GetMemory();
    memory.SetAllocationsLeft(1);
    const std::unique_ptr<Kiln::Message> copy(message.Clone());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(message.Clone(), nullptr);
    const auto post = [&] {
        host.GetStations().PostMessageToUIThread(Ridge::GetPlexaStationID(), message, true);
    };
    EXPECT_THROW(post(), std::bad_alloc);
    EXPECT_EQ(memory.LiveBlocks(), 1U);
    memory.SetAllocationsLeft(ReferenceHost::Memory::kUnlimited);
    EXPECT_NO_THROW(post());
}

}  // namespace
