// Choosing the video hardware: the registered list, which entry is current, and switching: the order in which
// drivers hear of it, what a failing configuration leaves behind, and what listeners hear.
#include "uistate/UIHWDeviceManager.h"

#include "toolkit/media/RecordingDriver.h"
#include "toolkit/support/FileTestSupport.h"

#include "toolkit/media/CurrentProject.h"
#include "toolkit/media/CvAudioResource.h"
#include "toolkit/media/SoftwareAudioMixer.h"
#include "toolkit/media/SoftwarePreviewOutput.h"
#include "toolkit/support/Preferences.h"
#include "toolkit/support/Resources.h"

#include <gtest/gtest.h>

namespace {

using Log = std::vector<std::string>;
using Names = Vector<LightweightString<wchar_t>>;

class FreshManager : public UIHWDeviceManager {
public:
    FreshManager() : UIHWDeviceManager(SeparateManager {}) {}
};

class HardwareChoice : public ::testing::Test {
protected:
    HardwareChoice()
    {
        prefs().setFile(m_scratch.file("preferences"));
        CvDeviceDriverManager::clear();
        RegisterHWDevices(Names { L"Monitor A", L"Monitor B", L"Unplugged" });
        m_a = addRecordingDriver(m_log, "a");
        m_b = addRecordingDriver(m_log, "b");
        m_unplugged = addRecordingDriver(m_log, "unplugged", false);
        CvDeviceDriverManager::defineConfiguration(L"Monitor A", { L"a" });
        CvDeviceDriverManager::defineConfiguration(L"Monitor B", { L"b" });
        CvDeviceDriverManager::defineConfiguration(L"Unplugged", { L"unplugged" });
        m_guard = m_manager.addListener(Cv::makeListener<NotifyMsg>([this](const NotifyMsg&) { ++m_notified; }));
    }
    ~HardwareChoice() override
    {
        CvDeviceDriverManager::clear();
        RegisterHWDevices(Names {});
        Cv::CurrentProject::resetToDefaults();
        prefs().setFile(Preferences::defaultPath());
    }

    static LightweightString<char> stored()
    {
        return prefs().getPreference(resourceStr(UIHWDeviceManager::currentHWPrefKeyId).str(), LightweightString<char>());
    }

