#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace Recording {

/// Posted messages on their way to their stations. A file has deliveries as one input, once every message
/// that it posted was delivered, and in the order in which it posted them: the order of its inputs, where
/// threads posted at once. Messages are known by what they say. One thread.
class Deliveries
{
public:
    /// \param message What it says, hashed.
    void Posted(std::size_t message);

    /// \param line Of the delivery. One that nobody posted in this file waits for its post, which may come
    /// from an
    ///             input that is not through; if none comes, it is never told.
    void Delivered(std::size_t message, std::string line);

    /// \return The lines, when all are there; else none.
    std::vector<std::string> Take();

    /// A new file begins: what was posted before it is not told.
    void Forget();

private:
    struct Message
    {
        std::deque<std::string> lines;  ///< Delivered.
        std::size_t posted = 0;         ///< In this file, and not told yet.
    };

    /// Nothing more is told of this file.
    void GiveUp();

    std::vector<std::size_t> mPosted;
    std::unordered_map<std::size_t, Message> mMessages;
    std::size_t mMissing = 0;  ///< Posted, and not delivered.
    std::size_t mBytes = 0;    ///< Of lines.
    bool mTells = true;
};

}  // namespace Recording
