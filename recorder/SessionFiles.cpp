#include "recorder/SessionFiles.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <string_view>
#include <system_error>

namespace Recording {
namespace {

constexpr std::string_view kExtension = ".jsonl";
constexpr std::size_t kDigits = 6;
constexpr std::size_t kMostNumber = 999'999'999'999;  // others are not ours
constexpr std::chrono::seconds kBetweenAttempts{1};

}  // namespace

SessionFiles::SessionFiles(const Options& options, Troubles& troubles)
    : mFolder(options.folder),
      mName(options.name),
      mSink(options.sink),
      mFileBytes(options.fileBytes),
      mKept(std::max<std::size_t>(options.filesKept, 1)),
      mTroubles(troubles)
{
    if (mSink)
        return;
    std::error_code ignored;  // a folder that is not there fails to open a file
    std::filesystem::create_directories(mFolder, ignored);
    for (std::filesystem::directory_iterator each(mFolder, ignored), end; !ignored && each != end;
         each.increment(ignored))
        mNumber = std::max(mNumber, NumberOf(each->path()));
}

std::filesystem::path SessionFiles::PathOf(std::size_t number) const
{
    std::string digits = std::to_string(number);
    digits.insert(0, kDigits - std::min(kDigits, digits.size()), '0');
    return mFolder / std::filesystem::u8path(mName + '-' + digits + std::string(kExtension));
}

std::size_t SessionFiles::NumberOf(const std::filesystem::path& path) const
{
    const std::string name = path.filename().u8string();
    const std::size_t digits = mName.size() + 1;
    if (name.size() < digits + kDigits + kExtension.size() || name.compare(0, mName.size(), mName) != 0 ||
        name[mName.size()] != '-')
        return 0;
    std::size_t number = 0;
    const char* const end = name.data() + name.size() - kExtension.size();
    if (std::from_chars(name.data() + digits, end, number).ptr != end || number > kMostNumber ||
        PathOf(number).filename() != path.filename())
        return 0;
    return number;
}

bool SessionFiles::BeginNext()
{
    if (mSink)
        return mIsBegun = true;
    const auto now = std::chrono::steady_clock::now();
    if (!mFile.is_open() && now < mNextAttempt)
        return false;
    mFile.close();
    mNextAttempt = now + kBetweenAttempts;
    SetCurrent({});
    std::error_code ignored;  // a folder that is not there fails to open a file
    std::filesystem::create_directories(mFolder, ignored);
    // Somebody else may write files of this name, too.
    std::size_t number = mNumber + 1;
    while (std::filesystem::symlink_status(PathOf(number), ignored).type() !=
               std::filesystem::file_type::not_found &&
           !ignored)
        ++number;
    const std::filesystem::path path = PathOf(number);
    mFile.clear();
    errno = 0;
    mFile.open(path, std::ios::binary | std::ios::trunc);
    if (!mFile.is_open()) {
        mTroubles.Tell("file", "cannot write ", path.u8string(), " (", std::generic_category().message(errno),
                       "): nothing is recorded until it can be written");
        return false;
    }
    mNumber = number;
    mBytes = 0;
    SetCurrent(path);
    RemoveOld();
    return true;
}

bool SessionFiles::Write(const std::string& lines)
{
    if (mSink) {
        try {
            mSink(lines);
        } catch (...) {
            mIsBegun = false;
            mTroubles.Tell("sink", "what takes the recording has thrown: lines are lost");
        }
        return mIsBegun;
    }
    std::error_code ignored;
    const bool isThere = std::filesystem::exists(Current(), ignored);  // else it was removed under our hands
    if (isThere)
        mFile.write(lines.data(), static_cast<std::streamsize>(lines.size()));
    mFile.flush();
    if (isThere && mFile) {
        mBytes += lines.size();
        return true;
    }
    Fail();
    return false;
}

void SessionFiles::Fail()
{
    mFile.close();
    const std::filesystem::path path = Current();
    SetCurrent({});
    std::error_code ignored;
    if (mBytes == 0) {
        // Empty files would take the places of those with something in them.
        std::filesystem::remove(path, ignored);
        --mNumber;
    } else {
        // Half a line makes a file that nobody can replay.
        std::filesystem::resize_file(path, mBytes, ignored);
    }
    mTroubles.Tell("disk", "cannot write on to ", path.u8string(),
                   ": the disk is full or gone; what happens is lost until it can be written again");
}

void SessionFiles::SetCurrent(const std::filesystem::path& path)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mCurrent = path;
}

void SessionFiles::RemoveOld() const
{
    std::error_code ignored;  // what cannot be removed stays
    for (std::filesystem::directory_iterator each(mFolder, ignored), end; !ignored && each != end;
         each.increment(ignored)) {
        const std::size_t number = NumberOf(each->path());
        std::error_code failed;
        if (number != 0 && number < mNumber && mNumber - number >= mKept && each->is_regular_file(failed))
            std::filesystem::remove(each->path(), failed);
    }
}

std::filesystem::path SessionFiles::Current() const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return mCurrent;
}

}  // namespace Recording
