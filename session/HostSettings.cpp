#include "session/HostSettings.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "session/Fields.h"

#include <list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace Session {
namespace {

using Setting = boost::function<void()>;

struct CachedPacket
{
    Ridge::ResultCode result = 0;
    std::optional<std::string> packet;
};

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

CachedPacket ReadCachedPacket(const Json& json)
{
    Fields fields(json);
    CachedPacket cached;
    if (fields.Find("result") != nullptr)
        cached.result = fields.Read<Ridge::ResultCode>("result");
    if (fields.Find("packet") != nullptr)
        cached.packet = fields.Read<std::string>("packet");
    fields.Finish();
    return cached;
}

Setting ReadBrowserID(const Json& json, SimulatedHost& host)
{
    return [&host, id = ValueReader::Read<std::string>(json)] { host.GetPanelEvents().SetBrowserID(id); };
}

Setting ReadPaths(const Json& json, SimulatedHost& host)
{
    return
        [&host, disk = ReadByPath<SimulatedFiles::Kind>(json, ReadKind)] { host.GetFiles().SetDisk(disk); };
}

Setting ReadXMPCache(const Json& json, SimulatedHost& host)
{
    return [&host, cache = ReadByPath<CachedPacket>(json, ReadCachedPacket)] {
        host.GetIngestLibrary().ClearCachedXMP();
        for (const auto& [path, cached] : cache)
            host.GetIngestLibrary().SetCachedXMP(path, cached.result, cached.packet);
    };
}

Setting ReadProject(const Json& json, SimulatedHost& host)
{
    const auto project = boost::make_shared<ReferenceHost::Project>();
    project->RegisterAssetMediaInfoList({}, ValueReader::Read<Ridge::AssetMediaInfoList>(json), false, false);
    return [&host, project] { host.GetIngestLibrary().SetProject(project); };
}

Setting ReadXMPPaths(const Json& json, SimulatedHost& host)
{
    return [&host, paths = ValueReader::Read<std::set<UTF16String>>(json)] {
        host.GetIngestLibrary().SetXMPPaths(paths);
    };
}

Setting ReadGuids(const Json& json, SimulatedHost& host)
{
    return [&host, guids = ValueReader::Read<Ridge::GuidList>(json)] { host.GetTexts().SetGuids(guids); };
}

Setting ReadCreateFails(const Json& json, SimulatedHost& host)
{
    return [&host, paths = ValueReader::Read<std::set<UTF16String>>(json)] {
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

Setting ReadThrows(const Json& json, SimulatedHost& host)
{
    const auto canThrow = [](const std::string& name) {
        return FindHostOperation(name) != nullptr || FindDispatcherOperation(name) != nullptr;
    };
    return
        [&host, operations = ReadOperations(json, canThrow)] { host.GetRecorder().SetThrowing(operations); };
}

Setting ReadQuiet(const Json& json, SimulatedHost& host)
{
    const auto isHostCall = [](const std::string& name) {
        const Operation* const row = FindHostOperation(name);
        return row != nullptr && row->isHostCall;
    };
    return
        [&host, operations = ReadOperations(json, isHostCall)] { host.GetRecorder().SetQuiet(operations); };
}

struct Key
{
    const char* name;
    Setting (*read)(const Json& json, SimulatedHost& host);
};

constexpr Key kKeys[] = {
    {"browserID", &ReadBrowserID}, {"paths", &ReadPaths},
    {"xmpCache", &ReadXMPCache},   {"project", &ReadProject},
    {"xmpPaths", &ReadXMPPaths},   {"guids", &ReadGuids},
    {"throws", &ReadThrows},       {"createFails", &ReadCreateFails},
    {"quiet", &ReadQuiet},
};

}  // namespace

Setting ReadHostSettings(const Json& json, SimulatedHost& host)
{
    Fields fields(json);
    std::list<Setting> settings;
    for (const Key& key : kKeys)
        if (const Json* const value = fields.Find(key.name))
            Within(key.name, [&] { settings.push_back(key.read(*value, host)); });
    fields.Finish();
    return [settings] {
        for (const Setting& setting : settings)
            setting();
    };
}

}  // namespace Session
