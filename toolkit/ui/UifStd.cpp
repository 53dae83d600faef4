#include "toolkit/ui/UifStd.h"

#include "toolkit/gfx/Font.h"

int UifStd::getButtonHeight()
{
    return 22;
}

int UifStd::getRowGap()
{
    return 4;
}

int UifStd::getWidgetGap()
{
    return 6;
}

int UifStd::getIndentWidth()
{
    return 12;
}

int UifStd::getBorder()
{
    return 3;
}

int UifStd::getScrollBarWidth()
{
    return 14;
}

Pictor::FontDesc UifStd::getTitleFont()
{
    return Pictor::getTitleFontDesc();
}

Pictor::FontDesc UifStd::getDefaultFont()
{
    return Pictor::FontDesc(getDefaultFontName(), getDefaultFontSize());
}

const Pictor::Font& UifStd::titleFont()
{
    static const Cv::Ptr<Pictor::Font> font = Pictor::loadFont(getTitleFont());
    return *font;
}

const Pictor::Font& UifStd::defaultFont()
{
    static const Cv::Ptr<Pictor::Font> font = Pictor::loadFont(getDefaultFont());
    return *font;
}

const Palette& UifStd::getColourScheme()
{
    static const Palette scheme;
    return scheme;
}

Colour UifStd::getScreenBackground()
{
    return Colour::fromBytes(22, 23, 26);
}

namespace {

WindowArrangement& currentArrangement()
{
    static WindowArrangement arrangement;
    return arrangement;
}

} // namespace

const WindowArrangement& UifStd::getWindowArrangement()
{
    return currentArrangement();
}

void UifStd::setWindowArrangement(const WindowArrangement& arrangement)
{
    currentArrangement() = arrangement;
}
