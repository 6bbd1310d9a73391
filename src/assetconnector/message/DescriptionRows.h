#pragma once

#include "assetconnector/host/Export.h"

#include <cstddef>
#include <tuple>
#include <type_traits>

/// What descriptions of records are made of.
namespace AC::Description {

/// Where the texts of panels carry a member.
enum class Carried
{
    kNeither = 0,
    kIn = 1,   ///< Read in requests.
    kOut = 2,  ///< Written in notifications.
    kBoth = kIn | kOut,
};

/// \return What both have.
constexpr Carried operator&(Carried a, Carried b)
{
    return static_cast<Carried>(static_cast<int>(a) & static_cast<int>(b));
}

template <class Record, class Member>
struct MemberRow
{
    const char* name;
    Member Record::*member;
    Carried carried;  ///< Where the record itself is carried.
};

/// Makes the rows of members that texts carry there.
struct RowMaker
{
    template <class Record, class Member>
    constexpr MemberRow<Record, Member> operator()(const char* name, Member Record::*member) const
    {
        return {name, member, carried};
    }

    Carried carried;
};
AC_CONSTANT inline constexpr RowMaker Neither{Carried::kNeither};
AC_CONSTANT inline constexpr RowMaker In{Carried::kIn};
AC_CONSTANT inline constexpr RowMaker Out{Carried::kOut};
AC_CONSTANT inline constexpr RowMaker Both{Carried::kBoth};

/// Specialised for each record: a tuple kRows of MemberRow.
template <class Record>
struct AC_CONSTANT Members;

template <class Record, class = void>
struct IsDescribed : std::false_type
{
};
template <class Record>
struct IsDescribed<Record, std::void_t<decltype(Members<Record>::kRows)>> : std::true_type
{
};

namespace Detail {

/// Initialises any member; never called.
struct AnyMember
{
    template <class Member>
    operator Member() const;
};

template <class Record, class Initialisers, class = void>
struct Takes : std::false_type
{
};
template <class Record, class... Initialisers>
struct Takes<Record, std::tuple<Initialisers...>, std::void_t<decltype(Record{Initialisers{}...})>>
    : std::true_type
{
};

/// \return How many initialisers between the braces an aggregate takes.
template <class Record, class... Initialisers>
constexpr std::size_t CountInitialisers()
{
    static_assert(std::is_aggregate_v<Record>);
    if constexpr (Takes<Record, std::tuple<Initialisers..., AnyMember>>::value)
        return CountInitialisers<Record, Initialisers..., AnyMember>();
    else
        return sizeof...(Initialisers);
}

}  // namespace Detail

/// \return How many members the record has.
template <class Record>
constexpr std::size_t CountMembers()
{
    return Detail::CountInitialisers<Record>();
}

/// Calls visit(row) for each member of the record, in order. A member without a row does not compile.
template <class Record, class Visit>
void ForEachMember(Visit&& visit)
{
    constexpr auto& kRows = Members<Record>::kRows;
    static_assert(std::tuple_size_v<std::decay_t<decltype(kRows)>> == CountMembers<Record>(),
                  "a row for each member");
    std::apply([&visit](const auto&... row) { (visit(row), ...); }, kRows);
}

}  // namespace AC::Description
