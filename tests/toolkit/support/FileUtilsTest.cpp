#include "toolkit/support/FileUtils.h"
#include "toolkit/support/OS.h"

#include "FileTestSupport.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using WString = LightweightString<wchar_t>;
using Cv::FilespecUtils::makeValidFilespec;
using Cv::FilespecUtils::makeValidFilespecNTFS;

namespace {

using namespace FileTestSupport;

class FileUtilsFolderTest : public ::testing::Test {
protected:
    void touch(const std::string& name) const { writeBytes(m_scratch.file(name), "x"); }
    WString folder() const { return fromUTF8(m_folder.string()); }

    ScratchFolder m_scratch { "tessel-files" };
    const fs::path& m_folder = m_scratch.path();
};

// Checks a text function of a path against rows of (input, expected result).
template <typename Function>
void expectEach(Function function, std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> rows)
{
    for (const auto& [input, expected] : rows)
        EXPECT_EQ(function(WString(input)), WString(expected)) << toUTF8(std::wstring_view(input)).c_str();
}

TEST(PathHelpers, JoinPutsExactlyOneSeparatorBetweenParts)
{
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> rows[] = {{L"a", L"b", L"a/b"},
        {L"a/", L"b", L"a/b"}, {L"a//", L"//b", L"a/b"}, {L"/", L"x", L"/x"}, {L"", L"b", L"b"}, {L"a/", L"", L"a/"},
        {L"", L"", L""}};
    for (const auto& [head, tail, joined] : rows)
        EXPECT_EQ(joinPaths(head, tail), WString(joined)) << toUTF8(std::wstring_view(head)).c_str();
}

TEST(PathHelpers, NamesFoldersAndExtensions)
{
    expectEach([](const WString& path) { return stripPath(path); },
        {{L"/a/b/name.CvTutorial", L"name.CvTutorial"}, {L"name", L"name"}, {L"a/b/", L"b"}, {L"/", L""}, {L"", L""}});
    expectEach([](const WString& path) { return getDirectory(path); },
        {{L"/a/b/c.txt", L"/a/b"}, {L"/c.txt", L"/"}, {L"c.txt", L""}, {L"a//b/", L"a"}, {L"/", L""}});
    expectEach([](const WString& path) { return stripExtension(path); },
        {{L"a/b.tar.gz", L"a/b.tar"}, {L"dir.d/file", L"dir.d/file"}, {L".profile", L".profile"},
            {L"dir/.profile", L"dir/.profile"}, {L"file.", L"file"}});
    expectEach([](const WString& path) { return getExtension(path); }, {{L"a/b.tar.gz", L".gz"}, {L"a.d/b", L""}});
    // The browser's display name: no folder, no extension.
    EXPECT_EQ(stripExtension(stripPath(L"/pics/holiday.final.png")), L"holiday.final");
}

TEST(PathHelpers, WildcardsMatchWholeNames)
{
    // Pattern, name, whether case is ignored, whether it matches.
    const std::tuple<const wchar_t*, const wchar_t*, bool, bool> rows[] = {
        {L"*.CvTutorial", L".CvTutorial", false, true},
        {L"*.CvTutorial", L"a.CvTutorial.bak", false, false}, {L"*.CvTutorial", L"a.cvtutorial", false, false},
        {L"*.CvTutorial", L"a.cvtutorial", true, true}, {L"*", L"", false, true}, {L"?", L"", false, false},
        {L"a?c", L"abc", false, true}, {L"a?c", L"ac", false, false}, {L"*.*", L"README", false, false},
        {L"*ab*ab", L"xxabyyabab", false, true}, {L"[a]", L"[a]", false, true}};
    for (const auto& [pattern, name, caseless, matches] : rows)
        EXPECT_EQ(matchesWildcard(pattern, name, caseless), matches) << toUTF8(std::wstring_view(pattern)).c_str()
                                                                     << " " << toUTF8(std::wstring_view(name)).c_str();
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
    expectEach([](const WString& name) { return makeValidFilespec(name); },
        {{L"a/b\\c", L"a_b_c"}, {L"tab\there\x7f", L"tab_here_"}, {L"", L"_"}, {L"  ", L"_"}, {L"..", L"_"},
            {L".", L"_"}, {L" report.txt ", L"report.txt"}, {L"a:b?", L"a:b?"}});
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
    expectEach([](const WString& name) { return makeValidFilespecNTFS(name); },
        {{L"a:b?c*<d>|\"e\"", L"a_b_c__d___e_"}, {L"CON", L"_CON"}, {L"con.txt", L"_con.txt"}, {L"lpt9", L"_lpt9"},
            {L"COM10", L"COM10"}, {L"console", L"console"}, {L"name. . ", L"name"}, {L"...", L"_"}});
    EXPECT_EQ(makeValidFilespecNTFS(L"/tmp/out", L"Task:Log", L".html", L'?'), L"/tmp/out/Task_Log.html");
    EXPECT_EQ(makeValidFilespecNTFS(L"/tmp", L"AUX", L".html"), L"/tmp/_AUX.html");
}

} // namespace
