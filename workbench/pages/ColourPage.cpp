// Gallery page: the hue and saturation wheel with a brightness slider and a swatch of the colour it
// publishes, and the eyedropper in its point and area styles sampling a picture on the page itself. Once
// shown, the page samples a point and an area's range, then leaves an area capture open half way, so that the
// picture shows the magnifier outlining the area.
#include "colour/ColEyeDropBase.h"
#include "colour/EyeDropperButton.h"
#include "colour/HSColourWheel.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/support/StringConversions.h"
#include "toolkit/support/ValAdaptor.h"
#include "toolkit/support/ValServer.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Slider.h"
#include "workbench/Gallery.h"
#include "workbench/GalleryWidgets.h"

#include <cstdio>
#include <string>

namespace {

constexpr int pageWidth = 700;
constexpr int pageHeight = 420;
constexpr int margin = 16;
constexpr int wheelSize = 256;
constexpr int pictureLeft = 310;
constexpr int pictureWidth = 370;
constexpr int pictureHeight = 150;

std::string formatHSV(double h, double s, double v)
{
    char text[96];
    std::snprintf(text, sizeof text, "H %.1f  S %.3f  V %.3f", h, s, v);
    return text;
}

// The swatch of the wheel's colour; it also carries the brightness slider's value to the wheel and into the
// published colour.
class WheelSwatch : public Glob, public ValObserverClient {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs(HSColourWheel* w, Cv::Ptr<ValServer<ColourData>> c, Cv::Ptr<ValServer<double>> b, const Palette& pal)
            : GlobCreationInfo(wheelSize, 44, pal), wheel(w), colour(std::move(c)), brightness(std::move(b))
        {
        }
        HSColourWheel* wheel;
        Cv::Ptr<ValServer<ColourData>> colour;
        Cv::Ptr<ValServer<double>> brightness;
    };
    explicit WheelSwatch(const InitArgs& args)
        : Glob(args), m_wheel(args.wheel), m_colour(args.colour), m_brightness(args.brightness)
    {
        m_colour->addObserver(*this);
        m_brightness->addObserver(*this);
    }
    ~WheelSwatch() override { stopObservingAll(); }
    LightweightString<char> idstring() const override { return "WheelSwatch"; }

    void handleValueChange(ValSubject& source, DataChangeType) override
    {
        if (&source == static_cast<ValSubject*>(m_brightness.get())) {
            const double v = m_brightness->getValue();
            if (Glob* wheel = m_wheel.get())
                static_cast<HSColourWheel*>(wheel)->setDisplayV(v);
            ColourData c = m_colour->getValue();
            c.value = v;
            m_colour->setValue(c);
        }
        redraw();
    }

    void drawBackground() override
    {
        Pictor::Painter& p = painter();
        const ColourData c = m_colour->getValue();
        const GlobBox box = getLocalBox();
        p.fillRect(GlobBox(0, 0, 44, box.top()), c.toColour());
        p.strokeRect(GlobBox(0, 0, 44, box.top()), getPalette().border());
        p.drawTextInBox(formatHSV(c.hue, c.saturation, c.value), UifStd::defaultFont(), getPalette().text(),
                        Pictor::PaintRect(54, 0, box.right(), box.top()));
    }

private:
    GlobWatch m_wheel;
    Cv::Ptr<ValServer<ColourData>> m_colour;
    Cv::Ptr<ValServer<double>> m_brightness;
};

// Something to sample: hues across, brightness up, and flat patches of sky and skin.
void drawSamplePicture(Pictor::Painter& p, const GlobBox& box, const Palette&)
{
    const int bandHeight = box.height() - 40;
    for (int x = 0; x < box.width(); ++x) {
        const double hue = 360.0 * x / box.width();
        p.fillVerticalGradient(Pictor::PaintRect(x, 40, x + 1, 40 + bandHeight), Colour::fromHSV({hue, 1.0, 0.25}),
                               Colour::fromHSV({hue, 0.9, 1.0}));
    }
    const Colour patches[] = {Colour::fromBytes(135, 190, 235), Colour::fromBytes(224, 172, 138),
                              Colour::fromBytes(128, 128, 128), Colour::fromBytes(30, 110, 60)};
    const int w = box.width() / 4;
    for (int i = 0; i < 4; ++i)
        p.fillRect(Pictor::PaintRect(i * w, 0, (i + 1) * w, 40), patches[i]);
}

