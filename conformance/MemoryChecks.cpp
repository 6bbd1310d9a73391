#include "assetconnector/host/kiln/Allocator.h"
#include "conformance/CheckTables.h"
#include "conformance/Probes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <mutex>

namespace Conformance {
namespace {

constexpr std::size_t kSizes[] = {1, 7, 16, 24, 100, 4096, 100000};

/// A block of the host's memory.
class Block
{
public:
    /// \throws std::bad_alloc when there is none.
    explicit Block(std::size_t size)
        : mSize(size), mMemory(static_cast<unsigned char*>(Kiln::Allocator::AllocateOrThrow(size)))
    {
    }
    ~Block() { Kiln::Allocator::Dispose(mMemory, mSize); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    std::uintptr_t Address() const { return reinterpret_cast<std::uintptr_t>(mMemory); }
    std::size_t Size() const { return mSize; }

    bool Overlaps(const Block& other) const
    {
        return Address() < other.Address() + other.mSize && other.Address() < Address() + mSize;
    }

    void Fill(unsigned char value) { std::fill_n(mMemory, mSize, value); }
    bool Holds(unsigned char value) const
    {
        return std::all_of(mMemory, mMemory + mSize, [value](unsigned char byte) { return byte == value; });
    }

private:
    const std::size_t mSize;
    unsigned char* const mMemory;
};

using Blocks = std::vector<std::unique_ptr<Block>>;

/// \return Blocks of every size, several of each.
Blocks MakeBlocks()
{
    constexpr int kOfEach = 3;
    Blocks blocks;
    for (int i = 0; i < kOfEach; ++i)
        for (const std::size_t size : kSizes)
            blocks.push_back(std::make_unique<Block>(size));
    return blocks;
}

void Aligned(Context& context)
{
    for (const auto& block : MakeBlocks())
        context.ExpectEqual("address of a block of " + std::to_string(block->Size()) + " bytes, modulo " +
                                std::to_string(alignof(std::max_align_t)),
                            std::uintptr_t{0}, block->Address() % alignof(std::max_align_t));
}

/// \return Whether no two share a byte. Where they do, they must not be written to.
bool ExpectApart(Context& context, const Blocks& blocks)
{
    bool apart = true;
    for (std::size_t i = 0; i < blocks.size(); ++i)
        for (std::size_t other = 0; other < i; ++other)
            apart = context.Expect(!blocks[i]->Overlaps(*blocks[other]),
                                   "blocks of " + std::to_string(blocks[other]->Size()) + " and " +
                                       std::to_string(blocks[i]->Size()) + " bytes",
                                   "apart", "overlapping") &&
                    apart;
    return apart;
}

/// Expects the blocks to be apart and to keep what is written to them. \param value Of the block before the
/// first.
void ExpectKept(Context& context, const Blocks& blocks, unsigned char value)
{
    if (!ExpectApart(context, blocks))
        return;
    unsigned char written = value;
    for (const auto& block : blocks)
        block->Fill(++written);
    for (const auto& block : blocks)
        context.Expect(block->Holds(++value), "a block of " + std::to_string(block->Size()) + " bytes",
                       "what was written", "something else");
}

void Distinct(Context& context)
{
    ExpectKept(context, MakeBlocks(), 0);
}

void Threads(Context& context)
{
    constexpr int kRounds = 20;
    std::mutex mutex;
    Blocks mine = MakeBlocks();
    ExpectKept(context, mine, 0);
    Blocks theirs;
    std::atomic<int> threads{0};
    context.ExpectNoThrow("memory on other threads", [&] {
        OnTwoThreads([&] {
            const auto first = static_cast<unsigned char>(++threads * 100);
            for (int i = 0; i < kRounds; ++i)
                ExpectKept(context, MakeBlocks(), first);
            Blocks made = MakeBlocks();
            const std::lock_guard<std::mutex> lock(mutex);
            std::move(made.begin(), made.end(), std::back_inserter(theirs));
            mine.clear();
        });
    });
    ExpectKept(context, theirs, 0);  // and given back here
}

void Exhausted(Context& context)
{
    Context::Require(context.GetSubject().exhaustMemory, "exhaustMemory");
    const auto& exhaust = context.GetSubject().exhaustMemory;
    {
        const Finally refill([&exhaust] { exhaust(false); });
        exhaust(true);
        context.ExpectNoThrow("asking for memory where there is none", [&context] {
            void* const memory = Kiln::Allocator::Allocate(1);
            if (!context.Expect(memory == nullptr, "memory where there is none", "null", "a block"))
                Kiln::Allocator::Dispose(memory, 1);
        });
    }
    context.ExpectNoThrow("asking for memory when there is some again", [] { const Block block(1); });
}

}  // namespace

std::vector<Check> MemoryChecks()
{
    return {
        {"memory.aligned", "Every block is aligned for any fundamental type.",
         "Message copies lie across their alignment: crashes, where the processor or the compiler minds.",
         Aligned},
        {"memory.distinct", "A block belongs to its owner alone, every byte of it, until it is given back.",
         "Messages overwrite each other: components get what was meant for others.", Distinct},
        {"memory.threads",
         "Memory is given on any thread and taken back on any other.",
         "What a callback of a background thread posts is lost, or the heap is damaged.",
         Threads,
         {"memory.distinct"}},
        {"memory.exhausted", "Allocate gives null when there is no memory; it does not throw.",
         "An exception comes where null is expected.", Exhausted},
    };
}

}  // namespace Conformance
