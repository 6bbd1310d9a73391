// Memory runs out at each place in turn: in our own code, and inside the XML library. A program of its own,
// since it replaces operator new.

#include "assetconnector/codec/ACMessageDecoder.h"
#include "assetconnector/codec/ACMessageEncoder.h"
#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/connectors/SendRoad.h"
#include "assetconnector/host/Export.h"
#include "assetconnector/host/kiln/Exceptions.h"
#include "assetconnector/host/ridge/TandemEvents.h"
#include "assetconnector/host/ridge/Utilities.h"
#include "assetconnector/message/Comparison.h"
#include "assetconnector/xml/DomLinks.h"
#include "assetconnector/xml/XMLUtilities.h"
#include "reference_host/ForwardingDispatcher.h"
#include "session/ValueReader.h"
#include "session/format/ConnectorKinds.h"
#include "tests/support/HostTest.h"
#include "tests/support/Recordings.h"
#include "tests/support/SoundTree.h"

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <memory>
#include <new>
#include <sstream>

namespace {

thread_local bool isTestThread = false;

/// How many more blocks there are for the thread of the tests, and how many are out.
struct Supply
{
    static constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

    /// \return Null when there are none left.
    void* Take(std::size_t size) noexcept
    {
        if (isTestThread && left == 0)
            return nullptr;
        if (isTestThread && left != kUnlimited)
            --left;
        ++live;
        return std::malloc(size == 0 ? 1 : size);
    }
    void Return(void* memory) noexcept
    {
        if (memory != nullptr)
            --live;
        std::free(memory);
    }

    std::size_t left = kUnlimited;
    std::atomic<std::ptrdiff_t> live{0};
};

Supply ours;  // of operator new
Supply xmls;  // of the XML library's memory manager

class XMLMemory : public xercesc::MemoryManager
{
public:
    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }
    void* allocate(XMLSize_t size) override
    {
        void* const memory = xmls.Take(size);
        if (memory == nullptr)
            throw xercesc::OutOfMemoryException();
        return memory;
    }
    void deallocate(void* memory) override { xmls.Return(memory); }
};

}  // namespace

/// The XML library loses blocks of its own when memory runs out inside it. Ours are counted, too.
extern "C" AC_API const char* __lsan_default_suppressions()
{
    return "leak:libxerces-c";
}

// Not inlined: the compiler would take malloc and free for a mistake.
AC_NOINLINE void* operator new(std::size_t size)
{
    void* const memory = ours.Take(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

AC_NOINLINE void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return ours.Take(size);
}

AC_NOINLINE void operator delete(void* memory) noexcept
{
    ours.Return(memory);
}

AC_NOINLINE void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    ours.Return(memory);
}

AC_NOINLINE void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    ours.Return(memory);
}

