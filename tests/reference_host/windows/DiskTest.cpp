#include "tests/support/HostTest.h"

#include <string>
#include <vector>
#include <windows.h>

namespace {

std::wstring Native(const UTF16String& text)
{
    return {text.begin(), text.end()};
}

/// A folder with its content, gone with this object.
class Folder
{
public:
    explicit Folder(const UTF16String& name)
    {
        std::wstring temporary(MAX_PATH + 1, L'\0');
        temporary.resize(GetTempPathW(MAX_PATH + 1, temporary.data()));
        mPath = UTF16String(temporary.begin(), temporary.end()) + name;
        Make(mPath);
    }
    ~Folder()
    {
        for (auto each = mMade.rbegin(); each != mMade.rend(); ++each)
            if (RemoveDirectoryW(each->c_str()) == 0)
                DeleteFileW(each->c_str());
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const UTF16String& Path() const { return mPath; }

    void Make(const UTF16String& path)
    {
        mMade.push_back(L"\\\\?\\" + Native(path));
        ASSERT_NE(CreateDirectoryW(mMade.back().c_str(), nullptr), 0) << Narrow(path);
    }
    bool MakeFile(const UTF16String& path)
    {
        mMade.push_back(L"\\\\?\\" + Native(path));
        const HANDLE file =
            CreateFileW(mMade.back().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
        CloseHandle(file);
        return file != INVALID_HANDLE_VALUE;
    }

private:
    UTF16String mPath;
    std::vector<std::wstring> mMade;
};

using DiskTest = HostTest;

TEST_F(DiskTest, LooksAtEveryKindOfPath)
{
    const UTF16String unique = host.GetTexts().CreateUniqueGuid().AsString();
    Folder folder(u"ordner-ä-日本-" + unique);
    const UTF16String root = folder.Path();
    const UTF16String half = root + u"\\half-" + u'\xD800';
    const UTF16String longName = root + u'\\' + UTF16String(150, u'l');
    const UTF16String deep = longName + u'\\' + UTF16String(150, u'd') + u".mov";
    EXPECT_TRUE(folder.MakeFile(root + u"\\файл 🎬.mov"));
    const bool hasHalves = folder.MakeFile(half);  // not where the disk holds names in UTF-8, as under Wine
    folder.Make(longName);
    EXPECT_TRUE(folder.MakeFile(deep));
    ASSERT_GT(deep.size(), 300U);

    struct
    {
        UTF16String path;
        bool exists;
        bool isFolder;
    } const rows[] = {
        {root, true, true},
        {root + u'\\', true, true},
        {root + u"\\файл 🎬.mov", true, false},
        {root + u"/файл 🎬.mov", true, false},
        {root + u"\\.\\x\\..\\файл 🎬.mov", true, false},
        {u"\\\\?\\" + root + u"\\файл 🎬.mov", true, false},
        {u"\\\\?\\" + root, true, true},
        {half, hasHalves, false},
        {longName, true, true},
        {deep, true, false},
        {u"\\\\?\\" + deep, true, false},
        {deep + u'x', false, false},
        {root.substr(0, 3), true, true},
        {u"?:\\", false, false},
        {u"\\\\no-such-server\\share\\file.mov", false, false},
        {u"\\\\?\\UNC\\no-such-server\\share\\file.mov", false, false},
        {root + u"\\*.mov", false, false},
        {root + u"\\fi?e", false, false},
        {u"NUL", false, false},
        {u"", false, false},
    };
    auto& files = host.GetFiles();
    for (const auto& row : rows) {
        EXPECT_EQ(files.ExistsOnDisk(row.path), row.exists) << Narrow(row.path);
        EXPECT_EQ(files.IsDirectory(row.path), row.isFolder) << Narrow(row.path);
    }
}

TEST_F(DiskTest, SeesAFileThatAnotherHolds)
{
    const Folder folder(u"held-" + host.GetTexts().CreateUniqueGuid().AsString());
    const UTF16String path = folder.Path() + u"\\held.mov";
    const HANDLE held = CreateFileW(Native(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(
        CreateFileW(Native(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr),
        INVALID_HANDLE_VALUE);
    EXPECT_TRUE(host.GetFiles().ExistsOnDisk(path));
    CloseHandle(held);
    EXPECT_FALSE(host.GetFiles().ExistsOnDisk(path));
}

TEST_F(DiskTest, NormalFormsKeepDrivesAndShares)
{
    struct
    {
        const char16_t* path;
        const char16_t* normal;
    } const rows[] = {
        {u"D:\\a\\.\\b\\..\\c", u"D:\\a\\c"},
        {u"D:/a//c", u"D:\\a\\c"},
        {u"\\\\server\\share\\a\\..\\b", u"\\\\server\\share\\b"},
        {u"\\\\?\\UNC\\server\\share\\a", u"\\\\server\\share\\a"},
        {u"\\\\?\\D:\\ä\\日本", u"D:\\ä\\日本"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(host.GetFiles().NormalizePathWithoutUNC(row.path), row.normal) << Narrow(row.path);
    const UTF16String half = u"D:\\" + UTF16String(1, u'\xD800');
    EXPECT_EQ(host.GetFiles().ToNormalizedPath(half), half);
}

}  // namespace
