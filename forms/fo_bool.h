#pragma once
// fo_bool: a check box row of a form. A toggle by the user stores the state and relays "Yes" or "No".

#include "forms/fo_eleme.h"

class Checkbox;

class fo_bool : public fo_eleme {
public:
    fo_bool(uint16_t width, uint16_t height, int index, UIString title, bool initialState);
    fo_bool(const fo_bool& other);
    fo_bool(fo_bool&& other) : fo_bool(static_cast<const fo_bool&>(other)) {}
    fo_bool& operator=(const fo_bool& other);
    fo_bool& operator=(fo_bool&& other) { return *this = static_cast<const fo_bool&>(other); }
    ~fo_bool() override;

    Checkbox* getCheckbox() const { return m_box; }
    bool m_get_state() const { return m_state; }

    // "Yes" or "No", as relayed.
    LightweightString<wchar_t> m_get_entry() const override;
    // Checks the box when the text is the answer "Yes" of the string table (id 10000), else clears it.
    void m_set_entry(const LightweightString<wchar_t>& text) override;
    int m_get_choice_state() const override { return m_state ? 1 : 0; }
    void m_set_choice_state(int state, bool redraw) override;
    LightweightString<wchar_t> m_get_choice_state_label() const override { return m_get_entry(); }

    static constexpr const char* yesPayload = "Yes";
    static constexpr const char* noPayload = "No";
    static constexpr int yesResource = 10000;

    fo_eleme* m_clone() const override { return new fo_bool(*this); }

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void drawText() override;
    void reshape() override;

private:
    void makeBox();

    Checkbox* m_box = nullptr; // a child: owned by the tree
    bool m_state = false;
};
