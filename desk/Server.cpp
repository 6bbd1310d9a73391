// The one source that knows the network library, which takes long to compile.

#include "desk/Server.h"

#include "desk/network/PageSocket.h"
#include "desk/network/Shared.h"
#include "desk/network/Visitor.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>

#include <new>
#include <stdexcept>
#include <thread>
#include <utility>

namespace Desk {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

class Server::Listener
{
public:
    Listener(Connections& connections, Site site, std::uint16_t port, const ServerLimits& limits)
        : mShared(connections, std::move(site), limits), mAcceptor(mShared.context), mPause(mShared.context)
    {
        error_code error;
        const tcp::endpoint endpoint(asio::ip::address_v4::loopback(), port);
        mAcceptor.open(endpoint.protocol(), error);
        if (!error)
            mAcceptor.set_option(asio::socket_base::reuse_address(true), error);
        if (!error)
            mAcceptor.bind(endpoint, error);
        if (!error)
            mAcceptor.listen(asio::socket_base::max_listen_connections, error);
        if (error)
            throw std::runtime_error("the port " + std::to_string(port) + " cannot be had (" +
                                     error.message() + "); choose another one, or none for any");
        mPort = mAcceptor.local_endpoint().port();
        mShared.access.SetPort(mPort);
        Accept();
        mThread = std::thread([this] { Run(); });
    }

    ~Listener() { Stop(); }

    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    void Stop()
    {
        if (!mThread.joinable())
            return;
        asio::post(mShared.context, [this] { BeginToEnd(); });
        mThread.join();
        mShared.isOver = true;
        for (const auto& socket : mShared.sockets)
            socket->GetLink().Disconnect();
        mShared.sockets.clear();
    }

    const Access& GetAccess() const noexcept { return mShared.access; }
    std::uint16_t Port() const noexcept { return mPort; }

private:
    /// Without memory for one connection the others go on.
    void Run()
    {
        for (;;) {
            try {
                mShared.context.run();
                return;
            } catch (const std::bad_alloc&) {
            }
        }
    }

    void Accept()
    {
        mAcceptor.async_accept([this](error_code error, tcp::socket socket) {
            if (mShared.isEnding)
                return;
            if (error)
                return AcceptLater();
            Accept();
            if (mShared.visitors.size() < mShared.limits.mostVisitors)
                boost::make_shared<Network::Visitor>(mShared, std::move(socket))->Read();
        });
    }

    /// No connection can be had, perhaps since too many files are open: trying at once would not help.
    void AcceptLater()
    {
        mPause.expires_after(std::chrono::milliseconds(100));
        mPause.async_wait([this](error_code) {
            if (!mShared.isEnding)
                Accept();
        });
    }

    void BeginToEnd()
    {
        mShared.isEnding = true;
        error_code ignored;
        mAcceptor.close(ignored);
        mPause.cancel();
        for (Network::Visitor* const visitor : mShared.visitors)
            visitor->Cut();
        for (const auto& socket : mShared.sockets)
            socket->GetLink().Close(Closing::kGoingAway, "the desk ends");
        mShared.ending.expires_after(mShared.limits.close);
        mShared.ending.async_wait([this](error_code) { mShared.context.stop(); });
        mShared.EndWithoutConnections();
    }

    Network::Shared mShared;
    tcp::acceptor mAcceptor;
    asio::steady_timer mPause;
    std::uint16_t mPort = 0;
    std::thread mThread;
};

Server::Server(Connections& connections, Site site, std::uint16_t port, const ServerLimits& limits)
    : mListener(std::make_unique<Listener>(connections, std::move(site), port, limits))
{
}

Server::~Server() = default;

const Access& Server::GetAccess() const noexcept
{
    return mListener->GetAccess();
}

std::uint16_t Server::Port() const noexcept
{
    return mListener->Port();
}

void Server::Stop()
{
    mListener->Stop();
}

}  // namespace Desk
