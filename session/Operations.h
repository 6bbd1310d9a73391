#pragma once

#include "assetconnector/host/ridge/IIngestLibraryNotifier.h"
#include "session/format/Json.h"
#include "session/format/ValueWriter.h"

#include <boost/function.hpp>

#include <array>
#include <cstddef>
#include <string_view>

/// The operations that session files name, a row each.
namespace Session {

/// What people call the arguments of an operation, in their order.
struct Labels
{
    static constexpr std::size_t kMost = 13;

    template <class... Texts>
    constexpr explicit Labels(Texts... label) : texts{label...}, count(sizeof...(label))
    {
        static_assert(sizeof...(label) <= kMost);
    }

    std::array<std::string_view, kMost> texts;
    std::size_t count;
};

/// A call with its arguments.
struct BoundCall
{
    boost::function<void()> run;
    boost::function<std::string(const ValueWriter&)> arguments;  ///< An array, as JSON.
};

/// A callback of the ingest library.
struct CallbackOperation
{
    std::string_view name;
    Labels labels;
    BoundCall (*bind)(const Json& arguments, const Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>& target);
};

/// An exported function that a host calls.
struct ExportedFunction
{
    std::string_view name;
    Labels labels;
    BoundCall (*bind)(const Json& arguments);
};

/// An operation that the library calls: of the dispatcher, or of the host. Every one can be made to throw.
struct Operation
{
    std::string_view name;
    Labels labels;            ///< Of the arguments that an effect shows.
    bool isHostCall = false;  ///< Its effect is a "hostCall".
};

/// Each finds a row by its name; null when there is none.
const CallbackOperation* FindCallback(std::string_view name);
const ExportedFunction* FindExportedFunction(std::string_view name);
const Operation* FindDispatcherOperation(std::string_view name);
const Operation* FindHostOperation(std::string_view name);

}  // namespace Session
