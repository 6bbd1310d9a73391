#include "assetconnector/codec/ElementWriter.h"

#include "assetconnector/codec/ValueForms.h"
#include "assetconnector/message/MessageConstants.h"
#include "assetconnector/xml/DomLinks.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <algorithm>

namespace AC {
namespace {

// Zeros inside a string would cut it. In a text they become the replacement character, in a name something
// that makes the DOM refuse it, as it refuses every unit that a name cannot hold.
constexpr char16_t kInText = 0xFFFD;
constexpr char16_t kInName = u' ';

/// A string as the DOM wants it, terminated by its only zero.
class Terminated
{
public:
    Terminated(const UTF16String& text, char16_t insteadOfZero) : mText(text.c_str())
    {
        char16_t hasZero = 0;
        for (const char16_t unit : text)  // without an early end, and so several units at a time
            hasZero |= unit == 0 ? 1 : 0;
        if (hasZero == 0)
            return;
        mCopy = text;
        std::replace(mCopy.begin(), mCopy.end(), u'\0', insteadOfZero);
        mText = mCopy.c_str();
    }
    Terminated(const Terminated&) = delete;
    Terminated& operator=(const Terminated&) = delete;

    const XMLCh* Get() const { return mText; }

private:
    UTF16String mCopy;
    const XMLCh* mText;
};

}  // namespace

ElementWriter ElementWriter::CreateRoot(xercesc::DOMDocument& document, const UTF16String& name)
{
    xercesc::DOMElement* const root = document.createElement(Terminated(name, kInName).Get());
    document.appendChild(root);
    return ElementWriter(root);
}

void ElementWriter::AppendChildElement(Name name, const UTF16String& text) const
{
    SetText(Append(name.Text()), Terminated(text, kInText).Get());
}

void ElementWriter::AppendChildElement(const UTF16String& name, const UTF16String& text) const
{
    SetText(Append(Terminated(name, kInName).Get()), Terminated(text, kInText).Get());
}

xercesc::DOMElement* ElementWriter::Append(const XMLCh* name) const
{
    xercesc::DOMElement* const element = mElement->getOwnerDocument()->createElement(name);
    DomLinks::AppendChild(mElement, element);
    return element;
}

void ElementWriter::SetText(xercesc::DOMElement* element, const XMLCh* text)
{
    DomLinks::AppendChild(element, element->getOwnerDocument()->createTextNode(text));
}

void ElementWriter::SetAttribute(Name attribute, const UTF16String& value) const
{
    SetAttribute(mElement, attribute.Text(), Terminated(value, kInText).Get());
}

void ElementWriter::SetAttribute(Name attribute, std::int64_t value) const
{
    SetAttribute(mElement, attribute.Text(), Decimal(value).Text());
}

void ElementWriter::SetAttribute(xercesc::DOMElement* element, const XMLCh* name, const XMLCh* value)
{
    DomLinks::AddAttribute(element, element->getOwnerDocument()->createAttribute(name), value);
}

void ElementWriter::Text(Name name, const UTF16String& text) const
{
    if (!text.empty())
        AppendChildElement(name, text);
}

void ElementWriter::Attribute(Name name, Name attribute, const UTF16String& value) const
{
    if (!value.empty())
        AppendChildElement(name).SetAttribute(attribute, value);
}

void ElementWriter::Guid(Name name, const ferrite::utility::Guid& guid) const
{
    SetAttribute(Append(name.Text()), Vocabulary::kID.Text(), guid.AsArray().data());
}

void ElementWriter::NonZeroGuid(Name name, const ferrite::utility::Guid& guid) const
{
    if (!guid.IsZero())
        Guid(name, guid);
}

void ElementWriter::Word(Name name, Name word) const
{
    SetText(Append(name.Text()), word.Text());
}

void ElementWriter::Boolean(Name name, bool value) const
{
    Word(name, value ? Name(u"true") : Name(u"false"));
}

void ElementWriter::TriState(Name name, std::int32_t value) const
{
    if (value != kACMessage_Undefine)
        Boolean(name, value == kACMessage_True);
}

void ElementWriter::Integer(Name name, std::int64_t value) const
{
    SetText(Append(name.Text()), Decimal(value).Text());
}

void ElementWriter::Ticks(Name name, tempora::TickTime time) const
{
    if (time != tempora::kTime_Invalid)
        Integer(name, time.ticks);
}

void ElementWriter::Frames(Name name, tempora::TickTime time, tempora::FrameRate rate) const
{
    Integer(name, time.ToFrame64(rate));
}

void ElementWriter::FrameRate(tempora::FrameRate rate) const
{
    Text(Vocabulary::kFrameRate, FormatFrameRate(rate));
}

}  // namespace AC
