#include "toolkit/ui/ClickTracker.h"

ClickTracker::Result ClickTracker::track(const Event& event, const GlobBox& target, bool canArm)
{
    switch (event.type) {
    case Event::MouseDown:
        if (event.button != Event::LeftButton || !canArm)
            return Ignored;
        m_armed = true;
        return Taken;
    case Event::MouseDrag:
        return m_armed ? Taken : Ignored;
    case Event::MouseUp:
        if (event.button != Event::LeftButton || !m_armed)
            return Ignored;
        m_armed = false;
        return target.contains(event.pos) ? Clicked : Taken;
    default:
        return Ignored;
    }
}
