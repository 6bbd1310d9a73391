#include "assetconnector/host/kiln/Exceptions.h"

namespace Kiln {

const char* NullInterfaceException::what() const noexcept
{
    return "A NULL interface pointer has been dereferenced.";
}

}  // namespace Kiln