// Shows what the eyedroppers report; it owns them, so it hears their messages.
class SampleReadout : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        explicit InitArgs(const Palette& pal) : GlobCreationInfo(pictureWidth, 64, pal) {}
    };
    explicit SampleReadout(const InitArgs& args) : Glob(args) {}
    LightweightString<char> idstring() const override { return "SampleReadout"; }

    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override
    {
        if (name == CursorCapturer::rangeMsg) {
            if (auto* capturer = dynamic_cast<CursorCapturer*>(sender)) {
                const ColEyeDropBase::ColourRange r = capturer->getSelectedRange();
                char text[160];
                std::snprintf(text, sizeof text, "Range: H %.0f-%.0f  S %.2f-%.2f  V %.2f-%.2f", r.minHue, r.maxHue,
                              r.minSaturation, r.maxSaturation, r.minValue, r.maxValue);
                m_range = text;
            }
        } else {
            double h = 0;
            double s = 0;
            double v = 0;
            ColEyeDropBase::parse(name.c_str(), h, s, v);
            m_message = name.str();
            m_colour = formatHSV(h, s, v * 255.0);
        }
        redraw();
        return true;
    }

    void drawBackground() override
    {
        Pictor::Painter& p = painter();
        p.fillRect(getLocalBox(), getPalette().entry());
        p.strokeRect(getLocalBox(), getPalette().border());
        const Pictor::Font& font = UifStd::defaultFont();
        const double line = font.lineHeight();
        const int w = getWidth();
        p.drawTextInBox(m_message.empty() ? std::string("No sample yet") : m_message, font, getPalette().text(),
                        Pictor::PaintRect(6, 64 - 4 - line, w - 6, 64 - 4), Pictor::TextAlign::Left, Pictor::textEllipsis);
        p.drawTextInBox(m_colour, font, getPalette().text(), Pictor::PaintRect(6, 64 - 4 - 2 * line, w - 6, 64 - 4 - line));
        p.drawTextInBox(m_range, font, getPalette().text(), Pictor::PaintRect(6, 4, w - 6, 4 + line));
    }

private:
    std::string m_message;
    std::string m_colour;
    std::string m_range;
};

