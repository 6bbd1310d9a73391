// What was decoded and encoded once comes back the same ever after.

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/loft/Utilities.h"
#include "assetconnector/message/Comparison.h"
#include "fuzz/FuzzHost.h"
#include "tests/support/DecodedForm.h"

#include <xercesc/util/XMLChar.hpp>

#include <iterator>

namespace {

using ferrite::utility::UTF16to8;

/// A rate whose ratio does not fit a double's digits comes back as its neighbour, and its frames with it; one
/// of an item's two library times is not written without the other, paths are written in their normal form,
/// and names of properties with a character beyond U+FFFF, which the scanner takes, are none to the DOM.
void MakeAsWritten(AC::ACMessage& message)
{
    const tempora::FrameRate rate = message.mediaPropertyInfo.frameRate;
    if (AC::ParseFrameRate(AC::FormatFrameRate(rate)) != rate)
        message.mediaPropertyInfo = {};
    for (const auto& result : message.actionResultList)
        if (result->fileCreationTime.empty() || result->fileLastModificationTime.empty())
            result->fileCreationTime = result->fileLastModificationTime = u"";
    for (UTF16String& path : message.fileList)
        path = Loft::Utilities::NormalizePathWithoutUNC(path);
    for (const auto& metadata : message.customMetadata.minimumMetadata.namespaces)
        for (auto at = metadata->properties.begin(); at != metadata->properties.end();)
            at = xercesc::XMLChar1_0::isValidName(at->first.data(), at->first.size())
                     ? std::next(at)
                     : metadata->properties.erase(at);
}

/// What is missing in a text need not be missing in what is made of it.
bool MayChange(std::string_view member, const AC::ACMessage& message)
{
    if (member == "customMetadata")
        return message.customMetadata.minimumMetadata.namespaces.empty();
    return member == "mediaPropertyInfo" ||   // a missing duration is 0
           member == "assetMediaInfoList" ||  // one of two library times
           member == "thumbnailRequest";      // neither path nor start
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzHost::Get();
    AC::ACMessage first;
    if (!AC::ACMessageDecoder::DecodeXMLString(TextOf(data, size), first))
        return 0;
    MakeAsWritten(first);
    const UTF16String text = AC::ACMessageEncoder::EncoderACMessage(first, AC::kNotificationRoot);
    Require(AC::ACMessageEncoder::EncodeUTF8(first, AC::kNotificationRoot) == UTF16to8(text));
    Require(AC::ACMessageEncoder::EncodeDecodedUTF8(first, AC::kNotificationRoot) ==
            UTF16to8(DecodedForm(text)));
    AC::ACMessage second;
    Require(AC::ACMessageDecoder::DecodeXMLString(text, second));
    const UTF16String again = AC::ACMessageEncoder::EncoderACMessage(second, AC::kNotificationRoot);
    Require(again == text);
    AC::ACMessage third;
    Require(AC::ACMessageDecoder::DecodeXMLString(again, third));
    Require(AC::Comparison::Same(second, third));
    AC::Description::ForEachMember<AC::ACMessage>([&](const auto& row) {
        if (row.carried == AC::Description::Carried::kBoth && !MayChange(row.name, first))
            Require(AC::Comparison::Same(first.*row.member, second.*row.member));
    });
    return 0;
}
