#pragma once
// TableColumnDescription: one column of a TableWidget, as plain data: its title, the key it is known by, its
// width, whether the user may drag its edge, its own background colour, and how its cells are edited.
//
// A width of 0 makes the column fill what the fixed columns leave (shared equally when several do). Setters
// answer the description itself, so a column reads as one expression:
//
//     TableColumnDescription(L"Name", "name").setWidth(120).setResizeable(true)

#include "toolkit/support/Colour.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/UIString.h"

#include <cstdint>
#include <optional>
#include <vector>

class TableColumnDescription {
public:
    // How the cells of a column are shown and edited. Values from UserField up are free for editors that
    // owners register with TableWidget::registerFieldEditor.
    enum FieldType : int {
        TextField = 0,   // text, edited in a text entry
        BoolField = 1,   // "1" / "0", shown and edited as a check box
        ChoiceField = 2, // one of the column's choices, edited with a menu
        UserField = 100,
    };

    TableColumnDescription() = default;
    TableColumnDescription(UIString title, LightweightString<char> key, uint16_t width = 0);

    TableColumnDescription& setTitle(UIString title);
    TableColumnDescription& setKey(LightweightString<char> key);
    TableColumnDescription& setWidth(uint16_t width);
    TableColumnDescription& setResizeable(bool resizeable);
    // The background of the column's cells (a cell's own colours from the adaptor still win).
    TableColumnDescription& setColour(const Colour& colour);
    TableColumnDescription& clearColour();
    TableColumnDescription& setFieldType(int type);
    TableColumnDescription& setEditable(bool editable);
    // Editing starts with the first click on a cell rather than a click on the current cell.
    TableColumnDescription& setEditOnClick(bool editOnClick);
    TableColumnDescription& setChoices(std::vector<UIString> choices);

    const UIString& getTitle() const { return m_title; }
    const LightweightString<char>& getKey() const { return m_key; }
    uint16_t getWidth() const { return m_width; }
    bool isResizeable() const { return m_resizeable; }
    bool hasColour() const { return m_colour.has_value(); }
    Colour getColour() const { return m_colour.value_or(Colour()); }
    int getFieldType() const { return m_fieldType; }
    bool isEditable() const { return m_editable; }
    // Check boxes toggle with one click whatever was set.
    bool editsOnClick() const { return m_editOnClick || m_fieldType == BoolField; }
    const std::vector<UIString>& getChoices() const { return m_choices; }

    // Reads a bool cell's text: "1", "true", "yes" and "on" (any case) are true; anything else is false.
    static bool textToBool(const LightweightString<wchar_t>& text);
    static LightweightString<wchar_t> boolToText(bool value) { return value ? L"1" : L"0"; }

private:
    UIString m_title;
    LightweightString<char> m_key;
    std::optional<Colour> m_colour;
    std::vector<UIString> m_choices;
    int m_fieldType = TextField;
    uint16_t m_width = 0;
    bool m_resizeable = false;
    bool m_editable = false;
    bool m_editOnClick = false;
};
