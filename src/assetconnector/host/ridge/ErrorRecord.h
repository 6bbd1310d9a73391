#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"

#include <vector>

namespace Ridge {

/// One error of a finished host task.
struct ErrorRecord
{
    UTF16String message;
};

using ErrorRecordList = std::vector<ErrorRecord>;

}  // namespace Ridge
