#pragma once

#include "assetconnector/message/ACMessage.h"

#include <xercesc/dom/DOMElement.hpp>

/// Media infos, asset items and what else speaks of single assets: readers of the section elements of a
/// request, writers of those of a notification.
namespace AC {

class ElementWriter;

void ReadAssetMediaInfoList(const xercesc::DOMElement* section, ACMessage& message);
void EncodeAssetMediaInfoList(const ACMessage& message, const ElementWriter& root);

void ReadAssetItemList(const xercesc::DOMElement* section, ACMessage& message);
void EncodeAssetItemList(const ACMessage& message, const ElementWriter& root);

void ReadThumbnailRequest(const xercesc::DOMElement* section, ACMessage& message);
void EncodeThumbnailRequest(const ACMessage& message, const ElementWriter& root);

void ReadMediaPropertyInfo(const xercesc::DOMElement* section, ACMessage& message);
void EncodeMediaPropertyInfo(const ACMessage& message, const ElementWriter& root);

void EncodeSelectedItemInfoList(const ACMessage& message, const ElementWriter& root);
void EncodeMarkerInfoList(const ACMessage& message, const ElementWriter& root);

}  // namespace AC