namespace {

std::string Contents(const std::filesystem::path& path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

AC::ACMessage RecordOf(const std::filesystem::path& path)
{
    return Session::ValueReader::Read<AC::ACMessage>(Session::ParseJson(Contents(path)));
}

class OutOfMemory : public HostTest
{
protected:
    ~OutOfMemory() override { std::cerr << "memory ran out " << failures << " times\n"; }

    /// Runs the action without a block of either supply, with one and so on, until it has enough.
    template <class Action>
    void Starve(Action action)
    {
        action();  // what stays from the first time on is no leak
        host.GetStations().DropPosted();
        for (Supply* const supply : {&ours, &xmls}) {
            bool isEnough = false;
            for (std::size_t blocks = 0; !isEnough; ++blocks) {
                const std::ptrdiff_t before = ours.live;
                const std::ptrdiff_t xmlBefore = xmls.live;
                supply->left = blocks;
                try {
                    action();
                    isEnough = true;
                } catch (const std::bad_alloc&) {
                } catch (const Kiln::NullInterfaceException&) {  // no connector was made
                } catch (const xercesc::OutOfMemoryException&) {
                }
                supply->left = Supply::kUnlimited;
                host.GetStations().DropPosted();
                ASSERT_EQ(ours.live.load(), before) << "with " << blocks << " blocks";
                failures += isEnough ? 0 : 1;
                if (supply != &xmls) {  // the XML library itself is not so careful
                    ASSERT_EQ(xmls.live.load(), xmlBefore) << "with " << blocks << " blocks";
                }
            }
        }
    }

    int failures = 0;
};

TEST_F(OutOfMemory, DecodersLeaveNothingBehind)
{
    for (const auto& file : std::filesystem::directory_iterator(TEST_DATA "/texts")) {
        if (file.path().extension() != ".xml")
            continue;
        SCOPED_TRACE(file.path());
        const UTF16String text = U(Contents(file.path()));
        Starve([&text] {
            AC::ACMessage record;
            try {
                AC::ACMessageDecoder::DecodeXMLString(text, record);
            } catch (const xercesc::OutOfMemoryException&) {
                EXPECT_TRUE(AC::Comparison::Same(record, AC::ACMessage()));
                throw;
            }
        });
    }
}

TEST_F(OutOfMemory, EncodersLeaveNothingBehind)
{
    for (const char* const name : {"everything", "partial", "nothing"}) {
        const AC::ACMessage record = RecordOf(std::string(TEST_DATA "/records/") + name + ".json");
        Starve([&record] { AC::ACMessageEncoder::EncoderACMessage(record, AC::kNotificationRoot); });
        Starve([&record] { AC::EncodeDecodedNotification(record); });
    }
}

TEST_F(OutOfMemory, LinkedTreesAreSound)
{
    const UTF16String large(10000, u'x');  // in a block of its own
    Starve([&large] {
        const std::unique_ptr<xercesc::DOMDocument, void (*)(xercesc::DOMDocument*)> document(
            Ridge::XMLUtilities::CreateDomDocument(), [](xercesc::DOMDocument* made) { made->release(); });
        xercesc::DOMElement* const root = document->createElement(u"r");
        document->appendChild(root);
        try {
            for (int i = 0; i < 100; ++i) {
                xercesc::DOMElement* const element = document->createElement(u"e");
                AC::DomLinks::AppendChild(root, element);
                for (const XMLCh* name : {u"b", u"c", u"a"})
                    AC::DomLinks::AddAttribute(element, document->createAttribute(name), large.c_str());
                AC::DomLinks::AppendChild(element, document->createTextNode(large.c_str()));
            }
        } catch (const xercesc::OutOfMemoryException&) {
            ExpectSound(document.get(), document.get());
            throw;
        }
        ExpectSound(document.get(), document.get());
    });
}

TEST_F(OutOfMemory, ConnectorsLeaveNothingBehind)
{
    const AC::ACMessage record = RecordOf(TEST_DATA "/records/everything.json");
    ReferenceHost::IdleDispatcher dispatcher;
    for (const auto& kind : Session::kConnectorKinds) {
        Starve([&] { kind.create(&dispatcher); });
        const auto connector = kind.create(&dispatcher);
        Starve([&] {
            connector->OnSaveAsset({}, {}, record.assetMediaInfoList, record.assetItemList.front(), true);
        });
        for (const UTF16String& type :
             {AC::kPlexaEventType_ReadXMPFromDisk, AC::kPlexaEventType_OpenIngestDlg}) {
            const Ridge::TandemEvent event(type, U(Contents(TEST_DATA "/texts/assets.xml")));
            Starve([&] { host.GetStations().BroadcastMessage(Ridge::GetPlexaStationID(), event); });
        }
    }
}

/// What the recorder has no memory for is lost, and the host's calls find the library as without it.
TEST(RecorderOutOfMemory, HarmsNobodyAndLeavesNothingBehind)
{
    ReferenceHost::Host host{ReferenceHost::Stations::Delivery::kByHand};
    ReferenceHost::IdleDispatcher dispatcher;
    const Ridge::TandemEvent event(
        AC::kPlexaEventType_ImportXMP,
        u"<browserMessage><fileList><filePath path='/a'/></fileList></browserMessage>");
    const Recordings recordings;
    Recording::Options options = recordings.Options();
    options.onTrouble.clear();
    std::ptrdiff_t before = 0;
    for (std::size_t run = 0; run < 2; ++run) {  // what stays from the first time on is no leak
        before = ours.live;
        {
            Recording::Recorder recorder(host.Services(), options);
            const ReferenceHost::Installation installation(recorder.Services(), host.GetStations());
            bool isEnough = false;
            for (std::size_t blocks = 0; !isEnough; ++blocks) {
                ours.left = blocks;
                try {
                    auto library = recorder.CreateIngestGlintLibraryConnector(&dispatcher);
                    const auto collection = recorder.CreateIngestMediaCollectionConnector(&dispatcher);
                    AC::AddTandemEvents();
                    host.GetStations().BroadcastMessage(Ridge::GetPlexaStationID(), event);
                    collection->OnIngestStarted({});
                    library.Clear();
                } catch (const std::bad_alloc&) {
                } catch (const Kiln::NullInterfaceException&) {  // no connector was made
                }
                isEnough = ours.left != 0;
                ours.left = Supply::kUnlimited;
                host.GetStations().DropPosted();
                host.GetStations().BroadcastMessage(Ridge::GetPlexaStationID(), event);  // nobody listens
            }
        }
        const auto files = recordings.Files();
        EXPECT_EQ(Recordings::Difference(files.back()), "");
        for (const auto& file : files)
            EXPECT_EQ(Recordings::Difference(file).substr(0, 4), file == files.back() ? "" : "lost") << file;
    }
    EXPECT_EQ(ours.live.load(), before);
}

}  // namespace

int main(int argc, char** argv)
{
    isTestThread = true;
    ::testing::InitGoogleTest(&argc, argv);
    XMLMemory memory;
    xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, nullptr, &memory);
    const int result = RUN_ALL_TESTS();
    xercesc::XMLPlatformUtils::Terminate();
    return result;
}
