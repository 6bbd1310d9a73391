#include "desk/Disturbance.h"

#include <exception>
#include <utility>

namespace Desk {

void Disturbance::Take(const Pass& pass)
{
    const std::optional<Fault> fault = mFaults.Next();
    if (mHeld.empty())
        return fault ? Happen(*fault, pass) : pass(nullptr);
    if (!mIsUntilNext)
        return mHeld.push_back(pass);
    mHeld.push_front(pass);
    Flush();
}

void Disturbance::Happen(Fault fault, const Pass& pass)
{
    ++mCount;
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
    mHold = std::make_shared<char>();
    mTimer.PostAfter(kHeld, [this, hold = std::weak_ptr<char>(mHold)] {
        if (!hold.expired())
            Flush();
    });
}

void Disturbance::Flush()
{
    std::exception_ptr thrown;
    for (const Pass& pass : std::exchange(mHeld, {})) {
        try {
            pass(nullptr);
        } catch (...) {  // what is behind it passes all the same
            thrown = std::current_exception();
        }
    }
    if (thrown)
        std::rethrow_exception(thrown);
}

}  // namespace Desk
