#pragma once

#include "recorder/Journal.h"
#include "recorder/Recorder.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>

namespace Recording {

/// The files of a recording: numbered, changed by size, the oldest removed. What cannot be written is
/// dropped, and a new file tried a second later. With a sink there are no files: it gets the lines. Used by
/// the writer's thread, but for Current.
class SessionFiles
{
public:
    SessionFiles(const Options& options, Troubles& troubles);

    /// \return Whether a file is open to write into.
    bool IsOpen() const { return mSink ? mIsBegun : mFile.is_open(); }

    /// \param more Bytes that wait to be written.
    bool IsFull(std::size_t more) const { return !mSink && mBytes + more > mFileBytes; }

    /// Ends the file and begins another, unless the last attempt was just now. \return Whether it is open.
    bool BeginNext();

    /// Writes whole lines. \return False when they are not in the file, which is closed then.
    bool Write(const std::string& lines);

    std::filesystem::path Current() const;

private:
    std::filesystem::path PathOf(std::size_t number) const;

    /// \return The number of a file of this recording; 0 for any other name.
    std::size_t NumberOf(const std::filesystem::path& path) const;

    void SetCurrent(const std::filesystem::path& path);
    void RemoveOld() const;
    void Fail();

    const std::filesystem::path mFolder;
    const std::string mName;
    const boost::function<void(const std::string& lines)> mSink;  ///< Instead of files, unless it is empty.
    bool mIsBegun = false;                                        ///< The same of it as a file's being open.
    const std::size_t mFileBytes;
    const std::size_t mKept;
    Troubles& mTroubles;

    std::ofstream mFile;
    std::size_t mBytes = 0;  ///< In the file.
    std::size_t mNumber = 0;
    std::chrono::steady_clock::time_point mNextAttempt;
    mutable std::mutex mMutex;
    std::filesystem::path mCurrent;
};

}  // namespace Recording
