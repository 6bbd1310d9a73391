#pragma once

#include "assetconnector/message/ACMessage.h"

#include <xercesc/dom/DOMElement.hpp>

/// Custom metadata and tag templates: readers of the section elements of a request, writers of those of a
/// notification.
namespace AC {

class ElementWriter;

void ReadCustomMetadata(const xercesc::DOMElement* section, ACMessage& message);

/// \throws xercesc::DOMException for a property whose name is not an XML name.
void EncodeCustomMetadata(const ACMessage& message, const ElementWriter& root);

void ReadTagTemplateInfoList(const xercesc::DOMElement* section, ACMessage& message);
void EncodeTagTemplateResultList(const ACMessage& message, const ElementWriter& root);

}  // namespace AC
