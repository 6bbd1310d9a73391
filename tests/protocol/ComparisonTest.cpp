#include "protocol/Comparison.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Protocol::Event;
using Protocol::Model;
using Protocol::Place;
using Protocol::ThisModel;

Event& EventOf(Model& model, const std::string& name)
{
    return *std::find_if(model.events.begin(), model.events.end(), [&name](const Event& event) {
        return Protocol::ShortName(event.identifier) == name;
    });
}

Place& PlaceOf(Model& model, const std::string& path)
{
    return *std::find_if(model.places.begin(), model.places.end(),
                         [&path](const Place& place) { return place.path == path; });
}

template <class Part, class Value>
void Remove(std::vector<Part>& parts, const Value& value)
{
    parts.erase(std::find(parts.begin(), parts.end(), value));
}

/// Every change, forth and back.
TEST(ProtocolComparison, TellsBreaksFromAdditions)
{
    const std::string transfer = "com.velmo.browser.event.TransferRequest";
    const std::string status = "com.velmo.host.notification.TransferStatus";
    const std::string library = "the library connector, because of OnTransferStatus: ";
    const struct
    {
        void (*change)(Model& model);
        std::string subject;
        std::string lost;
        std::string gained;
        bool gainBreaks = false;
    } kCases[] = {
        {[](Model& model) { model.events.erase(model.events.begin()); },
         "com.velmo.eabrowser.event.requestInitInfo", "the event is gone", "a new event"},
        {[](Model& model) {
             EventOf(model, "TransferRequest").handling[0] = {"library", false, {}, {}, {}, {}};
         },
         transfer, "the library connector does not handle it any more",
         "the library connector handles it now"},
        {[](Model& model) { Remove(EventOf(model, "TransferRequest").handling[0].reads, "transferOption"); },
         transfer, "the library connector reads no longer: transferOption",
         "the library connector reads now: transferOption"},
        {[](Model& model) {
             EventOf(model, "TranscodeRequest").handling[1].needs.emplace_back("presetPath");
         },
         "com.velmo.browser.event.TranscodeRequest", "the mediaCollection connector needs now: presetPath",
         "the mediaCollection connector needs no longer: presetPath"},
        {[](Model& model) { EventOf(model, "TransferRequest").handling[0].answer.sender = "host"; }, transfer,
         R"(the answer at the library connector is sent by: it was "callback", is "host")",
         R"(the answer at the library connector is sent by: it was "host", is "callback")", true},
        {[](Model& model) {
             Remove(EventOf(model, "TransferRequest").handling[0].answer.matchedBy, "msgID");
         },
         transfer, "the answer at the library connector is matched by no longer: msgID",
         "the answer at the library connector is matched by now: msgID"},
        {[](Model& model) { EventOf(model, "TransferRequest").cancel.clear(); }, transfer,
         R"(the request that ends it was "com.velmo.browser.event.TransferCancel", is "")",
         "can be ended by com.velmo.browser.event.TransferCancel"},
        {[](Model& model) { Remove(EventOf(model, "TransferStatus").sent[0].carries, "result"); }, status,
         library + "holds no longer: result", library + "holds now: result"},
        {[](Model& model) { EventOf(model, "TransferStatus").sent[0].decoded = true; }, status,
         library + R"(the text was "plain", is "decoded")", library + R"(the text was "decoded", is "plain")",
         true},
        {[](Model& model) {
             EventOf(model, "TransferStatus").sent.erase(EventOf(model, "TransferStatus").sent.begin());
         },
         status, "is sent by no longer: the library connector, because of OnTransferStatus",
         "is sent by now: the library connector, because of OnTransferStatus"},
        {[](Model& model) { PlaceOf(model, "clipFormat").written = false; }, "clipFormat",
         "is no longer written in notifications", "is now written in notifications"},
        {[](Model& model) { PlaceOf(model, "percentage").form = "text"; }, "percentage",
         R"(the form of its value was "integer", is "text")",
         R"(the form of its value was "text", is "integer")", true},
        {[](Model& model) { PlaceOf(model, "outputXMP").missing = false; }, "outputXMP",
         R"(missing it reads as: it was "true", is "false")",
         R"(missing it reads as: it was "false", is "true")", true},
        {[](Model& model) { PlaceOf(model, "fileList/filePath").many = false; }, "fileList/filePath",
         "is no longer allowed many times", "is now allowed many times"},
        {[](Model& model) { std::swap(PlaceOf(model, "clipFormat"), PlaceOf(model, "errorInfo")); },
         "clipFormat", "stands elsewhere in notifications", "stands elsewhere in notifications", true},
        {[](Model& model) { Remove(model.forms[2].words, "true"); }, "boolean",
         "has the word no longer: true", "has the word now: true"},
    };
    for (const auto& each : kCases) {
        SCOPED_TRACE(each.lost);
        Model changed = ThisModel();
        each.change(changed);
        const std::vector<Protocol::Change> there = Compare(ThisModel(), changed);
        const std::vector<Protocol::Change> back = Compare(changed, ThisModel());
        ASSERT_FALSE(there.empty() || back.empty());
        EXPECT_TRUE(there.front().breaks);
        EXPECT_EQ(there.front().what, each.lost);
        EXPECT_EQ(there.front().subject, each.subject);
        EXPECT_EQ(back.front().breaks, each.gainBreaks);
        EXPECT_EQ(back.front().what, each.gained);
    }
    EXPECT_TRUE(Compare(ThisModel(), Protocol::ParseModel(Protocol::ThisModelText())).empty());
}

TEST(ProtocolModelText, IsRefusedWithAReasonWhenItIsNone)
{
    const struct
    {
        const char* text;
        const char* reason;
    } kCases[] = {
        {"[]", "the model is not an object"},
        {"{}", "it has no version, no events or no places"},
        {R"({"events": {}})", "the model.events is not an array"},
        {R"({"events": [{"sent": [{"header": 1}]}]})", "the model.events[0].sent[0].header is not an object"},
        {R"({"places": [{"most": "1"}]})", "the model.places[0].most is not an integer"},
    };
    for (const auto& each : kCases)
        try {
            Protocol::ParseModel(each.text);
            ADD_FAILURE() << each.text;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), std::string("not a protocol model: ") + each.reason);
        }
}

}  // namespace
