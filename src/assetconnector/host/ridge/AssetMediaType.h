#pragma once

#include <cstdint>

namespace Ridge {

/// The type of a clip. Any other 32-bit value may come from the host and is kept.
enum class AssetMediaType : std::int32_t
{
    kUnknown = 0,
    kMasterClip = 1,
    kSubClip = 2,
    kRoughCut = 3,
    kRoughCutSubClip = 4,
};

}  // namespace Ridge
