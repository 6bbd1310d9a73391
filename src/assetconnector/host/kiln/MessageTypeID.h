#pragma once

#include <cstdint>
#include <string_view>

namespace Kiln {

/// The identifier of a message class from its decorated run-time type name, such as
/// ".?AVTandemEvent@Ridge@@". Pure; equal names give equal identifiers, none is 0. Sender and receiver may be
/// built apart: the function (FNV-1a, 32 bits) must not change.
constexpr std::uint32_t HashMessageTypeNameToMessageID(std::string_view name) noexcept
{
    std::uint32_t hash = 2166136261U;
    for (const char unit : name)
        hash = (hash ^ static_cast<unsigned char>(unit)) * 16777619U;
    return hash == 0 ? 1 : hash;
}

}  // namespace Kiln
