#include "assetconnector/host/Installation.h"
#include "conformance/CountedMemory.h"
#include "conformance/Main.h"
#include "examples/embedding/Panels.h"
#include "tests/conformance/Rig.h"
#include "tests/support/System.h"
#include "tests/support/TextFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <thread>
#include <vector>

namespace {

using Conformance::Check;
using Conformance::Context;
using Conformance::Outcome;
using testing::HasSubstr;
using Names = std::vector<std::string>;

Names NamesOf(const Conformance::Report& report)
{
    Names names;
    for (const auto& result : report.results)
        names.push_back(result.name);
    return names;
}

void ExpectAllPassed(const Conformance::Report& report)
{
    EXPECT_EQ(report.results.size(), Conformance::Checks().size());
    for (const auto& result : report.results)
        EXPECT_EQ(result.outcome, Outcome::kPassed) << result.name << result.reason;
}

TEST(Conformance, TheReferenceHostPassesAgainAndAgain)
{
    Rig<ThreadedStations> threaded;
    Rig<StationsByHand> byHand;
    for (int i = 0; i < 2; ++i) {
        ExpectAllPassed(Conformance::Run(threaded.subject));
        ExpectAllPassed(Conformance::Run(byHand.subject));
    }
    EXPECT_EQ(threaded.memory.LiveBlocks(), 0U);
    EXPECT_EQ(byHand.memory.LiveBlocks(), 0U);
}

TEST(Conformance, TheExamplePasses)
{
    std::ostringstream page;
    Panels panels(page);
    Rig<StationsByHand> rig;
    Conformance::Subject subject({panels, rig.stations, rig.library, rig.files, rig.texts, rig.memory});
    subject.raisePanelEvent = [&panels](const auto& type, const auto& data) { panels.Raise(type, data); };
    subject.waitForUserInterface = rig.subject.waitForUserInterface;
    const Conformance::Report report = Conformance::Run(subject);
    EXPECT_EQ(report.Count(Outcome::kFailed), 0U);
    EXPECT_GT(report.Count(Outcome::kPassed), Conformance::Checks().size() * 3 / 4);
}

TEST(Conformance, TheTableAloneIsEnough)
{
    const Rig<ThreadedStations> rig;
    const Conformance::Report report = Conformance::Run(Conformance::Subject(rig.subject.services));
    EXPECT_EQ(report.Count(Outcome::kFailed), 0U);
    EXPECT_GT(report.Count(Outcome::kPassed), Conformance::Checks().size() / 2);
    for (const auto& result : report.results)
        EXPECT_EQ(result.reason.empty(), result.outcome == Outcome::kPassed) << result.name;
}

TEST(Conformance, ChecksRunOneByOneWithWhatTheyNeed)
{
    const Rig<ThreadedStations> rig;
    Conformance::Options options;
    options.only = {"panels.twice", "connectors.dropped-inside"};
    EXPECT_EQ(NamesOf(Conformance::Run(rig.subject, options)),
              (Names{"stations.ends", "stations.end-waits", "panels.twice", "stations.end-itself",
                     "connectors.dropped-inside"}));
    for (const Check& check : Conformance::Checks()) {
        options.only = {check.name};
        const Conformance::Report report = Conformance::Run(rig.subject, options);
        EXPECT_EQ(report.Count(Outcome::kPassed), report.results.size()) << check.name;
    }
    options.only = {"files"};
    EXPECT_GT(Conformance::Run(rig.subject, options).results.size(), 5U);
    options.only = {"file"};
    EXPECT_THROW(Conformance::Run(rig.subject, options), std::invalid_argument);
}

TEST(Conformance, OwnChecksFailAndThrowAsTheKits)
{
    const Rig<ThreadedStations> rig;
    const auto pass = [](Context& context) { context.ExpectEqual("one", 1, 1); };
    Conformance::Options options;
    options.only = {"own"};
    options.own = {
        {"own.passes", "", "", pass},
        {"own.fails", "", "", [](Context& context) { context.ExpectEqual("one", 1, 2); }},
        {"own.throws", "", "", [](Context& /*context*/) { throw std::out_of_range("far"); }},
        {"own.says-nothing", "", "", [](Context& /*context*/) {}},
        {"own.cannot", "", "", [](Context& /*context*/) { Context::NotChecked("no disk"); }},
        {"own.needs", "", "", pass, {"own.fails"}},
        {"own.waits", "", "",
         [](Context& context) {
             context.Expect(!context.WaitUntil([] { return false; }), "a wait", "an end", "none");
         }},
    };
    options.limit = std::chrono::milliseconds(10);
    const auto results = Conformance::Run(rig.subject, options).results;
    ASSERT_EQ(results.size(), 7U);
    EXPECT_EQ(results[0].outcome, Outcome::kPassed);
    EXPECT_EQ(results[1].outcome, Outcome::kFailed);
    EXPECT_EQ(results[2].failures.at(0).actual, "std::out_of_range: far");
    EXPECT_EQ(results[3].reason, "it expected nothing");
    EXPECT_EQ(results[4].reason, "no disk");
    EXPECT_EQ(results[5].reason, "own.fails did not pass");
    EXPECT_EQ(results[6].outcome, Outcome::kPassed);

    options.own = {{"stations.order", "", "", pass}};
    EXPECT_THROW(Conformance::Run(rig.subject, options), std::invalid_argument) << "a name of the kit";
    options.own = {{"own", "", "", pass, {"nothing"}}};
    EXPECT_THROW(Conformance::Run(rig.subject, options), std::invalid_argument);
}

/// The last delivery may still be under way when its check has seen it.
TEST(Conformance, WaitsForWhatIsPostedWhereNothingDropsIt)
{
    Rig<ThreadedStations> rig;
    rig.subject.dropPosted.clear();
    Conformance::Options options;
    for (const char* name : {"stations.post", "stations.post-thread", "stations.post-after-exception"}) {
        options.only = {name};
        for (int i = 0; i < 20; ++i) {
            const Conformance::Report report = Conformance::Run(rig.subject, options);
            EXPECT_EQ(report.Count(Outcome::kPassed), report.results.size());
            EXPECT_EQ(rig.memory.LiveBlocks(), 0U);
        }
    }
}

TEST(Conformance, DoesNotCountWhatAnEarlierRunLeft)
{
    ReferenceHost::Memory next;
    Conformance::CountedMemory memory(next);
    void* const left = next.Allocate(1);
    memory.Dispose(left, 1);
    EXPECT_EQ(memory.LiveBlocks(), 0U);
    void* const own = memory.Allocate(1);
    EXPECT_EQ(memory.LiveBlocks(), 1U);
    memory.Dispose(own, 1);
    EXPECT_EQ(memory.LiveBlocks(), 0U);
    EXPECT_EQ(next.LiveBlocks(), 0U);
}

TEST(Conformance, NeedsAHostThatIsNotInstalled)
{
    const Rig<ThreadedStations> rig;
    const AC::Installation installation(rig.subject.services, [] {});
    EXPECT_THROW(Conformance::Run(rig.subject), std::logic_error);
}

struct Ended
{
    int status;
    std::string output;
};

Ended RunMain(Names arguments, const std::vector<Check>& own = {})
{
    const Rig<ThreadedStations> rig;
    arguments.insert(arguments.begin(), "conformance");
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int status =
        Conformance::Main(static_cast<int>(pointers.size()), pointers.data(), rig.subject, own);
    return {status, testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr()};
}

TEST(ConformanceMain, HasAnExitStatus)
{
    const std::vector<Check> own{
        {"own", "Ours.", "", [](Context& context) { context.Expect(false, "it", "good", "bad"); }}};
    EXPECT_EQ(RunMain({"--only", "files", "--limit", "3"}).status, 0);
    const Ended failed = RunMain({"--only", "own", "--tap"}, own);
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.output.substr(0, 37), "TAP version 13\n1..1\nnot ok 1 - own\n  ");
    const Ended listed = RunMain({"--list"}, own);
    EXPECT_EQ(listed.status, 0);
    EXPECT_NE(listed.output.find("own\n    Ours.\n"), std::string::npos);
    EXPECT_EQ(RunMain({"--help"}).status, 0);
    for (const Names& bad :
         {Names{"--what"}, Names{"--only"}, Names{"--only", "nothing"}, Names{"--limit", "0"},
          Names{"--limit", "-1"}, Names{"--only", "files", "--junit", "/no/such/folder/file.xml"}})
        EXPECT_EQ(RunMain(bad).status, 2) << bad[0];
}

