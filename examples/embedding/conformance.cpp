// Checks the services that this host brings and takes. What is not given, such as a way to see what reaches a
// panel, leaves checks out, and the report says which.

#include "Panels.h"
#include "conformance/Main.h"
#include "reference_host/Host.h"

#include <sstream>

int main(int argc, char** argv)
{
    std::ostringstream page;
    Panels panels(page);
    ReferenceHost::Stations stations(ReferenceHost::Stations::Delivery::kByHand);
    ReferenceHost::IngestLibrary library;
    ReferenceHost::Files files;
    ReferenceHost::Texts texts;
    ReferenceHost::Memory memory;

    Conformance::Subject subject({panels, stations, library, files, texts, memory});
    subject.raisePanelEvent = [&panels](const UTF16String& type, const UTF16String& data) {
        panels.Raise(type, data);
    };
    subject.waitForUserInterface = [&stations] { stations.DeliverPosted(); };
    subject.dropPosted = [&stations] { stations.DropPosted(); };
    return Conformance::Main(argc, argv, subject);
}
