// The desk as a browser and everybody else reach it: over bare sockets.

#include "assetconnector/connectors/IngestMediaCollectionConnector.h"
#include "assetconnector/host/kiln/Listener.h"
#include "assetconnector/host/kiln/StationUtils.h"
#include "desk/RunningDesk.h"
#include "desk/Server.h"
#include "tests/desk/Frames.h"
#include "tests/desk/RawClient.h"
#include "tests/desk/WorkLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Desk::Closing;
using Json = nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kID = "7a5c0001-0000-4000-8000-000000000001";
constexpr int kText = 1;
constexpr int kBinary = 2;
constexpr int kPing = 9;
constexpr std::chrono::milliseconds kSoon = 200ms;

/// A folder with pages, beside which lies what must not be served.
class PagesFolder
{
public:
    PagesFolder()
    {
        fs::remove_all(mTop);
        fs::create_directories(Pages() / "client");
        fs::create_directory(mTop / "beside");
        Write("pages/index.html", "the page");
        Write("pages/client/index.js", "the script");
        Write("pages/.hidden.js", "secret");
        Write("pages/notes.txt", "secret");
        Write("secret.js", "secret");
        Write("beside/secret.js", "secret");
        fs::create_directory(Pages() / "folder.js");
        fs::create_symlink("../secret.js", Pages() / "link.js");
        fs::create_symlink("../beside", Pages() / "linked");
        fs::create_symlink("client/index.js", Pages() / "inside.js");
        mkfifo((Pages() / "pipe.js").c_str(), 0600);
    }
    ~PagesFolder() { fs::remove_all(mTop); }
    PagesFolder(const PagesFolder&) = delete;
    PagesFolder& operator=(const PagesFolder&) = delete;

    fs::path Pages() const { return mTop / "pages"; }

private:
    void Write(const char* path, const char* text) const { std::ofstream(mTop / path) << text; }

    const fs::path mTop = fs::temp_directory_path() / ("desk-test-" + std::to_string(getpid()));
};

/// What a request says, beside its target.
struct Visit
{
    std::string method = "GET";
    std::optional<std::string> host;  ///< The right one without it.
    std::string fields;
};

class ServerTest : public ::testing::Test
{
protected:
    ServerTest() { options.pages = folder.Pages(); }

    void Open()
    {
        desk.emplace(options, [this](const Desk::RunningDesk::HostNeeds& needs) {
            return std::make_unique<Desk::LiveHost>(work, needs.recording);
        });
    }

    const Desk::Access& Access() const { return desk->GetAccess(); }

    std::string Head(const std::string& target, const Visit& visit = {}) const
    {
        return visit.method + " " + target +
               " HTTP/1.1\r\nHost: " + visit.host.value_or(Access().Authority()) + "\r\n" + visit.fields +
               "\r\n";
    }

    RawClient::Answer Ask(const std::string& bytes, bool hasBody = true) const
    {
        RawClient client(desk->Port());
        client.Send(bytes);
        return client.ReadAnswer(hasBody);
    }

    RawClient::Answer BeginSession() const
    {
        return Ask(
            Head("/session", {"POST", {}, "Desk-Token: " + Access().Token() + "\r\nContent-Length: 0\r\n"}));
    }

    /// \return A Cookie header, as the browser has it from the token.
    std::string Cookie() const
    {
        const std::string cookie = BeginSession().Field("Set-Cookie");
        return "Cookie: theme=dark; " + cookie.substr(0, cookie.find(';')) + "\r\n";
    }

    std::string Origin() const { return "Origin: " + Access().Origin() + "\r\n"; }

    static std::string Upgrade()
    {
        return "Connection: Upgrade\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
               "Sec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n";
    }

    /// \return A client whose WebSocket is open.
    RawClient OpenSocket() const
    {
        RawClient client(desk->Port());
        client.Send(Head("/socket", {"GET", {}, Upgrade() + Origin() + Cookie()}));
        EXPECT_EQ(client.ReadAnswer().status, 101);
        return client;
    }

    /// \return The same, that has said its hello and read the welcome and the first state.
    RawClient OpenPanel(const std::string& kind = "library") const
    {
        RawClient client = OpenSocket();
        Say(client, PageFrames::Hello(kind));
        EXPECT_THAT(Read(client), HasSubstr("welcome"));
        EXPECT_THAT(Read(client), HasSubstr("state"));
        return client;
    }

