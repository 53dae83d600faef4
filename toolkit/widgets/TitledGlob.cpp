#include "toolkit/widgets/TitledGlob.h"

#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/Gauge.h"
#include "toolkit/widgets/Slider.h"

namespace TitledGlobDetail {

uint16_t calcTitleWidth(const UIString& title)
{
    const int w = UifStd::defaultFont().pixelWidth(title.getString().view()) + UifStd::getWidgetGap();
    return static_cast<uint16_t>(std::clamp(w, 0, 65535));
}

void drawTitle(Pictor::Painter& painter, const UIString& title, const GlobBox& column, const Palette& palette,
               bool enabled)
{
    const LightweightString<wchar_t> text = title.getString();
    if (text.empty() || column.width() <= 0)
        return;
    // Legends read less often than the values beside them, so they take the quieter colour.
    const Colour ink = enabled ? palette.subheadingText() : palette.disabledText();
    painter.drawTextInBox(text.view(), UifStd::defaultFont(), ink, column, Pictor::TextAlign::Left,
                          Pictor::textEllipsis);
}

} // namespace TitledGlobDetail

namespace {

const bool registeredByName = [] {
    registerTitledType<Button>("Button");
    registerTitledType<Slider>("Slider");
    registerTitledType<Gauge>("Gauge");
    return true;
}();

} // namespace
