#include "parampanels/detail/HostPanel.h"

#include "toolkit/gfx/FontDesc.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/NumericTextBox.h"
#include "toolkit/widgets/Slider.h"

HostPanel::HostPanel(const InitArgs& args)
    : Glob(args)
{
    const int buttonHeight = UifStd::getButtonHeight();
    const uint16_t sliderPart = sliderPartWidth(args.width);
    const auto trackWidth = static_cast<uint16_t>(sliderPart - args.legendWidth);
    const Slider::InitArgs track(args.sliderColour, trackWidth, static_cast<uint16_t>(buttonHeight), args.palette,
                                 args.canvas);
    TitledGlob<Slider>::InitArgs titled(args.legend, track, args.legendWidth);
    titled.width = sliderPart;
    titled.height = static_cast<uint16_t>(buttonHeight);
    m_slider = addWidget<TitledGlob<Slider>>(titled, UserTopLeft(0, 0));

    const NumericTextBox::InitArgs box(0.0, static_cast<uint16_t>(2 * buttonHeight),
                                       static_cast<uint16_t>(getDefaultFontSize()), makeChildPalette(args.palette),
                                       args.canvas);
    // Flush with the row's right edge, so that the box ends where text entries and check boxes end.
    m_numberBox = addWidget<NumericTextBox>(box, RightCentre(0, 0));
}

HostPanel::~HostPanel() = default;

LightweightString<char> HostPanel::idstring() const
{
    return "HostPanel";
}

Slider* HostPanel::getSlider() const
{
    return m_slider->widget();
}

uint16_t HostPanel::sliderPartWidth(uint16_t rowWidth)
{
    return static_cast<uint16_t>(rowWidth - 2 * UifStd::getButtonHeight() - UifStd::getWidgetGap());
}