    static void Say(RawClient& client, const std::string& text)
    {
        client.Send(RawClient::MakeFrame(kText, text));
    }

    static std::string Read(RawClient& client)
    {
        const auto frame = client.ReadFrame();
        return frame && frame->opcode == kText ? frame->payload : "";
    }

    /// \return The next frame with this member.
    static Json ReadWith(RawClient& client, const char* member)
    {
        while (const auto frame = client.ReadFrame())
            if (frame->opcode == kText)
                if (const Json json = Json::parse(frame->payload); json.contains(member))
                    return json;
        return Json::object();
    }

    /// \return Whether in the end so many panels are connected.
    static bool ReadUntilPanels(RawClient& client, std::size_t count)
    {
        for (;;) {
            const Json frame = ReadWith(client, "state");
            if (frame.empty())
                return false;
            if (frame["state"]["panels"].size() == count)
                return true;
        }
    }

    /// The desk works on: a page is told what is new.
    void ExpectItWorks()
    {
        RawClient panel = OpenPanel();
        desk->Post([](Desk::Host& host) { host.Callback("OnIngestStarted", {kID}, std::nullopt); });
        EXPECT_EQ(ReadWith(panel, "notify").value("notify", ""), "com.velmo.host.notification.StartIngest");
        panel.Send(RawClient::MakeFrame(8, "\x03\xe8"));
        EXPECT_EQ(panel.ReadToClose(), 1000);
    }

    PagesFolder folder;
    WorkLog work;
    Desk::DeskOptions options;
    std::optional<Desk::RunningDesk> desk;
};

TEST_F(ServerTest, ServesPagesUnderAStrictPolicy)
{
    Open();
    const RawClient::Answer page = Ask(Head("/"));
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.body, "the page");
    EXPECT_EQ(page.Field("Content-Type"), "text/html; charset=utf-8");
    const RawClient::Answer missing = Ask(Head("/missing.html"));
    EXPECT_EQ(missing.status, 404);
    for (const RawClient::Answer& answer : {page, missing}) {
        const std::string policy = answer.Field("Content-Security-Policy");
        for (const char* const part :
             {"default-src 'none'; script-src 'self';", "connect-src 'self' ws://", "frame-ancestors 'none'",
              "require-trusted-types-for 'script'; trusted-types 'none'", "report-uri /csp-report"})
            EXPECT_THAT(policy, HasSubstr(part));
        EXPECT_THAT(policy, Not(HasSubstr("unsafe")));
        EXPECT_EQ(answer.Field("Cross-Origin-Resource-Policy"), "same-origin");
        EXPECT_EQ(answer.Field("X-Content-Type-Options"), "nosniff");
        EXPECT_EQ(answer.Field("Referrer-Policy"), "no-referrer");
    }
    const RawClient::Answer head = Ask(Head("/client/index.js", {"HEAD", {}, {}}), false);
    EXPECT_EQ(head.Field("Content-Length"), "10");
    EXPECT_EQ(Ask(Head("/inside.js")).body, "the script");
    RawClient keeps(desk->Port());
    for (int i = 0; i < 3; ++i) {
        keeps.Send(Head("/"));
        EXPECT_EQ(keeps.ReadAnswer().body, "the page");
    }
}

TEST_F(ServerTest, NoPathLeavesTheFolder)
{
    Open();
    const std::string outside = (folder.Pages().parent_path() / "secret.js").string();
    for (const std::string& target : std::vector<std::string>{"/../secret.js",
                                                              "/client/../../secret.js",
                                                              "/./../secret.js",
                                                              "/%2e%2e/secret.js",
                                                              "/..%2fsecret.js",
                                                              "/%252e%252e/secret.js",
                                                              "/%c0%ae%c0%ae/secret.js",
                                                              "/..\\secret.js",
                                                              "/..%5csecret.js",
                                                              "/....//secret.js",
                                                              "/..;/secret.js",
                                                              "/" + outside,
                                                              "//" + outside.substr(1),
                                                              "file://" + outside,
                                                              outside,
                                                              "../secret.js",
                                                              "/link.js",
                                                              "/linked/secret.js",
                                                              "/.hidden.js",
                                                              "/notes.txt",
                                                              "/folder.js",
                                                              "/pipe.js",
                                                              "/secret.js",
                                                              "/index.html%00.js",
                                                              "xindex.html",
                                                              "/client//index.js",
                                                              "/client/index%2ejs",
                                                              "/client/",
                                                              "/client",
                                                              "*"}) {
        const RawClient::Answer answer = Ask(Head(target));
        EXPECT_EQ(answer.status, 404) << target;
        EXPECT_THAT(answer.body, Not(HasSubstr("secret"))) << target;
    }
    EXPECT_EQ(Ask(Head("/client/index.js")).status, 200);
}

