#include "bench/Work.h"

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/host/ferrite/ReservedCharacters.h"
#include "assetconnector/host/ferrite/Unicode.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

namespace Bench {
namespace {

using ferrite::utility::Guid;
using ferrite::utility::UTF16to8;
using ferrite::utility::UTF8to16;

std::string Escaped(const std::string& text)
{
    UTF16String result = UTF8to16(text);
    ferrite::xml::utils::EncodeReservedCharacters(result, result);
    return UTF16to8(result);
}

std::string Element(const std::string& name, const std::string& content)
{
    return "<" + name + ">" + content + "</" + name + ">";
}

std::string WithAttribute(const std::string& name, const std::string& attribute, const std::string& value)
{
    return "<" + name + " " + attribute + "=\"" + value + "\"/>";
}

std::string GuidText(std::size_t seed)
{
    return UTF16to8(Guid(seed * 0x9E3779B97F4A7C15U, seed).AsString());
}

/// \return The number with leading zeros.
std::string Digits(std::size_t number, std::size_t count)
{
    const std::string digits = std::to_string(number);
    return std::string(count - digits.size(), '0') + digits;
}

std::string Repeated(const std::string& text, std::size_t count)
{
    return count == 0 ? std::string() : text + Repeated(text, count - 1);
}

/// 50 characters.
std::string FilePath(std::size_t i)
{
    return "/Volumes/Media/2024/Interviews/Camera A/" + Digits(i, 6) + ".mov";
}

/// 20 characters.
std::string Name(std::size_t i)
{
    return "Interview, take " + Digits(i % 10000, 4);
}

std::string Header()
{
    return WithAttribute("browserID", "ID", "panel-1") + WithAttribute("msgID", "ID", GuidText(1)) +
           WithAttribute("taskID", "ID", GuidText(2));
}

template <class ItemText>
std::string Message(const std::string& section, std::size_t items, ItemText itemText)
{
    std::string text = "<browserMessage>" + Header() + "<" + section + ">";
    for (std::size_t i = 1; i <= items; ++i)
        text += itemText(i);
    return text + "</" + section + "></browserMessage>";
}

std::string AssetText(std::size_t items)
{
    // Encoded once as the format asks, and once more as every text.
    const std::string metadata = Escaped(Escaped(Repeated("<prop name=\"a\">value</prop>", 10)));
    return Message("assetItemList", items, [&metadata](std::size_t i) {
        return "<assetItem order=\"" + std::to_string(i) + "\">" +
               WithAttribute("filePath", "path", FilePath(i)) +
               WithAttribute("mediaInfoID", "ID", GuidText(i)) +
               WithAttribute("assetID", "ID", GuidText(i + 1000000)) +
               Element("startTime", std::to_string(25 * i)) + Element("duration", "250") +
               Element("frameRate", "f25") + Element("name", Name(i)) + Element("type", "masterClip") +
               Element("assetMetadata", metadata) + "</assetItem>";
    });
}

std::string MediaText(std::size_t items)
{
    const std::string property = "<xmp:Label xml:lang=\"en\">Interview &amp; cutaway</xmp:Label>\n";
    const std::string packet = Repeated(property, 4096 / property.size());
    const std::string xmp = Element("xmp", Escaped("<![CDATA[" + packet + "]]>"));
    const std::string metadata = Element("customMetadata", Escaped(Escaped("{\"keyword\":\"interview\"}")));
    return Message("assetMediaInfoList", items, [&](std::size_t i) {
        return "<assetMediaInfo>" + WithAttribute("filePath", "path", FilePath(i)) +
               WithAttribute("aliasName", "name", Name(i)) + WithAttribute("assetID", "ID", GuidText(i)) +
               Element("type", "masterClip") +
               Element("fileMetadata", (i % 10 == 0 ? xmp : std::string()) + metadata) +
               Element("rate", Element("timebase", "25") + Element("ntsc", "FALSE")) +
               Element("libraryMetadata", Element("fileLastModificationTime", "2024-05-06T07:08:09") +
                                              Element("fileCreationTime", "2024-05-06T07:08:09")) +
               "</assetMediaInfo>";
    });
}

std::string RequestText(std::size_t /*items*/)
{
    return Element("browserMessage", Header() + WithAttribute("filePath", "path", FilePath(1)) +
                                         Element("result", "OK") + Element("percentage", "42") +
                                         WithAttribute("taskItemID", "ID", GuidText(3)));
}

std::string PropertyText(std::size_t items)
{
    std::string properties;
    for (std::size_t i = 1; i <= items; ++i)
        properties += Element("property" + Digits(i, 6), Name(i));
    return Message("customMetadata", 1, [&properties](std::size_t) {
        return Element("minimumMetadata",
                       "<namespace URI=\"urn:fields\" prefix=\"f\">" + properties + "</namespace>");
    });
}

std::string ColumnText(std::size_t items)
{
    return Message("dynamicColumnFieldValues", items, [](std::size_t i) {
        return "<dynamicColumnFieldValue fieldValue=\"" + Name(i) + "\">" +
               WithAttribute("dynamicColumn", "ID", GuidText(i % 10 + 1)) +
               WithAttribute("assetID", "ID", GuidText(i / 10 + 1000)) + "</dynamicColumnFieldValue>";
    });
}

}  // namespace

const std::vector<WorkKind>& WorkKinds()
{
    static const std::vector<WorkKind> kinds{{"assets", AssetText, {1, 100, 3000, 30000}, true},
                                             {"media", MediaText, {1, 100, 3000, 30000}, true},
                                             {"request", RequestText, {1}, false},
                                             {"properties", PropertyText, {100, 10000}, true},
                                             {"columns", ColumnText, {100, 10000}, false}};
    return kinds;
}

const Work& WorkOf(const WorkKind& kind, std::size_t items)
{
    static std::map<std::pair<std::string, std::size_t>, Work> works;
    const auto [entry, isNew] = works.try_emplace({kind.name, items});
    Work& work = entry->second;
    if (isNew) {
        work.utf8 = kind.generate(items);
        work.utf16 = UTF8to16(work.utf8);
        if (!AC::ACMessageDecoder::DecodeXMLString(work.utf16, work.record))
            throw std::logic_error("the generator made a text that does not parse");
    }
    return work;
}

PlainAsset<UTF16String> PlainAssetOf(const Ridge::AssetItem& item)
{
    UTF16String metadata;
    ferrite::xml::utils::EncodeReservedCharacters(item.GetAssetMetadata(), metadata);
    return {item.GetMediaPath(),
            item.GetAssetMediaInfoGUID().AsString(),
            item.GetParentGUID().AsString(),
            item.GetAssetGUID().AsString(),
            AC::Decimal(item.GetInPoint().ticks).Text(),
            AC::Decimal(item.GetDuration().ticks).Text(),
            AC::kTickRate.Text(),
            item.GetAssetName(),
            AC::ClipTypeName(item.GetAssetMediaType()).Text(),
            std::move(metadata)};
}

std::vector<PlainAsset<std::string>> PlainAssetsOf(const Work& work)
{
    std::vector<PlainAsset<std::string>> assets;
    for (const auto& item : work.record.assetItemList) {
        const PlainAsset<UTF16String> texts = PlainAssetOf(*item);
        std::transform(texts.begin(), texts.end(), assets.emplace_back().begin(), UTF16to8);
    }
    return assets;
}

}  // namespace Bench
