#include "conformance/IngestLibraryProbes.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "conformance/Probes.h"

#include <boost/smart_ptr/make_shared_object.hpp>

namespace Conformance {
namespace {

using Ridge::AssetMediaInfo;
using Ridge::MediaInfoArguments;

struct TextValue
{
    const char* name;
    UTF16String MediaInfoArguments::*given;
    UTF16String (AssetMediaInfo::*get)() const;
};

constexpr TextValue kTexts[] = {
    {"media path", &MediaInfoArguments::mediaPath, &AssetMediaInfo::GetMediaPath},
    {"file content", &MediaInfoArguments::fileContent, &AssetMediaInfo::GetFileContent},
    {"custom metadata", &MediaInfoArguments::customMetadata, &AssetMediaInfo::GetCustomMetadata},
    {"create time", &MediaInfoArguments::createTime, &AssetMediaInfo::GetCreateTime},
    {"last modify time", &MediaInfoArguments::lastModifyTime, &AssetMediaInfo::GetLastModifyTime},
    {"time base", &MediaInfoArguments::rateTimeBase, &AssetMediaInfo::GetRateTimeBase},
    {"NTSC flag", &MediaInfoArguments::rateNtsc, &AssetMediaInfo::GetRateNtsc},
    {"alias name", &MediaInfoArguments::aliasName, &AssetMediaInfo::GetAliasName},
};

/// Not of the host, which may give one twice.
ferrite::utility::Guid UniqueGuid()
{
    static const std::uint64_t process = RandomNumber();
    static std::atomic<std::uint64_t> count{0};
    return {process, ++count};
}

}  // namespace

UTF16String UniquePath()
{
    return u"/" + ferrite::utility::UTF8to16(UniqueName()) + u"/\u00E4.mov";
}

MediaInfoArguments SampleArguments(const UTF16String& mediaPath)
{
    MediaInfoArguments arguments;
    arguments.type = Ridge::AssetMediaType::kSubClip;
    arguments.guid = UniqueGuid();
    arguments.mediaPath = mediaPath;
    arguments.xmp = boost::make_shared<std::string>("<x:xmpmeta>\xE2\x82\xAC</x:xmpmeta>");
    arguments.fileContent = u"<content>\u20AC</content>";
    arguments.customMetadata = u"<custom a=\"&amp;\"/>";
    arguments.createTime = u"2001-02-03T04:05:06Z";
    arguments.lastModifyTime = u"2007-08-09T10:11:12Z";
    arguments.rateTimeBase = u"25";
    arguments.rateNtsc = u"TRUE";
    arguments.aliasName = u"Strand \U0001F600";
    return arguments;
}

boost::shared_ptr<AssetMediaInfo> Create(const MediaInfoArguments& arguments)
{
    auto info = AC::InstalledHost().ingestLibrary.CreateMediaInfo(arguments);
    if (info == nullptr)
        Context::NotChecked("the host makes no media info");
    return info;
}

std::string PacketOf(const AssetMediaInfo& info)
{
    const Ridge::XMPText packet = info.GetXMPString();
    return packet == nullptr ? std::string() : *packet;
}

void ExpectValues(Context& context, const MediaInfoArguments& expected, const AssetMediaInfo& actual)
{
    for (const TextValue& row : kTexts)
        context.ExpectEqual(row.name, expected.*row.given, (actual.*row.get)());
    context.ExpectEqual("type", static_cast<int>(expected.type),
                        static_cast<int>(actual.GetAssetMediaType()));
    context.ExpectEqual("GUID", expected.guid, actual.GetAssetMediaInfoGUID());
    context.ExpectEqual("XMP", *expected.xmp, PacketOf(actual));
}

std::vector<std::string> ShownValues(const AssetMediaInfo& info)
{
    std::vector<std::string> shown{std::to_string(static_cast<int>(info.GetAssetMediaType())),
                                   Describe(info.GetAssetMediaInfoGUID()), PacketOf(info)};
    for (const TextValue& row : kTexts)
        shown.push_back(ferrite::utility::UTF16to8((info.*row.get)()));
    return shown;
}

boost::shared_ptr<Ridge::SRProject> OpenProject()
{
    auto project = Ridge::SRProject::GetInstance();
    if (project == nullptr)
        Context::NotChecked("no project is open");
    return project;
}

ClosedProject::ClosedProject(const Context& context) : mOpenProject(context.GetSubject().openProject)
{
    Context::Require(mOpenProject, "openProject");
    mOpenProject(false);
}

ClosedProject::~ClosedProject()
{
    try {
        mOpenProject(true);
    } catch (...) {  // the next check of the project tells
    }
}

}  // namespace Conformance
