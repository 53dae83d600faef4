#include "toolkit/widgets/FileBrowser.h"

#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/TabOrderManager.h"
#include "toolkit/widgets/TableWidget.h"

namespace {

const bool registeredByName = GlobManager::registerWidget<FileBrowser>("FileBrowser");

} // namespace

FileBrowser::FileBrowser(const InitArgs& args) : FileBrowserBase(args) {}

FileBrowser::FileBrowser(EventHandler* owner, XY<int> where) : FileBrowserBase(InitArgs())
{
    setChooser(owner);
    setPos(where.x, where.y);
}

FileBrowser::FileBrowser(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : FileBrowserBase(width, height, palette, canvas)
{
    init(defaultOptions);
}

FileBrowser::~FileBrowser() = default;

LightweightString<char> FileBrowser::idstring() const
{
    return "FileBrowser";
}

FileBrowser* FileBrowser::make(Glob* chooser, const LightweightString<wchar_t>& folder, const UIString& title,
                               XY<int> where, unsigned options)
{
    Screen* screen = Screen::current();
    if (!screen)
        return nullptr;
    InitArgs args(title, folder);
    args.chooser = chooser;
    args.options = options;
    auto* browser = new FileBrowser(args);
    if (where.x != 0 || where.y != 0) {
        browser->setupRootPos(Glob::BottomLeft(where.x, where.y));
    } else {
        browser->setupRootPos(Glob::Centre(0, 0));
    }
    if (!GlobManager::realize(browser)) {
        Glob::destroy(browser);
        return nullptr;
    }
    // The keyboard starts in the list, and Tab walks the list and the buttons.
    if (TableWidget* table = browser->getTable()) {
        TabOrderManager::addTabStop(table);
        for (size_t i = 0; i < browser->numChildren(); ++i)
            if (browser->child(i) != table)
                TabOrderManager::addTabStop(browser->child(i));
        table->takeFocus();
    }
    return browser;
}
