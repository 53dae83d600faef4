#pragma once
// CvResourceTypeBase: the interface every device driver offers the driver manager (docs/devices.md).
//
// The operations are declared in a fixed order that callers rely on:
//   1. open()                 takes hold of the device; false when it cannot be had (not connected, busy)
//   2. close()                lets it go again
//   3. stop()                 stops moving pictures or sound; the device stays open
//   4. setOutputImageFormat() takes the project's output image format for the next start
//   5. start()                starts again with the resources of a configuration
// A driver is enabled between a successful open() and its close(); the manager keeps that state.

#include "toolkit/media/FrameRate.h"
#include "toolkit/media/OutputFormatDetails.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/RefCount.h"

// What a configuration gives the drivers it starts.
struct CvVideoResources {
    LightweightString<wchar_t> configuration;
    Cv::FrameRate frameRate;
    // Frames a driver may hold in flight.
    int frameBuffers = 3;
};

class CvResourceTypeBase : public iObject {
public:
    // The resource types the manager walks by.
    static constexpr int videoOutputType = 1000;
    static constexpr int audioMixerType = 19;

    CvResourceTypeBase(LightweightString<wchar_t> name, int resourceType)
        : m_name(std::move(name)), m_resourceType(resourceType)
    {
    }

    virtual bool open() = 0;
    virtual void close() = 0;
    virtual void stop() = 0;
    virtual void setOutputImageFormat(const OutputFormat::Details& format) = 0;
    virtual void start(const CvVideoResources& resources) = 0;
    ~CvResourceTypeBase() override = default;

    const LightweightString<wchar_t>& getName() const { return m_name; }
    int getResourceType() const { return m_resourceType; }

private:
    LightweightString<wchar_t> m_name;
    int m_resourceType = 0;
};
