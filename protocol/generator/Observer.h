#pragma once

#include "protocol/Model.h"
#include "protocol/generator/Node.h"
#include "protocol/generator/RecordingHost.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace Protocol::Generator {

/// Adds a text that is not there yet.
void AddUnique(std::vector<std::string>& values, const std::string& value);

/// What values of a header come from: the value, and what Header says of it.
using Sources = std::map<std::string, std::string>;

/// Puts what connectors were seen to do together, as what events and station messages have of it.
class Observer
{
public:
    /// \param model Has its places and its events.
    explicit Observer(Model& model);

    /// \param sending Who did it and why; gets the rest.
    void AddEffect(const Effect& effect, Sending sending, const Sources& sources);

private:
    void AddNotification(const std::string& identifier, const std::string& text, Sending sending,
                         const Sources& sources);
    void AddPost(const std::string& name, const std::string& station, const Sending& sending);
    std::vector<std::string> InOrder(const std::set<std::string>& paths) const;
    Event& EventOf(const std::string& identifier);

    Model& mModel;
};

}  // namespace Protocol::Generator
