// Any text as a session file: it plays, or it is refused with an error that names the line.

#include "session/SessionFile.h"

#include "assetconnector/host/XMLPlatform.h"
#include "fuzz/FuzzHost.h"

#include <sstream>

namespace {

class Silent final : public Session::Observer
{
public:
    void OnInput(const Session::Line& /*line*/, const Session::Json& /*json*/,
                 const Session::BoundCall& /*input*/) override
    {
    }
    void OnEffect(const std::string& effect) override { Require(Session::Json::parse(effect).is_object()); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const AC::XMLPlatform platform;
    std::istringstream file(std::string(reinterpret_cast<const char*>(data), size));
    Silent observer;
    try {
        Session::PlaySession(file, Session::Style::kSession, observer);
    } catch (const Session::SessionError& error) {
        Require(error.LineNumber() > 0 && *error.what() != 0);
    }
    return 0;
}
