#include "forms/fo_eleme.h"

#include "toolkit/ui/StylePainter.h"
#include "toolkit/widgets/TitledGlob.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

fo_eleme::fo_eleme(uint16_t width, uint16_t height, int kind, int index, UIString title, double proportion,
                   Canvas* canvas)
    : Glob(width, height, Palette(), canvas), m_title(std::move(title)), m_kind(kind), m_index(index)
{
    m_set_title_proportion(proportion);
}

void fo_eleme::m_set_title_proportion(double proportion)
{
    // NaN and out-of-range shares would put the control outside the row.
    m_proportion = proportion > 0.0 ? std::min(proportion, 1.0) : 0.0;
}

LightweightString<char> fo_eleme::idstring() const
{
    return "fo_eleme";
}

LightweightString<wchar_t> fo_eleme::m_get_entry() const
{
    return {};
}

void fo_eleme::m_set_entry(const LightweightString<wchar_t>&) {}

int fo_eleme::m_get_choice_state() const
{
    return -1;
}

void fo_eleme::m_set_choice_state(int, bool) {}

LightweightString<wchar_t> fo_eleme::m_get_choice_state_label() const
{
    return {};
}

bool fo_eleme::m_is_unread() const
{
    return false;
}

void fo_eleme::m_mark_read() {}

int fo_eleme::m_validate_state()
{
    return 0;
}

LightweightString<char> fo_eleme::m_get_action() const
{
    return m_action;
}

void fo_eleme::m_set_action(const LightweightString<char>& action)
{
    m_action = action;
}

void fo_eleme::m_lose_focus(int)
{
    m_focus = 0;
    redraw();
}

void fo_eleme::m_gain_focus()
{
    m_focus = 1;
    redraw();
}

bool fo_eleme::m_take_focus()
{
    if (m_focus)
        return true;
    return sendMsg(parent(), m_format_msg(focusRequestMsg, m_index, {}));
}

bool fo_eleme::m_relay_msg_to_parent(const LightweightString<char>& payload)
{
    return sendMsg(parent(), m_format_msg(upMsg, m_index, payload.view()));
}

LightweightString<char> fo_eleme::m_format_msg(const char* name, int index, std::string_view payload)
{
    // "%s %03d %s": the head is printed, the payload appended, so a payload of any length arrives whole.
    char head[64];
    const int n = std::snprintf(head, sizeof head, "%s %03d ", name, index);
    std::string msg(head, static_cast<size_t>(std::clamp(n, 0, static_cast<int>(sizeof head) - 1)));
    msg.append(payload);
    return LightweightString<char>(std::move(msg));
}

LightweightString<char> fo_eleme::msgFromUIText(const LightweightString<wchar_t>& text)
{
    return toUTF8(text.view());
}

LightweightString<wchar_t> fo_eleme::msgToUIText(std::string_view text)
{
    return fromUTF8(text);
}

bool fo_eleme::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (name == promptMsg) {
        m_take_focus();
        return true;
    }
    return Glob::handleMessageEvent(name, sender);
}

bool fo_eleme::handleMouseEvent(const Event& event)
{
    if (event.isPress()) {
        m_take_focus();
        return true;
    }
    return Glob::handleMouseEvent(event);
}

void fo_eleme::drawBackground()
{
    Pictor::Painter& p = painter();
    p.fillRect(getLocalBox(), getPalette().window());
    if (m_focus)
        p.fillRect(GlobBox(0, 0, focusMarkWidth - 1, getHeight()), getPalette().highlight());
}

uint16_t fo_eleme::titleColumnWidth() const
{
    const int rest = std::max(0, getWidth() - focusMarkWidth);
    return static_cast<uint16_t>(std::floor(rest * m_proportion));
}

GlobBox fo_eleme::controlArea(bool withTitleColumn) const
{
    const int left = focusMarkWidth + (withTitleColumn ? 0 : titleColumnWidth());
    return GlobBox(left, 0, std::max<int>(left, getWidth()), getHeight());
}

void fo_eleme::drawTitleColumn()
{
    const GlobBox column(focusMarkWidth, 0, focusMarkWidth + titleColumnWidth(), getHeight());
    // The legend look of every titled row, so a form's titles read alike whatever the row's kind.
    TitledGlobDetail::drawTitle(painter(), m_title, column, getPalette(), isEnabledInTree());
}
