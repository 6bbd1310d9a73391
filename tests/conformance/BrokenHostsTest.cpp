// For each check a host with one fault that fails it.

#include "tests/conformance/FaultyLibraries.h"
#include "tests/conformance/FaultyPanels.h"
#include "tests/conformance/FaultyQueue.h"
#include "tests/conformance/FaultyServices.h"
#include "tests/conformance/FaultyStations.h"
#include "tests/conformance/Rig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace {

using namespace FaultyLibraries;
using namespace FaultyPanels;
using namespace FaultyServices;
using Conformance::Outcome;
using Names = std::set<std::string>;
using Q = QueueFault;
using S = StationFault;

template <class Service>
Conformance::Report RunOn()
{
    Conformance::Options options;
    options.limit = std::chrono::milliseconds(1500);
    Rig<Service> rig;
    return Conformance::Run(rig.subject, options);
}

struct BrokenHost
{
    const char* fault;
    Names fails;  ///< One check, or those that cannot but fail with it.
    Conformance::Report (*run)();
};

void PrintTo(const BrokenHost& host, std::ostream* out)
{
    *out << host.fault;
}

const BrokenHost kBrokenHosts[] = {
    {"Misaligned", {"memory.aligned"}, RunOn<Misaligned>},
    {"OneLargeBlock", {"memory.distinct"}, RunOn<OneLargeBlock>},
    {"MemoryOfOneThread", {"memory.threads"}, RunOn<MemoryOfOneThread>},
    {"ThrowsWithoutMemory", {"memory.exhausted"}, RunOn<ThrowsWithoutMemory>},

    {"DeliversOnAnotherThread", {"stations.broadcast"}, RunOn<StationsThat<S::kDeliversOnAnotherThread>>},
    {"PutsTheFourthFirst", {"stations.order"}, RunOn<StationsThat<S::kPutsTheFourthFirst>>},
    {"ComparesAddresses", {"stations.other"}, RunOn<StationsThat<S::kComparesAddresses>>},
    {"ComparesBeginnings",
     {"stations.other", "stations.ends", "stations.threads"},
     RunOn<StationsThat<S::kComparesBeginnings>>},
    {"UnknownStationThrows", {"stations.nobody"}, RunOn<StationsThat<S::kUnknownStationThrows>>},
    {"EndsOneSubscription", {"stations.ends"}, RunOn<StationsThat<S::kEndsOneSubscription>>},
    {"SkipsTheNext", {"stations.end-itself"}, RunOn<StationsThat<S::kSkipsTheNext>>},
    {"WaitsForItself", {"stations.end-itself"}, RunOn<StationsThat<S::kWaitsForItself>>},
    {"DeliversToEnded", {"stations.end-other"}, RunOn<StationsThat<S::kDeliversToEnded>>},
    {"DoesNotWait", {"stations.end-waits"}, RunOn<StationsThat<S::kDoesNotWait>>},
    {"DoesNotWaitForItsThread", {"stations.end-waits"}, RunOn<ThreadedStationsThat<S::kDoesNotWait>>},
    {"LosesAddedInside", {"stations.add-inside"}, RunOn<StationsThat<S::kLosesAddedInside>>},
    {"NestedLater", {"stations.nested"}, RunOn<StationsThat<S::kNestedLater>>},
    {"SwallowsExceptions", {"stations.exception"}, RunOn<StationsThat<S::kSwallowsExceptions>>},
    {"StuckAfterException", {"stations.after-exception"}, RunOn<StationsThat<S::kStuckAfterException>>},
    {"ThreadOfItsOwn", {"stations.threads"}, RunOn<StationsThat<S::kThreadOfItsOwn>>},

    {"LosesUnflagged", {"stations.post"}, RunOn<QueueThat<Q::kLosesUnflagged>>},
    {"SendsTheOriginal", {"stations.post-copy"}, RunOn<QueueThat<Q::kSendsTheOriginal>>},
    {"DeliversAtOnceOnItsThread", {"stations.post-later"}, RunOn<QueueThat<Q::kDeliversAtOnceOnItsThread>>},
    {"FlaggedFirst", {"stations.post-order"}, RunOn<QueueThat<Q::kFlaggedFirst>>},
    {"ThreadForEach", {"stations.post-thread"}, RunOn<QueueThat<Q::kThreadForEach>>},
    {"DeliversForeignAtOnce", {"stations.post-thread"}, RunOn<QueueThat<Q::kDeliversForeignAtOnce>>},
    {"QueueOfThePoster", {"stations.post-poster-gone"}, RunOn<QueueThat<Q::kQueueOfThePoster>>},
    {"ThrowsOnForeignThreads", {"stations.post-poster-gone"}, RunOn<QueueThat<Q::kThrowsOnForeignThreads>>},
    {"KeepsDelivered", {"stations.post-memory"}, RunOn<QueueThat<Q::kKeepsDelivered>>},
    {"LosesBehindUnheard", {"stations.post-nobody"}, RunOn<QueueThat<Q::kLosesBehindUnheard>>},
    {"ThrowsAwayAfterException",
     {"stations.post-after-exception"},
     RunOn<QueueThat<Q::kThrowsAwayAfterException>>},

    {"AnythingIsAFolder", {"files.file"}, RunOn<AnythingIsAFolder>},
    {"NothingIsAFolder", {"files.folder"}, RunOn<NothingIsAFolder>},
    {"LooksAtFoldersAlone", {"files.missing"}, RunOn<LooksAtFoldersAlone>},
    {"EmptyIsHere", {"files.empty"}, RunOn<EmptyIsHere>},
    {"PathsInASCII", {"files.characters"}, RunOn<PathsInASCII>},
    {"ComparesPathTexts", {"files.not-normalised"}, RunOn<ComparesPathTexts>},
    {"ThrowsForLongNames", {"files.odd-paths"}, RunOn<ThrowsForLongNames>},
    {"WantsWellFormedPaths", {"files.normal-form"}, RunOn<WantsWellFormedPaths>},
    {"NumbersForms", {"files.panel-form"}, RunOn<NumbersForms>},
    {"FilesOfOneThread", {"files.threads"}, RunOn<FilesOfOneThread>},

    {"LocalizesToASCII", {"texts.default"}, RunOn<LocalizesToASCII>},
    {"FillsPlaces", {"texts.replacements"}, RunOn<FillsPlaces>},
    {"ReportsDetailsAlone", {"texts.report"}, RunOn<ReportsDetailsAlone>},
    {"GuidsTwice", {"texts.fresh-guids"}, RunOn<GuidsTwice>},
    {"GuidsOfEachThread", {"texts.guids-of-threads"}, RunOn<GuidsOfEachThread>},
    {"TextsOfOneThread", {"texts.threads"}, RunOn<TextsOfOneThread>},

    {"SwapsTimes", {"library.media-info"}, RunOn<SwapsTimes>},
    {"LoadsFromDisk", {"library.media-info"}, RunOn<LoadsFromDisk>},
    {"UntypedMasterClips", {"library.master-clip"}, RunOn<UntypedMasterClips>},
    {"WantsXMP", {"library.null-xmp"}, RunOn<WantsXMP>},
    {"WritesIntoPackets", {"library.shared-xmp"}, RunOn<WithProject<WritesIntoPackets>>},
    {"ForgetsGuids", {"library.registered"}, RunOn<WithProject<ForgetsGuids>>},
    {"RefreshesKnownAlone", {"library.unknown"}, RunOn<WithProject<RefreshesKnownAlone>>},
    {"WantsEntries", {"library.null-entries"}, RunOn<WithProject<WantsEntries>>},
    {"NeverRefreshes", {"library.refreshed"}, RunOn<WithProject<NeverRefreshes>>},
    {"InfosGoWithTheProject", {"library.survives-project"}, RunOn<InfosGoWithTheProject>},
    {"WantsAProject", {"library.no-project"}, RunOn<WantsAProject>},
    {"KeepsPackets", {"library.cached-xmp"}, RunOn<KeepsPackets>},
    {"GivesTheLastPacket", {"library.unknown-xmp"}, RunOn<GivesTheLastPacket>},
    {"NoCustomMetadata", {"library.custom-metadata"}, RunOn<NoCustomMetadata>},
    {"WantsExtensions", {"library.odd-paths"}, RunOn<WantsExtensions>},
    {"ProvidersOnce", {"library.providers"}, RunOn<ProvidersOnce>},
    {"WantsAssets", {"library.core"}, RunOn<WantsAssets>},
    {"NoMarkers", {"library.marker"}, RunOn<NoMarkers>},
    {"MarkersAtOneRate", {"library.marker"}, RunOn<MarkersAtOneRate>},
    {"LibraryOfOneThread", {"library.threads"}, RunOn<LibraryOfOneThread>},

    {"AsciiEvents", {"panels.registered"}, RunOn<AsciiEvents>},
    {"RaisesUnknown", {"panels.unregistered"}, RunOn<RaisesUnknown>},
    {"RemovesOnce", {"panels.removed"}, RunOn<RemovesOnce>},
    {"NeverRemoves", {"panels.removed", "connectors.requests"}, RunOn<NeverRemoves>},
    {"OncePerRegistration", {"panels.twice"}, RunOn<OncePerRegistration>},
    {"GroupsByType", {"panels.order"}, RunOn<GroupsByType>},
    {"AsciiNotifications", {"panels.dispatched"}, RunOn<AsciiNotifications>},
    {"CutsNotifications", {"panels.large"}, RunOn<CutsNotifications>},
    {"LatinID", {"panels.browser-id"}, RunOn<LatinID>},
    {"RegistersOnOneThread", {"panels.threads"}, RunOn<RegistersOnOneThread>},

    {"RoomFor32", {"connectors.requests"}, RunOn<RoomFor32>},
    {"LosesRegisteredInside", {"connectors.registered-inside"}, RunOn<LosesRegisteredInside>},
    {"NoNestedNotifications", {"connectors.inside-dispatch"}, RunOn<NoNestedNotifications>},
    {"NoNestedEvents", {"connectors.inside-dispatcher"}, RunOn<NoNestedEvents>},
    {"NoEventsOfComponents", {"connectors.inside-delivery"}, RunOn<NoEventsOfComponents>},
    {"SilentAfterPanelThrew", {"connectors.panel-throws"}, RunOn<SilentAfterPanelThrew>},
    {"DeafAfterDispatcherThrew", {"connectors.dispatcher-throws"}, RunOn<DeafAfterDispatcherThrew>},
    {"LastListenerEndsStation",
     {"connectors.dropped-inside"},
     RunOn<StationsThat<S::kLastListenerEndsStation>>},
};

