#include "frame/StartupSettings.h"

#include "toolkit/support/StartupConfig.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace {

using Values = StartupSettings::Values;

// A reader answering from a table, as a configuration with those lines would.
StartupSettings::Reader readerOf(std::map<std::string, int> table)
{
    return [table = std::move(table)](std::string_view key, int def) {
        const auto it = table.find(std::string(key));
        return it == table.end() ? def : it->second;
    };
}

// Points the process's start-up configuration at a file of the given lines, and back at the real one after.
class StartupFile {
public:
    explicit StartupFile(const std::string& lines)
        : m_path(std::filesystem::temp_directory_path() / ("frame-startup-" + std::to_string(::getpid()) + ".conf"))
    {
        std::ofstream(m_path) << lines;
        StartupConfig::instance().setFile(m_path.string());
    }
    ~StartupFile()
    {
        StartupConfig::instance().setFile(StartupConfig::defaultPath());
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    StartupFile(const StartupFile&) = delete;
    StartupFile& operator=(const StartupFile&) = delete;

private:
    std::filesystem::path m_path;
};

} // namespace

TEST(StartupSettingsConversion, ReadsEachKeyOnceInTableOrderWithItsDefault)
{
    std::vector<std::pair<std::string, int>> asked;
    const Values values = StartupSettings::fromConfig([&](std::string_view key, int def) {
        asked.emplace_back(std::string(key), def);
        return def;
    });
    const std::vector<std::pair<std::string, int>> expected {
        { "colour_wheel_reflect_luma", 0 },
        { "showExperimental", 0 },
        { "celstrip_grab_size", 6 },
        { "action_params_on_menu", 0 },
    };
    EXPECT_EQ(asked, expected);
    // Defaults convert to: no reflection, experimental formats hidden, a six-pixel grab zone, no menu.
    EXPECT_EQ(values, (Values { 0, false, 6, false }));
    EXPECT_EQ(StartupSettings::fromConfig(nullptr), values);
}

TEST(StartupSettingsConversion, ExperimentalFormatsNeedExactlyOne)
{
    for (const auto& [stored, on] : std::vector<std::pair<int, bool>> { { 0, false }, { 1, true }, { 2, false }, { -1, false } }) {
        EXPECT_EQ(StartupSettings::fromConfig(readerOf({ { "showExperimental", stored } })).showExperimental, on)
            << "showExperimental = " << stored;
    }
}

TEST(StartupSettingsConversion, ActionParametersGoOnTheMenuForAnyNonZero)
{
    for (const auto& [stored, on] : std::vector<std::pair<int, bool>> { { 0, false }, { 1, true }, { 2, true }, { -3, true } }) {
        EXPECT_EQ(StartupSettings::fromConfig(readerOf({ { "action_params_on_menu", stored } })).actionParamsOnMenu, on)
            << "action_params_on_menu = " << stored;
    }
}

TEST(StartupSettingsConversion, IntegersAreKeptAsGivenAndKeysDoNotLeakIntoEachOther)
{
    const Values values = StartupSettings::fromConfig(readerOf({ { "colour_wheel_reflect_luma", 3 }, { "celstrip_grab_size", 11 } }));
    EXPECT_EQ(values, (Values { 3, false, 11, false }));
}

TEST(StartupSettingsFile, AStartupFileIsReadThroughTheConfiguration)
{
    const StartupFile file("# a hand-written file\n"
                           "showExperimental = 2\n"
                           "action_params_on_menu = 2\n"
                           "celstrip_grab_size = 9   # wider grab zone\n"
                           "colour_wheel_reflect_luma = one\n");
    const Values values = StartupSettings::fromConfig(config_int);
    EXPECT_FALSE(values.showExperimental);
    EXPECT_TRUE(values.actionParamsOnMenu);
    EXPECT_EQ(values.celstripGrabSize, 9);
    // A mistyped value falls back to its default instead of half-applying.
    EXPECT_EQ(values.colourWheelReflectLuma, 0);
}

TEST(StartupSettingsFile, ARunningProcessKeepsTheValuesItLoadedWith)
{
    const Values loaded = StartupSettings::current();
    const StartupFile file("showExperimental = " + std::string(loaded.showExperimental ? "0" : "1") + "\n" +
                           "celstrip_grab_size = " + std::to_string(loaded.celstripGrabSize + 5) + "\n");
    EXPECT_NE(StartupSettings::fromConfig(config_int), loaded) << "the test file should change the settings";
    EXPECT_EQ(StartupSettings::current(), loaded);
    EXPECT_EQ(StartupSettings::celstripGrabSize(), loaded.celstripGrabSize);
}

TEST(StartupSettingsOverride, AnOverrideAnswersThePreviousValuesAndAppliesUntilPutBack)
{
    const Values loaded = StartupSettings::current();
    Values changed = loaded;
    changed.actionParamsOnMenu = !loaded.actionParamsOnMenu;
    changed.celstripGrabSize = loaded.celstripGrabSize + 1;

    EXPECT_EQ(StartupSettings::overrideForTesting(changed), loaded);
    EXPECT_EQ(StartupSettings::actionParamsOnMenu(), changed.actionParamsOnMenu);
    EXPECT_EQ(StartupSettings::celstripGrabSize(), changed.celstripGrabSize);
    EXPECT_EQ(StartupSettings::overrideForTesting(loaded), changed);
    EXPECT_EQ(StartupSettings::current(), loaded);
}

TEST(StartupSettingsOverride, AScopedOverrideRestoresEvenWhenNested)
{
    const Values loaded = StartupSettings::current();
    {
        const StartupSettings::ScopedOverride menu(Values { 0, false, 6, true });
        EXPECT_TRUE(StartupSettings::actionParamsOnMenu());
        {
            const StartupSettings::ScopedOverride experimental(Values { 0, true, 6, false });
            EXPECT_TRUE(StartupSettings::showExperimental());
            EXPECT_FALSE(StartupSettings::actionParamsOnMenu());
        }
        EXPECT_TRUE(StartupSettings::actionParamsOnMenu());
        EXPECT_FALSE(StartupSettings::showExperimental());
    }
    EXPECT_EQ(StartupSettings::current(), loaded);
}
