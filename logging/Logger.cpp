#include "logging/Logger.h"

#include "logging/ProgressText.h"
#include "logging/detail/LiveLoggers.h"
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/ui/OsServices.h"
#include "toolkit/support/AtomicFile.h"
#include "toolkit/support/Clock.h"
#include "toolkit/support/FileUtils.h"
#include "toolkit/support/HTMLUtils.h"
#include "toolkit/support/JSON.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/support/OS.h"
#include "toolkit/support/Resources.h"
#include "toolkit/support/SystemWatchdog.h"
#include "toolkit/support/TextFile.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/FileBrowser.h"
#include "toolkit/widgets/Gauge.h"
#include "toolkit/widgets/StatusMessage.h"
#include "toolkit/widgets/TableWidget.h"

#include <algorithm>
#include <cmath>
#include <cwctype>
#include <limits>
#include <mutex>
#include <optional>

using eOutputType = LoggerBase::eOutputType;

// Lines and progress from other threads, waiting for the user-interface thread. Shared with the deferred
// call that drains it, which may run after the panel has gone (then `owner` is null).
struct Logger::Queue {
    std::mutex mutex;
    std::vector<TaskLog::Entry> lines;
    std::optional<double> progress;
    bool drainPosted = false;
    Logger* owner = nullptr; // read and written on the user-interface thread only
};

namespace {

constexpr int copyId = 10020;
constexpr int openId = 10078;
constexpr int saveToFileId = 10764;
constexpr int savedToId = 10819;
constexpr int chooseFolderId = 11201;
constexpr int revealId = 13259;
constexpr int saveAsWebPageId = 10765;

const Colour warningYellow(1.0, 1.0, 0.0);
const Colour successGreen(0.1, 0.7, 0.3);
const Colour exportWarning(0.6, 0.6, 0.0);
const Colour exportError(1.0, 0.0, 0.0);
const Colour exportSuccess(0.0, 0.8, 0.2);

bool wraps(eOutputType kind)
{
    return kind != eOutputType::HyperLink && kind != eOutputType::StatusLineNoWrap;
}

bool isStatus(eOutputType kind)
{
    return kind == eOutputType::StatusLine || kind == eOutputType::StatusLineNoWrap;
}

Pictor::FontDesc subheadingFont()
{
    return Pictor::getTitleFontDesc();
}

bool hasExtension(const LightweightString<wchar_t>& path, std::wstring_view upper)
{
    const LightweightString<wchar_t> ext = getExtension(path);
    if (ext.size() != upper.size() + 1)
        return false;
    for (size_t i = 0; i < upper.size(); ++i)
        if (static_cast<wchar_t>(std::towupper(static_cast<wint_t>(ext[i + 1]))) != upper[i])
            return false;
    return true;
}

LightweightString<wchar_t> joined(const std::vector<LightweightString<wchar_t>>& parts, bool fileNamesOnly)
{
    std::wstring out;
    for (size_t i = 0; i < parts.size(); ++i) {
        if (i)
            out += L',';
        out += (fileNamesOnly ? stripPath(parts[i]) : parts[i]).view();
    }
    return LightweightString<wchar_t>(std::move(out));
}

// What a link row shows: its description, or its targets when it has none.
LightweightString<char> linkText(std::string_view stored)
{
    const LoggerBase::HyperLink link = LoggerBase::HyperLink::fromString(fromUTF8(stored));
    return toUTF8((link.getDescription().empty() ? joined(link.getTargets(), false) : link.getDescription()).view());
}

// The lines of an entry as the web page shows them, each followed by a line feed.
void appendHtml(std::string& out, const TaskLog::Entry& entry)
{
    const std::string_view text = entry.text.view();
    switch (static_cast<eOutputType>(entry.kind)) {
    case eOutputType::Normal:
        if (text.empty())
            out += "<p>";
        else
            HTMLUtils::appendEscaped(out, text);
        break;
    case eOutputType::Warning: out += HTMLUtils::addColourTags(text, exportWarning); break;
    case eOutputType::Emphasis: out += HTMLUtils::addStyleTags(text, 2); break;
    case eOutputType::Error: out += HTMLUtils::addColourTags(text, exportError); break;
    case eOutputType::StatusLine:
    case eOutputType::StatusLineNoWrap:
        out += '\n';
        out += HTMLUtils::addStyleTags(text, 1);
        break;
    case eOutputType::Heading: out += HTMLUtils::addStyleTags(text, 1); break;
    case eOutputType::Success: out += HTMLUtils::addColourTags(text, exportSuccess); break;
    default: break; // unexported lines, links and unknown kinds leave an empty line
    }
    out += '\n';
}

// The editor of the log column: it opens over a link row when the row is pressed, so the release and any
// drag of that press come here.
class LogItemField : public Glob {
public:
    LogItemField(Logger& logger, unsigned row, XY<int> size)
        : Glob(static_cast<uint16_t>(size.x), static_cast<uint16_t>(size.y), logger.getPalette())
        , m_logger(&logger)
        , m_link(LoggerBase::HyperLink::fromString(fromUTF8(logger.getRow(row).text.view())))
    {
    }
    LightweightString<char> idstring() const override { return "LogItemField"; }

