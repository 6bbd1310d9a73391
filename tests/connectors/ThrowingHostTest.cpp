// Each host operation throws in turn, in everything that the session files do.

#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/connectors/StationMessages.h"
#include "reference_host/Forwarders.h"
#include "reference_host/ForwardingDispatcher.h"
#include "reference_host/Marker.h"
#include "tests/support/ForwardedOperations.h"
#include "tests/support/SessionInputs.h"

#include <xercesc/dom/DOMException.hpp>

#include <iostream>
#include <set>
#include <vector>

namespace {

using namespace ReferenceHost;
using Names = std::vector<std::string>;

/// What a host operation throws: nothing that the library could know.
struct HostFailure
{
    std::string operation;
};

/// Takes down the names of operations; the one of the given number throws.
struct Trap
{
    template <class... Arguments>
    void operator()(const char* operation, const Arguments&... /*arguments*/)
    {
        names.emplace_back(operation);
        if (names.size() == throwsAt)
            throw HostFailure{operation};
    }
    void operator()(const char* /*operation*/, const Kiln::Listener& /*listener*/) noexcept {}

    Names names;
    std::size_t throwsAt = 0;  ///< From 1; 0: none.
};

/// What has an extension is a file, anything else a folder.
class FullDisk : public Files
{
public:
    bool ExistsOnDisk(const UTF16String& /*path*/) override { return true; }
    bool IsDirectory(const UTF16String& path) override { return path.find(u'.') == UTF16String::npos; }
};

class ThrowingHost : public ::testing::Test
{
protected:
    /// \return The operations that the input called, up to the one that threw.
    Names Run(const boost::function<void()>& input, std::size_t throwsAt)
    {
        host.GetIngestLibrary().SetProject(boost::make_shared<Project>());
        trap.names.clear();
        trap.throwsAt = throwsAt;
        std::string failed;
        try {
            input();
        } catch (const HostFailure& failure) {
            failed = failure.operation;
        } catch (const xercesc::DOMException&) {  // a name in the input that is none
            EXPECT_EQ(throwsAt, 0U);
        }
        EXPECT_EQ(failed, throwsAt == 0 ? "" : trap.names.back());
        trap.throwsAt = 0;
        host.GetStations().DropPosted();
        return trap.names;
    }

    /// Lets each operation that the input calls throw once.
    void ExpectEachMayThrow(const boost::function<void()>& input)
    {
        const std::size_t blocks = host.GetMemory().LiveBlocks();
        const Names operations = Run(input, 0);
        for (std::size_t i = 1; i <= operations.size(); ++i) {
            const Names upToThere(operations.begin(), operations.begin() + static_cast<std::ptrdiff_t>(i));
            EXPECT_EQ(Run(input, i), upToThere) << "nothing comes after the failure";
            EXPECT_EQ(host.GetMemory().LiveBlocks(), blocks) << operations[i - 1];
        }
        EXPECT_EQ(Run(input, 0), operations) << "works on";
        tried.insert(operations.begin(), operations.end());
        failures += operations.size();
    }

    Host host{Stations::Delivery::kByHand};
    FullDisk disk;
    Trap trap;
    ForwardingPanelEvents<Trap> panelEvents{host.GetPanelEvents(), trap};
    ForwardingStations<Trap> stations{host.GetStations(), trap};
    ForwardingIngestLibrary<Trap> ingestLibrary{host.GetIngestLibrary(), trap};
    ForwardingFiles<Trap> files{disk, trap};
    ForwardingTexts<Trap> texts{host.GetTexts(), trap};
    ForwardingMemory<Trap> memory{host.GetMemory(), trap};
    ForwardingDispatcher<Trap> dispatcher{trap};
    Installation installation{{panelEvents, stations, ingestLibrary, files, texts, memory},
                              host.GetStations()};
    std::set<std::string> tried;  ///< The operations that threw.
    std::size_t failures = 0;
};

TEST_F(ThrowingHost, EndsTheCallAndNothingElse)
{
    for (const auto& kind : Session::kConnectorKinds) {
        ExpectEachMayThrow([&] { kind.create(&dispatcher); });
        const auto connector = kind.create(&dispatcher);
        for (const auto& input : SessionInputs(host, connector))
            ExpectEachMayThrow(input);
    }
    for (const auto& registration : {&AC::AddTandemEvents, &AC::RemoveTandemEvents})
        ExpectEachMayThrow(registration);
    AC::ACMessage record;
    record.fileList = {u"/media/a.mov"};
    record.markerInfoList.push_back(
        boost::make_shared<AC::MarkerInfo>(AC::MarkerInfo{u"/media/a.mov", {1}, Marker::Make(u"<marker/>")}));
    ExpectEachMayThrow([&record] { AC::ACMessageEncoder::EncoderACMessage(record, u"a"); });
    ExpectEachMayThrow([&record] {
        AC::SaveAssetMessage(record).CreateStationCallback(AC::GetMCAssetConnectorStation())();
    });
    std::cerr << failures << " calls of " << tried.size() << " operations threw\n";
    std::set<std::string> operations = ForwardedOperations("Forwarders.h").all;
    operations.merge(ForwardedOperations("ForwardingDispatcher.h").all);
    operations.erase("Kiln::Listener::EndSubscriptions");  // must not throw
    EXPECT_EQ(tried, operations);
}

}  // namespace
