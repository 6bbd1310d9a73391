#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace Protocol {

/// Puts an XML text together, a line for each tag.
class XMLText
{
public:
    using Attributes = std::initializer_list<std::pair<std::string_view, std::string_view>>;

    XMLText() : mText("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") {}

    /// An attribute without a value is left out.
    /// \param writeContent Writes what the element holds.
    template <class WriteContent>
    void Element(std::string_view name, Attributes attributes, WriteContent writeContent)
    {
        Open(name, attributes);
        mText += ">\n";
        ++mDepth;
        writeContent();
        --mDepth;
        Indent();
        mText.append("</").append(name).append(">\n");
    }

    void Empty(std::string_view name, Attributes attributes = {});
    void Leaf(std::string_view name, Attributes attributes, std::string_view text);

    std::string Take() { return std::move(mText); }

private:
    void Indent() { mText.append(2 * mDepth, ' '); }
    void Open(std::string_view name, Attributes attributes);
    void Escape(std::string_view text);

    std::string mText;
    std::size_t mDepth = 0;
};

}  // namespace Protocol
