#include "protocol/ElementTree.h"
#include "protocol/Schemas.h"
#include "protocol/XMLText.h"

#include <string>

namespace Protocol {
namespace {

constexpr const char* kAbout =
    "What panels should send: elements in any order, none that the host does not know, none twice, every "
    "value "
    "in the form that it should have. The host takes more: any name of the root, unknown elements, which it "
    "ignores, the first of several, empty elements, which mostly count as missing, and values that it cannot "
    "read, each of which has its outcome. Not told here: numbers that are too large, rates of no frames, "
    "which "
    "elements a request needs, which of them need each other. The program's checker tells all of this.";

class Writer
{
public:
    explicit Writer(const Model& model) : mModel(model) {}

    std::string Write()
    {
        const Element root = ElementTree(mModel, &Place::read);
        mXML.Element("grammar",
                     {{"xmlns", "http://relaxng.org/ns/structure/1.0"},
                      {"xmlns:a", "http://relaxng.org/ns/compatibility/annotations/1.0"},
                      {"datatypeLibrary", "http://www.w3.org/2001/XMLSchema-datatypes"}},
                     [&] {
                         Document(kAbout);
                         mXML.Element("start", {}, [&] {
                             mXML.Element("element", {{"name", mModel.requestRoot}}, [&] { Content(root); });
                         });
                         for (const Element& child : root.children)
                             if (child.IsContainer())
                                 mXML.Element("define", {{"name", child.name}}, [&] { Content(child); });
                         for (const Form& form : mModel.forms)
                             if (!form.pattern.empty())
                                 Definition(form);
                     });
        return mXML.Take();
    }

private:
    void Document(std::string_view text)
    {
        if (!text.empty())
            mXML.Leaf("a:documentation", {}, text);
    }

    void Definition(const Form& form)
    {
        mXML.Element("define", {{"name", form.name}}, [&] {
            Document(form.about);
            mXML.Element("data", {{"type", "string"}}, [&] {
                mXML.Leaf("param", {{"name", "pattern"}}, form.pattern);
            });
        });
    }

    void Value(const Place& place)
    {
        const Form* const form = FindForm(mModel, place.form);
        if (form == nullptr || form->pattern.empty())
            mXML.Empty("text");
        else
            mXML.Empty("ref", {{"name", form->name}});
    }

    /// \param quantifier "optional", "zeroOrMore", or empty where it must be there.
    template <class WriteContent>
    void Quantified(std::string_view quantifier, WriteContent writeContent)
    {
        if (quantifier.empty())
            writeContent();
        else
            mXML.Element(quantifier, {}, writeContent);
    }

    void Attribute(const Place& attribute, bool isNeeded)
    {
        Quantified(isNeeded ? "" : "optional", [&] {
            mXML.Element("attribute", {{"name", AttributeOf(attribute.path)}}, [&] {
                Document(attribute.about);
                Value(attribute);
            });
        });
    }

    void Content(const Element& element)
    {
        // What holds one attribute and nothing else stands for it.
        const bool isForAttribute = element.attributes.size() == 1 && element.children.empty();
        for (const Place* const attribute : element.attributes)
            Attribute(*attribute, isForAttribute);
        const auto writeChildren = [&] {
            for (const Element& child : element.children)
                Child(child, element.place == nullptr);
        };
        if (element.children.size() > 1)
            mXML.Element("interleave", {}, writeChildren);
        else
            writeChildren();
        if (element.children.empty() && element.attributes.empty())
            Value(*element.place);
    }

    void Child(const Element& element, bool isBelowRoot)
    {
        const bool isAny = element.name == "*";
        Quantified(element.place->many ? "zeroOrMore" : "optional", [&] {
            mXML.Element("element", {{"name", isAny ? "" : element.name}}, [&] {
                if (isAny)
                    mXML.Empty("anyName");
                Document(element.place->about);
                if (element.IsContainer() && (isBelowRoot || element.isLikeTheOutermost))
                    mXML.Empty("ref", {{"name", element.name}});
                else
                    Content(element);
            });
        });
    }

    const Model& mModel;
    XMLText mXML;
};

}  // namespace

std::string RequestsRng(const Model& model)
{
    return Writer(model).Write();
}

}  // namespace Protocol
