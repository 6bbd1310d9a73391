#include "desk/play/Comparison.h"

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "desk/play/Shortened.h"
#include "session/SimulatedObjects.h"
#include "session/format/FormatError.h"
#include "session/format/Json.h"
#include "session/format/Passwords.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Desk {
namespace {

using ferrite::utility::UTF16to8;
using ferrite::utility::UTF8to16;
using Session::Json;

constexpr std::size_t kMostShown = 60;
constexpr const char* kBrowserID = "header.browserID";

/// A member of the two records; null where a record leaves it out.
struct Place
{
    std::string path;
    const Json* ofFile;
    const Json* live;
};

struct Request
{
    AC::ACMessage message;
    Json record;
};

/// \throws Session::FormatError when the text does not decode.
Request Decode(const std::string& xml)
{
    Request request;
    AC::ParseError error;
    if (!AC::ACMessageDecoder::DecodeXMLString(UTF8to16(xml), request.message, error))
        throw Session::FormatError("line " + std::to_string(error.line) + ", column " +
                                   std::to_string(error.column) + ": " + UTF16to8(error.reason));
    const Session::ValueWriter writer = Session::SimulatedObjects::WriterFor(Session::Style::kSession);
    request.record = Session::ParseJson(writer.TextOf(request.message));
    return request;
}

const Json* MemberOf(const Json& object, const std::string& name)
{
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

/// Adds what both have inside, the last one first.
void AddChildren(const Place& place, std::vector<Place>& pending)
{
    const std::size_t before = pending.size();
    if (place.ofFile->is_array()) {
        const auto entry = [](const Json& array, std::size_t at) {
            return at < array.size() ? &array[at] : nullptr;
        };
        for (std::size_t at = 0; at < std::max(place.ofFile->size(), place.live->size()); ++at)
            pending.push_back({place.path + '[' + std::to_string(at) + ']', entry(*place.ofFile, at),
                               entry(*place.live, at)});
    } else {
        const std::string prefix = place.path.empty() ? "" : place.path + '.';
        for (const auto& [name, value] : place.ofFile->items())
            pending.push_back({prefix + name, &value, MemberOf(*place.live, name)});
        for (const auto& [name, value] : place.live->items())
            if (!place.ofFile->contains(name))
                pending.push_back({prefix + name, nullptr, &value});
    }
    std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(before), pending.end());
}

/// \return The value's text; null unless it is a GUID and not zero.
const std::string* GuidIn(const Json* value)
{
    const auto* const text = value == nullptr ? nullptr : value->get_ptr<const std::string*>();
    const bool isGuid =
        text != nullptr && Pairs::IsGuid(*text) && text->find_first_not_of("0-") != std::string::npos;
    return isGuid ? text : nullptr;
}

/// Pairs GUIDs. Does not recurse: items nest deeply. \return The other places that differ.
std::vector<Place> Walk(const Json& ofFile, const Json& live, Pairs& pairs)
{
    std::vector<Place> differing;
    std::vector<Place> pending{{"", &ofFile, &live}};
    while (!pending.empty()) {
        Place place = std::move(pending.back());
        pending.pop_back();
        const bool areBoth = place.ofFile != nullptr && place.live != nullptr;
        if (areBoth && place.ofFile->is_structured() && place.ofFile->type() == place.live->type()) {
            AddChildren(place, pending);
            continue;
        }
        const std::string* const guid = GuidIn(place.ofFile);
        const std::string* const liveGuid = GuidIn(place.live);
        if (guid != nullptr && liveGuid != nullptr)
            pairs.AddGuid(*guid, *liveGuid);
        else if (!areBoth || place.ofFile->is_structured() || place.live->is_structured() ||
                 *place.ofFile != *place.live)
            differing.push_back(std::move(place));
    }
    return differing;
}

std::string Shown(const Json* value)
{
    if (value == nullptr)
        return "left out";
    return Shortened(Session::WithoutPassword(Session::DumpJson(*value)), kMostShown);
}

std::string MarkOf(const std::string& path, const Json* ofFile, const Json* live)
{
    return "difference: " + path + " was " + Shown(ofFile) + ", is " + Shown(live);
}

bool IsSameByPairs(const Place& place, const Pairs& pairs)
{
    return place.ofFile != nullptr && place.ofFile->is_string() && place.live != nullptr &&
           pairs.WithLiveGuids(place.ofFile->get<std::string>()) == *place.live;
}

void Compare(const Request& ofFile, const Request& live, Pairs& pairs, const Origin& asker,
             std::vector<std::string>& marks)
{
    const std::string browserID = UTF16to8(ofFile.message.header.browserID);
    const bool isOne = !browserID.empty() && ofFile.message.header.browserID != kCollectionID;
    if (isOne)
        pairs.AddBrowserID(browserID, asker.browserID);
    // Who asks is known, whatever the text says; of that one it should speak.
    const Json said = UTF16to8(live.message.header.browserID);
    const Json expected = isOne ? asker.browserID : browserID;
    std::size_t more = 0;
    const auto add = [&marks, &more](const std::string& path, const Json* before, const Json* now) {
        if (marks.size() < Comparison::kMostNamed)
            marks.push_back(MarkOf(path, before, now));
        else
            ++more;
    };
    if (said != expected && said != asker.browserID)
        add(kBrowserID, &expected, &said);
    for (const Place& place : Walk(ofFile.record, live.record, pairs))
        if (place.path != kBrowserID && !IsSameByPairs(place, pairs))
            add(place.path, place.ofFile, place.live);
    if (more > 0)
        marks.push_back("difference: and " + std::to_string(more) + " more");
}

}  // namespace

Comparison CompareRequests(Pairs& pairs, const Origin& asker, const std::string& ofFile,
                           const std::string& live)
{
    Comparison comparison;
    try {
        const Request request = Decode(live);
        comparison.messageID = request.message.header.msgID;
        try {
            Compare(Decode(ofFile), request, pairs, asker, comparison.marks);
        } catch (const Session::FormatError& error) {
            comparison.marks.emplace_back(std::string("difference: the session's text cannot be read, ") +
                                          error.what());
        }
    } catch (const Session::FormatError& error) {
        comparison.marks.emplace_back(std::string("difference: the text cannot be read, ") + error.what());
    }
    return comparison;
}

}  // namespace Desk
