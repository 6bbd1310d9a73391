#pragma once

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

namespace Desk {

/// A frame as it is sent, shared by all to whom it goes.
using Frame = boost::shared_ptr<const std::string>;

/// How a WebSocket ends. Pages come again, but for these codes: 1000, 1008, 4000 to 4099.
struct Closing
{
    static constexpr std::uint16_t kNormal = 1000;
    static constexpr std::uint16_t kGoingAway = 1001;
    static constexpr std::uint16_t kTextOnly = 1003;
    static constexpr std::uint16_t kPolicy = 1008;
    static constexpr std::uint16_t kElsewhere = 4001;  ///< The same page has another connection.
    static constexpr std::uint16_t kFault = 4102;      ///< Asked for, to try how pages come back.
    static constexpr std::uint16_t kTooSlow = 4101;    ///< What it missed it gets when it comes again.

    std::uint16_t code = kNormal;
    std::string reason;  ///< At most 123 bytes of UTF-8.
};

/// A connection as host and network share it: the host sends into a bounded queue and never waits, the
/// network takes from it. Each operation may be called on any thread; nothing blocks.
class Link
{
public:
    struct Limits
    {
        std::size_t mostFrames = 2048;
        std::size_t mostBytes = std::size_t{32} << 20;  ///< The last frame may go beyond.
    };

    explicit Link(const Limits& limits) : mLimits(limits) {}

    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    /// \name For the host.
    /// @{

    /// Queues a frame. Where there is no room, everything queued is dropped and the connection closed as too
    /// slow. Does nothing once it is closed.
    void Send(Frame frame);

    /// Ends the connection, without what is queued. The first call counts.
    void Close(std::uint16_t code, std::string reason);

    /// The last frame of the page is done with: the next one may be read.
    void ReadOn();

    bool IsClosed() const;
    /// @}

    /// \name For the network.
    /// @{

    /// \param wake Called when there is something to take, under a lock: it must neither block nor call back.
    void Connect(boost::function<void()> wake);

    /// The connection is gone. After this call `wake` is neither running nor called again.
    void Disconnect();

    /// \return The next frame to send; null for none.
    Frame TakeFrame();

    /// \return How to end, from Close on.
    std::optional<Closing> GetClosing() const;

    /// \return Whether ReadOn was called since the last call.
    bool TakeReadOn();
    /// @}

private:
    void CloseLocked(std::uint16_t code, std::string reason);
    void WakeLocked() const;

    const Limits mLimits;
    mutable std::mutex mMutex;
    boost::function<void()> mWake;
    std::deque<Frame> mFrames;
    std::size_t mBytes = 0;
    std::optional<Closing> mClosing;
    bool mMayReadOn = false;
};

using LinkRef = boost::shared_ptr<Link>;

}  // namespace Desk
