// The one file that knows the network library, which takes long to compile.

#include "desk/Server.h"

#include <boost/asio/dispatch.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <utility>

namespace Desk {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using boost::system::error_code;
using tcp = asio::ip::tcp;
using Request = http::request<http::string_body>;
using Response = http::response<http::string_body>;

constexpr std::uint32_t kLargestHeader = 8192;
constexpr std::uint64_t kLargestBody = 1024;
constexpr std::size_t kKeptBuffer = 65536;
constexpr const char* kTokenHeader = "Desk-Token";
constexpr const char* kSocketTarget = "/socket";
constexpr const char* kSessionTarget = "/session";

std::string_view ViewOf(beast::string_view text)
{
    return {text.data(), text.size()};
}

class Visitor;
class PageSocket;

/// What the connections share. Used on the network's thread.
struct Shared
{
    Shared(Connections& theConnections, Pages thePages, const ServerLimits& theLimits)
        : connections(theConnections), pages(std::move(thePages)), limits(theLimits)
    {
    }

    void EndWithoutConnections()
    {
        if (isEnding && !isOver && visitors.empty() && sockets.empty())
            ending.cancel();
    }

    Connections& connections;
    const Pages pages;
    const ServerLimits limits;
    Access access;
    bool isEnding = false;
    bool isOver = false;  ///< The thread is gone.
    std::set<Visitor*> visitors;
    std::set<boost::shared_ptr<PageSocket>> sockets;
    asio::io_context context{1};  ///< Behind what is used when it destroys what was under way.
    asio::steady_timer ending{context};
};

/// A page's WebSocket, one of Shared::sockets until it ends.
class PageSocket : public boost::enable_shared_from_this<PageSocket>
{
public:
    PageSocket(Shared& shared, beast::tcp_stream&& stream)
        : mShared(shared),
          mStream(std::move(stream)),
          mTimer(shared.context),
          mLink(boost::make_shared<Link>(shared.limits.link)),
          mRate(shared.limits.rate, RateLimit::Clock::now())
    {
    }

    PageSocket(const PageSocket&) = delete;
    PageSocket& operator=(const PageSocket&) = delete;

    void Accept(const Request& request)
    {
        mShared.sockets.insert(shared_from_this());
        websocket::stream_base::timeout timeout{};
        timeout.handshake_timeout = mShared.limits.request;
        timeout.idle_timeout = mShared.limits.idle;
        timeout.keep_alive_pings = true;
        mStream.set_option(timeout);
        mStream.read_message_max(mShared.limits.largestFrame);
        mStream.auto_fragment(false);
        mStream.text(true);
        beast::get_lowest_layer(mStream).expires_never();
        beast::get_lowest_layer(mStream).socket().set_option(tcp::no_delay(true));
        mStream.async_accept(request, [self = shared_from_this()](error_code error) {
            error ? self->End(false) : self->Begin();
        });
    }

    Link& GetLink() { return *mLink; }

private:
    void Begin()
    {
        mStream.control_callback(
            [this](websocket::frame_type, beast::string_view text) { Count(text.size()); });
        StartTimer(mShared.limits.hello,
                   [](PageSocket& self) { self.mLink->Close(Closing::kPolicy, "no hello came"); });
        const boost::weak_ptr<PageSocket> weak = weak_from_this();
        mLink->Connect([weak, &context = mShared.context] {
            asio::post(context, [weak] {
                if (const auto self = weak.lock())
                    self->Pump();
            });
        });
        Read();
    }

    /// \param act Called with this object, unless another timer is started before.
    template <class Act>
    void StartTimer(std::chrono::milliseconds after, Act act)
    {
        mTimer.expires_after(after);
        mTimer.async_wait([weak = weak_from_this(), act](error_code error) {
            const auto self = weak.lock();
            if (!error && self && !self->mIsOver)
                act(*self);
        });
    }

    void Count(std::size_t bytes)
    {
        if (!mRate.Take(bytes, RateLimit::Clock::now()))
            mLink->Close(Closing::kPolicy, "too many frames at once");
    }

    void Read()
    {
        mStream.async_read(mBuffer, [self = shared_from_this()](error_code error, std::size_t size) {
            self->OnRead(error, size);
        });
    }

    void OnRead(error_code error, std::size_t size)
    {
        if (error)
            return End(error == websocket::error::closed && mStream.reason().code == Closing::kNormal);
        std::string text = beast::buffers_to_string(mBuffer.data());
        mBuffer.consume(mBuffer.size());
        if (mBuffer.capacity() > kKeptBuffer)
            mBuffer.shrink_to_fit();
        Count(size);
        if (mStream.got_binary())
            mLink->Close(Closing::kTextOnly, "frames are texts");
        if (mLink->IsClosed())
            return Pump();
        if (!std::exchange(mHasSpoken, true))
            mTimer.cancel();
        mShared.connections.OnText(mLink, std::move(text));
    }

    /// Goes on with whatever the link has for the network.
    void Pump()
    {
        if (mIsOver || mIsClosing)
            return;
        if (const std::optional<Closing> closing = mLink->GetClosing())
            return Close(*closing);
        if (mLink->TakeReadOn())
            Read();
        if (!mFrame && (mFrame = mLink->TakeFrame()))
            Write();
    }

