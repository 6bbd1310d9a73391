#include "recorder/Hook.h"

#include "assetconnector/connectors/EventCatalogue.h"
#include "assetconnector/host/ferrite/Unicode.h"

#include <algorithm>
#include <string_view>

namespace Recording {

using ferrite::utility::Guid;

bool IsUsual(const boost::shared_ptr<Ridge::AssetMediaInfo>& info, const Ridge::MediaInfoArguments& arguments)
{
    return info != nullptr &&
           AC::Comparison::Same(
               AC::Comparison::ValuesOf(*info),
               Ridge::AssetMediaInfoValues{
                   arguments.type, arguments.guid, arguments.mediaPath, arguments.xmp, arguments.fileContent,
                   arguments.customMetadata, arguments.createTime, arguments.lastModifyTime,
                   arguments.rateTimeBase, arguments.rateNtsc, arguments.aliasName, -1, false});
}

bool IsUsual(const boost::shared_ptr<Ridge::AssetMediaInfo>& info, const Guid& guid,
             const UTF16String& mediaPath, const UTF16String& fileName, const Ridge::XMPText& xmp,
             const UTF16String& customMetadata, const UTF16String& createTime,
             const UTF16String& lastModifyTime, const UTF16String& /*reservedText*/)
{
    return info != nullptr &&
           AC::Comparison::Same(AC::Comparison::ValuesOf(*info),
                                Ridge::AssetMediaInfoValues{Ridge::AssetMediaType::kMasterClip,
                                                            guid,
                                                            mediaPath,
                                                            xmp,
                                                            {},
                                                            customMetadata,
                                                            createTime,
                                                            lastModifyTime,
                                                            {},
                                                            {},
                                                            fileName,
                                                            -1,
                                                            false});
}

void Hook::Thrown(Input* input, const char* operation) noexcept
{
    mJournal.Guard(input, [&] {
        if (input == nullptr)
            return;
        const auto& calls = input->calls;
        const auto found = std::find_if(calls.begin(), calls.end(),
                                        [operation](const auto& each) { return each.first == operation; });
        input->thrown.push_back(
            {operation, found == calls.end() ? 1 : found->second, Session::TextOfCurrentException()});
    });
}

void Hook::Count(Input* input, const char* operation)
{
    if (input == nullptr)
        return;
    mJournal.Guard(input, [&] {
        auto& calls = input->calls;
        const auto found = std::find_if(calls.begin(), calls.end(),
                                        [operation](const auto& each) { return each.first == operation; });
        if (found == calls.end())
            calls.emplace_back(operation, 1);
        else
            ++found->second;
    });
}

void Hook::CacheAnswered(Input& input, const char* operation, Ridge::ResultCode result,
                         const UTF16String& mediaPath, const std::string& before,
                         const std::string& after) const
{
    Session::JsonText answer;
    answer.BeginObject();
    answer.Name("result");
    answer.Number(result);
    if (after != before) {
        answer.Name("packet");
        answer.String(after);
    }
    answer.EndObject();
    mJournal.AddAnswer(input, {operation, Writer().Values().TextOfArguments(mediaPath), answer.Take(),
                               result == -1 && after == before});
}

void Hook::ShowReading(Input& input, const std::string& notification)
{
    static const std::string kImported =
        ferrite::utility::UTF16to8(AC::kPlexaEventType_NotificationImportXMPStatus);
    input.readFromDisk = notification != kImported;
}

void Hook::TurnToRead(Input& input)
{
    if (input.request != nullptr && input.hasMediaInfo &&
        *input.request == AC::kPlexaEventType_ReadXMPFromDisk)
        input.change.readsFromDisk = true;
}

void Hook::TurnToImport(Input& input)
{
    if (input.request != nullptr && *input.request == AC::kPlexaEventType_ImportXMP)
        input.change.readsFromDisk = false;
}

void Hook::TurnReading(Input& input, Kind kind, const char* operation)
{
    if (input.request == nullptr || Session::kConnectorKinds[kind].name != "library" ||
        std::string_view(operation) != "ReadXMPFile")
        return;
    if (*input.request == AC::kPlexaEventType_ReadXMPFromDisk)
        input.change.readsFromDisk = true;
    else if (*input.request == AC::kPlexaEventType_ImportXMP)
        input.change.readsFromDisk = false;
}

}  // namespace Recording
