#pragma once

#include "desk/Access.h"
#include "desk/Pages.h"
#include "desk/RateLimit.h"
#include "desk/Reception.h"
#include "desk/Server.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/shared_ptr.hpp>

#include <set>
#include <utility>

/// Included by Server.cpp alone: the network library takes long to compile.
namespace Desk::Network {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using boost::system::error_code;
using Request = http::request<http::string_body>;

class Visitor;
class PageSocket;

/// What the connections share. Used on the network's thread.
struct Shared
{
    Shared(Connections& theConnections, Site theSite, const ServerLimits& theLimits)
        : connections(theConnections), site(std::move(theSite)), limits(theLimits)
    {
    }

    void EndWithoutConnections()
    {
        if (isEnding && !isOver && visitors.empty() && sockets.empty())
            ending.cancel();
    }

    Connections& connections;
    const Site site;
    const ServerLimits limits;
    Access access;
    const Reception reception{access, site};
    RateLimit reports{limits.reports, RateLimit::Clock::now()};
    bool isEnding = false;
    bool isOver = false;  ///< The thread is gone.
    std::set<Visitor*> visitors;
    std::set<boost::shared_ptr<PageSocket>> sockets;
    asio::io_context context{1};  ///< Behind what is used when it destroys what was under way.
    asio::steady_timer ending{context};
};

}  // namespace Desk::Network
