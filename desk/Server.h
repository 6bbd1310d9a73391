#pragma once

#include "desk/Access.h"
#include "desk/Link.h"
#include "desk/Pages.h"
#include "desk/RateLimit.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Desk {

/// What becomes of the connections of pages. Called on the network's thread, which must not wait.
class Connections
{
public:
    virtual ~Connections() = default;

    /// A page sent a text, well-formed UTF-8. Nothing more is read from it until Link::ReadOn.
    virtual void OnText(const LinkRef& link, std::string text) = 0;

    /// The content policy of a page blocked something. \param report UTF-8.
    virtual void OnReport(const std::string& report) = 0;

    /// The connection is gone; the last call for it. \param isForGood The page said that it ends.
    virtual void OnGone(const LinkRef& link, bool isForGood) = 0;
};

struct ServerLimits
{
    std::size_t mostPages = 32;        ///< WebSockets.
    std::size_t mostVisitors = 64;     ///< Other connections.
    RateLimit::Limits reports{64, 8};  ///< Of what content policies blocked; others are left out.
    std::size_t largestFrame = std::size_t{8} << 20;
    RateLimit::Limits rate;
    Link::Limits link;
    std::chrono::milliseconds request{10000};  ///< For a request to come and its answer to go.
    std::chrono::milliseconds hello{10000};    ///< For the first frame of a page.
    std::chrono::milliseconds idle{60000};     ///< Without a sign of life; pages are asked for one before.
    std::chrono::milliseconds close{3000};     ///< For the end of a connection.
};

/// Serves pages and their WebSocket, at /socket, on loopback, with a thread of its own.
class Server
{
public:
    /// Listens from here on. \param port 0 for any. \param connections Outlives the server.
    /// \throws std::runtime_error when the port cannot be had.
    Server(Connections& connections, Site site, std::uint16_t port, const ServerLimits& limits);

    /// As Stop.
    ~Server();

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    const Access& GetAccess() const noexcept;

    std::uint16_t Port() const noexcept;

    /// Ends every connection and the thread; nothing is called from then on. Not on that thread.
    void Stop();

private:
    class Listener;

    const std::unique_ptr<Listener> mListener;
};

}  // namespace Desk