    bool handleMouseEvent(const Event& event) override
    {
        if (event.button != Event::LeftButton && event.type != Event::MouseDrag)
            return false;
        switch (event.type) {
        case Event::MouseDown:
            m_pressAt = event.screenPos;
            m_dragged = false;
            return true;
        case Event::MouseDrag: {
            const XY<int> moved = event.screenPos - m_pressAt;
            if (!m_dragged && std::max(std::abs(moved.x), std::abs(moved.y)) >= UifStd::getWidgetGap()
                && canDrag()) {
                m_dragged = true;
                OsServices::startFileDrag(m_link.getTargets());
            }
            return true;
        }
        case Event::MouseUp:
            if (!m_dragged)
                m_logger->activateLink(m_link, event.screenPos);
            return true;
        default: return false;
        }
    }
    void draw() override { } // the table draws the row underneath

private:
    bool canDrag() const
    {
        const auto& targets = m_link.getTargets();
        return !targets.empty()
            && std::none_of(targets.begin(), targets.end(), [](const auto& t) { return t.contains(L"|"); });
    }

    Logger* m_logger;
    LoggerBase::HyperLink m_link;
    XY<int> m_pressAt;
    bool m_dragged = false;
};

StandardPanel::InitArgs panelArgs(const Logger::InitArgs& args)
{
    StandardPanel::InitArgs panel = args;
    panel.width = args.logWidth ? args.logWidth : static_cast<uint16_t>(30 * UifStd::getButtonHeight());
    panel.height = static_cast<uint16_t>(Logger::getInitialHeight(args.rows, args.flags));
    panel.border = StandardPanel::RaisedBorder;
    panel.standardWidgets = StandardPanel::NoWidgets;
    if (args.flags & Logger::StandardWidgetsSet1)
        panel.standardWidgets |= StandardPanel::CloseButton;
    panel.resizable = !(args.flags & Logger::NotResizable);
    return panel;
}

// Our table's height styles are bits; the log shows no header, and a border only with flag 8.
int tableHeightStyle(unsigned flags)
{
    return TableWidget::HeightNoHeader | ((flags & Logger::RevealLastRow) ? 0 : TableWidget::HeightNoBorder);
}

} // namespace

Logger::InitArgs::InitArgs(uint16_t visibleRows, uint16_t width, unsigned logFlags)
    : rows(visibleRows)
    , logWidth(width)
    , flags(logFlags)
{
    palette = UifStd::getColourScheme();
}

int Logger::getInitialHeight(unsigned rows, unsigned flags)
{
    int height = rows ? TableWidget::calcHeight(rows, tableHeightStyle(flags)) : 0;
    if (flags & ShowGauge)
        height += (height ? 2 * UifStd::getWidgetGap() : 0) + TableWidget::getDefaultRowHeight();
    StandardPanel::InitArgs titled(UIString(L" "), 0, 0, StandardPanel::NoWidgets);
    return StandardPanel::calcPanelSize(0, height, titled).y;
}

