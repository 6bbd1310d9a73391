#include "session/ValueReader.h"

#include "reference_host/Marker.h"
#include "reference_host/MediaInfo.h"
#include "session/SimulatedObjects.h"

#include <utility>

namespace Session {

using ferrite::utility::Guid;

namespace {

/// A marker's JSON form.
struct MarkerForm
{
    UTF16String propertyXML;
};

}  // namespace
}  // namespace Session

template <>
struct AC::Description::Members<Session::MarkerForm>
{
    static constexpr auto kRows = std::make_tuple(Neither("propertyXML", &Session::MarkerForm::propertyXML));
};

namespace Session {

void ValueReader::RequireObject(const Json& json)
{
    if (!json.is_object())
        throw FormatError("expected an object");
}

void ValueReader::RequireArray(const Json& json)
{
    if (!json.is_array())
        throw FormatError("expected an array");
}

void ValueReader::RequireArray(const Json& json, std::size_t size)
{
    RequireArray(json);
    if (json.size() != size)
        throw FormatError("expected " + std::to_string(size) + " entries, not " +
                          std::to_string(json.size()));
}

std::string ValueReader::IndexText(std::size_t at)
{
    return '[' + std::to_string(at) + ']';
}

void ValueReader::Into(const Json& json, std::string& text)
{
    if (!json.is_string())
        throw FormatError("expected a string");
    text = json.get_ref<const std::string&>();
}

void ValueReader::Into(const Json& json, UTF16String& text)
{
    text = ferrite::utility::UTF8to16(Read<std::string>(json));
}

void ValueReader::Into(const Json& json, bool& value)
{
    if (!json.is_boolean())
        throw FormatError("expected true or false");
    value = json.get<bool>();
}

void ValueReader::Into(const Json& json, Guid& guid)
{
    const auto text = Read<UTF16String>(json);
    guid = Guid::StringToGUID(text);
    const UTF16String zero = guid.AsString();
    if (guid.IsZero() && text != zero && text != u'{' + zero + u'}')
        throw FormatError("malformed GUID");
}

void ValueReader::Into(const Json& json, tempora::TickTime& time)
{
    if (json.is_null())
        time = tempora::kTime_Invalid;
    else
        IntegerInto(json, time.ticks);
}

void ValueReader::Into(const Json& json, tempora::FrameRate& rate)
{
    IntegerInto(json, rate.ticksPerFrame);
}

void ValueReader::Into(const Json& json, Ridge::AssetMediaType& type)
{
    type = static_cast<Ridge::AssetMediaType>(Read<std::underlying_type_t<Ridge::AssetMediaType>>(json));
}

void ValueReader::Into(const Json& json, boost::shared_ptr<Ridge::AssetMediaInfo>& info)
{
    if (json.is_null())
        info.reset();
    else
        info = boost::make_shared<ReferenceHost::MediaInfo>(Read<Ridge::AssetMediaInfoValues>(json));
}

void ValueReader::Into(const Json& json, boost::shared_ptr<Ridge::AssetItem>& item)
{
    std::vector<PendingSubItems> pending;
    item = ReadItem(json, {}, pending);
    ReadSubItems(pending);
}

void ValueReader::Into(const Json& json, Ridge::AssetItemList& items)
{
    std::vector<PendingSubItems> pending;
    ReadItems(json, {}, items, pending);
    ReadSubItems(pending);
}

void ValueReader::ReadItems(const Json& json, const std::string& place, Ridge::AssetItemList& items,
                            std::vector<PendingSubItems>& pending)
{
    ForEachEntry(json, [&](const Json& entry) {
        items.push_back(ReadItem(entry, place + IndexText(items.size()) + ": ", pending));
    });
}

boost::shared_ptr<Ridge::AssetItem> ValueReader::ReadItem(const Json& json, const std::string& place,
                                                          std::vector<PendingSubItems>& pending)
{
    if (json.is_null())
        return nullptr;
    Ridge::AssetItemValues values;
    ReadMembers(json, values);
    auto item = boost::make_shared<Ridge::AssetItem>(std::move(values));
    const auto subItems = json.find(kSubItems.name);
    if (subItems != json.end())
        pending.push_back({*subItems, *item, place + kSubItems.name});
    return item;
}

void ValueReader::ReadSubItems(std::vector<PendingSubItems>& pending)
{
    while (!pending.empty()) {
        const PendingSubItems next = pending.back();
        pending.pop_back();
        Ridge::AssetItemList subItems;
        Within(next.place, [&] { ReadItems(next.json, next.place + ": ", subItems, pending); });
        next.item.SetSubAssetItemList(std::move(subItems));
    }
}

void ValueReader::Into(const Json& json, Kiln::InterfaceRef<Keel::IMarker>& marker)
{
    if (!json.is_null())
        marker = ReferenceHost::Marker::Make(Read<MarkerForm>(json).propertyXML);
}

void ValueReader::Into(const Json& json, Kiln::InterfaceRef<KilnUnknown>& object)
{
    if (!json.is_null())
        object = NamedObject::Make(Read<std::string>(json));
}

}  // namespace Session
