#pragma once
// ProgressReportClient: what a long task reports its progress to. A task that renders or exports hands its
// client a ProgressSnapshot now and then: how far it is, a line of text, and, for renders, the frame it has
// just made.

#include "toolkit/gfx/Image.h"
#include "toolkit/support/LightweightString.h"

class ProgressReportClient {
public:
    struct ProgressSnapshot {
        double fraction = 0.0; // 0..1
        LightweightString<wchar_t> text;
        Pictor::Image image; // null when the task has no picture to show
    };

    virtual ~ProgressReportClient() = default;
    virtual void handleProgressUpdate(const ProgressSnapshot& snapshot) = 0;
};
