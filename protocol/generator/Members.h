#pragma once

#include "assetconnector/message/ACMessage.h"
#include "protocol/Model.h"

#include <map>
#include <string>
#include <vector>

namespace Protocol::Generator {

/// A member of the message record or of a record in it.
struct MemberFact
{
    std::string path;  ///< With those around it: "fileInfoList.assetID".
    bool read = false;
    bool written = false;
};

/// \return Every member, from the description of the records. Items that hold items of their kind are gone
/// into once.
const std::vector<MemberFact>& AllMembers();

/// \return Every record, the message first, each before those in it.
std::vector<Record> AllRecords();

/// The members that are there, by their path: of a list of records how many there are, of any other member
/// its JSON.
using Values = std::map<std::string, Json>;

Values ValuesOf(const AC::ACMessage& message);

/// \return The paths of members that both have and that differ.
std::vector<std::string> Differences(const Values& a, const Values& b);

}  // namespace Protocol::Generator
