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
    : Glob(args), m_title(args.title), m_titleWidth(args.titleWidth)
{
    const std::vector<MenuItem> items = MenuItem::fromLabels(args.items);
    layOut(items, args.width, args.height);
    build(items, MenuItemIndex(0));
}

TitleMenuButton::TitleMenuButton(UIString title, std::vector<UIString> items, const Palette& palette, uint16_t width,
                                 uint16_t height, uint16_t buttonHeight, Canvas* canvas, bool showSelected)
    : Glob(width, height, palette, canvas), m_title(std::move(title)), m_buttonHeight(buttonHeight)
{
    const std::vector<MenuItem> menuItems = MenuItem::fromLabels(items);
    layOut(menuItems, width, height);
    build(menuItems, MenuItemIndex(0));
    m_button->useSelectedForButtonDisplay(showSelected);
}

void TitleMenuButton::layOut(const std::vector<MenuItem>& items, uint16_t width, uint16_t height)
{
    if (m_titleWidth == 0)
        m_titleWidth = static_cast<uint16_t>(std::min(titleTextWidth(m_title), 65535));
    const int h = height ? height : std::max<int>(m_buttonHeight, UifStd::getButtonHeight());
    const int w = width ? width : m_titleWidth + DropDownMenuButton::calcWidth(items, UifStd::getDefaultFont());
    resize(w, h);
}

TitleMenuButton::TitleMenuButton(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, static_cast<uint16_t>(height ? height : UifStd::getButtonHeight()), palette, canvas)
{
    build({}, MenuItemIndex(0));
}

// A copy is a new widget: it gets a drop-down of its own with the original's menu and selection.
TitleMenuButton::TitleMenuButton(const TitleMenuButton& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), Glob(other),
      TabOrderableHost(other), ValWidget<int>(other), m_title(other.m_title), m_titleWidth(other.m_titleWidth),
      m_buttonHeight(other.m_buttonHeight)
{
    build(other.m_button->getItems(), MenuItemIndex(other.getSelectedItem()));
    m_button->useSelectedForButtonDisplay(other.m_button->usesSelectedForButtonDisplay());
    m_button->setString(other.m_button->getString());
    m_button->setMessage(other.m_button->getMessage());
}

TitleMenuButton::TitleMenuButton(TitleMenuButton&& other) : TitleMenuButton(static_cast<const TitleMenuButton&>(other))
{
}

TitleMenuButton& TitleMenuButton::operator=(const TitleMenuButton& other)
{
    if (this != &other) {
        Glob::operator=(other);
        m_title = other.m_title;
        m_titleWidth = other.m_titleWidth;
        m_buttonHeight = other.m_buttonHeight;
        *m_button = *other.m_button;
        reshape();
        redraw();
    }
    return *this;
}

TitleMenuButton& TitleMenuButton::operator=(TitleMenuButton&& other)
{
    return *this = static_cast<const TitleMenuButton&>(other);
}

TitleMenuButton::~TitleMenuButton() = default;

LightweightString<char> TitleMenuButton::idstring() const
{
    return "TitleMenuButton";
}

void TitleMenuButton::build(const std::vector<MenuItem>& items, MenuItemIndex selection)
{
    m_button = addWidget<DropDownMenuButton>(
        DropDownMenuButton::InitArgs(items, std::move(selection), 1, 1, getPalette()), Glob::BottomLeft(0, 0));
    reshape();
}

void TitleMenuButton::reshape()
{
    if (m_button) {
        const int h = m_buttonHeight && m_buttonHeight < getHeight() ? m_buttonHeight : getHeight();
        m_button->resize(std::max(1, getWidth() - m_titleWidth), std::max(1, h));
        m_button->setPos(m_titleWidth, (getHeight() - h) / 2);
    }
    Glob::reshape();
}

void TitleMenuButton::setTitle(const UIString& title)
{
    m_title = title;
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
    if (m_titleWidth == 0)
        return;
    const GlobBox titleBox(0, 0, std::max(0, m_titleWidth - UifStd::getWidgetGap()), getHeight());
    StylePainter::drawLabel(painter(), titleBox, getPalette(), m_title.getString().view(), Pictor::TextAlign::Left,
                            isEnabledInTree());
}
