#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "desk/Origin.h"
#include "desk/play/Pairs.h"

#include <string>
#include <vector>

namespace Desk {

/// A request that a page raised, beside the one that a session has.
struct Comparison
{
    /// Names no more members than this one by one.
    static constexpr std::size_t kMostNamed = 20;

    ferrite::utility::Guid messageID;  ///< Of the live one; zero when there is none.
    std::vector<std::string> marks;    ///< What differs, without passwords.
};

/// \param pairs Gets what stands for what from here on. \param ofFile, live Texts, UTF-8. A host is
/// installed, which makes media infos of them.
Comparison CompareRequests(Pairs& pairs, const Origin& asker, const std::string& ofFile,
                           const std::string& live);

}  // namespace Desk
