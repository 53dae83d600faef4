#pragma once
// TextBoxBase: one line of editable text, the base of every text entry of the toolkit.
//
//   input (while focused)                  | text box does
//   ---------------------------------------+-----------------------------------------------------------------
//   printable character                    | replaces the selection (or inserts at the caret); characters not
//                                          | allowed, and any beyond the maximum length, are dropped
//   Left / Right (+Ctrl: by word)          | moves the caret; with Shift extends the selection
//   Home / End                             | caret to the start / end; with Shift extends the selection
//   Backspace / Delete (+Ctrl: by word)    | deletes the selection, or the character before / after the caret
//   Ctrl+A, Ctrl+C, Ctrl+X, Ctrl+V         | select all, copy, cut, paste (through the screen's clipboard)
//   Return                                 | commit, then returnPressed
//   Tab, Escape, Up, Down, Page keys       | not handled: passed on to the parents (and Tab moves the focus)
//   press / Shift+press / drag             | caret at the pointer / selection extended to it / selection follows
//   double click                           | selects the word under the pointer
//   focus lost                             | commit, when the text changed since the last commit; focusLost
//
// Commit: the subclass may correct the text first (a number box clamps it), then the text is proposed to the
// bound adaptor (ValWidget<wide text>) and the commit is reported. Typing alone changes only the box, so a
// value bound to it sees whole entries, never half-typed ones.
//
// Reports: each event (eCallbackEvent) goes either to the handler asked for with requestCallback, under the
// name given there, or, when none was asked for, to the owner under the box's own message name. Never both.
//
// Read-only boxes (setEditable(false)) still select and copy. An obfuscated box shows one bullet per
// character and refuses copy and cut. Text set from code (setString, a bound value) is shown as given and
// tells nobody.
//
// The caret blinks on the toolkit clock while the box has the focus, and is shown steadily for a moment after
// each edit or move so that it never vanishes while the user works.

#include "toolkit/gfx/FontUser.h"
#include "toolkit/support/BackgroundTasks.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/UIString.h"
#include "toolkit/support/ValuePtr.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/ui/Transient.h"
#include "toolkit/widgets/TextAlignment.h"
#include "toolkit/widgets/ValWidget.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

