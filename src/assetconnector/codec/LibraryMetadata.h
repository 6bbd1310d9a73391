#pragma once

#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/codec/ElementWriter.h"

namespace AC {

/// The block "libraryMetadata", which two kinds of item carry. Times are texts of the host.
struct LibraryMetadata
{
    UTF16String creationTime;
    UTF16String modificationTime;
};

/// \return Both texts of the item's block; empty where it is missing.
inline LibraryMetadata ReadLibraryMetadata(const ElementReader& item)
{
    const ElementReader block(item.FindChildElement(Vocabulary::kLibraryMetadata));
    return {block.ChildText(Vocabulary::kFileCreationTime),
            block.ChildText(Vocabulary::kFileLastModificationTime)};
}

/// Writes the block when both texts are there.
inline void EncodeLibraryMetadata(const LibraryMetadata& times, const ElementWriter& item)
{
    if (times.creationTime.empty() || times.modificationTime.empty())
        return;
    const ElementWriter block = item.AppendChildElement(Vocabulary::kLibraryMetadata);
    block.Text(Vocabulary::kFileLastModificationTime, times.modificationTime);
    block.Text(Vocabulary::kFileCreationTime, times.creationTime);
}

}  // namespace AC
