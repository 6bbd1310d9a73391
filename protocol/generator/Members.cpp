#include "protocol/generator/Members.h"

#include "protocol/generator/Values.h"

#include <algorithm>

namespace Protocol::Generator {
namespace {

using AC::Description::Carried;

template <class Value>
constexpr bool kIsRecord = AC::Description::IsDescribed<typename Described<Value>::Type>::value;

/// What lists and pointers hold in the end.
template <class Value, class = void>
struct Innermost
{
    using Type = Value;
};
template <class Value>
struct Innermost<Value, std::enable_if_t<IsShared<Value>::value>>
{
    using Type = typename Innermost<typename Value::element_type>::Type;
};
template <class Value>
struct Innermost<Value, std::enable_if_t<IsList<Value>::value>>
{
    using Type = typename Innermost<typename Value::value_type>::Type;
};

/// Calls visit(record type, row, path) for each member of the record and of those in it.
template <class Record, class Visit>
void ForEachMemberIn(const std::string& around, Visit& visit)
{
    AC::Description::ForEachMember<Record>([&](const auto& row) {
        using Value = std::decay_t<decltype(std::declval<Record&>().*row.member)>;
        using Inner = typename Innermost<Value>::Type;
        const std::string path = around + row.name;
        visit(path, row.carried);
        using InnerRecord = typename Described<Inner>::Type;
        if constexpr (kIsRecord<Inner> && !std::is_same_v<InnerRecord, Record>)
            ForEachMemberIn<InnerRecord>(path + '.', visit);
    });
}

template <class Value>
void Collect(const Value& value, const std::string& path, Values& values)
{
    if constexpr (IsShared<Value>::value && kIsRecord<typename Innermost<Value>::Type>) {
        if (value)
            Collect(*value, path, values);
    } else if constexpr (IsList<Value>::value && kIsRecord<typename Innermost<Value>::Type>) {
        values[path] = value.size();
        if (path.find("subAssetItemList") == std::string::npos)
            for (const auto& entry : value)
                Collect(entry, path, values);
    } else if constexpr (kIsRecord<Value>) {
        using Record = typename Described<Value>::Type;
        const Record& record = Described<Value>::Of(value);
        AC::Description::ForEachMember<Record>([&](const auto& row) {
            Collect(record.*row.member, path.empty() ? row.name : path + '.' + row.name, values);
        });
    } else {
        values[path] = JsonOf(value);
    }
}

template <class Value>
void CollectRecords(std::vector<Record>& records)
{
    using Described = typename Described<Value>::Type;
    const std::string type = TypeOf<Value>();
    const std::string name = type.substr(type.find(':') + 1);
    if (std::any_of(records.begin(), records.end(),
                    [&name](const Record& known) { return known.name == name; }))
        return;
    Record record{name, {}};
    AC::Description::ForEachMember<Described>([&record](const auto& row) {
        record.members.push_back(
            {row.name, TypeOf<std::decay_t<decltype(std::declval<Described&>().*row.member)>>()});
    });
    records.push_back(std::move(record));
    AC::Description::ForEachMember<Described>([&records](const auto& row) {
        using Inner =
            typename Innermost<std::decay_t<decltype(std::declval<Described&>().*row.member)>>::Type;
        if constexpr (kIsRecord<Inner>)
            CollectRecords<Inner>(records);
    });
}

}  // namespace

const std::vector<MemberFact>& AllMembers()
{
    static const std::vector<MemberFact> kMembers = [] {
        std::vector<MemberFact> members;
        const auto add = [&members](const std::string& path, Carried carried) {
            members.push_back({path, (carried & Carried::kIn) != Carried::kNeither,
                               (carried & Carried::kOut) != Carried::kNeither});
        };
        ForEachMemberIn<AC::ACMessage>("", add);
        return members;
    }();
    return kMembers;
}

std::vector<Record> AllRecords()
{
    std::vector<Record> records;
    CollectRecords<AC::ACMessage>(records);
    return records;
}

Values ValuesOf(const AC::ACMessage& message)
{
    Values values;
    Collect(message, "", values);
    return values;
}

std::vector<std::string> Differences(const Values& a, const Values& b)
{
    std::vector<std::string> paths;
    for (const auto& [path, value] : a) {
        const auto other = b.find(path);
        if (other != b.end() && other->second != value)
            paths.push_back(path);
    }
    return paths;
}

}  // namespace Protocol::Generator
