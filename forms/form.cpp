#include "forms/form.h"

#include "forms/fo_choic.h"
#include "forms/fo_entry.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/TitleButton.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <optional>

namespace {

const form_update_table* g_updateTable = nullptr;

struct ElementMsg {
    int index = -1;
    LightweightString<char> payload;
};

// Reads "<index> <payload>" (the payload may be empty, with or without its blank). Nullopt when the text
// does not start with digits followed by a blank or the end.
std::optional<ElementMsg> parseElementMsg(const LightweightString<char>& rest)
{
    const std::string_view text = rest.view();
    size_t digits = 0;
    long long index = 0;
    while (digits < text.size() && std::isdigit(static_cast<unsigned char>(text[digits]))) {
        index = std::min<long long>(index * 10 + (text[digits] - '0'), 1LL << 31);
        ++digits;
    }
    if (digits == 0 || (digits < text.size() && text[digits] != ' ') || index > 0x7fffffff)
        return std::nullopt;
    ElementMsg msg;
    msg.index = static_cast<int>(index);
    if (digits < text.size())
        msg.payload = rest.substr(digits + 1);
    return msg;
}

// What follows "<name> " in a message beginning with name; empty when nothing does.
LightweightString<char> restAfter(const LightweightString<char>& msg, const char* name)
{
    return msg.substr(std::string_view(name).size() + 1);
}

std::vector<UIString> linesOf(const LightweightString<char>& menuText)
{
    std::vector<UIString> lines;
    std::string_view rest = menuText.view();
    while (!rest.empty()) {
        const size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end);
        if (!line.empty())
            lines.emplace_back(fo_eleme::msgToUIText(line));
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }
    return lines;
}

} // namespace

form::form(uint16_t width, uint16_t height, Glob* client, int borderStyle, const Palette& palette, UIString title,
           double titleProportion)
    : StandardPanel([&] {
          StandardPanel::InitArgs args(std::move(title), width, height, NoWidgets, palette);
          args.border = borderStyle >= NoBorder && borderStyle <= SunkenBorder ? static_cast<BorderStyle>(borderStyle)
                                                                               : RaisedBorder;
          return args;
      }()),
      m_setup{GlobWatch(client), titleProportion}
{
}

form::form() : form(0, 0, nullptr, RaisedBorder, Palette(), UIString()) {}

form::form(const form& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), StandardPanel(other),
      m_setup(other.m_setup)
{
    cloneElementsOf(other);
}

form& form::operator=(const form& other)
{
    if (this != &other) {
        StandardPanel::operator=(other);
        m_setup = other.m_setup;
        cloneElementsOf(other);
    }
    return *this;
}

void form::cloneElementsOf(const form& other)
{
    for (fo_eleme* element : m_elements)
        removeChild(element);
    m_elements.clear();
    m_focus = -1;
    for (const fo_eleme* element : other.m_elements)
        m_add_element(element->m_clone());
}

form::~form() = default;

LightweightString<char> form::idstring() const
{
    return "form";
}

void form::m_post_init(int flags)
{
    if (flags != 0)
        addStandardWidgets(CloseButton);
}

void form::m_set_client(Glob* client)
{
    m_setup.client = GlobWatch(client);
}

// ---------------------------------------------------------------------------------------------------------
// Elements

void form::m_add_element(fo_eleme* element)
{
    if (!element)
        return;
    // Messages carry the index, so it must be the element's place in this form.
    element->m_set_index(m_element_count());
    if (m_setup.titleProportion > 0.0 && m_setup.titleProportion < 1.0) {
        element->m_set_title_proportion(m_setup.titleProportion);
        element->reshape();
    }
    if (m_elements.empty()) {
        const int inset = parent() ? UifStd::getWidgetGap() : UifStd::getBorder();
        addChild(element, UserTopLeft(inset, inset));
    } else {
        addChild(element, Below(UifStd::getRowGap(), m_elements.back()));
    }
    m_elements.push_back(element);
}

void form::m_add_elements(fo_eleme* const* elements, int count)
{
    for (int i = 0; elements && i < count; ++i)
        m_add_element(elements[i]);
}

fo_eleme* form::m_get_element(int i) const
{
    return i >= 0 && i < m_element_count() ? m_elements[static_cast<size_t>(i)] : nullptr;
}

int form::m_get_element_type(int i) const
{
    const fo_eleme* element = m_get_element(i);
    return element ? element->m_element_type() : -1;
}

LightweightString<wchar_t> form::m_get_element_entry(int i) const
{
    const fo_eleme* element = m_get_element(i);
    return element ? element->m_get_entry() : LightweightString<wchar_t>();
}

void form::m_set_element_entry(int i, const LightweightString<wchar_t>& text)
{
    if (fo_eleme* element = m_get_element(i))
        element->m_set_entry(text);
}

LightweightString<char> form::m_get_element_action(int i) const
{
    const fo_eleme* element = m_get_element(i);
    return element ? element->m_get_action() : LightweightString<char>();
}

void form::m_set_element_action(int i, const LightweightString<char>& action)
{
    if (fo_eleme* element = m_get_element(i))
        element->m_set_action(action);
}