TEST_F(ServerTest, AnswersToOneNameAlone)
{
    Open();
    const std::string port = std::to_string(desk->Port());
    const std::string name = Access().Authority().substr(0, Access().Authority().find(':'));
    for (const std::string& host :
         {"127.0.0.1:" + port, "localhost:" + port, "[::1]:" + port, "evil.example:" + port, name,
          name + ":" + std::to_string(desk->Port() ^ 1), "x." + name + ":" + port, name + ".:" + port,
          "user@" + name + ":" + port, std::string()}) {
        EXPECT_EQ(Ask(Head("/", {"GET", host, {}})).status, 421) << host;
        EXPECT_EQ(Ask(Head("/socket", {"GET", host, Upgrade() + Origin() + Cookie()})).status, 421) << host;
    }
    EXPECT_EQ(Ask("GET / HTTP/1.1\r\n\r\n").status, 421);
    EXPECT_EQ(Ask("GET / HTTP/1.0\r\n\r\n").status, 421);
    EXPECT_EQ(Ask(Head("/", {"GET", {}, "Host: evil.example\r\n"})).status, 421);
}

TEST_F(ServerTest, GivesTheCookieForTheTokenAlone)
{
    Open();
    const RawClient::Answer answer = BeginSession();
    EXPECT_EQ(answer.status, 200);
    EXPECT_THAT(answer.Field("Set-Cookie"), HasSubstr("; Secure; HttpOnly; SameSite=Strict"));
    EXPECT_THAT(answer.header + answer.body, Not(HasSubstr(Access().Token())));

    EXPECT_EQ(Ask(Head("/session", {"GET", {}, Cookie()})).status, 200);

    std::string wrong = Access().Token();
    wrong.back() = wrong.back() == '0' ? '1' : '0';
    const std::string right = "Desk-Token: " + Access().Token() + "\r\n";
    struct Row
    {
        const char* name;
        std::string method, fields;
        int status;
    };
    for (const Row& row : {
             Row{"none", "POST", "", 403},
             Row{"empty", "POST", "Desk-Token: \r\n", 403},
             Row{"wrong", "POST", "Desk-Token: " + wrong + "\r\n", 403},
             Row{"cut", "POST", "Desk-Token: " + wrong.substr(1) + "\r\n", 403},
             Row{"more", "POST", "Desk-Token: " + Access().Token() + "0\r\n", 403},
             Row{"the cookie", "POST", "Desk-Token: " + answer.Field("Set-Cookie").substr(5, 64) + "\r\n",
                 403},
             Row{"another method", "GET", right, 403},
             Row{"a question beforehand", "OPTIONS", right, 405},
             Row{"another page", "POST", right + "Origin: https://evil.example\r\n", 403},
             Row{"no page", "POST", right + "Origin: null\r\n", 403},
         }) {
        const RawClient::Answer refused = Ask(Head("/session", {row.method, {}, row.fields}));
        EXPECT_EQ(refused.status, row.status) << row.name;
        EXPECT_THAT(refused.Field("Set-Cookie"), IsEmpty()) << row.name;
    }
    EXPECT_EQ(Ask(Head("/?token=" + Access().Token())).status, 404) << "a token in a query is no good";
}

class NobodyHears : public Desk::Connections
{
    void OnText(const Desk::LinkRef& /*link*/, std::string /*text*/) override {}
    void OnReport(const std::string& /*report*/) override {}
    void OnGone(const Desk::LinkRef& /*link*/, bool /*isForGood*/) override {}
};

