#pragma once

#include "assetconnector/host/ridge/AssetItem.h"
#include "assetconnector/message/ACMessage.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

/// What is measured: texts from one generator, and the records that they mean.
namespace Bench {

/// One text in the two forms in which users of XML libraries hold it.
struct Work
{
    std::string utf8;
    UTF16String utf16;
    AC::ACMessage record;  ///< What utf16 decodes to.
};

/// A kind of text, made in several sizes.
struct WorkKind
{
    const char* name;
    std::string (*generate)(std::size_t items);
    std::vector<std::size_t> sizes;
    bool isEncoded;  ///< Notifications carry it, too.
};

/// The asset kind comes first.
const std::vector<WorkKind>& WorkKinds();

/// \return The work; made when it is first asked for, and kept.
const Work& WorkOf(const WorkKind& kind, std::size_t items);

/// A child of an asset's element. The value is the attribute or, where that is null, the text.
struct AssetField
{
    const char* element;
    const char* attribute;
};

constexpr std::array<AssetField, 10> kAssetFields{{{"filePath", "path"},
                                                   {"mediaInfoID", "ID"},
                                                   {"parentAssetID", "ID"},
                                                   {"assetID", "ID"},
                                                   {"startTime", nullptr},
                                                   {"duration", nullptr},
                                                   {"frameRate", nullptr},
                                                   {"name", nullptr},
                                                   {"type", nullptr},
                                                   {"assetMetadata", nullptr}}};

/// The values of these, as the encoder writes them.
template <class Text>
using PlainAsset = std::array<Text, kAssetFields.size()>;

PlainAsset<UTF16String> PlainAssetOf(const Ridge::AssetItem& item);

/// \return The assets of the work, UTF-8.
std::vector<PlainAsset<std::string>> PlainAssetsOf(const Work& work);

}  // namespace Bench
