#pragma once

#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/ferrite/ImmutableString.h"
#include "assetconnector/host/keel/IMarker.h"
#include "assetconnector/message/Comparison.h"
#include "session/Json.h"
#include "session/Values.h"

#include <list>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Session {

enum class Style
{
    kSession,   ///< As session files have it.
    kReadable,  ///< Times as seconds, rates as frames per second, maps as objects, no members at construction
                ///< values.
};

/// Writes values in their JSON form. A record's members come from its description. Of a message, members at
/// their construction values are left out but for the header; every other record is written whole. The FTP
/// password is never written.
class ValueWriter
{
public:
    explicit ValueWriter(Style style) : mStyle(style) {}

    template <class Value>
    OrderedJson Write(const Value& value) const
    {
        return From(value);
    }

    /// \return The arguments of an operation, in their order, as an array.
    template <class... Values>
    OrderedJson WriteArguments(const Values&... values) const
    {
        OrderedJson array = OrderedJson::array();
        (array.push_back(From(values)), ...);
        return array;
    }

private:
    OrderedJson From(const std::string& text) const;
    OrderedJson From(const UTF16String& text) const;
    OrderedJson From(const ferrite::utility::ImmutableString& text) const;
    OrderedJson From(const ferrite::utility::Guid& guid) const;
    OrderedJson From(tempora::TickTime time) const;
    OrderedJson From(tempora::FrameRate rate) const;
    OrderedJson From(Ridge::AssetMediaType type) const;
    OrderedJson From(void* callback) const;
    OrderedJson From(const Ridge::AssetMediaInfo& info) const;
    OrderedJson From(const boost::shared_ptr<Ridge::AssetItem>& item) const;
    OrderedJson From(const Ridge::AssetItemList& items) const;
    OrderedJson From(const Ridge::InsertedColumns& columns) const;
    OrderedJson From(const Kiln::InterfaceRef<Keel::IMarker>& marker) const;
    OrderedJson From(const Kiln::InterfaceRef<KilnUnknown>& object) const;

    template <class Value>
    OrderedJson From(const boost::shared_ptr<Value>& value) const
    {
        return value == nullptr ? OrderedJson(nullptr) : From(*value);
    }

    template <class Key, class Value>
    OrderedJson From(const std::pair<const Key, Value>& pair) const
    {
        return WriteArguments(pair.first, pair.second);
    }

    template <class Value>
    OrderedJson From(const std::list<Value>& values) const
    {
        return Entries(values);
    }
    template <class Value>
    OrderedJson From(const std::vector<Value>& values) const
    {
        return Entries(values);
    }
    template <class Value>
    OrderedJson From(const std::set<Value>& values) const
    {
        return Entries(values);
    }
    template <class Key, class Value>
    OrderedJson From(const std::map<Key, Value>& values) const
    {
        if (mStyle == Style::kSession)
            return Entries(values);
        OrderedJson object = OrderedJson::object();
        for (const auto& [key, value] : values)
            object.get_ref<OrderedJson::object_t&>().emplace_back(From(key).template get<std::string>(),
                                                                  From(value));  // does not search
        return object;
    }

    template <class Container>
    OrderedJson Entries(const Container& values) const
    {
        OrderedJson array = OrderedJson::array();
        for (const auto& value : values)
            array.push_back(From(value));
        return array;
    }

    /// Integers, booleans and described records.
    template <class Value>
    OrderedJson From(const Value& value) const
    {
        if constexpr (std::is_arithmetic_v<Value>)
            return value;
        else
            return MembersOf(value);
    }

    /// Sub-items are left to the caller, who finds an empty array.
    template <class Record>
    OrderedJson MembersOf(const Record& record) const
    {
        static const Record kConstructed{};
        constexpr bool kSparse = std::is_same_v<Record, AC::ACMessage>;
        OrderedJson object = OrderedJson::object();
        AC::Description::ForEachMember<Record>([&](const auto& row) {
            const auto& value = record.*row.member;
            if constexpr (kIsSubItemsRow<decltype(row)>)
                object[row.name] = OrderedJson::array();
            else if (IsHeader(value) || (!kSparse && mStyle == Style::kSession) ||
                     !AC::Comparison::Same(value, kConstructed.*row.member))
                object[row.name] = IsPassword(row.member) ? Masked(value) : From(value);
        });
        return object;
    }

    template <class Value>
    static constexpr bool IsHeader(const Value& /*value*/)
    {
        return std::is_same_v<Value, AC::ACMessageHeader>;
    }

    template <class Record, class Value>
    static bool IsPassword(Value Record::*member)
    {
        if constexpr (std::is_same_v<Value Record::*, UTF16String AC::FtpSetting::*>)
            return member == &AC::FtpSetting::ftpPassword;
        else
            return false;
    }

    template <class Value>
    static OrderedJson Masked(const Value& value)
    {
        if constexpr (std::is_same_v<Value, UTF16String>)
            return value.empty() ? "" : "***";
        else
            return nullptr;
    }

    Style mStyle;
};

}  // namespace Session