TEST(ConformanceMain, CannotCheckWhereAHostIsInstalled)
{
    const Rig<ThreadedStations> rig;
    const AC::Installation installation(rig.subject.services, [] {});
    EXPECT_EQ(RunMain({}).status, 2);
}

TEST(Conformance, ATemporaryDirectoryThatCannotBeUsedFailsNothing)
{
    const char* const before = std::getenv(TestSystem::kTemporaryDirectory);
    const std::string kept = before == nullptr ? "" : before;
    TestSystem::SetVariable(TestSystem::kTemporaryDirectory, "/no/such/folder");
    const Rig<ThreadedStations> rig;
    Conformance::Options options;
    options.only = {"files.file", "files.threads"};
    const auto results = Conformance::Run(rig.subject, options).results;
    TestSystem::SetVariable(TestSystem::kTemporaryDirectory, before == nullptr ? nullptr : kept.c_str());
    for (const auto& result : results) {
        EXPECT_EQ(result.outcome, Outcome::kNotChecked);
        EXPECT_EQ(result.reason.find("cannot make files in the temporary directory"), 0U) << result.reason;
    }
}

TEST(ConformanceMain, EndsTheProcessWhenACheckCannotEnd)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const struct
    {
        void (*run)(Context& context);
        const char* why;
        const char* reason;
    } kCases[] = {
        {[](Context& /*context*/) { std::this_thread::sleep_for(std::chrono::minutes(2)); },
         "does not come back", "not checked  own.later: own.stuck hangs"},
        {[](Context& /*context*/) { std::thread([] { throw std::runtime_error("no page"); }).join(); },
         "no page leaves a thread of the host", "not checked  own.later: own.stuck ends the process"},
    };
    for (const auto& each : kCases) {
        const std::vector<Check> own{{"own.stuck", "", "", each.run},
                                     {"own.later", "", "", [](Context& /*context*/) {}}};
        const Rig<ThreadedStations> rig;
        std::string name = "conformance";
        std::string only = "--only";
        std::string wanted = "own";
        std::string limit = "--limit";
        std::string seconds = "1";
        std::vector<char*> arguments{name.data(), only.data(), wanted.data(), limit.data(), seconds.data()};
        EXPECT_EXIT(
            {
                std::cout.rdbuf(std::cerr.rdbuf());  // which is what is looked at
                Conformance::Main(static_cast<int>(arguments.size()), arguments.data(), rig.subject, own);
            },
            testing::ExitedWithCode(1),
            testing::AllOf(HasSubstr("own.stuck"), HasSubstr(each.why), HasSubstr(each.reason),
                           HasSubstr("1 failed, 1 not checked")));
    }
}

/// The page lists every check, in order, as the kit has it.
TEST(Conformance, HasAPage)
{
    std::string rows;
    for (const Check& check : Conformance::Checks())
        rows += "| `" + check.name + "` | " + check.about + " | " + check.consequence + " |\n";
    EXPECT_NE(TextOf(TEST_DATA "/../docs/conformance.md").find("|---|---|---|\n" + rows + "\n"),
              std::string::npos)
        << "The table of docs/conformance.md must be\n"
        << rows;
}

}  // namespace
