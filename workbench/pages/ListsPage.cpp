// Gallery page: scroll lists. A single-select list with a selection and warning lines, a multi-select list
// with several lines selected, lines described by items (bold, aligned right, coloured, inactive), a list of
// a hundred thousand lines scrolled to its middle, and the list panel with its do-it button off (nothing
// selected) and on.
#include "lists/ScrollList.h"
#include "lists/ScrollListPanel.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <string>
#include <vector>

namespace {

constexpr int pageWidth = 980;
constexpr int pageHeight = 560;
constexpr int margin = 16;
constexpr int columnWidth = 300;
constexpr int listHeight = 220;

const wchar_t* const clipNames[] = {
    L"Opening titles",
    L"Interview A",
    L"Room tone",
    L"Drone shot",
    L"Interview B",
    L"Missing media: Beach.mov",
    L"Music bed",
    L"Cutaway 1",
    L"Offline: Studio.mxf",
    L"Cutaway 2",
    L"End card",
    L"Credits",
    L"Outtakes",
};

std::vector<LightweightString<wchar_t>> clips()
{
    return std::vector<LightweightString<wchar_t>>(std::begin(clipNames), std::end(clipNames));
}

ScrollList* addList(StandardPanel* page, const wchar_t* caption, int x, int y, int height = listHeight)
{
    const Palette& pal = page->getPalette();
    page->addWidget<GalleryLabel>(GalleryLabel::InitArgs(caption, columnWidth, 20, pal), Glob::UserTopLeft(x, y));
    ScrollList::InitArgs args(clips(), columnWidth, static_cast<uint16_t>(height), 0, pal);
    return page->addWidget<ScrollList>(args, Glob::UserTopLeft(x, y + 24));
}

Glob* buildListsPage()
{
    StandardPanel* page = new StandardPanel(galleryPageArgs(L"Scroll lists", pageWidth, pageHeight));
    const Palette& pal = page->getPalette();

    ScrollList* single = addList(page, L"Single select: a selection, two warning lines", margin, margin);
    single->selectItem(3);
    single->setItemWarn(5, true);
    single->setItemWarn(8, true);

    ScrollList* multi = addList(page, L"Multi-select: four lines chosen", margin * 2 + columnWidth, margin);
    multi->multiSelect(true, false);
    for (int line : { 1, 2, 3, 6 })
        multi->selectItem(line);
    multi->setItemWarn(5, true);

    ScrollList* items = addList(page, L"Items: bold, right, coloured, inactive", margin * 3 + columnWidth * 2, margin);
    items->setStrings(std::vector<ScrollListItem> {
        ScrollListItem(L"Bold heading", 0, {}, UifStd::getDefaultFont().withStyle(Pictor::fontStyleBold)),
        ScrollListItem(L"Aligned right", 0, TextAlignment(TextAlignment::Right, TextAlignment::VCentre)),
        ScrollListItem(L"Selected from the start", ScrollListItem::Selected),
        ScrollListItem(L"Own colour", 0, {}, {}, pal.highlight()),
        ScrollListItem(L"Inactive line", ScrollListItem::Inactive),
        ScrollListItem(L"Plain line"),
    });

    const int lowerTop = margin + listHeight + 24 + 2 * margin;
    ScrollList* many = addList(page, L"100,000 lines, line 50,000 chosen", margin, lowerTop, 200);
    std::vector<LightweightString<wchar_t>> lines;
    lines.reserve(100000);
    for (int i = 0; i < 100000; ++i)
        lines.emplace_back(L"Frame " + std::to_wstring(i));
    many->setStrings(lines);
    many->selectItem(50000);

    const int panelX = margin * 2 + columnWidth;
    page->addWidget<GalleryLabel>(GalleryLabel::InitArgs(L"List panels: do-it off, then on", 2 * columnWidth, 20, pal),
        Glob::UserTopLeft(panelX, lowerTop));
    ScrollListPanel::InitArgs off(UIString(L"Choose a clip"), clips(), columnWidth, 200, pal);
    page->addWidget<ScrollListPanel>(off, Glob::UserTopLeft(panelX, lowerTop + 24));
    ScrollListPanel::InitArgs on(UIString(L"Choose a clip"), clips(), columnWidth, 200, pal);
    page->addWidget<ScrollListPanel>(on, Glob::UserTopLeft(panelX + columnWidth + margin, lowerTop + 24))
        ->selectItem(2);
    return page;
}

GalleryPageRegistrar listsPage("Lists", buildListsPage);

} // namespace
