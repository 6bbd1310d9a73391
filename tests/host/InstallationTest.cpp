#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "reference_host/Host.h"

#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>

#include <stdexcept>

namespace {

TEST(Host, MustBeInstalledOnce)
{
    EXPECT_THROW(AC::AddTandemEvents(), std::logic_error);
    EXPECT_THROW(AC::CreateIngestGlintLibraryConnector(nullptr), std::logic_error);
    ReferenceHost::Host host(ReferenceHost::Stations::Delivery::kByHand);
    const ReferenceHost::Installation installation(host);
    EXPECT_THROW(AC::InstallHost(host.Services()), std::logic_error);
    AC::UninstallHost();
    EXPECT_THROW(AC::InstallHost(host.Services(), AC::kInterfaceVersion + 1), std::logic_error);
    AC::InstallHost(host.Services());
    EXPECT_NO_THROW(AC::AddTandemEvents());
}

TEST(Host, InitialisesTheXMLPlatformFirst)
{
    ReferenceHost::Host host(ReferenceHost::Stations::Delivery::kByHand);
    xercesc::XMLPlatformUtils::Terminate();  // what the tests' main began
    AC::ACMessage message;
    EXPECT_THROW(AC::InstallHost(host.Services()), std::logic_error);
    EXPECT_THROW(AC::ACMessageDecoder::DecodeXMLString(u"<a/>", message), std::logic_error);
    EXPECT_THROW(AC::ACMessageEncoder::EncoderACMessage(message, u"a"), std::logic_error);
    xercesc::XMLPlatformUtils::Initialize();
    const ReferenceHost::Installation installation(host);
    EXPECT_TRUE(AC::ACMessageDecoder::DecodeXMLString(u"<a/>", message));
}

}  // namespace
