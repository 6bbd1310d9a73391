#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

/// A blocking client that writes any bytes: nothing is checked, masked or repeated for it. What does not come
/// within ten seconds counts as the end of the connection.
class RawClient
{
public:
    /// \throws std::runtime_error when nobody listens on this port of loopback.
    explicit RawClient(std::uint16_t port);
    ~RawClient();
    RawClient(RawClient&& other) noexcept
        : mSocket(std::exchange(other.mSocket, -1)), mRead(std::move(other.mRead))
    {
    }
    RawClient& operator=(RawClient&&) = delete;

    /// \return Whether all of it went out.
    bool Send(const std::string& bytes);

    struct Answer
    {
        int status = 0;  ///< 0 for no answer.
        std::string header;
        std::string body;

        /// \return The value of a field, empty without it.
        std::string Field(const std::string& name) const;
    };

    /// \param hasBody Of a HEAD request's answer: none comes.
    Answer ReadAnswer(bool hasBody = true);

    /// A frame of a WebSocket, as it came from the server.
    struct WebFrame
    {
        int opcode = 0;
        std::string payload;

        /// Of a close.
        int Code() const;
    };

    /// \return None at the end of the connection.
    std::optional<WebFrame> ReadFrame();

    /// \return The code of the close that comes in the end, whatever comes before; 0 for none.
    int ReadToClose();

    /// \return Whether the connection ends, whatever comes before.
    bool ReadToEnd();

    /// \param length What the frame says of its length; that of the payload without it.
    static std::string MakeFrame(int opcode, const std::string& payload,
                                 std::optional<std::uint64_t> length = std::nullopt);

private:
    bool Fill(std::size_t size);
    std::string Take(std::size_t size);

    int mSocket;
    std::string mRead;
};
