#include "protocol/check/Check.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "protocol/check/Context.h"
#include "protocol/check/EventRules.h"
#include "protocol/check/ItemRules.h"
#include "protocol/check/NameRules.h"
#include "protocol/check/ValueRules.h"

namespace Protocol {

namespace {

using namespace Checking;

/// Calls rule(context, element) for each element that is read.
template <class Rule>
void ForEachRead(Context& context, Rule rule)
{
    for (std::size_t element = 0; element < context.tree.elements.size(); ++element)
        if (context.slots[element] != nullptr)
            rule(context, element);
}

/// First what each element says for itself, which also finds out which are read; then what they say together.
void CheckElements(Context& context)
{
    context.slots.assign(context.tree.elements.size(), nullptr);
    context.isReported.assign(context.tree.elements.size(), false);
    context.slots.front() = &context.shape.Root();
    ForEachRead(context, [](Context& each, std::size_t element) {
        CheckAttributes(each, element);
        CheckAttributeValues(each, element);
        if (CheckText(each, element))
            CheckChildren(each, element);
    });
    ForEachRead(context, CheckOrder);
    ForEachRead(context, CheckKeys);
    ForEachRead(context, CheckRequired);
    ForEachRead(context, CheckCompanions);
}

}  // namespace

std::vector<Finding> Check(const Model& model, const std::string& text, const std::string& eventBytes)
{
    // Bytes that are no UTF-8 become characters that findings can quote.
    const std::string event = ferrite::utility::UTF16to8(ferrite::utility::UTF8to16(eventBytes));
    const TextTree tree = ReadTree(text);
    const Quoting quoting(tree);
    Report report;
    const AC::TextPlace root = tree.elements.empty() ? AC::TextPlace() : tree.elements.front().place;
    const std::optional<Remark> remark = event.empty() ? std::nullopt : JudgeEvent(model, event, quoting);
    if (remark)
        report.Add(root, "", *remark);
    if (tree.elements.empty()) {
        report.Add(
            {tree.error.line, tree.error.column}, "",
            {Kind::kNotWellFormed,
             "the text does not parse: " + Quoting::Line(ferrite::utility::UTF16to8(tree.error.reason)),
             "mend it: the host drops the request"});
        return report.Take();
    }
    const Shape shape(model);
    const NameBook names(shape);
    Context context{model, shape, names, tree, quoting};
    context.report = std::move(report);
    CheckElements(context);
    if (!event.empty() && !remark)
        CheckRequest(context, *FindEvent(model, event));
    return context.report.Take();
}

std::string Describe(const Finding& finding)
{
    return PlaceText({finding.line, finding.column}) + ": " + finding.what + "; " + finding.advice;
}

}  // namespace Protocol
