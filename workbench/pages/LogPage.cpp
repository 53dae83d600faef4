// Gallery page: the log panel. Lines of every kind (a status line after other lines, so with its gap above
// it, and a heading without one), a line long enough to wrap, the three kinds of link (one opening a web
// page, one revealing a movie file, one opening a panel of the editor), and the progress gauge part-way
// through a task with its time remaining.
#include "logging/Logger.h"
#include "toolkit/support/Clock.h"
#include "toolkit/ui/StandardPanel.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

namespace {

constexpr int pageWidth = 640;
constexpr int pageHeight = 560;
constexpr int margin = 16;

using Kind = LoggerBase::eOutputType;

Glob* buildLogPage()
{
    auto* page = new StandardPanel(galleryPageArgs(L"Log panel", pageWidth, pageHeight));

    Logger::InitArgs args(20, static_cast<uint16_t>(pageWidth - 2 * margin), Logger::ShowGauge | Logger::WindowColumn);
    args.title = UIString(L"Export: Interview cut");
    args.buttons = { Button::InitArgs(UIString(L"Stop")), Button::InitArgs(UIString(L"Save log")) };
    auto* log = page->addWidget<Logger>(args, Glob::UserTopLeft(margin, margin));
    log->resize(args.logWidth, pageHeight - 2 * margin);
    page->layoutChildren();

    log->write(L"Heading: the export starts", Kind::Heading);
    log->write(L"Reading 214 clips from the bin \"Interview\"");
    log->write(L"Preparing audio mixdown", Kind::StatusLine);
    log->write(L"Clip A012_C004 has no timecode track; using 00:00:00:00", Kind::Warning);
    log->write(L"Emphasis: colour management is on for this export", Kind::Emphasis);
    log->write(L"Clip B003 could not be opened: the file is missing", Kind::Error);
    log->write(L"Audio mixdown finished without clipping", Kind::Success);
    log->write(L"This line is not part of the saved web page", Kind::Unexported);
    log->write(L"A long line wraps onto several rows of the table when it is wider than the panel: the reel "
               L"name, the source timecode range and the full path of the media are all kept so that nothing "
               L"is lost when the log is saved.");
    log->write(LoggerBase::HyperLink({ L"www.example.com/export-notes.html" }, L"Open the export notes in the web browser"));
    log->write(LoggerBase::HyperLink({ L"/media/exports/Interview cut.mov" }, L"Show the exported movie in the file browser"));
    log->write(LoggerBase::HyperLink({ L"{\"type\":\"StandardPanel\",\"params\":{\"title\":\"Export settings\"}}" },
                                     L"Open the export settings", true));
    log->write(L"Rendering video", Kind::StatusLineNoWrap);
    log->write(L"Kinds above the known ones show as ordinary lines", static_cast<Kind>(12));

    // A task 35 % done after 42 s of work: the gauge shows the time it expects is left.
    Cv::TestClock clock;
    log->progress(0.0);
    clock.advance(42000);
    log->progress(0.35);
    return page;
}

GalleryPageRegistrar logPage("Log", buildLogPage);

} // namespace
