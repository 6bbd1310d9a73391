#pragma once

#include "assetconnector/host/Export.h"
#include "assetconnector/host/ferrite/UTF16String.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ferrite::utility {

/// A 128-bit identifier, handled as two 64-bit halves. Zero means "no identifier". A plain value.
class Guid
{
public:
    /// The zero GUID.
    constexpr Guid() = default;

    /// \param first The first 16 hexadecimal digits of the text form, most significant first.
    /// \param second The other 16.
    constexpr Guid(std::uint64_t first, std::uint64_t second)
        : mFirst(static_cast<std::int64_t>(first)), mSecond(static_cast<std::int64_t>(second))
    {
    }

    /// A GUID that was never given out before. Asked of the host.
    /// \throws std::logic_error without an installed host; whatever the host's text service throws.
    AC_API static Guid CreateUnique();

    /// Reads the text form in either letter case, with or without braces around it.
    /// \return The GUID; zero for any other text. Never throws.
    AC_API static Guid StringToGUID(std::u16string_view text) noexcept;

    /// The length of the text form.
    AC_CONSTANT static constexpr std::size_t kTextLength = 36;

    /// \return The text form: lower case, with hyphens, without braces; also for the zero GUID.
    AC_API UTF16String AsString() const;

    /// \return The text form and a zero behind it.
    AC_API std::array<char16_t, kTextLength + 1> AsArray() const noexcept;

    constexpr bool IsZero() const noexcept { return mFirst == 0 && mSecond == 0; }

    friend constexpr bool operator==(const Guid& a, const Guid& b) noexcept
    {
        return a.mFirst == b.mFirst && a.mSecond == b.mSecond;
    }
    friend constexpr bool operator!=(const Guid& a, const Guid& b) noexcept { return !(a == b); }

    /// The order of maps and sets: the two halves as signed numbers, the first one first.
    friend constexpr bool operator<(const Guid& a, const Guid& b) noexcept
    {
        return a.mFirst != b.mFirst ? a.mFirst < b.mFirst : a.mSecond < b.mSecond;
    }

private:
    std::int64_t mFirst = 0;
    std::int64_t mSecond = 0;
};

}  // namespace ferrite::utility
