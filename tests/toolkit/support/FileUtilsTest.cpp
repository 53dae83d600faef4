#include "toolkit/support/FileUtils.h"
#include "toolkit/support/OS.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;
using WString = LightweightString<wchar_t>;
using Cv::FilespecUtils::makeValidFilespec;
using Cv::FilespecUtils::makeValidFilespecNTFS;

namespace {

// Sets an environment variable for one scope and restores what was there.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value) : m_name(name)
    {
        if (const char* old = std::getenv(name))
            m_old = old;
        if (value)
            ::setenv(name, value, 1);
        else
            ::unsetenv(name);
    }
    ~ScopedEnv()
    {
        if (m_old)
            ::setenv(m_name, m_old->c_str(), 1);
        else
            ::unsetenv(m_name);
    }

private:
    const char* m_name;
    std::optional<std::string> m_old;
};

class FileUtilsFolderTest : public ::testing::Test {
protected:
    FileUtilsFolderTest()
        : m_folder(fs::temp_directory_path()
              / ("tessel-files-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name())
                  + "-" + std::to_string(::getpid())))
    {
        fs::remove_all(m_folder);
        fs::create_directories(m_folder);
    }
    ~FileUtilsFolderTest() override
    {
        std::error_code error;
        fs::remove_all(m_folder, error);
    }
    void touch(const std::string& name) const { std::ofstream(m_folder / name) << "x"; }
    WString folder() const { return fromUTF8(m_folder.string()); }

    fs::path m_folder;
};

TEST(PathHelpers, JoinPutsExactlyOneSeparatorBetweenParts)
{
    EXPECT_EQ(joinPaths(L"a", L"b"), L"a/b");
    EXPECT_EQ(joinPaths(L"a/", L"b"), L"a/b");
    EXPECT_EQ(joinPaths(L"a//", L"//b"), L"a/b");
    EXPECT_EQ(joinPaths(L"/", L"x"), L"/x");
    EXPECT_EQ(joinPaths(L"/data/", L"Tutorials/"), L"/data/Tutorials/");
    EXPECT_EQ(joinPaths(L"", L"b"), L"b");
    EXPECT_EQ(joinPaths(L"a/", L""), L"a/");
    EXPECT_EQ(joinPaths(L"", L""), L"");
    EXPECT_EQ(joinPaths(L"dir", L"*.CvTutorial"), L"dir/*.CvTutorial");
}

TEST(PathHelpers, NamesFoldersAndExtensions)
{
    EXPECT_EQ(stripPath(L"/a/b/name.CvTutorial"), L"name.CvTutorial");
    EXPECT_EQ(stripPath(L"name"), L"name");
    EXPECT_EQ(stripPath(L"a/b/"), L"b");
    EXPECT_EQ(stripPath(L"/"), L"");
    EXPECT_EQ(stripPath(L""), L"");

    EXPECT_EQ(getDirectory(L"/a/b/c.txt"), L"/a/b");
    EXPECT_EQ(getDirectory(L"/c.txt"), L"/");
    EXPECT_EQ(getDirectory(L"c.txt"), L"");
    EXPECT_EQ(getDirectory(L"a//b/"), L"a");
    EXPECT_EQ(getDirectory(L"/"), L"");

    EXPECT_EQ(stripExtension(L"a/b.tar.gz"), L"a/b.tar");
    EXPECT_EQ(stripExtension(L"dir.d/file"), L"dir.d/file");
    EXPECT_EQ(stripExtension(L".profile"), L".profile");
    EXPECT_EQ(stripExtension(L"dir/.profile"), L"dir/.profile");
    EXPECT_EQ(stripExtension(L"file."), L"file");
    EXPECT_EQ(getExtension(L"a/b.tar.gz"), L".gz");
    EXPECT_EQ(getExtension(L"a.d/b"), L"");
    // The browser's display name: no folder, no extension.
    EXPECT_EQ(stripExtension(stripPath(L"/pics/holiday.final.png")), L"holiday.final");
}

