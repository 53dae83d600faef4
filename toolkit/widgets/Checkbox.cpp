#include "toolkit/widgets/Checkbox.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>

namespace {

int boxSize(int height)
{
    return std::clamp(height - 8, 8, 14);
}

const bool registeredByName = GlobManager::registerWidget<Checkbox>("Checkbox");

} // namespace

Checkbox::InitArgs::InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info)
{
    const SettingsReader settings(info.config);
    label = settings.text("label").value_or(label.getString());
    value = settings.boolean("value").value_or(value);
}

Checkbox::Checkbox(const InitArgs& args)
    : Glob(args), m_label(args.label), m_style(static_cast<uint8_t>(args.style & LegendRow)), m_value(args.value)
{
    const uint16_t w = args.width ? args.width : calcWidth(args.label, args.style);
    const uint16_t h = args.height ? args.height : static_cast<uint16_t>(UifStd::getButtonHeight());
    resize(w, h);
}

Checkbox::Checkbox(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height ? height : static_cast<uint16_t>(UifStd::getButtonHeight()), palette, canvas)
{
}

Checkbox::~Checkbox() = default;

LightweightString<char> Checkbox::idstring() const
{
    return "Checkbox";
}

uint16_t Checkbox::calcWidth(const UIString& label, int style)
{
    (void)style; // the same parts in either order
    const int gap = UifStd::getWidgetGap();
    const int text = UifStd::defaultFont().pixelWidth(label.getString().view());
    return static_cast<uint16_t>(std::min(65535, gap + boxSize(UifStd::getButtonHeight()) + gap + text + gap));
}

bool Checkbox::isCheckboxMsg(const LightweightString<char>& name)
{
    return name == checkedMsg || name == uncheckedMsg;
}

void Checkbox::setValue(bool value, eRedrawFlag redrawFlag)
{
    if (value == m_value)
        return;
    m_value = value;
    if (redrawFlag == Redraw)
        redraw(boxArea().expanded(1));
}

bool Checkbox::toggle()
{
    setValue(!m_value);
    GlobWatch self(this);
    publishValue(m_value, kDataChangeFinal);
    if (!self)
        return false;
    return callMsg(m_value ? checkedMsg : uncheckedMsg);
}

void Checkbox::showValue(const bool& value, DataChangeType)
{
    setValue(value);
}

void Checkbox::setString(const UIString& label)
{
    m_label = label;
    redraw();
}

void Checkbox::setLabelWidth(uint16_t width)
{
    m_labelWidth = width;
    redraw();
}

GlobBox Checkbox::boxArea() const
{
    const int gap = UifStd::getWidgetGap();
    const int size = boxSize(getHeight());
    int left = gap;
    if (m_style & LabelFirst) {
        const int text = UifStd::defaultFont().pixelWidth(m_label.getString().view());
        left = m_labelWidth ? m_labelWidth : gap + text + gap;
        left = std::min(left, std::max(0, getWidth() - size - gap));
    }
    const int bottom = (getHeight() - size) / 2;
    return GlobBox(left, bottom, left + size, bottom + size);
}

GlobBox Checkbox::labelArea() const
{
    const int gap = UifStd::getWidgetGap();
    const GlobBox box = boxArea();
    if (m_style & LabelFirst)
        return GlobBox(gap, 0, std::max(gap, box.left() - gap), getHeight());
    return GlobBox(box.right() + gap, 0, std::max<int>(box.right() + gap, getWidth() - gap), getHeight());
}

// ---------------------------------------------------------------------------------------------------------
// Input

bool Checkbox::react(const Event& event)
{
    switch (event.type) {
    case Event::MouseEnter:
    case Event::MouseLeave:
        if (*m_hover != (event.type == Event::MouseEnter)) {
            m_hover = event.type == Event::MouseEnter;
            redraw(boxArea().expanded(1));
        }
        return true;
    case Event::MouseDown:
    case Event::MouseDrag:
    case Event::MouseUp: {
        // The box and its label are one target.
        const ClickTracker::Result result = m_click->track(event, getLocalBox(), isEnabledInTree());
        if (result == ClickTracker::Clicked)
            toggle();
        return result != ClickTracker::Ignored;
    }
    case Event::FocusGained:
    case Event::FocusLost:
        redraw();
        return true;
    case Event::Key:
        if (event.key == ' ' && !event.hasAnyModifier() && isEnabledInTree()) {
            toggle();
            return true;
        }
        return false;
    default:
        return Glob::react(event);
    }
}

// ---------------------------------------------------------------------------------------------------------
// Drawing

void Checkbox::drawBackground()
{
    Pictor::Painter& p = painter();
    const Palette& pal = getPalette();
    p.fillRect(getLocalBox(), pal.window());
    const bool enabled = isEnabledInTree();
    const GlobBox box = boxArea();
    StylePainter::drawCheckBox(p, box, pal, m_value, enabled);
    if (*m_hover && enabled)
        p.strokeRect(box, pal.highlight());
    if (hasFocus())
        StylePainter::drawFocusRing(p, getLocalBox(), pal);
}

void Checkbox::drawText()
{
    const LightweightString<wchar_t> text = m_label.getString();
    if (text.empty())
        return;
    const Palette& pal = getPalette();
    const bool enabled = isEnabledInTree();
    const Colour ink = !enabled ? pal.disabledText() : (m_style & LegendLook) ? pal.subheadingText() : pal.text();
    painter().drawTextInBox(text.view(), UifStd::defaultFont(), ink, labelArea(), Pictor::TextAlign::Left,
                            Pictor::textEllipsis);
}
