#pragma once

#include "assetconnector/host/Export.h"

#include <exception>

namespace Kiln {

/// A reference that must not be null is.
class AC_API NullInterfaceException : public std::exception
{
public:
    const char* what() const noexcept override;
};

}  // namespace Kiln
