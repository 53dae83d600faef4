#include "lists/SimpleFileBrowser.h"

#include "toolkit/support/Resources.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/widgets/TableColumnDescription.h"

SimpleFileBrowser::SimpleFileBrowser(const FileBrowserBase::InitArgs& args)
    : FileBrowserBase(args)
{
    // The base built its own columns; ours are only visible once this object exists.
    init(browserOptions);
}

SimpleFileBrowser::SimpleFileBrowser(EventHandler* owner, XY<int> where)
    : FileBrowserBase(InitArgs())
{
    init(browserOptions);
    setChooser(owner);
    setPos(where.x, where.y);
}

SimpleFileBrowser::~SimpleFileBrowser() = default;

LightweightString<char> SimpleFileBrowser::idstring() const
{
    return "SimpleFileBrowser";
}

std::vector<TableColumnDescription> SimpleFileBrowser::getColumnDefinitions()
{
    return { TableColumnDescription(UIString(ResId(10668)), "name").setResizeable(true) };
}

SimpleFileBrowser* SimpleFileBrowser::make(const FileBrowserBase::InitArgs& args, XY<int> where)
{
    if (!Screen::current())
        return nullptr;
    auto* browser = new SimpleFileBrowser(args);
    if (where.x != 0)
        browser->setupRootPos(Glob::BottomLeft(where.x, where.y));
    else
        browser->setupRootPos(Glob::Centre(0, 0));
    if (!GlobManager::realize(browser)) {
        Glob::destroy(browser);
        return nullptr;
    }
    return browser;
}
