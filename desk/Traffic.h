#pragma once

#include "desk/Frames.h"
#include "desk/Link.h"
#include "desk/Overview.h"

#include <boost/function.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Desk {

/// What passes, entry by entry: reads the lines of the recording, numbers them, says what the checker finds
/// in requests, and tells tool pages. Any thread.
class Traffic
{
public:
    using Json = Session::Json;

    struct Limits
    {
        std::size_t mostEntries = 4096;  ///< That are kept.
        std::size_t mostBytes = std::size_t{32} << 20;
    };

    /// \param changed Called when the overview may be another one, on the thread of Take, under no lock.
    Traffic(const Limits& limits, boost::function<void()> changed)
        : mLimits(limits), mChanged(std::move(changed))
    {
    }

    /// \param lines Whole lines of a recording, as Recording::Options::sink gets them. Never throws for what
    /// they say: what makes no sense is left out.
    void Take(const std::string& lines);

    /// The page is welcomed and, unless it wants nothing of it, told what is behind what it heard, then what
    /// comes, until Detach.
    void Welcome(const LinkRef& link, const ToolHello& hello);
    void Detach(const LinkRef& link);

    /// \return The text of the request that the entry is; null for another entry and one that is gone.
    std::optional<std::string> RequestText(std::uint64_t number) const;

    /// An input with what came of it.
    struct Passage
    {
        std::vector<std::string> lines;  ///< Of the recording, the input first.
        Json host;                       ///< The settings that it needs, as a "host" line has them.
        std::vector<std::string> alive;  ///< The connectors that lived before.
        bool isRegistered = false;       ///< Before.
    };

    /// \return Those inputs that are kept, in their order. \param numbers Of inputs; others are left out.
    std::vector<Passage> Passages(const std::vector<std::uint64_t>& numbers) const;

    /// Runs an action with the overview.
    template <class Action>
    auto WithOverview(Action action)
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        return action(mOverview);
    }

private:
    /// What holds between inputs.
    struct Standing
    {
        /// JSON, by key. Inputs share the values, which may be long.
        std::map<std::string, std::shared_ptr<const std::string>> host;
        std::vector<std::string> alive;
        bool isRegistered = false;
    };

    struct Entry
    {
        std::string line;  ///< Of the recording.
        std::string text;  ///< As pages are told of it, without marks.
        std::vector<std::string> marks;
        std::uint64_t cause = 0;                   ///< Its own number: an input.
        std::shared_ptr<const Standing> standing;  ///< Before an input.
        std::string by;
        std::string request;  ///< The identifier.
    };

    /// A request that is being raised by a page.
    struct Raised
    {
        std::string type;
        std::string by;
        std::vector<std::string> marks;
        bool isAnswered = false;  ///< By the host, beside the connectors.
        bool isSeen = false;
    };

    void TakeLine(const std::string& line);
    void TakeComment(const std::string& line);
    void TakeMark(const Json& mark);
    void TakeInput(const std::string& text, const Json& line);
    void TakeRequest(const Json& line, Entry& entry, Json& members);
    void TakeEffect(const std::string& text, const Json& line, std::uint64_t cause);
    void AddNote(const std::string& text, std::vector<std::string> marks, const std::string& by);
    /// \param line JSON. \param members What an entry has beside it.
    void Add(Entry entry, const std::string& line, Json members);
    void Send();
    std::uint64_t First() const { return mLast + 1 - mEntries.size(); }
    const Entry* Find(std::uint64_t number) const;
    static std::string TextWithMarks(const Entry& entry);

    const Limits mLimits;
    const boost::function<void()> mChanged;
    mutable std::mutex mMutex;
    std::deque<Entry> mEntries;
    std::size_t mBytes = 0;
    std::uint64_t mLast = 0;   ///< The number of the last entry.
    std::uint64_t mSent = 0;   ///< The same of what pages were told.
    std::uint64_t mInput = 0;  ///< The same of the last input.
    std::uint64_t mTime = 0;   ///< Microseconds, of the last line.
    Standing mStanding;
    std::shared_ptr<const Standing> mShared;  ///< A copy of it, until it changes.
    std::optional<Raised> mRaised;
    std::vector<std::string> mNextMarks;
    Overview mOverview;
    std::vector<LinkRef> mPages;
};

}  // namespace Desk
