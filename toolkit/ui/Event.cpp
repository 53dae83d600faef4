#include "toolkit/ui/Event.h"

#include "toolkit/support/Clock.h"

Event Event::makeMouse(Type type, XY<int> pos, int button, int modifiers)
{
    Event e;
    e.type = type;
    e.pos = pos;
    e.screenPos = pos;
    e.button = button;
    e.modifiers = modifiers;
    e.clickCount = type == MouseDown ? 1 : 0;
    e.time = service_get_msecs_precise();
    return e;
}

Event Event::makeKey(int key, int modifiers)
{
    Event e;
    e.type = Key;
    e.key = key;
    e.modifiers = modifiers;
    e.time = service_get_msecs_precise();
    return e;
}

Event Event::makeMessage(LightweightString<char> name, Glob* sender)
{
    Event e;
    e.type = Message;
    e.message = std::move(name);
    e.sender = sender;
    return e;
}

Event Event::makeFocus(bool gained)
{
    Event e;
    e.type = gained ? FocusGained : FocusLost;
    e.time = service_get_msecs_precise();
    return e;
}
