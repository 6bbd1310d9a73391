#include "assetconnector/codec/XMPPacket.h"

#include "assetconnector/host/kiln/Strings.h"
#include "assetconnector/xml/TextWriter.h"

#include <cstddef>
#include <string_view>

namespace AC {
namespace {

constexpr std::u16string_view kEnd = u"]]>";

}  // namespace

UTF16String UnwrappedPacket(UTF16String text)
{
    const std::size_t begin = text.find(kSectionBegin);
    const std::size_t end = text.rfind(kEnd);
    if (begin == UTF16String::npos || end == UTF16String::npos || end < begin + kSectionBegin.size())
        return text;
    const std::size_t packet = begin + kSectionBegin.size();
    return text.substr(packet, end - packet);
}

UTF16String WrappedPacket(const std::string& packet)
{
    return UTF16String(kSectionBegin).append(Kiln::MakeString(packet)).append(kEnd);
}

}  // namespace AC
