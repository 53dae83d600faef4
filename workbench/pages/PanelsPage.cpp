// Gallery page: StandardPanel in its states (title bar, standard buttons, border styles, an open panel menu,
// a resizable panel) and a VerticalScrollingBase with more rows than it can show.
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/ui/VerticalScrollingBase.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <string>

namespace {

constexpr int cellWidth = 270;
constexpr int cellHeight = 120;
constexpr int gap = 16;

StandardPanel* addPanel(Glob* page, const wchar_t* title, unsigned widgets, StandardPanel::BorderStyle border,
                        XY<int> cell, const wchar_t* note, bool resizable = false)
{
    StandardPanel::InitArgs args(title, cellWidth, cellHeight, widgets, UifStd::getColourScheme());
    args.border = border;
    args.resizable = resizable;
    const XY<int> at{gap + cell.x * (cellWidth + gap), gap + cell.y * (cellHeight + gap)};
    auto* panel = page->addWidget<StandardPanel>(args, Glob::UserTopLeft(at.x, at.y));
    const GlobBox user = panel->getUserArea();
    panel->addWidget<GalleryLabel>(
        GalleryLabel::InitArgs(note, static_cast<uint16_t>(user.width() - 2 * UifStd::getWidgetGap()),
                               static_cast<uint16_t>(UifStd::getButtonHeight()), panel->getPalette()),
        Glob::UserTopLeft(UifStd::getWidgetGap(), UifStd::getWidgetGap()));
    return panel;
}

Glob* buildPanelsPage()
{
    const int columns = 4;
    auto* page = new StandardPanel(galleryPageArgs(L"StandardPanel and VerticalScrollingBase",
                                                   columns * (cellWidth + gap) + gap, 3 * (cellHeight + gap) + 250));

    using SP = StandardPanel;
    addPanel(page, L"Title only", SP::NoWidgets, SP::RaisedBorder, {0, 0}, L"No standard buttons");
    addPanel(page, L"Close and do-it", SP::CloseButton | SP::DoItButton, SP::RaisedBorder, {1, 0},
             L"Escape closes, Return commits");
    SP* menuPanel = addPanel(page, L"Panel menu", SP::CloseButton, SP::RaisedBorder, {2, 0}, L"");
    menuPanel->setName("gallery-menu-panel");
    MenuGlob* menu = menuPanel->getMenu();
    menu->addMenuItem(MenuItem(L"Open", {}, MenuItemNormal, resFmtEllipsis));
    menu->addMenuItem(MenuItem(L"Save"));
    menu->addMenuItem(MenuItem(L"Export", {}, MenuItemGroupOpen));
    menu->addMenuItem(MenuItem(L"As image", {}, MenuItemInGroup));
    menu->addMenuItem(MenuItem(L"As text", {}, MenuItemInGroup));
    menu->addMenuItem(MenuItem(L"Not available now").setEnabled(false));
    addPanel(page, L"Resizable", SP::CloseButton, SP::RaisedBorder, {3, 0}, L"Drag an edge or corner", true);

    addPanel(page, L"Thin border", SP::CloseButton, SP::ThinBorder, {0, 1}, L"ThinBorder");
    addPanel(page, L"Sunken border", SP::CloseButton, SP::SunkenBorder, {1, 1}, L"SunkenBorder");
    addPanel(page, L"No border", SP::CloseButton, SP::NoBorder, {2, 1}, L"NoBorder");
    addPanel(page, L"A title much too long to fit in the title bar of this panel", SP::CloseButton | SP::DoItButton,
             SP::RaisedBorder, {3, 1}, L"Long titles end in an ellipsis");

    StandardPanel::InitArgs scrollArgs(L"Scrolling rows", 0, 0, SP::CloseButton, UifStd::getColourScheme());
    const XY<int> scrollSize = StandardPanel::calcPanelSize(2 * cellWidth, 2 * cellHeight + 120, scrollArgs);
    scrollArgs.width = static_cast<uint16_t>(scrollSize.x);
    scrollArgs.height = static_cast<uint16_t>(scrollSize.y);
    auto* scrolling = page->addWidget<VerticalScrollingBase>(
        scrollArgs, Glob::UserTopLeft(gap, gap + 2 * (cellHeight + gap)));
    scrolling->setName("gallery-scrolling");
    Glob* area = scrolling->getScrollArea();
    for (int i = 1; i <= 40; ++i) {
        const std::wstring text = L"Row " + std::to_wstring(i) + L" of 40";
        area->addWidget<GalleryLabel>(
            GalleryLabel::InitArgs(LightweightString<wchar_t>(text), static_cast<uint16_t>(area->getWidth() - 12),
                                   static_cast<uint16_t>(UifStd::getButtonHeight()), scrolling->getPalette()),
            i == 1 ? Glob::UserTopLeft(UifStd::getWidgetGap(), UifStd::getRowGap()) : Glob::Below(UifStd::getRowGap()));
    }
    scrolling->updateScrollExtent();
    scrolling->scrollTo(3 * (UifStd::getButtonHeight() + UifStd::getRowGap()));

    // A panel inside a panel: child panels are placed and clipped like any widget.
    StandardPanel::InitArgs nestedArgs(L"Nested", 0, 0, SP::CloseButton | SP::DoItButton, UifStd::getColourScheme());
    const XY<int> nestedSize = StandardPanel::calcPanelSize(2 * cellWidth - 40, 2 * cellHeight + 60, nestedArgs);
    nestedArgs.width = static_cast<uint16_t>(nestedSize.x);
    nestedArgs.height = static_cast<uint16_t>(nestedSize.y);
    auto* nested = page->addWidget<StandardPanel>(nestedArgs, Glob::RightOf(gap, scrolling));
    nested->addWidget<GalleryLabel>(GalleryLabel::InitArgs(L"calcPanelSize: the user area is exactly what was asked",
                                                           static_cast<uint16_t>(nested->getUserArea().width() - 12),
                                                           static_cast<uint16_t>(UifStd::getButtonHeight()),
                                                           nested->getPalette()),
                                    Glob::UserTopLeft(UifStd::getWidgetGap(), UifStd::getWidgetGap()));
    return page;
}

void openTheMenu(Glob* page)
{
    for (size_t i = 0; i < page->numChildren(); ++i)
        if (auto* panel = dynamic_cast<StandardPanel*>(page->child(i)); panel && panel->getName() == "gallery-menu-panel")
            panel->openMenu();
}

GalleryPageRegistrar panelsPage("Panels", buildPanelsPage, openTheMenu);

} // namespace
