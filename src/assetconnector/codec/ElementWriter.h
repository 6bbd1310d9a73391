#pragma once

#include "assetconnector/codec/Vocabulary.h"
#include "assetconnector/host/ferrite/Guid.h"
#include "assetconnector/host/tempora/Time.h"

#include <xercesc/dom/DOMElement.hpp>

#include <cstdint>

namespace AC {

using Vocabulary::Name;

/// Writes below one element of a DOM document, which outlives it. Absence is a value: what says "when there
/// is one" writes nothing for an empty text, an invalid time or kFrameRate_Zero.
class ElementWriter
{
public:
    /// \return The writer of a new document element.
    /// \throws xercesc::DOMException for a name that is not an XML name.
    static ElementWriter CreateRoot(xercesc::DOMDocument& document, const UTF16String& name);

    /// Appends an element as the last child. \return The new element.
    /// \throws xercesc::DOMException for a name that is not an XML name.
    ElementWriter AppendChildElement(Name name) const { return ElementWriter(Append(name.Text())); }

    /// Appends an element that holds one text, even an empty one.
    void AppendChildElement(Name name, const UTF16String& text) const;

    /// The same for a name that is not of the vocabulary.
    void AppendChildElement(const UTF16String& name, const UTF16String& text) const;

    /// Each attribute of an element is set once.
    void SetAttribute(Name attribute, const UTF16String& value) const;
    void SetAttribute(Name attribute, std::int64_t value) const;

    /// An element with one text or one attribute, when there is one.
    void Text(Name name, const UTF16String& text) const;
    void Attribute(Name name, Name attribute, const UTF16String& value) const;

    /// The GUID in the attribute "ID", the zero GUID included.
    void Guid(Name name, const ferrite::utility::Guid& guid) const;
    void NonZeroGuid(Name name, const ferrite::utility::Guid& guid) const;

    /// An element whose text is a fixed word.
    void Word(Name name, Name word) const;
    void Boolean(Name name, bool value) const;

    /// Nothing for kACMessage_Undefine; "true" for kACMessage_True, else "false".
    void TriState(Name name, std::int32_t value) const;
    void Integer(Name name, std::int64_t value) const;

    /// The time as raw ticks, when there is one.
    void Ticks(Name name, tempora::TickTime time) const;

    /// The time as frames of the rate, whatever it is.
    void Frames(Name name, tempora::TickTime time, tempora::FrameRate rate) const;

    /// The child "frameRate", when there is one.
    void FrameRate(tempora::FrameRate rate) const;

private:
    explicit ElementWriter(xercesc::DOMElement* element) : mElement(element) {}

    /// Names and texts end with their only zero.
    xercesc::DOMElement* Append(const XMLCh* name) const;
    static void SetText(xercesc::DOMElement* element, const XMLCh* text);
    static void SetAttribute(xercesc::DOMElement* element, const XMLCh* name, const XMLCh* value);

    xercesc::DOMElement* mElement;
};

/// Writes a list with an item for each entry that is not null, made by encode(entry, item). Nothing for an
/// empty list.
template <class List, class Encode>
void EncodeItems(const List& list, const ElementWriter& parent, Name listName, Name itemName, Encode encode)
{
    if (list.empty())
        return;
    const ElementWriter section = parent.AppendChildElement(listName);
    for (const auto& entry : list)
        if (entry)
            encode(*entry, section.AppendChildElement(itemName));
}

/// Writes a list with an item for each entry, whose one attribute is textOf(entry); an empty text is left
/// out. Nothing for an empty list.
template <class List, class TextOf>
void EncodeAttributes(const List& list, const ElementWriter& parent, Name listName, Name itemName,
                      Name attribute, TextOf textOf)
{
    if (list.empty())
        return;
    const ElementWriter section = parent.AppendChildElement(listName);
    for (const auto& entry : list)
        section.Attribute(itemName, attribute, textOf(entry));
}

/// The text of an entry that is one.
inline const UTF16String& AsIs(const UTF16String& text)
{
    return text;
}

}  // namespace AC
