#pragma once

#include "assetconnector/host/ferrite/Unicode.h"
#include "reference_host/Host.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

/// A test with an installed reference host whose posted messages are delivered by hand.
class HostTest : public ::testing::Test
{
protected:
    ReferenceHost::Host host{ReferenceHost::Stations::Delivery::kByHand};
    ReferenceHost::Installation installation{host};
};

inline UTF16String U(std::string_view utf8)
{
    return ferrite::utility::UTF8to16(utf8);
}

inline std::string Narrow(const UTF16String& text)
{
    return ferrite::utility::UTF16to8(text);
}

/// The same text so many times.
inline std::string Repeated(std::string_view text, std::size_t count)
{
    std::string result;
    result.reserve(text.size() * count);
    while (count-- > 0)
        result += text;
    return result;
}
