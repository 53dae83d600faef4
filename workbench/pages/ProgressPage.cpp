// Gallery page: the progress indicators. A ProgInd showing its time remaining part-way through a task, one
// with the default title and a bar colour of its own, and a render progress panel showing the frame it has
// just rendered, scaled into its picture.
#include "logging/ProgInd.h"
#include "logging/RenderProgressPanel.h"
#include "toolkit/gfx/Image.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/support/Clock.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

namespace {

constexpr int pageWidth = 900;
constexpr int pageHeight = 380;
constexpr int margin = 16;

// A stand-in for a rendered frame: colour bars over a dark sky with a sun, larger than the panel shows it.
Pictor::Image makeFrame()
{
    Pictor::Image frame(960, 540);
    Pictor::Painter p(frame);
    p.fillRect(Pictor::PaintRect(0, 0, 960, 540), Colour(0.08, 0.12, 0.25));
    const Colour bars[] = { Colour(0.75, 0.75, 0.75), Colour(0.75, 0.75, 0), Colour(0, 0.75, 0.75), Colour(0, 0.75, 0),
                            Colour(0.75, 0, 0.75), Colour(0.75, 0, 0), Colour(0, 0, 0.75) };
    for (int i = 0; i < 7; ++i)
        p.fillRect(Pictor::PaintRect::fromSize(i * 960.0 / 7, 0, 960.0 / 7 + 1, 200), bars[i]);
    p.fillRect(Pictor::PaintRect::fromSize(620, 330, 120, 120), Colour(1.0, 0.8, 0.3));
    return frame;
}

Glob* buildProgressPage()
{
    auto* page = new StandardPanel(galleryPageArgs(L"Progress indicators", pageWidth, pageHeight));
    Cv::TestClock clock;

    auto* exporting = new ProgInd(UIString(L"Exporting Interview cut"));
    page->addChild(exporting, Glob::UserTopLeft(margin, margin + 24));
    addLabel(page, L"ProgInd with the time remaining, 40 % after 1 min", margin, margin, 400);
    exporting->showTimeRemaining(true);
    clock.advance(60000);
    exporting->update_progress(L"Frame 1042 of 2600", 0.4);

    auto* waiting = new ProgInd(UIString());
    page->addChild(waiting, Glob::UserTopLeft(margin, margin + 150));
    addLabel(page, L"Default title, a bar colour of its own", margin, margin + 126, 400);
    clock.advance(100);
    waiting->update_progress(L"Copying media", 0.7, Colour(0.2, 0.65, 0.35));

    auto* render = new RenderProgressPanel(static_cast<uint16_t>(14 * UifStd::getButtonHeight()), 16.0 / 9.0,
                                           UifStd::getColourScheme().window(3));
    page->addChild(render, Glob::UserTopLeft(460, margin + 24));
    addLabel(page, L"RenderProgressPanel: the frame scaled to fit", 460, margin, 400);
    RenderProgressPanel::ProgressSnapshot snapshot;
    snapshot.fraction = 0.6;
    snapshot.text = L"Rendering";
    snapshot.image = makeFrame();
    clock.advance(90000);
    render->handleProgressUpdate(snapshot);
    return page;
}

GalleryPageRegistrar progressPage("Progress", buildProgressPage);

} // namespace
