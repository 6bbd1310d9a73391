#include "desk/LiveWork.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "desk/LiveHost.h"

namespace Desk {

std::optional<Origin> LiveWork::AskerOf(const std::string& message) const
{
    const auto found = mAskers.find(message);
    return found == mAskers.end() ? std::nullopt : std::optional(found->second);
}

void LiveWork::Handle(const Origin& asker, const std::string& type, const std::string& xml)
{
    mAnswers.Answer(*mHost, asker, type, xml);
}

void LiveWork::Remember(const ferrite::utility::Guid& message)
{
    const Origin* const asker = mHost->Asker();
    if (asker == nullptr)
        return;
    const std::string id = ferrite::utility::UTF16to8(message.AsString());
    if (mAskers.insert_or_assign(id, *asker).second)
        mOrder.push_back(id);
    if (mOrder.size() > kMostAskers) {
        mAskers.erase(mOrder.front());
        mOrder.pop_front();
    }
}

}  // namespace Desk
