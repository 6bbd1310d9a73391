#include "desk/play/Pairs.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Desk {
namespace {

constexpr std::string_view kForm = "hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh";
constexpr std::size_t kFirstHyphen = 8;

bool IsHexadecimal(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

std::string LowerCase(std::string guid)
{
    for (char& c : guid)
        if (c >= 'A' && c <= 'F')
            c = static_cast<char>(c - 'A' + 'a');
    return guid;
}

}  // namespace

void Pairs::AddGuid(std::string ofFile, std::string live)
{
    mGuids[LowerCase(std::move(ofFile))] = std::move(live);
}

std::string Pairs::WithLiveGuids(std::string text) const
{
    if (mGuids.empty())
        return text;
    for (std::size_t hyphen = text.find('-', kFirstHyphen); hyphen != std::string::npos;) {
        const std::size_t begin = hyphen - kFirstHyphen;
        std::size_t next = hyphen + 1;
        if (const std::string guid = text.substr(begin, kForm.size()); IsGuid(guid)) {
            if (const auto found = mGuids.find(LowerCase(guid)); found != mGuids.end())
                text.replace(begin, kForm.size(), found->second);
            next = begin + kForm.size() + kFirstHyphen;
        }
        hyphen = text.find('-', next);
    }
    return text;
}

std::string Pairs::LiveBrowserID(const std::string& ofFile) const
{
    const auto found = mBrowserIDs.find(ofFile);
    return found == mBrowserIDs.end() ? ofFile : found->second;
}

std::string Pairs::WithLiveBrowserID(std::string xml) const
{
    const std::size_t tag = xml.find("<browserID");
    const std::size_t begin = tag == std::string::npos ? tag : xml.find_first_of("\"'>", tag);
    if (begin == std::string::npos || xml[begin] == '>')
        return xml;
    const std::size_t end = xml.find(xml[begin], begin + 1);
    if (end != std::string::npos)
        xml.replace(begin + 1, end - begin - 1, LiveBrowserID(xml.substr(begin + 1, end - begin - 1)));
    return xml;
}

bool Pairs::IsGuid(std::string_view text)
{
    return std::equal(text.begin(), text.end(), kForm.begin(), kForm.end(),
                      [](char c, char form) { return form == '-' ? c == '-' : IsHexadecimal(c); });
}

}  // namespace Desk
