#include "frame/StartupSettings.h"

#include "toolkit/support/StartupConfig.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

using Values = StartupSettings::Values;

TEST(StartupSettings, ReadsEachKeyOnceInTableOrderWithItsDefault)
{
    std::vector<std::pair<std::string, int>> asked;
    const Values values = StartupSettings::fromConfig([&](std::string_view key, int def) {
        asked.emplace_back(std::string(key), def);
        return def;
    });
    const std::vector<std::pair<std::string, int>> expected {
        { "colour_wheel_reflect_luma", 0 }, { "showExperimental", 0 }, { "celstrip_grab_size", 6 }, { "action_params_on_menu", 0 }
    };
    EXPECT_EQ(asked, expected);
    EXPECT_EQ(values, (Values { 0, false, 6, false }));
    EXPECT_EQ(StartupSettings::fromConfig(nullptr), values);
}

TEST(StartupSettings, ExperimentalNeedsExactlyOneWhileActionMenusTakeAnyNonZero)
{
    struct Case {
        int stored;
        bool experimental;
        bool onMenu;
    };
    for (const Case c : { Case { 0, false, false }, Case { 1, true, true }, Case { 2, false, true }, Case { -1, false, true } }) {
        const Values values = StartupSettings::fromConfig([&](std::string_view key, int def) {
            return key == "showExperimental" || key == "action_params_on_menu" ? c.stored : def;
        });
        EXPECT_EQ(values.showExperimental, c.experimental) << "stored " << c.stored;
        EXPECT_EQ(values.actionParamsOnMenu, c.onMenu) << "stored " << c.stored;
        EXPECT_EQ(values.celstripGrabSize, 6) << "another key's value leaked";
    }
}

TEST(StartupSettings, AStartupFileIsReadThroughTheConfigurationButNotByTheRunningProcess)
{
    const Values loaded = StartupSettings::current();
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("frame-startup-" + std::to_string(::getpid()) + ".conf");
    std::ofstream(path) << "showExperimental = 2\n"
                           "action_params_on_menu = 2\n"
                           "celstrip_grab_size = " << loaded.celstripGrabSize + 3 << "  # wider\n"
                           "colour_wheel_reflect_luma = one\n";
    StartupConfig::instance().setFile(path.string());
    const Values values = StartupSettings::fromConfig(config_int);
    StartupConfig::instance().setFile(StartupConfig::defaultPath());
    std::filesystem::remove(path);

    EXPECT_FALSE(values.showExperimental);
    EXPECT_TRUE(values.actionParamsOnMenu);
    EXPECT_EQ(values.celstripGrabSize, loaded.celstripGrabSize + 3);
    // A mistyped value falls back to its default instead of half-applying.
    EXPECT_EQ(values.colourWheelReflectLuma, 0);
    // What the process loaded with stays until the next start.
    EXPECT_EQ(StartupSettings::current(), loaded);
}

TEST(StartupSettings, OverridesAnswerThePreviousValuesAndScopedOnesRestoreThemWhenNested)
{
    const Values loaded = StartupSettings::current();
    Values changed = loaded;
    changed.celstripGrabSize = loaded.celstripGrabSize + 1;
    EXPECT_EQ(StartupSettings::overrideForTesting(changed), loaded);
    EXPECT_EQ(StartupSettings::celstripGrabSize(), changed.celstripGrabSize);
    EXPECT_EQ(StartupSettings::overrideForTesting(loaded), changed);

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
