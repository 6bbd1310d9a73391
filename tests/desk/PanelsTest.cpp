// Three panels at one host: whose request is it, and who is told.

#include "assetconnector/host/ferrite/Unicode.h"
#include "session/format/FormatError.h"
#include "tests/desk/BridgeFixture.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using ferrite::utility::Guid;
using Json = nlohmann::json;
using ::testing::ElementsAre;

/// Two library panels and one of the media collection.
class PanelsTest : public BridgeFixture
{
protected:
    PanelsTest()
    {
        first.Say(PageFrames::Hello("library"));
        second.Say(PageFrames::Hello("library"));
        collection.Say(PageFrames::Hello("mediaCollection"));
        Forget();
    }

    void Forget()
    {
        for (Page* const page : {&first, &second, &collection})
            page->Take();
    }

    /// \return What each of the panels heard, which is the same.
    std::vector<std::string> Told()
    {
        std::vector<std::string> told = first.TakeNotifications();
        EXPECT_EQ(second.TakeNotifications(), told);
        EXPECT_EQ(collection.TakeNotifications(), told);
        return told;
    }

    Page first{*bridge};
    Page second{*bridge};
    Page collection{*bridge};
};

TEST_F(PanelsTest, ARequestActsOnce)
{
    using Lines = std::vector<std::string>;
    struct Row
    {
        const char* name;
        Lines ofLibrary;     ///< What is done when the second library panel asks.
        Lines ofCollection;  ///< When the media collection's panel does.
    };
    const std::string ingest = "<browserMessage><ingestMediaItemList><ingestMediaItem src=\"" TEST_DATA
                               "/desk/BridgeTest.cpp\"/></ingestMediaItemList></browserMessage>";
    std::uint64_t number = 0;
    for (const Row& row : {
             Row{"TransferRequest",
                 {"library StartTransfer for panel-2"},
                 {"mediaCollection StartTransfer for panel-3"}},
             Row{"OpenIngestDialog",
                 {"library ShowIngestDialog for panel-2"},
                 {"mediaCollection ShowIngestDialog for panel-3"}},
             Row{"ReadXMPFromDisk", {"library ReadXMPFile for panel-2"}, {}},
             Row{"RequestThumbnail",
                 {"library CreateThumbnail for panel-2"},
                 {"library CreateThumbnail for panel-3"}},
             Row{"TriggerSaveAsset",
                 {"mediaCollection SaveAssetItems for panel-2"},
                 {"mediaCollection SaveAssetItems for panel-3"}},
             Row{"IngestMedia",
                 {"mediaCollection StartMediaIngest for panel-2"},
                 {"mediaCollection StartMediaIngest for panel-3"}},
             Row{"OpenAsset",
                 {std::string("com.velmo.browser.event.OpenAsset ") + kThing + " for panel-2"},
                 {std::string("com.velmo.browser.event.OpenAsset ") + kThing + " for panel-3"}},
             Row{"SelectAssets", {}, {}},
         }) {
        const std::string request =
            PageFrames::Raise(row.name, row.name == std::string("IngestMedia") ? ingest : kThing, ++number);
        second.Say(request);
        EXPECT_EQ(work.Lines(), row.ofLibrary) << row.name;
        work.Clear();
        collection.Say(request);
        EXPECT_EQ(work.Lines(), row.ofCollection) << row.name;
        work.Clear();
    }
}

TEST_F(PanelsTest, AnswersNameTheAskerAndNewsNobody)
{
    constexpr const char* kTask = "7a5c0001-0000-4000-8000-000000000001";
    const struct
    {
        const char* callback;
        Json arguments;  ///< Behind task and message.
        std::vector<std::string> library, collection, news;
    } rows[] = {
        {"OnTransferStatus",
         Json::array({0, Json::array()}),
         {"TransferStatus to panel-2"},
         {"TransferStatus to MediaCollection"},
         {"TransferStatus to none", "TransferStatus to MediaCollection"}},
        {"OnInitMiniMetadata",
         Json::array({Json::array()}),
         {"InitMiniMetadata to MediaCollection"},
         {"InitMiniMetadata to MediaCollection"},
         {"InitMiniMetadata to MediaCollection"}},
    };
    const Guid message = Guid::CreateUnique();
    const auto call = [&](const auto& row, std::optional<Desk::Origin> asker,
                          std::optional<Desk::PanelKind> to = std::nullopt) {
        work.askers.clear();
        const std::string id = ferrite::utility::UTF16to8(message.AsString());
        if (asker)
            work.askers.emplace(id, *asker);
        Json arguments = {kTask, id};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        host.Callback(row.callback, arguments, to);
        return Told();
    };
    const Desk::Origin ofLibrary{Desk::PanelKind::kLibrary, "panel-2"};
    const Desk::Origin ofCollection{Desk::PanelKind::kMediaCollection, "panel-3"};
    for (const auto& row : rows) {
        EXPECT_EQ(call(row, ofLibrary), row.library) << row.callback;
        EXPECT_EQ(call(row, ofCollection), row.collection) << row.callback;
        EXPECT_EQ(call(row, std::nullopt), row.news) << row.callback;
    }
    EXPECT_THAT(call(rows[0], std::nullopt, Desk::PanelKind::kLibrary),
                ElementsAre("TransferStatus to none"));
    EXPECT_FALSE(host.DeliverPosted());
    host.Callback("OnGetTargetBinPath", {kTask, kTask}, std::nullopt);
    EXPECT_TRUE(host.DeliverPosted()) << "the media collection's connector alone posts it";
    EXPECT_EQ(host.Services().GetPanelEvents().GetBrowserID(), "");
    EXPECT_THROW(host.Callback("OnNothing", Json::array(), std::nullopt), Session::FormatError);
    EXPECT_THROW(host.Callback("OnIngestStarted", {1}, std::nullopt), Session::FormatError);
}

TEST_F(PanelsTest, WhatConnectorsSayByThemselvesGoesToAll)
{
    second.Say(PageFrames::Raise("OpenIngestDialog",
                                 "<browserMessage><browserID ID=\"panel-1\"/></browserMessage>", 1));
    EXPECT_THAT(Told(), ElementsAre("OpenIngestDialogStatus to panel-1", "OpenIngestDialogStatus to panel-1"))
        << "the text may name another panel";
    EXPECT_THAT(work.Lines(), ElementsAre("library ShowIngestDialog for panel-2"))
        << "but the request stays whose connection it is";
}

}  // namespace
