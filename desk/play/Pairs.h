#pragma once

#include <map>
#include <string>
#include <string_view>

namespace Desk {

/// What stands live for what a session names: GUIDs, and the ids of panels. The last pair of a name holds.
class Pairs
{
public:
    /// \param ofFile, live IsGuid.
    void AddGuid(std::string ofFile, std::string live);
    void AddBrowserID(const std::string& ofFile, const std::string& live) { mBrowserIDs[ofFile] = live; }

    /// \return A text of the session with the live GUIDs.
    std::string WithLiveGuids(std::string text) const;

    /// \return The id that stands for the session's; that one itself while it has no pair.
    std::string LiveBrowserID(const std::string& ofFile) const;

    /// \param xml A request's text in the session. \return The same of the live panel.
    std::string WithLiveBrowserID(std::string xml) const;

    /// \return Whether it is 36 characters that make a GUID, in any case.
    static bool IsGuid(std::string_view text);

private:
    std::map<std::string, std::string> mGuids;  ///< From lower case.
    std::map<std::string, std::string> mBrowserIDs;
};

}  // namespace Desk
