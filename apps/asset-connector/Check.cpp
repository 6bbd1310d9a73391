#include "protocol/check/Check.h"

#include "Commands.h"
#include "Input.h"

namespace AssetConnector {
namespace {

::Protocol::Json ToJson(const ::Protocol::Finding& finding)
{
    return {{"line", finding.line}, {"column", finding.column}, {"kind", finding.kind},
            {"path", finding.path}, {"what", finding.what},     {"advice", finding.advice}};
}

}  // namespace

Status Check(const std::string& file, const std::string& event, bool json, std::ostream& output)
{
    Input input(file);
    const std::vector<::Protocol::Finding> findings =
        ::Protocol::Check(::Protocol::ThisModel(), input.ReadAll(), event);
    ::Protocol::Json array = ::Protocol::Json::array();
    for (const ::Protocol::Finding& finding : findings)
        if (json)
            array.push_back(ToJson(finding));
        else
            output << ::Protocol::Describe(finding) << '\n';
    if (json)
        output << array.dump(2) << '\n';
    else if (findings.empty())
        output << "no findings\n";
    return findings.empty() ? kDone : kFailed;
}

}  // namespace AssetConnector
