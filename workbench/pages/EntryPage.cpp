// Gallery page: entry widgets: an address with and without a port (empty, filled, focused mid-typing), the
// date picker on a leap day, and a yes/no question panel.
#include "entry/IPAddressEntryBox.h"
#include "entry/TitledIPAddressEntryBox.h"
#include "entry/YesNoDialogue.h"
#include "entry/datecanvas.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/CustomTextBox.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

namespace {

constexpr int pageWidth = 900;
constexpr int pageHeight = 330;
constexpr int margin = 16;
constexpr int captionWidth = 170;
constexpr int rowStep = 46;

Glob* buildEntryPage()
{
    auto* page = new StandardPanel(galleryPageArgs(L"Entry", pageWidth, pageHeight));
    const Palette pal = page->getPalette();
    int top = margin;
    const int x = margin + captionWidth;

    addLabel(page, L"Address", margin, top, captionWidth);
    auto* empty = new TitledIPAddressEntryBox(L"Server", false, 70, pal);
    page->addChild(empty, Glob::UserTopLeft(x, top));
    auto* typing = new TitledIPAddressEntryBox(L"Typing", false, 70, pal);
    typing->setName("typing-address");
    page->addChild(typing, Glob::UserTopLeft(x + empty->getWidth() + 3 * margin, top));
    top += rowStep;

    addLabel(page, L"Address and port", margin, top, captionWidth);
    auto* withPort = new TitledIPAddressEntryBox(L"Stream", true, 70, pal);
    withPort->setURI(L"192.168.10.254:8554");
    page->addChild(withPort, Glob::UserTopLeft(x, top));
    auto* disabled = new TitledIPAddressEntryBox(L"Disabled", true, 70, pal);
    disabled->setURI(L"10.0.0.1:80");
    disabled->setEnabled(false);
    page->addChild(disabled, Glob::UserTopLeft(x + withPort->getWidth() + 3 * margin, top));
    top += rowStep;

    addLabel(page, L"Date (a leap day)", margin, top, captionWidth);
    auto* date = page->addWidget<datecanvas>(datecanvas::InitArgs(pal), Glob::UserTopLeft(x, top));
    date->m_set_date(29, 2, 2024);
    date->post_init();
    top += rowStep;

    addLabel(page, L"Question", margin, top, captionWidth);
    auto* question = new YesNoDialogue(YesNoDialogue::InitArgs(
        L"Replace file", L"A file called \u201cInterview take 3.mov\u201d already exists in this folder. Replace it?",
        L"Replace", L"Keep both", pal));
    question->setMovable(false);
    page->addChild(question, Glob::UserTopLeft(x, top));
    return page;
}

// The second address is shown as a user sees it half-way through typing: two octets done, the caret in the
// third box.
void showTyping(Glob* page)
{
    auto* typing = dynamic_cast<TitledIPAddressEntryBox*>(findNamed(page, "typing-address"));
    if (!typing)
        return;
    IPAddressEntryBox* entry = typing->widget();
    entry->getBox(0)->setString(L"172");
    entry->getBox(1)->setString(L"16");
    entry->getBox(2)->setString(L"4");
    entry->getBox(2)->takeFocus();
    entry->getBox(2)->setCaretPos(1);
}

GalleryPageRegistrar entryPage("Entry", buildEntryPage, showTyping);

} // namespace
