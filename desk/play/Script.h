#pragma once

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace Desk {

/// What of a session is played at once: an input, and in front of it the "host" lines above it, which hold
/// what it uses up.
struct Turn
{
    struct Input
    {
        std::size_t line = 0;
        std::string text;  ///< JSON, without stamps.
    };

    std::vector<Input> inputs;          ///< At the end of a file "host" lines alone.
    std::optional<std::uint64_t> us;    ///< When, where the file says so.
    std::string title;                  ///< Such as "callback OnIngestFinished".
    std::optional<std::string> awaits;  ///< The identifier of the request that a panel is to raise.
    boost::shared_ptr<const std::string> comment;  ///< The last one above it; never null.
};

/// A session file in memory, without its effects.
struct Script
{
    std::string file;  ///< What people call it.
    std::size_t lines = 0;
    std::vector<Turn> turns;
};

/// Reads a session, and plays it once on a host of its own. The XML platform is initialised, and no host is
/// installed. \throws Session::SessionError for the first line that cannot be played.
Script ReadScript(std::istream& file, std::string name);

}  // namespace Desk
