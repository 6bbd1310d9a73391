#include "protocol/XMLText.h"

namespace Protocol {

void XMLText::Empty(std::string_view name, Attributes attributes)
{
    Open(name, attributes);
    mText += "/>\n";
}

void XMLText::Leaf(std::string_view name, Attributes attributes, std::string_view text)
{
    Open(name, attributes);
    mText += '>';
    Escape(text);
    mText.append("</").append(name).append(">\n");
}

void XMLText::Open(std::string_view name, Attributes attributes)
{
    Indent();
    mText.append("<").append(name);
    for (const auto& [attribute, value] : attributes) {
        if (value.empty())
            continue;
        mText.append(" ").append(attribute).append("=\"");
        Escape(value);
        mText += '"';
    }
}

void XMLText::Escape(std::string_view text)
{
    for (const char unit : text) {
        switch (unit) {
            case '&':
                mText += "&amp;";
                break;
            case '<':
                mText += "&lt;";
                break;
            case '>':
                mText += "&gt;";
                break;
            case '"':
                mText += "&quot;";
                break;
            default:
                mText += unit;
        }
    }
}

}  // namespace Protocol
