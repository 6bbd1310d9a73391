#include "recorder/Deliveries.h"

#include <utility>

namespace Recording {
namespace {

// A host need not deliver by what the recorder sees.
constexpr std::size_t kMostPosted = 100000;
constexpr std::size_t kMostBytes = std::size_t{16} << 20U;

}  // namespace

void Deliveries::Posted(std::size_t message)
{
    if (!mTells)
        return;
    Message& each = mMessages[message];
    if (++each.posted > each.lines.size())
        ++mMissing;
    mPosted.push_back(message);
    if (mPosted.size() > kMostPosted)
        GiveUp();
}

void Deliveries::Delivered(std::size_t message, std::string line)
{
    if (!mTells)
        return;
    Message& each = mMessages[message];
    mBytes += line.size();
    each.lines.push_back(std::move(line));
    if (each.lines.size() <= each.posted)
        --mMissing;
    if (mBytes > kMostBytes)
        GiveUp();
}

std::vector<std::string> Deliveries::Take()
{
    std::vector<std::string> lines;
    if (mMissing != 0)
        return lines;
    for (const std::size_t message : mPosted) {
        Message& each = mMessages[message];
        mBytes -= each.lines.front().size();
        lines.push_back(std::move(each.lines.front()));
        each.lines.pop_front();
        if (--each.posted == 0 && each.lines.empty())
            mMessages.erase(message);
    }
    mPosted.clear();
    return lines;
}

void Deliveries::Forget()
{
    *this = {};
}

void Deliveries::GiveUp()
{
    Forget();
    mTells = false;
}

}  // namespace Recording
