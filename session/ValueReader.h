#pragma once

#include "assetconnector/host/ferrite/Unicode.h"
#include "session/format/FormatError.h"
#include "session/format/Json.h"
#include "session/format/Values.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <list>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace Session {

/// Reads values from their JSON form. A record's members come from its description; one that is left out
/// keeps its construction value. Whatever a value should not be is a FormatError.
class ValueReader
{
public:
    template <class Value>
    static Value Read(const Json& json)
    {
        Value value{};
        Into(json, value);
        return value;
    }

    /// Reads the arguments of an operation, which an array holds in their order.
    template <class... Values>
    static std::tuple<Values...> ReadArguments(const Json& json)
    {
        std::tuple<Values...> values;
        RequireArray(json, sizeof...(Values));
        std::size_t at = 0;
        std::apply(
            [&](Values&... value) {
                [[maybe_unused]] const auto read = [&](auto& argument) {
                    Within(IndexText(at), [&] { Into(json[at], argument); });
                    ++at;
                };
                (read(value), ...);
            },
            values);
        return values;
    }

    static void RequireObject(const Json& json);
    static void RequireArray(const Json& json);
    static void RequireArray(const Json& json, std::size_t size);

    /// Calls visit for each entry of an array; errors name its place.
    template <class Visit>
    static void ForEachEntry(const Json& json, Visit visit)
    {
        RequireArray(json);
        for (std::size_t at = 0; at < json.size(); ++at)
            Within(IndexText(at), [&] { visit(json[at]); });
    }

private:
    static void Into(const Json& json, std::string& text);
    static void Into(const Json& json, UTF16String& text);
    static void Into(const Json& json, bool& value);
    static void Into(const Json& json, ferrite::utility::Guid& guid);
    static void Into(const Json& json, tempora::TickTime& time);
    static void Into(const Json& json, tempora::FrameRate& rate);
    static void Into(const Json& json, Ridge::AssetMediaType& type);
    static void Into(const Json& json, boost::shared_ptr<Ridge::AssetMediaInfo>& info);
    static void Into(const Json& json, boost::shared_ptr<Ridge::AssetItem>& item);
    static void Into(const Json& json, Ridge::AssetItemList& items);
    static void Into(const Json& json, Kiln::InterfaceRef<Keel::IMarker>& marker);
    static void Into(const Json& json, Kiln::InterfaceRef<KilnUnknown>& object);

    struct PendingSubItems
    {
        const Json& json;
        Ridge::AssetItem& item;
        std::string place;  ///< Of the list, from the outermost one.
    };
    static void ReadItems(const Json& json, const std::string& place, Ridge::AssetItemList& items,
                          std::vector<PendingSubItems>& pending);
    static boost::shared_ptr<Ridge::AssetItem> ReadItem(const Json& json, const std::string& place,
                                                        std::vector<PendingSubItems>& pending);
    static void ReadSubItems(std::vector<PendingSubItems>& pending);

    template <class Value>
    static void Into(const Json& json, boost::shared_ptr<Value>& value)
    {
        if (json.is_null())
            value.reset();
        else
            value = boost::make_shared<Value>(Read<Value>(json));
    }

    template <class Value>
    static void Into(const Json& json, std::list<Value>& values)
    {
        ForEachEntry(json, [&](const Json& entry) { values.push_back(Read<Value>(entry)); });
    }

    template <class Value>
    static void Into(const Json& json, std::vector<Value>& values)
    {
        ForEachEntry(json, [&](const Json& entry) { values.push_back(Read<Value>(entry)); });
    }

    template <class Value>
    static void Into(const Json& json, std::set<Value>& values)
    {
        ForEachEntry(json, [&](const Json& entry) { values.insert(Read<Value>(entry)); });
    }

    template <class Key, class Value>
    static void Into(const Json& json, std::map<Key, Value>& values)
    {
        ForEachEntry(json, [&](const Json& entry) {
            auto pair = ReadArguments<Key, Value>(entry);
            if (!values.emplace(std::move(std::get<0>(pair)), std::move(std::get<1>(pair))).second)
                throw FormatError("the key is doubled");
        });
    }

    /// Integers and described records.
    template <class Value>
    static void Into(const Json& json, Value& value)
    {
        if constexpr (std::is_integral_v<Value>)
            IntegerInto(json, value);
        else
            ReadMembers(json, value);
    }

    template <class Integer>
    static void IntegerInto(const Json& json, Integer& value)
    {
        if (!json.is_number_integer())
            throw FormatError("expected an integer");
        constexpr std::int64_t kLowest = std::numeric_limits<Integer>::min();
        constexpr std::uint64_t kHighest = std::numeric_limits<Integer>::max();
        const bool fits = json.is_number_unsigned() ? json.get<std::uint64_t>() <= kHighest
                                                    : json.get<std::int64_t>() >= kLowest;
        if (!fits)
            throw FormatError("the integer is out of range");
        value = json.get<Integer>();
    }

    /// Sub-items are left to the caller.
    template <class Record>
    static void ReadMembers(const Json& json, Record& record)
    {
        RequireObject(json);
        std::size_t found = 0;
        AC::Description::ForEachMember<Record>([&](const auto& row) {
            const auto member = json.find(row.name);
            if (member == json.end())
                return;
            ++found;
            if constexpr (!kIsSubItemsRow<decltype(row)>)
                Within(row.name, [&] { Into(*member, record.*row.member); });
        });
        if (found != json.size())
            ThrowUnknownMember<Record>(json);
    }

    template <class Record>
    [[noreturn]] static void ThrowUnknownMember(const Json& json)
    {
        std::set<std::string> known;
        AC::Description::ForEachMember<Record>([&](const auto& row) { known.insert(row.name); });
        for (const auto& [name, value] : json.items())
            if (known.count(name) == 0)
                throw FormatError("unknown member \"" + name + '"');
        throw FormatError("unknown member");
    }

    static std::string IndexText(std::size_t at);
};

}  // namespace Session
