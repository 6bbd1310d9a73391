#pragma once

#include "assetconnector/host/ferrite/Guid.h"
#include "conformance/Subject.h"

#include <boost/function.hpp>

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>
#include <type_traits>
#include <vector>

namespace Conformance {

class Context;

/// Something that the library relies on.
struct Check
{
    std::string name;         ///< The service, a point, what is looked at: "stations.order".
    std::string about;        ///< What must hold. One sentence.
    std::string consequence;  ///< What goes wrong in production where it does not. One sentence.

    /// Tries it: expects at least one thing of the context, and leaves nothing behind.
    boost::function<void(Context& context)> function;

    /// Checks without which this one would come to harm or say nothing: it is run only if they pass.
    std::vector<std::string> needs = {};
};

/// Something that is not as it must be.
struct Failure
{
    std::string what;  ///< What was looked at.
    std::string expected;
    std::string actual;
};

/// What listeners, panels and dispatchers of checks throw: nothing that a host could know.
struct Thrown
{
};

/// What Context::NotChecked throws.
struct NotCheckedException
{
    std::string why;
};

/// Values as people read them: texts in quotes, long ones shortened. UTF-8.
std::string Describe(const std::string& text);
std::string Describe(const UTF16String& text);
std::string Describe(const char* text);
std::string Describe(const ferrite::utility::Guid& guid);
std::string Describe(bool value);
std::string Describe(const std::vector<std::string>& texts);

template <class Number, class = std::enable_if_t<std::is_arithmetic_v<Number>>>
std::string Describe(Number number)
{
    return std::to_string(number);
}

/// \return What is being handled in a catch block.
std::string DescribeException();

/// What a check works with, for one run of it. The host is installed. Any thread may say what it expects;
/// the rest is for the thread that runs the check.
class Context
{
public:
    /// \param subject Outlives this object. \param liveBlocks How many blocks of the memory service the
    /// library holds.
    Context(const Subject& subject, std::chrono::milliseconds limit,
            boost::function<std::size_t()> liveBlocks);

    const Subject& GetSubject() const noexcept { return mSubject; }

    /// How long a check waits for anything.
    std::chrono::milliseconds Limit() const noexcept { return mLimit; }

    std::size_t LiveBlocks() const { return mLiveBlocks(); }

    /// \param what What is looked at. \return holds
    bool Expect(bool holds, const std::string& what, const std::string& expected, const std::string& actual);

    template <class Expected, class Actual>
    bool ExpectEqual(const std::string& what, const Expected& expected, const Actual& actual)
    {
        return Expect(expected == actual, what, Describe(expected), Describe(actual));
    }

    /// \return Whether the action came to its end.
    template <class Action>
    bool ExpectNoThrow(const std::string& what, Action action)
    {
        try {
            action();
        } catch (const NotCheckedException&) {
            throw;
        } catch (...) {
            return Expect(false, what, "no exception", DescribeException());
        }
        return Expect(true, what, "no exception", "none");
    }

    /// Waits, letting posted messages be delivered, until the condition holds or the limit is over; drops
    /// what listeners of the check throw meanwhile. \return Whether the condition holds.
    bool WaitUntil(const boost::function<bool()>& condition);

    /// Ends the check: it cannot be made here.
    [[noreturn]] static void NotChecked(const std::string& why);

    /// Ends the check unless the subject has the function of that name.
    template <class Function>
    static void Require(const boost::function<Function>& function, const char* name)
    {
        if (!function)
            NotChecked(std::string("the subject has no ") + name);
    }

    std::vector<Failure> Failures() const;

    /// \return Whether anything was expected.
    bool Expected() const;

private:
    const Subject& mSubject;
    const std::chrono::milliseconds mLimit;
    const boost::function<std::size_t()> mLiveBlocks;
    mutable std::mutex mMutex;
    std::vector<Failure> mFailures;
    bool mExpected = false;
};

}  // namespace Conformance
