// Any text at all, once as UTF-8 and once as raw 16-bit units: a failure leaves the record untouched.

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/message/Comparison.h"
#include "fuzz/FuzzHost.h"

namespace {

void Decode(const UTF16String& text)
{
    AC::ACMessage message;
    AC::ParseError error;
    if (!AC::ACMessageDecoder::DecodeXMLString(text, message, error))
        Require(!error.reason.empty() && AC::Comparison::Same(message, AC::ACMessage()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzHost::Get();
    Decode(TextOf(data, size));
    UTF16String units;
    for (std::size_t i = 0; i + 1 < size; i += 2)
        units.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8U)));
    Decode(units);
    return 0;
}
