#pragma once

#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/ferrite/ImmutableString.h"
#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/ridge/IIngestLibrary.h"
#include "assetconnector/message/Description.h"
#include "protocol/Model.h"
#include "reference_host/Marker.h"
#include "reference_host/MediaInfo.h"

#include <boost/core/demangle.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>

#include <list>
#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

/// What the generator does with values of every type that crosses the seam: it writes them as JSON, as
/// records have it, names their types, and makes some.
namespace Protocol::Generator {

template <class Value>
struct IsList : std::false_type
{
};
template <class Value>
struct IsList<std::list<Value>> : std::true_type
{
};
template <class Value>
struct IsList<std::vector<Value>> : std::true_type
{
};
template <class Value>
struct IsList<std::set<Value>> : std::true_type
{
};

template <class Value>
struct IsMap : std::false_type
{
};
template <class Key, class Value>
struct IsMap<std::map<Key, Value>> : std::true_type
{
};

template <class Value>
struct IsShared : std::false_type
{
};
template <class Value>
struct IsShared<boost::shared_ptr<Value>> : std::true_type
{
};

/// The record that an object of the host's is described by; itself for any other type.
template <class Value>
struct Described
{
    using Type = Value;
    static const Value& Of(const Value& value) { return value; }
};
template <>
struct Described<Ridge::AssetMediaInfo>
{
    using Type = Ridge::AssetMediaInfoValues;
    static Type Of(const Ridge::AssetMediaInfo& info) { return ReferenceHost::MediaInfo::ValuesOf(info); }
};
template <>
struct Described<Ridge::AssetItem>
{
    using Type = Ridge::AssetItemValues;
    static const Type& Of(const Ridge::AssetItem& item) { return item.Values(); }
};

template <class Value>
Json JsonOf(const Value& value)
{
    if constexpr (std::is_same_v<Value, UTF16String>) {
        return ferrite::utility::UTF16to8(value);
    } else if constexpr (std::is_same_v<Value, std::string> || std::is_arithmetic_v<Value>) {
        return value;
    } else if constexpr (std::is_same_v<Value, ferrite::utility::Guid>) {
        return ferrite::utility::UTF16to8(value.AsString());
    } else if constexpr (std::is_same_v<Value, tempora::TickTime>) {
        return value == tempora::kTime_Invalid ? Json(nullptr) : Json(value.ticks);
    } else if constexpr (std::is_same_v<Value, tempora::FrameRate>) {
        return value.ticksPerFrame;
    } else if constexpr (std::is_enum_v<Value>) {
        return static_cast<int>(value);
    } else if constexpr (IsShared<Value>::value) {
        return value ? JsonOf(*value) : Json(nullptr);
    } else if constexpr (IsList<Value>::value || IsMap<Value>::value) {
        Json array = Json::array();
        for (const auto& entry : value)
            if constexpr (IsMap<Value>::value)
                array.push_back(Json::array({JsonOf(entry.first), JsonOf(entry.second)}));
            else
                array.push_back(JsonOf(entry));
        return array;
    } else if constexpr (AC::Description::IsDescribed<typename Described<Value>::Type>::value) {
        using Record = typename Described<Value>::Type;
        const Record& record = Described<Value>::Of(value);
        Json object = Json::object();
        AC::Description::ForEachMember<Record>(
            [&](const auto& row) { object[row.name] = JsonOf(record.*row.member); });
        return object;
    } else {
        return nullptr;  // what has no value: listeners, callbacks, objects behind references
    }
}

/// \return The type as Member::type names it.
template <class Value>
std::string TypeOf()
{
    if constexpr (std::is_same_v<Value, UTF16String> || std::is_same_v<Value, std::string>) {
        return "string";
    } else if constexpr (std::is_same_v<Value, bool>) {
        return "boolean";
    } else if constexpr (std::is_integral_v<Value> || std::is_enum_v<Value>) {
        return "integer";
    } else if constexpr (std::is_same_v<Value, ferrite::utility::Guid>) {
        return "guid";
    } else if constexpr (std::is_same_v<Value, tempora::TickTime>) {
        return "time";
    } else if constexpr (std::is_same_v<Value, tempora::FrameRate>) {
        return "rate";
    } else if constexpr (IsShared<Value>::value) {
        return "nullable:" + TypeOf<typename Value::element_type>();
    } else if constexpr (IsList<Value>::value) {
        return "list:" + TypeOf<typename Value::value_type>();
    } else if constexpr (IsMap<Value>::value) {
        return "map:" + TypeOf<typename Value::key_type>() + ':' + TypeOf<typename Value::mapped_type>();
    } else if constexpr (AC::Description::IsDescribed<typename Described<Value>::Type>::value) {
        std::string name = boost::core::demangle(typeid(Value).name());
        name.erase(0, name.rfind(':') + 1);
        const std::string values = "Values";
        if (name.size() > values.size() &&
            name.compare(name.size() - values.size(), values.size(), values) == 0)
            name.resize(name.size() - values.size());
        return "record:" + (name == "ACMessage" ? "Message" : name == "ACMessageHeader" ? "Header" : name);
    } else {
        return "nullable:object";
    }
}

/// Every text that Filled makes; shows whether reserved characters were decoded.
constexpr char16_t kFilledText[] = u"a>b";

/// \return A value that is not at its construction value, with one entry in each list. Result codes are the
///         given one.
template <class Value>
Value Filled(Ridge::ResultCode code = 0)
{
    Value value{};
    if constexpr (std::is_same_v<Value, UTF16String>) {
        value = kFilledText;
    } else if constexpr (std::is_same_v<Value, std::string>) {
        value = "<xmpmeta title=\"A001\"/>";
    } else if constexpr (std::is_same_v<Value, bool>) {
        value = true;
    } else if constexpr (std::is_integral_v<Value>) {
        value = static_cast<Value>(code);
    } else if constexpr (std::is_enum_v<Value>) {
        value = static_cast<Value>(2);
    } else if constexpr (std::is_same_v<Value, ferrite::utility::Guid>) {
        value = {0x0F8B2C1E5D3A4B6F, 0x1E7C1A2B3C4D5E6F};
    } else if constexpr (std::is_same_v<Value, tempora::TickTime>) {
        value.ticks = 10 * tempora::kTicksPerSecond;
    } else if constexpr (std::is_same_v<Value, tempora::FrameRate>) {
        value.ticksPerFrame = tempora::kTicksPerSecond / 25;
    } else if constexpr (std::is_same_v<Value, Kiln::InterfaceRef<Keel::IMarker>>) {
        value = ReferenceHost::Marker::Make(kFilledText);
    } else if constexpr (std::is_same_v<Value, boost::shared_ptr<Ridge::AssetMediaInfo>>) {
        value = boost::make_shared<ReferenceHost::MediaInfo>(Filled<Ridge::AssetMediaInfoValues>(code));
    } else if constexpr (std::is_same_v<Value, Ridge::AssetItemValues>) {
        AC::Description::ForEachMember<Value>([&](const auto& row) {
            if constexpr (!std::is_same_v<std::decay_t<decltype(value.*row.member)>, Ridge::AssetItemList>)
                value.*row.member = Filled<std::decay_t<decltype(value.*row.member)>>(code);
        });
    } else if constexpr (std::is_same_v<Value, boost::shared_ptr<Ridge::AssetItem>>) {
        value = boost::make_shared<Ridge::AssetItem>(Filled<Ridge::AssetItemValues>(code));
        value->SetSubAssetItemList(
            {boost::make_shared<Ridge::AssetItem>(Filled<Ridge::AssetItemValues>(code))});
    } else if constexpr (IsShared<Value>::value) {
        using Element = typename Value::element_type;
        value = boost::make_shared<Element>(Filled<Element>(code));
    } else if constexpr (IsMap<Value>::value) {
        typename Value::key_type key{};
        if constexpr (std::is_same_v<typename Value::key_type, UTF16String>)
            key = u"scene";  // becomes the name of an element
        else
            key = Filled<typename Value::key_type>(code);
        value.emplace(std::move(key), Filled<typename Value::mapped_type>(code));
    } else if constexpr (IsList<Value>::value) {
        value.insert(value.end(), Filled<typename Value::value_type>(code));
    } else if constexpr (AC::Description::IsDescribed<Value>::value) {
        AC::Description::ForEachMember<Value>([&](const auto& row) {
            value.*row.member = Filled<std::decay_t<decltype(value.*row.member)>>(code);
        });
    }
    return value;
}

}  // namespace Protocol::Generator
