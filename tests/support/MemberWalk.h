#pragma once

#include "assetconnector/message/Comparison.h"
#include "reference_host/MediaInfo.h"

#include <boost/smart_ptr/make_shared_object.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <list>
#include <string>
#include <utility>
#include <vector>

/// Visits every member of a message and of the records in it, outermost first, as
/// visit(name, carried, value, constructed): the name with those of the members around it, of the items of
/// trees without; where texts carry it; the value, which may be changed; its construction value. The items of
/// lists become the message's own.
template <class Visit>
class MemberWalk
{
public:
    MemberWalk(AC::ACMessage& message, Visit visit) : mVisit(std::move(visit))
    {
        Members(message, "", AC::Description::Carried::kBoth);
    }

private:
    using Carried = AC::Description::Carried;

    template <class Record>
    void Members(Record& record, const std::string& around, Carried carriedAround)
    {
        static const Record kConstructed{};
        const void* last = nullptr;
        AC::Description::ForEachMember<Record>([&](const auto& row) {
            const std::string name = around + row.name;
            const Carried carried = row.carried & carriedAround;
            EXPECT_EQ(carried, row.carried) << name << " is carried where what holds it is not";
            auto& value = record.*row.member;
            EXPECT_TRUE(std::less<>()(last, static_cast<const void*>(&value))) << name << " is out of order";
            last = &value;
            mVisit(name, carried, value, kConstructed.*row.member);
            Inside(value, name + '.', carried);
        });
    }

    template <class Value>
    void Inside(Value& value, const std::string& around, Carried carried)
    {
        if constexpr (AC::Description::IsDescribed<Value>::value)
            Members(value, around, carried);
    }
    template <class Value>
    void Inside(std::list<Value>& values, const std::string& around, Carried carried)
    {
        for (Value& value : values)
            Inside(value, around, carried);
    }
    template <class Value>
    void Inside(std::vector<Value>& values, const std::string& around, Carried carried)
    {
        for (Value& value : values)
            Inside(value, around, carried);
    }
    template <class Value>
    void Inside(boost::shared_ptr<Value>& item, const std::string& around, Carried carried)
    {
        if (!item)
            return;
        item = boost::make_shared<Value>(*item);
        Inside(*item, around, carried);
    }
    void Inside(boost::shared_ptr<Ridge::AssetMediaInfo>& info, const std::string& around, Carried carried)
    {
        if (!info)
            return;
        auto values = ReferenceHost::MediaInfo::ValuesOf(*info);
        Members(values, around, carried);
        info = boost::make_shared<ReferenceHost::MediaInfo>(values);
    }
    void Inside(boost::shared_ptr<Ridge::AssetItem>& item, const std::string& /*around*/, Carried carried)
    {
        if (!item)
            return;
        auto values = item->Values();
        Members(values, "assetItem.", carried);
        item = boost::make_shared<Ridge::AssetItem>(values);
    }

    Visit mVisit;
};
