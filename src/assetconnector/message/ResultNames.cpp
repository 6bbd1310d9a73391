#include "assetconnector/message/ResultNames.h"

#include "assetconnector/message/MessageConstants.h"

#include <cstdint>

namespace AC {
namespace {

struct Row
{
    std::uint32_t code;
    const UTF16String* name;
};

constexpr Row kResultNames[] = {
    {0x00000000, &kACMessage_ResultOK},           {0x80000000, &kACMessage_ResultFailure},
    {0xA00F0005, &kACMessage_ResultAccessDenied}, {0xA00F0007, &kACMessage_ResultUserCanceled},
    {0xA00F000B, &kACMessage_ResultIgnore},
};

}  // namespace

const UTF16String& ResultName(Ridge::ResultCode code) noexcept
{
    for (const Row& row : kResultNames)
        if (row.code == static_cast<std::uint32_t>(code))
            return *row.name;
    return kACMessage_ResultFailure;
}

}  // namespace AC
