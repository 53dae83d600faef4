#pragma once
// Checkbox: a box with a tick and a label: one yes/no value.
//
//   input                                  | check box does
//   ---------------------------------------+---------------------------------------------------------
//   click on the box or on the label       | toggles
//   Space while focused                    | toggles
//   pointer over it                        | hover look on the box
//   anything while disabled                | nothing; drawn dimmed
//
// A toggle by the user proposes the new value to the bound adaptor (ValWidget<bool>) and then tells the owner
// checkedMsg or uncheckedMsg; both begin with "Checkbox ", so an owner may test the prefix and then read
// getValue(). setValue() from code changes only what is shown and tells nobody.
//
// Styles, as bits: LabelFirst puts the label at the left and the box after it (at the label column set with
// setLabelWidth, or right after the label); LegendLook draws the label in the legend colour of a panel row.
// Style 3 (both) is the check box row of a parameter panel.

#include "toolkit/support/UIString.h"
#include "toolkit/ui/ClickTracker.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/ui/Transient.h"
#include "toolkit/widgets/ValWidget.h"

#include <cstdint>

class Checkbox : public Glob, public TabOrderable, public ValWidget<bool> {
public:
    enum Style : uint8_t {
        BoxFirst = 0,
        LabelFirst = 1,
        LegendLook = 2,
        LegendRow = LabelFirst | LegendLook,
    };

    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A width of 0 fits the label (calcWidth); a height of 0 is the standard button height.
        InitArgs(UIString labelText, bool initialValue = false, int boxStyle = BoxFirst, uint16_t w = 0,
                 uint16_t h = 0, const Palette& pal = Palette(), Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), label(std::move(labelText)), value(initialValue), style(boxStyle)
        {
        }
        // For check boxes made by type name: the "label" (text) and "value" (boolean) settings, read by
        // SettingsReader.
        InitArgs(const GlobCreationInfo& info);

        UIString label;
        bool value = false;
        int style = BoxFirst;
    };

    explicit Checkbox(const InitArgs& args);
    Checkbox(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    Checkbox(const Checkbox&) = default;
    Checkbox(Checkbox&&) = default;
    Checkbox& operator=(const Checkbox&) = default;
    Checkbox& operator=(Checkbox&&) = default;
    ~Checkbox() override;

    LightweightString<char> idstring() const override;

    // The width that shows the box and the whole label.
    static uint16_t calcWidth(const UIString& label, int style = BoxFirst);

    bool getValue() const { return m_value; }
    void setValue(bool value, eRedrawFlag redraw = Redraw);
    // What a click does: flips the value, publishes it and tells the owner. Answers whether the check box
    // is still alive afterwards.
    bool toggle();

    void setString(const UIString& label);
    const UIString& getString() const { return m_label; }
    // With LabelFirst: the box starts this far from the left edge (0: right after the label).
    void setLabelWidth(uint16_t width);
    int getStyle() const { return m_style; }
    // The box, in the check box's own coordinates.
    GlobBox boxArea() const;

    static constexpr const char* checkedMsg = "Checkbox on";
    static constexpr const char* uncheckedMsg = "Checkbox off";
    // Whether a message name is one of the two above.
    static bool isCheckboxMsg(const LightweightString<char>& name);

    // Called by the toolkit
    bool react(const Event& event) override;
    void drawBackground() override;
    void drawText() override;

protected:
    void showValue(const bool& value, DataChangeType type) override;

private:
    GlobBox labelArea() const;

    UIString m_label;
    uint16_t m_labelWidth = 0;
    uint8_t m_style = BoxFirst;
    bool m_value = false;
    Transient<bool> m_hover;
    Transient<ClickTracker> m_click;
};
