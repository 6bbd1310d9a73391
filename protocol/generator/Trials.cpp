#include "protocol/generator/Trials.h"

#include "assetconnector/connectors/IngestGlintLibraryConnector.h"
#include "assetconnector/connectors/IngestMediaCollectionConnector.h"

#include <tuple>
#include <type_traits>

namespace Protocol::Generator {
namespace {

using Notifier = Ridge::IIngestLibraryNotifier;

template <auto kMember>
struct Caller;

template <class... Parameters, void (Notifier::*kMember)(Parameters...)>
struct Caller<kMember>
{
    static void Run(Notifier& target, Ridge::ResultCode code)
    {
        auto arguments = std::make_tuple(Filled<std::decay_t<Parameters>>(code)...);
        Name(arguments);
        Call(target, arguments);
    }

    static void RunEmpty(Notifier& target)
    {
        std::tuple<std::decay_t<Parameters>...> arguments;
        if constexpr (std::is_same_v<std::decay_t<decltype(std::get<0>(arguments))>, ferrite::utility::Guid>)
            std::get<0>(arguments) = kCallTask;
        Call(target, arguments);
    }

private:
    template <class Arguments>
    static void Call(Notifier& target, const Arguments& arguments)
    {
        std::apply([&target](const auto&... each) { (target.*kMember)(each...); }, arguments);
    }

    /// The first GUID is the task, a second one right behind it the message, where the callback names one.
    template <class... Values>
    static void Name(std::tuple<Values...>& arguments)
    {
        using ferrite::utility::Guid;
        if constexpr (std::is_same_v<std::tuple_element_t<0, std::tuple<Values...>>, Guid>)
            std::get<0>(arguments) = kCallTask;
        if constexpr (sizeof...(Values) > 1)
            if constexpr (std::is_same_v<std::tuple_element_t<1, std::tuple<Values..., Guid>>, Guid>)
                std::get<1>(arguments) = kCallMessage;
    }
};

}  // namespace

const std::vector<ConnectorKind>& ConnectorKinds()
{
    static const std::vector<ConnectorKind> kKinds{
        {"library", &AC::CreateIngestGlintLibraryConnector, &AC::IngestGlintLibraryConnector::Handles},
        {"mediaCollection", &AC::CreateIngestMediaCollectionConnector,
         &AC::IngestMediaCollectionConnector::Handles}};
    return kKinds;
}

const std::vector<CallbackCall>& CallbackCalls()
{
    static const std::vector<CallbackCall> kCalls{
#define AC_CALLBACK(NAME) {#NAME, &Caller<&Notifier::NAME>::Run, &Caller<&Notifier::NAME>::RunEmpty},
#include "assetconnector/connectors/Callbacks.def"
#undef AC_CALLBACK
    };
    return kCalls;
}

}  // namespace Protocol::Generator
