#pragma once

#include "session/SessionFile.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace Session {

/// Compares the effects of a session with those of its file, up to the first difference.
class SessionCheck final : public Observer
{
public:
    /// The effects as people may read them: without passwords, or "no effect".
    struct Difference
    {
        std::size_t line;  ///< Of the expected effect; without one, of the input.
        std::string expected;
        std::string actual;
    };

    const std::optional<Difference>& FirstDifference() const { return mDifference; }

    /// The line of the comment that says that lines are lost here: nothing behind it can be compared.
    std::optional<std::size_t> LostAt() const { return mLostAt; }

    /// How such a comment begins.
    static constexpr std::string_view kLost = "# lost: ";

    void OnComment(const Line& line) override;
    void OnInput(const Line& line, const Json& json, const BoundCall& input) override;
    void OnEffect(const std::string& effect) override;
    bool WantsExpected() const override { return true; }
    void OnExpected(const Line& line, Json& effect) override;
    void OnEnd() override;
    bool IsDone() const override { return mDifference || mLostAt; }

private:
    std::size_t mInputLine = 0;
    std::deque<Json> mActual;  ///< Effects of the input that the file has not told yet.
    std::optional<Difference> mDifference;
    std::optional<std::size_t> mLostAt;
};

}  // namespace Session
