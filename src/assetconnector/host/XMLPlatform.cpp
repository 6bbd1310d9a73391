#include "assetconnector/host/XMLPlatform.h"

#include <xercesc/util/PlatformUtils.hpp>

#include <stdexcept>

namespace AC {

XMLPlatform::XMLPlatform()
{
    xercesc::XMLPlatformUtils::Initialize();
}

XMLPlatform::~XMLPlatform()
{
    xercesc::XMLPlatformUtils::Terminate();
}

void XMLPlatform::Require()
{
    if (xercesc::XMLPlatformUtils::fgMemoryManager == nullptr)
        throw std::logic_error(
            "asset-connector: the XML platform is not initialised; make an AC::XMLPlatform, or call "
            "xercesc::XMLPlatformUtils::Initialize, first");
}

}  // namespace AC
