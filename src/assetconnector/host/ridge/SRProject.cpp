#include "assetconnector/host/ridge/SRProject.h"

#include "assetconnector/host/Host.h"

namespace Ridge {

SRProject::~SRProject() = default;

boost::shared_ptr<SRProject> SRProject::GetInstance()
{
    return AC::InstalledHost().ingestLibrary.GetProject();
}

}  // namespace Ridge
