// Gallery page: text entry and text display: text boxes in every state a user meets (plain, ghost label,
// focused with a selection, scrolled, read-only, obfuscated, disabled), titled and number boxes, labels in
// their alignments and colours, a wrapped text block and a markup text with a link.
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/HTMLRenderer.h"
#include "toolkit/widgets/MultiLineTextBox.h"
#include "toolkit/widgets/NumericTextBox.h"
#include "toolkit/widgets/TextBoxBase.h"
#include "toolkit/widgets/TextLabel.h"
#include "toolkit/widgets/TitleTextBox.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

namespace {

constexpr int pageWidth = 980;
constexpr int pageHeight = 430;
constexpr int margin = 16;
constexpr int captionWidth = 130;
constexpr int rowHeight = 46;
constexpr uint16_t boxWidth = 118;

struct Page {
    StandardPanel* panel = nullptr;
    int top = margin;

    int startRow(const wchar_t* caption, int height = rowHeight)
    {
        panel->addWidget<GalleryLabel>(GalleryLabel::InitArgs(caption, captionWidth, 22, panel->getPalette()),
                                       Glob::UserTopLeft(margin, top));
        m_rowTop = top;
        top += height;
        return margin + captionWidth;
    }
    template <typename T> T* put(const typename T::InitArgs& args, int& x)
    {
        T* made = panel->addWidget<T>(args, Glob::UserTopLeft(x, m_rowTop));
        x += made->getWidth() + margin;
        return made;
    }
    // A small caption under the widget just placed, naming its state.
    void note(Glob* under, const wchar_t* text)
    {
        panel->addWidget<GalleryLabel>(GalleryLabel::InitArgs(text, under->getWidth(), 16, panel->getPalette()),
                                       Glob::Below(2, under));
    }

private:
    int m_rowTop = margin;
};

Glob* buildTextEntryPage()
{
    StandardPanel::InitArgs args = galleryPageArgs(L"Text entry and display", pageWidth, pageHeight);
    Page page;
    page.panel = new StandardPanel(args);
    const Palette pal = page.panel->getPalette().makeChildPalette();

    int x = page.startRow(L"Text boxes");
    Glob* g = page.put<TextBoxBase>(TextBoxBase::InitArgs(L"Plain text", boxWidth, 0, pal), x);
    page.note(g, L"normal");
    auto* ghost = page.put<TextBoxBase>(TextBoxBase::InitArgs(L"", boxWidth, 0, pal), x);
    ghost->setGhostLabel(UIString(L"Search clips"));
    page.note(ghost, L"ghost label");
    auto* focused = page.put<TextBoxBase>(TextBoxBase::InitArgs(L"Selected word", boxWidth, 0, pal), x);
    focused->setName("focus-box");
    page.note(focused, L"focused, selection");
    auto* readOnly = page.put<TextBoxBase>(TextBoxBase::InitArgs(L"Read only", boxWidth, 0, pal), x);
    readOnly->setEditable(false);
    page.note(readOnly, L"read-only");
    auto* secret = page.put<TextBoxBase>(TextBoxBase::InitArgs(L"hunter2", boxWidth, 0, pal), x);
    secret->setObfuscatedDisplay(true);
    page.note(secret, L"obfuscated");
    auto* disabled = page.put<TextBoxBase>(TextBoxBase::InitArgs(L"Disabled", boxWidth, 0, pal), x);
    disabled->setEnabled(false);
    page.note(disabled, L"disabled");

    x = page.startRow(L"Long text");
    auto* longText =
        page.put<TextBoxBase>(TextBoxBase::InitArgs(L"/Volumes/Media/Projects/2026/Documentary/Rushes/Day 14/A014_C003.mov",
                                                    260, 0, pal),
                              x);
    longText->setCaretPos(longText->text().size());
    page.note(longText, L"scrolled to the caret at the end");
    auto* centred = page.put<TextBoxBase>(TextBoxBase::InitArgs(L"Centred", boxWidth, 0, pal), x);
    centred->setAlignment(TextAlignment(TextAlignment::HCentre, TextAlignment::VCentre));
    page.note(centred, L"centred");

    // A titled box sits on the panel itself: its legend column takes the panel's background.
    const Palette panelPal = page.panel->getPalette();
    x = page.startRow(L"Titled, numbers");
    auto* titled = page.put<TitleTextBox>(TitleTextBox::InitArgs(UIString(L"Clip name"), L"Interview 3", 170, 260, 0, panelPal), x);
    page.note(titled, L"legend and entry");
    auto* number = page.put<NumericTextBox>(NumericTextBox::InitArgs(25.5, 70, 0, pal), x);
    number->setValueRange(0.0, 100.0);
    number->setAlignment(TextAlignment(2, 1));
    page.note(number, L"decimal");
    auto* whole = page.put<NumericTextBox>(NumericTextBox::InitArgs(12, 70, 0, pal), x);
    whole->setValueRange(1, 99);
    whole->setAlignment(TextAlignment(2, 1));
    page.note(whole, L"integer");
    auto* titledOff = page.put<TitleTextBox>(TitleTextBox::InitArgs(UIString(L"Reel"), L"A014", 100, 170, 0, panelPal), x);
    titledOff->setEnabled(false);
    page.note(titledOff, L"disabled");

    x = page.startRow(L"Labels");
    TextLabel::InitArgs left(UIString(L"Left aligned"), 150, 0, panelPal);
    page.note(page.put<TextLabel>(left, x), L"left");
    TextLabel::InitArgs centre(UIString(L"Centred"), 150, 0, panelPal);
    centre.alignment = TextAlignment(TextAlignment::HCentre, TextAlignment::VCentre);
    page.note(page.put<TextLabel>(centre, x), L"centred");
    TextLabel::InitArgs right(UIString(L"Right aligned"), 150, 0, panelPal);
    right.alignment = TextAlignment(TextAlignment::Right, TextAlignment::VCentre);
    page.note(page.put<TextLabel>(right, x), L"right");
    TextLabel::InitArgs warning(UIString(L"Own colour"), 110, 0, panelPal);
    warning.colour = panelPal.warning();
    page.note(page.put<TextLabel>(warning, x), L"colour");
    auto* dim = page.put<TextLabel>(TextLabel::InitArgs(UIString(L"Disabled label"), 120, 0, panelPal), x);
    dim->setEnabled(false);
    page.note(dim, L"disabled");

    const wchar_t* paragraph = L"A wrapped label or text block breaks its text at spaces to fit its width, "
                               L"and is sized from the number of lines it takes.";
    const int lines = WordWrappingTextRenderer::calcNumDisplayLines(paragraph, UifStd::getDefaultFont(), 300.0);
    const uint16_t blockHeight = MultiLineTextBox::calcHeightForLines(lines, getDefaultFontSize(), UifStd::getWidgetGap());
    x = page.startRow(L"Wrapped text", blockHeight + 30);
    TextLabel::InitArgs wrapped(UIString(paragraph), 300, blockHeight, panelPal);
    wrapped.wordWrap = true;
    wrapped.alignment = TextAlignment(TextAlignment::Left, TextAlignment::Top);
    page.note(page.put<TextLabel>(wrapped, x), L"label with word wrap");
    auto* block = page.put<MultiLineTextBox>(MultiLineTextBox::InitArgs(paragraph, 300, blockHeight, panelPal), x);
    page.note(block, L"multi-line text box");

    const wchar_t* markup = L"<b>Export</b> writes <i>every</i> selected clip. "
                            L"<font color=\"#e0a040\">Files are replaced</font> without asking.<br>"
                            L"See <a href=\"https://example.org/export\">the export guide</a> &amp; notes.<p>"
                            L"Unknown <span>tags</span> show their text; 1 &lt; 2.";
    const HtmlDocument doc = HTMLRenderer::parse(markup, panelPal);
    const int htmlLines = HTMLRenderer::calcNumDisplayLines(doc, 420);
    const uint16_t htmlHeight = MultiLineTextBox::calcHeightForLines(htmlLines, getDefaultFontSize(), UifStd::getWidgetGap());
    x = page.startRow(L"Markup", htmlHeight + 30);
    page.note(page.put<HTMLRenderer>(HTMLRenderer::InitArgs(markup, 420, htmlHeight, panelPal), x),
              L"bold, italic, colour, link, paragraph");
    return page.panel;
}

void showLiveStates(Glob* page)
{
    if (auto* box = dynamic_cast<TextBoxBase*>(findNamed(page, "focus-box"))) {
        box->takeFocus();
        box->setSelection(0, 8);
    }
}

GalleryPageRegistrar textEntryPage("Text entry", buildTextEntryPage, showLiveStates);

} // namespace
