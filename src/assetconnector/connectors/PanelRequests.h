#pragma once

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/connectors/Table.h"
#include "assetconnector/host/ald/IAssetLibraryDispatcher.h"
#include "assetconnector/message/ACMessage.h"

/// Panel requests: tables from request to function, and the requests that both connectors handle alike.
namespace AC {

struct RequestRow;

/// One request under way, on the stack of the delivery.
struct RequestCall
{
    const RequestRow& row;
    ACMessage& request;                        ///< As decoded; a handler may change it.
    ALD::IAssetLibraryDispatcher* dispatcher;  ///< Null: nothing is forwarded.
};

struct RequestRow
{
    const UTF16String* identifier;
    /// Carries the request out. The connector may be gone: decoding calls the host, too.
    void (*handle)(const RequestCall& call);
    const UTF16String* reply = nullptr;  ///< What the connector itself answers with, if it does.
    bool (*decode)(const UTF16String& xml, ACMessage& message) = &ACMessageDecoder::DecodeXMLString;
};

/// \return The connector's row of the request, its own before those that both connectors handle alike; null
///         when there is none.
const RequestRow* FindRequest(const Table<RequestRow>& own, const UTF16String& type);

/// \return Whether the connector acts on this request or replies with this notification.
bool HandlesRequestOrReply(const Table<RequestRow>& own, const UTF16String& identifier);

/// Decodes the text and carries the request out with run(row, request). A type without a row is ignored, a
/// text that does not decode is dropped. The function owns what it needs: the host may drop the connector on
/// the way.
template <class Run>
void HandleRequest(const Table<RequestRow>& own, const UTF16String& type, const UTF16String& data, Run run)
{
    const RequestRow* const row = FindRequest(own, type);
    if (row == nullptr)
        return;
    ACMessage request;
    if (row->decode(data, request))
        run(*row, request);
}

/// The handler that passes the request on with forward(dispatcher, request).
template <void (*forward)(ALD::IAssetLibraryDispatcher&, const ACMessage&)>
void Forward(const RequestCall& call)
{
    if (call.dispatcher != nullptr)
        forward(*call.dispatcher, call.request);
}

}  // namespace AC
