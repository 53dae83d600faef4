#include "toolkit/widgets/TitledMenuButtonPlain.h"

#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/TitledGlob.h"

#include <algorithm>
#include <cmath>

TitledMenuButtonPlain::TitledMenuButtonPlain(UIString title, std::vector<UIString> items, double titleShare,
                                             uint16_t width, uint16_t height, const Palette& palette,
                                             Canvas* canvas)
    : TitleMenuButton(InitArgs(std::move(title), std::move(items), titleWidthFor(titleShare, width), width, height,
                               palette, canvas))
{
}

LightweightString<char> TitledMenuButtonPlain::idstring() const
{
    return "TitledMenuButtonPlain";
}

uint16_t TitledMenuButtonPlain::titleWidthFor(double titleShare, uint16_t width)
{
    // NaN falls to 0 too: a title column that cannot be computed gives the button the whole row.
    const double share = titleShare > 0.0 ? std::min(titleShare, 1.0) : 0.0;
    // TitleMenuButton reads a title width of 0 as "fit the title"; one pixel keeps "no title column".
    return static_cast<uint16_t>(std::max(1.0, std::floor(share * width)));
}

void TitledMenuButtonPlain::drawText()
{
    const GlobBox column(0, 0, std::max(0, getTitleWidth() - UifStd::getWidgetGap()), getHeight());
    TitledGlobDetail::drawTitle(painter(), getTitle(), column, getPalette(), isEnabledInTree());
}
