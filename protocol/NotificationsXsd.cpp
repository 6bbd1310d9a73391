#include "protocol/ElementTree.h"
#include "protocol/MemberPaths.h"
#include "protocol/Schemas.h"
#include "protocol/XMLText.h"

#include <string>

namespace Protocol {
namespace {

constexpr const char* kAbout =
    "What the host tells its panels. Elements stand in this order; each may be missing where it is not set. "
    "Some "
    "notifications have one layer of encoding taken off after they were written; protocol.json tells which. "
    "Such a "
    "text may hold bare \"<\" and \"&\", may not be well-formed, and is not described here.";

class Writer
{
public:
    explicit Writer(const Model& model) : mModel(model) {}

    std::string Write()
    {
        const Element root = ElementTree(mModel, &Place::written);
        mXML.Element("xs:schema",
                     {{"xmlns:xs", "http://www.w3.org/2001/XMLSchema"}, {"version", mModel.version}}, [&] {
                         Document(kAbout);
                         mXML.Element("xs:element", {{"name", mModel.notificationRoot}},
                                      [&] { ComplexType(root, {}); });
                         for (const Element& child : root.children)
                             if (child.IsContainer())
                                 ComplexType(child, child.name);
                         for (const Form& form : mModel.forms)
                             if (!form.writtenPattern.empty())
                                 SimpleType(form);
                     });
        return mXML.Take();
    }

private:
    void Document(std::string_view text)
    {
        if (!text.empty())
            mXML.Element("xs:annotation", {}, [&] { mXML.Leaf("xs:documentation", {}, text); });
    }

    /// A member that is a string is written as it is, whatever its form says of requests.
    std::string_view TypeOf(const Place& place) const
    {
        const Form* const form = FindForm(mModel, place.form);
        const Member* const member = FindMember(mModel, place.member).member;
        const bool isString = member != nullptr && InnerType(member->type) == "string";
        return form == nullptr || form->writtenPattern.empty() || isString ? "xs:string"
                                                                           : std::string_view(form->name);
    }

    void SimpleType(const Form& form)
    {
        mXML.Element("xs:simpleType", {{"name", form.name}}, [&] {
            Document(form.about);
            mXML.Element("xs:restriction", {{"base", "xs:string"}}, [&] {
                mXML.Empty("xs:pattern", {{"value", form.writtenPattern}});
            });
        });
    }

    void ComplexType(const Element& element, std::string_view name)
    {
        mXML.Element("xs:complexType", {{"name", name}}, [&] {
            if (!element.children.empty())
                mXML.Element("xs:sequence", {}, [&] {
                    for (const Element& child : element.children)
                        Particle(child, element.place == nullptr);
                });
            for (const Place* const attribute : element.attributes)  // an element is written with its own
                mXML.Element("xs:attribute",
                             {{"name", AttributeOf(attribute->path)},
                              {"type", TypeOf(*attribute)},
                              {"use", "required"}},
                             [&] { Document(attribute->about); });
        });
    }

    /// Lists of one name that follow each other are one particle: two would not be deterministic.
    void Particle(const Element& element, bool isBelowRoot)
    {
        const Place& place = *element.place;
        const std::string most = place.many       ? "unbounded"
                                 : place.most > 1 ? std::to_string(place.most)
                                                  : std::string();
        if (element.name == "*") {
            mXML.Element(
                "xs:any", {{"processContents", "skip"}, {"minOccurs", "0"}, {"maxOccurs", most}}, [&] {
                    Document(place.about +
                             " It holds text alone, and its name may have a prefix that is not declared: "
                             "neither can be said here.");
                });
            return;
        }
        const bool isNamed = element.IsContainer() && (isBelowRoot || element.isLikeTheOutermost);
        const bool isText = !element.IsContainer() && element.attributes.empty();
        const std::string_view type = isNamed ? element.name : isText ? TypeOf(place) : std::string_view();
        mXML.Element("xs:element",
                     {{"name", element.name}, {"type", type}, {"minOccurs", "0"}, {"maxOccurs", most}}, [&] {
                         Document(place.about);
                         if (type.empty())
                             ComplexType(element, {});
                     });
    }

    const Model& mModel;
    XMLText mXML;
};

}  // namespace

std::string NotificationsXsd(const Model& model)
{
    return Writer(model).Write();
}

}  // namespace Protocol