Logger::Logger(const InitArgs& args)
    : StandardPanel(panelArgs(args))
    , m_taskLog(std::make_unique<TaskLog>())
    , m_queue(std::make_shared<Queue>())
    , m_font(UifStd::getDefaultFont())
{
    m_minSize = Glob::getSize();
    m_queue->owner = this;

    TableWidget::InitArgs tableArgs(this, getWidth(), 10, getPalette());
    tableArgs.showHeader = false;
    tableArgs.border = (args.flags & RevealLastRow) != 0;
    m_table = addWidget<TableWidget>(tableArgs, Glob::Absolute(0, 0));
    m_windowColumn = (args.flags & WindowColumn) != 0;
    m_table->refreshColumns();
    m_table->registerFieldEditor(logItemFieldType, [this](TableWidget&, unsigned row, unsigned, XY<int> size) -> Glob* {
        if (row >= m_store.size() || m_store[row].kind != eOutputType::HyperLink)
            return nullptr;
        return new LogItemField(*this, row, size);
    });
    if (args.flags & ShowGauge)
        m_gauge = addWidget<Gauge>(Gauge::InitArgs(getWidth(), static_cast<uint16_t>(TableWidget::getDefaultRowHeight()),
                                                   getPalette()),
                                   Glob::Absolute(0, 0));
    addButtons(args.buttons);
    if (args.flags & StandardWidgetsSet128) {
        getMenu()->addMenuItem(MenuItem(UIString(ResId(saveAsWebPageId), resFmtEllipsis), [this] { exportHtml(); }));
        getMenu()->addMenuItem(MenuItem(UIString(ResId(saveToFileId)), [this] { saveToFile(); }));
    }
    m_title = args.title.getString();
    setTitle(UIString(m_title));
    if (!args.logFileName.empty()) {
        m_writeOnClose = true;
        m_logFilePath = getSystemLogDirectory() + args.logFileName;
    }
    layoutParts();
    if (args.flags & RevealLastRow)
        m_table->setCurrentPosition(0, static_cast<int>(m_store.size()) - 1, TableWidget::PosAlignBottom);

    std::shared_ptr<Queue> queue = m_queue;
    m_additionGuard = m_taskLog->addAdditionListener(Cv::makeListener<TaskLog::Entry>([queue](const TaskLog::Entry& entry) {
        if (isMainThread()) {
            if (queue->owner)
                queue->owner->handleLogAddition(entry);
            return;
        }
        bool post = false;
        {
            std::lock_guard lock(queue->mutex);
            queue->lines.push_back(entry);
            post = !std::exchange(queue->drainPosted, true);
        }
        if (post)
            defer([queue] {
                if (queue->owner)
                    queue->owner->drainQueue();
            });
    }));
    m_progressGuard = m_taskLog->addProgressListener(Cv::makeListener<double>([queue](const double& fraction) {
        if (isMainThread()) {
            if (queue->owner)
                queue->owner->handleLogProgress(fraction);
            return;
        }
        bool post = false;
        {
            std::lock_guard lock(queue->mutex);
            queue->progress = fraction;
            post = !std::exchange(queue->drainPosted, true);
        }
        if (post)
            defer([queue] {
                if (queue->owner)
                    queue->owner->drainQueue();
            });
    }));
    LiveLoggers::add(this);
}

Logger::~Logger()
{
    // Other threads first: no call through the free functions, and no listener round, is left running.
    LiveLoggers::remove(this);
    m_additionGuard->release();
    m_progressGuard->release();
    drainQueue(); // lines already written belong in the log file
    m_queue->owner = nullptr;
    writeOnClose();
    if (Glob* callback = m_callback.get())
        sendMsg(callback, diedMsg);
    Glob::destroy(m_fileBrowser.get());
    m_buttons.clear();
}

