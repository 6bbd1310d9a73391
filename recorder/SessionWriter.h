#pragma once

#include "recorder/Deliveries.h"
#include "recorder/Masking.h"
#include "recorder/SessionFiles.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Recording {

/// Makes session files of inputs: what the host answered comes before each as a "host" line, and every file
/// begins with the state that it needs. Used by the writer's thread alone.
class SessionWriter
{
public:
    SessionWriter(const Options& options, Troubles& troubles);

    /// In the order in which they are to be played. What cannot be written, for want of memory too, is lost.
    void Write(const std::vector<Journal::InputPtr>& inputs) noexcept;

    /// What came behind the input was missed. \param input Perhaps not of those that are written.
    void Miss(const Input& input) noexcept;

    /// Says what was lost at the end.
    void Finish() noexcept;

    std::filesystem::path CurrentFile() const { return mFiles.Current(); }

private:
    /// What later inputs rely on.
    struct State
    {
        std::vector<Kind> connectors;  ///< Those that live, in the order in which they were made.
        std::array<bool, kKindCount> hasDispatcher{};
        bool registered = false;
        bool readsFromDisk = false;
    };

    /// What lines before have told the host of a replay.
    struct Told
    {
        std::string browserID = "panel-1";
        std::string answers = "[]";
        bool answersBrowserID = false;
        std::array<bool, kKindCount> hasDispatcher{};
    };

    void WriteOne(const Input& input);
    /// \return Whether its line is written, or will be.
    bool TryToWrite(const Input& input);
    /// Runs what may fail. \return Whether it did not.
    template <class Action>
    bool Guard(Action action) noexcept;
    void Change(const Recording::Change& change);

    void PutLost();
    /// Begins a file, if that is possible, with the comments and inputs that it needs.
    void BeginFile();

    std::string HostLine(const Input& input);
    void AddAnswers(const Input& input, Session::JsonText& host);
    void AddDispatchers(const std::array<bool, kKindCount>& hasDispatcher, Session::JsonText& host);

    /// \param isWritten Whether its lines are in the file.
    void AddDeliveries(const Input& input, bool isWritten);
    void WriteDeliveries();

    /// Puts lines into the file, whole and masked. \param lines How many.
    void Put(const std::string& text, std::size_t lines);
    /// Each line ends with a line feed.
    void PutComment(const std::string& lines);
    void Emit();

    const bool mMasksContents;
    SessionFiles mFiles;
    Troubles& mTroubles;
    std::unique_ptr<Masking> mMasking;  ///< Of this file.
    State mState;
    Told mTold;

    std::string mBlock;  ///< What is not in the file yet.
    std::size_t mBlockLines = 0;
    std::size_t mLost = 0;  ///< Lines since the last one that was written.
    Deliveries mDeliveries;
};

}  // namespace Recording
