#pragma once

#include "protocol/check/Check.h"

#include <string>

/// \return "kind path" of each finding, separated by commas; of the root without a path.
inline std::string Found(const std::string& text, const std::string& event = {})
{
    std::string list;
    for (const Protocol::Finding& finding : Protocol::Check(Protocol::ThisModel(), text, event))
        list += (list.empty() ? "" : ", ") + finding.kind + (finding.path.empty() ? "" : ' ' + finding.path);
    return list;
}
