#include "toolkit/support/Preferences.h"

#include "FileTestSupport.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace FileTestSupport;

TEST(Preferences, AwkwardTextRoundTripsThroughTheFile)
{
    ScratchFolder folder;
    const std::string path = folder.file("preferences");
    const std::vector<std::pair<std::string, std::string>> awkward = {
        {"UI : Show hints", "false"},
        {"multi\nline\r\nkey", "value\nwith\nlines\n"},
        {"a=b", "c=d==e"},
        {"#not a comment", "#neither"},
        {"back\\slash\\", "\\n is not a newline\\"},
        {"  spaced  ", "  kept  \t"},
        {"", "empty key"},
        {"empty value", ""},
        {"unicode \xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "\xE6\x97\xA5\xE6\x9C\xAC"},
        {std::string("nul\0inside", 10), std::string("\0", 1)},
    };
    {
        Preferences writer(path);
        for (const auto& [key, value] : awkward)
            EXPECT_TRUE(writer.setPreference(key, std::string_view(value)));
        EXPECT_TRUE(writer.setPreference("wide", LightweightString<wchar_t>(L"caf\u00e9 \U0001F3AC")));
    }
    const Preferences reader(path);
    for (const auto& [key, value] : awkward)
        EXPECT_EQ(reader.getPreference(key, "<missing>"), value) << key;
    EXPECT_EQ(reader.getPreference("wide", L""), L"caf\u00e9 \U0001F3AC");
    EXPECT_EQ(reader.keys().size(), awkward.size() + 1);
    // Nothing is left beside the file after successful writes.
    EXPECT_EQ(folder.entries(), 1u);
}

TEST(Preferences, TypedValuesReadBackAndForeignTextGivesTheDefault)
{
    ScratchFolder folder;
    Preferences preferences(folder.file("preferences"));
    preferences.setPreference("int", -42);
    preferences.setPreference("bool", true);
    preferences.setPreference("double", 0.1);
    // A narrow literal must be stored as text, not taken for a bool.
    preferences.setPreference("file type", "AVI");
    preferences.setPreference("wide literal", L"MOV");

    const Preferences back(folder.file("preferences"));
    EXPECT_EQ(back.getPreference("int", 0), -42);
    EXPECT_TRUE(back.getPreference("bool", false));
    EXPECT_EQ(back.getPreference("double", 0.0), 0.1);
    EXPECT_EQ(back.getPreference("file type", "MP4"), "AVI");
    EXPECT_EQ(back.getPreference("wide literal", L""), L"MOV");

    // Text that is not of the asked type answers the default.
    EXPECT_EQ(back.getPreference("file type", 7), 7);
    EXPECT_EQ(back.getPreference("file type", 2.5), 2.5);
    EXPECT_TRUE(back.getPreference("file type", true));
    EXPECT_FALSE(back.getPreference("file type", false));
    EXPECT_EQ(back.getPreference("double", 3), 3); // "0.1" is not an integer

    Preferences words(folder.file("words"));
    words.setPreference("yes", " YES ");
    words.setPreference("off", "Off");
    words.setPreference("huge", "99999999999");
    EXPECT_TRUE(words.getPreference("yes", false));
    EXPECT_FALSE(words.getPreference("off", true));
    EXPECT_EQ(words.getPreference("huge", -1), -1);
}

TEST(Preferences, RemoveIsWrittenAndAnswersWhetherTheKeyWasThere)
{
    ScratchFolder folder;
    Preferences preferences(folder.file("preferences"));
    preferences.setPreference("UI : Hinted 7", true);
    preferences.setPreference("UI : Hinted 8", true);
    EXPECT_TRUE(preferences.removePreference("UI : Hinted 7"));
    EXPECT_FALSE(preferences.removePreference("UI : Hinted 7"));

    const Preferences back(folder.file("preferences"));
    EXPECT_FALSE(back.hasPreference("UI : Hinted 7"));
    EXPECT_TRUE(back.hasPreference("UI : Hinted 8"));
}

TEST(Preferences, CorruptOrTruncatedFileKeepsEveryWellFormedLine)
{
    ScratchFolder folder;
    const std::string path = folder.file("preferences");
    writeBytes(path,
        "# comment=not a key\n"
        "good=1\n"
        "no separator here\n"
        "bad escape=\\q\n"
        "dangling=\\\n"
        "\n"
        "windows=crlf\r\n"
        "twice=first\n"
        "\xFF\xFE binary=\x01\x02\n"
        "twice=second\n"
        "escaped\\=key=v\n"
        "cut short=this line lost its newl");

    const Preferences preferences(path);
    const Preferences::Map expected = {
        {"good", "1"},
        {"windows", "crlf"},
        {"twice", "second"},
        {"\xFF\xFE binary", "\x01\x02"},
        {"escaped=key", "v"},
    };
    EXPECT_EQ(preferences.snapshot(), expected);
}

TEST(Preferences, MissingOrUnwritableFileStillHoldsValuesForTheRun)
{
    ScratchFolder folder;
    writeBytes(folder.file("a-file"), "x");
    // The folder of this path is a regular file, so nothing can be written there.
    Preferences preferences(folder.file("a-file") + "/preferences");
    EXPECT_TRUE(preferences.keys().empty());
    EXPECT_FALSE(preferences.setPreference("key", "value"));
    EXPECT_EQ(preferences.getPreference("key", ""), "value");

    // Missing folders are made on the first write.
    Preferences nested(folder.file("one/two/preferences"));
    EXPECT_TRUE(nested.setPreference("key", 1));
    EXPECT_TRUE(fs::exists(folder.file("one/two/preferences")));
}

TEST(Preferences, AWriteInterruptedBeforeItsRenameLeavesTheOldFileReadable)
{
    ScratchFolder folder;
    const std::string path = folder.file("preferences");
    {
        Preferences preferences(path);
        preferences.setPreference("UI : Show hints", false);
        preferences.setPreference("file type", "MOV");
    }
    const std::string before = readBytes(path);
    // What a crash between writing the temporary file and renaming it leaves behind.
    writeBytes(path + ".tmp-Ab12Cd", "UI : Show hints=tr");

    Preferences preferences(path);
    EXPECT_FALSE(preferences.getPreference("UI : Show hints", true));
    EXPECT_EQ(preferences.getPreference("file type", ""), "MOV");
    EXPECT_EQ(readBytes(path), before);
    // The next write still succeeds beside the leftover.
    EXPECT_TRUE(preferences.setPreference("file type", "AVI"));
    EXPECT_EQ(Preferences(path).getPreference("file type", ""), "AVI");
}

TEST(Preferences, AProcessKilledWhileWritingNeverLeavesAHalfFile)
{
    ScratchFolder folder;
    const std::string path = folder.file("preferences");
    {
        Preferences seed(path);
        for (int i = 0; i < 20; ++i)
            seed.setPreference("stable " + std::to_string(i), std::string(100, static_cast<char>('a' + i)));
    }
    for (int round = 0; round < 5; ++round) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            Preferences writer(path);
            for (int i = 0;; ++i)
                writer.setPreference("counter", i);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20 + 7 * round));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);

        const Preferences after(path);
        for (int i = 0; i < 20; ++i)
            ASSERT_EQ(after.getPreference("stable " + std::to_string(i), ""),
                std::string(100, static_cast<char>('a' + i)))
                << "round " << round;
        EXPECT_TRUE(!after.hasPreference("counter") || after.getPreference("counter", -1) >= 0) << "round " << round;
    }
}

