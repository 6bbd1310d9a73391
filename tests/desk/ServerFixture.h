#pragma once

#include "desk/LiveHost.h"
#include "desk/RunningDesk.h"
#include "tests/desk/Frames.h"
#include "tests/desk/RawClient.h"
#include "tests/desk/WorkLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

constexpr const char* kID = "7a5c0001-0000-4000-8000-000000000001";
constexpr int kText = 1;
constexpr int kBinary = 2;
constexpr int kPing = 9;
constexpr std::chrono::milliseconds kSoon{200};

/// A folder with pages, beside which lies what must not be served.
class PagesFolder
{
public:
    PagesFolder()
    {
        std::filesystem::remove_all(mTop);
        std::filesystem::create_directories(Pages() / "client");
        std::filesystem::create_directory(mTop / "beside");
        Write("pages/index.html", "the page");
        Write("pages/client/index.js", "the script");
        Write("pages/.hidden.js", "secret");
        Write("pages/notes.txt", "secret");
        Write("secret.js", "secret");
        Write("beside/secret.js", "secret");
        std::filesystem::create_directory(Pages() / "folder.js");
        std::filesystem::create_symlink("../secret.js", Pages() / "link.js");
        std::filesystem::create_symlink("../beside", Pages() / "linked");
        std::filesystem::create_symlink("client/index.js", Pages() / "inside.js");
        mkfifo((Pages() / "pipe.js").c_str(), 0600);
    }
    ~PagesFolder() { std::filesystem::remove_all(mTop); }
    PagesFolder(const PagesFolder&) = delete;
    PagesFolder& operator=(const PagesFolder&) = delete;

    std::filesystem::path Pages() const { return mTop / "pages"; }

private:
    void Write(const char* path, const char* text) const { std::ofstream(mTop / path) << text; }

    const std::filesystem::path mTop =
        std::filesystem::temp_directory_path() / ("desk-test-" + std::to_string(getpid()));
};

/// What a request says, beside its target.
struct Visit
{
    std::string method = "GET";
    std::optional<std::string> host;  ///< The right one without it.
    std::string fields;
};

class ServerFixture : public ::testing::Test
{
protected:
    ServerFixture() { options.pages = folder.Pages(); }

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
        EXPECT_THAT(Read(client), testing::HasSubstr("welcome"));
        EXPECT_THAT(Read(client), testing::HasSubstr("state"));
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
    static nlohmann::json ReadWith(RawClient& client, const char* member)
    {
        while (const auto frame = client.ReadFrame())
            if (frame->opcode == kText)
                if (const nlohmann::json json = nlohmann::json::parse(frame->payload); json.contains(member))
                    return json;
        return nlohmann::json::object();
    }

    /// \return Whether in the end so many panels are connected.
    static bool ReadUntilPanels(RawClient& client, std::size_t count)
    {
        for (;;) {
            const nlohmann::json frame = ReadWith(client, "state");
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
