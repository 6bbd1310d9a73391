#pragma once

#include "session/Outline.h"
#include "session/SessionFile.h"

#include <cstddef>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

namespace Session {

/// Prints a session for people: who speaks to whom and what is said, under the comments of the file. To be
/// played in Style::kReadable.
class ReadableReplay final : public Observer
{
public:
    /// \param output Outlives this object. When it fails, the session ends.
    ReadableReplay(std::ostream& output, bool coloured) : mOutput(output), mOutline(output, coloured) {}

    void OnComment(const Line& line) override;
    void OnInput(const Line& line, const Json& json, const BoundCall& input) override;
    void OnEffect(OrderedJson& effect) override;
    void OnEnd() override { EndInput(); }
    void OnBadLine() override { EndInput(); }
    bool IsDone() const override { return !mOutput; }

private:
    /// What is printed below a heading.
    static constexpr std::size_t kInputIndent = 4;
    static constexpr std::size_t kEffectIndent = 8;

    void Heading(Colour colour, const std::string& from, const std::string& to, const std::string& what);
    void Sentence(Colour colour, const std::string& text);
    void Arguments(const Labels& labels, OrderedJson arguments);

    /// \param operation The host call, or empty. \return Whether it only adds to a run of registrations, of
    ///        which the first are printed.
    bool ExtendsRun(const std::string& operation);
    void EndRun();

    /// Ends the last run of the input, or says that there was no effect at all.
    void EndInput();

    /// \return Who acts on an event: the one connector that lives, or all of them.
    std::string Connectors() const;

    std::ostream& mOutput;
    Outline mOutline;
    std::size_t mIndent = kInputIndent;
    bool mAfterComment = false;
    std::set<std::string> mAlive;  ///< Kinds of connectors.
    std::string mCreating;         ///< The kind that the input creates.
    std::string mSpeaker;          ///< Whose effects these are.
    std::string mSilence;          ///< What to say when no effect follows.
    std::string mRunOperation;
    std::size_t mRunLength = 0;
};

}  // namespace Session
