#include "formats/FrameRateButton.h"

#include "toolkit/ui/UifStd.h"

namespace {

TitleMenuButton::InitArgs titledArgs(const FrameRateButton::InitArgs& args)
{
    TitleMenuButton::InitArgs titled(UIString(ResId(FrameRateButton::titleResource)), args.strings, args.titleWidth,
        args.width, static_cast<uint16_t>(UifStd::getButtonHeight()), args.palette, args.canvas);
    titled.name = args.name;
    return titled;
}

} // namespace

FrameRateButton::InitArgs::InitArgs(const std::vector<Cv::FrameRate>& rates, uint16_t titleWidth_, uint16_t width_)
    : GlobCreationInfo(width_, static_cast<uint16_t>(UifStd::getButtonHeight()))
    , titleWidth(titleWidth_)
{
    for (Cv::FrameRate rate : rates)
        strings.emplace_back(Cv::getDisplayString(rate));
}

FrameRateButton::FrameRateButton(const InitArgs& args)
    : TitleMenuButton(titledArgs(args))
{
}

FrameRateButton::FrameRateButton(const std::vector<Cv::FrameRate>& rates, uint16_t w, uint16_t h,
    const Palette& palette, Canvas* canvas)
    : TitleMenuButton(UIString(ResId(titleResource)), {}, palette, w, h,
        static_cast<uint16_t>(UifStd::getButtonHeight()), canvas, true)
{
    init(rates);
}

FrameRateButton::FrameRateButton(uint16_t w, uint16_t h, const Palette& palette, Canvas* canvas)
    : FrameRateButton(Cv::getFrameRates(Cv::FrameRateGroup::ProjectRates), w, h, palette, canvas)
{
}

LightweightString<char> FrameRateButton::idstring() const { return "FrameRateButton"; }

void FrameRateButton::init(const std::vector<Cv::FrameRate>& rates)
{
    std::vector<UIString> labels;
    labels.reserve(rates.size());
    for (Cv::FrameRate rate : rates)
        labels.emplace_back(Cv::getDisplayString(rate));
    getBtn()->setStrings(labels, MenuItemIndex(0));
}

void FrameRateButton::setFrameRate(Cv::FrameRate rate) { setSelectedItem(MenuItemIndex(Cv::getDisplayString(rate))); }

Cv::FrameRate FrameRateButton::getSelectedFrameRate() const
{
    return Cv::getFrameRateFromDisplayString(getSelectedItemNameW());
}
