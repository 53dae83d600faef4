#pragma once
// The settings of the open project that widgets and devices follow: its frame rate and its output image
// format. Projects are numbered; 0 is the current one, and a number never set reads as the defaults
// (25 fps, HD 1080i 50). Every change that alters a value is announced on the notifier with the project's
// number as the notification type and frameRateChangedMsg or outputImageFormatChangedMsg as the message.
// Safe to read and set from any thread; listeners run on the thread that made the change.

#include "toolkit/media/FrameRate.h"
#include "toolkit/media/OutputFormatDetails.h"
#include "toolkit/support/Notifier.h"

namespace Cv {

class CurrentProject {
public:
    static FrameRate getFrameRate(int project);
    static OutputFormat::Details getOutputImageFormat(int project);

    static void setFrameRate(FrameRate rate, int project = 0);
    static void setOutputImageFormat(const OutputFormat::Details& format, int project = 0);
    // Forgets every project's settings (each reads as the defaults again), announcing each value that changes.
    static void resetToDefaults();

    static Notifier& getNotifier();

    static constexpr const char* frameRateChangedMsg = "ProjectFrameRateChangedMsg";
    static constexpr const char* outputImageFormatChangedMsg = "ProjectOutputImageFormatChangedMsg";

    static FrameRate defaultFrameRate();
    static OutputFormat::Details defaultOutputImageFormat();
};

} // namespace Cv
