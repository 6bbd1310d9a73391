#pragma once

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/host/ald/IAssetLibraryDispatcher.h"
#include "assetconnector/message/ACMessage.h"

#include <boost/shared_ptr.hpp>

#include <atomic>
#include <cstddef>

/// Panel requests: tables from request to function, and the requests that both connectors handle alike.
namespace AC {

struct RequestRow;

/// One request under way, on the stack of the delivery.
struct RequestCall
{
    const RequestRow& row;
    ACMessage& request;                                 ///< As decoded; a handler may change it.
    ALD::IAssetLibraryDispatcher* dispatcher;           ///< Null: nothing is forwarded.
    boost::shared_ptr<std::atomic<bool>> readFromDisk;  ///< The library connector's; null for the other.
};

struct RequestRow
{
    const UTF16String* identifier;
    /// Carries the request out. The connector may be gone: decoding calls the host, too.
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

/// \return Whether the connector acts on this request or replies with this notification.
bool HandlesRequestOrReply(const RequestTable& own, const UTF16String& identifier);

/// Decodes the text and carries the request out. A type without a row is ignored, a text that does not decode
/// is dropped. What is passed by value here outlives the connector, which the host may drop on the way.
void HandleRequest(const RequestTable& own, const UTF16String& type, const UTF16String& data,
                   ALD::IAssetLibraryDispatcher* dispatcher,
                   boost::shared_ptr<std::atomic<bool>> readFromDisk = {});

/// The handler that passes the request on with forward(dispatcher, request).
template <void (*forward)(ALD::IAssetLibraryDispatcher&, const ACMessage&)>
void Forward(const RequestCall& call)
{
    if (call.dispatcher != nullptr)
        forward(*call.dispatcher, call.request);
}

}  // namespace AC
