#include "desk/Faults.h"

#include <algorithm>
#include <iterator>

namespace Desk {
namespace {

struct Row
{
    Fault fault;
    const char* name;
    const char* past;
};

constexpr Row kFaults[] = {
    {Fault::kDrop, "drop", "dropped"},     {Fault::kDelay, "delay", "delayed"},
    {Fault::kDouble, "double", "doubled"}, {Fault::kReorder, "reorder", "reordered"},
    {Fault::kGarble, "garble", "garbled"}, {Fault::kDisconnect, "disconnect", "disconnected"},
};

const Row& RowOf(Fault fault)
{
    return *std::find_if(std::begin(kFaults), std::end(kFaults),
                         [fault](const Row& row) { return row.fault == fault; });
}

}  // namespace

const char* NameOf(Fault fault)
{
    return RowOf(fault).name;
}

const char* PastOf(Fault fault)
{
    return RowOf(fault).past;
}

std::optional<Fault> FaultOf(const std::string& name)
{
    const auto* const found = std::find_if(std::begin(kFaults), std::end(kFaults),
                                           [&name](const Row& row) { return row.name == name; });
    return found == std::end(kFaults) ? std::nullopt : std::optional(found->fault);
}

std::optional<Fault> Faults::Next()
{
    const bool happens = Below(100) < static_cast<std::uint32_t>(mSettings.percent);
    const std::uint32_t which = Below(std::max<std::size_t>(mSettings.kinds.size(), 1));
    if (!happens || mSettings.kinds.empty())
        return std::nullopt;
    return mSettings.kinds[which];
}

std::string Faults::Garbled(const std::string& text)
{
    if (text.empty())
        return "<";
    std::string garbled = text.substr(0, 1 + Below(text.size()));
    garbled[Below(garbled.size())] = '<';
    return garbled;
}

std::uint32_t Faults::Below(std::size_t limit)
{
    return static_cast<std::uint32_t>(mRandom() % limit);
}

}  // namespace Desk
