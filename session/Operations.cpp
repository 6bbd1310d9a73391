#include "session/Operations.h"

#include "assetconnector/host/ald/IAssetLibraryDispatcher.h"
#include "assetconnector/registration/ACUtils.h"
#include "session/ValueReader.h"
#include "session/format/Rows.h"

#include <boost/smart_ptr/make_shared_object.hpp>

#include <iterator>
#include <tuple>
#include <type_traits>

namespace Session {
namespace {

using Dispatcher = ALD::IAssetLibraryDispatcher;
using Notifier = Ridge::IIngestLibraryNotifier;

/// Reads the arguments for a function object that takes Parameters, and binds them.
template <class... Parameters, class Function>
BoundCall Bind(const Json& json, Function function)
{
    const auto arguments = boost::make_shared<std::tuple<std::decay_t<Parameters>...>>(
        ValueReader::ReadArguments<std::decay_t<Parameters>...>(json));
    return {[arguments, function] { std::apply(function, *arguments); },
            [arguments](const ValueWriter& writer) {
                return std::apply([&writer](const auto&... each) { return writer.TextOfArguments(each...); },
                                  *arguments);
            }};
}

template <class Service, class... Parameters>
constexpr std::size_t Arity(void (Service::*)(Parameters...))
{
    return sizeof...(Parameters);
}

template <auto kMember>
struct CallbackBinder;

template <class... Parameters, void (Notifier::*kMember)(Parameters...)>
struct CallbackBinder<kMember>
{
    static BoundCall Run(const Json& arguments, const Kiln::InterfaceRef<Notifier>& target)
    {
        return Bind<Parameters...>(arguments,
                                   [target](Parameters... each) { (target.Get()->*kMember)(each...); });
    }
};

template <auto kMember, class... Texts>
constexpr CallbackOperation Row(std::string_view name, Texts... label)
{
    static_assert(Arity(kMember) == sizeof...(label), "a label for each argument");
    return {name, Labels(label...), &CallbackBinder<kMember>::Run};
}

template <auto kMember, class... Texts>
constexpr Operation DispatcherRow(std::string_view name, Texts... label)
{
    static_assert(Arity(kMember) == sizeof...(label), "a label for each argument");
    return {name, Labels(label...)};
}

template <class... Texts>
constexpr Operation HostCallRow(std::string_view name, Texts... label)
{
    return {name, Labels(label...), true};
}

template <class... Parameters>
BoundCall BindRegistration(const Json& arguments, void (*function)(Parameters...))
{
    return Bind<Parameters...>(arguments, function);
}

constexpr CallbackOperation kCallbacks[] = {
    Row<&Notifier::OnIngestStarted>("OnIngestStarted", "task"),
    Row<&Notifier::OnIngestFinished>("OnIngestFinished", "task"),
    Row<&Notifier::OnIngestCancelled>("OnIngestCancelled", "task"),
    Row<&Notifier::OnIngestPaused>("OnIngestPaused", "tasks"),
    Row<&Notifier::OnIngestResumed>("OnIngestResumed", "tasks"),
    Row<&Notifier::OnIngestItemsReady>("OnIngestItemsReady", "task", "batch", "task item", "items",
                                       "metadata"),
    Row<&Notifier::OnBackupItemsReady>("OnBackupItemsReady", "task", "batch", "items", "metadata"),
    Row<&Notifier::OnIngestBatchStarted>("OnIngestBatchStarted", "task", "batch", "target bin"),
    Row<&Notifier::OnIngestBatchFinished>("OnIngestBatchFinished", "task", "batch"),
    Row<&Notifier::OnInitMiniMetadata>("OnInitMiniMetadata", "task", "message", "items"),
    Row<&Notifier::OnTranscodeStatus>("OnTranscodeStatus", "task", "message", "code", "error", "output path"),
    Row<&Notifier::OnConcatenationStatus>("OnConcatenationStatus", "task", "message", "code", "error",
                                          "output path"),
    Row<&Notifier::OnTranscodeProgress>("OnTranscodeProgress", "task", "message", "percentage"),
    Row<&Notifier::OnConcatenationProgress>("OnConcatenationProgress", "task", "message", "percentage"),
    Row<&Notifier::OnSaveAsset>("OnSaveAsset", "task", "message", "media infos", "item", "save flag"),
    Row<&Notifier::OnTriggerSaveAssetStatus>("OnTriggerSaveAssetStatus", "task", "message", "code", "error",
                                             "media infos"),
    Row<&Notifier::OnFileChanged>("OnFileChanged", "task", "message", "media info", "code"),
    Row<&Notifier::OnFileOffLine>("OnFileOffLine", "task", "message", "paths"),
    Row<&Notifier::OnXMPChanged>("OnXMPChanged", "task", "message", "media infos"),
    Row<&Notifier::OnMediaInfoChanged>("OnMediaInfoChanged", "task", "message", "media infos"),
    Row<&Notifier::OnImportXMPFinished>("OnImportXMPFinished", "task", "message", "code", "batch",
                                        "task item", "media infos", "items"),
    Row<&Notifier::OnReadXMPFinished>("OnReadXMPFinished", "task", "message", "code", "media path",
                                      "media info", "metadata", "XMP", "create time", "last modify time",
                                      "batch", "task item", "errors", "context"),
    Row<&Notifier::OnRequestThumbnailStatus>("OnRequestThumbnailStatus", "task", "message", "code",
                                             "clip path", "asset", "start time", "thumb path", "batch",
                                             "task item"),
    Row<&Notifier::OnTransferProgress>("OnTransferProgress", "task", "message", "percentage"),
    Row<&Notifier::OnTransferStatus>("OnTransferStatus", "task", "message", "code", "results"),
    Row<&Notifier::OnRenameStatus>("OnRenameStatus", "task", "message", "code", "results"),
    Row<&Notifier::OnGetMediaPropertyInfoStatus>("OnGetMediaPropertyInfoStatus", "task", "message", "code",
                                                 "info"),
    Row<&Notifier::OnGetTargetBinPath>("OnGetTargetBinPath", "task", "message"),
    Row<&Notifier::OnXMPFileTimeChanged>("OnXMPFileTimeChanged", "task", "message", "code", "results"),
};
static_assert(std::size(kCallbacks) == Ridge::kCallbackCount);

constexpr ExportedFunction kExportedFunctions[] = {
    {"ACUtils::RegisterAssetMediaInfoToSRCore", Labels("record", "first flag", "second flag"),
     [](const Json& arguments) {
         return BindRegistration(arguments, &AC::ACUtils::RegisterAssetMediaInfoToSRCore);
     }},
};

constexpr Operation kDispatcherOperations[] = {
    DispatcherRow<&Dispatcher::ReadXMPFile>("ReadXMPFile", "task", "message", "path", "asset", "batch",
                                            "task item"),
    DispatcherRow<&Dispatcher::SaveAssetItems>("SaveAssetItems", "task", "message", "items"),
    DispatcherRow<&Dispatcher::CreateThumbnail>("CreateThumbnail", "task", "message", "clip path",
                                                "start time", "asset", "batch", "task item"),
    DispatcherRow<&Dispatcher::CompleteImportFile>("CompleteImportFile", "task", "message", "path", "batch",
                                                   "task item", "result", "error"),
    DispatcherRow<&Dispatcher::ShowIngestDialog>("ShowIngestDialog", "task", "message", "target bin"),
    DispatcherRow<&Dispatcher::StartMediaIngest>("StartMediaIngest", "task", "message", "settings"),
    DispatcherRow<&Dispatcher::WriteXMPFile>("WriteXMPFile", "task", "message", "media info"),
    DispatcherRow<&Dispatcher::RefuseExit>("RefuseExit", "code"),
    DispatcherRow<&Dispatcher::ExportAssets>("ExportAssets", "task", "message", "items", "media infos"),
    DispatcherRow<&Dispatcher::ReportPanelEvent>("ReportPanelEvent", "task", "message", "level", "text",
                                                 "show"),
    DispatcherRow<&Dispatcher::StartTransfer>("StartTransfer", "task", "message", "items", "option", "FTP",
                                              "type"),
    DispatcherRow<&Dispatcher::CancelTransfer>("CancelTransfer", "task", "message"),
    DispatcherRow<&Dispatcher::RenameItems>("RenameItems", "task", "message", "items"),
    DispatcherRow<&Dispatcher::QueryMediaPropertyInfo>("QueryMediaPropertyInfo", "task", "message", "path",
                                                       "asset"),
    DispatcherRow<&Dispatcher::QueryAssociatedFiles>("QueryAssociatedFiles", "task", "message", "path"),
    DispatcherRow<&Dispatcher::StartTranscode>("StartTranscode", "task", "message", "preset",
                                               "output directory", "output XMP", "items"),
    DispatcherRow<&Dispatcher::StartConcatenation>("StartConcatenation", "task", "message", "preset",
                                                   "output directory", "output file", "output XMP", "items"),
    DispatcherRow<&Dispatcher::CancelTranscode>("CancelTranscode", "task", "message"),
    DispatcherRow<&Dispatcher::CancelConcatenation>("CancelConcatenation", "task", "message"),
    DispatcherRow<&Dispatcher::QueryCurrentWorkMode>("QueryCurrentWorkMode", "task", "message"),
    DispatcherRow<&Dispatcher::QueryMontaneInstalled>("QueryMontaneInstalled", "task", "message"),
    DispatcherRow<&Dispatcher::ApplyTagTemplate>("ApplyTagTemplate", "task", "message", "templates",
                                                 "option"),
};
static_assert(std::size(kDispatcherOperations) == ALD::kOperationCount);

constexpr Operation kHostOperations[] = {
    HostCallRow("PlexaManager::AddTandemEventListener", "type", "callback"),
    HostCallRow("PlexaManager::RemoveTandemEventListener", "type", "callback"),
    HostCallRow("Ridge::Utilities::RegisterDBMetadataProvider"),
    HostCallRow("Ridge::Utilities::RegisterDBMetadataProviderForPath", "path"),
    HostCallRow("Ridge::SRProject::RegisterAssetMediaInfoList", "items", "media infos", "first flag",
                "second flag"),
    HostCallRow("Ridge::SRProject::RefreshAssetMediaInfoByPath", "path", "XMP"),
    HostCallRow("Ridge::SRLibrarySupport::RegisterAssetMediaInfoToSRCore", "media infos", "items",
                "local file", "rough cut local file", "first flag", "second flag"),
    HostCallRow("Ridge::SRLibrarySupport::ReadXMPFromCache", "path"),
    HostCallRow("Spur::SDKErrors::SetSDKInfoString", "text", "detail"),
    HostCallRow("Kiln::StationUtils::AddListener", "station"),
    {"PlexaManager::DispatchApplicationEvent", Labels()},
    {"PlexaManager::GetBrowserID", Labels()},
    {"Kiln::StationUtils::PostMessageToUIThread", Labels()},
    {"Ridge::AssetMediaInfo::Create", Labels()},
    {"Ridge::AssetMediaInfo::CreateMasterClipMediaInfo", Labels()},
};

template <class Rows>
auto FindByName(const Rows& rows, std::string_view name)
{
    return FindRow(rows, [name](const auto& row) { return row.name == name; });
}

}  // namespace

const CallbackOperation* FindCallback(std::string_view name)
{
    return FindByName(kCallbacks, name);
}

const ExportedFunction* FindExportedFunction(std::string_view name)
{
    return FindByName(kExportedFunctions, name);
}

const Operation* FindDispatcherOperation(std::string_view name)
{
    return FindByName(kDispatcherOperations, name);
}

const Operation* FindHostOperation(std::string_view name)
{
    return FindByName(kHostOperations, name);
}

}  // namespace Session
