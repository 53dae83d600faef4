#pragma once
// ClickTracker: the press-then-release-inside rule shared by widgets that act on a click. A left press arms
// it, drags stay with the armed widget, and the release completes a click only if it lands inside the target;
// a release elsewhere is a change of mind.

#include "toolkit/ui/Event.h"
#include "toolkit/ui/WidgetPosition.h"

class ClickTracker {
public:
    enum Result {
        Ignored, // not a press, drag or release this tracker takes
        Taken, // taken, but no click yet
        Clicked, // a release inside completed a click
    };

    // Feeds one mouse event. `canArm` says whether a press may start a click now (a disabled widget refuses).
    Result track(const Event& event, const GlobBox& target, bool canArm = true);
    bool isArmed() const { return m_armed; }

private:
    bool m_armed = false;
};