// ---------------------------------------------------------------------------------------------------------
// Writing

void Logger::write(const Item& item)
{
    m_taskLog->add(item.text, static_cast<int>(item.kind), item.tag);
}

size_t Logger::numQueuedLines() const
{
    std::lock_guard lock(m_queue->mutex);
    return m_queue->lines.size();
}

void Logger::handleLogAddition(const TaskLog::Entry& entry)
{
    // Lines queued by other threads came first.
    drainQueue();
    addItem(entry);
    m_table->setCurrentPosition(0, static_cast<int>(m_usedRows) - 1, TableWidget::PosRedraw | TableWidget::PosReveal);
}

void Logger::handleLogProgress(double fraction)
{
    progress(fraction);
}

void Logger::drainQueue()
{
    std::vector<TaskLog::Entry> lines;
    std::optional<double> fraction;
    {
        std::lock_guard lock(m_queue->mutex);
        lines.swap(m_queue->lines);
        fraction = std::exchange(m_queue->progress, std::nullopt);
        m_queue->drainPosted = false;
    }
    for (const TaskLog::Entry& entry : lines)
        addItem(entry);
    if (!lines.empty() && m_table)
        m_table->setCurrentPosition(0, static_cast<int>(m_usedRows) - 1, TableWidget::PosRedraw | TableWidget::PosReveal);
    if (fraction)
        progress(*fraction);
}

Logger::LoggedItem Logger::blankRow() const
{
    LoggedItem row;
    row.textColour = getPalette().text();
    row.background = getPalette().window(3);
    row.font = UifStd::getDefaultFont();
    return row;
}

const Pictor::Font& Logger::measuringFont(const Pictor::FontDesc& desc)
{
    for (const auto& [known, font] : m_fonts)
        if (known == desc)
            return *font;
    m_fonts.emplace_back(desc, Pictor::loadFont(desc));
    return *m_fonts.back().second;
}

int Logger::wrapWidth() const
{
    return std::max(1, m_table->getColumnWidth(0) - 2 * TableWidget::cellPadding());
}

unsigned Logger::addItem(const TaskLog::Entry& entry)
{
    const std::string_view text = entry.text.view();
    std::vector<std::string_view> lines;
    for (size_t from = 0;;) {
        const size_t end = text.find('\n', from);
        lines.push_back(text.substr(from, end == std::string_view::npos ? std::string_view::npos : end - from));
        if (end == std::string_view::npos)
            break;
        from = end + 1;
    }
    addSpaceFor(static_cast<unsigned>(lines.size()));

    const auto kind = static_cast<eOutputType>(entry.kind);
    const Palette& palette = getPalette();
    Colour colour = palette.text();
    Pictor::FontDesc font = m_font;
    switch (kind) {
    case eOutputType::Warning: colour = warningYellow; break;
    case eOutputType::Emphasis: font = m_font.withStyle(m_font.style | Pictor::fontStyleItalic); break;
    case eOutputType::Error: colour = palette.warning(); break;
    case eOutputType::StatusLine:
    case eOutputType::Heading:
    case eOutputType::StatusLineNoWrap:
        colour = palette.subheadingText();
        font = subheadingFont();
        break;
    case eOutputType::Success: colour = successGreen; break;
    default: break;
    }
    const Pictor::Font& measurer = measuringFont(font);

    unsigned added = 0;
    for (const std::string_view line : lines) {
        if (m_usedRows == 0 && line.empty())
            continue;
        if (isStatus(kind) && m_usedRows > 0) {
            // The blank reserve row at the current index becomes the gap; the space row appended at the end
            // takes its place among the reserve rows.
            LoggedItem space = blankRow();
            space.text = " ";
            space.textColour = palette.subheadingText();
            space.font = subheadingFont();
            m_store.push_back(space);
            ++m_usedRows;
        }
        LoggedItem& row = m_store[m_usedRows];
        row.text = lines.size() == 1 ? entry.text : LightweightString<char>(line);
        row.kind = kind;
        row.tag = entry.tag;
        row.textColour = colour;
        row.background = palette.window(3);
        row.font = font;
        row.displayLines = 1;
        row.textWidth = 0;
        if (!line.empty()) {
            // A link row shows its description, not the string form it is kept in.
            std::string shown;
            const std::string_view measured
                = kind == eOutputType::HyperLink ? (shown = linkText(line).str(), std::string_view(shown)) : line;
            const double width = measurer.measureWidth(measured);
            row.textWidth = static_cast<uint16_t>(std::min(65535.0, std::ceil(width)));
            const int available = wrapWidth();
            if (width > available) {
                const int wrapped = WordWrappingTextRenderer::calcNumDisplayLines(measured, measurer, available);
                row.displayLines = static_cast<uint16_t>(std::clamp(wrapped, 1, 65535));
                m_table->rowsChanged(m_usedRows);
            }
        }
        ++m_usedRows;
        ++added;
    }
    return added;
}

