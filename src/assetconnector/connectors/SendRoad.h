#pragma once

#include "assetconnector/connectors/CallbackTable.h"
#include "assetconnector/message/ACMessage.h"

#include <string>

/// The one road on which notifications leave. Nothing is sent when a step throws.
namespace AC {

/// \return The notification's text with one layer of reserved characters decoded, UTF-8: the markers around
///         XMP packets become real CDATA sections, and encoded metadata is escaped once instead of twice.
///         What a text value holds of < and & becomes bare, so the whole may not be well-formed.
std::string EncodeDecodedNotification(const ACMessage& message);

/// Encodes the record and dispatches it to the panels.
void Send(const UTF16String& notification, const ACMessage& message, Encoding encoding);

/// Fills the header as the row says. Asks for the browser id first, then for a fresh GUID, if any.
void SetHeader(const CallbackRow& row, const ferrite::utility::Guid& task,
               const ferrite::utility::Guid& message, ACMessageHeader& header);

/// Reports a callback: fills a record, posts it, sends it, as the row says; nothing at all for a row without
/// a road. The fill function gets the record with its header set; choose(row), called when the record is
/// filled, gives the notification to send, or null.
template <class Fill, class Choose>
void Report(const CallbackRow& row, const ferrite::utility::Guid& task, const ferrite::utility::Guid& message,
            Fill fill, Choose choose)
{
    if (!row.HasRoad())
        return;
    ACMessage record;
    SetHeader(row, task, message, record.header);
    fill(record);
    if (row.post != nullptr)
        row.post(record);
    // The connector may be gone from here on; the row is not part of it.
    if (const UTF16String* const notification = choose(row))
        Send(*notification, record, row.encoding);
}

template <class Fill>
void Report(const CallbackRow& row, const ferrite::utility::Guid& task, const ferrite::utility::Guid& message,
            Fill fill)
{
    Report(row, task, message, fill, [](const CallbackRow& same) { return same.notification; });
}

}  // namespace AC
