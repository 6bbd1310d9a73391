// pugixml with a codec for plain structs.

#include "bench/Codec.h"

#include <pugixml.hpp>

namespace Bench {
namespace {

std::vector<PlainAsset> Read(const std::string& text)
{
    std::vector<PlainAsset> assets;
    pugi::xml_document document;
    if (!document.load_buffer(text.data(), text.size()))
        return assets;
    for (const pugi::xml_node item :
         document.document_element().child("assetItemList").children("assetItem")) {
        PlainAsset& asset = assets.emplace_back();
        asset.order = item.attribute("order").as_int();
        asset.filePath = item.child("filePath").attribute("path").value();
        asset.mediaInfoID = item.child("mediaInfoID").attribute("ID").value();
        asset.parentAssetID = item.child("parentAssetID").attribute("ID").value();
        asset.assetID = item.child("assetID").attribute("ID").value();
        asset.startTime = item.child("startTime").text().as_llong();
        asset.duration = item.child("duration").text().as_llong();
        asset.frameRate = item.child_value("frameRate");
        asset.name = item.child_value("name");
        asset.type = item.child_value("type");
        asset.metadata = item.child_value("assetMetadata");
    }
    return assets;
}

struct StringWriter : pugi::xml_writer
{
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }

    std::string text;
};

std::string Write(const std::vector<PlainAsset>& assets)
{
    pugi::xml_document document;
    pugi::xml_node list = document.append_child("hostNotification").append_child("assetItemList");
    for (const PlainAsset& asset : assets) {
        pugi::xml_node item = list.append_child("assetItem");
        item.append_attribute("order") = asset.order;
        item.append_child("filePath").append_attribute("path") = asset.filePath.c_str();
        item.append_child("mediaInfoID").append_attribute("ID") = asset.mediaInfoID.c_str();
        item.append_child("parentAssetID").append_attribute("ID") = asset.parentAssetID.c_str();
        item.append_child("assetID").append_attribute("ID") = asset.assetID.c_str();
        item.append_child("startTime").text() = static_cast<long long>(asset.startTime);
        item.append_child("duration").text() = static_cast<long long>(asset.duration);
        item.append_child("frameRate").text() = asset.frameRate.c_str();
        item.append_child("name").text() = asset.name.c_str();
        item.append_child("type").text() = asset.type.c_str();
        item.append_child("assetMetadata").text() = asset.metadata.c_str();
    }
    StringWriter writer;
    document.save(writer, "", pugi::format_raw | pugi::format_no_declaration);
    return std::move(writer.text);
}

Operation PrepareRead(const Work& work)
{
    return [&text = work.utf8] { benchmark::DoNotOptimize(Read(text)); };
}

Operation PrepareWrite(const Work& work)
{
    return [assets = PlainAssets(work)] { benchmark::DoNotOptimize(Write(assets)); };
}

const AddedCodec kPugixml({"pugixml", {PrepareRead}, {PrepareWrite}});

}  // namespace
}  // namespace Bench