TEST(Preferences, ConcurrentWritersLoseNothing)
{
    ScratchFolder folder;
    const std::string path = folder.file("preferences");
    Preferences preferences(path);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&preferences, t] {
            for (int i = 0; i < 15; ++i) {
                const std::string key = "thread " + std::to_string(t) + " key " + std::to_string(i);
                preferences.setPreference(key, i);
                EXPECT_EQ(preferences.getPreference(key, -1), i);
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(Preferences(path).keys().size(), 60u);
}

TEST(Preferences, SetFileAndReloadSwitchWhatIsRead)
{
    ScratchFolder folder;
    writeBytes(folder.file("first"), "which=first\n");
    writeBytes(folder.file("second"), "which=second\n");
    Preferences preferences(folder.file("first"));
    EXPECT_EQ(preferences.getPreference("which", ""), "first");
    preferences.setFile(folder.file("second"));
    EXPECT_EQ(preferences.getPreference("which", ""), "second");
    writeBytes(folder.file("second"), "which=edited\n");
    preferences.reload();
    EXPECT_EQ(preferences.getPreference("which", ""), "edited");
    EXPECT_EQ(readBytes(folder.file("first")), "which=first\n"); // switching wrote nothing
}

TEST(Preferences, DefaultPathFollowsTheEnvironment)
{
    const ScopedEnv home("HOME", "/home/editor");
    // A relative or empty config folder is not a base folder: the home folder's default applies.
    for (const char* config : {"relative/config", "", static_cast<const char*>(nullptr)}) {
        const ScopedEnv xdg("XDG_CONFIG_HOME", config);
        EXPECT_EQ(Preferences::defaultPath(), "/home/editor/.config/tessel/preferences") << (config ? config : "unset");
    }
    const ScopedEnv xdg("XDG_CONFIG_HOME", "/somewhere/config");
    EXPECT_EQ(Preferences::defaultPath(), "/somewhere/config/tessel/preferences");
}