    void Write()
    {
        mStream.async_write(asio::buffer(*mFrame),
                            [self = shared_from_this()](error_code error, std::size_t) {
                                self->mFrame.reset();
                                error ? self->End(false) : self->Pump();
                            });
    }

    /// The other end may read nothing, so that what is being written never ends, nor says that it is closed.
    void Close(const Closing& closing)
    {
        mIsClosing = true;
        StartTimer(mShared.limits.close, [](PageSocket& self) { self.End(false); });
        mStream.async_close({static_cast<websocket::close_code>(closing.code), closing.reason},
                            [self = shared_from_this()](error_code) { self->End(false); });
    }

    void End(bool isForGood)
    {
        if (std::exchange(mIsOver, true))
            return;
        mTimer.cancel();
        mLink->Disconnect();
        error_code ignored;
        beast::get_lowest_layer(mStream).socket().close(ignored);
        mShared.connections.OnGone(mLink, isForGood);
        mShared.sockets.erase(shared_from_this());
        mShared.EndWithoutConnections();
    }

    Shared& mShared;
    websocket::stream<beast::tcp_stream> mStream;
    beast::flat_buffer mBuffer;
    asio::steady_timer mTimer;
    const LinkRef mLink;
    RateLimit mRate;
    Frame mFrame;  ///< Being written.
    bool mHasSpoken = false;
    bool mIsClosing = false;
    bool mIsOver = false;
};

/// A connection that asks for pages. It keeps itself alive by what is under way.
class Visitor : public boost::enable_shared_from_this<Visitor>
{
public:
    Visitor(Shared& shared, tcp::socket&& socket) : mShared(shared), mStream(std::move(socket))
    {
        mShared.visitors.insert(this);
    }

    ~Visitor()
    {
        mShared.visitors.erase(this);
        mShared.EndWithoutConnections();
    }

    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;

    void Read()
    {
        mParser.emplace();
        mParser->header_limit(kLargestHeader);
        mParser->body_limit(kLargestBody);
        mStream.expires_after(mShared.limits.request);
        http::async_read(mStream, mBuffer, *mParser,
                         [self = shared_from_this()](error_code error, std::size_t) { self->OnRead(error); });
    }

    void Cut()
    {
        error_code ignored;
        mStream.socket().close(ignored);
    }

private:
    void OnRead(error_code error)
    {
        if (error)
            return Refuse(error);
        const Request request = mParser->release();
        if (!websocket::is_upgrade(request))
            return Write(Answer(request));
        if (std::optional<Response> refusal = RefusalOfSocket(request))
            return Write(std::move(*refusal));
        boost::make_shared<PageSocket>(mShared, std::move(mStream))->Accept(request);
    }

    /// What is no request gets an answer, if it is still there.
    void Refuse(error_code error)
    {
        if (error == http::error::header_limit)
            return Write(
                Text({}, http::status::request_header_fields_too_large, "The header is too long.\n"));
        if (error == http::error::body_limit)
            return Write(Text({}, http::status::payload_too_large, "The body is too long.\n"));
        const bool isEnd = error == http::error::end_of_stream || error == http::error::partial_message;
        if (error.category() == make_error_code(http::error::bad_method).category() && !isEnd)
            return Write(Text({}, http::status::bad_request, "This is no request.\n"));
    }

    /// \return Why the request is not looked at.
    std::optional<Response> RefusalOfAnything(const Request& request) const
    {
        if (request.count(http::field::host) != 1 || request[http::field::host] != mShared.access.Authority())
            return Text(request, http::status::misdirected_request,
                        "The desk answers at the address that it printed alone.\n");
        if (request.count(http::field::origin) > 0 && !IsFromHere(request))
            return Text(request, http::status::forbidden, "Pages of others get nothing here.\n");
        return std::nullopt;
    }

    std::optional<Response> RefusalOfSocket(const Request& request) const
    {
        if (std::optional<Response> refusal = RefusalOfAnything(request))
            return refusal;
        if (request.target() != kSocketTarget)
            return Text(request, http::status::not_found, "There is no socket.\n");
        if (!IsFromHere(request))
            return Text(request, http::status::forbidden, "A socket is for pages of the desk.\n");
        if (!HasCookie(request))
            return WithoutToken(request);
        if (mBuffer.size() > 0)
            return Text(request, http::status::bad_request, "Frames before the answer.\n");
        if (mShared.sockets.size() >= mShared.limits.mostPages)
            return Text(request, http::status::service_unavailable,
                        "Too many panels are open; close one of them.\n");
        return std::nullopt;
    }

    bool IsFromHere(const Request& request) const
    {
        return request.count(http::field::origin) == 1 &&
               request[http::field::origin] == mShared.access.Origin();
    }

