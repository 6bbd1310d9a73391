#pragma once

#include "host/ferrite/UTF16String.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace ferrite::utility {

/// A text under construction, in pieces that are put together once. A string that grows by doubling would
/// touch twice as much memory, which for a large text is what costs most. Not for more than one thread.
class TextBuilder
{
public:
    /// \throws std::bad_alloc, as the next two do; what was put before stays.
    void Put(char16_t unit)
    {
        if (mUsed == mSize)
            Grow();
        mUnits[mUsed++] = unit;
    }

    void Put(std::u16string_view text)
    {
        while (text.size() > mSize - mUsed) {
            const std::size_t count = mSize - mUsed;
            Append(text.substr(0, count));
            text.remove_prefix(count);
            Grow();
        }
        Append(text);
    }

    /// \return Room for so many units in one place. Nothing else may be put until Fill takes what was written
    ///         there; the rest of the piece may stay unused.
    char16_t* Room(std::size_t count)
    {
        if (count > mSize - mUsed)
            Grow(count);
        return mUnits.get() + mUsed;
    }

    /// \param end Where what was written into the room ends.
    void Fill(const char16_t* end) { mUsed = static_cast<std::size_t>(end - mUnits.get()); }

    /// \return The whole text. Nothing may be put afterwards.
    UTF16String Take() &&
    {
        std::size_t length = mUsed;
        for (const Piece& piece : mFull)
            length += piece.size;
        UTF16String text;
        text.reserve(length);
        for (Piece& piece : mFull) {
            text.append(piece.units.get(), piece.size);
            piece.units.reset();
        }
        text.append(mUnits.get(), mUsed);
        return text;
    }

private:
    using Units = std::unique_ptr<char16_t[]>;
    struct Piece
    {
        Units units;
        std::size_t size = 0;
    };

    static constexpr std::size_t kFirstSize = 2048;
    static constexpr std::size_t kLargestSize = std::size_t{1} << 15U;

    /// \param text Fits.
    void Append(std::u16string_view text)
    {
        std::copy(text.begin(), text.end(), mUnits.get() + mUsed);
        mUsed += text.size();
    }

    /// Begins a new piece. \param least What it has room for.
    void Grow(std::size_t least = 0)
    {
        const std::size_t size = std::max(least, std::clamp(2 * mSize, kFirstSize, kLargestSize));
        Units units(new char16_t[size]);
        if (mSize != 0) {
            mFull.emplace_back();  // before the piece is moved: this may throw
            mFull.back() = {std::move(mUnits), mUsed};
        }
        mUnits = std::move(units);
        mSize = size;
        mUsed = 0;
    }

    std::vector<Piece> mFull;
    Units mUnits;  // the piece that is being filled
    std::size_t mSize = 0;
    std::size_t mUsed = 0;
};

}  // namespace ferrite::utility
