#include "Commands.h"
#include "Input.h"
#include "protocol/Comparison.h"
#include "protocol/Reference.h"
#include "session/format/Json.h"

#include <stdexcept>

namespace AssetConnector {

Status Protocol(bool json, std::ostream& output)
{
    output << (json ? ::Protocol::ThisModelText() : Reference(::Protocol::ThisModel()));
    return kDone;
}

namespace {

::Protocol::Model ReadModel(const std::string& file)
{
    const std::string text = Input(file).ReadAll();
    try {
        return ::Protocol::ParseModel(text);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(file + ": " + error.what());
    }
}

}  // namespace

Status CompareProtocol(const std::string& file, bool json, std::ostream& output)
{
    const ::Protocol::Model before = ReadModel(file);
    const std::vector<::Protocol::Change> changes = Compare(before, ::Protocol::ThisModel());
    Session::OrderedJson array = Session::OrderedJson::array();
    bool breaks = false;
    for (const ::Protocol::Change& change : changes) {
        breaks = breaks || change.breaks;
        const char* const kind = change.breaks ? "break" : "added";
        if (json)
            array.push_back({{"kind", kind}, {"subject", change.subject}, {"what", change.what}});
        else
            output << kind << ": " << change.subject << ": " << change.what << '\n';
    }
    if (json)
        output << Session::DumpJson(array, 2) << '\n';
    else if (changes.empty())
        output << "nothing changed for panels since " << before.version << '\n';
    return breaks ? kFailed : kDone;
}

}  // namespace AssetConnector
