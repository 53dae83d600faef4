#include "forms/fo_bool.h"

#include "toolkit/support/Resources.h"
#include "toolkit/widgets/Checkbox.h"

fo_bool::fo_bool(uint16_t width, uint16_t height, int index, UIString title, bool initialState)
    : fo_eleme(width, height, fo_bool_element, index, std::move(title)), m_state(initialState)
{
    makeBox();
}

fo_bool::fo_bool(const fo_bool& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), fo_eleme(other),
      m_state(other.m_state)
{
    makeBox();
}

fo_bool& fo_bool::operator=(const fo_bool& other)
{
    if (this != &other) {
        fo_eleme::operator=(other);
        m_state = other.m_state;
        m_box->setValue(m_state);
        reshape();
    }
    return *this;
}

fo_bool::~fo_bool() = default;

void fo_bool::makeBox()
{
    // The title is the row's, drawn in its column like every other row's; the check box is the control.
    const GlobBox area = controlArea(false);
    m_box = addWidget<Checkbox>(Checkbox::InitArgs(UIString(), m_state, Checkbox::BoxFirst,
                                                   static_cast<uint16_t>(area.width()), getHeight(), getPalette()),
                                Glob::BottomLeft(area.left(), 0));
}

LightweightString<char> fo_bool::idstring() const
{
    return "fo_bool";
}

LightweightString<wchar_t> fo_bool::m_get_entry() const
{
    return msgToUIText(m_state ? yesPayload : noPayload);
}

void fo_bool::m_set_entry(const LightweightString<wchar_t>& text)
{
    m_set_choice_state(text == resourceStrW(yesResource) ? 1 : 0, true);
}

void fo_bool::m_set_choice_state(int state, bool redrawNow)
{
    m_state = state != 0;
    m_box->setValue(m_state, redrawNow ? Redraw : NoRedraw);
}

bool fo_bool::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    // Any "Checkbox " message re-reads the box: the box's state is the truth, whoever prompts the read.
    if (name.startsWith("Checkbox ")) {
        m_state = m_box->getValue();
        if (!m_take_focus())
            return true;
        m_relay_msg_to_parent(m_state ? yesPayload : noPayload);
        return true;
    }
    return fo_eleme::handleMessageEvent(name, sender);
}

void fo_bool::drawText()
{
    drawTitleColumn();
}

void fo_bool::reshape()
{
    if (m_box) {
        const GlobBox area = controlArea(false);
        m_box->resize(area.width(), getHeight());
        m_box->setPos(area.left(), 0);
    }
    fo_eleme::reshape();
}
