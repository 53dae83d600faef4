#include "toolkit/support/StartupConfig.h"

#include "FileTestSupport.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace FileTestSupport;

// A settings file of its own for each test, removed afterwards.
class ConfigFile {
public:
    explicit ConfigFile(std::string_view contents) { writeBytes(path(), contents); }
    std::string path() const { return m_folder.file("startup.conf"); }

private:
    ScratchFolder m_folder { "tessel-startup" };
};

} // namespace

TEST(StartupConfig, ReadsKeyValueLinesWithComments)
{
    const StartupConfig::Map parsed = StartupConfig::parse(
        "# a comment = not a key\n"
        "showExperimental = 1\n"
        "\tcelstrip_grab_size=8   # pixels\r\n"
        "no equals sign\n"
        " = 5\n"
        "twice = 1\n"
        "twice = 2\n"
        "last line without newline=3");
    const StartupConfig::Map expected = {
        {"showExperimental", "1"},
        {"celstrip_grab_size", "8"},
        {"twice", "2"},
        {"last line without newline", "3"},
    };
    EXPECT_EQ(parsed, expected);
}

TEST(StartupConfig, EnvironmentWinsOverTheFile)
{
    const ConfigFile file("action_params_on_menu = 0\ncolour_wheel_reflect_luma = 4\n");
    const StartupConfig config(file.path());
    {
        const ScopedEnv env("TESSEL_action_params_on_menu", "1");
        EXPECT_EQ(config.getInt("action_params_on_menu", 0), 1);
    }
    EXPECT_EQ(config.getInt("action_params_on_menu", 7), 0);
    {
        // A set but mistyped variable does not quietly give the file's value either.
        const ScopedEnv env("TESSEL_colour_wheel_reflect_luma", "yes");
        EXPECT_EQ(config.getInt("colour_wheel_reflect_luma", 9), 9);
    }
    {
        const ScopedEnv env("TESSEL_not_in_file", " 3 ");
        EXPECT_EQ(config.getInt("not_in_file", 0), 3);
    }
}

TEST(StartupConfig, ConfigIntReadsTheProcessSettings)
{
    const ConfigFile file("celstrip_grab_size = 11\n");
    StartupConfig::instance().setFile(file.path());
    EXPECT_EQ(config_int("celstrip_grab_size", 6), 11);
    EXPECT_EQ(config_int("showExperimental", 0), 0);

    StartupConfig::instance().setFile(file.path() + ".missing");
    EXPECT_EQ(config_int("celstrip_grab_size", 6), 6);
    StartupConfig::instance().setFile(StartupConfig::defaultPath());
}
