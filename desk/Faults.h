#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace Desk {

/// What may go wrong between the desk and one page.
enum class Fault
{
    kDrop,
    kDelay,    ///< Held for a while, and with it what comes behind.
    kDouble,   ///< Comes twice.
    kReorder,  ///< Comes behind the next one.
    kGarble,   ///< The text is cut and damaged.
    kDisconnect,
};

/// \return Such as "drop", as pages name it.
const char* NameOf(Fault fault);

/// \return Such as "dropped".
const char* PastOf(Fault fault);

std::optional<Fault> FaultOf(const std::string& name);

/// Chance that can be had again: the same seed gives the same faults to the same frames, whatever the other
/// direction does.
class Faults
{
public:
    struct Settings
    {
        std::uint32_t seed = 1;
        int percent = 0;  ///< Of the frames.
        std::vector<Fault> kinds;
    };

    explicit Faults(Settings settings) : mSettings(std::move(settings)), mRandom(mSettings.seed) {}

    const Settings& GetSettings() const noexcept { return mSettings; }

    /// \return What happens to the next frame.
    std::optional<Fault> Next();

    /// \return The text cut somewhere, with damage before.
    std::string Garbled(const std::string& text);

private:
    std::uint32_t Below(std::size_t limit);

    Settings mSettings;
    std::mt19937 mRandom;  ///< The same numbers everywhere, as distributions are not.
};

}  // namespace Desk
