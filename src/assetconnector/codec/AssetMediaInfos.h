#pragma once

#include "assetconnector/message/ACMessage.h"

#include <xercesc/dom/DOMElement.hpp>

/// Media infos: readers of the section elements of a request, writers of
/// those of a notification.
namespace AC {

class ElementWriter;

void ReadAssetMediaInfoList(const xercesc::DOMElement* section, ACMessage& message);
void EncodeAssetMediaInfoList(const ACMessage& message, const ElementWriter& root);

}  // namespace AC