/// \return What cannot be checked when these fail.
Names DependantsOf(const Names& failed)
{
    Names missing = failed;
    for (std::size_t before = 0; before != missing.size();) {
        before = missing.size();
        for (const Conformance::Check& check : Conformance::Checks())
            for (const std::string& needed : check.needs)
                if (missing.count(needed) != 0)
                    missing.insert(check.name);
    }
    for (const std::string& name : failed)
        missing.erase(name);
    return missing;
}

Names NamesOf(const Conformance::Report& report, Outcome outcome)
{
    Names names;
    for (const Conformance::Result& result : report.results)
        if (result.outcome == outcome)
            names.insert(result.name);
    return names;
}

class BrokenHosts : public ::testing::TestWithParam<BrokenHost>
{
};

TEST_P(BrokenHosts, FailWhatTheirFaultBreaksAndNothingElse)
{
    const Conformance::Report report = GetParam().run();
    EXPECT_EQ(NamesOf(report, Outcome::kFailed), GetParam().fails);
    EXPECT_EQ(NamesOf(report, Outcome::kNotChecked), DependantsOf(GetParam().fails));
}

INSTANTIATE_TEST_SUITE_P(Each, BrokenHosts, ::testing::ValuesIn(kBrokenHosts),
                         [](const auto& row) { return std::string(row.param.fault); });

TEST(Checks, EachHasABrokenHostOfItsOwn)
{
    for (const Conformance::Check& check : Conformance::Checks())
        EXPECT_TRUE(std::any_of(std::begin(kBrokenHosts), std::end(kBrokenHosts),
                                [&check](const BrokenHost& host) { return host.fails == Names{check.name}; }))
            << "no broken host fails " << check.name << " alone";
}

/// The faults are those of the fakes, not of what they are made of.
TEST(Checks, PassOnTheFakesWithoutAFault)
{
    for (const auto run : {RunOn<StationsThat<S::kNone>>, RunOn<QueueThat<Q::kNone>>, RunOn<HoldsEvents>}) {
        const Conformance::Report report = run();
        EXPECT_EQ(NamesOf(report, Outcome::kPassed).size(), Conformance::Checks().size());
    }
}

}  // namespace
