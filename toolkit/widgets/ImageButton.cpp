#include "toolkit/widgets/ImageButton.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <cmath>

namespace {

// A faded picture reads as unavailable without a second image to keep.
constexpr double disabledOpacity = 0.35;

Button::InitArgs squareByDefault(const ImageButton::InitArgs& args)
{
    Button::InitArgs fixed = args;
    const auto side = static_cast<uint16_t>(UifStd::getButtonHeight());
    if (fixed.width == 0)
        fixed.width = fixed.label.empty() ? side : Button::calcWidth(fixed.label);
    if (fixed.height == 0)
        fixed.height = side;
    return fixed;
}

const bool registeredByName = GlobManager::registerWidget<ImageButton>("ImageButton");

} // namespace

ImageButton::ImageButton(const InitArgs& args) : Button(squareByDefault(args)), m_image(args.image) {}

ImageButton::ImageButton(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Button(width, height, palette, canvas)
{
}

ImageButton::~ImageButton() = default;

LightweightString<char> ImageButton::idstring() const
{
    return "ImageButton";
}

void ImageButton::setImage(const Pictor::Image& image)
{
    m_image = image;
    redraw();
}

GlobBox ImageButton::imageArea() const
{
    if (m_image.isNull())
        return {};
    GlobBox room = contentBox().expanded(-1);
    if (!getString().empty())
        room.removeFromBottom(static_cast<int>(std::ceil(UifStd::defaultFont().lineHeight())));
    if (room.empty())
        return {};
    // Fit inside the room, proportions kept, never enlarged past twice the picture's own size so that
    // small icons stay crisp.
    const double scale = std::min({static_cast<double>(room.width()) / m_image.width(),
                                   static_cast<double>(room.height()) / m_image.height(), 2.0});
    const int w = std::max(1, static_cast<int>(std::lround(m_image.width() * scale)));
    const int h = std::max(1, static_cast<int>(std::lround(m_image.height() * scale)));
    const XY<int> c = room.centre();
    return GlobBox::fromOriginAndSize({c.x - w / 2, c.y - h / 2}, {w, h});
}

void ImageButton::drawText()
{
    const GlobBox area = imageArea();
    if (!area.empty())
        painter().drawImage(m_image, area, Pictor::ImageQuality::Best, isEnabledInTree() ? 1.0 : disabledOpacity);
    const LightweightString<wchar_t> text = getString().getString();
    if (text.empty())
        return;
    GlobBox box = contentBox();
    const GlobBox line = box.removeFromBottom(static_cast<int>(std::ceil(UifStd::defaultFont().lineHeight())));
    painter().drawTextInBox(text.view(), UifStd::defaultFont(), getTextCol(), line, Pictor::TextAlign::Centre,
                            Pictor::textEllipsis);
}
