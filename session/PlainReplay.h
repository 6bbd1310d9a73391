#pragma once

#include "session/SessionFile.h"

#include <ostream>

namespace Session {

/// Prints a session in session format, each line as it happens: inputs as they were read, effects after them.
class PlainReplay final : public Observer
{
public:
    /// \param output Outlives this object. When it fails, the session ends.
    explicit PlainReplay(std::ostream& output) : mOutput(output) {}

    void OnInput(const Line& line, const Json& /*json*/, const BoundCall& /*input*/) override
    {
        mOutput << line.text << '\n';
    }
    void OnEffect(const std::string& effect) override { mOutput << effect << '\n'; }
    bool IsDone() const override { return !mOutput; }

private:
    std::ostream& mOutput;
};

}  // namespace Session
