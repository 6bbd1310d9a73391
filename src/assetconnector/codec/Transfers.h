#pragma once

#include "assetconnector/message/ACMessage.h"

#include <xercesc/dom/DOMElement.hpp>

/// Ingest, transfer, renaming and conversion of media: readers of the section elements of a request, writers
/// of those of a notification.
namespace AC {

class ElementWriter;

/// Requests carry path and alias name alone; notifications the whole item.
void ReadIngestItemList(const xercesc::DOMElement* section, ACMessage& message);
void EncodeIngestItemList(const ACMessage& message, const ElementWriter& root);

void ReadIngestMediaItemList(const xercesc::DOMElement* section, ACMessage& message);
void ReadTransferItemList(const xercesc::DOMElement* section, ACMessage& message);
void ReadFtpSetting(const xercesc::DOMElement* section, ACMessage& message);
void ReadRenameItemList(const xercesc::DOMElement* section, ACMessage& message);
void ReadTranscodeItemList(const xercesc::DOMElement* section, ACMessage& message);
void ReadConcatenationItemList(const xercesc::DOMElement* section, ACMessage& message);

}  // namespace AC
