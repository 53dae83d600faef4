#include "forms/fo_choic.h"

#include "toolkit/ui/MenuGlob.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/TitleButton.h"
#include "toolkit/widgets/TitledMenuButtonPlain.h"

#include <string>

namespace {

LightweightString<char> menuTextFromLabels(const std::vector<UIString>& labels)
{
    std::string menuText;
    for (const UIString& label : labels) {
        if (!menuText.empty())
            menuText += '\n';
        menuText += fo_eleme::msgFromUIText(label.getString()).view();
    }
    return LightweightString<char>(std::move(menuText));
}

} // namespace

// ---------------------------------------------------------------------------------------------------------
// fo_choic

fo_choic::fo_choic(uint16_t width, uint16_t height, int index, UIString title, std::vector<UIString> choices,
                   double proportion)
    : fo_eleme(width, height, fo_choice_element, index, std::move(title), proportion), m_choices(std::move(choices))
{
}

LightweightString<char> fo_choic::idstring() const
{
    return "fo_choic";
}

LightweightString<wchar_t> fo_choic::m_get_entry() const
{
    if (m_choice < 0 || static_cast<size_t>(m_choice) >= m_choices.size())
        return {};
    return m_choices[static_cast<size_t>(m_choice)].getString();
}

void fo_choic::m_set_choice_state(int state, bool redrawNow)
{
    if (state < 0 || static_cast<size_t>(state) >= m_choices.size())
        return;
    m_choice = state;
    showChoice(redrawNow);
}

void fo_choic::m_set_entry(const LightweightString<wchar_t>& text)
{
    m_set_choice_state(findLabel(text), true);
}

int fo_choic::findLabel(const LightweightString<wchar_t>& text)
{
    for (size_t i = 0; i < m_choices.size(); ++i) {
        UIString& label = m_choices[i];
        // A label given only as a resource id is filled from the string table once, so later matches
        // compare the text the user saw.
        if (label.isResource())
            label = UIString(label.getString());
        if (label.getString() == text)
            return static_cast<int>(i);
    }
    return -1;
}

// ---------------------------------------------------------------------------------------------------------
// fo_cycle

fo_cycle::fo_cycle(uint16_t width, uint16_t height, int index, UIString title, std::vector<UIString> choices,
                   double proportion)
    : fo_choic(width, height, index, std::move(title), std::move(choices), proportion)
{
    makeButton();
}

fo_cycle::fo_cycle(const fo_cycle& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), fo_choic(other)
{
    makeButton();
}

fo_cycle& fo_cycle::operator=(const fo_cycle& other)
{
    if (this != &other) {
        fo_choic::operator=(other);
        removeChild(m_button);
        makeButton();
    }
    return *this;
}

fo_cycle::~fo_cycle() = default;

void fo_cycle::makeButton()
{
    const GlobBox area = controlArea(true);
    const uint16_t width = static_cast<uint16_t>(area.width());
    m_button = new TitledMenuButtonPlain(m_get_title(), m_get_choices(), m_get_title_proportion(), width,
                                         getHeight(), getPalette());
    addChild(m_button, Glob::BottomLeft(area.left(), 0));
    showChoice(false);
}

LightweightString<char> fo_cycle::idstring() const
{
    return "fo_cycle";
}

void fo_cycle::showChoice(bool redrawNow)
{
    m_button->setSelectedItem(MenuItemIndex(m_choice));
    if (redrawNow)
        m_button->redraw();
}

bool fo_cycle::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (sender == m_button && name == m_button->getBtn()->getMessage()) {
        m_choice = m_button->getSelectedItem();
        if (!m_take_focus())
            return true;
        m_relay_msg_to_parent(msgFromUIText(m_get_entry()));
        return true;
    }
    return fo_choic::handleMessageEvent(name, sender);
}

void fo_cycle::reshape()
{
    if (m_button) {
        const GlobBox area = controlArea(true);
        // The title column is fixed when the button is made; a new share (a form lining its rows up)
        // needs a new button.
        if (m_button->getTitleWidth() !=
            TitledMenuButtonPlain::titleWidthFor(m_get_title_proportion(), static_cast<uint16_t>(area.width()))) {
            removeChild(m_button);
            makeButton();
        }
        m_button->resize(area.width(), getHeight());
        m_button->setPos(area.left(), 0);
    }
    fo_choic::reshape();
}

// ---------------------------------------------------------------------------------------------------------
// fo_gench

fo_gench::fo_gench(uint16_t width, uint16_t height, int index, UIString title, std::vector<UIString> choices,
                   double proportion)
    : fo_choic(width, height, index, std::move(title), std::move(choices), proportion),
      m_menuText(menuTextFromLabels(m_get_choices()))
{
    makeButton();
}

fo_gench::fo_gench(const fo_gench& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), fo_choic(other),
      m_menuText(other.m_menuText)
{
    makeButton();
}

fo_gench& fo_gench::operator=(const fo_gench& other)
{
    if (this != &other) {
        fo_choic::operator=(other);
        m_menuText = other.m_menuText;
        removeChild(m_button);
        makeButton();
    }
    return *this;
}

fo_gench::~fo_gench() = default;

void fo_gench::makeButton()
{
    const GlobBox area = controlArea(true);
    const uint16_t width = static_cast<uint16_t>(area.width());
    m_button = new TitleButton(m_get_title(), m_get_entry(),
                               TitledMenuButtonPlain::titleWidthFor(m_get_title_proportion(), width), width,
                               getHeight(), getPalette());
    addChild(m_button, Glob::BottomLeft(area.left(), 0));
    m_button->getBtn()->setMessage(launchMsg);
}

LightweightString<char> fo_gench::idstring() const
{
    return "fo_gench";
}

void fo_gench::m_set_menu(MenuGlob* menu)
{
    m_menu = GlobWatch(menu);
}

MenuGlob* fo_gench::m_get_menu() const
{
    return static_cast<MenuGlob*>(m_menu->get());
}

void fo_gench::showChoice(bool redrawNow)
{
    m_button->getBtn()->setString(m_get_entry());
    if (redrawNow)
        m_button->redraw();
}

bool fo_gench::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (sender == m_button && name == launchMsg) {
        if (!m_take_focus())
            return true;
        if (MenuGlob* open = m_get_menu()) {
            open->dismiss();
            return true;
        }
        sendMsg(parent(), m_format_msg(downMsg, m_get_index(), m_menuText.view()));
        return true;
    }
    if (name.startsWith(downMsg)) {
        m_menuText = name.substr(downPrefixLength);
        return true;
    }
    if (name == menuGoneMsg) {
        m_menu.reset();
        return true;
    }
    if (name == promptMsg)
        return fo_choic::handleMessageEvent(name, sender);
    const int match = findLabel(msgToUIText(name.view()));
    if (match < 0)
        return fo_choic::handleMessageEvent(name, sender);
    m_set_choice_state(match, true);
    if (!m_take_focus())
        return true;
    m_relay_msg_to_parent(name);
    return true;
}

void fo_gench::reshape()
{
    if (m_button) {
        const GlobBox area = controlArea(true);
        m_button->setTitleWidth(
            TitledMenuButtonPlain::titleWidthFor(m_get_title_proportion(), static_cast<uint16_t>(area.width())));
        m_button->resize(area.width(), getHeight());
        m_button->setPos(area.left(), 0);
    }
    fo_choic::reshape();
}
