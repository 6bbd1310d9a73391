#include "assetconnector/codec/DynamicColumns.h"

#include "assetconnector/codec/ElementReader.h"
#include "assetconnector/host/loft/Utilities.h"

#include <utility>

namespace AC {

using namespace Vocabulary;

namespace {

ferrite::utility::Guid IdentifierOf(const DOMElement* element)
{
    return Loft::Utilities::StringToGuid(AttributeText(element, kID));
}

}  // namespace

void ReadNewDynamicColumns(const DOMElement* section, ACMessage& message)
{
    ForEachItem(section, kDynamicColumn, [&message](const DOMElement* element) {
        const ferrite::utility::Guid column = IdentifierOf(element);
        if (column.IsZero())
            return;
        message.newDynamicColumns[column] = AttributeText(element, kItemName);
        UTF16String previousName = AttributeText(element, kPreviousColumnName);
        if (!previousName.empty())
            message.previousColumnNames[column] = std::move(previousName);
    });
}

void ReadDeleteDynamicColumns(const DOMElement* section, ACMessage& message)
{
    ForEachItem(section, kDynamicColumn, [&message](const DOMElement* element) {
        const ferrite::utility::Guid column = IdentifierOf(element);
        if (!column.IsZero())
            message.deleteDynamicColumns.insert(column);
    });
}

void ReadDynamicColumnFieldValues(const DOMElement* section, ACMessage& message)
{
    ForEachItem(section, kDynamicColumnFieldValue, [&message](const DOMElement* element) {
        const ElementReader reader(element);
        const ferrite::utility::Guid column = IdentifierOf(reader.FindChildElement(kDynamicColumn));
        const ferrite::utility::Guid asset = IdentifierOf(reader.FindChildElement(kAssetID));
        if (!column.IsZero() && !asset.IsZero())
            message.dynamicColumnFieldValues[asset][column] = AttributeText(element, kFieldValue);
    });
}

}  // namespace AC
