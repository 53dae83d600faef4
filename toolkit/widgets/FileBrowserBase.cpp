#include "toolkit/widgets/FileBrowserBase.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/support/FileUtils.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/TableWidget.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <cwctype>
#include <filesystem>
#include <string>
#include <system_error>

namespace {

constexpr uint16_t standardWidth = 460;
constexpr uint16_t standardHeight = 380;
const char* const upMsg = "file_browser_up";
const char* const okMsg = "file_browser_ok";
const char* const cancelMsg = "file_browser_cancel";

const bool registeredByName = GlobManager::registerWidget<FileBrowserBase>("FileBrowserBase");

std::filesystem::path toFsPath(const LightweightString<wchar_t>& path)
{
    return std::filesystem::path(toUTF8(path.view()).str());
}

int64_t modifiedTime(const LightweightString<wchar_t>& path)
{
    std::error_code ec;
    const auto when = std::filesystem::last_write_time(toFsPath(path), ec);
    if (ec)
        return 0;
    const auto sys = std::chrono::file_clock::to_sys(when);
    return std::chrono::duration_cast<std::chrono::seconds>(sys.time_since_epoch()).count();
}

LightweightString<wchar_t> formatTime(int64_t seconds)
{
    if (seconds == 0)
        return {};
    const std::time_t t = static_cast<std::time_t>(seconds);
    std::tm local {};
    if (!localtime_r(&t, &local))
        return {};
    char text[32];
    const size_t n = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local);
    return fromUTF8(std::string_view(text, n));
}

// A folder path without a trailing separator (the root stays "/"), with "." and ".." resolved, so that going
// up always lands on the real parent.
LightweightString<wchar_t> normalise(const LightweightString<wchar_t>& folder)
{
    std::error_code ec;
    std::filesystem::path p = std::filesystem::absolute(toFsPath(folder), ec);
    if (ec)
        p = toFsPath(folder);
    std::string s = p.lexically_normal().string();
    while (s.size() > 1 && s.back() == '/')
        s.pop_back();
    return fromUTF8(s);
}

} // namespace

// ---------------------------------------------------------------------------------------------------------
// Construction

FileBrowserBase::InitArgs::InitArgs()
    : StandardPanel::InitArgs(UIString(L"Choose a folder"), standardWidth, standardHeight, CloseButton)
{
}

FileBrowserBase::InitArgs::InitArgs(UIString panelTitle, LightweightString<wchar_t> startFolder, uint16_t w,
                                    uint16_t h, const Palette& pal, Canvas* c)
    : StandardPanel::InitArgs(std::move(panelTitle), w ? w : standardWidth, h ? h : standardHeight, CloseButton, pal,
                              c)
    , folder(std::move(startFolder))
{
    resizable = true;
}

FileBrowserBase::InitArgs::InitArgs(const GlobCreationInfo& info) : StandardPanel::InitArgs(fromInfo(info))
{
    if (width == 0)
        width = standardWidth;
    if (height == 0)
        height = standardHeight;
    folder = SettingsReader(info.config).text("folder").value_or(folder);
    resizable = true;
}

FileBrowserBase::FileBrowserBase(const InitArgs& args) : StandardPanel(args), m_startFolder(args.folder)
{
    m_chooser = GlobWatch(args.chooser);
    init(args.options);
}

