#include "desk/play/Pace.h"

#include <algorithm>
#include <utility>

namespace Desk {
namespace {

constexpr double kSlowest = 0.001;
constexpr double kFastest = 1000;

/// What is less late is caught up with, so that whole milliseconds do not add up.
constexpr std::chrono::milliseconds kMostLate{100};

Pace::Settings Bounded(Pace::Settings settings)
{
    settings.speed = settings.speed > kSlowest ? std::min(settings.speed, kFastest) : kSlowest;
    return settings;
}

}  // namespace

Pace::Pace(Timer& timer, const Settings& settings, Timer::Task due)
    : mTimer(timer), mSettings(Bounded(settings)), mDue(std::move(due))
{
}

void Pace::Await(std::chrono::microseconds distance)
{
    mDistance = distance;
    mSince = mTimer.Now() - std::exchange(mLate, {});
    Start();
}

void Pace::Rest()
{
    mDistance.reset();
    mWait.reset();
    mLate = {};
}

void Pace::Set(std::optional<double> speed, std::optional<bool> isStepping)
{
    const Clock::time_point now = mTimer.Now();
    if (mDistance && !mSettings.isStepping)
        *mDistance -= std::min(*mDistance, Distance(now - mSince) * mSettings.speed);
    mSince = now;
    mSettings = Bounded({speed.value_or(mSettings.speed), isStepping.value_or(mSettings.isStepping)});
    Start();
}

Pace::Clock::duration Pace::Remaining() const
{
    const auto whole = std::chrono::duration_cast<Clock::duration>(*mDistance / mSettings.speed);
    return whole - (mTimer.Now() - mSince);
}

void Pace::Start()
{
    mWait.reset();
    if (!mDistance || mSettings.isStepping)
        return;
    mWait = std::make_shared<char>();
    const auto delay = std::chrono::ceil<std::chrono::milliseconds>(Remaining());
    mTimer.PostAfter(std::max(delay, {}), [this, wait = std::weak_ptr<char>(mWait)] {
        if (!wait.expired())
            OnTime();
    });
}

void Pace::OnTime()
{
    const Clock::duration late = std::min<Clock::duration>(-Remaining(), kMostLate);
    Rest();
    mLate = late;
    mDue();
}

}  // namespace Desk
