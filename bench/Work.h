#pragma once

#include "message/ACMessage.h"

#include <cstddef>
#include <cstdint>
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

/// An asset as a program without this library would hold it.
struct PlainAsset
{
    int order = 0;
    std::string filePath, mediaInfoID, parentAssetID, assetID;
    std::int64_t startTime = 0;
    std::int64_t duration = 0;
    std::string frameRate, name, type, metadata;
};

/// \return The assets of the record, each with the values that the encoder writes.
std::vector<PlainAsset> PlainAssets(const Work& work);

}  // namespace Bench
