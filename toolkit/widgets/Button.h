#pragma once
// Button: a labelled face the user presses. The base of image buttons, radio buttons and list lines.
//
// Behaviour (left button, keys while focused):
//
//   input                               | button does
//   ------------------------------------+--------------------------------------------------------------
//   pointer enters / leaves             | hover look on / off
//   press                               | armed: drawn pressed while the pointer stays over it
//   drag off / back on while armed      | drawn released / pressed again
//   release over it while armed         | activate()
//   release elsewhere                   | nothing (the user changed their mind)
//   Space or Return                     | activate()
//   arrow keys, when in a radio group   | the group moves its selection
//   anything while disabled             | nothing; drawn dimmed
//
// activate(): a latching button flips its down state (a button in a radio group is put down by the group
// instead); then, if a callback is set, the callback runs, otherwise the owner hears the button's message
// (clickMsg unless setMessage chose another, so an owner of several buttons can tell them apart by name).
// Exactly one of the two is told, never both.
//
// The down state is the button's own switch: owners set and read it (setDown / isDown) for latching
// buttons, selected list lines and tools that show themselves engaged while they work.
//
// Buttons are made by the thousand (one per line of a list), so the rarely used parts (callback, down
// colours, own message, radio group) live in an extension allocated on first use.

#include "toolkit/support/Colour.h"
#include "toolkit/support/UIString.h"
#include "toolkit/support/ValuePtr.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/MenuItem.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/ui/Transient.h"

#include <cstdint>
#include <optional>

class Button;

// What a radio group needs to hear from its buttons.
class iButtonGroup {
public:
    // The user activated `button`, a member of the group.
    virtual void buttonActivated(Button& button) = 0;
    // A key reached `button` unhandled; answers whether the group used it.
    virtual bool buttonKey(Button& button, int key) = 0;
    // Whether `button` may take the keyboard focus now (a group may be one tab stop rather than several).
    virtual bool memberAcceptsFocus(const Button& button) const
    {
        (void)button;
        return true;
    }

protected:
    ~iButtonGroup() = default;
};

class Button : public Glob, public TabOrderable {
public:
    enum Style : uint8_t {
        PushStyle,  // a raised face with its label centred
        RadioStyle, // a round indicator with the label beside it; the dot shows the down state
    };

    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A width of 0 fits the label; a height of 0 is the standard button height.
        InitArgs(UIString buttonLabel, uint16_t w = 0, uint16_t h = 0, const Palette& pal = Palette(),
                 Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), label(std::move(buttonLabel))
        {
        }
        // For buttons made by type name: the label is the info's "label" setting.
        InitArgs(const GlobCreationInfo& info);

        UIString label;
        // Empty: clickMsg.
        LightweightString<char> message;
        bool latching = false;
        Style style = PushStyle;
    };

    explicit Button(const InitArgs& args);
    Button(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    Button(const Button& other) = default;
    Button(Button&& other) = default;
    Button& operator=(const Button& other) = default;
    Button& operator=(Button&& other) = default;
    ~Button() override;

    LightweightString<char> idstring() const override;

    // ---- Label and size
    void setString(const UIString& label);
    // Sets the label and makes the button as wide as the label needs.
    void setStringAuto(const UIString& label);
    const UIString& getString() const { return m_label; }
    // The width that shows the whole label in the given style.
    static uint16_t calcWidth(const UIString& label, Style style = PushStyle);
    void setStyle(Style style);
    Style getStyle() const { return static_cast<Style>((m_bits >> StyleShift) & 3u); }

    // ---- What a press does
    // Replaces the message to the owner by a call; an empty callback restores the message.
    void setCallback(WidgetCallback callback);
    void setMessage(const LightweightString<char>& message);
    LightweightString<char> getMessage() const;
    // Runs what a click runs. Answers whether the button is still alive afterwards.
    bool activate();

    // ---- State
    void setDown(bool down, eRedrawFlag redraw = Redraw);
    bool isDown() const { return hasBit(DownBit | HeldDownBit); }
    // A latching button stays down when clicked, and comes up at the next click.
    void setLatching(bool latching) { setBit(LatchingBit, latching); }
    bool isLatching() const { return hasBit(LatchingBit); }
    // While set, presses pass through to the widgets beneath (the parent).
    void setIgnoreMouseClicks(bool ignore) { setBit(IgnoreClicksBit, ignore); }
    bool ignoresMouseClicks() const { return hasBit(IgnoreClicksBit); }
    void setWantsFocus(bool wants) { setBit(NoFocusBit, !wants); }
    bool isHovered() const { return hasBit(HoverBit); }
    // Armed and with the pointer over it: a release now would activate it.
    bool isPressedNow() const { return hasBit(ArmedBit) && hasBit(InsideBit); }

    // ---- Colours
    // The colours of the down state, in place of the palette's highlight (selected list lines).
    void setDownCols(const Colour& back, const Colour& text);
    // The colour of the face as drawn now: down, normal or disabled.
    Colour getBackCol() const;
    Colour getTextCol() const;

    // ---- Radio groups (RadioSetBase): the group that hears this button's activations, or null.
    void setGroup(iButtonGroup* group);
    iButtonGroup* getGroup() const;

    // The default message to the owner when the button is activated.
    static constexpr const char* clickMsg = "button_clicked";

    // Called by the toolkit
    bool react(const Event& event) override;
    void drawBackground() override;
    void drawBorder() override;
    void drawText() override;
    void setActive(bool active, eRedrawFlag redraw = Redraw) override;
    bool acceptsFocus() const override;

protected:
    // Down for as long as a gesture the subclass tracks lasts (an open menu): isDown() answers true and the
    // face is drawn down, but a copy is not held.
    void setHeldDown(bool held, eRedrawFlag redraw = Redraw);
    // The look the face is drawn in now.
    StylePainter::ButtonState visualState() const;
    // The part of the button a subclass draws its content into (inside the face's edges).
    GlobBox contentBox() const;

private:
    enum Bit : uint16_t {
        DownBit = 1u << 0,
        LatchingBit = 1u << 1,
        IgnoreClicksBit = 1u << 2,
        NoFocusBit = 1u << 6,
        StyleShift = 8, // two bits of Style
        // Gesture bits, kept apart so that a copy drops them.
        HoverBit = 1u << 3,
        ArmedBit = 1u << 4,
        InsideBit = 1u << 5,
        HeldDownBit = 1u << 7,
    };
    static constexpr uint16_t gestureBits = HoverBit | ArmedBit | InsideBit | HeldDownBit;
    // The rare parts of a button.
    struct Extras {
        WidgetCallback callback;
        LightweightString<char> message;
        std::optional<Colour> downBack;
        std::optional<Colour> downText;
        // The group does not know a copy, so a copy starts outside any group.
        Transient<iButtonGroup*> group;
    };

    bool hasBit(uint16_t bit) const { return ((m_bits | *m_gesture) & bit) != 0; }
    // `bit` is either all kept bits or all gesture bits.
    void setBit(uint16_t bit, bool on)
    {
        uint16_t& word = (bit & gestureBits) ? *m_gesture : m_bits;
        word = static_cast<uint16_t>(on ? (word | bit) : (word & ~bit));
    }
    // Sets one drawn state, repainting only when it changed and the caller asks.
    void setShownBit(uint16_t bit, bool on, eRedrawFlag redrawFlag);
    void initFrom(const InitArgs& args);
    bool handleMouse(const Event& event);

    UIString m_label;
    ValuePtr<Extras> m_extras;
    uint16_t m_bits = 0;
    Transient<uint16_t> m_gesture;
};
