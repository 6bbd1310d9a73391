#include "reference_host/IngestLibrary.h"

#include "assetconnector/host/kiln/PathUtils.h"
#include "assetconnector/message/RidgeRecords.h"
#include "reference_host/Marker.h"
#include "reference_host/MediaInfo.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <algorithm>
#include <utility>

namespace ReferenceHost {

IngestLibrary::IngestLibrary()
    : mProject(boost::make_shared<Project>()), mXMPExtensions{u".avi", u".jpg", u".m4v", u".mov", u".mp3",
                                                              u".mp4", u".mxf", u".png", u".tif", u".wav"}
{
}

boost::shared_ptr<Ridge::AssetMediaInfo> IngestLibrary::CreateMediaInfo(
    const Ridge::MediaInfoArguments& arguments)
{
    return boost::make_shared<MediaInfo>(Ridge::AssetMediaInfoValues{
        arguments.type, arguments.guid, arguments.mediaPath, arguments.xmp, arguments.fileContent,
        arguments.customMetadata, arguments.createTime, arguments.lastModifyTime, arguments.rateTimeBase,
        arguments.rateNtsc, arguments.aliasName});
}

boost::shared_ptr<Ridge::AssetMediaInfo> IngestLibrary::CreateMasterClipMediaInfo(
    const ferrite::utility::Guid& guid, const UTF16String& mediaPath, const UTF16String& fileName,
    const Ridge::XMPText& xmp, const UTF16String& customMetadata, const UTF16String& createTime,
    const UTF16String& lastModifyTime, const UTF16String& /*reservedText*/)
{
    Ridge::AssetMediaInfoValues values;
    values.assetMediaType = Ridge::AssetMediaType::kMasterClip;
    values.assetMediaInfoGUID = guid;
    values.mediaPath = mediaPath;
    values.xmpString = xmp;
    values.customMetadata = customMetadata;
    values.createTime = createTime;
    values.lastModifyTime = lastModifyTime;
    values.aliasName = fileName;
    return boost::make_shared<MediaInfo>(std::move(values));
}

boost::shared_ptr<Ridge::SRProject> IngestLibrary::GetProject()
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return mProject;
}

void IngestLibrary::SetProject(boost::shared_ptr<Ridge::SRProject> project)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mProject.swap(project);
}

Ridge::ResultCode IngestLibrary::ReadXMPFromCache(const UTF16String& mediaPath, const Ridge::XMPText& holder,
                                                  UTF16String& /*scratch*/)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mXMPCache.find(mediaPath);
    if (found == mXMPCache.end())
        return -1;
    if (found->second.packet)
        *holder = *found->second.packet;
    return found->second.code;
}

void IngestLibrary::SetCachedXMP(const UTF16String& mediaPath, Ridge::ResultCode code,
                                 std::optional<std::string> packet)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mXMPCache[mediaPath] = {code, std::move(packet)};
}

void IngestLibrary::ClearCachedXMP()
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mXMPCache.clear();
}

void IngestLibrary::RegisterAssetMediaInfoToSRCore(const Ridge::AssetMediaInfoList& /*infos*/,
                                                   const Ridge::AssetItemList& /*items*/,
                                                   bool /*useLocalFile*/, bool /*roughCutUseLocalFile*/,
                                                   bool /*firstFlag*/, bool /*secondFlag*/)
{
}

UTF16String IngestLibrary::CreateCustomMetadataStr(const Ridge::CustomMetadata& metadata)
{
    const Ridge::MinimumMetadata& block = metadata.minimumMetadata;
    UTF16String text;
    if (block.storeEmptyInfo)
        text += u"storeEmptyInfo\n";
    if (block.applyToAllDestinations)
        text += u"applyToAllDestinations\n";
    for (const UTF16String& keyword : block.keywords)
        text += u"keyword=" + keyword + u'\n';
    for (const auto& space : block.namespaces)
        if (space != nullptr)
            for (const auto& [name, value] : space->properties)
                text.append(space->prefix).append(u":").append(name).append(u"=").append(value).append(u"\n");
    return text;
}

bool IngestLibrary::PathSupportsXMP(const UTF16String& path)
{
    UTF16String extension;
    Kiln::PathUtils::SplitPath(path, nullptr, nullptr, nullptr, &extension);
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char16_t unit) {
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
    });
    const std::lock_guard<std::mutex> lock(mMutex);
    return mXMPPaths.count(path) != 0 || mXMPExtensions.count(extension) != 0;
}

void IngestLibrary::SetXMPPaths(std::set<UTF16String> paths)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mXMPPaths = std::move(paths);
}

void IngestLibrary::SetXMPExtensions(std::set<UTF16String> extensions)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mXMPExtensions = std::move(extensions);
}

void IngestLibrary::RegisterDBMetadataProvider()
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mProviders.insert(UTF16String());
}

void IngestLibrary::RegisterDBMetadataProviderForPath(const UTF16String& normalizedPath)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mProviders.insert(normalizedPath);
}

std::set<UTF16String> IngestLibrary::MetadataProviders() const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return mProviders;
}

UTF16String IngestLibrary::MarkerToPropertyXML(const Kiln::InterfaceRef<Keel::IMarker>& marker,
                                               tempora::FrameRate /*rate*/)
{
    const auto* own = dynamic_cast<const Marker*>(marker.Get());
    return own == nullptr ? UTF16String() : own->PropertyXML();
}

}  // namespace ReferenceHost
