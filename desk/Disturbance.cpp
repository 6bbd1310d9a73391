#include "desk/Disturbance.h"

#include <boost/weak_ptr.hpp>

#include <utility>

namespace Desk {

void Disturbance::Take(const Pass& pass)
{
    const std::optional<Fault> fault = mFaults.Next();
    if (mHeld.empty())
        return fault ? Happen(*fault, pass) : pass(nullptr);
    if (!mIsUntilNext)
        return mHeld.push_back(pass);
    pass(nullptr);
    Flush();
}

void Disturbance::Happen(Fault fault, const Pass& pass)
{
    mMark(std::string("fault: ") + PastOf(fault));
    switch (fault) {
        case Fault::kDrop:
            return;
        case Fault::kDelay:
        case Fault::kReorder:
            return Hold(pass, fault == Fault::kReorder);
        case Fault::kDouble:
            pass(nullptr);
            return pass(nullptr);
        case Fault::kGarble:
            return pass(&mFaults);
        case Fault::kDisconnect:
            return mDisconnect();
    }
}

void Disturbance::Hold(const Pass& pass, bool untilNext)
{
    mHeld.push_back(pass);
    mIsUntilNext = untilNext;
    mTimer.PostAfter(kHeld, [weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->Flush();
    });
}

void Disturbance::Flush()
{
    for (const Pass& pass : std::exchange(mHeld, {}))
        pass(nullptr);
}

}  // namespace Desk
