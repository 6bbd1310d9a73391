#include "conformance/Check.h"

#include "assetconnector/host/ferrite/Unicode.h"

#include <boost/core/demangle.hpp>

#include <exception>
#include <thread>
#include <typeinfo>
#include <utility>

namespace Conformance {
namespace {

constexpr std::size_t kLongestText = 200;

}  // namespace

std::string Describe(const UTF16String& text)
{
    std::string shown = '"' + ferrite::utility::UTF16to8(text.substr(0, kLongestText)) + '"';
    if (text.size() > kLongestText)
        shown += "... (" + std::to_string(text.size()) + " units)";
    return shown;
}

std::string Describe(const std::string& text)
{
    return Describe(ferrite::utility::UTF8to16(text));
}

std::string Describe(const char* text)
{
    return Describe(std::string(text));
}

std::string Describe(const ferrite::utility::Guid& guid)
{
    return ferrite::utility::UTF16to8(guid.AsString());
}

std::string Describe(bool value)
{
    return value ? "true" : "false";
}

std::string Describe(const std::vector<std::string>& texts)
{
    std::string shown;
    for (const std::string& text : texts)
        shown += (shown.empty() ? "" : ", ") + Describe(text);
    return texts.empty() ? "nothing" : shown;
}

std::string DescribeException()
{
    try {
        throw;
    } catch (const std::exception& exception) {
        return boost::core::demangle(typeid(exception).name()) + ": " + exception.what();
    } catch (const Thrown&) {
        return "what a listener, panel or dispatcher of the check threw";
    } catch (...) {
        return "an exception that is no std::exception";
    }
}

Context::Context(const Subject& subject, std::chrono::milliseconds limit,
                 boost::function<std::size_t()> liveBlocks)
    : mSubject(subject), mLimit(limit), mLiveBlocks(std::move(liveBlocks))
{
}

bool Context::Expect(bool holds, const std::string& what, const std::string& expected,
                     const std::string& actual)
{
    const std::lock_guard<std::mutex> lock(mMutex);
    mExpected = true;
    if (!holds)
        mFailures.push_back({what, expected, actual});
    return holds;
}

bool Context::WaitUntil(const boost::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + mLimit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        try {
            if (mSubject.waitForUserInterface)
                mSubject.waitForUserInterface();
        } catch (const Thrown&) {  // its way ends where the host delivers
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

void Context::NotChecked(const std::string& why)
{
    throw NotCheckedException{why};
}

std::vector<Failure> Context::Failures() const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return mFailures;
}

bool Context::Expected() const
{
    const std::lock_guard<std::mutex> lock(mMutex);
    return mExpected;
}

}  // namespace Conformance
