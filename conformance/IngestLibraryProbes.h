#pragma once

#include "assetconnector/host/ridge/IIngestLibrary.h"
#include "assetconnector/host/ridge/SRProject.h"
#include "conformance/Check.h"

#include <string>
#include <vector>

/// What checks of the ingest library share.
namespace Conformance {

/// \return A path that no project knows.
UTF16String UniquePath();

/// \return Arguments of which no two texts are alike, with a GUID that no other media info has.
Ridge::MediaInfoArguments SampleArguments(const UTF16String& mediaPath);

/// Ends the check when the host makes none. \return A media info.
boost::shared_ptr<Ridge::AssetMediaInfo> Create(const Ridge::MediaInfoArguments& arguments);

/// \return The XMP packet; empty for null.
std::string PacketOf(const Ridge::AssetMediaInfo& info);

void ExpectValues(Context& context, const Ridge::MediaInfoArguments& expected,
                  const Ridge::AssetMediaInfo& actual);

/// \return Every value, for people.
std::vector<std::string> ShownValues(const Ridge::AssetMediaInfo& info);

/// Ends the check when none is open.
boost::shared_ptr<Ridge::SRProject> OpenProject();

/// The project is closed for as long as this object lives.
class ClosedProject
{
public:
    /// Ends the check when the subject cannot do that.
    explicit ClosedProject(const Context& context);
    ~ClosedProject();
    ClosedProject(const ClosedProject&) = delete;
    ClosedProject& operator=(const ClosedProject&) = delete;

private:
    const boost::function<void(bool open)>& mOpenProject;
};

}  // namespace Conformance
