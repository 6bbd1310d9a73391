#pragma once

#include "assetconnector/message/Description.h"

#include <string>
#include <type_traits>
#include <utility>

/// Equality of records by their description: values by value, items of lists by what they hold, counted
/// references by the object they name. Media infos are compared through their getters.
namespace AC::Comparison {

/// \return What the getters give; `needSavePreCheck` has none and stays false.
inline Ridge::AssetMediaInfoValues ValuesOf(const Ridge::AssetMediaInfo& info)
{
    return {info.GetAssetMediaType(),
            info.GetAssetMediaInfoGUID(),
            info.GetMediaPath(),
            info.GetXMPString(),
            info.GetFileContent(),
            info.GetCustomMetadata(),
            info.GetCreateTime(),
            info.GetLastModifyTime(),
            info.GetRateTimeBase(),
            info.GetRateNtsc(),
            info.GetAliasName(),
            info.GetForceLoadFromLocalDisk(),
            false};
}

namespace Detail {

template <class T, class = void>
struct IsContainer : std::false_type
{
};
template <class T>
struct IsContainer<T, std::void_t<typename T::const_iterator, decltype(std::declval<const T&>().size())>>
    : std::true_type
{
};

}  // namespace Detail

template <class T>
bool Same(const T& a, const T& b);

inline bool Same(const UTF16String& a, const UTF16String& b)
{
    return a == b;
}

inline bool Same(const Ridge::AssetMediaInfo& a, const Ridge::AssetMediaInfo& b)
{
    return Same(ValuesOf(a), ValuesOf(b));
}

inline bool Same(const Ridge::AssetItem& a, const Ridge::AssetItem& b)
{
    return Same(a.Values(), b.Values());
}

inline bool Same(const std::string& a, const std::string& b)
{
    return a == b;
}

template <class T>
bool Same(const boost::shared_ptr<T>& a, const boost::shared_ptr<T>& b)
{
    return a == b || (a && b && Same(*a, *b));
}

template <class Key, class Value>
bool Same(const std::pair<Key, Value>& a, const std::pair<Key, Value>& b)
{
    return Same(a.first, b.first) && Same(a.second, b.second);
}

template <class T>
bool Same(const T& a, const T& b)
{
    if constexpr (Description::IsDescribed<T>::value) {
        bool same = true;
        Description::ForEachMember<T>(
            [&](const auto& row) { same = same && Same(a.*row.member, b.*row.member); });
        return same;
    } else if constexpr (Detail::IsContainer<T>::value) {
        if (a.size() != b.size())
            return false;
        auto other = b.begin();
        for (const auto& entry : a)
            if (!Same(entry, *other++))
                return false;
        return true;
    } else {
        return a == b;
    }
}

}  // namespace AC::Comparison
