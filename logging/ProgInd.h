#pragma once
// ProgInd: a small free-standing panel with a title and a gauge, for a task that reports its progress as
// a value in a range of its own. It can add the time it expects is left to the gauge's text.
//
// Updates are throttled: one arriving less than 11 ms after the last shown one is dropped, unless its value
// is 1.0, so a tight loop costs little and the final state always shows. The time left is smoothed: each new
// estimate is shown as the mean of it and the one before, so the text does not jump about.

#include "logging/ProgressReportClient.h"
#include "toolkit/ui/StandardPanel.h"

#include <cstdint>

class Gauge;

class ProgInd : public StandardPanel, public ProgressReportClient {
public:
    // `width` wide; `heightIgnored` is kept for older callers: the height is always calcHeight().
    ProgInd(const UIString& title, uint16_t width, uint16_t heightIgnored, const Palette& palette, double minimum,
            double maximum, bool poll);
    // 400 wide, range 0 to 1, letting background tasks run on each update.
    explicit ProgInd(const UIString& title);
    ProgInd(const ProgInd&) = delete;
    ProgInd& operator=(const ProgInd&) = delete;
    ~ProgInd() override;

    LightweightString<char> idstring() const override { return "ProgInd"; }

    // A 400-wide indicator shown centred over `parent`, or where the toolkit puts new windows.
    static ProgInd* make(const UIString& title, Glob* parent);
    // Title bar and border plus one table row.
    static int calcHeight();
    static int getHeight() { return calcHeight(); }

    void showTimeRemaining(bool on);
    void setBarColour(const Colour& colour);
    void update_progress(const LightweightString<wchar_t>& text, double value);
    void update_progress(const LightweightString<wchar_t>& text, double value, const Colour& colour);

    Gauge* getGauge() const { return m_gauge; }

    static constexpr int throttleMsecs = 11;

    // Called by the toolkit
    void handleProgressUpdate(const ProgressSnapshot& snapshot) override;

private:
    static constexpr uint32_t none = 0xFFFFFFFFu;

    void init(const UIString& title, bool poll, double minimum, double maximum);

    Gauge* m_gauge = nullptr;
    bool m_poll = false;
    double m_minimum = 0.0;
    double m_maximum = 1.0;
    double m_range = 1.0;
    bool m_showTimeRemaining = false;
    uint32_t m_startTime = 0;
    uint32_t m_lastEstimate = none;
    uint32_t m_lastUpdate = none;
};