void Logger::addSpaceFor(unsigned lines)
{
    if (m_store.size() == m_store.capacity())
        m_store.reserve(m_store.capacity() + std::max(256u, lines));
    const LoggedItem blank = blankRow();
    if (m_table) {
        unsigned step = 1;
        const int visible = m_table->getNumVisibleLines();
        if (m_fastScroll)
            step = visible < 2 ? 1 : static_cast<unsigned>(visible / 2);
        if (m_usedRows % step == 0) {
            m_store.resize(m_usedRows + step, blank);
            if (m_store.size() >= static_cast<size_t>(std::max(0, visible)))
                m_table->setCurrentPosition(0, static_cast<int>(m_store.size()) - 1,
                                            TableWidget::PosRedraw | TableWidget::PosAlignBottom);
        }
    }
    if (m_store.size() < m_usedRows + lines)
        m_store.resize(m_usedRows + lines, blank);
}

// ---------------------------------------------------------------------------------------------------------
// Progress, title and settings

void Logger::progress(double fraction)
{
    if (m_gauge) {
        const double now = service_get_msecs_precise();
        LightweightString<wchar_t> text;
        if (std::fabs(fraction) < 1e-6 || m_progressStart == 0.0) {
            // 0 means "not started", so a clock that reads 0 is taken as just after it.
            m_progressStart = std::max(now, std::numeric_limits<double>::min());
        } else {
            const double elapsed = now - m_progressStart;
            if (std::fabs(fraction - 1.0) < 1e-6) {
                text = ProgressText::finishedText(static_cast<int>(std::trunc((elapsed + 500.0) / 1000.0)));
                m_progressStart = 0.0;
            } else if (const std::optional<int> seconds = ProgressText::secondsRemaining(elapsed, fraction)) {
                text = ProgressText::remainingText(*seconds);
            }
        }
        m_gauge->setMeasure(fraction);
        m_gauge->setString(text);
        m_gauge->display();
    }
    SystemWatchdog::heartbeat();
}

void Logger::handleProgressUpdate(const ProgressSnapshot& snapshot)
{
    m_taskLog->setProgress(snapshot.fraction);
}

void Logger::set_new_title(const LightweightString<wchar_t>& title)
{
    m_title = title;
    setTitle(UIString(title));
    redraw(getTitleBarBox());
}

void Logger::setFont(const Pictor::FontDesc& font)
{
    m_font = font;
}

void Logger::set_callback_who(Glob* callback)
{
    m_callback = GlobWatch(callback);
}

void Logger::setButtonActive(size_t index, bool active, bool redraw)
{
    if (index < m_buttons.size())
        m_buttons[index]->setEnabled(active, redraw);
}

// ---------------------------------------------------------------------------------------------------------
// Layout

void Logger::addButtons(const std::vector<Button::InitArgs>& buttons)
{
    int x = 0;
    for (const Button::InitArgs& args : buttons) {
        Button* button = addWidget<Button>(args, Glob::BottomLeft(x, 0));
        x += button->getWidth() + UifStd::getWidgetGap();
        m_buttons.push_back(button);
    }
}

