#pragma once

#include <ostream>
#include <string>

/// The commands of the program. Each reads its file ("-": standard input), prints to the output and gives the
/// exit status. What is wrong with a command's file is a line on standard error.
namespace AssetConnector {

/// The exit statuses.
enum Status
{
    kDone = 0,
    kFailed = 1,  ///< The text does not decode or has findings, the record is not encoded, the effects
                  ///< differ, panels break.
    kBad = 2,     ///< A bad command line, file, record or session.
};

/// How a session is shown.
enum class ReplayMode
{
    kPlain,
    kReadable,
    kCheck,
};

/// Prints the record that a panel's text decodes to.
Status Decode(const std::string& file, std::ostream& output);

/// Prints the notification text of a record. \param decoded Decode the reserved characters in it.
Status Encode(const std::string& file, bool decoded, std::ostream& output);

/// Plays a session. \param coloured For ReplayMode::kReadable.
Status Replay(const std::string& file, ReplayMode mode, bool coloured, std::ostream& output);

/// Prints the event catalogue, as a table or as JSON.
Status Events(bool json, std::ostream& output);

/// Prints the reference of the protocol, or its model as JSON.
Status Protocol(bool json, std::ostream& output);

/// Prints what changed for panels since the model that the file holds: kFailed when something broke.
Status CompareProtocol(const std::string& file, bool json, std::ostream& output);

/// Prints what a panel's text would silently lose or mean otherwise, for people or as JSON; kFailed when
/// there is something. \param event The identifier of the request that carries it; empty: any.
Status Check(const std::string& file, const std::string& event, bool json, std::ostream& output);

}  // namespace AssetConnector
