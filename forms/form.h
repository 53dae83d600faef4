#pragma once
// form: a panel holding a column of form elements (fo_eleme and its kinds). Elements talk to the form, and
// the form to its client, only through text messages, so a client reads a form by parsing "FormUp" messages:
//
//   message at the form                 | form does
//   ------------------------------------+---------------------------------------------------------------------
//   "FoElUp <rest>" (an element's value)| sends the client "FormUp <rest>" (nothing without a client); then,
//                                       | when the rest reads "<index> <payload>", routes the payload through
//                                       | the update table set with m_set_update_table
//   "FoElFR <n>"                        | moves the focus to element n unless it has it
//   "FoElDn <index> <menu text>"    | pops up a menu of the menu text's lines under that fo_gench;
//                                       | a choice is sent to the element as the chosen line, and the element
//                                       | hears "menu_poot" when the menu goes
//   "poot"                              | repaints itself with screen updates deferred, in one paint
//
// A "FormUp" message is "FormUp <index as %03d> <payload>"; the payload is the element's whole value,
// however long: the entry's text, the chosen label, or "Yes"/"No".
//
// The constructor's int is the border style (StandardPanel::BorderStyle); its double, when between 0 and
// 1, is the title proportion given to every element added, so the column's controls line up.

#include "forms/fo_eleme.h"

#include "toolkit/support/Colour.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/Transient.h"

#include <vector>

class form;

// One route: a value of (sourceForm, sourceIndex) is written into (targetForm, targetIndex). A table ends at
// the first row whose sourceIndex is -1.
struct form_update_table {
    form* sourceForm = nullptr;
    int sourceIndex = -1;
    form* targetForm = nullptr;
    int targetIndex = -1;
};

class form : public StandardPanel {
public:
    form(uint16_t width, uint16_t height, Glob* client, int borderStyle, const Palette& palette, UIString title,
         double titleProportion = -1.0);
    form();
    form(const form& other);
    form(form&& other) : form(static_cast<const form&>(other)) {}
    form& operator=(const form& other);
    form& operator=(form&& other) { return *this = static_cast<const form&>(other); }
    ~form() override;

    // Non-zero flags add the standard title-bar button (the close button).
    void m_post_init(int flags);
    void m_set_client(Glob* client);
    Glob* m_get_client() const { return m_setup.client.get(); }

    // ---- Elements: the form adopts them, in order, each below the one before.
    void m_add_element(fo_eleme* element);
    void m_add_elements(fo_eleme* const* elements, int count);
    int m_element_count() const { return static_cast<int>(m_elements.size()); }
    // Null for an index out of range.
    fo_eleme* m_get_element(int i) const;
    // The answers below are -1 or empty for an index out of range, and the setters ignore it.
    int m_get_element_type(int i) const;
    LightweightString<wchar_t> m_get_element_entry(int i) const;
    void m_set_element_entry(int i, const LightweightString<wchar_t>& text);
    LightweightString<char> m_get_element_action(int i) const;
    void m_set_element_action(int i, const LightweightString<char>& action);
    int m_get_element_choice_state(int i) const;
    void m_set_element_choice_state(int i, int state, bool redraw);
    int m_max_element_width() const;

    // ---- Focus
    // Ignored unless 0 <= i < element count.
    void m_request_focus(int i);
    int m_get_focus() const { return m_focus; }

    // Reports every unread element with a non-empty entry to the client, and marks them read.
    void m_send_unread_entry_elements();

    // ---- Routing between elements
    // For every row with this source: target->m_set_element_entry(targetIndex, text). Answers 1 when any
    // row matched, else 0.
    static int m_update_others(const form_update_table* table, const form* source, int index,
                               const LightweightString<wchar_t>& text);
    // The table every form routes its elements' values through; null for none. The caller keeps it alive.
    static void m_set_update_table(const form_update_table* table);

    Colour m_get_sheet_col() const;
    Colour m_get_element_col() const;
    Colour m_get_text_col() const;

    static constexpr const char* clientMsg = "FormUp";
    static constexpr const char* refreshMsg = "poot";
    // The name of the menu a form pops up for an fo_gench.
    static constexpr const char* menuName = "menu";

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;

private:
    void relayToClient(const LightweightString<char>& name);
    void popUpMenu(const LightweightString<char>& name);
    void menuClosed();
    // Clones of the other's elements in place of ours; no element has the focus.
    void cloneElementsOf(const form& other);

    // What a copy takes over besides clones of the elements.
    struct Setup {
        GlobWatch client;
        double titleProportion = -1.0;
    };

    Setup m_setup;
    std::vector<fo_eleme*> m_elements; // children: owned by the tree
    Transient<GlobWatch> m_menuElement; // the fo_gench whose menu is up
    int m_focus = -1;
};
