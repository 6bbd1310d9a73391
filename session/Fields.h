#pragma once

#include "session/ValueReader.h"
#include "session/format/FormatError.h"
#include "session/format/Json.h"

#include <set>
#include <string>

namespace Session {

/// The members of an object, taken one by one; those that nobody takes are unknown.
class Fields
{
public:
    /// \param object Outlives this.
    explicit Fields(const Json& object) : mObject(object) { ValueReader::RequireObject(object); }

    /// \return The member; null when there is none.
    const Json* Find(const char* name)
    {
        const auto found = mObject.find(name);
        if (found == mObject.end())
            return nullptr;
        mTaken.insert(name);
        return &*found;
    }

    const Json& Get(const char* name)
    {
        const Json* const member = Find(name);
        if (member == nullptr)
            throw FormatError(std::string("\"") + name + "\" is missing");
        return *member;
    }

    template <class Value>
    Value Read(const char* name)
    {
        const Json& member = Get(name);
        Value value{};
        Within(name, [&] { value = ValueReader::Read<Value>(member); });
        return value;
    }

    /// \throws FormatError when a member was not taken.
    void Finish() const
    {
        for (const auto& [name, value] : mObject.items())
            if (mTaken.count(name) == 0)
                throw FormatError("unknown key \"" + name + '"');
    }

private:
    const Json& mObject;
    std::set<std::string> mTaken;
};

}  // namespace Session
