#include "session/HostSettings.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "session/Fields.h"

#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace Session {
namespace {

using Setting = boost::function<void()>;

/// Reads an object whose keys are paths.
template <class Value, class ReadEntry>
std::map<UTF16String, Value> ReadByPath(const Json& json, ReadEntry readEntry)
{
    ValueReader::RequireObject(json);
    std::map<UTF16String, Value> values;
    for (const auto& [path, entry] : json.items())
        Within('"' + path + '"', [&path = path, &entry = entry, &values, &readEntry] {
            values.emplace(ferrite::utility::UTF8to16(path), readEntry(entry));
        });
    return values;
}

SimulatedFiles::Kind ReadKind(const Json& json)
{
    static const std::map<std::string, SimulatedFiles::Kind> kKinds{
        {"missing", SimulatedFiles::Kind::kMissing},
        {"file", SimulatedFiles::Kind::kFile},
        {"folder", SimulatedFiles::Kind::kFolder},
    };
    const auto found = kKinds.find(ValueReader::Read<std::string>(json));
    if (found == kKinds.end())
        throw FormatError(R"(expected "file", "folder" or "missing")");
    return found->second;
}

Setting ReadBrowserID(const Json& json, const Stage& stage)
{
    return [&host = stage.host, id = ValueReader::Read<std::string>(json)] {
        host.GetPanelEvents().SetBrowserID(id);
    };
}

Setting ReadPaths(const Json& json, const Stage& stage)
{
    return [&host = stage.host, disk = ReadByPath<SimulatedFiles::Kind>(json, ReadKind)] {
        host.GetFiles().SetDisk(disk);
    };
}

Setting ReadXMPCache(const Json& json, const Stage& stage)
{
    return [&host = stage.host, cache = ReadByPath<CachedPacket>(json, ReadCachedPacket)] {
        host.GetIngestLibrary().ClearCachedXMP();
        for (const auto& [path, cached] : cache)
            host.GetIngestLibrary().SetCachedXMP(path, cached.result, cached.packet);
    };
}

Setting ReadProject(const Json& json, const Stage& stage)
{
    const auto project = boost::make_shared<ReferenceHost::Project>();
    project->RegisterAssetMediaInfoList({}, ValueReader::Read<Ridge::AssetMediaInfoList>(json), false, false);
    return [&host = stage.host, project] { host.GetIngestLibrary().SetProject(project); };
}

Setting ReadXMPPaths(const Json& json, const Stage& stage)
{
    return [&host = stage.host, paths = ValueReader::Read<std::set<UTF16String>>(json)] {
        host.GetIngestLibrary().SetXMPPaths(paths);
    };
}

Setting ReadGuids(const Json& json, const Stage& stage)
{
    return [&host = stage.host, guids = ValueReader::Read<Ridge::GuidList>(json)] {
        host.GetTexts().SetGuids(guids);
    };
}

Setting ReadCreateFails(const Json& json, const Stage& stage)
{
    return [&host = stage.host, paths = ValueReader::Read<std::set<UTF16String>>(json)] {
        host.GetIngestLibrary().SetFailing(paths);
    };
}

/// Reads names of operations. \throws FormatError for one that is not accepted.
template <class Accepts>
std::set<std::string> ReadOperations(const Json& json, Accepts accepts)
{
    auto operations = ValueReader::Read<std::set<std::string>>(json);
    for (const std::string& name : operations)
        if (!accepts(name))
            throw FormatError("unknown operation \"" + name + '"');
    return operations;
}

bool CanThrow(const std::string& operation)
{
    return FindHostOperation(operation) != nullptr || FindDispatcherOperation(operation) != nullptr;
}

Setting ReadThrows(const Json& json, const Stage& stage)
{
    return [&host = stage.host, operations = ReadOperations(json, CanThrow)] {
        host.GetRecorder().SetThrowing(operations);
    };
}

Setting ReadQuiet(const Json& json, const Stage& stage)
{
    const auto isHostCall = [](const std::string& name) {
        const Operation* const row = FindHostOperation(name);
        return row != nullptr && row->isHostCall;
    };
    return [&host = stage.host, operations = ReadOperations(json, isHostCall)] {
        host.GetRecorder().SetQuiet(operations);
    };
}

Setting ReadAnswers(const Json& json, const Stage& stage)
{
    return [&host = stage.host, answers = Answers(json)] { host.GetRecorder().SetAnswers(answers); };
}

Setting ReadThrowsAt(const Json& json, const Stage& stage)
{
    std::list<Recorder::Throw> throws;
    ValueReader::ForEachEntry(json, [&throws](const Json& entry) {
        auto [operation, call, what] =
            ValueReader::ReadArguments<std::string, std::uint32_t, std::string>(entry);
        if (!CanThrow(operation) && !Answers::IsQuestion(operation))
            throw FormatError("unknown operation \"" + operation + '"');
        if (call == 0)
            throw FormatError("calls are counted from 1");
        throws.push_back({std::move(operation), call, std::move(what)});
    });
    return [&host = stage.host, throws] { host.GetRecorder().SetThrows(throws); };
}

Setting ReadWithoutDispatcher(const Json& json, const Stage& stage)
{
    std::set<std::size_t> kinds;
    for (const std::string& name : ValueReader::Read<std::set<std::string>>(json))
        kinds.insert(Connectors::Find(name));
    return [&connectors = stage.connectors, kinds] { connectors.SetWithoutDispatcher(kinds); };
}

Setting ReadReadsFromDisk(const Json& json, const Stage& stage)
{
    stage.connectors.RequireAlive(Connectors::Find("library"), true);
    return [&connectors = stage.connectors, fromDisk = ValueReader::Read<bool>(json)] {
        connectors.SetReadsFromDisk(fromDisk);
    };
}

struct Key
{
    const char* name;
    Setting (*read)(const Json& json, const Stage& stage);
};

constexpr Key kKeys[] = {
    {"browserID", &ReadBrowserID},
    {"paths", &ReadPaths},
    {"xmpCache", &ReadXMPCache},
    {"project", &ReadProject},
    {"xmpPaths", &ReadXMPPaths},
    {"guids", &ReadGuids},
    {"throws", &ReadThrows},
    {"createFails", &ReadCreateFails},
    {"quiet", &ReadQuiet},
    {"answers", &ReadAnswers},
    {"throwsAt", &ReadThrowsAt},
    {"withoutDispatcher", &ReadWithoutDispatcher},
    {"readsFromDisk", &ReadReadsFromDisk},
};

}  // namespace

Setting ReadHostSettings(const Json& json, const Stage& stage)
{
    Fields fields(json);
    std::list<Setting> settings;
    for (const Key& key : kKeys)
        if (const Json* const value = fields.Find(key.name))
            Within(key.name, [&] { settings.push_back(key.read(*value, stage)); });
    fields.Finish();
    return [settings] {
        for (const Setting& setting : settings)
            setting();
    };
}

}  // namespace Session
