#pragma once

#include "assetconnector/host/ridge/IIngestLibrary.h"
#include "session/format/ValueWriter.h"

/// What the library asks its host, by which session files tell one question from another: the operation, and
/// of its arguments those that are written here, as an array.
namespace Session {

/// Most questions are told by all of their arguments.
template <class... Arguments>
std::string TextOfQuestion(const ValueWriter& writer, const Arguments&... arguments)
{
    return writer.TextOfArguments(arguments...);
}

/// AssetMediaInfo::Create, by the media path.
inline std::string TextOfQuestion(const ValueWriter& writer, const Ridge::MediaInfoArguments& arguments)
{
    return writer.TextOfArguments(arguments.mediaPath);
}

/// CreateMasterClipMediaInfo, likewise.
inline std::string TextOfQuestion(const ValueWriter& writer, const ferrite::utility::Guid& /*guid*/,
                                  const UTF16String& mediaPath, const UTF16String& /*fileName*/,
                                  const Ridge::XMPText& /*xmp*/, const UTF16String& /*customMetadata*/,
                                  const UTF16String& /*createTime*/, const UTF16String& /*lastModifyTime*/,
                                  const UTF16String& /*reservedText*/)
{
    return writer.TextOfArguments(mediaPath);
}

/// SRProject::GetAssetMediaInfo.
inline std::string TextOfQuestion(const ValueWriter& writer, const UTF16String& mediaPath,
                                  const bool& /*reservedFlag*/)
{
    return writer.TextOfArguments(mediaPath);
}

/// ReadXMPFromCache.
inline std::string TextOfQuestion(const ValueWriter& writer, const UTF16String& mediaPath,
                                  const Ridge::XMPText& /*holder*/, const UTF16String& /*scratch*/)
{
    return writer.TextOfArguments(mediaPath);
}

}  // namespace Session
