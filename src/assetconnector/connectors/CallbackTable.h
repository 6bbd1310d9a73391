#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"
#include "assetconnector/host/ridge/IIngestLibraryNotifier.h"

#include <array>
#include <cstddef>

/// What a connector does for each callback of the ingest library, as data.
namespace AC {

struct ACMessage;

/// The callbacks in the order of Ridge::IIngestLibraryNotifier.
enum class Callback
{
#define AC_CALLBACK(NAME) NAME,
#include "assetconnector/connectors/Callbacks.def"
#undef AC_CALLBACK
    kCount,
};
static_assert(static_cast<int>(Callback::kCount) == Ridge::kCallbackCount);

/// Which GUIDs a message's header gets.
enum class HeaderRule
{
    kFromCall,       ///< Task and message of the call.
    kTaskAndUnique,  ///< The call's task, a fresh GUID as message.
    kTaskTwice,      ///< The call's task as both.
    kUniqueTwice,    ///< One fresh GUID as both.
};

/// Which panel a message speaks to.
enum class BrowserRule
{
    kCurrent,          ///< The panel event manager's current browser id, asked for each message.
    kMediaCollection,  ///< kNativeBrowserID.
};

enum class Encoding
{
    kPlain,
    kDecoded,  ///< See EncodeDecodedNotification.
};

/// Posts a record as a station message.
using PostFunction = void (*)(const ACMessage& message);

struct CallbackRow
{
    Callback callback;
    HeaderRule header;
    BrowserRule browser;
    const UTF16String* notification = nullptr;  ///< Null: none is sent.
    Encoding encoding = Encoding::kPlain;
    PostFunction post = nullptr;                        ///< Null: nothing is posted.
    const UTF16String* notificationFromDisk = nullptr;  ///< In place of the other after ReadXMPFromDisk.

    constexpr bool HasRoad() const { return notification != nullptr || post != nullptr; }
};

using CallbackTable = std::array<CallbackRow, Ridge::kCallbackCount>;

/// \return Whether each row stands where its callback belongs.
constexpr bool RowsAreInOrder(const CallbackTable& table)
{
    for (std::size_t i = 0; i < table.size(); ++i)
        if (table[i].callback != static_cast<Callback>(i))
            return false;
    return true;
}

}  // namespace AC