GlobBox Logger::getLogArea() const
{
    GlobBox area = getUserArea();
    if (!m_buttons.empty()) {
        const int raise = UifStd::getButtonHeight() + UifStd::getWidgetGap();
        area = GlobBox(area.left(), std::min(area.top(), area.bottom() + raise), area.right(), area.top());
    }
    return area;
}

void Logger::layoutParts()
{
    const GlobBox area = getLogArea();
    int bottom = area.bottom();
    if (m_gauge) {
        const int gap = UifStd::getWidgetGap();
        m_gauge->resize(area.width(), TableWidget::getDefaultRowHeight());
        m_gauge->setPos(area.left(), bottom + gap);
        bottom += m_gauge->getHeight() + 2 * gap;
    }
    m_table->resize(area.width(), std::max(0, area.top() - bottom));
    m_table->setPos(area.left(), bottom);
}

void Logger::reshape()
{
    StandardPanel::reshape();
    if (m_table)
        layoutParts();
}

XY<int> Logger::getMinSize() const
{
    return m_minSize;
}

// ---------------------------------------------------------------------------------------------------------
// The table's questions

unsigned Logger::getSize()
{
    return static_cast<unsigned>(m_store.size());
}

int Logger::getRowHeight(unsigned row)
{
    return m_store[row].displayLines * TableWidget::getDefaultRowHeight();
}

LightweightString<wchar_t> Logger::getFieldText(unsigned row, unsigned)
{
    const LoggedItem& item = m_store[row];
    return fromUTF8(item.kind == eOutputType::HyperLink ? linkText(item.text.view()).view() : item.text.view());
}

bool Logger::getFieldColours(unsigned row, unsigned, Colour& text, Colour& background)
{
    text = m_store[row].textColour;
    background = Colour(0, 0, 0, 0); // the column's
    return true;
}

Pictor::FontDesc Logger::getFont(unsigned row, unsigned)
{
    return m_store[row].font;
}

int Logger::getTextStyle(unsigned row, unsigned)
{
    return m_store[row].kind == eOutputType::HyperLink ? Underlined : Plain;
}

bool Logger::canWordWrap(unsigned row, unsigned)
{
    return wraps(m_store[row].kind);
}

std::vector<TableColumnDescription> Logger::getColumnDefinitions()
{
    TableColumnDescription column(UIString(), "log", 0);
    column.setResizeable(true).setFieldType(logItemFieldType).setEditable(true).setEditOnClick(true);
    if (m_windowColumn)
        column.setColour(getPalette().window(3));
    return { column };
}

// ---------------------------------------------------------------------------------------------------------
// Links and the context menu

void Logger::activateLink(const HyperLink& link, XY<int> screenPos)
{
    const auto& targets = link.getTargets();
    if (targets.empty())
        return;
    if (link.isInternal()) {
        const Cv::Ptr<JSON::Element> description = JSON::parse(targets.front());
        if (!description || description->getString("type").empty())
            return;
        GlobCreationInfo info;
        info.typeName = description->getString("type");
        info.pos = screenPos;
        info.palette = getPalette();
        if (const Cv::Ptr<JSON::Element> params = description->getChild("params"))
            for (size_t i = 0; i < params->getNumStringAttribs(); ++i)
                info.config.set(params->getStringAttribName(i), params->getString(i));
        if (Glob* made = GlobManager::createGlob(info)) {
            made->setPos(screenPos.x, screenPos.y);
            if (!GlobManager::realize(made))
                Glob::destroy(made);
        }
        return;
    }
    const LightweightString<wchar_t>& first = targets.front();
    if (hasExtension(first, L"HTML") || hasExtension(first, L"EDL") || first.startsWith(L"http:")
        || first.startsWith(L"www."))
        OsServices::openWithDefaultHandler(first);
    else
        OsServices::revealInFileBrowser(targets);
}

