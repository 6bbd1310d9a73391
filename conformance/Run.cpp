#include "conformance/Run.h"

#include "assetconnector/host/Installation.h"
#include "assetconnector/host/XMLPlatform.h"
#include "conformance/CheckTables.h"
#include "conformance/CountedMemory.h"
#include "conformance/Watchdog.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <exception>
#include <iterator>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <stdexcept>
#include <thread>
#include <utility>

namespace Conformance {
namespace {

/// As long as it lives, an exception that leaves a thread is told before it ends the process. One at a time.
class LeavingExceptions
{
public:
    /// \param tell Called on that thread.
    explicit LeavingExceptions(boost::function<void(const std::string& exception)> tell)
        : mTell(std::move(tell)), mBefore(std::set_terminate(&Terminate))
    {
        gListener = this;
    }
    ~LeavingExceptions()
    {
        gListener = nullptr;
        std::set_terminate(mBefore);
    }
    LeavingExceptions(const LeavingExceptions&) = delete;
    LeavingExceptions& operator=(const LeavingExceptions&) = delete;

private:
    [[noreturn]] static void Terminate()
    {
        if (const LeavingExceptions* const listener = gListener.exchange(nullptr))
            listener->mTell(std::current_exception() == nullptr ? "something" : DescribeException());
        std::abort();
    }

    static inline std::atomic<const LeavingExceptions*> gListener{nullptr};

    const boost::function<void(const std::string& exception)> mTell;
    const std::terminate_handler mBefore;
};

bool Fits(const Check& check, const std::string& wanted)
{
    return check.name == wanted || check.name.compare(0, wanted.size() + 1, wanted + '.') == 0;
}

/// What is run, in an order in which each check stands behind those that it needs.
class Plan
{
public:
    /// \throws As Run.
    explicit Plan(const Options& options)
    {
        for (const std::vector<Check>* checks : {&Checks(), &options.own})
            for (const Check& check : *checks)
                if (!mByName.emplace(check.name, &check).second)
                    throw std::invalid_argument("two checks have the name " + check.name);
        for (const std::string& wanted : options.only)
            if (std::none_of(mByName.begin(), mByName.end(),
                             [&wanted](const auto& entry) { return Fits(*entry.second, wanted); }))
                throw std::invalid_argument("there is no check " + wanted);
        for (const std::vector<Check>* checks : {&Checks(), &options.own})
            for (const Check& check : *checks)
                if (options.only.empty() ||
                    std::any_of(options.only.begin(), options.only.end(),
                                [&check](const std::string& wanted) { return Fits(check, wanted); }))
                    Add(check);
    }

    const std::vector<const Check*>& Checked() const { return mChecked; }

private:
    void Add(const Check& check)
    {
        if (!mAdded.insert(check.name).second)
            return;
        for (const std::string& needed : check.needs) {
            const auto found = mByName.find(needed);
            if (found == mByName.end())
                throw std::invalid_argument(check.name + " needs " + needed + ", which is no check");
            Add(*found->second);
        }
        mChecked.push_back(&check);
    }

    std::map<std::string, const Check*> mByName;
    std::set<std::string> mAdded;
    std::vector<const Check*> mChecked;
};

Result ResultOf(const Check& check)
{
    Result result;
    result.name = check.name;
    result.about = check.about;
    result.consequence = check.consequence;
    return result;
}

/// One run of the checks of a plan.
class Runner
{
public:
    Runner(const Subject& subject, const Options& options, const CountedMemory& memory, const Plan& plan)
        : mSubject(subject), mOptions(options), mMemory(memory), mPlan(plan)
    {
    }

