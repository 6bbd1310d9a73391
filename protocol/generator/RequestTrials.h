#pragma once

#include "protocol/Model.h"
#include "protocol/generator/Node.h"
#include "protocol/generator/Trials.h"

#include <array>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace Protocol::Generator {

/// \return A request with every place that the host reads, at its sample.
Node RequestOfAll(const std::vector<Place>& places);

/// \return A request with the header and the places that make a difference beside the others.
Node ExampleOf(const std::vector<Place>& places, const std::vector<Handling>& handling);

/// Finds out what a connector does with requests, by leaving out one place after another.
class RequestTrials
{
public:
    /// What values are.
    enum class Variant
    {
        kSamples,
        kOpposites,  ///< Booleans say the other.
        kRoughCuts,  ///< The same, and clips are rough cuts.
    };
    static constexpr Variant kVariants[] = {Variant::kSamples, Variant::kOpposites, Variant::kRoughCuts};

    RequestTrials(const ConnectorKind& kind, const std::vector<Place>& places);

    /// \return All but whether it is handled and how it is answered.
    Handling Try(const std::string& identifier);

    /// \return What the last request did, with all places in every variant, and with none.
    const std::vector<Effect>& Seen() const { return mSeen; }

private:
    std::vector<Effect> Effects(const Node& request);

    /// A request with all places but those at a path and below it.
    Node All(std::string_view without, Variant variant) const;

    /// A request with what is needed.
    Node Needed(const std::vector<std::string>& needs) const;

    /// Whether an element below the root makes a difference, with all that it holds: beside everything, or
    /// beside what is needed. If not, nothing in it does.
    bool SectionMatters(std::string_view section, const std::vector<std::string>& needs);

    /// Whether the place makes a difference beside all others.
    bool MattersAmongAll(const Place& place);

    /// Whether it makes one beside what the request and the place need.
    bool MattersAlone(const Place& place, const std::vector<std::string>& needs);

    std::vector<std::string> FindNeeds();

    const std::vector<Place>& mPlaces;
    const char* mConnector;
    RecordingHost mHost;
    Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> mReference;
    UTF16String mIdentifier;
    std::array<std::vector<Effect>, std::size(kVariants)> mWithAll;
    std::vector<Effect> mSeen;
};

}  // namespace Protocol::Generator
