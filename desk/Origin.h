#pragma once

#include <cstddef>
#include <string>

namespace Desk {

/// There are two kinds of panels, with a connector each.
enum class PanelKind
{
    kLibrary,
    kMediaCollection,
};

constexpr PanelKind kPanelKinds[] = {PanelKind::kLibrary, PanelKind::kMediaCollection};

/// What all panels of the media collection are called.
constexpr const char16_t* kCollectionID = u"MediaCollection";

constexpr std::size_t IndexOf(PanelKind kind)
{
    return static_cast<std::size_t>(kind);
}

/// Who asked for something: known by the connection on which it came, never by its text. A job keeps a copy.
struct Origin
{
    PanelKind kind = PanelKind::kLibrary;
    std::string browserID;  ///< UTF-8.
};

}  // namespace Desk