    Response Answer(const Request& request) const
    {
        if (std::optional<Response> refusal = RefusalOfAnything(request))
            return std::move(*refusal);
        if (request.target() == kSessionTarget)
            return Session(request);
        if (request.method() != http::verb::get && request.method() != http::verb::head)
            return NotAllowed(request, "GET, HEAD");
        std::optional<Page> page = mShared.pages.Read(ViewOf(request.target()));
        if (!page)
            return Text(request, http::status::not_found, "There is no such page.\n");
        return Finish(request, http::status::ok, page->type, std::move(page->content));
    }

    /// A page that posts the token from its address gets the cookie, which its scripts never see; one that
    /// asks is told whether it has it.
    Response Session(const Request& request) const
    {
        if (request.method() == http::verb::get)
            return HasCookie(request) ? Text(request, http::status::ok, "") : WithoutToken(request);
        if (request.method() != http::verb::post)
            return NotAllowed(request, "GET, POST");
        if (!mShared.access.IsToken(ViewOf(request[kTokenHeader])))
            return WithoutToken(request);
        Response response = Text(request, http::status::ok, "");
        response.set(http::field::set_cookie, mShared.access.SetCookie());
        return response;
    }

    bool HasCookie(const Request& request) const
    {
        return request.count(http::field::cookie) == 1 &&
               mShared.access.HasCookie(ViewOf(request[http::field::cookie]));
    }

    Response WithoutToken(const Request& request) const
    {
        return Text(request, http::status::forbidden,
                    "Open the address that the desk printed when it started, with its token.\n");
    }

    Response NotAllowed(const Request& request, const char* allowed) const
    {
        Response response = Text(request, http::status::method_not_allowed, "Not that way.\n");
        response.set(http::field::allow, allowed);
        return response;
    }

    Response Text(const Request& request, http::status status, const char* text) const
    {
        return Finish(request, status, "text/plain; charset=utf-8", text);
    }

    Response Finish(const Request& request, http::status status, const char* type, std::string content) const
    {
        Response response(status, 11, std::move(content));
        response.set(http::field::content_type, type);
        response.set(http::field::cache_control, "no-store");
        response.set("Content-Security-Policy", ContentPolicy());
        response.set("Cross-Origin-Opener-Policy", "same-origin");
        response.set("Cross-Origin-Resource-Policy", "same-origin");
        response.set("Referrer-Policy", "no-referrer");
        response.set("X-Content-Type-Options", "nosniff");
        response.keep_alive(status == http::status::ok && request.keep_alive());
        response.prepare_payload();
        if (request.method() == http::verb::head)
            response.body().clear();  // its length stays
        return response;
    }

    std::string ContentPolicy() const
    {
        return "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self' "
               "ws://" +
               mShared.access.Authority() +
               "; base-uri 'none'; form-action 'none'; frame-ancestors 'none'; "
               "require-trusted-types-for 'script'; trusted-types 'none'";
    }

    void Write(Response response)
    {
        mResponse = std::move(response);
        mStream.expires_after(mShared.limits.request);
        http::async_write(mStream, mResponse, [self = shared_from_this()](error_code error, std::size_t) {
            if (error)
                return;
            if (self->mResponse.need_eof() || self->mShared.isEnding)
                self->mStream.socket().shutdown(tcp::socket::shutdown_send, error);
            else
                self->Read();
        });
    }

    Shared& mShared;
    beast::tcp_stream mStream;
    beast::flat_buffer mBuffer;
    std::optional<http::request_parser<http::string_body>> mParser;
    Response mResponse;
};

}  // namespace

class Server::Network
{
public:
    Network(Connections& connections, Pages pages, std::uint16_t port, const ServerLimits& limits)
        : mShared(connections, std::move(pages), limits), mAcceptor(mShared.context), mPause(mShared.context)
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
        mThread = std::thread([this] { mShared.context.run(); });
    }

    ~Network() { Stop(); }

    Network(const Network&) = delete;
    Network& operator=(const Network&) = delete;

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
    void Accept()
    {
        mAcceptor.async_accept([this](error_code error, tcp::socket socket) {
            if (mShared.isEnding)
                return;
            if (error)
                return AcceptLater();
            if (mShared.visitors.size() < mShared.limits.mostVisitors)
                boost::make_shared<Visitor>(mShared, std::move(socket))->Read();
            Accept();
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
        for (Visitor* const visitor : mShared.visitors)
            visitor->Cut();
        for (const auto& socket : mShared.sockets)
            socket->GetLink().Close(Closing::kGoingAway, "the desk ends");
        mShared.ending.expires_after(mShared.limits.close);
        mShared.ending.async_wait([this](error_code) { mShared.context.stop(); });
        mShared.EndWithoutConnections();
    }

    Shared mShared;
    tcp::acceptor mAcceptor;
    asio::steady_timer mPause;
    std::uint16_t mPort = 0;
    std::thread mThread;
};

Server::Server(Connections& connections, Pages pages, std::uint16_t port, const ServerLimits& limits)
    : mNetwork(std::make_unique<Network>(connections, std::move(pages), port, limits))
{
}

Server::~Server() = default;

const Access& Server::GetAccess() const noexcept
{
    return mNetwork->GetAccess();
}

std::uint16_t Server::Port() const noexcept
{
    return mNetwork->Port();
}

void Server::Stop()
{
    mNetwork->Stop();
}

}  // namespace Desk
