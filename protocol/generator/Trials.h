#pragma once

#include "assetconnector/connectors/CallbackTable.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "protocol/Model.h"
#include "protocol/generator/RecordingHost.h"

#include <string>
#include <string_view>
#include <vector>

namespace Protocol::Generator {

/// Both connectors on one host, one at a time, told whatever can be told.
struct ConnectorKind
{
    const char* name;
    Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier> (*create)(ALD::IAssetLibraryDispatcher* dispatcher);
    bool (*handles)(const UTF16String& identifier);
};

/// \return As sessions name them, the library's first.
const std::vector<ConnectorKind>& ConnectorKinds();

/// A callback under its name.
struct CallbackCall
{
    const char* name;
    /// Calls it with values in every argument. \param code Every result code.
    void (*run)(Ridge::IIngestLibraryNotifier& target, Ridge::ResultCode code);
    /// Calls it with the task, and nothing in the other arguments.
    void (*runEmpty)(Ridge::IIngestLibraryNotifier& target);
};

/// \return Every callback, in the order of the interface.
const std::vector<CallbackCall>& CallbackCalls();

/// The task and the message of every callback.
AC_CONSTANT inline constexpr ferrite::utility::Guid kCallTask{0x7A5C, 0x1};
AC_CONSTANT inline constexpr ferrite::utility::Guid kCallMessage{0x3E55, 0x1};

}  // namespace Protocol::Generator
