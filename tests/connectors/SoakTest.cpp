#include "assetconnector/connectors/ConnectorAccess.h"
#include "reference_host/ForwardingDispatcher.h"
#include "tests/support/SessionInputs.h"
#include "tests/support/System.h"

#include <xercesc/dom/DOMException.hpp>

#include <cstdlib>
#include <iostream>

namespace {

using TestSystem::ResidentBytes;
using Soak = HostTest;

/// Messages of every road through both connectors, as a long day brings them.
TEST_F(Soak, LeavesNothingBehind)
{
    const bool isLong = std::getenv("ASSETCONNECTOR_LONG_TESTS") != nullptr;
    ReferenceHost::IdleDispatcher dispatcher;
    std::vector<Kiln::SharedReferenceBroker> brokers;
    {
        std::vector<boost::function<void()>> inputs;
        for (const auto& kind : Session::kConnectorKinds) {
            const auto connector = kind.create(&dispatcher);
            brokers.push_back(AC::BrokerOf(connector).value());
            for (const auto& input : SessionInputs(host, connector))  // holds the connector
                inputs.push_back(input);
        }
        const auto run = [this, &inputs](std::size_t messages) {
            for (std::size_t i = 0; i < messages; ++i) {
                if (i % inputs.size() == 0)
                    host.GetIngestLibrary().SetProject(boost::make_shared<ReferenceHost::Project>());
                try {
                    inputs[i % inputs.size()]();
                } catch (const xercesc::DOMException&) {  // a name in the input that is none
                }
                host.GetStations().DeliverPosted();
            }
        };
        const std::size_t messages = isLong ? 1000000 : 7000;
        run(messages / 10);
        const std::size_t before = ResidentBytes();
        run(messages);
        const std::size_t after = ResidentBytes();
        std::cerr << "resident bytes: " << before << " before, " << after << " after\n";
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
        EXPECT_LT(after, before + before / 50);
#endif  // sanitizers keep freed memory
    }
    EXPECT_EQ(host.GetMemory().LiveBlocks(), 0U);
    for (const Kiln::SharedReferenceBroker& broker : brokers)
        EXPECT_EQ(broker->GetCount(), Kiln::ReferenceBroker::kDestroyed);
}

}  // namespace
