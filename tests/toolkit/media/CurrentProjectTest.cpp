// The project settings that widgets and devices follow, and how their changes are announced.
#include "toolkit/media/CurrentProject.h"
#include "toolkit/media/OutputFormat.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using Cv::CurrentProject;

class CurrentProjectTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        CurrentProject::resetToDefaults();
        guard = CurrentProject::getNotifier().addListener(Cv::makeListener<NotifyMsg>(
            [this](const NotifyMsg& msg) { heard.push_back(msg.getMessage().str()); }));
    }
    void TearDown() override
    {
        guard = nullptr;
        CurrentProject::resetToDefaults();
    }
    std::vector<std::string> heard;
    Cv::Ptr<Cv::Guard> guard;
};

TEST_F(CurrentProjectTest, ChangesAreAnnouncedOnceAndSettingTheSameValueIsSilent)
{
    CurrentProject::setFrameRate(Cv::FrameRate::Fps50);
    CurrentProject::setFrameRate(Cv::FrameRate::Fps50);
    CurrentProject::setOutputImageFormat(OutputFormat::getFormat(0));
    CurrentProject::setOutputImageFormat(OutputFormat::getFormat(0));
    EXPECT_EQ(heard, (std::vector<std::string> { CurrentProject::frameRateChangedMsg, CurrentProject::outputImageFormatChangedMsg }));
}

TEST_F(CurrentProjectTest, ProjectsAreKeptApartAndUnsetOnesReadAsDefaults)
{
    CurrentProject::setFrameRate(Cv::FrameRate::Fps24, 3);
    EXPECT_EQ(CurrentProject::getFrameRate(3), Cv::FrameRate::Fps24);
    EXPECT_EQ(CurrentProject::getFrameRate(0), CurrentProject::defaultFrameRate());
    EXPECT_EQ(CurrentProject::getOutputImageFormat(7), CurrentProject::defaultOutputImageFormat());
}

TEST_F(CurrentProjectTest, ResetAnnouncesOnlyTheValuesItChanges)
{
    CurrentProject::setFrameRate(Cv::FrameRate::Fps60, 2);
    CurrentProject::setOutputImageFormat(CurrentProject::defaultOutputImageFormat(), 4);
    heard.clear();
    CurrentProject::resetToDefaults();
    EXPECT_EQ(heard, (std::vector<std::string> { CurrentProject::frameRateChangedMsg }));
}

TEST_F(CurrentProjectTest, ConcurrentSettersAndReadersSeeWholeValues)
{
    const auto a = OutputFormat::getFormat(0);
    const auto b = OutputFormat::getFormat(OutputFormat::getNumFormats() - 1);
    std::atomic<bool> torn { false };
    std::thread writer([&] {
        for (int i = 0; i < 2000; ++i)
            CurrentProject::setOutputImageFormat(i % 2 ? a : b, 1);
    });
    for (int i = 0; i < 2000; ++i) {
        const auto seen = CurrentProject::getOutputImageFormat(1);
        if (!(seen == a || seen == b || seen == CurrentProject::defaultOutputImageFormat()))
            torn = true;
    }
    writer.join();
    EXPECT_FALSE(torn);
}
