#include "toolkit/ui/OsServices.h"
#include "toolkit/testing/UiHarness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

// Records the programs the services would start, and answers with a chosen exit status.
struct LaunchRecorder {
    std::vector<std::vector<std::string>> calls;
    int exitStatus = 0;
    bool startable = true;
    OsServices::Launcher previous;

    LaunchRecorder()
    {
        previous = OsServices::setLauncher([this](const std::vector<std::string>& argv, bool, int& status) {
            calls.push_back(argv);
            status = exitStatus;
            return startable;
        });
    }
    ~LaunchRecorder() { OsServices::setLauncher(previous); }
};

// Sets an environment variable for the scope of a test.
struct EnvSetting {
    std::string name;
    std::string old;
    bool had = false;
    EnvSetting(const char* n, const char* value) : name(n)
    {
        if (const char* v = std::getenv(n)) {
            had = true;
            old = v;
        }
        if (value)
            setenv(n, value, 1);
        else
            unsetenv(n);
    }
    ~EnvSetting()
    {
        if (had)
            setenv(name.c_str(), old.c_str(), 1);
        else
            unsetenv(name.c_str());
    }
};

} // namespace

TEST(OsServices, FileUriEscapesEverythingButPlainCharacters)
{
    EXPECT_EQ(OsServices::fileUri(L"/tmp/a b/c#d%e,f.txt"), "file:///tmp/a%20b/c%23d%25e%2Cf.txt");
    EXPECT_EQ(OsServices::fileUri(L"/home/\u00e9t\u00e9/\u65e5.png"), "file:///home/%C3%A9t%C3%A9/%E6%97%A5.png");
    EXPECT_EQ(OsServices::fileUri(L"/x/it's \"$(rm)\""), "file:///x/it%27s%20%22%24%28rm%29%22");
    // A relative path is made absolute first.
    const std::string relative = OsServices::fileUri(L"notes.txt");
    EXPECT_EQ(relative.rfind("file:///", 0), 0u);
    EXPECT_TRUE(relative.ends_with("/notes.txt"));
}

TEST(OsServices, TellsAddressesFromPaths)
{
    EXPECT_TRUE(OsServices::looksLikeUri(L"https://example.org/a?b=c"));
    EXPECT_TRUE(OsServices::looksLikeUri(L"mailto:someone@example.org"));
    EXPECT_TRUE(OsServices::looksLikeUri(L"svn+ssh://host/repo"));
    EXPECT_FALSE(OsServices::looksLikeUri(L"/tmp/odd:name"));
    EXPECT_FALSE(OsServices::looksLikeUri(L"C:\\media"));
    EXPECT_FALSE(OsServices::looksLikeUri(L"two words:x"));
    EXPECT_FALSE(OsServices::looksLikeUri(L"1http://x"));
    EXPECT_FALSE(OsServices::looksLikeUri(L""));
}

TEST(OsServices, ContainingFolder)
{
    EXPECT_EQ(OsServices::containingFolder(L"/media/clip.mov"), LightweightString<wchar_t>(L"/media"));
    EXPECT_EQ(OsServices::containingFolder(L"/media/cards/"), LightweightString<wchar_t>(L"/media"));
    EXPECT_EQ(OsServices::containingFolder(L"/clip.mov"), LightweightString<wchar_t>(L"/"));
    EXPECT_EQ(OsServices::containingFolder(L"clip.mov"), LightweightString<wchar_t>(L"."));
}

TEST(OsServices, OpensWithOneArgumentAndNoShell)
{
    LaunchRecorder launches;
    EXPECT_TRUE(OsServices::openWithDefaultHandler(L"https://example.org/?q=a b&c"));
    // A file name that looks like an option or holds shell syntax reaches the helper as one absolute path.
    EXPECT_TRUE(OsServices::openWithDefaultHandler(L"--help; $(reboot)"));
    EXPECT_FALSE(OsServices::openWithDefaultHandler(L""));
    ASSERT_EQ(launches.calls.size(), 2u);
    EXPECT_EQ(launches.calls[0], (std::vector<std::string>{"xdg-open", "https://example.org/?q=a b&c"}));
    ASSERT_EQ(launches.calls[1].size(), 2u);
    EXPECT_EQ(launches.calls[1][0], "xdg-open");
    EXPECT_EQ(launches.calls[1][1].front(), '/');
    EXPECT_TRUE(launches.calls[1][1].ends_with("/--help; $(reboot)"));

    launches.startable = false;
    EXPECT_FALSE(OsServices::openWithDefaultHandler(L"/tmp/x"));
}

TEST(OsServices, RevealAsksTheFileManagerServiceFirst)
{
    EnvSetting bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    LaunchRecorder launches;
    EXPECT_TRUE(OsServices::revealInFileBrowser({L"/media/a b.mov", L"/media/c,d.mov"}));
    ASSERT_EQ(launches.calls.size(), 1u);
    const std::vector<std::string>& call = launches.calls[0];
    EXPECT_EQ(call.front(), "dbus-send");
    EXPECT_NE(std::find(call.begin(), call.end(), "org.freedesktop.FileManager1.ShowItems"), call.end());
    EXPECT_NE(std::find(call.begin(), call.end(), "array:string:file:///media/a%20b.mov,file:///media/c%2Cd.mov"),
              call.end());
}

TEST(OsServices, RevealFallsBackToOpeningTheFolder)
{
    {
        EnvSetting bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        LaunchRecorder launches;
        launches.exitStatus = 1; // no file manager answered
        EXPECT_TRUE(OsServices::revealInFileBrowser({L"/media/cards/clip.mov"}));
        ASSERT_EQ(launches.calls.size(), 2u);
        EXPECT_EQ(launches.calls[1], (std::vector<std::string>{"xdg-open", "/media/cards"}));
    }
    {
        EnvSetting bus("DBUS_SESSION_BUS_ADDRESS", nullptr);
        LaunchRecorder launches;
        EXPECT_TRUE(OsServices::revealInFileBrowser({L"/media/cards/clip.mov"}));
        ASSERT_EQ(launches.calls.size(), 1u);
        EXPECT_EQ(launches.calls[0], (std::vector<std::string>{"xdg-open", "/media/cards"}));
    }
    LaunchRecorder launches;
    EXPECT_FALSE(OsServices::revealInFileBrowser({}));
    EXPECT_FALSE(OsServices::revealInFileBrowser({L""}));
    EXPECT_TRUE(launches.calls.empty());
}

TEST(OsServices, RealLauncherReportsAMissingProgram)
{
    // The real starter, on a program that cannot exist: refused, without a shell to print "not found".
    OsServices::Launcher real = OsServices::setLauncher({});
    OsServices::setLauncher(real);
    int status = 0;
    EXPECT_FALSE(real({"tessel-no-such-program-here"}, true, status));
    EXPECT_TRUE(real({"true"}, true, status));
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(real({"false"}, true, status));
    EXPECT_EQ(status, 1);
}

TEST(OsServices, DraggingFilesOutPutsAnAddressListOnTheClipboard)
{
    UiHarness ui;
    EXPECT_TRUE(OsServices::startFileDrag({L"/media/a.mov", L"", L"/media/b c.wav"}));
    EXPECT_EQ(OsServices::getClipboardText(),
              LightweightString<wchar_t>(L"file:///media/a.mov\r\nfile:///media/b%20c.wav\r\n"));
    EXPECT_FALSE(OsServices::startFileDrag({}));
    OsServices::setClipboardText(L"plain");
    EXPECT_EQ(ui.backend().getClipboardText(), LightweightString<wchar_t>(L"plain"));
}
