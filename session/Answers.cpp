#include "session/Answers.h"

#include "session/Fields.h"
#include "session/SimulatedObjects.h"
#include "session/format/Rows.h"

namespace Session {
namespace {

struct QuestionRow
{
    std::string_view operation;
    std::string (*question)(const Json& arguments);  ///< As TextOfQuestion has it.
    void (*checkAnswer)(const Json& json);
};

template <class... Arguments>
std::string ReadQuestion(const Json& json)
{
    return std::apply(
        [](const Arguments&... each) {
            return SimulatedObjects::WriterFor(Style::kSession).TextOfArguments(each...);
        },
        ValueReader::ReadArguments<Arguments...>(json));
}

template <class Value>
void Check(const Json& json)
{
    ValueReader::Read<Value>(json);
}

template <class Answer, class... Arguments>
constexpr QuestionRow Row(std::string_view operation)
{
    return {operation, &ReadQuestion<Arguments...>, &Check<Answer>};
}

using Marker = Kiln::InterfaceRef<Keel::IMarker>;
using MediaInfo = boost::shared_ptr<Ridge::AssetMediaInfo>;
using Path = UTF16String;

constexpr QuestionRow kQuestions[] = {
    Row<std::string>("PlexaManager::GetBrowserID"),
    Row<bool, Path>("Kiln::PathUtils::ExistsOnDisk"),
    Row<bool, Path>("Kiln::PathUtils::IsDirectory"),
    Row<Path, Path>("Kiln::PathUtils::ToNormalizedPath"),
    Row<Path, Path>("Loft::Utilities::NormalizePathWithoutUNC"),
    Row<UTF16String, UTF16String>("ferrite::config::Localizer::Lookup"),
    Row<ferrite::utility::Guid>("ferrite::utility::Guid::CreateUnique"),
    Row<MediaInfo, Path>("Ridge::AssetMediaInfo::Create"),
    Row<MediaInfo, Path>("Ridge::AssetMediaInfo::CreateMasterClipMediaInfo"),
    Row<bool>("Ridge::SRProject::GetInstance"),
    Row<MediaInfo, Path>("Ridge::SRProject::GetAssetMediaInfo"),
    {"Ridge::SRLibrarySupport::ReadXMPFromCache", &ReadQuestion<Path>,
     [](const Json& json) { ReadCachedPacket(json); }},
    Row<UTF16String, Ridge::CustomMetadata>("Ridge::Utilities::CreateCustomMetadataStr"),
    Row<bool, Path>("Ridge::Utilities::PathSupportsXMP"),
    Row<UTF16String, Marker, tempora::FrameRate>("Keel::MarkerUtilities::ToPropertyXML"),
};

const QuestionRow* FindQuestion(std::string_view operation)
{
    return FindRow(kQuestions, [operation](const QuestionRow& row) { return row.operation == operation; });
}

}  // namespace

CachedPacket ReadCachedPacket(const Json& json)
{
    Fields fields(json);
    CachedPacket cached;
    if (fields.Find("result") != nullptr)
        cached.result = fields.Read<Ridge::ResultCode>("result");
    if (fields.Find("packet") != nullptr)
        cached.packet = fields.Read<std::string>("packet");
    fields.Finish();
    return cached;
}

Answers::Answers(const Json& json)
{
    ValueReader::ForEachEntry(json, [this](const Json& entry) {
        ValueReader::RequireArray(entry, 3);
        const auto operation = ValueReader::Read<std::string>(entry[0]);
        const QuestionRow* const row = FindQuestion(operation);
        if (row == nullptr)
            throw FormatError("the library asks nothing by the name \"" + operation + '"');
        Within(operation, [&] {
            std::string question;
            Within("arguments", [&] { question = row->question(entry[1]); });
            Within("answer", [&] { row->checkAnswer(entry[2]); });
            mAnswers[{operation, question}].answers.push_back(entry[2]);
        });
    });
}

const Json* Answers::Next(std::string_view operation, const std::string& question)
{
    const auto found = mAnswers.find({std::string(operation), question});
    if (found == mAnswers.end())
        return nullptr;
    Series& series = found->second;
    const Json& answer = series.answers[series.next];
    if (series.next + 1 < series.answers.size())
        ++series.next;
    return &answer;
}

bool Answers::IsQuestion(std::string_view operation)
{
    return FindQuestion(operation) != nullptr;
}

}  // namespace Session
