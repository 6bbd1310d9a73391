// What browsers and others are told that ask the desk for pages or a socket, over bare sockets.

#include "tests/desk/ServerFixture.h"

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
using ServerTest = ServerFixture;

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

TEST_F(ServerTest, SaysWhatItCannotHave)
{
    Open();
    NobodyHears nobody;
    EXPECT_THROW(Desk::Server(nobody, Desk::Site(folder.Pages(), {}), desk->Port(), {}), std::runtime_error);
    EXPECT_THROW(Desk::Pages(folder.Pages() / "missing"), std::runtime_error);
    EXPECT_THROW(Desk::Pages(folder.Pages() / "index.html"), std::runtime_error);
}

TEST_F(ServerTest, ServesAPanelUnderWork)
{
    options.author = folder.Pages() / "client";
    std::ofstream(options.author / "index.html") << "<p>mine</p>";
    Open();
    const RawClient::Answer page = Ask(Head("/panel/"));
    EXPECT_EQ(page.body, "<p>mine</p><script type=\"module\" src=\"/desk/reload.js\"></script>\n");
    EXPECT_THAT(page.Field("Content-Security-Policy"), HasSubstr("script-src 'self';"));
    EXPECT_EQ(Ask(Head("/panel/index.js")).body, "the script");
    EXPECT_EQ(Ask(Head("/panel/../index.html")).status, 404);
    EXPECT_EQ(Ask(Head("/panel/../../secret.js")).status, 404);
    EXPECT_EQ(Ask(Head("/panel")).status, 404);
    EXPECT_EQ(Ask(Head("/")).body, "the page");
    const std::string version = Ask(Head("/panel-version")).body;
    EXPECT_EQ(Ask(Head("/panel-version")).body, version);
    fs::last_write_time(options.author / "index.js", fs::file_time_type::clock::now() + 1h);
    const auto end = std::chrono::steady_clock::now() + 10s;
    while (Ask(Head("/panel-version")).body == version && std::chrono::steady_clock::now() < end) {
    }
    EXPECT_NE(Ask(Head("/panel-version")).body, version);
    desk.reset();
    options.author.clear();
    Open();
    EXPECT_EQ(Ask(Head("/panel/")).status, 404);
    EXPECT_EQ(Ask(Head("/panel-version")).status, 404);
    options.author = "missing";
    EXPECT_THROW(Desk::Site(options.pages, options.author), std::runtime_error);
}

TEST_F(ServerTest, TellsWhatThePolicyBlocked)
{
    Open();
    RawClient tool = OpenSocket();
    Say(tool, R"({"hello": {"kind": "desk"}})");
    const auto report = [this](const std::string& body, const std::string& cookie) {
        return Ask(Head("/csp-report",
                        {"POST", {}, cookie + "Content-Length: " + std::to_string(body.size()) + "\r\n"}) +
                   body)
            .status;
    };
    const std::string body = R"({"csp-report": {"effective-directive": "script-src", "blocked-uri": "eval",
                                 "document-uri": "/panel/", "source-file": "panel.js", "line-number": 12}})";
    EXPECT_EQ(report(body, {}), 403);
    EXPECT_EQ(report("[", Cookie()), 200);
    EXPECT_EQ(report(body, Cookie()), 200);
    std::vector<std::string> notes;
    while (notes.size() < 2)
        for (const Json& entry : ReadWith(tool, "traffic").value("traffic", Json::array()))
            if (entry["line"].contains("note"))
                notes.push_back(entry["line"]["note"]);
    EXPECT_THAT(notes, ElementsAre("policy: a report that cannot be read",
                                   "policy: script-src blocked eval on /panel/, panel.js line 12"));
}

}  // namespace