TEST(PathHelpers, WildcardsMatchWholeNames)
{
    EXPECT_TRUE(matchesWildcard(L"*.CvTutorial", L"a.CvTutorial"));
    EXPECT_TRUE(matchesWildcard(L"*.CvTutorial", L".CvTutorial"));
    EXPECT_FALSE(matchesWildcard(L"*.CvTutorial", L"a.CvTutorial.bak"));
    EXPECT_FALSE(matchesWildcard(L"*.CvTutorial", L"a.cvtutorial"));
    EXPECT_TRUE(matchesWildcard(L"*.CvTutorial", L"a.cvtutorial", true));
    EXPECT_TRUE(matchesWildcard(L"*", L""));
    EXPECT_FALSE(matchesWildcard(L"?", L""));
    EXPECT_TRUE(matchesWildcard(L"a?c", L"abc"));
    EXPECT_FALSE(matchesWildcard(L"a?c", L"ac"));
    EXPECT_TRUE(matchesWildcard(L"*.*", L"x.png"));
    EXPECT_FALSE(matchesWildcard(L"*.*", L"README"));
    EXPECT_TRUE(matchesWildcard(L"*ab*ab", L"xxabyyabab"));
    EXPECT_TRUE(matchesWildcard(L"[a]", L"[a]"));
    // Many stars against a long near-miss must still answer (and answer no).
    EXPECT_FALSE(matchesWildcard(L"*a*a*a*a*a*a*a*a*b", std::wstring(5000, L'a')));
}

TEST_F(FileUtilsFolderTest, ListsMatchingEntriesSortedByName)
{
    for (const char* name : {"b.CvTutorial", "a.CvTutorial", "C.CVTUTORIAL", "notes.txt", ".hidden.CvTutorial"})
        touch(name);
    fs::create_directory(m_folder / "folder.CvTutorial");
    fs::create_symlink(m_folder / "a.CvTutorial", m_folder / "link.CvTutorial");
    fs::create_symlink(m_folder / "gone", m_folder / "dangling.CvTutorial");
    const std::string invalidName = std::string("bad\xff") + ".CvTutorial";
    touch(invalidName);

    std::vector<WString> out{L"stale entry"};
    ASSERT_TRUE(getDirectoryContents(folder(), L"*.CvTutorial", out, eDirFiles));
    EXPECT_EQ(out, (std::vector<WString>{L"a.CvTutorial", L"b.CvTutorial", L"link.CvTutorial"}));

    ASSERT_TRUE(getDirectoryContents(folder(), L"*.cvtutorial", out, eDirFiles | eDirCaseInsensitive | eDirHidden));
    EXPECT_EQ(out, (std::vector<WString>{L".hidden.CvTutorial", L"C.CVTUTORIAL", L"a.CvTutorial", L"b.CvTutorial",
                       L"link.CvTutorial"}));

    ASSERT_TRUE(getDirectoryContents(folder(), L"*", out, eDirFolders));
    EXPECT_EQ(out, std::vector<WString>{L"folder.CvTutorial"});

    ASSERT_TRUE(getDirectoryContents(folder(), L"*.txt", out, eDirFiles | eDirFullPaths));
    EXPECT_EQ(out, std::vector<WString>{joinPaths(folder(), L"notes.txt")});

    // No kind flag: both kinds.
    ASSERT_TRUE(getDirectoryContents(folder(), L"f*", out, 0));
    EXPECT_EQ(out, std::vector<WString>{L"folder.CvTutorial"});

    EXPECT_FALSE(getDirectoryContents(joinPaths(folder(), L"missing"), L"*", out, 0));
    EXPECT_TRUE(out.empty());
}

TEST_F(FileUtilsFolderTest, TheFileManagerListsByPatternPathAndDeletesFiles)
{
    touch("one.CvTutorial");
    touch("two.CvTutorial");
    touch("three.txt");
    fs::create_directory(m_folder / "sub.CvTutorial");
    FileManager& files = OS()->fileManager();

    EXPECT_EQ(files.listFiles(joinPaths(folder(), L"*.CvTutorial")),
        (std::vector<WString>{L"one.CvTutorial", L"two.CvTutorial"}));
    EXPECT_TRUE(files.listFiles(joinPaths(folder(), L"missing/*.CvTutorial")).empty());

    EXPECT_TRUE(files.deleteFile(joinPaths(folder(), L"one.CvTutorial")));
    EXPECT_FALSE(files.deleteFile(joinPaths(folder(), L"one.CvTutorial")));
    EXPECT_FALSE(files.deleteFile(joinPaths(folder(), L"sub.CvTutorial")));
    EXPECT_TRUE(fs::is_directory(m_folder / "sub.CvTutorial"));
    EXPECT_EQ(files.listFiles(joinPaths(folder(), L"*.CvTutorial")), std::vector<WString>{L"two.CvTutorial"});
    EXPECT_TRUE(fileExists(joinPaths(folder(), L"three.txt")));
    EXPECT_FALSE(fileExists(folder()));
    EXPECT_TRUE(directoryExists(folder()));
}

