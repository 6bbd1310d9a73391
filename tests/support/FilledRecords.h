#pragma once

#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/message/Description.h"
#include "reference_host/Marker.h"
#include "reference_host/MediaInfo.h"
#include "session/SimulatedObjects.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <cstdint>
#include <iterator>
#include <list>
#include <map>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// Fills values at random, so that hardly a member keeps its construction value and no two texts, GUIDs and
/// times are alike. Texts hold markup, line ends and characters of every length; lists hold empty entries.
class Filler
{
public:
    /// \param carried Only what the XML texts carry in both directions: no empty entries, and media types
    ///        that have a name.
    explicit Filler(std::uint32_t seed, bool carried = false) : mRandom(seed), mCarried(carried) {}

    template <class Value>
    Value Make()
    {
        Value value{};
        Fill(value);
        return value;
    }

    /// \return One of so many numbers, from 0.
    std::uint32_t Below(std::uint32_t count)
    {
        return std::uniform_int_distribution<std::uint32_t>(0, count - 1)(mRandom);
    }

private:
    void Fill(UTF16String& text)
    {
        static constexpr std::u16string_view kPieces[] = {
            u"a",         u" ",     u"<",    u">",      u"&",      u"\"",         u"'",
            u"\t",        u"\n",    u"\r",   u"\u00E9", u"\u4E00", u"\U0001F600", u"]]>",
            u"<![CDATA[", u"&amp;", u"</a>", u"\u0085", u"\u2028", u"\uFFFD",
        };
        for (std::uint32_t i = Below(8); i > 0; --i)
            text += kPieces[Below(static_cast<std::uint32_t>(std::size(kPieces)))];
        text += static_cast<char16_t>(0x100 + ++mCount);
    }
    void Fill(std::string& text) { text = ferrite::utility::UTF16to8(Make<UTF16String>()); }
    void Fill(bool& value) { value = Below(2) != 0; }
    void Fill(std::int32_t& value) { value = static_cast<std::int32_t>(Make<std::uint32_t>()); }
    void Fill(std::uint32_t& value) { value = static_cast<std::uint32_t>(mRandom()); }
    void Fill(std::int64_t& value) { value = static_cast<std::int64_t>(mRandom()); }
    void Fill(ferrite::utility::Guid& guid) { guid = {mRandom(), mRandom()}; }
    void Fill(tempora::TickTime& time) { Fill(time.ticks); }
    void Fill(tempora::FrameRate& rate) { Fill(rate.ticksPerFrame); }
    void Fill(Ridge::AssetMediaType& type)
    {
        using T = Ridge::AssetMediaType;
        static constexpr T kNamed[] = {T::kMasterClip, T::kSubClip, T::kRoughCut, T::kRoughCutSubClip};
        type = mCarried ? kNamed[Below(4)] : static_cast<T>(Make<std::int32_t>());
    }
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
            FillList(items);
        --mDepth;
    }
    /// The names of properties are names of XML elements.
    void Fill(std::map<UTF16String, UTF16String>& properties)
    {
        for (int i = 0; i < 3; ++i)
            properties[u"ns:p" + UTF16String(1, static_cast<char16_t>(0x100 + ++mCount))] =
                Make<UTF16String>();
    }

    template <class Value>
    void Fill(boost::shared_ptr<Value>& value)
    {
        value = boost::make_shared<Value>(Make<Value>());
    }
    template <class Value>
    void Fill(std::list<Value>& values)
    {
        FillList(values);
    }
    template <class Value>
    void Fill(std::vector<Value>& values)
    {
        FillList(values);
    }
    template <class Value>
    void Fill(std::set<Value>& values)
    {
        FillList(values);
    }
    template <class Key, class Value>
    void Fill(std::map<Key, Value>& values)
    {
        values = {{Make<Key>(), Make<Value>()}, {Key{}, Value{}}, {Make<Key>(), Make<Value>()}};
    }
    template <class List>
    void FillList(List& values)
    {
        using Value = typename List::value_type;
        values = {Make<Value>(), mCarried ? Make<Value>() : Value{}, Make<Value>()};
    }
    template <class Record>
    void Fill(Record& record)
    {
        AC::Description::ForEachMember<Record>([&](const auto& row) { Fill(record.*row.member); });
    }

    std::mt19937_64 mRandom;
    bool mCarried;
    int mCount = 0;
    int mDepth = 0;
};
