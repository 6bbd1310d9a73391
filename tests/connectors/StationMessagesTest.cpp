#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/message/Comparison.h"
#include "tests/support/HostTest.h"

#include <boost/make_shared.hpp>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using ferrite::utility::Guid;

using StationMessages = HostTest;

TEST_F(StationMessages, AreCopiedIntoTheHostsMemory)
{
    AC::ACMessage record;
    record.header.Set(Guid(1, 2), Guid(3, 4), u"panel");
    record.transferResultList.push_back(boost::make_shared<Ridge::TransferResult>());
    const AC::SaveAssetMessage message(record);
    const auto before = host.GetMemory().LiveBlocks();
    {
        const std::unique_ptr<Kiln::Message> copy(message.Clone());
        EXPECT_EQ(host.GetMemory().LiveBlocks(), before + 1);
        EXPECT_EQ(copy->MessageTypeID(), AC::SaveAssetMessage::TypeID());
        const auto& payload = static_cast<const AC::SaveAssetMessage&>(*copy).GetPayload();
        EXPECT_TRUE(AC::Comparison::Same(payload, record));
        EXPECT_EQ(payload.transferResultList.front(), record.transferResultList.front())
            << "items are shared";
    }
    EXPECT_EQ(host.GetMemory().LiveBlocks(), before);
    using Copy = Kiln::DynamicallyAllocatedMessage<AC::SaveAssetMessage>;
    {
        const std::unique_ptr<Kiln::Message> copy(new Copy(message));
        EXPECT_EQ(host.GetMemory().LiveBlocks(), before + 1);
    }
    EXPECT_EQ(host.GetMemory().LiveBlocks(), before);
    host.GetMemory().SetAllocationsLeft(0);
    EXPECT_EQ(message.Clone(), nullptr);
    EXPECT_THROW(new Copy(message), std::bad_alloc);
    EXPECT_THROW(message.CreateStationCallback(AC::GetMCAssetConnectorStation()), std::bad_alloc);
}

/// A payload whose copy may throw.
struct Fragile
{
    Fragile() = default;
    Fragile(const Fragile& other) : copiesLeft(other.copiesLeft)
    {
        if ((*copiesLeft)-- <= 0)
            throw std::runtime_error("no more copies");
    }
    std::shared_ptr<int> copiesLeft = std::make_shared<int>(1);
};

class FragileMessage : public AC::StationMessage<FragileMessage, Fragile>
{
public:
    static constexpr char kTypeName[] = ".?AVFragileMessage@@";
    explicit FragileMessage(const Fragile& payload) : StationMessage(payload) {}
};

TEST_F(StationMessages, GiveTheMemoryBackWhenThePayloadThrows)
{
    const FragileMessage message{Fragile()};
    const auto before = host.GetMemory().LiveBlocks();
    EXPECT_THROW(message.Clone(), std::runtime_error);
    EXPECT_THROW(message.CreateStationCallback(AC::GetMCAssetConnectorStation()), std::runtime_error);
    EXPECT_EQ(host.GetMemory().LiveBlocks(), before);
}

/// Keeps the identifiers of the messages that reach it.
class TestListener : public Kiln::Listener
{
public:
    ~TestListener() override { EndSubscriptions(); }
    std::vector<std::uint32_t> received;

private:
    void OnStationMessage(const Kiln::Message& message) override
    {
        received.push_back(message.MessageTypeID());
    }
};

TEST_F(StationMessages, StayAsTheyAreWhenTheyAreMoved)
{
    AC::ACMessage record;
    record.filePath = u"/a";
    AC::SaveAssetMessage message(record);
    const AC::SaveAssetMessage moved(std::move(message));
    EXPECT_EQ(message.GetPayload().filePath, u"/a");
    Ridge::TandemEvent event(u"type", u"data");
    const Ridge::TandemEvent movedEvent(std::move(event));
    EXPECT_EQ(event.GetType() + event.GetData(), u"typedata");
    ferrite::utility::ImmutableString name("station");
    ferrite::utility::ImmutableString movedName(std::move(name));
    EXPECT_EQ(name, movedName);
    movedName = std::move(name);
    EXPECT_EQ(name.AsUTF8(), "station");
}

TEST_F(StationMessages, ArePostedInSessionFiles)
{
    std::string sessions;
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/sessions")) {
        std::ifstream file(entry.path());
        sessions.append(std::istreambuf_iterator<char>(file), {});
    }
    for (const char* const name : {
#define AC_STATION_MESSAGE(NAMESPACE, NAME, TYPE_NAME, PAYLOAD) #NAMESPACE "::" #NAME,
#include "assetconnector/connectors/StationMessages.def"
#undef AC_STATION_MESSAGE
         })
        EXPECT_NE(sessions.find(std::string("{\"post\":\"") + name + '"'), std::string::npos)
            << name << " is posted in no session file";
}

TEST_F(StationMessages, ArriveAsOftenAsTheDeferredDeliveryRuns)
{
    TestListener listener;
    const auto station = AC::GetMCAssetConnectorStation();
    host.GetStations().AddListener(station, listener);
    boost::function<void()> deliver;
    {
        const Ridge::DeleteDynamicColumnsMessage message({Guid(1, 1)});
        deliver = message.CreateStationCallback(station);
    }
    deliver();
    const boost::function<void()> again = deliver;
    deliver.clear();
    again();
    EXPECT_EQ(listener.received, std::vector<std::uint32_t>(2, Ridge::DeleteDynamicColumnsMessage::TypeID()));
}

}  // namespace
