#include "lists/ScrollListItemWidget.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/UifStd.h"

// A list holds one of these per line: it may add no more than its look bits to a Button.
static_assert(sizeof(ScrollListItemWidget) <= sizeof(Button) + 8, "a list line must stay as small as a button");

ScrollListItemWidget::ScrollListItemWidget(const InitArgs& args)
    : Button(args)
{
    setLook(ButtonLookBit, args.appearance == SLItemButton);
    setWantsFocus(false); // the list takes the keyboard, not its lines
}

ScrollListItemWidget::ScrollListItemWidget(const LightweightString<wchar_t>& text, const Palette& palette,
    SLItemAppearance appearance, uint16_t width, uint16_t height, Canvas* canvas)
    : ScrollListItemWidget(InitArgs(text, palette, appearance, width, height, canvas))
{
}

LightweightString<char> ScrollListItemWidget::idstring() const
{
    return "ScrollListItemWidget";
}

void ScrollListItemWidget::setWarn(bool warn)
{
    if (warn == isWarn())
        return;
    setLook(WarnBit, warn);
    redraw();
}

void ScrollListItemWidget::setBold(bool bold)
{
    setLook(BoldBit, bold);
}

void ScrollListItemWidget::setAlignment(TextAlignment::Horizontal horizontal)
{
    m_look = static_cast<uint8_t>((m_look & ~(3u << AlignShift)) | ((unsigned(horizontal) & 3u) << AlignShift));
}

bool ScrollListItemWidget::reportPress(const Event& press)
{
    Glob* target = owner();
    if (!target)
        return true;
    Event report = Event::makeMessage(listItemMsg, this);
    report.modifiers = press.modifiers;
    GlobWatch self(this);
    target->react(report);
    return self.alive();
}

bool ScrollListItemWidget::react(const Event& event)
{
    if (event.isPress(Event::LeftButton)) {
        if (!isSelectable())
            return false;
        reportPress(event);
        return true;
    }
    // The press was the line's; its release and drags are too, so the button never activates itself.
    if (event.type == Event::MouseUp && event.button == Event::LeftButton)
        return true;
    if (event.type == Event::MouseDrag)
        return true;
    if (event.type == Event::MouseDown)
        return false;
    return Button::react(event);
}

void ScrollListItemWidget::drawBackground()
{
    Pictor::Painter& p = painter();
    const GlobBox box = getLocalBox();
    if (getAppearance() == SLItemButton && !isDown()) {
        Button::drawBackground();
        return;
    }
    p.fillRect(box, isDown() ? getBackCol() : getPalette().window());
}

void ScrollListItemWidget::drawText()
{
    const LightweightString<wchar_t> text = getText();
    if (text.empty())
        return;
    const Palette& pal = getPalette();
    Colour ink = getTextCol();
    if (isWarn() && !isDown())
        ink = pal.warning();
    const auto horizontal = static_cast<TextAlignment::Horizontal>((m_look >> AlignShift) & 3u);
    const GlobBox box = getLocalBox();
    const Pictor::Font* font = &UifStd::defaultFont();
    Cv::Ptr<Pictor::Font> boldFont;
    if (hasLook(BoldBit)) {
        boldFont = Pictor::loadFont(UifStd::getDefaultFont().withStyle(Pictor::fontStyleBold));
        font = boldFont.get();
    }
    painter().drawTextInBox(text.view(), *font, ink,
        Pictor::PaintRect(box.left() + textInset, box.bottom(), box.right() - textInset, box.top()),
        TextAlignment::toPainter(horizontal), Pictor::textEllipsis);
}
