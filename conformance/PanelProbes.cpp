#include "conformance/PanelProbes.h"

#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/plexa/PlexaManager.h"
#include "assetconnector/host/ridge/Utilities.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <algorithm>

namespace Conformance {

UTF16String UniqueType()
{
    return ferrite::utility::UTF8to16(UniqueName());
}

Registration::Registration(const UTF16String& type) : mType(type)
{
    PlexaManager::AddTandemEventListener(mType, nullptr);
}

Registration::~Registration()
{
    try {
        PlexaManager::RemoveTandemEventListener(mType, nullptr);
    } catch (...) {  // a check of its own looks at that
    }
}

Panel::Panel(const Context& context) : mSubject(context.GetSubject()), mReceiver(LoggedAs("", mLog))
{
    Context::Require(mSubject.raisePanelEvent, "raisePanelEvent");
    mReceiver.Listen(Ridge::GetPlexaStationID());
}

void Panel::Raise(const UTF16String& type, const UTF16String& data) const
{
    try {
        mSubject.raisePanelEvent(type, data);
    } catch (const Thrown&) {
    }
}

Notifications::Notifications(const Context& context, Action action)
    : mSetPanel(context.GetSubject().setPanel), mLog(boost::make_shared<Log>())
{
    Context::Require(mSetPanel, "setPanel");
    mSetPanel([log = mLog, action = std::move(action)](const std::string& type, const std::string& data) {
        log->Add(type + ' ' + data);
        if (action)
            action(type);
    });
}

Notifications::~Notifications()
{
    try {
        mSetPanel({});
    } catch (...) {  // the check has told what it found
    }
}

void Notifications::ExpectAll(Context& context, const std::string& what, const Log::Texts& expected) const
{
    context.WaitUntil([this, &expected] { return mLog->Entries().size() >= expected.size(); });
    context.ExpectEqual(what, expected, mLog->Entries());
}

bool Notifications::WaitFor(Context& context, const UTF16String& type) const
{
    const std::string begin = ferrite::utility::UTF16to8(type) + ' ';
    return context.WaitUntil([this, &begin] {
        const Log::Texts entries = mLog->Entries();
        return std::any_of(entries.begin(), entries.end(), [&begin](const std::string& entry) {
            return entry.compare(0, begin.size(), begin) == 0;
        });
    });
}

}  // namespace Conformance
