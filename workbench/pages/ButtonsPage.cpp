// Gallery page: buttons, image buttons, check boxes, radio sets, sliders, scroll bars, gauges, a titled widget
// and a status message, each in the states a user meets: normal, hover, pressed, disabled, focused, and the
// family's own (latched, checked, selected, point of interest, paging position, full and empty bars).
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/Gauge.h"
#include "toolkit/widgets/ImageButton.h"
#include "toolkit/widgets/RadioSet.h"
#include "toolkit/widgets/ScrollBar.h"
#include "toolkit/widgets/Slider.h"
#include "toolkit/widgets/StatusMessage.h"
#include "toolkit/widgets/TitledGlob.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <array>

namespace {

constexpr int pageWidth = 980;
constexpr int pageHeight = 660;
constexpr int margin = 16;
constexpr int captionWidth = 130;
constexpr int rowHeight = 54;

// A small picture for the image buttons: a play triangle on a soft disc, drawn rather than loaded so the page
// needs no files.
Pictor::Image makeIcon(const Palette& pal)
{
    Pictor::Image image(32, 32);
    Pictor::Painter p(image);
    Pictor::EllipseDescription disc;
    disc.centre = {16, 16};
    disc.radii = {15, 15};
    disc.fill = pal.highlight();
    p.drawEllipse(disc);
    const std::array<XY<double>, 3> play = {XY<double>(12, 8), XY<double>(12, 24), XY<double>(25, 16)};
    p.fillPolygon(play, pal.highlightText());
    return image;
}

struct Page {
    StandardPanel* panel = nullptr;
    int row = 0;

