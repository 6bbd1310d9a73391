#pragma once

#include "desk/Link.h"
#include "desk/RateLimit.h"
#include "desk/network/Shared.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/beast/websocket.hpp>
#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

/// Included by Server.cpp alone: the network library takes long to compile.
namespace Desk::Network {

namespace websocket = beast::websocket;

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
        error_code ignored;
        beast::get_lowest_layer(mStream).socket().set_option(asio::ip::tcp::no_delay(true), ignored);
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

    static constexpr std::size_t kKeptBuffer = 65536;

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

}  // namespace Desk::Network
