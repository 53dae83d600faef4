#include "toolkit/widgets/TitleButton.h"

#include <algorithm>

namespace {

TitledGlob<Button>::InitArgs titledArgs(UIString title, UIString label, uint16_t titleWidth, uint16_t width,
                                        uint16_t height, const Palette& palette, Canvas* canvas)
{
    const uint16_t column = titleWidth ? titleWidth : TitledGlobDetail::calcTitleWidth(title);
    const uint16_t buttonWidth = width > column ? static_cast<uint16_t>(width - column) : 0;
    TitledGlob<Button>::InitArgs args(std::move(title),
                                      Button::InitArgs(std::move(label), buttonWidth, height, palette, canvas), column);
    args.width = width;
    args.height = height;
    return args;
}

} // namespace

TitleButton::TitleButton(UIString title, UIString label, uint16_t titleWidth, uint16_t width, uint16_t height,
                         const Palette& palette, Canvas* canvas)
    : TitledGlob<Button>(titledArgs(std::move(title), std::move(label), titleWidth, width, height, palette, canvas))
{
}

LightweightString<char> TitleButton::idstring() const
{
    return "TitleButton";
}
