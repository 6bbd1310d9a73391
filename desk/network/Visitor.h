#pragma once

#include "desk/Reception.h"
#include "desk/network/PageSocket.h"
#include "desk/network/Shared.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

/// Included by Server.cpp alone: the network library takes long to compile.
namespace Desk::Network {

inline std::string_view ViewOf(beast::string_view text)
{
    return {text.data(), text.size()};
}

template <class Field>
std::optional<std::string_view> OnlyOne(const Request& request, Field field)
{
    if (request.count(field) != 1)
        return std::nullopt;
    return ViewOf(request[field]);
}

/// \return Refers to the request.
inline Visit VisitOf(const Request& request)
{
    return {ViewOf(request.method_string()),        ViewOf(request.target()),
            OnlyOne(request, http::field::host),    OnlyOne(request, http::field::origin),
            OnlyOne(request, http::field::cookie),  OnlyOne(request, Reception::kTokenField),
            request.count(http::field::origin) > 0, request.body()};
}

/// A connection that asks for pages. It keeps itself alive by what is under way.
class Visitor : public boost::enable_shared_from_this<Visitor>
{
public:
    Visitor(Shared& shared, asio::ip::tcp::socket&& socket) : mShared(shared), mStream(std::move(socket))
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
            return Write(mShared.reception.Answer(VisitOf(request)), request);
        if (std::optional<Reply> refusal = RefuseSocket(request))
            return Write(std::move(*refusal), request);
        boost::make_shared<PageSocket>(mShared, std::move(mStream))->Accept(request);
    }

    /// What is no request gets an answer, if it is still there.
    void Refuse(error_code error)
    {
        const auto refuse = [this](unsigned status, const char* text) {
            Write(mShared.reception.Text(status, text), {});
        };
        if (error == http::error::header_limit)
            return refuse(431, "The header is too long.\n");
        if (error == http::error::body_limit)
            return refuse(413, "The body is too long.\n");
        const bool isEnd = error == http::error::end_of_stream || error == http::error::partial_message;
        if (error.category() == make_error_code(http::error::bad_method).category() && !isEnd)
            return refuse(400, "This is no request.\n");
    }

    std::optional<Reply> RefuseSocket(const Request& request) const
    {
        if (std::optional<Reply> refusal = mShared.reception.RefuseSocket(VisitOf(request)))
            return refusal;
        if (mBuffer.size() > 0)
            return mShared.reception.Text(400, "Frames before the answer.\n");
        if (mShared.sockets.size() >= mShared.limits.mostPages)
            return mShared.reception.Text(503, "Too many panels are open; close one of them.\n");
        return std::nullopt;
    }

    void Write(Reply reply, const Request& request)
    {
        if (!reply.report.empty() && mShared.reports.Take(0, RateLimit::Clock::now()))
            mShared.connections.OnReport(reply.report);
        mResponse = Response(static_cast<http::status>(reply.status), 11, std::move(reply.content));
        for (const auto& [name, value] : reply.fields)
            mResponse.set(name, value);
        mResponse.keep_alive(reply.status == 200 && request.keep_alive());
        mResponse.prepare_payload();
        if (request.method() == http::verb::head)
            mResponse.body().clear();  // its length stays
        mStream.expires_after(mShared.limits.request);
        http::async_write(mStream, mResponse, [self = shared_from_this()](error_code error, std::size_t) {
            if (error)
                return;
            if (self->mResponse.need_eof() || self->mShared.isEnding)
                self->mStream.socket().shutdown(asio::ip::tcp::socket::shutdown_send, error);
            else
                self->Read();
        });
    }

    using Response = http::response<http::string_body>;

    static constexpr std::uint32_t kLargestHeader = 8192;
    static constexpr std::uint64_t kLargestBody = 16384;

    Shared& mShared;
    beast::tcp_stream mStream;
    beast::flat_buffer mBuffer;
    std::optional<http::request_parser<http::string_body>> mParser;
    Response mResponse;
};

}  // namespace Desk::Network
