#pragma once
// StatusMessage: a small transient box of text on the screen (a hint, "Saved", "3 files skipped").
//
// It goes away by itself after its timeout, read from the toolkit clock (so tests move time instead of
// waiting), or at once when the user clicks it. While the pointer rests on it the time stands still, so a
// message being read is not taken away; the full timeout starts again when the pointer leaves.
// addMessage() appends a paragraph to an open message (the box grows upward, its bottom-left corner stays)
// and starts the time again. A timeout of 0 keeps the message until it is clicked.
//
// Subclasses may put widgets of their own in it (a "do not show again" check box): setFooterHeight reserves
// a strip at the bottom of the user area that the text keeps clear of, and clicks on such children go to
// them, not to the message. Messages from them that the subclass does not handle reach StatusMessage's
// handleMessageEvent, which ignores them.

#include "toolkit/support/BackgroundTasks.h"
#include "toolkit/ui/ClickTracker.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/Transient.h"

#include <cstdint>

class StatusMessage : public StandardPanel {
public:
    static constexpr double defaultTimeout = 6000.0;

    struct InitArgs : StandardPanel::InitArgs {
        InitArgs() = default;
        // A width of 0 is the standard message width; the height always follows the text.
        InitArgs(UIString messageText, uint16_t w = 0, double timeoutMs = defaultTimeout,
                 const Palette& pal = Palette(), Canvas* c = nullptr);
        InitArgs(const GlobCreationInfo& info);

        UIString text;
        double timeout = defaultTimeout;
    };

    explicit StatusMessage(const InitArgs& args);
    StatusMessage(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    // A copy shows the same text with its time started afresh; it watches its own time, so these are written
    // here rather than by the compiler.
    StatusMessage(const StatusMessage& other);
    StatusMessage(StatusMessage&& other) : StatusMessage(static_cast<const StatusMessage&>(other)) {}
    StatusMessage& operator=(const StatusMessage& other);
    StatusMessage& operator=(StatusMessage&& other) { return *this = static_cast<const StatusMessage&>(other); }

    LightweightString<char> idstring() const override;

    // Shows a new message as a top-level widget with its bottom-left corner at `bottomLeft` (kept on the
    // screen). Answers it, or null when there is no screen.
    static StatusMessage* make(const UIString& text, XY<int> bottomLeft, double timeoutMs = defaultTimeout);

    void addMessage(const UIString& text);
    const LightweightString<wchar_t>& getText() const { return m_content.text; }
    void setTimeout(double ms);
    double getTimeout() const { return m_content.timeout; }
    // Starts the time again from now.
    void restartTimer();
    void setFooterHeight(int height);

    // The height of a message of the given text and width, footer included.
    static int calcHeight(const LightweightString<wchar_t>& text, int width, int footer = 0);

    // Called by the toolkit
    bool react(const Event& event) override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void drawText() override;

private:
    void fitHeight();
    void startPolling();
    void poll();

    // What the message says and how long it stays: copied as one.
    struct Content {
        LightweightString<wchar_t> text;
        double timeout = defaultTimeout;
        int footer = 0;
    };
    // The pointer resting on the message, and a click on it in progress.
    struct Pointer {
        bool hover = false;
        ClickTracker click;
    };

    Content m_content;
    double m_shownAt = 0.0;
    Cv::ScopedBackgroundPoller m_poller;
    Transient<Pointer> m_pointer;
};
