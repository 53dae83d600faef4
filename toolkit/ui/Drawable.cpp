#include "toolkit/ui/Drawable.h"

#include "toolkit/ui/Screen.h"

namespace {

int disableCount = 0;
int deferrerCount = 0;

} // namespace

void Drawable::disableRedraws()
{
    ++disableCount;
}

void Drawable::enableRedraws()
{
    // An unbalanced enable is ignored rather than letting the count go negative and swallow a later disable.
    if (disableCount == 0)
        return;
    if (--disableCount == 0)
        if (Screen* screen = Screen::current())
            screen->releaseHeldRedraws();
}

void Drawable::clearPendingRedraws()
{
    if (Screen* screen = Screen::current())
        screen->m_held.clear();
}

bool Drawable::redrawsEnabled()
{
    return disableCount == 0;
}

namespace Pictor {

UpdateDeferrer::UpdateDeferrer()
{
    ++deferrerCount;
}

UpdateDeferrer::~UpdateDeferrer()
{
    if (--deferrerCount == 0)
        if (Screen* screen = Screen::current(); screen && screen->m_flushWanted)
            screen->flush();
}

bool UpdateDeferrer::active()
{
    return deferrerCount > 0;
}

} // namespace Pictor
