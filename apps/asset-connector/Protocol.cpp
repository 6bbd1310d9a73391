#include "Commands.h"
#include "protocol/Model.h"

namespace AssetConnector {

Status Protocol(bool json, std::ostream& output)
{
    if (json)
        output << ::Protocol::ThisModelText();
    return kDone;
}

}  // namespace AssetConnector
