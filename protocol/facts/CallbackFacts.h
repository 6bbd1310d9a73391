#pragma once

namespace Protocol {

/// When a callback is reported at all. The generator sees to it that these callbacks, and no others, do
/// nothing with empty arguments.
struct CallbackFact
{
    const char* callback;
    const char* when;
};

constexpr CallbackFact kCallbackFacts[] = {
    {"OnIngestItemsReady", "unless the list of items is empty"},
    {"OnBackupItemsReady", "unless the list of items is empty"},
    {"OnIngestBatchStarted", "unless the batch is the zero GUID"},
    {"OnIngestBatchFinished", "unless the batch is the zero GUID"},
};

}  // namespace Protocol
