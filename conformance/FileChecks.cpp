#include "assetconnector/host/ferrite/Unicode.h"
#include "assetconnector/host/kiln/PathUtils.h"
#include "assetconnector/host/loft/Utilities.h"
#include "conformance/CheckTables.h"
#include "conformance/Probes.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace Conformance {
namespace {

namespace fs = std::filesystem;

/// A folder of its own with a file and a folder in it, for as long as this object lives.
class TemporaryFolder
{
public:
    /// Ends the check where it cannot be made, which is not the host's fault.
    TemporaryFolder()
    {
        try {
            fs::path path;
            do
                path = fs::temp_directory_path() / UniqueName();
            while (!fs::create_directory(path));
            mPath = path;
            fs::create_directory(mPath / "folder");
            MakeFile("file.mov");
            MakeFile(fs::u8path("\u00E4 \u20AC.mov"));
        } catch (const std::exception& exception) {
            Remove();
            Context::NotChecked(std::string("cannot make files in the temporary directory: ") +
                                exception.what());
        }
    }
    ~TemporaryFolder() { Remove(); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    UTF16String operator/(const UTF16String& name) const { return (mPath / name).u16string(); }

private:
    void MakeFile(const fs::path& name) const
    {
        std::ofstream file;
        file.exceptions(std::ios::failbit | std::ios::badbit);
        file.open(mPath / name);
        file << "media";
        file.close();
    }

    void Remove() const noexcept
    {
        std::error_code error;
        if (!mPath.empty())
            fs::remove_all(mPath, error);
    }

    fs::path mPath;
};

void ExpectOnDisk(Context& context, const UTF16String& path, bool exists, bool isFolder)
{
    const std::string shown = Describe(path);
    context.ExpectEqual("ExistsOnDisk of " + shown, exists, Kiln::PathUtils::ExistsOnDisk(path));
    context.ExpectEqual("IsDirectory of " + shown, isFolder, Kiln::PathUtils::IsDirectory(path));
}

void ExpectExists(Context& context, const UTF16String& path)
{
    context.ExpectEqual("ExistsOnDisk of " + Describe(path), true, Kiln::PathUtils::ExistsOnDisk(path));
}

void File(Context& context)
{
    const TemporaryFolder folder;
    ExpectOnDisk(context, folder / u"file.mov", true, false);
}

void Folder(Context& context)
{
    const TemporaryFolder folder;
    ExpectOnDisk(context, folder / u"folder", true, true);
}

void Missing(Context& context)
{
    const TemporaryFolder folder;
    ExpectOnDisk(context, folder / u"missing.mov", false, false);
    ExpectOnDisk(context, folder / u"file.mov/below", false, false);
}

void Empty(Context& context)
{
    ExpectOnDisk(context, u"", false, false);
}

void Characters(Context& context)
{
    const TemporaryFolder folder;
    ExpectExists(context, folder / u"\u00E4 \u20AC.mov");
}

void NotNormalized(Context& context)
{
    const TemporaryFolder folder;
    ExpectExists(context, folder / u"folder/../file.mov");
    ExpectExists(context, folder / u"./folder//..//file.mov");
}

void OddPathsOnDisk(Context& context)
{
    for (const UTF16String& path : OddPaths())
        context.ExpectNoThrow("looking for " + Describe(path), [&context, &path] {
            const bool exists = Kiln::PathUtils::ExistsOnDisk(path);
            context.Expect(exists || !Kiln::PathUtils::IsDirectory(path), Describe(path),
                           "something that exists, or no folder", "a folder that does not exist");
        });
}

/// Expects a form of any path, the same when asked again.
void ExpectForms(Context& context, const std::string& name, UTF16String (*normalize)(const UTF16String& path))
{
    for (const UTF16String& path : OddPaths())
        context.ExpectNoThrow(name + " of " + Describe(path), [&] {
            const UTF16String form = normalize(path);
            context.ExpectEqual(name + " of " + Describe(path) + ", asked again", form, normalize(path));
        });
}

void NormalForm(Context& context)
{
    ExpectForms(context, "ToNormalizedPath", Kiln::PathUtils::ToNormalizedPath);
}

void PanelForm(Context& context)
{
    ExpectForms(context, "NormalizePathWithoutUNC", Loft::Utilities::NormalizePathWithoutUNC);
}

/// \return What the host says of the path.
Log::Texts LookedAt(const UTF16String& path)
{
    using ferrite::utility::UTF16to8;
    return {UTF16to8(Kiln::PathUtils::ToNormalizedPath(path)),
            UTF16to8(Loft::Utilities::NormalizePathWithoutUNC(path)),
            Kiln::PathUtils::ExistsOnDisk(path) ? "exists" : "does not exist",
            Kiln::PathUtils::IsDirectory(path) ? "a folder" : "no folder"};
}

void Threads(Context& context)
{
    constexpr int kRounds = 50;
    const TemporaryFolder folder;
    const UTF16String paths[] = {folder / u"file.mov", folder / u"folder"};
    const Log::Texts expected[] = {LookedAt(paths[0]), LookedAt(paths[1])};
    std::atomic<std::size_t> threads{0};
    context.ExpectNoThrow("paths on other threads", [&] {
        OnTwoThreads([&] {
            const std::size_t mine = threads++;
            for (int i = 0; i < kRounds; ++i)
                context.ExpectEqual("what two threads at once are told of " + Describe(paths[mine]),
                                    expected[mine], LookedAt(paths[mine]));
        });
    });
}

}  // namespace

std::vector<Check> FileChecks()
{
    return {
        {"files.file", "A file is there and is no folder.", "Every ingest of a file is refused.", File},
        {"files.folder", "A folder is there and is a folder.", "No folder to copy into is accepted.", Folder},
        {"files.missing", "What is not there is not there.",
         "The ingest of a missing file begins, and fails without a word to the user.", Missing},
        {"files.empty", "The empty path names nothing.", "An ingest copies into whatever folder is current.",
         Empty},
        {"files.characters", "Paths hold any character.",
         "Files with umlauts in their names cannot be ingested.", Characters},
        {"files.not-normalised", R"(A path with ".", ".." and doubled separators names what it leads to.)",
         "Files that a panel names by a longer way cannot be ingested.", NotNormalized},
        {"files.odd-paths",
         "Any text may be asked for: every separator, drive, share, relative, far too long.",
         "One odd path of a panel, and its request ends without an answer.", OddPathsOnDisk},
        {"files.normal-form", "Any path has a form under which providers are registered, the same each time.",
         "One odd path of a panel, and media are not registered.", NormalForm},
        {"files.panel-form", "Any path has a form that goes to panels, the same each time.",
         "One odd path, and a panel does not get its list of files.", PanelForm},
        {"files.threads", "Paths are looked at on any thread, several at once.",
         "Requests and callbacks of background threads fail.", Threads},
    };
}

}  // namespace Conformance
