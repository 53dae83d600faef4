// Gallery page: drop-down menu buttons in their states, a titled menu button, and an open menu with an open and
// a folded group, a right-hand column, a coloured entry, a disabled entry and an entry's tooltip.
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/TitleMenuButton.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <string>

namespace {

constexpr int pageWidth = 760;
constexpr int pageHeight = 460;
constexpr int margin = 16;
constexpr int buttonWidth = 170;
const wchar_t* const tooltipText = L"Progressive, square pixels";

std::vector<MenuItem> formatMenu(const Palette& pal)
{
    std::vector<MenuItem> items{
        MenuItem(L"Standard definition", {}, MenuItemGroupOpen),
        MenuItem(L"PAL||720x576", {}, MenuItemInGroup),
        MenuItem(L"NTSC||720x480", {}, MenuItemInGroup),
        MenuItem(L"High definition", {}, MenuItemGroupOpen),
        MenuItem(L"720p||1280x720", {}, MenuItemInGroup),
        MenuItem(L"1080p||1920x1080", {}, MenuItemInGroup),
        MenuItem(L"Cinema", {}, MenuItemGroupFolded),
        MenuItem(L"2K||2048x1080", {}, MenuItemInGroup),
        MenuItem(L"4K||4096x2160", {}, MenuItemInGroup),
        MenuItem(L"Custom (marked)", {}, pal.warning(), pal.highlightText()),
        MenuItem(L"Legacy tape||unavailable").setEnabled(false),
        MenuItem(L"Customise", {}, MenuItemNormal, resFmtEllipsis),
    };
    items[5].tooltip(UIString(tooltipText));
    return items;
}

Glob* buildMenusPage()
{
    const Palette& pal = UifStd::getColourScheme();
    auto* page = new StandardPanel(galleryPageArgs(L"Drop-down menus and menu buttons", pageWidth, pageHeight));

    const int rowHeight = UifStd::getButtonHeight();
    const int rowStep = rowHeight + 2 * UifStd::getRowGap() + 18;
    const char* const names[] = {"menus-normal", "menus-hover", "menus-focused", "menus-disabled", "menus-own"};
    const wchar_t* const captions[] = {L"Normal", L"Hover", L"Focused", L"Disabled", L"Own text on the face"};
    for (int i = 0; i < 5; ++i) {
        const int y = margin + i * rowStep;
        page->addWidget<GalleryLabel>(GalleryLabel::InitArgs(captions[i], buttonWidth, 16, pal),
                                      Glob::UserTopLeft(margin, y));
        auto* button = page->addWidget<DropDownMenuButton>(
            DropDownMenuButton::InitArgs(formatMenu(pal), MenuItemIndex(i + 1), buttonWidth, 0, pal),
            Glob::UserTopLeft(margin, y + 18));
        button->setName(names[i]);
        if (i == 3)
            button->setEnabled(false);
        if (i == 4) {
            button->useSelectedForButtonDisplay(false);
            button->setString(UIString(L"1920 x 1080, 25p"));
        }
    }

    const int y = margin + 5 * rowStep;
    page->addWidget<GalleryLabel>(GalleryLabel::InitArgs(L"TitleMenuButton", 2 * buttonWidth, 16, pal),
                                  Glob::UserTopLeft(margin, y));
    page->addWidget<TitleMenuButton>(
        TitleMenuButton::InitArgs(UIString(L"Frame rate"), {L"23.976", L"24", L"25", L"29.97", L"30"}, 0,
                                  2 * buttonWidth, 0, pal),
        Glob::UserTopLeft(margin, y + 18));

    page->addWidget<GalleryLabel>(
        GalleryLabel::InitArgs(L"Open: groups open and folded, a column, colours, a tooltip", 400, 16, pal),
        Glob::UserTopLeft(margin + buttonWidth + 3 * margin, margin));
    auto* opener = page->addWidget<DropDownMenuButton>(
        DropDownMenuButton::InitArgs(formatMenu(pal), MenuItemIndex(3), 200, 0, pal),
        Glob::UserTopLeft(margin + buttonWidth + 3 * margin, margin + 18));
    opener->setName("menus-opener");
    return page;
}

void showLiveStates(Glob* page)
{
    Event enter;
    enter.type = Event::MouseEnter;
    if (Glob* g = findNamed(page, "menus-hover"))
        g->react(enter);
    auto* opener = dynamic_cast<DropDownMenuButton*>(findNamed(page, "menus-opener"));
    if (!opener)
        return;
    MenuGlob* menu = opener->openMenu();
    // The open menu took the keyboard; the focused button gets it back for its picture.
    if (Glob* g = findNamed(page, "menus-focused"))
        g->takeFocus();
    Screen* screen = Screen::current();
    if (!menu || !screen)
        return;
    // The tooltip needs the pointer to rest for a while; the page shows the same box the screen would
    // put beside the item with help.
    const GlobBox row = menu->getItemBox(5).translated(menu->getScreenPos());
    const int w = 200;
    const int h = UifStd::getButtonHeight();
    auto* tip = new DrawingSurface(DrawingSurface::InitArgs(
        [](Pictor::Painter& p, const GlobBox& box, const Palette& pal) {
            StylePainter::drawTooltip(p, box, pal, tooltipText);
        },
        static_cast<uint16_t>(w), static_cast<uint16_t>(h), page->getPalette()));
    tip->setPos(row.right() + 8, row.bottom() + (row.height() - h) / 2);
    screen->addTopLevel(tip);
}

GalleryPageRegistrar menusPage("Menus", buildMenusPage, showLiveStates);

} // namespace