TEST_F(ServerTest, ASocketIsForPagesOfThisDesk)
{
    Open();
    NobodyHears nobody;
    const Desk::Server other(nobody, Desk::Site(folder.Pages(), {}), 0, {});
    const std::string othersCookie =
        "Cookie: " + other.GetAccess().SetCookie().substr(0, other.GetAccess().SetCookie().find(';')) +
        "\r\n";
    const std::string othersOrigin = "Origin: " + other.GetAccess().Origin() + "\r\n";
    const std::string secure = "Origin: https://" + Access().Authority() + "\r\n";
    struct Row
    {
        const char* name;
        std::string fields;
        int status;
        std::string target = "/socket";
    };
    for (const Row& row : {
             Row{"right", Origin() + Cookie(), 101},
             Row{"no cookie", Origin(), 403},
             Row{"an empty cookie", Origin() + "Cookie: desk=\r\n", 403},
             Row{"a wrong cookie", Origin() + "Cookie: desk=" + std::string(64, '0') + "\r\n", 403},
             Row{"the token as cookie", Origin() + "Cookie: desk=" + Access().Token() + "\r\n", 403},
             Row{"another desk's cookie", Origin() + othersCookie, 403},
             Row{"another name's cookie", Origin() + "Cookie: risk=" + Cookie().substr(25), 403},
             Row{"no origin", Cookie(), 403},
             Row{"no page", "Origin: null\r\n" + Cookie(), 403},
             Row{"a foreign page", "Origin: https://evil.example\r\n" + Cookie(), 403},
             Row{"another scheme", secure + Cookie(), 403},
             Row{"another desk's page", othersOrigin + Cookie(), 403},
             Row{"two origins", Origin() + othersOrigin + Cookie(), 403},
             Row{"another place", Origin() + Cookie(), 404, "/"},
         })
        EXPECT_EQ(Ask(Head(row.target, {"GET", {}, Upgrade() + row.fields})).status, row.status) << row.name;

    EXPECT_EQ(Ask(Head("/socket", {"GET", {}, Upgrade() + Origin() + Cookie()}) +
                  RawClient::MakeFrame(kText, PageFrames::Hello("library")))
                  .status,
              400)
        << "who cannot wait for the answer is no browser";
    RawClient client(other.Port());
    client.Send(Head("/socket", {"GET", {}, Upgrade() + Origin() + Cookie()}));
    EXPECT_EQ(client.ReadAnswer().status, 421) << "what is right here is wrong at another desk";
    RawClient disguised(other.Port());
    disguised.Send(
        Head("/socket", {"GET", other.GetAccess().Authority(), Upgrade() + othersOrigin + Cookie()}));
    EXPECT_EQ(disguised.ReadAnswer().status, 403);
}

TEST_F(ServerTest, RefusesWhatIsNoRequest)
{
    Open();
    EXPECT_EQ(Ask("hello\r\n\r\n").status, 400);
    EXPECT_EQ(Ask(std::string(100, '\0') + "\r\n\r\n").status, 400);
    EXPECT_EQ(Ask(Head("/", {"GET", {}, "X: " + std::string(9000, 'x') + "\r\n"})).status, 431);
    EXPECT_EQ(Ask(Head("/session", {"POST", {}, "Content-Length: 999999\r\n"})).status, 413);
    EXPECT_EQ(Ask(Head("/", {"PUT", {}, "Content-Length: 0\r\n"})).status, 405);
    ExpectItWorks();
}

TEST_F(ServerTest, EndsConnectionsThatDoNotComeToThePoint)
{
    // Each with a desk of its own, so that a slow machine meets no limit that it should not.
    options.server.close = kSoon;
    options.server.request = kSoon;
    Open();
    RawClient silent(desk->Port());
    EXPECT_TRUE(silent.ReadToEnd());
    RawClient half(desk->Port());
    half.Send("GET / HTTP/1.1\r\nHo");
    EXPECT_TRUE(half.ReadToEnd());
    desk.reset();

    options.server.request = Desk::ServerLimits().request;
    options.server.hello = kSoon;
    Open();
    RawClient noHello = OpenSocket();
    EXPECT_EQ(noHello.ReadToClose(), Closing::kPolicy);
    desk.reset();

    options.server.hello = Desk::ServerLimits().hello;
    options.server.idle = 5 * kSoon;
    Open();
    RawClient halfFrame = OpenPanel();
    halfFrame.Send(RawClient::MakeFrame(kText, "{", 1000));
    EXPECT_TRUE(halfFrame.ReadToEnd());
    ExpectItWorks();
}

