#include "Commands.h"
#include "Input.h"
#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "session/SimulatedHost.h"
#include "session/ValueReader.h"

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/XMLChar.hpp>

#include <exception>

namespace AssetConnector {
namespace {

using ferrite::utility::UTF16to8;

/// The simulated host as it is at the start of a session.
struct FreshHost
{
    Session::Recorder recorder{Session::Style::kSession};
    Session::SimulatedHost host{recorder};
};

/// \return What the encoder could not write: names of custom metadata properties become names of elements.
std::string BadName(const AC::ACMessage& message)
{
    for (const auto& metadata : message.customMetadata.minimumMetadata.namespaces)
        if (metadata)
            for (const auto& [name, value] : metadata->properties)
                if (!xercesc::XMLChar1_0::isValidName(name.data(), name.size()))
                    return "the property name \"" + UTF16to8(name) + "\" is no name of an element";
    return "a name is not one";
}

/// Runs the action. \return kDone, or kFailed with a complaint when it throws.
template <class Action>
Status Try(const std::string& what, Action action)
{
    try {
        action();
        return kDone;
    } catch (const std::bad_alloc&) {
        throw;  // says nothing about the text
    } catch (const std::exception& exception) {
        Complain(what + ": " + exception.what());
    }
    return kFailed;
}

}  // namespace

Status Decode(const std::string& file, std::ostream& output)
{
    Input input(file);
    const UTF16String xml = ferrite::utility::UTF8to16(input.ReadAll());
    const FreshHost host;
    AC::ACMessage message;
    return Try(input.Name(), [&] {
        AC::ParseError error;
        if (!AC::ACMessageDecoder::DecodeXMLString(xml, message, error))
            throw Session::FormatError("line " + std::to_string(error.line) + ", column " +
                                       std::to_string(error.column) + ": " + UTF16to8(error.reason));
        const Session::ValueWriter writer = Session::SimulatedObjects::WriterFor(Session::Style::kSession);
        output << Session::DumpJson(Session::OrderedJson::parse(writer.TextOf(message)), 2) << '\n';
    });
}

Status Encode(const std::string& file, bool decoded, std::ostream& output)
{
    Input input(file);
    const std::string json = input.ReadAll();
    const FreshHost host;
    AC::ACMessage message;
    try {
        message = Session::ValueReader::Read<AC::ACMessage>(Session::ParseJson(json));
    } catch (const Session::FormatError& error) {
        Complain(input.Name() + ": " + error.what());
        return kBad;
    }
    return Try(input.Name() + ": the record cannot be encoded", [&] {
        const auto encode =
            decoded ? AC::ACMessageEncoder::EncodeDecodedUTF8 : AC::ACMessageEncoder::EncodeUTF8;
        try {
            output << encode(message, AC::kNotificationRoot) << '\n';
        } catch (const xercesc::DOMException&) {
            throw Session::FormatError(BadName(message));
        }
    });
}

}  // namespace AssetConnector
