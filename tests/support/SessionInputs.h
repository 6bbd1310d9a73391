#pragma once

#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "session/Operations.h"
#include "session/format/ConnectorKinds.h"
#include "tests/support/HostTest.h"

#include <boost/function.hpp>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <vector>

/// \return What the session files do to a connector: every callback and request, each a call.
inline std::vector<boost::function<void()>> SessionInputs(
    ReferenceHost::Host& host, const Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>& connector)
{
    std::vector<boost::function<void()>> inputs;
    std::map<std::string, std::set<std::string>> callbacks;  // and the connectors that they come to
    std::set<UTF16String> requests;
    for (const auto& file : std::filesystem::directory_iterator(TEST_DATA "/sessions")) {
        std::ifstream lines(file.path());
        for (std::string line; std::getline(lines, line);) {
            if (line.empty() || line[0] != '{')
                continue;
            const Session::Json json = Session::ParseJson(line);
            const auto text = [&json](const char* name) { return json.at(name).get<std::string>(); };
            if (json.contains("callback")) {
                callbacks[text("callback")].insert(text("to"));
                inputs.push_back(
                    Session::FindCallback(text("callback"))->bind(json.at("args"), connector).run);
            }
            if (json.contains("call"))
                inputs.push_back(Session::FindExportedFunction(text("call"))->bind(json.at("args")).run);
            if (json.contains("panel")) {
                requests.insert(U(text("panel")));
                inputs.push_back([&host, type = U(text("panel")), data = U(text("data"))] {
                    host.GetStations().BroadcastMessage(Ridge::GetPlexaStationID(),
                                                        Ridge::TandemEvent(type, data));
                });
            }
        }
    }
    EXPECT_EQ(callbacks.size(), static_cast<std::size_t>(Ridge::kCallbackCount))
        << "a callback is in no session file";
    for (const auto& [callback, connectors] : callbacks)
        EXPECT_EQ(connectors.size(), std::size(Session::kConnectorKinds))
            << callback << " does not come to both";
    for (const AC::EventEntry& event : AC::EventCatalogue())
        for (const auto& kind : Session::kConnectorKinds)
            if (event.kind == AC::EventKind::kRequest && kind.handles(*event.identifier)) {
                EXPECT_EQ(requests.count(*event.identifier), 1U) << event.constant;
            }
    return inputs;
}
