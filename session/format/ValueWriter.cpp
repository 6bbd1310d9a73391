#include "session/format/ValueWriter.h"

#include <cstdio>

namespace Session {
namespace {

/// \return The number with up to three decimals, "-0.5" for -0.5.
std::string DecimalText(double number)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", number);
    std::string decimal = text;
    decimal.erase(decimal.find_last_not_of('0') + 1);
    if (decimal.back() == '.')
        decimal.pop_back();
    return decimal;
}

}  // namespace

void ValueWriter::Put(Ridge::AssetMediaType type, JsonText& out)
{
    out.Number(static_cast<std::underlying_type_t<Ridge::AssetMediaType>>(type));
}

void ValueWriter::Put(tempora::TickTime time, JsonText& out) const
{
    if (time == tempora::kTime_Invalid)
        out.Null();
    else if (mStyle == Style::kSession)
        out.Number(time.ticks);
    else
        out.String(DecimalText(static_cast<double>(time.ticks) / tempora::kTicksPerSecond) + " s");
}

void ValueWriter::Put(tempora::FrameRate rate, JsonText& out) const
{
    if (mStyle == Style::kSession)
        return out.Number(rate.ticksPerFrame);
    const tempora::FrameRatio ratio = tempora::FrameRateToRatio(rate);
    out.String(DecimalText(static_cast<double>(ratio.numerator) / static_cast<double>(ratio.denominator)) +
               " frames/s");
}

void ValueWriter::Put(const Ridge::AssetMediaInfo& info, JsonText& out) const
{
    Ridge::AssetMediaInfoValues values = AC::Comparison::ValuesOf(info);
    const std::optional<bool> needSavePreCheck = mObjects->NeedSavePreCheck(info);
    values.needSavePreCheck = needSavePreCheck.value_or(false);
    out.BeginObject();
    PutMembers(values, out, needSavePreCheck ? nullptr : &values.needSavePreCheck);
    out.EndObject();
}

void ValueWriter::Put(const boost::shared_ptr<Ridge::AssetItem>& item, JsonText& out) const
{
    if (const Ridge::AssetItemList* const subItems = BeginItem(item, out))
        EndItem(*subItems, out);
}

void ValueWriter::Put(const Ridge::AssetItemList& items, JsonText& out) const
{
    struct Level
    {
        Ridge::AssetItemList::const_iterator at;
        Ridge::AssetItemList::const_iterator end;
    };
    out.BeginArray();
    std::vector<Level> open{{items.begin(), items.end()}};
    while (true) {
        if (open.back().at == open.back().end) {
            out.EndArray();
            open.pop_back();
            if (open.empty())
                return;
            out.EndObject();
            continue;
        }
        const Ridge::AssetItemList* const subItems = BeginItem(*open.back().at++, out);
        if (subItems == nullptr)
            continue;
        out.BeginArray();
        open.push_back({subItems->begin(), subItems->end()});
    }
}

const Ridge::AssetItemList* ValueWriter::BeginItem(const boost::shared_ptr<Ridge::AssetItem>& item,
                                                   JsonText& out) const
{
    if (item == nullptr) {
        out.Null();
        return nullptr;
    }
    out.BeginObject();
    PutMembers(item->Values(), out);
    const Ridge::AssetItemList& subItems = item->GetSubAssetItemList();
    if (subItems.empty() && mStyle == Style::kReadable) {
        out.EndObject();
        return nullptr;
    }
    out.Name(kSubItems.name);
    return &subItems;
}

void ValueWriter::EndItem(const Ridge::AssetItemList& subItems, JsonText& out) const
{
    Put(subItems, out);
    out.EndObject();
}

void ValueWriter::Put(const Ridge::InsertedColumns& columns, JsonText& out) const
{
    WriteArguments(out, columns.newNames, columns.previousNames);
}

void ValueWriter::Put(const Kiln::InterfaceRef<Keel::IMarker>& marker, JsonText& out) const
{
    if (!marker)
        return out.Null();
    out.BeginObject();
    out.Name("propertyXML");
    out.String(mObjects->PropertyXMLOf(*marker.Get()));
    out.EndObject();
}

void ValueWriter::Put(const Kiln::InterfaceRef<KilnUnknown>& object, JsonText& out) const
{
    const std::optional<std::string> name = object ? mObjects->NameOf(*object.Get()) : std::nullopt;
    if (name)
        out.String(*name);
    else
        out.Null();
}

}  // namespace Session