TEST_F(ServerTest, HoldsNoMoreConnectionsThanItsLimits)
{
    options.server.mostVisitors = 3;
    options.server.mostPages = 2;
    Open();
    {
        std::vector<RawClient> panels;
        panels.push_back(OpenPanel());
        panels.push_back(OpenPanel());
        EXPECT_EQ(Ask(Head("/socket", {"GET", {}, Upgrade() + Origin() + Cookie()})).status, 503);
        std::vector<RawClient> visitors;
        for (int i = 0; i < 3; ++i) {
            visitors.emplace_back(desk->Port());
            visitors.back().Send(Head("/"));
            EXPECT_EQ(visitors.back().ReadAnswer().status, 200);
        }
        RawClient tooMany(desk->Port());
        EXPECT_TRUE(tooMany.ReadToEnd());
    }
}

TEST_F(ServerTest, ClosesOnFramesThatBreakTheRules)
{
    options.server.largestFrame = 10000;
    options.server.rate = {20, 0.001};
    Open();
    const std::string unmasked = {'\x81', '\x01', 'x'};
    std::string flood, pings;
    for (int i = 0; i < 100; ++i) {
        flood += RawClient::MakeFrame(kText, "{}");
        pings += RawClient::MakeFrame(kPing, "");
    }
    struct Row
    {
        const char* name;
        std::string bytes;
        int code;
    };
    for (const Row& row : {
             Row{"too large", RawClient::MakeFrame(kText, std::string(10001, ' ')), 1009},
             Row{"says that it is too large", RawClient::MakeFrame(kText, "", 1ull << 40), 1009},
             Row{"a length without end", RawClient::MakeFrame(kText, "", ~0ull), 1009},
             Row{"too large in pieces",
                 std::string("\x01\x80\0\0\0\0", 6) + RawClient::MakeFrame(0, std::string(10001, ' ')), 1009},
             Row{"no UTF-8", RawClient::MakeFrame(kText, "{\"a\": \"\xc3\x28\"}"), 1007},
             Row{"half a character", RawClient::MakeFrame(kText, "\xf0\x9f\x98"), 1007},
             Row{"a surrogate", RawClient::MakeFrame(kText, "\xed\xa0\x80"), 1007},
             Row{"binary", RawClient::MakeFrame(kBinary, "{}"), Closing::kTextOnly},
             Row{"no mask", unmasked, 1002},
             Row{"an unknown kind", RawClient::MakeFrame(5, ""), 1002},
             Row{"a long ping", RawClient::MakeFrame(kPing, std::string(126, 'x')), 1002},
             Row{"no JSON", RawClient::MakeFrame(kText, "<x/>"), Closing::kPolicy},
             Row{"a flood", flood, Closing::kPolicy},
             Row{"a flood of pings", pings, Closing::kPolicy},
         }) {
        RawClient panel = OpenPanel();
        panel.Send(row.bytes);
        EXPECT_EQ(panel.ReadToClose(), row.code) << row.name;
    }
    ExpectItWorks();
}

TEST_F(ServerTest, APageThatDoesNotReadHoldsUpNobody)
{
    options.server.link.mostBytes = std::size_t{5} << 20;  // two of the frames below
    options.server.close = kSoon;
    Open();
    const RawClient slow = OpenPanel();
    RawClient other = OpenPanel();
    const std::string longText(std::size_t{1} << 20, 'x');
    for (int i = 1; i <= 20; ++i) {
        desk->Post([&longText](Desk::Host& host) {
            host.Callback("OnTranscodeStatus", {kID, kID, -1, longText, longText}, Desk::PanelKind::kLibrary);
        });
        ASSERT_EQ(ReadWith(other, "notify").value("number", 0), i);
    }
    const RawClient third = OpenPanel();
    EXPECT_TRUE(ReadUntilPanels(other, 2)) << "the slow page was dropped";
}

