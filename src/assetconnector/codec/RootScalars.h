#pragma once

#include "assetconnector/message/ACMessage.h"

/// The children of the root that hold one value each: what requests carry beside what notifications do.
namespace AC {

class ElementReader;
class ElementWriter;

void ReadHeader(const ElementReader& root, ACMessage& message);
void EncodeHeader(const ACMessage& message, const ElementWriter& root);

/// Whether the panel works on local files: scalars that the readers of asset lists go by.
void ReadLocalFileFlags(const ElementReader& root, ACMessage& message);

/// All other scalars.
void ReadScalars(const ElementReader& root, ACMessage& message);

/// All scalars but the header's.
void EncodeScalars(const ACMessage& message, const ElementWriter& root);

}  // namespace AC
