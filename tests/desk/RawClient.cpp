#include "tests/desk/RawClient.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

RawClient::RawClient(std::uint16_t port) : mSocket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    const timeval limit{10, 0};
    setsockopt(mSocket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    setsockopt(mSocket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(mSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(mSocket);
        throw std::runtime_error("nobody listens");
    }
}

RawClient::~RawClient()
{
    if (mSocket >= 0)
        close(mSocket);
}

bool RawClient::Send(const std::string& bytes)
{
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count = send(mSocket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        sent += static_cast<std::size_t>(count);
    }
    return true;
}

std::string RawClient::Answer::Field(const std::string& name) const
{
    const std::string start = "\r\n" + name + ": ";
    const std::size_t found = header.find(start);
    if (found == std::string::npos)
        return {};
    const std::size_t begin = found + start.size();
    return header.substr(begin, header.find("\r\n", begin) - begin);
}

RawClient::Answer RawClient::ReadAnswer(bool hasBody)
{
    Answer answer;
    std::size_t end = 0;
    while ((end = mRead.find("\r\n\r\n")) == std::string::npos)
        if (!Fill(mRead.size() + 1))
            return answer;
    answer.header = Take(end + 2);
    Take(2);
    answer.status = std::stoi(answer.header.substr(answer.header.find(' ') + 1));
    const std::string length = answer.Field("Content-Length");
    if (hasBody && !length.empty() && Fill(std::stoul(length)))
        answer.body = Take(std::stoul(length));
    return answer;
}

int RawClient::WebFrame::Code() const
{
    if (opcode != 8 || payload.size() < 2)
        return 0;
    return static_cast<unsigned char>(payload[0]) << 8 | static_cast<unsigned char>(payload[1]);
}

std::optional<RawClient::WebFrame> RawClient::ReadFrame()
{
    if (!Fill(2))
        return std::nullopt;
    const std::string start = Take(2);
    std::uint64_t length = static_cast<unsigned char>(start[1]) & 127u;
    if (length >= 126) {
        const std::size_t size = length == 126 ? 2 : 8;
        if (!Fill(size))
            return std::nullopt;
        length = 0;
        for (const char byte : Take(size))
            length = length << 8 | static_cast<unsigned char>(byte);
    }
    if (!Fill(length))
        return std::nullopt;
    return WebFrame{start[0] & 15, Take(length)};
}

int RawClient::ReadToClose()
{
    while (const std::optional<WebFrame> frame = ReadFrame())
        if (frame->opcode == 8)
            return frame->Code();
    return 0;
}

bool RawClient::ReadToEnd()
{
    for (;;) {
        char bytes[65536];
        const ssize_t count = recv(mSocket, bytes, sizeof bytes, 0);
        if (count == 0 || (count < 0 && errno == ECONNRESET))
            return true;
        if (count < 0)
            return false;
    }
}

std::string RawClient::MakeFrame(int opcode, const std::string& payload, std::optional<std::uint64_t> length)
{
    const std::uint64_t size = length.value_or(payload.size());
    std::string frame(1, static_cast<char>(0x80 | opcode));
    const int bytes = size < 126 ? 0 : size < 65536 ? 2 : 8;
    frame += static_cast<char>(0x80 | (bytes == 0 ? static_cast<int>(size) : bytes == 2 ? 126 : 127));
    for (int i = bytes - 1; i >= 0; --i)
        frame += static_cast<char>(size >> (8 * i) & 255);
    return frame + std::string(4, '\0') + payload;  // masked with zeros
}

bool RawClient::Fill(std::size_t size)
{
    while (mRead.size() < size) {
        char bytes[65536];
        const ssize_t count = recv(mSocket, bytes, sizeof bytes, 0);
        if (count <= 0)
            return false;
        mRead.append(bytes, static_cast<std::size_t>(count));
    }
    return true;
}

std::string RawClient::Take(std::size_t size)
{
    std::string taken = mRead.substr(0, size);
    mRead.erase(0, size);
    return taken;
}