TEST_F(FileUtilsFolderTest, DataFoldersFollowTheXdgVariables)
{
    const std::string data = (m_folder / "data").string();
    const std::string state = (m_folder / "state").string();
    ScopedEnv dataHome("XDG_DATA_HOME", data.c_str());
    ScopedEnv stateHome("XDG_STATE_HOME", state.c_str());
    FileManager& files = OS()->fileManager();

    EXPECT_EQ(files.getBaseDataDirectory(), fromUTF8(data + "/tessel"));
    files.setBaseDataDirectory(L"/elsewhere");
    EXPECT_EQ(files.getBaseDataDirectory(), L"/elsewhere");
    files.setBaseDataDirectory(L"");
    EXPECT_EQ(files.getBaseDataDirectory(), fromUTF8(data + "/tessel"));

    EXPECT_EQ(getSystemLogDirectory(), fromUTF8(state + "/tessel/logs/"));
    EXPECT_TRUE(fs::is_directory(state + "/tessel/logs"));
    const WString device = getDeviceDataDirectory(0);
    EXPECT_EQ(device, fromUTF8(data + "/tessel/devices/0/"));
    EXPECT_TRUE(fs::is_directory(toUTF8(device.view()).str()));
    EXPECT_FALSE(fileExists(device + L"extcfg.dat"));

    // A relative value is not a base folder: the home folder's default applies.
    ScopedEnv relative("XDG_DATA_HOME", "relative/data");
    ScopedEnv home("HOME", m_folder.string().c_str());
    EXPECT_EQ(files.getBaseDataDirectory(), fromUTF8(m_folder.string() + "/.local/share/tessel"));
}

TEST(Filespec, AnyTextBecomesOneValidName)
{
    EXPECT_EQ(makeValidFilespec(L"a/b\\c"), L"a_b_c");
    EXPECT_EQ(makeValidFilespec(L"tab\there\x7f"), L"tab_here_");
    EXPECT_EQ(makeValidFilespec(L""), L"_");
    EXPECT_EQ(makeValidFilespec(L"  "), L"_");
    EXPECT_EQ(makeValidFilespec(L".."), L"_");
    EXPECT_EQ(makeValidFilespec(L"."), L"_");
    EXPECT_EQ(makeValidFilespec(L" report.txt "), L"report.txt");
    EXPECT_EQ(makeValidFilespec(L"a:b?"), L"a:b?");
    EXPECT_EQ(makeValidFilespec(L"x/y", L'-'), L"x-y");
    EXPECT_EQ(makeValidFilespec(L"x/y", L'/'), L"x_y");

    // Long names are cut to 255 bytes, never inside a character.
    const WString longName(300, L'\u00e9');
    const WString cut = makeValidFilespec(longName);
    EXPECT_EQ(cut.size(), 127u);
    EXPECT_LE(toUTF8(cut.view()).size(), 255u);
    const WString withExtension = makeValidFilespec(L"/logs", WString(400, L'x'), L".txt");
    EXPECT_TRUE(withExtension.endsWith(L".txt"));
    EXPECT_EQ(stripPath(withExtension).size(), 255u);
}

TEST(Filespec, PortableNamesAvoidOtherSystemsReservedForms)
{
    EXPECT_EQ(makeValidFilespecNTFS(L"a:b?c*<d>|\"e\""), L"a_b_c__d___e_");
    EXPECT_EQ(makeValidFilespecNTFS(L"CON"), L"_CON");
    EXPECT_EQ(makeValidFilespecNTFS(L"con.txt"), L"_con.txt");
    EXPECT_EQ(makeValidFilespecNTFS(L"lpt9"), L"_lpt9");
    EXPECT_EQ(makeValidFilespecNTFS(L"COM10"), L"COM10");
    EXPECT_EQ(makeValidFilespecNTFS(L"console"), L"console");
    EXPECT_EQ(makeValidFilespecNTFS(L"name. . "), L"name");
    EXPECT_EQ(makeValidFilespecNTFS(L"..."), L"_");
    EXPECT_EQ(makeValidFilespecNTFS(L"/tmp/out", L"Task:Log", L".html", L'?'), L"/tmp/out/Task_Log.html");
    EXPECT_EQ(makeValidFilespecNTFS(L"/tmp", L"AUX", L".html"), L"/tmp/_AUX.html");
}

} // namespace