    // A caption at the left of the next row; answers the x where the row's widgets start.
    int startRow(const wchar_t* caption)
    {
        top = margin + row * rowHeight;
        panel->addWidget<GalleryLabel>(GalleryLabel::InitArgs(caption, captionWidth, 22, panel->getPalette()),
                                       Glob::UserTopLeft(margin, top));
        ++row;
        return margin + captionWidth;
    }
    int rowTop() const { return top; }
    int top = margin;
    template <typename T>
    T* put(const typename T::InitArgs& args, int& x, int yOffset = 0)
    {
        T* made = panel->addWidget<T>(args, Glob::UserTopLeft(x, rowTop() + yOffset));
        x += made->getWidth() + margin;
        return made;
    }
};

Glob* buildButtonsPage()
{
    const Palette& pal = UifStd::getColourScheme();
    StandardPanel::InitArgs pageArgs =
        galleryPageArgs(L"Buttons, check boxes, radio sets, sliders, scroll bars and gauges", pageWidth, pageHeight);
    Page page{new StandardPanel(pageArgs)};

    // Buttons.
    int x = page.startRow(L"Button");
    page.put<Button>(Button::InitArgs(L"Normal", 0, 0, pal), x);
    page.put<Button>(Button::InitArgs(L"Hover", 0, 0, pal), x)->setName("hover-button");
    page.put<Button>(Button::InitArgs(L"Pressed", 0, 0, pal), x)->setDown(true);
    page.put<Button>(Button::InitArgs(L"Disabled", 0, 0, pal), x)->setEnabled(false);
    page.put<Button>(Button::InitArgs(L"Focused", 0, 0, pal), x)->setName("focus-button");
    Button* own = page.put<Button>(Button::InitArgs(L"Down colours", 0, 0, pal), x);
    own->setDownCols(pal.warning(), pal.highlightText());
    own->setDown(true);
    x = page.startRow(L"");
    Button::InitArgs latching(L"Latching (down)", 0, 0, pal);
    latching.latching = true;
    page.put<Button>(latching, x)->setDown(true);
    page.put<Button>(Button::InitArgs(L"A label far too long for its button", 120, 0, pal), x);
    Button* autoSized = page.put<Button>(Button::InitArgs(L"x", 0, 0, pal), x);
    autoSized->setStringAuto(UIString(L"setStringAuto fits this label"));

    // Image buttons.
    x = page.startRow(L"ImageButton");
    const Pictor::Image icon = makeIcon(pal);
    page.put<ImageButton>(ImageButton::InitArgs(icon, 0, 0, pal), x);
    page.put<ImageButton>(ImageButton::InitArgs(icon, 44, 44, pal), x);
    page.put<ImageButton>(ImageButton::InitArgs(icon, 44, 44, pal), x)->setDown(true);
    page.put<ImageButton>(ImageButton::InitArgs(icon, 44, 44, pal), x)->setEnabled(false);
    ImageButton::InitArgs labelled(icon, 80, 50, pal);
    labelled.label = UIString(L"Play");
    page.put<ImageButton>(labelled, x);

    // Check boxes.
    x = page.startRow(L"Checkbox");
    page.put<Checkbox>(Checkbox::InitArgs(L"Off", false, Checkbox::BoxFirst, 0, 0, pal), x);
    page.put<Checkbox>(Checkbox::InitArgs(L"On", true, Checkbox::BoxFirst, 0, 0, pal), x);
    page.put<Checkbox>(Checkbox::InitArgs(L"Hover", false, Checkbox::BoxFirst, 0, 0, pal), x)->setName("hover-box");
    page.put<Checkbox>(Checkbox::InitArgs(L"Disabled on", true, Checkbox::BoxFirst, 0, 0, pal), x)->setEnabled(false);
    page.put<Checkbox>(Checkbox::InitArgs(L"Disabled off", false, Checkbox::BoxFirst, 0, 0, pal), x)->setEnabled(false);
    page.put<Checkbox>(Checkbox::InitArgs(L"Legend row (style 3)", true, Checkbox::LegendRow, 220, 0, pal), x);

    // Radio sets: a column and a row, one button disabled.
    x = page.startRow(L"RadioSet");
    page.put<RadioSet>(RadioSet::InitArgs({L"Draft", L"Good", L"Best"}, 1, true, 0, pal), x);
    RadioSet* row = page.put<RadioSet>(RadioSet::InitArgs({L"Left", L"Centre", L"Right"}, 2, true, 0, pal), x);
    row->getWidget(size_t{0})->setEnabled(false);
    page.put<RadioSet>(RadioSet::InitArgs({L"Nothing chosen", L"Yet"}, -1, true, 0, pal), x);

    // Sliders.
    x = page.startRow(L"Slider");
    Slider* plain = page.put<Slider>(Slider::InitArgs(pal.subheadingText(), 160, 0, pal), x);
    plain->setPosition(0.3);
    plain->setPointOfInterest(0.5);
    Slider* hovered = page.put<Slider>(Slider::InitArgs(pal.highlight(), 160, 0, pal), x);
    hovered->setPosition(0.75);
    hovered->setName("hover-slider");
    Slider* off = page.put<Slider>(Slider::InitArgs(pal.highlight(), 160, 0, pal), x);
    off->setPosition(0.6);
    off->setPointOfInterest(0.2);
    off->setEnabled(false);
    using TitledSlider = TitledGlob<Slider>;
    TitledSlider* titled =
        page.put<TitledSlider>(TitledSlider::InitArgs(UIString(L"Opacity"), Slider::InitArgs(pal.highlight(), 150), 70), x);
    titled->widget()->setPosition(1.0);

    // Scroll bars and gauges share a taller row.
    x = page.startRow(L"ScrollBar, Gauge");
    page.row += 1; // the bars are two rows tall
    for (const auto& [pos, sizeFraction] : std::array<std::pair<double, double>, 3>{{{0.0, 0.3}, {0.45, 0.1}, {0.0, 1.0}}}) {
        ScrollBar::InitArgs bar(100, 0, pal);
        bar.thumbSize = sizeFraction;
        bar.thumbPos = pos;
        page.put<ScrollBar>(bar, x);
    }
    ScrollBar::InitArgs disabledBar(100, 0, pal);
    disabledBar.thumbSize = 0.5;
    page.put<ScrollBar>(disabledBar, x)->setEnabled(false);
    int gx = x;
    Gauge* empty = page.put<Gauge>(Gauge::InitArgs(260, 22, pal), gx);
    empty->setString(UIString(L"Waiting"));
    gx = x;
    Gauge* half = page.put<Gauge>(Gauge::InitArgs(260, 22, pal), gx, 32);
    half->setMeasure(0.4);
    half->setString(UIString(L"Rendering 40%  (00:01:20)"));
    gx = x;
    Gauge* full = page.put<Gauge>(Gauge::InitArgs(260, 22, pal), gx, 64);
    full->setCols(pal.warning(), pal.window(1));
    full->setMeasure(1.0);
    full->setString(UIString(L"Done: custom bar colour"));

    // A status message, kept until clicked so that it stays in the picture.
    x = page.startRow(L"StatusMessage");
    StatusMessage* message = page.put<StatusMessage>(
        StatusMessage::InitArgs(UIString(L"Saved 3 files. Click to dismiss; otherwise it goes after a few seconds."),
                                300, 0.0, pal),
        x);
    message->addMessage(UIString(L"addMessage appends a paragraph and restarts the time."));
    // A message grows upward from its bottom edge; on this page it should hang from its row instead.
    page.panel->layoutChildren();
    return page.panel;
}

void showLiveStates(Glob* page)
{
    Event enter;
    enter.type = Event::MouseEnter;
    for (const char* name : {"hover-button", "hover-box", "hover-slider"})
        if (Glob* g = findNamed(page, name))
            g->react(enter);
    if (Glob* g = findNamed(page, "focus-button"))
        g->takeFocus();
}

GalleryPageRegistrar buttonsPage("Buttons", buildButtonsPage, showLiveStates);

} // namespace
