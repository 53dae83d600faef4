#pragma once
// The choice rows of a form: the common base fo_choic (labels and the chosen index), fo_cycle (a drop-down
// menu) and fo_gench (a button whose menu the form pops up from a menu text).
//
// fo_gench, message by message:
//   "Fo_gench_launch" (its button)  | takes the focus if needed; closes its menu when one is open, else sends
//                                   | "FoElDn <index> <menu text>" to the form, which pops it up
//   "FoElDn..." (from anyone)       | the text after the 11-character prefix "FoElDn nnn " becomes the menu
//                                   | menu text
//   "menu_poot"                     | the menu has gone: forget it
//   any other text                  | matched against the labels; on a match the choice is made, the focus
//                                   | taken if needed and the text relayed
// A menu text is the menu's labels, one a line.

#include "forms/fo_eleme.h"

#include "toolkit/ui/Glob.h"
#include "toolkit/ui/Transient.h"

#include <vector>

class MenuGlob;
class TitleButton;
class TitledMenuButtonPlain;

class fo_choic : public fo_eleme {
public:
    fo_choic(uint16_t width, uint16_t height, int index, UIString title, std::vector<UIString> choices,
             double proportion = 0.7);
    fo_choic(const fo_choic&) = default;
    fo_choic(fo_choic&&) = default;
    fo_choic& operator=(const fo_choic&) = default;
    fo_choic& operator=(fo_choic&&) = default;

    const std::vector<UIString>& m_get_choices() const { return m_choices; }
    // The chosen label's text; empty when nothing is chosen.
    LightweightString<wchar_t> m_get_entry() const override;
    int m_get_choice_state() const override { return m_choice; }
    LightweightString<wchar_t> m_get_choice_state_label() const override { return m_get_entry(); }
    // Chooses by index; an index outside the labels changes nothing.
    void m_set_choice_state(int state, bool redraw) override;
    // Chooses by label text; a text that is no label changes nothing.
    void m_set_entry(const LightweightString<wchar_t>& text) override;

    fo_eleme* m_clone() const override { return new fo_choic(*this); }

    // Called by the toolkit
    LightweightString<char> idstring() const override;

protected:
    // The index of the label whose text is `text`, or -1. Labels given only a resource id take its text.
    int findLabel(const LightweightString<wchar_t>& text);
    // Shows the choice in the control (the base has none).
    virtual void showChoice(bool redraw) { (void)redraw; }

    int m_choice = 0;

private:
    std::vector<UIString> m_choices;
};

class fo_cycle : public fo_choic {
public:
    fo_cycle(uint16_t width, uint16_t height, int index, UIString title, std::vector<UIString> choices,
             double proportion = 0.7);
    fo_cycle(const fo_cycle& other);
    fo_cycle(fo_cycle&& other) : fo_cycle(static_cast<const fo_cycle&>(other)) {}
    fo_cycle& operator=(const fo_cycle& other);
    fo_cycle& operator=(fo_cycle&& other) { return *this = static_cast<const fo_cycle&>(other); }
    ~fo_cycle() override;

    TitledMenuButtonPlain* getBtn() const { return m_button; }

    fo_eleme* m_clone() const override { return new fo_cycle(*this); }

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void reshape() override;

protected:
    void showChoice(bool redraw) override;

private:
    void makeButton();

    TitledMenuButtonPlain* m_button = nullptr; // a child: owned by the tree
};

class fo_gench : public fo_choic {
public:
    fo_gench(uint16_t width, uint16_t height, int index, UIString title, std::vector<UIString> choices,
             double proportion = 0.7);
    fo_gench(const fo_gench& other);
    fo_gench(fo_gench&& other) : fo_gench(static_cast<const fo_gench&>(other)) {}
    fo_gench& operator=(const fo_gench& other);
    fo_gench& operator=(fo_gench&& other) { return *this = static_cast<const fo_gench&>(other); }
    ~fo_gench() override;

    TitleButton* getBtn() const { return m_button; }
    const LightweightString<char>& m_get_menu_text() const { return m_menuText; }
    // The menu the form popped up for this element (the form tells it); null when none is open.
    void m_set_menu(MenuGlob* menu);
    MenuGlob* m_get_menu() const;

    static constexpr const char* launchMsg = "Fo_gench_launch";
    static constexpr const char* downMsg = "FoElDn";
    static constexpr const char* menuGoneMsg = "menu_poot";
    // "FoElDn nnn ": what comes before the menu text in a "FoElDn" message.
    static constexpr size_t downPrefixLength = 11;

    fo_eleme* m_clone() const override { return new fo_gench(*this); }

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void reshape() override;

protected:
    void showChoice(bool redraw) override;

private:
    void makeButton();

    TitleButton* m_button = nullptr; // a child: owned by the tree
    LightweightString<char> m_menuText;
    Transient<GlobWatch> m_menu; // the open menu belongs to the form that popped it up: a copy has none
};
