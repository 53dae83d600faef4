#include "toolkit/ui/GlobManager.h"

#include "toolkit/ui/Glob.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"

#include <map>
#include <string>

namespace {

std::map<std::string, GlobManager::Factory, std::less<>>& factories()
{
    static auto* table = new std::map<std::string, GlobManager::Factory, std::less<>>;
    return *table;
}

} // namespace

bool GlobManager::registerType(const LightweightString<char>& typeName, Factory factory)
{
    if (typeName.empty() || !factory)
        return false;
    factories()[typeName.str()] = std::move(factory);
    return true;
}

bool GlobManager::unregisterType(const LightweightString<char>& typeName)
{
    return factories().erase(typeName.str()) > 0;
}

bool GlobManager::isRegistered(const LightweightString<char>& typeName)
{
    return factories().find(typeName.view()) != factories().end();
}

Glob* GlobManager::createGlob(const GlobCreationInfo& info)
{
    const auto it = factories().find(info.typeName.view());
    if (it == factories().end())
        return nullptr;
    Glob* made = it->second(info);
    if (made && !info.name.empty() && made->getName().empty())
        made->setName(info.name);
    return made;
}

Glob* GlobManager::find(const LightweightString<char>& name)
{
    return name.empty() ? nullptr : Glob::findNamed(name);
}

XY<int> GlobManager::getPosForGlob(const GlobCreationInfo& info)
{
    return getPosForGlob(XY<int>(info.width, info.height));
}

XY<int> GlobManager::getPosForGlob(XY<int> size)
{
    Screen* screen = Screen::current();
    if (!screen)
        return {};
    // Centred on the pointer: a panel opens where the user's attention already is.
    const XY<int> mouse = screen->getMousePos();
    return getSafePosForGlob({ mouse.x - size.x / 2, mouse.y - size.y / 2 }, size);
}

XY<int> GlobManager::getSafePosForGlob(XY<int> wanted, XY<int> size)
{
    Screen* screen = Screen::current();
    if (!screen)
        return wanted;
    const int margin = UifStd::getWindowArrangement().screenMargin;
    const GlobBox area = Placement::inset(screen->getArea(), margin, margin, margin, margin);
    return Placement::keepInside(GlobBox::fromOriginAndSize(wanted, size), area).origin();
}

void GlobManager::makeSafe(Glob* glob)
{
    if (!is_good_glob_ptr(glob) || glob->parent())
        return;
    const XY<int> at = getSafePosForGlob(glob->getPosition(), glob->getSize());
    glob->setPos(at.x, at.y);
}

bool GlobManager::realize(Glob* glob)
{
    Screen* screen = Screen::current();
    return screen && screen->addTopLevel(glob);
}

void GlobManager::raise(Glob* glob)
{
    if (Screen* screen = Screen::current())
        screen->raise(glob);
}

void GlobManager::lower(Glob* glob)
{
    if (Screen* screen = Screen::current())
        screen->lower(glob);
}
