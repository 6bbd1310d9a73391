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
    void OnEffect(const std::string& effect) override;
    void OnEnd() override { EndInput(); }
    void OnBadLine() override { EndInput(); }
    bool IsDone() const override { return !mOutput; }

private:
    /// What is printed below a heading.
    static constexpr std::size_t kInputIndent = 4;
    static constexpr std::size_t kEffectIndent = 8;

    using ShowInput = void (ReadableReplay::*)(const Json& json, const BoundCall& input);
    struct InputRow
    {
        std::string_view key;
        ShowInput show;
    };
    static const InputRow kInputs[];

    /// \param subject The value of the effect's first key.
    using ShowEffect = void (ReadableReplay::*)(const std::string& subject, OrderedJson& effect);
    struct EffectRow
    {
        std::string_view key;
        ShowEffect show;
    };
    static const EffectRow kEffects[];

    void ShowCreate(const Json& json, const BoundCall& input);
    void ShowRelease(const Json& json, const BoundCall& input);
    void ShowRegister(const Json& json, const BoundCall& input);
    void ShowPanel(const Json& json, const BoundCall& input);
    void ShowStation(const Json& json, const BoundCall& input);
    void ShowCallback(const Json& json, const BoundCall& input);
    void ShowHost(const Json& json, const BoundCall& input);
    void ShowUI(const Json& json, const BoundCall& input);
    void ShowCall(const Json& json, const BoundCall& input);

    void ShowDispatcher(const std::string& operation, OrderedJson& effect);
    void ShowNotification(const std::string& identifier, OrderedJson& effect);
    void ShowPost(const std::string& message, OrderedJson& effect);
    void ShowDeliver(const std::string& message, OrderedJson& effect);
    void ShowHostCall(const std::string& operation, OrderedJson& effect);
    void ShowDestroyed(const std::string& connector, OrderedJson& effect);
    void ShowException(const std::string& what, OrderedJson& effect);

    void Heading(Colour colour, const std::string& from, const std::string& to, const std::string& what);
    void Sentence(Colour colour, const std::string& text);

    /// \param row Of the operation of that name. \throws FormatError when it is null or does not name every
    ///        argument.
    template <class Row>
    void Arguments(const std::string& name, const Row* row, OrderedJson arguments);

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
    bool mQuiet = false;           ///< Some host calls are not shown.
    std::set<std::string> mAlive;  ///< Kinds of connectors.
    std::string mCreating;         ///< The kind that the input creates.
    std::string mSpeaker;          ///< Whose effects these are.
    std::string mSilence;          ///< What to say when no effect follows.
    std::string mRunOperation;
    std::size_t mRunLength = 0;
};

}  // namespace Session