    Report Run()
    {
        std::optional<LeavingExceptions> leaving;
        if (mOptions.onHang)
            leaving.emplace([this](const std::string& exception) {
                mOptions.onHang(LostReport("an end of what it calls",
                                           exception + " leaves a thread of the host", "ends the process"));
            });
        for (const Check* check : mPlan.Checked()) {
            Result result = RunWatched(*check);
            const std::lock_guard<std::mutex> lock(mMutex);
            mReport.results.push_back(std::move(result));
        }
        return std::move(mReport);
    }

private:
    Result RunWatched(const Check& check)
    {
        for (const std::string& needed : check.needs)
            if (!HasPassed(needed)) {
                Result result = ResultOf(check);
                result.reason = needed + " did not pass";
                return result;
            }
        std::optional<Watchdog> watchdog;
        if (mOptions.onHang)
            watchdog.emplace(mOptions.hangLimit, [this] {
                const auto limit =
                    std::chrono::duration_cast<std::chrono::seconds>(mOptions.hangLimit).count();
                mOptions.onHang(LostReport(
                    "an end", "none within " + std::to_string(limit) + " s: a service does not come back",
                    "hangs"));
            });
        return RunOne(check);
    }

    Result RunOne(const Check& check) const
    {
        Result result = ResultOf(check);
        Context context(mSubject, mOptions.limit, [this] { return mMemory.LiveBlocks(); });
        const auto begin = std::chrono::steady_clock::now();
        try {
            check.function(context);
            if (!context.Expected())
                result.reason = "it expected nothing";
        } catch (const NotCheckedException& exception) {
            result.reason = exception.why;
        } catch (...) {
            context.Expect(false, "the whole check", "no exception", DescribeException());
        }
        result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        result.failures = context.Failures();
        if (!result.failures.empty())
            result.reason.clear();  // it came far enough
        result.outcome = !result.failures.empty() ? Outcome::kFailed
                         : result.reason.empty()  ? Outcome::kPassed
                                                  : Outcome::kNotChecked;
        return result;
    }

    bool HasPassed(const std::string& name) const
    {
        return std::any_of(mReport.results.begin(), mReport.results.end(), [&name](const Result& result) {
            return result.name == name && result.outcome == Outcome::kPassed;
        });
    }

    /// What is left when the check that is under way does not come to its end. Any thread.
    Report LostReport(const std::string& expected, const std::string& actual, const std::string& reason) const
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        Report report = mReport;
        const std::size_t lost = report.results.size();
        for (std::size_t i = lost; i < mPlan.Checked().size(); ++i) {
            Result result = ResultOf(*mPlan.Checked()[i]);
            if (i == lost) {
                result.outcome = Outcome::kFailed;
                result.failures = {{"the whole check", expected, actual}};
            } else {
                result.reason = mPlan.Checked()[lost]->name + ' ' + reason;
            }
            report.results.push_back(std::move(result));
        }
        return report;
    }

    const Subject& mSubject;
    const Options& mOptions;
    const CountedMemory& mMemory;
    const Plan& mPlan;
    mutable std::mutex mMutex;
    Report mReport;
};

/// Lets posted messages be delivered or dropped, and those of the last delivery be destroyed: all of that
/// uses the host and its memory, which go then.
void EndPosted(const Subject& subject, const CountedMemory& memory, std::chrono::milliseconds limit) noexcept
{
    try {
        if (subject.waitForUserInterface)
            subject.waitForUserInterface();
    } catch (...) {  // what a late listener throws; the rest is dropped
    }
    if (subject.dropPosted)
        subject.dropPosted();
    const auto end = std::chrono::steady_clock::now() + limit;
    while (memory.LiveBlocks() != 0 && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

std::vector<Check> AllChecks()
{
    std::vector<Check> all;
    for (const auto table : {MemoryChecks, StationChecks, PostedMessageChecks, FileChecks, TextChecks,
                             IngestLibraryChecks, PanelEventChecks, ConnectorChecks}) {
        std::vector<Check> checks = table();
        std::move(checks.begin(), checks.end(), std::back_inserter(all));
    }
    return all;
}

}  // namespace

const std::vector<Check>& Checks()
{
    static const std::vector<Check> all = AllChecks();
    return all;
}

Report Run(const Subject& subject, const Options& options)
{
    const Plan plan(options);
    const AC::XMLPlatform platform;
    CountedMemory memory(subject.services.memory);
    AC::HostServices table{subject.services.panelEvents,   subject.services.stations,
                           subject.services.ingestLibrary, subject.services.files,
                           subject.services.texts,         memory};
    const AC::Installation installation(
        table, [&subject, &memory, limit = options.limit] { EndPosted(subject, memory, limit); });
    return Runner(subject, options, memory, plan).Run();
}

}  // namespace Conformance
