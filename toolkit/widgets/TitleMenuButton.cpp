#include "toolkit/widgets/TitleMenuButton.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Font.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>

namespace {

int titleTextWidth(const UIString& title)
{
    const LightweightString<wchar_t> text = title.getString();
    return text.empty() ? 0 : UifStd::defaultFont().pixelWidth(text.view()) + UifStd::getWidgetGap();
}

const bool registeredByName = GlobManager::registerWidget<TitleMenuButton>("TitleMenuButton");

} // namespace

TitleMenuButton::InitArgs::InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info)
{
    const SettingsReader settings(info.config);
    title = settings.text("title").value_or(title.getString());
    for (const auto& label : settings.list("items").value_or(SettingsReader::List()))
        items.emplace_back(label);
}

TitleMenuButton::TitleMenuButton(const InitArgs& args)
    : Glob(args), m_look{args.title, args.titleWidth}
{
    const std::vector<MenuItem> items = MenuItem::fromLabels(args.items);
    layOut(items, args.width, args.height);
    build(items, MenuItemIndex(0));
}

TitleMenuButton::TitleMenuButton(UIString title, std::vector<UIString> items, const Palette& palette, uint16_t width,
                                 uint16_t height, uint16_t buttonHeight, Canvas* canvas, bool showSelected)
    : Glob(width, height, palette, canvas), m_look{std::move(title), 0, buttonHeight}
{
    const std::vector<MenuItem> menuItems = MenuItem::fromLabels(items);
    layOut(menuItems, width, height);
    build(menuItems, MenuItemIndex(0));
    m_button->useSelectedForButtonDisplay(showSelected);
}

void TitleMenuButton::layOut(const std::vector<MenuItem>& items, uint16_t width, uint16_t height)
{
    if (m_look.titleWidth == 0)
        m_look.titleWidth = static_cast<uint16_t>(std::min(titleTextWidth(m_look.title), 65535));
    const int h = height ? height : std::max<int>(m_look.buttonHeight, UifStd::getButtonHeight());
    const int w = width ? width : m_look.titleWidth + DropDownMenuButton::calcWidth(items, UifStd::getDefaultFont());
    resize(w, h);
}

TitleMenuButton::TitleMenuButton(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, static_cast<uint16_t>(height ? height : UifStd::getButtonHeight()), palette, canvas)
{
    build({}, MenuItemIndex(0));
}

// A copy is a new widget: it gets a drop-down of its own, a copy of the original's.
TitleMenuButton::TitleMenuButton(const TitleMenuButton& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), Glob(other),
      TabOrderableHost(other), ValWidget<int>(other), m_look(other.m_look)
{
    adopt(new DropDownMenuButton(*other.m_button));
}

TitleMenuButton& TitleMenuButton::operator=(const TitleMenuButton& other)
{
    if (this != &other) {
        Glob::operator=(other);
        m_look = other.m_look;
        *m_button = *other.m_button;
        reshape();
    }
    return *this;
}

TitleMenuButton::~TitleMenuButton() = default;

LightweightString<char> TitleMenuButton::idstring() const
{
    return "TitleMenuButton";
}

void TitleMenuButton::build(const std::vector<MenuItem>& items, MenuItemIndex selection)
{
    adopt(new DropDownMenuButton(DropDownMenuButton::InitArgs(items, std::move(selection), 1, 1, getPalette())));
}

void TitleMenuButton::adopt(DropDownMenuButton* button)
{
    m_button = button;
    addChild(button, Glob::BottomLeft(0, 0));
    reshape();
}

void TitleMenuButton::reshape()
{
    if (m_button) {
        const int h = m_look.buttonHeight && m_look.buttonHeight < getHeight() ? m_look.buttonHeight : getHeight();
        m_button->resize(std::max(1, getWidth() - m_look.titleWidth), std::max(1, h));
        m_button->setPos(m_look.titleWidth, (getHeight() - h) / 2);
    }
    Glob::reshape();
}

void TitleMenuButton::setTitle(const UIString& title)
{
    m_look.title = title;
    redraw();
}

int TitleMenuButton::getSelectedItem() const
{
    return m_button->getSelectedItem();
}

LightweightString<wchar_t> TitleMenuButton::getSelectedItemNameW() const
{
    return m_button->getSelectedItemNameW();
}

bool TitleMenuButton::setSelectedItem(const MenuItemIndex& which)
{
    return m_button->setSelectedItem(which);
}

void TitleMenuButton::showValue(const int& position, DataChangeType)
{
    m_button->setSelectedItem(MenuItemIndex(position));
}

bool TitleMenuButton::react(const Event& event)
{
    if (event.isMessage() && event.sender == m_button && event.message == m_button->getMessage()) {
        GlobWatch self(this);
        publishValue(getSelectedItem(), kDataChangeFinal);
        if (!self)
            return true;
        callMsg(event.message);
        return true;
    }
    return Glob::react(event);
}

void TitleMenuButton::setActive(bool active, eRedrawFlag redrawFlag)
{
    Glob::setActive(active, redrawFlag);
    redraw();
}

void TitleMenuButton::drawText()
{
    if (m_look.titleWidth == 0)
        return;
    const GlobBox titleBox(0, 0, std::max(0, m_look.titleWidth - UifStd::getWidgetGap()), getHeight());
    StylePainter::drawLabel(painter(), titleBox, getPalette(), m_look.title.getString().view(), Pictor::TextAlign::Left,
                            isEnabledInTree());
}
