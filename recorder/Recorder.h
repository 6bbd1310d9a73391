#pragma once

#include "assetconnector/host/Host.h"
#include "assetconnector/host/ald/IAssetLibraryDispatcher.h"
#include "assetconnector/host/kiln/InterfaceRef.h"
#include "assetconnector/host/ridge/IIngestLibraryNotifier.h"

#include <boost/function.hpp>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

/// A flight recorder: takes down what passes between a host and the library into session files, which
/// `asset-connector replay` plays again elsewhere. It stands in front of the host's services, dispatchers and
/// connectors and knows nothing of their classes.
///
///     Recording::Recorder recorder(services, {"recordings"});
///     const AC::Installation installation(recorder.Services(), dropPosted);
///     const auto library = recorder.CreateIngestGlintLibraryConnector(&dispatcher);
///
/// What the host sees of the library, and the library of the host, stays as it is: the same calls on the same
/// threads, the same exceptions. Whatever goes wrong with recording stays within the recorder.
namespace Recording {

struct Options
{
    /// Where the files go; made when it is missing. They are NAME-000001.jsonl and so on, beginning behind
    /// those that are there; two hosts at a time need two folders, or two names. Empty, and no `sink`:
    /// nothing is recorded, services and connectors are the bare ones.
    std::filesystem::path folder;
    std::string name = "session";

    /// Gets the lines instead of files, whole ones, as they would stand in one file without end; where lines
    /// are lost the state begins anew, as in a next file. Called on the recorder's thread, which it holds up:
    /// what waits meanwhile counts as bufferBytes says. What it throws is trouble, and its lines are lost.
    boost::function<void(const std::string& lines)> sink;

    /// When a file has grown to so many bytes, the next one begins. Each begins with the state that it needs
    /// and can be replayed alone.
    std::size_t fileBytes = std::size_t{64} << 20U;
    /// How many files of this name are kept, from 1; older ones are removed, those of earlier runs included.
    std::size_t filesKept = 8;
    /// How many bytes may wait to be written. What would be more, and a single input that is, is lost: a
    /// comment in the file says how many lines, and the next file begins.
    std::size_t bufferBytes = std::size_t{32} << 20U;

    /// Masks paths, names and metadata, for files that leave the house: each word of a text but those of the
    /// protocol itself becomes another, the same by the same in all texts of a file, so that it replays all
    /// the same. Numbers, identifiers and punctuation stay. Passwords are masked in any case.
    bool masksContents = false;

    /// Told what is wrong, in one line: each kind of trouble once. Called on any thread, with no lock held;
    /// what it throws is dropped.
    boost::function<void(const std::string& trouble)> onTrouble;
};

/// One recording. Made after the XML platform and before the host is installed, destroyed after the host is
/// uninstalled and the last connector is gone, and before the XML platform; the destructor writes what is
/// left. All operations may be called on any thread, several at once.
class Recorder
{
public:
    using Notifier = Kiln::InterfaceRef<Ridge::IIngestLibraryNotifier>;

    /// \param host What would be installed without a recorder; the services outlive this object.
    /// \throws std::bad_alloc, std::system_error when no thread can be started. A folder that cannot be
    /// written is no
    ///         exception but trouble, see Options.
    Recorder(const AC::HostServices& host, Options options);
    ~Recorder();

    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// \return What is to be installed.
    AC::HostServices Services() const;

    /// Make the connectors, as the functions of the same names in AC do; the recorder wraps the dispatcher.
    /// Of each kind one connector at a time is recorded: a second one works, but is trouble. \param
    /// dispatcher May be null; outlives the connector, as AC says. \return The connector, as the host is to
    /// hold it: callbacks go through the recorder. \throws As those functions.
    Notifier CreateIngestGlintLibraryConnector(ALD::IAssetLibraryDispatcher* dispatcher);
    Notifier CreateIngestMediaCollectionConnector(ALD::IAssetLibraryDispatcher* dispatcher);

    /// \param connector A bare reference to a connector that was made here, as a broker's Lock gives it.
    /// \return What the host is to call; anything else comes back as it is.
    Notifier Wrapped(const Notifier& connector) const;

    /// AC::ACUtils::RegisterAssetMediaInfoToSRCore, recorded.
    void RegisterAssetMediaInfoToSRCore(const AC::ACMessage& message, bool firstFlag, bool secondFlag);

    /// Puts a comment into the recording: inside an input of this thread among its effects, else on its own.
    /// With masksContents it is left out. \param text One line of UTF-8, without secrets.
    void Note(const std::string& text);

    /// Waits until everything that came to its end before is in the files, as far as they can be written.
    void Flush();

    /// \return The file that is being written; empty when none can be.
    std::filesystem::path CurrentFile() const;

private:
    Notifier Create(std::string_view kind, ALD::IAssetLibraryDispatcher* dispatcher);

    class Implementation;
    const AC::HostServices mHost;
    const std::unique_ptr<Implementation> mImplementation;  ///< Null when nothing is recorded.
};

}  // namespace Recording
