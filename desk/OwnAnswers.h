#pragma once

#include "desk/Host.h"
#include "desk/Traffic.h"

#include <string>
#include <vector>

namespace Desk {

/// What the desk answers by itself, beside the connectors: what there is, for panels that begin or have lost
/// too much, and that columns are taken over. Used on the host's thread.
class OwnAnswers
{
public:
    /// \param traffic Outlives this object; its overview tells what there is.
    explicit OwnAnswers(Traffic& traffic) : mTraffic(traffic) {}

    /// \return The identifiers of the requests.
    std::vector<std::string> Handles() const;

    /// Answers one of these to who asks. A text that does not decode has no answer.
    /// \throws What encoding throws.
    void Answer(Host& host, const Origin& asker, const std::string& type, const std::string& xml) const;

private:
    Traffic& mTraffic;
};

}  // namespace Desk