Glob* buildColourPage()
{
    const Palette& pal = UifStd::getColourScheme();
    auto* panel = new StandardPanel(galleryPageArgs(L"Colour wheel, eyedropper and magnifier", pageWidth, pageHeight));

    auto colour = Cv::make<ValServer<ColourData>>(ColourData(200.0, 0.6, 0.9));
    auto brightness = Cv::make<ValServer<double>>(0.9);
    auto* wheel = panel->addWidget<HSColourWheel>(HSColourWheel::InitArgs(wheelSize, 0.9, 4, pal),
                                                  Glob::UserTopLeft(margin, margin));
    wheel->setDataAdaptor(makeServerAdaptor(colour));
    wheel->setDisplayV(0.9);
    wheel->setName("wheel");
    panel->addWidget<GalleryLabel>(GalleryLabel::InitArgs(L"Brightness", 80, 22, pal),
                                   Glob::UserTopLeft(margin, margin + wheelSize + 10));
    Slider::InitArgs sliderArgs(pal.highlight(), wheelSize - 90, 0, pal);
    sliderArgs.value = 0.9;
    auto* slider = panel->addWidget<Slider>(sliderArgs, Glob::UserTopLeft(margin + 90, margin + wheelSize + 10));
    slider->setDataAdaptor(makeServerAdaptor(brightness));
    panel->addWidget<WheelSwatch>(WheelSwatch::InitArgs(wheel, colour, brightness, pal),
                                  Glob::UserTopLeft(margin, margin + wheelSize + 46));

    panel->addWidget<GalleryLabel>(GalleryLabel::InitArgs(L"Sample this picture", 200, 22, pal),
                                   Glob::UserTopLeft(pictureLeft, margin - 4));
    panel->addWidget<DrawingSurface>(DrawingSurface::InitArgs(drawSamplePicture, pictureWidth, pictureHeight, pal),
                                     Glob::UserTopLeft(pictureLeft, margin + 20))
        ->setName("picture");

    auto* readout = panel->addWidget<SampleReadout>(SampleReadout::InitArgs(pal),
                                                    Glob::UserTopLeft(pictureLeft, margin + 20 + pictureHeight + 70));
    const Pictor::Image icon = EyeDropperButton::makeIcon(28, pal);
    const struct {
        const wchar_t* caption;
        const char* name;
        captureStyleType style;
        CursorCapturer::Processing mode;
    } droppers[] = {{L"Point", "dropper-point", capturePoint, CursorCapturer::ProcessAverage},
                    {L"Area", "dropper-area", captureArea, CursorCapturer::ProcessAverage},
                    {L"Range", "dropper-range", captureArea, CursorCapturer::ProcessRange}};
    int x = pictureLeft;
    for (const auto& d : droppers) {
        auto* button = panel->addWidget<EyeDropperButton>(ImageButton::InitArgs(icon, 40, 40, pal),
                                                          Glob::UserTopLeft(x, margin + 20 + pictureHeight + 14));
        button->setDropperStyle(d.style);
        button->setProcessingMode(d.mode);
        button->setOwner(readout);
        button->setName(d.name);
        button->setContextString(UIString(L"Eyedropper"), UIString(d.caption));
        panel->addWidget<GalleryLabel>(GalleryLabel::InitArgs(d.caption, 70, 22, pal),
                                       Glob::UserTopLeft(x + 46, margin + 20 + pictureHeight + 23));
        x += 120;
    }
    return panel;
}

// Clicks at a point of a widget (bottom-up, its own coordinates) through the screen, as the user would.
void clickAt(Screen& screen, XY<int> at)
{
    screen.mouseMove(at);
    screen.mouseButton(at, Event::LeftButton, true);
    screen.mouseButton(at, Event::LeftButton, false);
}

void sampleOnShow(Glob* panel)
{
    Screen* screen = Screen::current();
    Glob* picture = findNamed(panel, "picture");
    if (!screen || !picture)
        return;
    screen->flush();
    const XY<int> origin = picture->getScreenPos();
    // A point in the sky patch.
    clickAt(*screen, findNamed(panel, "dropper-point")->getScreenBox().centre());
    clickAt(*screen, origin + XY<int>(40, 20));
    // The range of a stretch of the hue band.
    clickAt(*screen, findNamed(panel, "dropper-range")->getScreenBox().centre());
    screen->mouseMove(origin + XY<int>(60, 60));
    screen->mouseButton(origin + XY<int>(60, 60), Event::LeftButton, true);
    screen->mouseMove(origin + XY<int>(120, 120));
    screen->mouseButton(origin + XY<int>(120, 120), Event::LeftButton, false);
    // An area capture left open across the corner of the skin patch, the magnifier outlining it.
    clickAt(*screen, findNamed(panel, "dropper-area")->getScreenBox().centre());
    screen->mouseMove(origin + XY<int>(179, 35));
    screen->mouseButton(origin + XY<int>(179, 35), Event::LeftButton, true);
    screen->mouseMove(origin + XY<int>(184, 40));
    screen->mouseMove(origin + XY<int>(186, 42));
}

GalleryPageRegistrar page("Colour", [] { return buildColourPage(); }, sampleOnShow);

} // namespace
