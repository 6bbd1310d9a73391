// pugixml, from and into plain structs.

#include "bench/Codec.h"

#include <pugixml.hpp>

namespace Bench {
namespace {

using Asset = PlainAsset<std::string>;

std::vector<Asset> Read(const std::string& text)
{
    std::vector<Asset> assets;
    pugi::xml_document document;
    document.load_buffer(text.data(), text.size());
    for (const pugi::xml_node item :
         document.document_element().child("assetItemList").children("assetItem")) {
        auto value = assets.emplace_back().begin();
        for (const AssetField& field : kAssetFields) {
            const pugi::xml_node node = item.child(field.element);
            *value++ =
                field.attribute == nullptr ? node.child_value() : node.attribute(field.attribute).value();
        }
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

std::string Write(const std::vector<Asset>& assets)
{
    pugi::xml_document document;
    pugi::xml_node list = document.append_child("hostNotification").append_child("assetItemList");
    int order = 0;
    for (const Asset& asset : assets) {
        pugi::xml_node item = list.append_child("assetItem");
        item.append_attribute("order") = ++order;
        auto value = asset.begin();
        for (const AssetField& field : kAssetFields) {
            pugi::xml_node node = item.append_child(field.element);
            if (field.attribute != nullptr)
                node.append_attribute(field.attribute) = value++->c_str();
            else
                node.text() = value++->c_str();
        }
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
    return [assets = PlainAssetsOf(work)] { benchmark::DoNotOptimize(Write(assets)); };
}

const AddedCodec kPugixml({"pugixml", {PrepareRead}, {PrepareWrite}});

}  // namespace
}  // namespace Bench