TEST_F(ServerTest, HostileTextsDoNothing)
{
    Open();
    RawClient panel = OpenPanel();
    std::string nested, bomb = "<!DOCTYPE a [<!ENTITY x0 \"x\">";
    for (int i = 0; i < 100000; ++i)
        nested += "<a>";
    for (int i = 1; i < 40; ++i)
        bomb += "<!ENTITY x" + std::to_string(i) + " \"&x" + std::to_string(i - 1) + ";&x" +
                std::to_string(i - 1) + ";\">";
    std::string attributes = "<browserMessage";
    for (int i = 0; i < 20000; ++i)
        attributes += " a" + std::to_string(i) + "=\"\"";
    std::uint64_t number = 0;
    for (const std::string& xml :
         {std::string(), std::string("<"), std::string("<browserMessage>"), std::string(1000, '\0'), nested,
          bomb + "]><browserMessage>&x39;</browserMessage>", attributes + "/>",
          std::string("<!DOCTYPE a SYSTEM \"file:///etc/passwd\"><browserMessage/>"),
          std::string("<!DOCTYPE a [<!ENTITY x SYSTEM \"file:///dev/zero\">]><browserMessage>&x;"
                      "</browserMessage>"),
          std::string("<browserMessage>&x;</browserMessage>"), std::string("\xef\xbf\xbf"),
          std::string("<browserMessage>\x01</browserMessage>")}) {
        Say(panel, PageFrames::Raise("TransferRequest", xml, ++number));
        EXPECT_EQ(ReadWith(panel, "heard").value("heard", 0u), number) << xml.substr(0, 80);
    }
    Say(panel, PageFrames::Raise("TransferRequest", "<browserMessage/>", ++number));
    EXPECT_EQ(ReadWith(panel, "heard").value("heard", 0u), number);
    desk->Run(
        [this](Desk::Host&) { EXPECT_THAT(work.Lines(), ElementsAre("library StartTransfer for panel-1")); });
}

TEST_F(ServerTest, APageThatEndsDoesNotGoOn)
{
    for (const bool ends : {false, true}) {
        Open();
        RawClient witness = OpenPanel();
        std::string session;
        {
            RawClient panel = OpenSocket();
            Say(panel, PageFrames::Hello("library"));
            session = ReadWith(panel, "welcome")["welcome"]["session"];
            panel.Send(ends ? RawClient::MakeFrame(8, "\x03\xe8") : "");
            EXPECT_EQ(ends ? panel.ReadToClose() : 1000, 1000);
        }
        EXPECT_TRUE(ReadUntilPanels(witness, 1));
        RawClient again = OpenSocket();
        Say(again, PageFrames::HelloAgain("library", session, 0));
        EXPECT_EQ(ReadWith(again, "welcome")["welcome"]["resumed"], !ends);
    }
}

/// Posts one more message from inside the first delivery.
class Repeater : public Kiln::Listener
{
public:
    Repeater() { Kiln::StationUtils::AddListener(AC::GetMCAssetConnectorStation(), this); }
    ~Repeater() override { EndSubscriptions(); }

    std::future<std::thread::id> Second() { return mSecond.get_future(); }

private:
    void OnStationMessage(const Kiln::Message& message) override
    {
        if (++mCount == 1)
            Kiln::StationUtils::PostMessageToUIThread(AC::GetMCAssetConnectorStation(), message, true);
        else
            mSecond.set_value(std::this_thread::get_id());
    }

    int mCount = 0;
    std::promise<std::thread::id> mSecond;
};

TEST_F(ServerTest, PostedMessagesComeOnTheHostsThread)
{
    Open();
    std::optional<Repeater> repeater;
    std::future<std::thread::id> second;
    std::thread::id thread;
    desk->Run([&](Desk::Host& host) {
        thread = std::this_thread::get_id();
        second = repeater.emplace().Second();
        host.Callback("OnIngestStarted", {kID}, std::nullopt);
    });
    ASSERT_EQ(second.wait_for(10s), std::future_status::ready);
    EXPECT_EQ(second.get(), thread);
    desk->Run([&](Desk::Host&) { repeater.reset(); });
}

TEST_F(ServerTest, EndsWithAWord)
{
    options.server.close = kSoon;
    Open();
    RawClient panel = OpenPanel();
    const RawClient neverReads = OpenPanel();
    RawClient visitor(desk->Port());
    const std::uint16_t port = desk->Port();
    desk.reset();
    EXPECT_EQ(panel.ReadToClose(), Closing::kGoingAway);
    EXPECT_TRUE(visitor.ReadToEnd());
    EXPECT_THROW(RawClient{port}, std::runtime_error);
}

TEST_F(ServerTest, SaysWhatItCannotHave)
{
    Open();
    NobodyHears nobody;
    EXPECT_THROW(Desk::Server(nobody, Desk::Site(folder.Pages(), {}), desk->Port(), {}), std::runtime_error);
    EXPECT_THROW(Desk::Pages(folder.Pages() / "missing"), std::runtime_error);
    EXPECT_THROW(Desk::Pages(folder.Pages() / "index.html"), std::runtime_error);
}

}  // namespace
