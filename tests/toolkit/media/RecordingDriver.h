// A device driver that writes each call it receives into a shared log, and may refuse to open, for the tests
// of the driver manager and of switching hardware.
#pragma once

#include "toolkit/media/CvDeviceDriverManager.h"
#include "toolkit/support/LightweightString.h"

#include <string>
#include <vector>

class RecordingDriver : public CvResourceTypeBase {
public:
    RecordingDriver(std::vector<std::string>& log, const char* name, bool opens = true,
                    int type = CvResourceTypeBase::videoOutputType)
        : CvResourceTypeBase(fromUTF8(name), type), m_log(log), m_name(name), m_opens(opens)
    {
    }

    bool open() override
    {
        m_log.push_back(m_name + " open" + (m_opens ? "" : " refused"));
        return m_opens;
    }
    void close() override { m_log.push_back(m_name + " close"); }
    void stop() override { m_log.push_back(m_name + " stop"); }
    void setOutputImageFormat(const OutputFormat::Details& format) override
    {
        m_log.push_back(m_name + " format " + std::to_string(format.imageSize().width) + "x"
                        + std::to_string(format.imageSize().height));
    }
    void start(const CvVideoResources& resources) override
    {
        m_log.push_back(m_name + " start " + toUTF8(resources.configuration.view()).str());
    }

private:
    std::vector<std::string>& m_log;
    std::string m_name;
    bool m_opens = true;
};

inline Cv::Ptr<RecordingDriver> addRecordingDriver(std::vector<std::string>& log, const char* name, bool opens = true,
                                                   int type = CvResourceTypeBase::videoOutputType)
{
    Cv::Ptr<RecordingDriver> driver(new RecordingDriver(log, name, opens, type));
    CvDeviceDriverManager::addDriver(driver);
    return driver;
}
