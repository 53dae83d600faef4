#pragma once
// OffscreenBackend: a screen with no display. It keeps what was presented (so tests and tools can look at
// it or save it as a PNG), remembers the cursor shape asked for, keeps a clipboard of its own, and delivers
// input queued on it at the next poll, in order, as a window would.

#include "toolkit/gfx/Image.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/XY.h"
#include "toolkit/ui/ScreenBackend.h"

#include <cstddef>
#include <string>
#include <vector>

class OffscreenBackend : public ScreenBackend {
public:
    OffscreenBackend() = default;

    // ---- ScreenBackend
    void attach(Screen& screen) override;
    bool pollEvents(Screen& screen) override;
    void waitForEvents(int) override { }
    void present(const Pictor::Image& image, const std::vector<GlobBox>& changed) override;
    void setCursorShape(int cursorId) override { m_cursor = cursorId; }
    LightweightString<wchar_t> getClipboardText() override { return m_clipboard; }
    void setClipboardText(const LightweightString<wchar_t>& text) override { m_clipboard = text; }

    // ---- Input for the next poll (bottom-up screen coordinates)
    void queueMouseButton(XY<int> pos, int button, bool down, int modifiers = 0);
    void queueMouseMove(XY<int> pos, int modifiers = 0);
    void queueMouseWheel(XY<int> pos, int notches, int modifiers = 0);
    void queueKey(int key, int modifiers = 0);
    void queueText(const LightweightString<wchar_t>& text);
    // The next poll answers false, as when the user closes a window.
    void requestClose() { m_closeRequested = true; }
    size_t numQueued() const { return m_queue.size(); }

    // ---- What was shown
    // The image as of the last present (it shares the screen's pixels, so it is current after any flush).
    const Pictor::Image& getPresented() const { return m_presented; }
    size_t getPresentCount() const { return m_presentCount; }
    const std::vector<GlobBox>& getLastChanged() const { return m_lastChanged; }
    int getCursorShape() const { return m_cursor; }
    // Writes the last presented image as a PNG; false when nothing was presented or the file failed.
    bool savePng(const std::string& utf8Path) const;

private:
    struct Input {
        enum Kind { Button, Move, Wheel, Key, Text } kind;
        XY<int> pos;
        int value = 0; // button, notches or key
        bool down = false;
        int modifiers = 0;
        LightweightString<wchar_t> text;
    };

    std::vector<Input> m_queue;
    Pictor::Image m_presented;
    std::vector<GlobBox> m_lastChanged;
    size_t m_presentCount = 0;
    int m_cursor = 0;
    bool m_closeRequested = false;
    LightweightString<wchar_t> m_clipboard;
};