FileBrowserBase::FileBrowserBase(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : StandardPanel(width ? width : standardWidth, height ? height : standardHeight, palette, canvas)
{
}

// A copy is a new panel: it builds children of its own, starting in the folder the original shows.
FileBrowserBase::FileBrowserBase(const FileBrowserBase& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), StandardPanel(other),
      iTableAdaptor(other), m_startFolder(other.m_folder), m_chooser(other.m_chooser)
{
    if (other.m_table)
        init(other.m_options);
}

FileBrowserBase& FileBrowserBase::operator=(const FileBrowserBase& other)
{
    if (this != &other) {
        StandardPanel::operator=(other);
        m_startFolder = other.m_folder;
        m_chooser = other.m_chooser;
        if (other.m_table)
            init(other.m_options);
    }
    return *this;
}

FileBrowserBase::~FileBrowserBase()
{
    // The table asks this panel for rows; it must not outlive the adaptor part of it.
    if (m_table)
        m_table->setAdaptor(nullptr);
}

LightweightString<char> FileBrowserBase::idstring() const
{
    return "FileBrowserBase";
}

void FileBrowserBase::init(unsigned options)
{
    m_options = options;
    m_keys.clear();
    removeAllChildren();
    m_table = nullptr;
    m_up = m_ok = m_cancel = nullptr;

    TableWidget::InitArgs table(this, 10, 10, getPalette().makeChildPalette());
    table.editing = false;
    m_table = addWidget<TableWidget>(table, Glob::UserTopLeft(0, 0));
    if (m_options & Buttons) {
        auto make = [&](const wchar_t* label, const char* msg) {
            Button::InitArgs args(label, 0, 0, getPalette());
            args.message = msg;
            return addWidget<Button>(args, Glob::UserTopLeft(0, 0));
        };
        m_up = make(L"Up", upMsg);
        m_ok = make(L"OK", okMsg);
        m_cancel = make(L"Cancel", cancelMsg);
    }
    placeChildren();

    LightweightString<wchar_t> start = m_folder.empty() ? m_startFolder : m_folder;
    if (start.empty() || !setFolder(start))
        if (!setFolder(getUserDirectory()))
            setFolder(L"/");
}

void FileBrowserBase::setChooser(EventHandler* chooser)
{
    m_chooser = GlobWatch(dynamic_cast<Glob*>(chooser));
}

// ---------------------------------------------------------------------------------------------------------
// Layout

GlobBox FileBrowserBase::pathBox() const
{
    const GlobBox user = getUserArea();
    const int gap = UifStd::getWidgetGap();
    const int h = TableWidget::getDefaultRowHeight();
    return GlobBox(user.left() + gap, user.top() - gap - h, std::max(user.left() + gap, user.right() - gap),
                   user.top() - gap);
}

void FileBrowserBase::placeChildren()
{
    if (!m_table)
        return;
    const GlobBox user = getUserArea();
    const int gap = UifStd::getWidgetGap();
    const int buttonH = UifStd::getButtonHeight();
    const int bottom = user.bottom() + gap + (m_ok ? buttonH + gap : 0);
    const int top = pathBox().bottom() - gap;
    m_table->resize(std::max(1, user.width() - 2 * gap), std::max(1, top - bottom));
    m_table->setPos(user.left() + gap, bottom);
    if (m_ok) {
        m_up->setPos(user.left() + gap, user.bottom() + gap);
        int x = user.right() - gap;
        for (Button* b : {m_cancel, m_ok}) {
            x -= std::max<int>(b->getWidth(), 80);
            b->resize(std::max<int>(b->getWidth(), 80), buttonH);
            b->setPos(x, user.bottom() + gap);
            x -= gap;
        }
        m_up->resize(std::max<int>(m_up->getWidth(), 60), buttonH);
    }
}

void FileBrowserBase::reshape()
{
    StandardPanel::reshape();
    placeChildren();
}

// ---------------------------------------------------------------------------------------------------------
// Listing

bool FileBrowserBase::setFolder(const LightweightString<wchar_t>& folder)
{
    if (folder.empty() || !directoryExists(folder))
        return false;
    m_folder = normalise(folder);
    refresh();
    if (m_table) {
        m_table->setCurrentPosition(0, -1, TableWidget::PosRedraw);
        m_table->scrollTo(0);
    }
    return true;
}

void FileBrowserBase::refresh()
{
    m_entries.clear();
    std::vector<LightweightString<wchar_t>> names;
    const unsigned hidden = (m_options & ShowHidden) ? eDirHidden : 0u;
    m_readable = getDirectoryContents(m_folder, L"*", names, eDirFolders | hidden);
    for (const auto& name : names) {
        Entry e {name, true, modifiedTime(joinPaths(m_folder, name))};
        if (acceptEntry(e))
            m_entries.push_back(std::move(e));
    }
    if (m_readable && (m_options & ListFiles)) {
        names.clear();
        getDirectoryContents(m_folder, L"*", names, eDirFiles | hidden);
        for (const auto& name : names) {
            Entry e {name, false, modifiedTime(joinPaths(m_folder, name))};
            if (acceptEntry(e))
                m_entries.push_back(std::move(e));
        }
    }
    // People look for "Music" between "movies" and "notes", not after every lower-case name.
    auto byName = [](const Entry& a, const Entry& b) {
        if (a.folder != b.folder)
            return a.folder;
        return std::lexicographical_compare(a.name.begin(), a.name.end(), b.name.begin(), b.name.end(),
                                            [](wchar_t x, wchar_t y) { return std::towlower(static_cast<wint_t>(x))
                                                                           < std::towlower(static_cast<wint_t>(y)); });
    };
    std::stable_sort(m_entries.begin(), m_entries.end(), byName);
    if (m_table)
        m_table->rowsChanged(0);
    redraw();
}

bool FileBrowserBase::acceptEntry(const Entry&) const
{
    return true;
}

bool FileBrowserBase::goUp()
{
    if (m_folder == L"/" || m_folder.empty())
        return false;
    const LightweightString<wchar_t> from = stripPath(m_folder);
    if (!setFolder(getDirectory(m_folder)))
        return false;
    // Coming back up, the folder just left is the current row, so going down again is one key.
    for (size_t i = 0; i < m_entries.size(); ++i)
        if (m_entries[i].folder && m_entries[i].name == from) {
            setCurrentRow(static_cast<int>(i));
            break;
        }
    return true;
}

bool FileBrowserBase::enter(unsigned row)
{
    if (row >= m_entries.size() || !m_entries[row].folder)
        return false;
    return setFolder(joinPaths(m_folder, m_entries[row].name));
}

int FileBrowserBase::getCurrentRow() const
{
    return m_table ? m_table->getCurrentRow() : -1;
}

void FileBrowserBase::setCurrentRow(int row)
{
    if (m_table)
        m_table->setCurrentPosition(0, row);
}

// ---------------------------------------------------------------------------------------------------------
// Choosing

bool FileBrowserBase::canChoose(const Entry& entry) const
{
    return entry.folder || !(m_options & ChooseFolder);
}

LightweightString<wchar_t> FileBrowserBase::getSelectedPath() const
{
    const int row = getCurrentRow();
    if (row >= 0 && static_cast<size_t>(row) < m_entries.size()) {
        const Entry& e = m_entries[static_cast<size_t>(row)];
        if (canChoose(e))
            return joinPaths(m_folder, e.name);
    }
    // With no row that may be chosen, a folder browser chooses the folder shown; a file browser nothing.
    return (m_options & ChooseFolder) ? m_folder : LightweightString<wchar_t>();
}

bool FileBrowserBase::choose()
{
    const LightweightString<wchar_t> path = getSelectedPath();
    if (path.empty() || m_finished)
        return true;
    m_chosen = path;
    notifyAndClose(chosenMsg);
    return false;
}

void FileBrowserBase::cancel()
{
    if (!m_finished)
        notifyAndClose(cancelledMsg);
}

void FileBrowserBase::notifyAndClose(const char* msg)
{
    m_finished = true;
    GlobWatch self(this);
    Glob* target = m_chooser.get() ? m_chooser.get() : owner();
    if (target && !sendMsg(target, msg))
        return;
    if (self)
        Glob::destroy(this);
}

void FileBrowserBase::close()
{
    // The close button is a cancel: the owner must hear that no choice will come.
    cancel();
}

// ---------------------------------------------------------------------------------------------------------
// Table adaptor

const std::vector<LightweightString<char>>& FileBrowserBase::columnKeys()
{
    if (m_keys.empty())
        for (const auto& c : getColumnDefinitions())
            m_keys.push_back(c.getKey());
    return m_keys;
}

unsigned FileBrowserBase::getSize()
{
    return static_cast<unsigned>(m_entries.size());
}

std::vector<TableColumnDescription> FileBrowserBase::getColumnDefinitions()
{
    return {TableColumnDescription(UIString(ResId(10668)), "name").setResizeable(true),
            TableColumnDescription(UIString(L"Kind"), "kind", 70).setResizeable(true),
            TableColumnDescription(UIString(L"Modified"), "modified", 130)};
}

LightweightString<wchar_t> FileBrowserBase::getFieldText(unsigned row, unsigned col)
{
    if (row >= m_entries.size())
        return {};
    columnKeys();
    return col < m_keys.size() ? getEntryField(m_entries[row], m_keys[col]) : LightweightString<wchar_t>();
}

LightweightString<wchar_t> FileBrowserBase::getEntryField(const Entry& entry, const LightweightString<char>& key) const
{
    if (key == "name")
        return entry.folder ? entry.name + L"/" : entry.name;
    if (key == "kind")
        return entry.folder ? L"Folder" : L"File";
    if (key == "modified")
        return formatTime(entry.modified);
    return {};
}

bool FileBrowserBase::getFieldColours(unsigned row, unsigned, Colour& text, Colour&)
{
    if (row >= m_entries.size() || canChoose(m_entries[row]))
        return false;
    // Files in a folder browser are there to orient the user, not to be chosen.
    text = getPalette().disabledText();
    return true;
}

int FileBrowserBase::getTextStyle(unsigned row, unsigned col)
{
    // Folder names stand out; their other columns stay plain so that dates keep one width.
    const bool nameColumn = col < columnKeys().size() && m_keys[col] == "name";
    return row < m_entries.size() && m_entries[row].folder && nameColumn ? Bold : Plain;
}

// ---------------------------------------------------------------------------------------------------------
// Input and drawing

bool FileBrowserBase::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (name == upMsg) {
        goUp();
        return true;
    }
    if (name == okMsg || name == doItMsg) {
        choose();
        return true;
    }
    if (name == cancelMsg) {
        cancel();
        return true;
    }
    if (sender && sender == m_table) {
        if (name == TableWidget::rowDoubleClickedMsg && m_table->getCurrentRow() >= 0)
            enter(static_cast<unsigned>(m_table->getCurrentRow()));
        return true;
    }
    return StandardPanel::handleMessageEvent(name, sender);
}

