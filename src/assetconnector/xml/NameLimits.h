#pragma once

#include <xercesc/framework/XMLElementDecl.hpp>

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <vector>

namespace AC {

/// How full the buckets of a hash table of the XML library are that holds names. A text can be made of names
/// that share a bucket, each of which is then searched for among all of them.
class NameTable
{
public:
    enum class Growth
    {
        kNone,
        kDoubles,  ///< And one more, when three quarters are taken.
    };

    NameTable(std::size_t buckets, Growth growth) : mGrowth(growth), mCounts(buckets) {}

    /// \param name One that was not added before.
    void Add(const XMLCh* name);

    /// \return How many names have shared a bucket at most.
    std::size_t Fullest() const noexcept { return mFullest; }

private:
    void Count(XMLSize_t hash) { mFullest = std::max(mFullest, ++mCounts[hash % mCounts.size()]); }

    Growth mGrowth;
    std::vector<std::size_t> mCounts;
    std::vector<XMLSize_t> mHashes;  // of all names, when the table grows
    std::size_t mFullest = 0;
};

/// Counts the different names of one text for the parser. Not for more than one thread.
class NameLimits
{
public:
    /// Each notes a name. \return Whether the names are within the limits. \throws std::bad_alloc.
    /// \param declaration The scanner has one for each name, numbered from 1.
    bool AddElement(const xercesc::XMLElementDecl& declaration);
    /// \param name The document's, which keeps one copy of each.
    bool AddAttribute(const XMLCh* name);

private:
    /// \param name One that was not seen before.
    bool Add(const XMLCh* name);

    std::size_t mElements = 0;
    std::unordered_set<const XMLCh*> mAttributes;
    // With as many buckets as these tables have.
    NameTable mOfScanner{29, NameTable::Growth::kDoubles};
    NameTable mOfDocument{257, NameTable::Growth::kNone};
};

}  // namespace AC