    FileTestSupport::ScratchFolder m_scratch { "tessel-hardware" };
    Log m_log;
    Cv::Ptr<RecordingDriver> m_a, m_b, m_unplugged;
    FreshManager m_manager;
    Cv::Ptr<Cv::Guard> m_guard;
    int m_notified = 0;
};

TEST_F(HardwareChoice, NoRegisteredDevicesGiveMinusOneAndAnEmptyList)
{
    RegisterHWDevices(Names {});
    FreshManager manager;
    EXPECT_TRUE(manager.getHWDevicesAvailable().empty());
    EXPECT_EQ(manager.getCurrentHW(), -1);
}

TEST_F(HardwareChoice, StoredChoiceIsNotConsultedBeforeTheListWasAsked)
{
    ASSERT_TRUE(m_manager.setCurrentHW("Monitor A"));
    EXPECT_EQ(m_manager.getCurrentHW(), 2);
    EXPECT_EQ(m_manager.getHWDevicesAvailable(), (Names { L"Monitor A", L"Monitor B", L"Unplugged" }));
    EXPECT_EQ(m_manager.getCurrentHW(), 0);
}

TEST_F(HardwareChoice, LastEntryOfTheStoredNameWins)
{
    RegisterHWDevices(Names { L"Twin", L"Other", L"Twin", L"Last" });
    CvDeviceDriverManager::defineConfiguration(L"Twin", { L"a" });
    m_manager.getHWDevicesAvailable();
    ASSERT_TRUE(m_manager.setCurrentHW("Twin"));
    EXPECT_EQ(m_manager.getCurrentHW(), 2);
}

TEST_F(HardwareChoice, EntriesStayAsFirstFilled)
{
    m_manager.getHWDevicesAvailable();
    RegisterHWDevices(Names { L"Monitor B" });
    ASSERT_TRUE(m_manager.setCurrentHW("Monitor B"));
    EXPECT_EQ(m_manager.getCurrentHW(), 1) << "the entry numbering of the first list holds";
}

TEST_F(HardwareChoice, SwitchingStopsTheOldDriversThenGivesTheFormatThenStarts)
{
    ASSERT_TRUE(m_manager.setCurrentHW("Monitor A"));
    m_log.clear();
    OutputFormat::Details format = Cv::CurrentProject::getOutputImageFormat(0);
    ASSERT_TRUE(m_manager.setCurrentHW("Monitor B"));
    const std::string size = std::to_string(format.imageSize().width) + "x" + std::to_string(format.imageSize().height);
    EXPECT_EQ(m_log, (Log { "a stop", "a close", "b open", "b format " + size, "b start Monitor B" }));
    EXPECT_EQ(stored(), "Monitor B");
    EXPECT_EQ(m_notified, 2);
}

TEST_F(HardwareChoice, SwitchingToTheStoredNameRestartsNothing)
{
    ASSERT_TRUE(m_manager.setCurrentHW("Monitor A"));
    m_log.clear();
    EXPECT_TRUE(m_manager.setCurrentHW("Monitor A"));
    EXPECT_TRUE(m_log.empty());
    EXPECT_EQ(m_notified, 1);
}

TEST_F(HardwareChoice, EmptyNameAlwaysRestarts)
{
    ASSERT_TRUE(m_manager.setCurrentHW("Monitor A"));
    m_log.clear();
    EXPECT_FALSE(m_manager.setCurrentHW(""));
    EXPECT_EQ(m_log, (Log { "a stop", "a close" }));
    EXPECT_EQ(stored(), "Monitor A");
}

TEST_F(HardwareChoice, FailingConfigurationAnswersFalseKeepsTheChoiceAndTellsNobody)
{
    ASSERT_TRUE(m_manager.setCurrentHW("Monitor A"));
    m_log.clear();
    EXPECT_FALSE(m_manager.setCurrentHW("Unplugged"));
    EXPECT_EQ(m_log, (Log { "a stop", "a close", "unplugged open refused" }));
    EXPECT_EQ(stored(), "Monitor A");
    EXPECT_EQ(m_notified, 1);
    EXPECT_TRUE(CvDeviceDriverManager::getDrivers(true, 0).empty()) << "the drivers stay disabled";
}

TEST_F(HardwareChoice, ChoiceSurvivesANewManagerReadingTheSameStore)
{
    ASSERT_TRUE(m_manager.setCurrentHW("Monitor B"));
    prefs().reload();
    FreshManager next;
    next.getHWDevicesAvailable();
    EXPECT_EQ(next.getCurrentHW(), 1);
}

TEST_F(HardwareChoice, PreviewShowsFramesAtTheProjectsOutputFormat)
{
    Cv::Ptr<SoftwarePreviewOutput> preview(new SoftwarePreviewOutput(L"preview"));
    CvDeviceDriverManager::addDriver(preview);
    CvDeviceDriverManager::defineConfiguration(L"Software preview", { L"preview" });
    OutputFormat::Details format = Cv::CurrentProject::getOutputImageFormat(0);
    EXPECT_FALSE(preview->showFrame(VideoFrame(4, 2)));
    ASSERT_TRUE(m_manager.setCurrentHW("Software preview"));
    VideoFrame frame(2, 1, 0xFF0000FFu);
    frame.pixels[1] = 0xFFFF0000u;
    EXPECT_TRUE(preview->showFrame(frame));
    const VideoFrame shown = preview->getLastFrame();
    ASSERT_EQ(shown.width, format.imageSize().width);
    ASSERT_EQ(shown.height, format.imageSize().height);
    EXPECT_EQ(shown.at(0, 0), 0xFF0000FFu);
    EXPECT_EQ(shown.at(shown.width - 1, shown.height - 1), 0xFFFF0000u);
    ASSERT_TRUE(m_manager.setCurrentHW("Monitor A"));
    EXPECT_FALSE(preview->isRunning());
}

TEST_F(HardwareChoice, NoOutputConfigurationRunsNoVideoDriver)
{
    CvDeviceDriverManager::defineConfiguration(L"No output", {});
    ASSERT_TRUE(m_manager.setCurrentHW("Monitor A"));
    ASSERT_TRUE(m_manager.setCurrentHW("No output"));
    EXPECT_TRUE(CvDeviceDriverManager::getDrivers(true, CvResourceTypeBase::videoOutputType).empty());
    EXPECT_EQ(stored(), "No output");
}

TEST_F(HardwareChoice, SwitchingStartsTheMixerThreadWithTheCurrentAudioSettings)
{
    Cv::Ptr<SoftwareAudioMixer> mixer(new SoftwareAudioMixer());
    CvDeviceDriverManager::addDriver(mixer);
    const AudioSettings before = CvAudioResource::instance().getSettings();
    CvAudioResource::instance().setSettings(AudioSettings { 44100, 1 });
    const bool switched = m_manager.setCurrentHW("Monitor B");
    CvAudioResource::instance().setSettings(before);
    ASSERT_TRUE(switched);
    EXPECT_TRUE(mixer->isPlaying());
    EXPECT_EQ(mixer->getChannels(), 1);
}

} // namespace
