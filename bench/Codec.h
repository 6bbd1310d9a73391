#pragma once

#include "bench/Work.h"
#include "reference_host/Host.h"

#include <benchmark/benchmark.h>
#include <boost/function.hpp>

#include <cstddef>
#include <string>

/// Who is measured on the work.
namespace Bench {

/// One round of what is measured.
using Operation = boost::function<void()>;

/// One direction of a codec.
struct Direction
{
    /// Null: this direction is not measured. Everything that is not part of a round happens here.
    Operation (*prepare)(const Work& work) = nullptr;
    bool everyKind = false;    ///< Else assets alone.
    bool isQuadratic = false;  ///< The largest work takes many seconds: few repetitions.
};

struct Codec
{
    const char* name;
    Direction decode;
    Direction encode;
    bool countsMemory = false;  ///< Its peak is measured. Only memory from operator new is counted.
};

/// Adds a codec while the program starts: a peer takes part when its file is linked.
struct AddedCodec
{
    explicit AddedCodec(const Codec& codec);
};

/// What Measure runs.
struct Prepared
{
    Operation round;
    std::size_t bytes = 0;  ///< Of the text, for the peak of memory; 0: that is not measured.
};

/// Has something measured. \param items What one round handles.
/// \param prepare Called before each run of rounds; what it gives goes with the run.
benchmark::internal::Benchmark& Measure(const std::string& name, std::size_t items,
                                        const boost::function<Prepared()>& prepare);

/// \return The parse alone, by the XML library's own parser with default settings. The work outlives it.
Operation BareParse(const Work& work);

/// Has every codec measured on all works, hostile texts, and what the connectors do, recorded too.
void MeasureCodecs();
void MeasureHostile();
void MeasureConnectors(ReferenceHost::Host& host);
void MeasureRecorded(ReferenceHost::Host& host);

/// \return The most bytes that the operation held at a time beyond what was held before.
std::size_t PeakBytes(const Operation& operation);

}  // namespace Bench
