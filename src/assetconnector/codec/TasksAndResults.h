#pragma once

#include "assetconnector/message/ACMessage.h"

#include <xercesc/dom/DOMElement.hpp>

/// Tasks, files and commands by name, and results: readers of the section elements of a request, writers of
/// those of a notification.
namespace AC {

class ElementWriter;

void ReadFileList(const xercesc::DOMElement* section, ACMessage& message);
void EncodeFileList(const ACMessage& message, const ElementWriter& root);

void ReadTaskIDList(const xercesc::DOMElement* section, ACMessage& message);
void EncodeTaskIDList(const ACMessage& message, const ElementWriter& root);

void ReadCommandList(const xercesc::DOMElement* section, ACMessage& message);
void EncodeCommandList(const ACMessage& message, const ElementWriter& root);

void ReadActionResultList(const xercesc::DOMElement* section, ACMessage& message);
void EncodeActionResultList(const ACMessage& message, const ElementWriter& root);

/// A second "actionResultList", whose items have source and destination.
void EncodeTransferResultList(const ACMessage& message, const ElementWriter& root);

void ReadFileInfoList(const xercesc::DOMElement* section, ACMessage& message);

void ReadEvent(const xercesc::DOMElement* section, ACMessage& message);

void EncodeExportResultInfo(const ACMessage& message, const ElementWriter& root);

}  // namespace AC