bool FileBrowserBase::react(const Event& event)
{
    if (event.isKey() && !event.hasAnyModifier()) {
        switch (event.key) {
        case Event::KeyBackspace:
        case Event::KeyLeft:
            goUp();
            return true;
        case Event::KeyRight:
            if (getCurrentRow() >= 0)
                enter(static_cast<unsigned>(getCurrentRow()));
            return true;
        case Event::KeyReturn:
            choose();
            return true;
        case Event::KeyEscape:
            cancel();
            return true;
        default:
            break;
        }
    }
    return StandardPanel::react(event);
}

void FileBrowserBase::drawText()
{
    StandardPanel::drawText();
    const Palette& pal = getPalette();
    const Pictor::Font& font = UifStd::defaultFont();
    LightweightString<wchar_t> text = m_folder;
    if (!m_readable)
        text += L"  (cannot be read)";
    const GlobBox box = pathBox();
    painter().fillRect(box, pal.window(1));
    const int pad = TableWidget::cellPadding();
    const GlobBox textBox(box.left() + pad, box.bottom(), std::max(box.left() + pad, box.right() - pad), box.top());
    // A deep path loses its start, not its end: the folder the user is in is the part that matters.
    std::wstring shown(text.view());
    if (font.measureWidth(std::wstring_view(shown)) > textBox.width()) {
        size_t cut = 0;
        while (cut < shown.size()
               && font.measureWidth(L"\u2026" + shown.substr(cut)) > textBox.width())
            ++cut;
        shown = L"\u2026" + shown.substr(cut);
    }
    painter().drawTextInBox(std::wstring_view(shown), font, m_readable ? pal.text() : pal.warning(), textBox,
                            Pictor::TextAlign::Left, Pictor::textEllipsis);
}
