#pragma once

#include "message/Description.h"
#include "reference_host/Marker.h"
#include "reference_host/MediaInfo.h"
#include "session/Values.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <string>
#include <vector>

/// Fills values so that no member keeps its construction value and no two are alike.
class Filler
{
public:
    template <class Value>
    Value Make()
    {
        Value value{};
        Fill(value);
        return value;
    }

private:
    void Fill(std::string& text) { text = "text \u00E9\U0001F600 " + std::to_string(++mCount); }
    void Fill(UTF16String& text)
    {
        text = u"\u00E9\u4E00 \"<&> " + UTF16String(1, static_cast<char16_t>(0x100 + ++mCount));
    }
    void Fill(bool& value) { value = !value; }
    void Fill(std::int32_t& value) { value = -1000 - ++mCount; }
    void Fill(std::uint32_t& value) { value = 4294960000U + static_cast<std::uint32_t>(++mCount); }
    void Fill(ferrite::utility::Guid& guid)
    {
        guid = {0x8765432112344321U, static_cast<std::uint64_t>(++mCount)};
    }
    void Fill(tempora::TickTime& time) { time.ticks = -9000000000000000000 + ++mCount; }
    void Fill(tempora::FrameRate& rate) { rate.ticksPerFrame = 9000000000000000000 + ++mCount; }
    void Fill(Ridge::AssetMediaType& type) { type = static_cast<Ridge::AssetMediaType>(++mCount); }
    void Fill(boost::shared_ptr<Ridge::AssetMediaInfo>& info)
    {
        info = boost::make_shared<ReferenceHost::MediaInfo>(Make<Ridge::AssetMediaInfoValues>());
    }
    void Fill(boost::shared_ptr<Ridge::AssetItem>& item)
    {
        item = boost::make_shared<Ridge::AssetItem>(Make<Ridge::AssetItemValues>());
    }
    void Fill(Kiln::InterfaceRef<Keel::IMarker>& marker)
    {
        marker = ReferenceHost::Marker::Make(Make<UTF16String>());
    }
    void Fill(Kiln::InterfaceRef<KilnUnknown>& object)
    {
        object = Session::NamedObject::Make(Make<std::string>());
    }
    void Fill(Ridge::AssetItemList& items)
    {
        if (++mDepth < 4)
            items = {nullptr, Make<boost::shared_ptr<Ridge::AssetItem>>(),
                     Make<boost::shared_ptr<Ridge::AssetItem>>()};
        --mDepth;
    }

    template <class Value>
    void Fill(boost::shared_ptr<Value>& value)
    {
        value = boost::make_shared<Value>(Make<Value>());
    }
    template <class Value>
    void Fill(std::list<Value>& values)
    {
        values = {Make<Value>(), Value{}, Make<Value>()};
    }
    template <class Value>
    void Fill(std::vector<Value>& values)
    {
        values = {Make<Value>(), Value{}, Make<Value>()};
    }
    template <class Value>
    void Fill(std::set<Value>& values)
    {
        values = {Make<Value>(), Value{}, Make<Value>()};
    }
    template <class Key, class Value>
    void Fill(std::map<Key, Value>& values)
    {
        values = {{Make<Key>(), Make<Value>()}, {Key{}, Value{}}, {Make<Key>(), Make<Value>()}};
    }
    template <class Record>
    void Fill(Record& record)
    {
        AC::Description::ForEachMember<Record>([&](const auto& row) { Fill(record.*row.member); });
    }

    int mCount = 0;
    int mDepth = 0;
};