int form::m_get_element_choice_state(int i) const
{
    const fo_eleme* element = m_get_element(i);
    return element ? element->m_get_choice_state() : -1;
}

void form::m_set_element_choice_state(int i, int state, bool redrawNow)
{
    if (fo_eleme* element = m_get_element(i))
        element->m_set_choice_state(state, redrawNow);
}

int form::m_max_element_width() const
{
    int widest = 0;
    for (const fo_eleme* element : m_elements)
        widest = std::max<int>(widest, element->getWidth());
    return widest;
}

// ---------------------------------------------------------------------------------------------------------
// Focus and reports

void form::m_request_focus(int i)
{
    if (i < 0 || i >= m_element_count())
        return;
    GlobWatch self(this);
    if (fo_eleme* old = m_get_element(m_focus)) {
        old->m_lose_focus(i);
        if (!self)
            return;
    }
    m_focus = i;
    m_elements[static_cast<size_t>(i)]->m_gain_focus();
}

void form::m_send_unread_entry_elements()
{
    GlobWatch self(this);
    for (size_t i = 0; i < m_elements.size(); ++i) {
        fo_eleme* element = m_elements[i];
        if (!m_setup.client || !element->m_is_unread())
            continue;
        if (auto* entry = dynamic_cast<fo_entry*>(element))
            entry->m_collect_entry();
        const LightweightString<wchar_t> text = element->m_get_entry();
        if (text.empty())
            continue;
        element->m_mark_read();
        const LightweightString<char> payload = fo_eleme::msgFromUIText(text);
        if (!sendMsg(m_setup.client.get(), fo_eleme::m_format_msg(clientMsg, element->m_get_index(), payload.view())))
            return;
    }
}

int form::m_update_others(const form_update_table* table, const form* source, int index,
                          const LightweightString<wchar_t>& text)
{
    int matched = 0;
    for (const form_update_table* row = table; row && row->sourceIndex != -1; ++row) {
        if (row->sourceForm != source || row->sourceIndex != index)
            continue;
        matched = 1;
        if (row->targetForm)
            row->targetForm->m_set_element_entry(row->targetIndex, text);
    }
    return matched;
}

void form::m_set_update_table(const form_update_table* table)
{
    g_updateTable = table;
}

Colour form::m_get_sheet_col() const
{
    return getPalette().window();
}

Colour form::m_get_element_col() const
{
    return getPalette().entry();
}

Colour form::m_get_text_col() const
{
    return getPalette().text();
}

// ---------------------------------------------------------------------------------------------------------
// Messages

bool form::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (name.startsWith(fo_eleme::upMsg)) {
        relayToClient(name);
        return true;
    }
    if (name.startsWith(fo_eleme::focusRequestMsg)) {
        const std::optional<ElementMsg> request = parseElementMsg(restAfter(name, fo_eleme::focusRequestMsg));
        if (request && request->index != m_focus)
            m_request_focus(request->index);
        return true;
    }
    if (name.startsWith(fo_gench::downMsg)) {
        popUpMenu(name);
        return true;
    }
    if (name == refreshMsg) {
        Pictor::UpdateDeferrer oneRepaint;
        redraw();
        return true;
    }
    if (name == MenuGlob::chosenMsg || name == MenuGlob::cancelledMsg) {
        menuClosed();
        return true;
    }
    return StandardPanel::handleMessageEvent(name, sender);
}

void form::relayToClient(const LightweightString<char>& name)
{
    const LightweightString<char> rest = restAfter(name, fo_eleme::upMsg);
    GlobWatch self(this);
    if (Glob* client = m_setup.client.get()) {
        if (!sendMsg(client, LightweightString<char>(clientMsg) + " " + rest.view()))
            return;
    }
    if (!self || !g_updateTable)
        return;
    if (const std::optional<ElementMsg> msg = parseElementMsg(rest))
        m_update_others(g_updateTable, this, msg->index, fo_eleme::msgToUIText(msg->payload.view()));
}

void form::popUpMenu(const LightweightString<char>& name)
{
    const std::optional<ElementMsg> msg = parseElementMsg(restAfter(name, fo_gench::downMsg));
    auto* element = msg ? dynamic_cast<fo_gench*>(m_get_element(msg->index)) : nullptr;
    if (!element)
        return;
    std::vector<MenuItem> items;
    GlobWatch self(this);
    GlobWatch target(element);
    for (const UIString& line : linesOf(msg->payload)) {
        const LightweightString<char> chosen = fo_eleme::msgFromUIText(line.getString());
        items.emplace_back(line, [self, target, chosen] {
            if (Glob* owner = self.get())
                owner->sendMsg(target.get(), chosen);
        });
    }
    if (items.empty())
        return;
    const GlobBox under = element->getBtn()->getBtn()->getScreenBox();
    MenuGlob* menu = MenuGlob::popUp(MenuGlob::InitArgs(std::move(items), static_cast<uint16_t>(under.width())),
                                     {under.left(), under.bottom()}, this);
    if (!menu)
        return;
    menu->setName(menuName);
    element->m_set_menu(menu);
    m_menuElement = target;
}

void form::menuClosed()
{
    Glob* element = m_menuElement->get();
    m_menuElement.reset();
    sendMsg(element, fo_gench::menuGoneMsg);
}
