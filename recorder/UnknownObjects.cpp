#include "recorder/UnknownObjects.h"

#include "assetconnector/host/ferrite/Unicode.h"

#include <cstdint>
#include <random>

namespace Recording {
namespace {

/// \return A name for the address that does not tell it.
std::string NameOfAddress(const char* prefix, const void* address)
{
    static const std::uint64_t salt = std::random_device()();
    constexpr std::uint64_t kOddFactor = 0x9E3779B97F4A7C15;
    std::uint64_t mixed = (reinterpret_cast<std::uintptr_t>(address) ^ salt << 20U) * kOddFactor;
    mixed ^= mixed >> 29U;
    return prefix + std::to_string(static_cast<std::uint32_t>(mixed * kOddFactor >> 32U));
}

}  // namespace

const UnknownObjects& UnknownObjects::Get()
{
    static const UnknownObjects objects;
    return objects;
}

std::optional<bool> UnknownObjects::NeedSavePreCheck(const Ridge::AssetMediaInfo& /*info*/) const
{
    return std::nullopt;
}

std::optional<std::string> UnknownObjects::NameOf(const KilnUnknown& object) const
{
    return NameOfAddress("object-", &object);
}

UTF16String UnknownObjects::PropertyXMLOf(const Keel::IMarker& marker) const
{
    return ferrite::utility::UTF8to16(NameOfAddress("marker-", &marker));
}

}  // namespace Recording
