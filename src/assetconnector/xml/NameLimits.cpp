#include "assetconnector/xml/NameLimits.h"

#include "assetconnector/xml/MessageLimits.h"

#include <xercesc/util/XMLString.hpp>

#include <limits>

namespace AC {

void NameTable::Add(const XMLCh* name)
{
    const XMLSize_t hash = xercesc::XMLString::hash(name, std::numeric_limits<XMLSize_t>::max());
    if (mGrowth == Growth::kDoubles) {
        if (mHashes.size() >= mCounts.size() * 3 / 4) {
            mCounts.assign(2 * mCounts.size() + 1, 0);
            for (const XMLSize_t old : mHashes)
                Count(old);
        }
        mHashes.push_back(hash);
    }
    Count(hash);
}

bool NameLimits::AddElement(const xercesc::XMLElementDecl& declaration)
{
    if (declaration.getId() <= mElements)
        return true;
    ++mElements;
    mOfScanner.Add(declaration.getFullName());
    return Add(declaration.getFullName());
}

bool NameLimits::AddAttribute(const XMLCh* name)
{
    return !mAttributes.insert(name).second || Add(name);
}

bool NameLimits::Add(const XMLCh* name)
{
    mOfDocument.Add(name);
    return mElements + mAttributes.size() <= MessageLimits::kMostNames &&
           std::max(mOfDocument.Fullest(), mOfScanner.Fullest()) <= MessageLimits::kMostNamesOfHash;
}

}  // namespace AC
