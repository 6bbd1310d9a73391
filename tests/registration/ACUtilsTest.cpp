#include "assetconnector/host/ridge/AssetItem.h"
#include "assetconnector/host/ridge/AssetMediaInfo.h"
#include "assetconnector/registration/ACUtils.h"
#include "tests/support/HostTest.h"

#include <boost/smart_ptr/make_shared_object.hpp>

namespace {

using ACUtilsTest = HostTest;

/// Panels name no sub-items when they ask for infos to be made, and no entry that is null: a used record has
/// them.
TEST_F(ACUtilsTest, MakesInfosOfSubItemsToo)
{
    const auto itemOf = [](const char16_t* path, std::uint64_t guid, Ridge::AssetItemList subItems) {
        Ridge::AssetItemValues values;
        values.mediaPath = path;
        values.assetMediaInfoGUID = {guid, 0};
        values.subAssetItemList = std::move(subItems);
        return boost::make_shared<Ridge::AssetItem>(values);
    };
    AC::ACMessage message;
    message.assetMediaInfoList = {nullptr};
    message.assetItemList = {
        nullptr,
        itemOf(u"/a", 1, {nullptr, itemOf(u"/b", 2, {itemOf(u"/deeper", 3, {})}), itemOf(u"/a", 4, {})})};
    ASSERT_TRUE(AC::ACUtils::DecodeXMLAndRegisterMediaInfo(
        u"<a><roughCutUseLocalFile>true</roughCutUseLocalFile></a>", message));
    std::string paths;
    for (const auto& info : message.assetMediaInfoList)
        paths += info == nullptr ? "null " : Narrow(info->GetMediaPath()) + ' ';
    EXPECT_EQ(paths, "null /a /b ");
}

}  // namespace