class TextBoxBase : public Glob,
                    public TabOrderable,
                    public ValWidget<LightweightString<wchar_t>>,
                    public Pictor::FontUser {
public:
    enum eCallbackEvent : int {
        eChanged = 1,       // the user changed the text (each keystroke, cut, paste)
        eReturnPressed = 2, // Return was pressed (after the commit it causes)
        eCommit = 3,        // Return, or focus lost after a change: the entry is finished
        eFocusLost = 4,     // the box lost the keyboard focus, changed or not
    };
    static constexpr int NumCallbackEvents = 5;

    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A height of 0 is the standard button height.
        InitArgs(LightweightString<wchar_t> initialText, uint16_t w, uint16_t h = 0, const Palette& pal = Palette(),
                 Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), text(std::move(initialText))
        {
        }
        // For boxes made by type name: the "text" setting (UTF-8) and "maxLength".
        InitArgs(const GlobCreationInfo& info);

        LightweightString<wchar_t> text;
        // 0: no limit.
        int maxLength = 0;
        // Empty: every printable character.
        LightweightString<wchar_t> allowedChars;
        TextAlignment alignment;
        bool editable = true;
    };

    explicit TextBoxBase(const InitArgs& args);
    TextBoxBase(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    // A copy shows the same text, options and selection; the entry in progress (a drag, the blink, edits
    // not yet committed) stays with the original.
    TextBoxBase(const TextBoxBase& other) = default;
    TextBoxBase(TextBoxBase&& other) = default;
    TextBoxBase& operator=(const TextBoxBase& other) = default;
    TextBoxBase& operator=(TextBoxBase&& other) = default;
    ~TextBoxBase() override;

    LightweightString<char> idstring() const override;

    // ---- Text
    LightweightString<wchar_t> getString() const { return LightweightString<wchar_t>(m_text); }
    // Shows the text as given (no filtering), caret at its end; tells nobody.
    void setString(const LightweightString<wchar_t>& text);
    const std::wstring& text() const { return m_text; }

    // ---- Options
    void setEditable(bool editable);
    bool isEditable() const { return hasBit(EditableBit); }
    // 0 or less: no limit. Text longer than a new limit is kept until the user edits it.
    void setMaxLength(int maxLength);
    int getMaxLength() const { return m_maxLength; }
    // The characters the user may type or paste; empty allows every printable character.
    void setAllowedChars(const LightweightString<wchar_t>& allowed);
    LightweightString<wchar_t> getAllowedChars() const;
    // Shown dimmed while the box is empty and does not have the focus.
    void setGhostLabel(const UIString& ghost);
    UIString getGhostLabel() const;
    void setObfuscatedDisplay(bool obfuscated);
    bool isObfuscated() const { return hasBit(ObfuscatedBit); }
    void setAlignment(TextAlignment alignment);
    TextAlignment getAlignment() const { return m_alignment; }

    // ---- Caret and selection (positions are character indices, 0..length)
    size_t getCaretPos() const { return m_caret; }
    // Moves the caret (clamped to the text); without `extend` the selection collapses onto it.
    void setCaretPos(size_t pos, bool extend = false);
    void setSelection(size_t anchor, size_t caret);
    void selectAll();
    bool hasSelection() const { return m_anchor != m_caret; }
    size_t selectionStart() const { return m_anchor < m_caret ? m_anchor : m_caret; }
    size_t selectionEnd() const { return m_anchor < m_caret ? m_caret : m_anchor; }
    LightweightString<wchar_t> getSelectedText() const;
    // Whether the caret is drawn at this moment (focused, editable, in the visible half of a blink).
    bool isCaretShown() const;

    // ---- Editing as the user does it: filtered, limited, and reported as eChanged. Each answers whether the
    // box is still alive afterwards (a report may destroy it).
    bool insertText(std::wstring_view typed);
    bool deleteSelection();
    // Answers false when there is nothing to copy or the box is obfuscated.
    bool copy();
    bool cut();
    bool paste();
    // Finishes the entry now (see the table above).
    bool commit();
    // The text as the user may type it: control characters and characters not allowed dropped, then cut to
    // what the maximum length leaves room for besides `keep` characters of the present text.
    std::wstring filterInput(std::wstring_view input, size_t keep) const;

    // ---- Reports
    // From now on `event` is reported to `target` as the message `msg` (an empty msg or null target goes
    // back to the owner's default message). A target that is a widget is watched and forgotten when it dies.
    void requestCallback(const LightweightString<char>& msg, EventHandler* target, eCallbackEvent event);

    static constexpr const char* changedMsg = "text_changed";
    static constexpr const char* returnPressedMsg = "ReturnPressed";
    static constexpr const char* commitMsg = "text_commit";
    static constexpr const char* focusLostMsg = "text_focus_lost";

    // ---- Geometry, in the box's own coordinates
    // Where the text is typed and drawn: the whole box, or less in a subclass with a legend.
    virtual GlobBox entryArea() const;
    // The x of the caret position `pos` on screen, and the caret position nearest to an x.
    double xForPos(size_t pos) const;
    size_t posForX(double x) const;
    // How far the text is scrolled left, in pixels.
    double getScrollOffset() const { return m_scroll; }

    // Called by the toolkit
    bool react(const Event& event) override;
    void drawBackground() override;
    void drawText() override;
    int contextCursor(const XY<int>& local) override;
    void setActive(bool active, eRedrawFlag redraw = Redraw) override;
    void reshape() override;
    bool acceptsFocus() const override { return isEnabledInTree(); }

protected:
    // Every key that reaches the box; answers whether it was handled. Subclasses that take keys over call
    // this for the ones they leave alone.
    virtual bool handleKey(const Event& event);
    // Called first in a commit: a subclass corrects the text here (through setString).
    virtual void prepareCommit() {}
    // Whether the user may type `c` (already known to be printable).
    virtual bool isCharAllowed(wchar_t c) const;
    void showValue(const LightweightString<wchar_t>& value, DataChangeType type) override;
    // Reports an event as the table at the top says. Answers whether the box is still alive.
    bool report(eCallbackEvent event);

private:
    enum Bit : uint16_t {
        EditableBit = 1u << 0,
        ObfuscatedBit = 1u << 1,
        // Gesture bits, kept apart so that a copy drops them.
        DirtyBit = 1u << 2,    // changed by the user since the last commit
        DraggingBit = 1u << 3, // a press is selecting
        CaretOnBit = 1u << 4,  // the caret was drawn in the last blink phase
    };
    static constexpr uint16_t gestureBits = DirtyBit | DraggingBit | CaretOnBit;
    // The rare parts of a text box.
    struct Extras {
        struct Callback {
            LightweightString<char> msg;
            EventHandler* target = nullptr;
            GlobWatch watch; // set when the target is a widget
            bool isWidget = false;
        };
        UIString ghost;
        LightweightString<wchar_t> allowed;
        std::array<Callback, NumCallbackEvents> callbacks;
    };
    // The caret's blinking while the box has the focus.
    struct Blink {
        Cv::ScopedBackgroundPoller poller;
        double start = 0.0;
    };

    bool hasBit(uint16_t bit) const { return ((m_bits | *m_gesture) & bit) != 0; }
    // `bit` is either all kept bits or all gesture bits.
    void setBit(uint16_t bit, bool on)
    {
        uint16_t& word = (bit & gestureBits) ? *m_gesture : m_bits;
        word = static_cast<uint16_t>(on ? (word | bit) : (word & ~bit));
    }
    void initFrom(const InitArgs& args);
    // What is drawn: the text, or a bullet per character.
    std::wstring displayText() const;
    double prefixWidth(size_t pos) const;
    // Replaces the selection by `text` (already filtered); answers whether alive.
    bool replaceSelection(const std::wstring& text);
    void ensureCaretVisible();
    void restartBlink();
    void startBlinking();
    void stopBlinking();
    void pollBlink();
    bool handleMouse(const Event& event);
    size_t wordStart(size_t pos) const;
    size_t wordEnd(size_t pos) const;
    void selectWordAt(size_t pos);

    std::wstring m_text;
    ValuePtr<Extras> m_extras;
    size_t m_caret = 0;
    size_t m_anchor = 0;
    double m_scroll = 0.0;
    int m_maxLength = 0;
    TextAlignment m_alignment;
    uint16_t m_bits = EditableBit;
    Transient<uint16_t> m_gesture;
    Transient<Blink> m_blink;
};
