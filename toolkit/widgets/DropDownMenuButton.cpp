#include "toolkit/widgets/DropDownMenuButton.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <array>

namespace {

// The part of the face on the right that holds the arrow: square, as high as the button.
int arrowSpace(int height)
{
    return std::max(12, height);
}

const bool registeredByName = GlobManager::registerWidget<DropDownMenuButton>("DropDownMenuButton");

} // namespace

DropDownMenuButton::InitArgs::InitArgs(const std::vector<UIString>& labels, MenuItemIndex selection, uint16_t w,
                                       uint16_t h, const Palette& pal, Canvas* c)
    : InitArgs(MenuItem::fromLabels(labels), std::move(selection), w, h, pal, c)
{
}

DropDownMenuButton::InitArgs::InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info)
{
    for (const auto& label : SettingsReader(info.config).list("items").value_or(SettingsReader::List()))
        items.emplace_back(UIString(label));
}

DropDownMenuButton::DropDownMenuButton(const InitArgs& args)
    : Button(Button::InitArgs(UIString(), args.width, args.height, args.palette, args.canvas)),
      m_items(args.items)
{
    if (!args.name.empty())
        setName(args.name);
    setSelectedItem(args.selected);
    if (args.width == 0)
        fitWidth();
}

DropDownMenuButton::DropDownMenuButton(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Button(width, height, palette, canvas)
{
}

DropDownMenuButton::~DropDownMenuButton() = default;

void DropDownMenuButton::CloseMenu::operator()(Glob* menu) const
{
    if (is_good_glob_ptr(menu, stamp))
        Glob::destroy(menu);
}

LightweightString<char> DropDownMenuButton::idstring() const
{
    return "DropDownMenuButton";
}

// ---------------------------------------------------------------------------------------------------------
// Menu and selection

void DropDownMenuButton::setStrings(std::vector<MenuItem> items, MenuItemIndex selection)
{
    closeMenu();
    m_items = std::move(items);
    m_selected = -1;
    setSelectedItem(selection);
    redraw();
}

void DropDownMenuButton::setStrings(const std::vector<UIString>& labels, MenuItemIndex selection)
{
    setStrings(MenuItem::fromLabels(labels), std::move(selection));
}

size_t DropDownMenuButton::numEntries() const
{
    return static_cast<size_t>(
        std::count_if(m_items.begin(), m_items.end(), [](const MenuItem& item) { return !item.isHeading(); }));
}

int DropDownMenuButton::itemOfEntry(int position) const
{
    if (position < 0)
        return -1;
    int seen = 0;
    for (size_t i = 0; i < m_items.size(); ++i)
        if (!m_items[i].isHeading() && seen++ == position)
            return static_cast<int>(i);
    return -1;
}

int DropDownMenuButton::entryOfItem(size_t index) const
{
    if (index >= m_items.size() || m_items[index].isHeading())
        return -1;
    int position = 0;
    for (size_t i = 0; i < index; ++i)
        if (!m_items[i].isHeading())
            ++position;
    return position;
}

bool DropDownMenuButton::setSelectedItem(const MenuItemIndex& which)
{
    if (!which.byLabel()) {
        selectEntry(itemOfEntry(which.position()) >= 0 ? which.position() : -1);
        return m_selected >= 0;
    }
    // The label as stored first; failing that, as shown (a resource text with its formatting applied).
    for (int pass = 0; pass < 2; ++pass)
        for (size_t i = 0; i < m_items.size(); ++i) {
            if (m_items[i].isHeading())
                continue;
            const LightweightString<wchar_t> text =
                pass == 0 ? m_items[i].getLabel().getString() : m_items[i].getDisplayText();
            if (text == which.label()) {
                selectEntry(entryOfItem(i));
                return true;
            }
        }
    return m_selected >= 0;
}

void DropDownMenuButton::selectEntry(int position)
{
    if (position == m_selected)
        return;
    m_selected = position;
    redraw();
}

const MenuItem* DropDownMenuButton::getSelectedMenuItem() const
{
    const int index = itemOfEntry(m_selected);
    return index >= 0 ? &m_items[size_t(index)] : nullptr;
}

LightweightString<wchar_t> DropDownMenuButton::getSelectedItemNameW() const
{
    const MenuItem* item = getSelectedMenuItem();
    return item ? item->getLabel().getString() : LightweightString<wchar_t>();
}

// ---------------------------------------------------------------------------------------------------------
// Face

void DropDownMenuButton::useSelectedForButtonDisplay(bool use)
{
    if (use != m_showSelected) {
        m_showSelected = use;
        redraw();
    }
}

LightweightString<wchar_t> DropDownMenuButton::getDisplayedText() const
{
    if (!m_showSelected)
        return getString().getString();
    const MenuItem* item = getSelectedMenuItem();
    if (!item)
        return {};
    const LightweightString<wchar_t> text = item->getDisplayText();
    return LightweightString<wchar_t>(MenuItem::splitColumns(text.view()).first);
}

uint16_t DropDownMenuButton::calcWidth(const std::vector<UIString>& labels, const Pictor::FontDesc& fontDesc)
{
    return calcWidth(MenuItem::fromLabels(labels), fontDesc);
}

uint16_t DropDownMenuButton::calcWidth(const std::vector<MenuItem>& items, const Pictor::FontDesc& fontDesc)
{
    const Cv::Ptr<Pictor::Font> font = Pictor::loadFont(fontDesc);
    int widest = 0;
    for (const MenuItem& item : items) {
        const LightweightString<wchar_t> text = item.getDisplayText();
        widest = std::max(widest, font->pixelWidth(MenuItem::splitColumns(text.view()).first));
    }
    const int width = widest + 2 * UifStd::getWidgetGap() + arrowSpace(UifStd::getButtonHeight());
    return static_cast<uint16_t>(std::clamp(width, 1, 65535));
}

void DropDownMenuButton::fitWidth()
{
    const uint16_t w = calcWidth(m_items, UifStd::getDefaultFont());
    resize(std::max<int>(w, arrowSpace(getHeight()) + 2 * UifStd::getWidgetGap()), getHeight());
}

void DropDownMenuButton::drawText()
{
    const GlobBox box = getLocalBox();
    const int gap = UifStd::getWidgetGap();
    const int arrow = arrowSpace(getHeight());
    const Colour ink = getTextCol();
    const LightweightString<wchar_t> text = getDisplayedText();
    if (!text.empty())
        painter().drawTextInBox(text.view(), UifStd::defaultFont(), ink,
                                Pictor::PaintRect(box.left() + gap, box.bottom(), box.right() - arrow, box.top()),
                                Pictor::TextAlign::Left, Pictor::textEllipsis);
    // The arrow says "a list opens here", pointing the way it opens.
    const double cx = box.right() - arrow / 2.0;
    const double cy = box.bottom() + box.height() / 2.0;
    const double r = std::clamp(getHeight() / 6.0, 2.0, 5.0);
    const std::array<XY<double>, 3> pts{XY<double>{cx - r, cy + r / 2}, {cx + r, cy + r / 2}, {cx, cy - r / 2}};
    painter().fillPolygon(pts, ink);
}

// ---------------------------------------------------------------------------------------------------------
// Messages and opening

void DropDownMenuButton::setMessage(const LightweightString<char>& message)
{
    m_message = message;
}

LightweightString<char> DropDownMenuButton::getMessage() const
{
    return m_message.empty() ? LightweightString<char>(dropDownMenuButtonMsg) : m_message;
}

MenuGlob* DropDownMenuButton::openMenu()
{
    if (MenuGlob* open = getOpenMenu())
        return open;
    if (m_items.empty() || !isEnabledInTree())
        return nullptr;
    const GlobBox screenBox = getScreenBox();
    MenuGlob::InitArgs args(m_items, getWidth());
    args.palette = getPalette();
    MenuGlob* menu = MenuGlob::popUp(args, {screenBox.left(), screenBox.bottom()}, this);
    if (!menu)
        return nullptr;
    *m_openMenu = std::unique_ptr<Glob, CloseMenu>(menu, CloseMenu{menu->getIdStamp()});
    const int item = itemOfEntry(m_selected);
    if (item >= 0 && menu->isItemShown(size_t(item)))
        menu->setHighlighted(item);
    setHeldDown(true);
    return menu;
}

MenuGlob* DropDownMenuButton::getOpenMenu() const
{
    Glob* menu = m_openMenu->get();
    return menu && is_good_glob_ptr(menu, m_openMenu->get_deleter().stamp) ? static_cast<MenuGlob*>(menu) : nullptr;
}

void DropDownMenuButton::closeMenu()
{
    if (Glob* open = getOpenMenu()) {
        menuClosed();
        Glob::destroy(open);
    }
}

void DropDownMenuButton::menuClosed()
{
    // Only a menu that was open hands the keyboard back: replacing the entries must not move the focus.
    if (!getOpenMenu())
        return;
    m_openMenu->release(); // closed by the user, or about to be destroyed by closeMenu
    setHeldDown(false);
    // The keyboard comes back to the button, so the user can open the menu again or move on with Tab.
    if (isShowing() && isEnabledInTree())
        takeFocus();
}

bool DropDownMenuButton::react(const Event& event)
{
    if (event.isPress() && isEnabledInTree() && !ignoresMouseClicks()) {
        takeFocus();
        openMenu();
        return true;
    }
    if (event.isKey() && !event.hasAnyModifier() && isEnabledInTree()
        && (event.key == ' ' || event.key == Event::KeyReturn || event.key == Event::KeyDown)) {
        openMenu();
        return true;
    }
    return Button::react(event);
}

bool DropDownMenuButton::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (sender == nullptr || sender != getOpenMenu())
        return Button::handleMessageEvent(name, sender);
    if (name == MenuGlob::cancelledMsg) {
        menuClosed();
        return true;
    }
    if (name == MenuGlob::chosenMsg) {
        const int position = entryOfItem(size_t(static_cast<MenuGlob*>(sender)->getChosenIndex()));
        menuClosed();
        if (position >= 0) {
            selectEntry(position);
            callMsg(getMessage());
        }
        return true;
    }
    return Button::handleMessageEvent(name, sender);
}
