#pragma once

#include "session/format/Json.h"

#include <cstddef>
#include <deque>
#include <string>
#include <unordered_map>
#include <utility>

namespace Desk {

/// How things stand, read off the lines of the recording: which tasks run, which columns there are, what
/// panels were told of media and assets, and who refused to end. Kept by whoever locks it.
class Overview
{
public:
    using Json = Session::Json;

    /// \param line An input or an effect. \param by Who caused it, empty where nobody knows.
    /// \param request The identifier of the request that caused it, likewise.
    void Take(const Json& line, const std::string& by, const std::string& request);

    /// \return The members "tasks" and "columns" of the frame "state".
    Json State() const;

    /// \return A record with what is known of media and assets, as a panel asks for at its start.
    Json Assets() const;

    /// Who refused that the application ends, since the last call; empty: nobody.
    std::string TakeRefusal() { return std::exchange(mRefusedBy, {}); }

private:
    void TakeDispatcherCall(const Json& line, const std::string& by, const std::string& request);
    void TakeCallback(const Json& line);
    void TakeNotification(const Json& line);
    void TakePost(const Json& line);
    void TakeAssets(const std::string& label, const Json& value);
    void Begin(Json task);
    void End(const char* member, const std::string& id);
    Json* FindTask(const char* member, const std::string& id);

    /// Objects in the order in which they came, each once by its key.
    class Known
    {
    public:
        /// An object without the key, or with an empty one, is left out, and one that there is no room for;
        /// one that is known takes its members.
        void Add(const char* key, const Json& value);
        bool Has(const std::string& id) const { return mPlaces.count(id) != 0; }
        const Json& All() const { return mValues; }

    private:
        Json mValues = Json::array();
        std::size_t mBytes = 0;  ///< Of their texts.
        std::unordered_map<std::string, std::size_t> mPlaces;
    };

    std::deque<Json> mTasks;  ///< As pages are told of them.
    Json mColumns = Json::array();
    Known mInfos;  ///< By path.
    Known mItems;  ///< By GUID.
    std::string mRefusedBy;
};

}  // namespace Desk
