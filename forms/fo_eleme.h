#pragma once
// fo_eleme: one row of a form, the base of every form element. Elements talk to their form only through
// text messages of the shape "<name> <index as %03d> <payload>", so that a form, and the client behind it,
// can be driven (and tested) by text alone:
//
//   event at the element                       | element does
//   -------------------------------------------+-----------------------------------------------------------
//   the user commits a value                   | relays "FoElUp <index> <value>" to its parent (the form)
//   "Fo_eleme_prompt", or a left press on the  | when it does not have the focus, asks the form for it with
//   element itself, or the user uses its part  | "FoElFR <index>"
//   the form moves the focus (m_lose_focus,    | clears / sets its focus flag and redraws its focus mark
//   m_gain_focus)                              |
//
// The kind (m_element_type) tells a client how to read the payload: 1 a choice (the chosen label), 2 a text
// entry (the text), 4 a check box ("Yes" or "No").
//
// Layout: a focus mark a few pixels wide at the left edge, then the title column, a share (the title
// proportion) of the rest, then the element's control. Kinds whose control carries the title itself give it
// the title column too.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/UIString.h"
#include "toolkit/ui/Glob.h"

#include <string_view>

enum form_element_type : int {
    fo_choice_element = 1,
    fo_entry_element = 2,
    fo_bool_element = 4,
};

class fo_eleme : public Glob {
public:
    fo_eleme(uint16_t width, uint16_t height, int kind, int index, UIString title, double proportion = 0.7,
             Canvas* canvas = nullptr);
    fo_eleme(const fo_eleme&) = default;
    fo_eleme(fo_eleme&&) = default;
    fo_eleme& operator=(const fo_eleme&) = default;
    fo_eleme& operator=(fo_eleme&&) = default;
    ~fo_eleme() override = default;

    // A copy of this element, of its own kind, for copying a form.
    virtual fo_eleme* m_clone() const { return new fo_eleme(*this); }

    int m_element_type() const { return m_kind; }
    int m_get_index() const { return m_index; }
    void m_set_index(int index) { m_index = index; }
    const UIString& m_get_title() const { return m_title; }
    double m_get_title_proportion() const { return m_proportion; }
    void m_set_title_proportion(double proportion);
    int m_has_focus() const { return m_focus; }

    // ---- The value, as every kind answers it (text for entries, the chosen label, "Yes"/"No")
    virtual LightweightString<wchar_t> m_get_entry() const;
    // From code: shows the value and tells nobody.
    virtual void m_set_entry(const LightweightString<wchar_t>& text);
    // The choice index of choices, 0/1 for check boxes, -1 for kinds without one.
    virtual int m_get_choice_state() const;
    virtual void m_set_choice_state(int state, bool redraw);
    virtual LightweightString<wchar_t> m_get_choice_state_label() const;
    // Whether the user changed the value since the form last reported it.
    virtual bool m_is_unread() const;
    virtual void m_mark_read();
    // 0 when the value shown is acceptable as it is.
    virtual int m_validate_state();
    virtual LightweightString<char> m_get_action() const;
    virtual void m_set_action(const LightweightString<char>& action);

    // ---- Focus, as the form moves it
    // Called on the element losing the focus, with the index of the element that gains it.
    virtual void m_lose_focus(int newIndex);
    virtual void m_gain_focus();
    // Asks the form for the focus unless the element has it. Answers whether the element is still alive.
    bool m_take_focus();

    // Sends "FoElUp <index> <payload>" to the parent. Answers whether the element is still alive.
    bool m_relay_msg_to_parent(const LightweightString<char>& payload);
    // "<name> <index as %03d> <payload>", the shape of every element message.
    static LightweightString<char> m_format_msg(const char* name, int index, std::string_view payload);
    // Between the user's wide text and the 8-bit (UTF-8) text of messages.
    static LightweightString<char> msgFromUIText(const LightweightString<wchar_t>& text);
    static LightweightString<wchar_t> msgToUIText(std::string_view text);

    static constexpr const char* upMsg = "FoElUp";
    static constexpr const char* focusRequestMsg = "FoElFR";
    static constexpr const char* promptMsg = "Fo_eleme_prompt";
    static constexpr int focusMarkWidth = 4;

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    bool handleMouseEvent(const Event& event) override;
    void drawBackground() override;

protected:
    // Where the control goes: right of the focus mark, with or without the title column.
    GlobBox controlArea(bool withTitleColumn) const;
    uint16_t titleColumnWidth() const;
    // Draws the title in its column, for kinds whose control does not carry it.
    void drawTitleColumn();

private:
    UIString m_title;
    LightweightString<char> m_action;
    double m_proportion = 0.7;
    int m_kind = 0;
    int m_focus = 0;
    int m_index = 0;
};
