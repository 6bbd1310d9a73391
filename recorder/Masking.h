#pragma once

#include "session/format/Json.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace Recording {

/// Takes out of lines of a session what a recording should not hold: passwords always; and, if it is asked
/// to, what texts say: each word becomes another, the same by the same mask. Since the library takes texts
/// apart and puts them together at punctuation alone, what it makes of masked texts is what it made, masked:
/// the lines replay. Words of the protocol, numbers and GUIDs stay. Used by one thread.
class Masking
{
public:
    /// \param contents Whether more than passwords is masked.
    explicit Masking(bool contents);

    /// \param lines Whole lines, comments among them.
    std::string Masked(std::string lines);

private:
    std::string MaskedLine(std::string_view line);
    void MaskMember(const std::string& name, Session::OrderedJson& value, bool isRequest);
    void MaskHost(Session::OrderedJson& host);
    void MaskValue(Session::OrderedJson& value);
    /// Masks what properties are whose names mention a password. \return These names.
    static std::vector<Session::OrderedJson*> MaskProperties(Session::OrderedJson& properties);
    /// Maps and sets of texts are in their order; masked, it is another one.
    static void SortTexts(const std::string& name, Session::OrderedJson& value);

    std::string MaskedXML(std::string xml, bool isRequest);
    std::string MaskedWords(std::string_view text);
    std::string MaskOf(std::string_view word) const;

    const bool mContents;
    const std::uint64_t mKey;
    std::unordered_set<std::string> mKept;    ///< Words that stay, in lower case.
    std::unordered_set<std::string> mThrown;  ///< What the host throws next, as it was.
};

}  // namespace Recording
