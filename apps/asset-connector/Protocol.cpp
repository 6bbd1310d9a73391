#include "Commands.h"
#include "protocol/Reference.h"

namespace AssetConnector {

Status Protocol(bool json, std::ostream& output)
{
    output << (json ? ::Protocol::ThisModelText() : Reference(::Protocol::ThisModel()));
    return kDone;
}

}  // namespace AssetConnector
