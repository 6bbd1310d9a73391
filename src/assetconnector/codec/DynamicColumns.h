#pragma once

#include "assetconnector/message/ACMessage.h"

#include <xercesc/dom/DOMElement.hpp>

/// Readers of the project's dynamic columns. What names no column, or no asset, is skipped.
namespace AC {

void ReadNewDynamicColumns(const xercesc::DOMElement* section, ACMessage& message);
void ReadDeleteDynamicColumns(const xercesc::DOMElement* section, ACMessage& message);
void ReadDynamicColumnFieldValues(const xercesc::DOMElement* section, ACMessage& message);

}  // namespace AC
