#include "reference_host/Texts.h"

#include <cstdint>
#include <string_view>
#include <utility>

namespace ReferenceHost {
namespace {

std::uint64_t BigEndian(const std::uint8_t* bytes)
{
    std::uint64_t number = 0;
    for (int i = 0; i < 8; ++i)
        number = number << 8 | bytes[i];
    return number;
}

}  // namespace

UTF16String Texts::Localize(const UTF16String& key)
{
    constexpr std::u16string_view kPrefix = u"$$$/";
    const std::size_t equals = key.find(u'=');
    const std::size_t pathAt = key.compare(0, kPrefix.size(), kPrefix) == 0 ? kPrefix.size() : 0;
    const UTF16String keyPath = key.substr(pathAt, equals - pathAt);
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        const auto found = mTranslations.find(keyPath);
        if (found != mTranslations.end())
            return found->second;
    }
    return equals == UTF16String::npos ? key : key.substr(equals + 1);
}

void Texts::SetTranslation(const UTF16String& keyPath, UTF16String text)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mTranslations[keyPath] = std::move(text);
}

void Texts::SetSDKInfoString(const UTF16String& text, const UTF16String& detail)
{
    const SDKInfo info{text, detail};
    boost::function<void(const SDKInfo&)> handler;
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        handler = mInfoHandler;
    }
    if (handler)
        handler(info);
}

void Texts::SetSDKInfoHandler(boost::function<void(const SDKInfo&)> handler)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mInfoHandler.swap(handler);
}

ferrite::utility::Guid Texts::CreateUniqueGuid()
{
    const std::lock_guard<std::mutex> lock(mMutex);
    const boost::uuids::uuid uuid = mRandomGuids();
    return {BigEndian(uuid.begin()), BigEndian(uuid.begin() + 8)};
}

}  // namespace ReferenceHost
