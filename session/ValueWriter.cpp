#include "session/ValueWriter.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/keel/MarkerUtilities.h"
#include "reference_host/MediaInfo.h"

#include <cstddef>
#include <cstdio>
#include <utility>

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

OrderedJson ValueWriter::From(const std::string& text) const
{
    // An 8-bit text need not be UTF-8.
    return From(ferrite::utility::UTF8to16(text));
}

OrderedJson ValueWriter::From(const UTF16String& text) const
{
    return ferrite::utility::UTF16to8(text);
}

OrderedJson ValueWriter::From(const ferrite::utility::ImmutableString& text) const
{
    return From(text.AsUTF8());
}

OrderedJson ValueWriter::From(const ferrite::utility::Guid& guid) const
{
    return From(guid.AsString());
}

OrderedJson ValueWriter::From(tempora::TickTime time) const
{
    if (time == tempora::kTime_Invalid)
        return nullptr;
    if (mStyle == Style::kSession)
        return time.ticks;
    return DecimalText(static_cast<double>(time.ticks) / tempora::kTicksPerSecond) + " s";
}

OrderedJson ValueWriter::From(tempora::FrameRate rate) const
{
    if (mStyle == Style::kSession)
        return rate.ticksPerFrame;
    const tempora::FrameRatio ratio = tempora::FrameRateToRatio(rate);
    return DecimalText(static_cast<double>(ratio.numerator) / static_cast<double>(ratio.denominator)) +
           " frames/s";
}

OrderedJson ValueWriter::From(Ridge::AssetMediaType type) const
{
    return static_cast<std::underlying_type_t<Ridge::AssetMediaType>>(type);
}

OrderedJson ValueWriter::From(void* /*callback*/) const
{
    return nullptr;  // every caller passes null, and a pointer has no form
}

OrderedJson ValueWriter::From(const Ridge::AssetMediaInfo& info) const
{
    return MembersOf(ReferenceHost::MediaInfo::ValuesOf(info));
}

OrderedJson ValueWriter::From(const boost::shared_ptr<Ridge::AssetItem>& item) const
{
    return std::move(From(Ridge::AssetItemList{item}).front());
}

OrderedJson ValueWriter::From(const Ridge::AssetItemList& items) const
{
    struct Pending
    {
        const Ridge::AssetItemList* items;
        OrderedJson* array;
    };
    OrderedJson root = OrderedJson::array();
    std::vector<Pending> pending{{&items, &root}};
    while (!pending.empty()) {
        const Pending next = pending.back();
        pending.pop_back();
        auto& entries = next.array->get_ref<OrderedJson::array_t&>();
        entries.reserve(next.items->size());  // what is pending points into it
        for (const auto& item : *next.items) {
            OrderedJson& entry = entries.emplace_back(nullptr);
            if (item == nullptr)
                continue;
            entry = MembersOf(item->Values());
            if (!item->GetSubAssetItemList().empty())
                pending.push_back({&item->GetSubAssetItemList(), &entry[kSubItems.name]});
            else if (mStyle == Style::kReadable)
                entry.erase(kSubItems.name);
        }
    }
    return root;
}

OrderedJson ValueWriter::From(const Ridge::InsertedColumns& columns) const
{
    return WriteArguments(columns.newNames, columns.previousNames);
}

OrderedJson ValueWriter::From(const Kiln::InterfaceRef<Keel::IMarker>& marker) const
{
    if (!marker)
        return nullptr;
    OrderedJson object;
    object["propertyXML"] = From(Keel::MarkerUtilities::ToPropertyXML(marker, tempora::kFrameRate_Zero));
    return object;
}

OrderedJson ValueWriter::From(const Kiln::InterfaceRef<KilnUnknown>& object) const
{
    const auto* const named = dynamic_cast<const NamedObject*>(object.Get());
    return named == nullptr ? OrderedJson(nullptr) : From(named->Name());
}

}  // namespace Session
