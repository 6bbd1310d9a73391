#pragma once

#include "assetconnector/connectors/StationMessages.h"
#include "assetconnector/host/ferrite/ImmutableString.h"
#include "assetconnector/host/keel/IMarker.h"
#include "assetconnector/message/Comparison.h"
#include "session/format/HostObjects.h"
#include "session/format/JsonText.h"
#include "session/format/Values.h"

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
/// password is never written. Any thread.
class ValueWriter
{
public:
    /// \param objects Outlives this object and its copies.
    ValueWriter(Style style, const HostObjects& objects) : mStyle(style), mObjects(&objects) {}

    template <class Value>
    void Write(const Value& value, JsonText& out) const
    {
        Put(value, out);
    }

    /// Writes the arguments of an operation, in their order, as an array.
    template <class... Values>
    void WriteArguments(JsonText& out, const Values&... values) const
    {
        out.BeginArray();
        (Put(values, out), ...);
        out.EndArray();
    }

    /// \return The value's text.
    template <class Value>
    std::string TextOf(const Value& value) const
    {
        JsonText text;
        Put(value, text);
        return text.Take();
    }

    template <class... Values>
    std::string TextOfArguments(const Values&... values) const
    {
        JsonText text;
        WriteArguments(text, values...);
        return text.Take();
    }

private:
    static void Put(const std::string& text, JsonText& out) { out.String(text); }
    static void Put(const UTF16String& text, JsonText& out) { out.String(text); }
    static void Put(const ferrite::utility::ImmutableString& text, JsonText& out)
    {
        out.String(text.AsUTF8());
    }
    static void Put(const ferrite::utility::Guid& guid, JsonText& out) { out.String(guid); }
    static void Put(Ridge::AssetMediaType type, JsonText& out);
    void Put(tempora::TickTime time, JsonText& out) const;
    void Put(tempora::FrameRate rate, JsonText& out) const;
    /// Every caller passes null, and a pointer has no form.
    static void Put(void* /*callback*/, JsonText& out) { out.Null(); }
    void Put(const Ridge::AssetMediaInfo& info, JsonText& out) const;
    void Put(const boost::shared_ptr<Ridge::AssetItem>& item, JsonText& out) const;
    void Put(const Ridge::AssetItemList& items, JsonText& out) const;
    void Put(const Ridge::InsertedColumns& columns, JsonText& out) const;
    void Put(const Kiln::InterfaceRef<Keel::IMarker>& marker, JsonText& out) const;
    void Put(const Kiln::InterfaceRef<KilnUnknown>& object, JsonText& out) const;

    template <class Value>
    void Put(const boost::shared_ptr<Value>& value, JsonText& out) const
    {
        if (value == nullptr)
            out.Null();
        else
            Put(*value, out);
    }

    template <class Key, class Value>
    void Put(const std::pair<const Key, Value>& pair, JsonText& out) const
    {
        WriteArguments(out, pair.first, pair.second);
    }

    template <class Value>
    void Put(const std::list<Value>& values, JsonText& out) const
    {
        PutEntries(values, out);
    }
    template <class Value>
    void Put(const std::vector<Value>& values, JsonText& out) const
    {
        PutEntries(values, out);
    }
    template <class Value>
    void Put(const std::set<Value>& values, JsonText& out) const
    {
        PutEntries(values, out);
    }
    template <class Key, class Value>
    void Put(const std::map<Key, Value>& values, JsonText& out) const
    {
        if (mStyle == Style::kSession)
            return PutEntries(values, out);
        out.BeginObject();
        for (const auto& [key, value] : values) {
            out.NameFrom(key);
            Put(value, out);
        }
        out.EndObject();
    }

    template <class Container>
    void PutEntries(const Container& values, JsonText& out) const
    {
        out.BeginArray();
        for (const auto& value : values)
            Put(value, out);
        out.EndArray();
    }

    /// Integers, booleans and described records.
    template <class Value>
    void Put(const Value& value, JsonText& out) const
    {
        if constexpr (std::is_same_v<Value, bool>) {
            out.Bool(value);
        } else if constexpr (std::is_integral_v<Value>) {
            out.Number(value);
        } else {
            out.BeginObject();
            PutMembers(value, out);
            out.EndObject();
        }
    }

    /// Sub-items, which come last, are left to the caller. \param leftOut A member that is not written, or
    /// null.
    template <class Record>
    void PutMembers(const Record& record, JsonText& out, const void* leftOut = nullptr) const
    {
        static const Record kConstructed{};
        constexpr bool kSparse = std::is_same_v<Record, AC::ACMessage>;
        AC::Description::ForEachMember<Record>([&](const auto& row) {
            if constexpr (!kIsSubItemsRow<decltype(row)>) {
                const auto& value = record.*row.member;
                if (&value == leftOut)
                    return;
                if (!IsHeader(value) && (kSparse || mStyle == Style::kReadable) &&
                    AC::Comparison::Same(value, kConstructed.*row.member))
                    return;
                out.Name(row.name);
                if (!PutMasked(row.member, value, out))
                    Put(value, out);
            }
        });
    }

    /// Begins an item's object. \return Its sub-items, if they are to follow; else the object is closed.
    const Ridge::AssetItemList* BeginItem(const boost::shared_ptr<Ridge::AssetItem>& item,
                                          JsonText& out) const;
    /// Writes the sub-items of an item that is begun, and ends it.
    void EndItem(const Ridge::AssetItemList& subItems, JsonText& out) const;

    template <class Value>
    static constexpr bool IsHeader(const Value& /*value*/)
    {
        return std::is_same_v<Value, AC::ACMessageHeader>;
    }

    /// \return Whether the member is a password; it is written then.
    template <class Record, class Value>
    static bool PutMasked(Value Record::*member, const Value& value, JsonText& out)
    {
        if constexpr (std::is_same_v<Value Record::*, UTF16String AC::FtpSetting::*>) {
            if (member == &AC::FtpSetting::ftpPassword) {
                out.String(std::string_view(value.empty() ? "" : "***"));
                return true;
            }
        }
        return false;
    }

    Style mStyle;
    const HostObjects* mObjects;
};

}  // namespace Session
