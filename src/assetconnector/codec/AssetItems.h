#pragma once

#include "assetconnector/message/ACMessage.h"

#include <xercesc/dom/DOMElement.hpp>

/// Asset items with their sub-items: readers of the section elements of a request, writers of
/// those of a notification.
namespace AC {

class ElementWriter;

void ReadAssetItemList(const xercesc::DOMElement* section, ACMessage& message);
void EncodeAssetItemList(const ACMessage& message, const ElementWriter& root);

}  // namespace AC
