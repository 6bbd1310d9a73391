#pragma once

#include "assetconnector/message/ACMessage.h"

#include <xercesc/dom/DOMElement.hpp>

/// What else speaks of single assets: readers of the section elements of a request, writers of
/// those of a notification.
namespace AC {

class ElementWriter;

void ReadThumbnailRequest(const xercesc::DOMElement* section, ACMessage& message);
void EncodeThumbnailRequest(const ACMessage& message, const ElementWriter& root);

void ReadMediaPropertyInfo(const xercesc::DOMElement* section, ACMessage& message);
void EncodeMediaPropertyInfo(const ACMessage& message, const ElementWriter& root);

void EncodeSelectedItemInfoList(const ACMessage& message, const ElementWriter& root);
void EncodeMarkerInfoList(const ACMessage& message, const ElementWriter& root);

}  // namespace AC
