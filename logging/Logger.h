#pragma once
// Logger: a panel that shows a task's log as a table of coloured, word-wrapped lines, with an optional
// progress gauge under it and an optional row of buttons. Link lines open files, addresses or panels; a
// context menu copies, opens or reveals them; the log can be saved as a web page or as plain text, and
// written to a log file when the panel closes.
//
// Threads. Any thread may write (write(), the logger_* functions): lines go to the panel's TaskLog, which
// keeps the full log. The rows on screen are made only on the user-interface thread: a write from another
// thread is queued and the queue is drained there by one deferred call, in the order of arrival, so no line
// is lost and each thread's lines keep their order.
//
// Rows. The store is padded ahead with blank rows, so the table scrolls in jumps of half a page while a
// flood of lines arrives (fast scroll, on by default) instead of line by line; docs/logging.md has the rules.

#include "logging/LoggerBase.h"
#include "logging/detail/RowStore.h"
#include "toolkit/gfx/FontDesc.h"
#include "toolkit/support/Colour.h"
#include "toolkit/support/TaskLog.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/iTableAdaptor.h"

#include <memory>
#include <string>
#include <vector>

class Gauge;
class TableWidget;
namespace Pictor {
class Font;
}

class Logger : public StandardPanel, public LoggerBase, public iTableAdaptor {
public:
    // Bits of InitArgs::flags.
    enum Flags : unsigned {
        FirstFlag = 1,         // set by make_logger's first flag; kept for the caller
        ShowGauge = 4,         // a progress gauge one table row high under the table
        RevealLastRow = 8,     // start scrolled to the end; also a borderless table
        WindowColumn = 16,     // the column drawn on the window colour
        StandardWidgetsSet1 = 32,
        StandardWidgetsSet128 = 64,
        NotResizable = 128,
    };

    struct InitArgs : StandardPanel::InitArgs {
        // A width of 0 is 30 button heights.
        InitArgs(uint16_t visibleRows = 10, uint16_t logWidth = 0, unsigned logFlags = 0);

        uint16_t rows = 10;
        uint16_t logWidth = 0;
        unsigned flags = 0;
        std::vector<Button::InitArgs> buttons;
        // Written to in the system log folder when the panel closes; empty for no file.
        LightweightString<wchar_t> logFileName;
    };

    // One row of the store.
    struct LoggedItem {
        LightweightString<char> text; // UTF-8, one line
        eOutputType kind = eOutputType::Normal;
        uint16_t tag = 0;
        Colour textColour;
        Colour background;
        Pictor::FontDesc font;
        uint16_t displayLines = 1;
        uint16_t textWidth = 0;
    };

    explicit Logger(const InitArgs& args);
    // A copy would split the writers of one log between two panels.
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;
    ~Logger() override;

    LightweightString<char> idstring() const override { return "logger"; }

    static int getInitialHeight(unsigned rows, unsigned flags);

    // ---- Writing
    void write(const Item& item) override;
    using LoggerBase::write;
    // The gauge's measure and time text; starts, and at 1 ends, the clock of the task.
    void progress(double fraction);
    void set_new_title(const LightweightString<wchar_t>& title);
    // The font of ordinary rows written from now on.
    void setFont(const Pictor::FontDesc& font);
    void setFastScroll(bool on) { m_fastScroll = on; }
    void set_callback_who(Glob* callback);
    // Accepted for callers of older versions; the file names of exports are fixed.
    void setFilename(const LightweightString<wchar_t>&) { }
    void setFilename(const LightweightString<wchar_t>&, const LightweightString<wchar_t>&) { }
    void setButtonActive(size_t index, bool active, bool redraw = true);

    // ---- What is held
    TaskLog& getTaskLog() { return *m_taskLog; }
    unsigned getNumUsedRows() const { return m_usedRows; }
    // Rows in the store, blank reserve rows included.
    unsigned getStoreSize() const { return static_cast<unsigned>(m_store.size()); }
    const LoggedItem& getRow(unsigned index) const { return m_store[index]; }
    TableWidget* getTable() const { return m_table; }
    Gauge* getGauge() const { return m_gauge; }
    Button* getButton(size_t index) const { return index < m_buttons.size() ? m_buttons[index] : nullptr; }
    // Lines written from other threads that wait for the user-interface thread.
    size_t numQueuedLines() const;

    // ---- Links
    // What a left click on a link row does (also used by the context menu).
    void activateLink(const HyperLink& link, XY<int> screenPos);
    // The context menu of a row; answers the pop-up, or null when there is nothing to offer.
    Glob* reviewMenu(int row, XY<int> screenPos);

    // ---- Exports
    // The whole log (not just the rows on screen) as a web page.
    std::string makeHtml() const { return makeHtml(*m_taskLog); }
    static std::string makeHtml(const TaskLog& log);
    bool writeHtml(const LightweightString<wchar_t>& path) const;
    // Asks for a folder, then writes "TaskLog.html" there and says where.
    void exportHtml();
    // The rows of the store, one a line, to "log.txt" in the user's folder.
    bool saveToFile();
    bool writeRows(const LightweightString<wchar_t>& path) const;
    const LightweightString<wchar_t>& getLogFilePath() const { return m_logFilePath; }

    static constexpr const char* diedMsg = "logger_died";
    // The field type of the log column, whose editor handles link rows.
    static constexpr int logItemFieldType = 117;

    // Called by the toolkit
    void handleProgressUpdate(const ProgressSnapshot& snapshot) override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    bool handleMouseEvent(const Event& event) override;
    void reshape() override;
    XY<int> getMinSize() const override;
    unsigned getSize() override;
    int getRowHeight(unsigned row) override;
    LightweightString<wchar_t> getFieldText(unsigned row, unsigned col) override;
    bool getFieldColours(unsigned row, unsigned col, Colour& text, Colour& background) override;
    Pictor::FontDesc getFont(unsigned row, unsigned col) override;
    int getTextStyle(unsigned row, unsigned col) override;
    bool canWordWrap(unsigned row, unsigned col) override;
    std::vector<TableColumnDescription> getColumnDefinitions() override;

private:
    struct Queue;

    void handleLogAddition(const TaskLog::Entry& entry);
    void handleLogProgress(double fraction);
    void drainQueue();
    unsigned addItem(const TaskLog::Entry& entry);
    void addSpaceFor(unsigned lines);
    void addButtons(const std::vector<Button::InitArgs>& buttons);
    void layoutParts();
    // The panel's user area less the row of buttons.
    GlobBox getLogArea() const;
    int wrapWidth() const;
    LoggedItem blankRow() const;
    const Pictor::Font& measuringFont(const Pictor::FontDesc& desc);
    void writeOnClose();

    RowStore<LoggedItem> m_store;
    unsigned m_usedRows = 0;
    bool m_fastScroll = true;
    bool m_writeOnClose = false;
    bool m_windowColumn = false;
    XY<int> m_minSize;
    std::unique_ptr<TaskLog> m_taskLog;
    std::shared_ptr<Queue> m_queue;
    Cv::Ptr<Cv::Guard> m_additionGuard;
    Cv::Ptr<Cv::Guard> m_progressGuard;
    TableWidget* m_table = nullptr;
    Gauge* m_gauge = nullptr;
    double m_progressStart = 0.0;
    LightweightString<wchar_t> m_title;
    LightweightString<wchar_t> m_logFilePath;
    std::vector<Button*> m_buttons;
    GlobWatch m_callback;
    GlobWatch m_fileBrowser;
    Pictor::FontDesc m_font;
    std::vector<std::pair<Pictor::FontDesc, Cv::Ptr<Pictor::Font>>> m_fonts;
};
