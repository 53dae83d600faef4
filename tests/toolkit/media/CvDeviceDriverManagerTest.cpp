// The driver manager: which drivers a configuration opens, what a refusal undoes, and what the iterator walks.
#include "toolkit/media/CvDeviceDriverManager.h"

#include "RecordingDriver.h"

#include <gtest/gtest.h>

namespace {

using Log = std::vector<std::string>;

class DeviceDrivers : public ::testing::Test {
protected:
    DeviceDrivers()
    {
        CvDeviceDriverManager::clear();
        m_a = addRecordingDriver(m_log, "a");
        m_b = addRecordingDriver(m_log, "b");
        m_broken = addRecordingDriver(m_log, "broken", false);
        m_mixer = addRecordingDriver(m_log, "mixer", true, CvResourceTypeBase::audioMixerType);
        CvDeviceDriverManager::defineConfiguration(L"Both", { L"a", L"b" });
        CvDeviceDriverManager::defineConfiguration(L"Half broken", { L"a", L"broken", L"b" });
        CvDeviceDriverManager::defineConfiguration(L"Nothing", {});
    }
    ~DeviceDrivers() override { CvDeviceDriverManager::clear(); }

    static std::vector<std::wstring> walk(bool enabledOnly, int first, int type)
    {
        std::vector<std::wstring> names;
        for (CvDeviceDriverManagerIter it(enabledOnly, first, type); it; ++it)
            names.emplace_back(it->getName().view());
        return names;
    }

    Log m_log;
    Cv::Ptr<RecordingDriver> m_a, m_b, m_broken, m_mixer;
};

TEST_F(DeviceDrivers, ToggleOpensTheDriversOfTheConfigurationInOrder)
{
    EXPECT_TRUE(CvDeviceDriverManager::toggleDevices("Both", false));
    EXPECT_EQ(m_log, (Log { "a open", "b open" }));
    EXPECT_EQ(walk(true, 0, CvResourceTypeBase::videoOutputType), (std::vector<std::wstring> { L"a", L"b" }));
}

TEST_F(DeviceDrivers, RefusedOpenClosesWhatThatToggleOpenedAndAnswersFalse)
{
    EXPECT_FALSE(CvDeviceDriverManager::toggleDevices("Half broken", false));
    EXPECT_EQ(m_log, (Log { "a open", "broken open refused", "a close" }));
    EXPECT_TRUE(walk(true, 0, 0).empty());
}

TEST_F(DeviceDrivers, UnknownConfigurationOpensNothing)
{
    EXPECT_FALSE(CvDeviceDriverManager::toggleDevices("Elsewhere", false));
    EXPECT_FALSE(CvDeviceDriverManager::toggleDevices("", false));
    EXPECT_TRUE(m_log.empty());
}

TEST_F(DeviceDrivers, ConfigurationWithoutDriversIsEnabledAtOnce)
{
    EXPECT_TRUE(CvDeviceDriverManager::toggleDevices("Nothing", false));
    EXPECT_TRUE(m_log.empty());
}

TEST_F(DeviceDrivers, ProbeLeavesNothingOpen)
{
    EXPECT_TRUE(CvDeviceDriverManager::toggleDevices("Both", true));
    EXPECT_FALSE(CvDeviceDriverManager::toggleDevices("Half broken", true));
    EXPECT_TRUE(walk(true, 0, 0).empty());
    EXPECT_EQ(m_log, (Log { "a open", "b open", "b close", "a close", "a open", "broken open refused", "a close" }));
}

TEST_F(DeviceDrivers, DisableClosesOnlyTheEnabledDrivers)
{
    CvDeviceDriverManager::toggleDevices("Both", false);
    m_log.clear();
    CvDeviceDriverManager::disableDevices();
    CvDeviceDriverManager::disableDevices();
    EXPECT_EQ(m_log, (Log { "a close", "b close" }));
}

TEST_F(DeviceDrivers, IteratorWalksByTypeEnablementAndStartIndex)
{
    CvDeviceDriverManager::toggleDevices("Both", false);
    EXPECT_EQ(walk(false, 0, CvResourceTypeBase::videoOutputType),
              (std::vector<std::wstring> { L"a", L"b", L"broken" }));
    EXPECT_EQ(walk(false, 1, CvResourceTypeBase::videoOutputType), (std::vector<std::wstring> { L"b", L"broken" }));
    EXPECT_EQ(walk(false, 0, CvResourceTypeBase::audioMixerType), (std::vector<std::wstring> { L"mixer" }));
    EXPECT_EQ(walk(true, 0, CvResourceTypeBase::audioMixerType), std::vector<std::wstring> {});
    EXPECT_EQ(walk(false, 9, 0), std::vector<std::wstring> {});
}

TEST_F(DeviceDrivers, ReplacingAnEnabledDriverClosesTheOldOne)
{
    CvDeviceDriverManager::toggleDevices("Both", false);
    Log other;
    addRecordingDriver(other, "a");
    EXPECT_EQ(m_log.back(), "a close");
    EXPECT_EQ(walk(true, 0, 0), (std::vector<std::wstring> { L"b" }));
}

} // namespace