Glob* Logger::reviewMenu(int row, XY<int> screenPos)
{
    std::vector<MenuItem> items;
    if (row >= 0 && static_cast<unsigned>(row) < m_store.size() && m_store[row].kind == eOutputType::HyperLink) {
        const HyperLink link = HyperLink::fromString(fromUTF8(m_store[row].text.view()));
        if (!link.isInternal() && !link.getTargets().empty()) {
            const auto targets = link.getTargets();
            items.emplace_back(UIString(joined(targets, true)), WidgetCallback(), MenuItemGroupOpen);
            items.emplace_back(UIString(ResId(copyId)), [targets] { OsServices::setClipboardText(joined(targets, false)); });
            items.emplace_back(UIString(ResId(openId)), [targets] {
                for (const auto& target : targets)
                    OsServices::openWithDefaultHandler(target);
            });
            items.emplace_back(UIString(ResId(revealId)), [targets] { OsServices::revealInFileBrowser(targets); });
        }
    }
    if (items.empty() && m_usedRows > 0) {
        GlobWatch self(this);
        items.emplace_back(UIString(ResId(saveToFileId)), [self] {
            if (auto* logger = dynamic_cast<Logger*>(self.get()))
                logger->saveToFile();
        });
    }
    if (items.empty())
        return nullptr;
    return MenuGlob::popUp(MenuGlob::InitArgs(std::move(items)), screenPos, this);
}

bool Logger::handleMouseEvent(const Event& event)
{
    if (event.isPress(Event::RightButton) && m_table) {
        const XY<int> inTable = event.screenPos - m_table->getScreenPos();
        if (m_table->getLocalBox().contains(inTable)) {
            reviewMenu(m_table->rowAt(inTable), event.screenPos);
            return true;
        }
    }
    return StandardPanel::handleMouseEvent(event);
}

// ---------------------------------------------------------------------------------------------------------
// Exports

std::string Logger::makeHtml(const TaskLog& log)
{
    std::string out = "<pre>\n";
    log.forEach([&out](const TaskLog::Entry& entry) { appendHtml(out, entry); });
    out += "</pre>\n";
    return out;
}

bool Logger::writeHtml(const LightweightString<wchar_t>& path) const
{
    return Cv::writeFileAtomically(toUTF8(path.view()).str(), makeHtml());
}

void Logger::exportHtml()
{
    if (m_fileBrowser)
        return;
    FileBrowser* browser = FileBrowser::make(this, OS()->fileManager().getUserDirectory(), UIString(ResId(chooseFolderId)));
    m_fileBrowser = GlobWatch(browser);
}

bool Logger::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (sender && sender == m_fileBrowser.get()) {
        if (name == FileBrowserBase::chosenMsg) {
            const LightweightString<wchar_t> folder = static_cast<FileBrowserBase*>(sender)->getChosenPath();
            const LightweightString<wchar_t> path
                = Cv::FilespecUtils::makeValidFilespecNTFS(folder, L"TaskLog", L".html", L'_');
            if (writeHtml(path)) {
                LightweightString<wchar_t> text = resourceStrW(savedToId);
                const size_t at = text.find(L"$FILE$");
                if (at != LightweightString<wchar_t>::npos)
                    text.replace(at, 6, path.view());
                StatusMessage::make(UIString(text), getScreenPos());
            }
        }
        return true;
    }
    return StandardPanel::handleMessageEvent(name, sender);
}

bool Logger::writeRows(const LightweightString<wchar_t>& path) const
{
    TextFile file;
    for (size_t i = 0; i < m_store.size(); ++i)
        file.appendLine(m_store[i].text.view());
    return file.save(path, TextFile::eEOLNative);
}

bool Logger::saveToFile()
{
    return writeRows(Cv::FilespecUtils::makeValidFilespec(OS()->fileManager().getUserDirectory(), L"log", L".txt", L'_'));
}

void Logger::writeOnClose()
{
    if (!m_writeOnClose || m_logFilePath.empty())
        return;
    createDirectories(getSystemLogDirectory());
    writeRows(m_logFilePath);
}
