#pragma once
// Event: one plain value for every kind of input a widget receives (mouse, keys, focus) and for named messages.
// The platform layer fills in what it knows; the screen hit-tests, fills in the receiving widget's own
// coordinates (bottom-up: origin at the widget's bottom-left, y growing upward) and hands the event to `react`.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/XY.h"

#include <cstdint>

class Glob;

struct Event {
    enum Type : int {
        None = 0,
        MouseDown = 1,
        MouseUp = 2,
        MouseMove = 3, // the pointer moved with no button held
        MouseDrag = 4, // the pointer moved with a button held; goes to the widget that took the press
        MouseChord = 5, // a second button went down while another was held
        MouseWheel = 6,
        MouseEnter = 7, // the pointer came over the widget
        MouseLeave = 8,
        Key = 32, // a key press; `key` holds a character or one of the Key values
        FocusGained = 33,
        FocusLost = 34,
        Message = 16385, // a named message: `message` is the name, `sender` who sent it
    };

    // Mouse buttons are bits, so that a chord or the buttons held during a drag fit in one value.
    enum MouseButton : int {
        NoButton = 0,
        LeftButton = 1,
        RightButton = 2,
        MiddleButton = 4,
    };

    // Modifier key bits, as found in `modifiers`.
    enum Modifier : int {
        Cmd = 0x100000,
        Shift = 0x1000000,
        Ctrl = 0x2000000,
        Alt = 0x4000000,
        AnyModifier = Cmd | Shift | Ctrl | Alt,
    };

    // Keys that are not characters lie above the last Unicode code point, so they can never be mistaken for
    // typed text. The few control characters that editors treat as keys keep their ASCII values.
    enum KeyCode : int {
        KeyBackspace = 8,
        KeyTab = 9,
        KeyReturn = 13,
        KeyEscape = 27,
        KeyDelete = 127,
        FirstSpecialKey = 0x110000,
        KeyBackTab = FirstSpecialKey, // Shift+Tab arrives as this key, so hosts need not test modifiers
        KeyLeft,
        KeyRight,
        KeyUp,
        KeyDown,
        KeyHome,
        KeyEnd,
        KeyPageUp,
        KeyPageDown,
        KeyInsert,
        KeyF1,
        KeyF12 = KeyF1 + 11,
    };

    // Builders for the common shapes, so call sites read as what they make.
    static Event makeMouse(Type type, XY<int> pos, int button = LeftButton, int modifiers = 0);
    static Event makeKey(int key, int modifiers = 0);
    static Event makeMessage(LightweightString<char> name, Glob* sender);
    static Event makeFocus(bool gained);

    bool isMouse() const { return type >= MouseDown && type <= MouseLeave; }
    bool isKey() const { return type == Key; }
    bool isMessage() const { return type == Message; }
    bool isMessage(const char* name) const { return type == Message && message == name; }
    bool isDoubleClick() const { return type == MouseDown && clickCount >= 2; }
    bool isPress(int withButton = LeftButton) const { return type == MouseDown && button == withButton; }
    bool isRelease(int withButton = LeftButton) const { return type == MouseUp && button == withButton; }
    bool has(Modifier m) const { return (modifiers & m) != 0; }
    bool hasAnyModifier() const { return (modifiers & AnyModifier) != 0; }
    // A key that types a character (not a control character, not a special key).
    bool isPrintable() const { return type == Key && key >= 0x20 && key != KeyDelete && key < FirstSpecialKey; }

    int type = None;
    // MouseDown, MouseUp: the button that changed. Drag and chord: the buttons held. Others: 0.
    int button = NoButton;
    int modifiers = 0;
    // In the receiving widget's own bottom-up coordinates.
    XY<int> pos;
    // In the screen's bottom-up coordinates.
    XY<int> screenPos;
    // 1 for a single press, 2 for the second press of a double click, and so on.
    int clickCount = 0;
    // Wheel notches: positive away from the user (scroll up), negative towards.
    int wheelDelta = 0;
    // Key: a Unicode character or a KeyCode.
    int key = 0;
    // Message: the message's name.
    LightweightString<char> message;
    // Message: the widget that sent it, which may be null.
    Glob* sender = nullptr;
    // When the event happened, in milliseconds of the toolkit clock.
    double time = 0.0;
};
