#include "Commands.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "session/format/ConnectorKinds.h"
#include "session/format/Json.h"

#include <algorithm>
#include <iomanip>
#include <vector>

namespace AssetConnector {
namespace {

struct Row
{
    std::string constant;
    std::string identifier;
    std::string kind;
    std::vector<std::string> connectors;
};

std::vector<Row> Rows()
{
    std::vector<Row> rows;
    for (const AC::EventEntry& entry : AC::EventCatalogue()) {
        Row row{entry.constant,
                ferrite::utility::UTF16to8(*entry.identifier),
                entry.kind == AC::EventKind::kRequest ? "request" : "notification",
                {}};
        for (const Session::ConnectorKind& connector : Session::kConnectorKinds)
            if (connector.handles(*entry.identifier))
                row.connectors.emplace_back(connector.name);
        rows.push_back(std::move(row));
    }
    return rows;
}

void PrintTable(const std::vector<Row>& rows, std::ostream& output)
{
    std::size_t constants = 0;
    std::size_t identifiers = 0;
    for (const Row& row : rows) {
        constants = std::max(constants, row.constant.size());
        identifiers = std::max(identifiers, row.identifier.size());
    }
    const auto column = [&output](std::size_t width) -> std::ostream& {
        return output << std::left << std::setw(static_cast<int>(width + 2));
    };
    for (const Row& row : rows) {
        column(constants) << row.constant;
        column(identifiers) << row.identifier;
        if (row.connectors.empty()) {
            output << row.kind << '\n';
            continue;
        }
        column(std::string("notification").size()) << row.kind;
        for (std::size_t i = 0; i < row.connectors.size(); ++i)
            output << (i == 0 ? "" : ", ") << row.connectors[i];
        output << '\n';
    }
}

}  // namespace

Status Events(bool json, std::ostream& output)
{
    const std::vector<Row> rows = Rows();
    if (!json) {
        PrintTable(rows, output);
        return kDone;
    }
    Session::OrderedJson array = Session::OrderedJson::array();
    for (const Row& row : rows) {
        Session::OrderedJson event;
        event["constant"] = row.constant;
        event["identifier"] = row.identifier;
        event["kind"] = row.kind;
        event["connectors"] = row.connectors;
        array.push_back(std::move(event));
    }
    output << Session::DumpJson(array, 2) << '\n';
    return kDone;
}

}  // namespace AssetConnector
