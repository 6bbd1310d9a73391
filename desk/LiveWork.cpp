#include "desk/LiveWork.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "desk/LiveHost.h"

namespace Desk {

using ferrite::utility::Guid;

std::optional<Origin> LiveWork::AskerOf(const std::string& message) const
{
    const auto found = mAskers.find(Guid::StringToGUID(ferrite::utility::UTF8to16(message)));
    return found == mAskers.end() ? std::nullopt : std::optional(found->second);
}

void LiveWork::Handle(const Origin& asker, const std::string& type, const std::string& xml)
{
    mAnswers.Answer(*mHost, asker, type, xml);
}

void LiveWork::Remember(const Guid& message)
{
    const Origin* const asker = mHost->Asker();
    if (asker == nullptr || message.IsZero())
        return;
    if (mAskers.try_emplace(message, *asker).second)
        mOrder.push_back(message);
    if (mOrder.size() > kMostAskers) {
        mAskers.erase(mOrder.front());
        mOrder.pop_front();
    }
}

}  // namespace Desk
