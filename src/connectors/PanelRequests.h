#pragma once

#include "codec/ACMessageDecoder.h"
#include "host/ald/IAssetLibraryDispatcher.h"
#include "message/ACMessage.h"

#include <atomic>
#include <cstddef>

/// Panel requests: tables from request to function, and the requests that both connectors handle alike.
namespace AC {

struct RequestRow;

/// One request under way, on the stack of the delivery.
struct RequestCall
{
    const RequestRow& row;
    ACMessage& request;                        ///< As decoded; a handler may change it.
    ALD::IAssetLibraryDispatcher* dispatcher;  ///< Null: nothing is forwarded.
    std::atomic<bool>* readFromDisk;           ///< The library connector's flag; null for the other one.
};

struct RequestRow
{
    const UTF16String* identifier;
    /// Carries the request out. After a call of the dispatcher the connector may be gone.
    void (*handle)(const RequestCall& call);
    const UTF16String* reply = nullptr;  ///< What the connector itself answers with, if it does.
    bool (*decode)(const UTF16String& xml, ACMessage& message) = &ACMessageDecoder::DecodeXMLString;
};

struct RequestTable
{
    const RequestRow* begin;
    const RequestRow* end;
};

template <std::size_t N>
constexpr RequestTable TableOf(const RequestRow (&rows)[N])
{
    return {rows, rows + N};
}

/// \return The row of the request in the connector's own table or among the shared ones, or null.
const RequestRow* FindRequest(const RequestTable& own, const UTF16String& type);

/// \return Whether the connector acts on this request or replies with this notification.
bool HandlesRequestOrReply(const RequestTable& own, const UTF16String& identifier);

/// Decodes the text and carries the request out. A type without a row is ignored, a text that does not decode
/// is dropped.
void HandleRequest(const RequestTable& own, const UTF16String& type, const UTF16String& data,
                   ALD::IAssetLibraryDispatcher* dispatcher, std::atomic<bool>* readFromDisk);

/// The handler that passes the request on with forward(dispatcher, request).
template <void (*forward)(ALD::IAssetLibraryDispatcher&, const ACMessage&)>
void Forward(const RequestCall& call)
{
    if (call.dispatcher != nullptr)
        forward(*call.dispatcher, call.request);
}

}  // namespace AC
