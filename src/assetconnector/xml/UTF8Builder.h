#pragma once

#include "assetconnector/host/ferrite/UTF16String.h"
#include "assetconnector/host/ferrite/Unicode.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace AC {

/// A text under construction, in pieces that are put together once: a string that grows by doubling would
/// touch twice as much memory, which for a large text is what costs most. UTF-8, in which markup takes half
/// of what UTF-16 takes. Not for more than one thread.
class UTF8Builder
{
public:
    /// \param text Whole characters. \throws std::bad_alloc, as Room does; what was put before stays.
    void Put(std::string_view text)
    {
        char* const room = Room(text.size());
        Fill(std::copy(text.begin(), text.end(), room));
    }

    /// \return Room for so many bytes in one place. Nothing else may be put until Fill takes what was written
    ///         there; the rest of the piece may stay unused.
    char* Room(std::size_t count)
    {
        if (count > static_cast<std::size_t>(mEnd - mTo))
            Grow(count);
        return mTo;
    }

    /// \param end Where what was written into the room ends, after a whole character.
    /// \param surplus By how many what was written is longer than in UTF-16, or less: TakeUTF16 leaves out so
    ///        much room.
    void Fill(char* end, std::size_t surplus = 0)
    {
        mTo = end;
        mSurplus += surplus;
    }

    /// \return The whole text. Nothing may be put afterwards.
    std::string TakeUTF8() &&
    {
        std::string text;
        Join(text, 0, [&text](std::string_view piece) { text.append(piece); });
        return text;
    }

    /// The same as UTF-16.
    UTF16String TakeUTF16() &&
    {
        UTF16String text;
        Join(text, mSurplus,
             [&text](std::string_view piece) { ferrite::utility::AppendUTF8to16(piece, text); });
        return text;
    }

private:
    using Bytes = std::unique_ptr<char[]>;
    struct Piece
    {
        Bytes bytes;
        std::size_t size = 0;
    };

    static constexpr std::size_t kFirstSize = 2048;
    static constexpr std::size_t kLargestSize = std::size_t{1} << 16U;

    /// \param surplus Of the bytes over the text's length. \param append Appends a piece to the text, after
    /// which the piece is freed.
    template <class Text, class Append>
    void Join(Text& text, std::size_t surplus, Append append)
    {
        Finish();
        std::size_t bytes = 0;
        for (const Piece& piece : mFull)
            bytes += piece.size;
        text.reserve(bytes - surplus);
        for (Piece& piece : mFull) {
            append(std::string_view(piece.bytes.get(), piece.size));
            piece.bytes.reset();
        }
    }

    /// Puts the piece that was being filled to the others.
    void Finish()
    {
        Piece& piece = mFull.emplace_back();  // before the piece is moved: this may throw
        piece.size = static_cast<std::size_t>(mTo - mBytes.get());
        piece.bytes = std::move(mBytes);
    }

    /// Begins a new piece. \param least What it has room for.
    void Grow(std::size_t least)
    {
        const auto last = static_cast<std::size_t>(mEnd - mBytes.get());
        const std::size_t size = std::max(least, std::clamp(2 * last, kFirstSize, kLargestSize));
        Bytes bytes(new char[size]);
        if (mBytes)
            Finish();
        mBytes = std::move(bytes);
        mTo = mBytes.get();
        mEnd = mTo + size;
    }

    std::vector<Piece> mFull;
    Bytes mBytes;  // the piece that is being filled
    char* mTo = nullptr;
    char* mEnd = nullptr;
    std::size_t mSurplus = 0;
};

}  // namespace AC
