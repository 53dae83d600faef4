#include "toolkit/widgets/TableWidget.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/gfx/WordWrappingTextRenderer.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/ScrollBar.h"
#include "toolkit/widgets/TextBoxBase.h"
#include "toolkit/widgets/iTableAdaptor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>
#include <tuple>

// ---------------------------------------------------------------------------------------------------------
// Adaptor defaults

int iTableAdaptor::getRowHeight(unsigned)
{
    return TableWidget::getDefaultRowHeight();
}

bool iTableAdaptor::getFieldColours(unsigned, unsigned, Colour&, Colour&)
{
    return false;
}

Pictor::FontDesc iTableAdaptor::getFont(unsigned, unsigned)
{
    return UifStd::getDefaultFont();
}

int iTableAdaptor::getTextStyle(unsigned, unsigned)
{
    return Plain;
}

bool iTableAdaptor::canWordWrap(unsigned, unsigned)
{
    return true;
}

bool iTableAdaptor::setFieldText(unsigned, unsigned, const LightweightString<wchar_t>&)
{
    return false;
}

namespace {

// Near enough to a column edge to grip it.
constexpr int edgeGrip = 3;

const bool registeredByName = GlobManager::registerWidget<TableWidget>("TableWidget");

const Pictor::Font& fontFor(const Pictor::FontDesc& desc)
{
    // loadFont shares fonts already, but the table asks for one per visible cell on every paint, and a
    // small cache of its own spares the look-up.
    static std::map<std::tuple<std::string, int, int>, Cv::Ptr<Pictor::Font>> cache;
    auto key = std::make_tuple(desc.name.str(), desc.size, static_cast<int>(desc.style));
    auto it = cache.find(key);
    if (it == cache.end())
        it = cache.emplace(key, Pictor::loadFont(desc)).first;
    return *it->second;
}

} // namespace

// ---------------------------------------------------------------------------------------------------------
// Row index: running totals of row heights, one per block of rows.
//
// blockEnds[b] is the distance from the top of row 0 to the bottom of block b. Totals are computed in order,
// only as far as something needs them, and dropped from the first changed block on; so appending rows (a log)
// re-measures only the last block, and a uniform table never measures more than one row.

struct TableWidget::RowIndex {
    static constexpr unsigned blockRows = 64;

    iTableAdaptor* adaptor = nullptr;
    unsigned count = 0;
    bool uniform = false;
    int uniformHeight = 1;
    std::vector<int64_t> blockEnds;

    int height(unsigned row) const
    {
        if (uniform)
            return uniformHeight;
        return std::max(1, adaptor->getRowHeight(row));
    }

    void reset(iTableAdaptor* a, unsigned n)
    {
        adaptor = a;
        count = a ? n : 0;
        uniform = a && a->hasUniformRowHeights();
        uniformHeight = uniform && count > 0 ? std::max(1, a->getRowHeight(0)) : 1;
        blockEnds.clear();
    }

    void invalidateFrom(unsigned row) { blockEnds.resize(std::min<size_t>(blockEnds.size(), row / blockRows)); }

    unsigned numBlocks() const { return (count + blockRows - 1) / blockRows; }

    // Totals of blocks 0..block are known afterwards.
    void ensureBlock(unsigned block)
    {
        block = std::min(block, numBlocks() - 1);
        while (blockEnds.size() <= block) {
            const unsigned b = static_cast<unsigned>(blockEnds.size());
            int64_t sum = b > 0 ? blockEnds[b - 1] : 0;
            const unsigned end = std::min(count, (b + 1) * blockRows);
            for (unsigned r = b * blockRows; r < end; ++r)
                sum += height(r);
            blockEnds.push_back(sum);
        }
    }

    int64_t total()
    {
        if (count == 0)
            return 0;
        if (uniform)
            return static_cast<int64_t>(count) * uniformHeight;
        ensureBlock(numBlocks() - 1);
        return blockEnds.back();
    }

    int64_t top(unsigned row)
    {
        if (row >= count)
            return total();
        if (uniform)
            return static_cast<int64_t>(row) * uniformHeight;
        const unsigned b = row / blockRows;
        int64_t y = 0;
        if (b > 0) {
            ensureBlock(b - 1);
            y = blockEnds[b - 1];
        }
        for (unsigned r = b * blockRows; r < row; ++r)
            y += height(r);
        return y;
    }

    // The row whose span holds y (y below 0 gives row 0, past the end the last row); count must be > 0.
    unsigned rowAtY(int64_t y)
    {
        if (y <= 0)
            return 0;
        if (uniform)
            return static_cast<unsigned>(std::min<int64_t>(count - 1, y / uniformHeight));
        if (y >= total())
            return count - 1;
        const auto it = std::upper_bound(blockEnds.begin(), blockEnds.end(), y);
        const unsigned b = static_cast<unsigned>(it - blockEnds.begin());
        int64_t rowTop = b > 0 ? blockEnds[b - 1] : 0;
        const unsigned end = std::min(count, (b + 1) * blockRows);
        for (unsigned r = b * blockRows; r < end; ++r) {
            const int h = height(r);
            if (y < rowTop + h)
                return r;
            rowTop += h;
        }
        return end - 1;
    }
};

// Editor factories by field type; made only for tables whose owners register any.
struct TableWidget::Editors {
    std::map<int, FieldEditorFactory> factories;
};

// ---------------------------------------------------------------------------------------------------------
// Construction

TableWidget::TableWidget(const InitArgs& args) : Glob(args)
{
    build(args);
}

TableWidget::TableWidget(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height, palette, canvas)
{
    build(InitArgs(nullptr, width, height, palette, canvas));
}

TableWidget::TableWidget(const TableWidget& other)
    : EventHandler(other)
    , Cv::InternalRefCount(other)
    , iVirtual(other)
    , iObject(other)
    , Glob(other)
    , TabOrderable(other)
{
    build(InitArgs(nullptr, other.getWidth(), other.getHeight(), other.getPalette()));
    showLike(other);
}

TableWidget& TableWidget::operator=(const TableWidget& other)
{
    if (this != &other) {
        closeEditor();
        Glob::operator=(other);
        showLike(other);
    }
    return *this;
}

void TableWidget::showLike(const TableWidget& other)
{
    m_showHeader = other.m_showHeader;
    m_border = other.m_border;
    m_highlightCurrent = other.m_highlightCurrent;
    m_editingEnabled = other.m_editingEnabled;
    m_editors = other.m_editors ? std::make_unique<Editors>(*other.m_editors) : nullptr;
    setAdaptor(other.m_adaptor);
    m_columns = other.m_columns;
    m_currentRow = other.m_currentRow;
    m_currentCol = other.m_currentCol;
    m_scroll = other.m_scroll;
    reshape();
}

TableWidget::~TableWidget() = default;

LightweightString<char> TableWidget::idstring() const
{
    return "TableWidget";
}

void TableWidget::build(const InitArgs& args)
{
    m_rows = std::make_unique<RowIndex>();
    m_showHeader = args.showHeader;
    m_border = args.border;
    m_highlightCurrent = args.highlightCurrentRow;
    m_editingEnabled = args.editing;
    ScrollBar::InitArgs bar(1, 0, getPalette());
    m_scrollBar = addWidget<ScrollBar>(bar, Glob::BottomLeft(0, 0));
    setAdaptor(args.adaptor);
    reshape();
}

// ---------------------------------------------------------------------------------------------------------
// Sizes

int TableWidget::getDefaultRowHeight()
{
    static const int height = [] {
        const Pictor::Font& font = fontFor(UifStd::getDefaultFont());
        return std::max(UifStd::getButtonHeight() - 4, static_cast<int>(std::ceil(font.lineHeight())) + 4);
    }();
    return height;
}

int TableWidget::calcHeight(unsigned rows, int style)
{
    int h = static_cast<int>(std::min<unsigned>(rows, 2000)) * getDefaultRowHeight();
    if (!(style & HeightNoHeader))
        h += getDefaultRowHeight();
    if (!(style & HeightNoBorder))
        h += 2;
    return std::min(h, 65535);
}

int TableWidget::calcWrappedRowHeight(std::wstring_view text, const Pictor::FontDesc& font, int cellWidth)
{
    const Pictor::Font& f = fontFor(font);
    const int lines = WordWrappingTextRenderer::calcNumDisplayLines(text, f, cellWidth - 2 * cellPadding());
    const int lineH = static_cast<int>(std::ceil(f.lineHeight()));
    return std::max(getDefaultRowHeight(), lines * lineH + 4);
}

// ---------------------------------------------------------------------------------------------------------
// Adaptor and columns

void TableWidget::setAdaptor(iTableAdaptor* adaptor)
{
    closeEditor();
    m_adaptor = adaptor;
    m_rows->reset(adaptor, adaptor ? adaptor->getSize() : 0);
    m_columns = adaptor ? adaptor->getColumnDefinitions() : std::vector<TableColumnDescription>();
    m_currentRow = -1;
    m_currentCol = 0;
    m_scroll = 0;
    updateScrollBar();
    redraw();
}

void TableWidget::refreshColumns()
{
    closeEditor();
    m_columns = m_adaptor ? m_adaptor->getColumnDefinitions() : std::vector<TableColumnDescription>();
    m_currentCol = std::clamp(m_currentCol, 0, std::max(0, static_cast<int>(m_columns.size()) - 1));
    redraw();
}

void TableWidget::setColumnWidth(unsigned col, uint16_t width)
{
    if (col >= m_columns.size())
        return;
    m_columns[col].setWidth(std::max<uint16_t>(width, minColumnWidth));
    closeEditor();
    redraw();
}

std::vector<int> TableWidget::layoutColumns(const std::vector<TableColumnDescription>& columns, int width)
{
    std::vector<int> edges(columns.size() + 1, 0);
    int fixed = 0;
    int fills = 0;
    for (const auto& c : columns) {
        if (c.getWidth() == 0)
            ++fills;
        else
            fixed += std::max<int>(c.getWidth(), minColumnWidth);
    }
    const int spare = std::max(0, width - fixed);
    int filled = 0;
    for (size_t i = 0; i < columns.size(); ++i) {
        int w = columns[i].getWidth();
        if (w == 0) {
            // Share what is left; the last fill column takes the remainder so the row ends flush.
            ++filled;
            w = filled == fills ? spare - (spare / fills) * (fills - 1) : spare / fills;
        }
        edges[i + 1] = edges[i] + std::max(w, minColumnWidth);
    }
    return edges;
}

int TableWidget::getColumnLeft(unsigned col) const
{
    const auto edges = layoutColumns(m_columns, getRowsBox().width());
    return getRowsBox().left() + (col < m_columns.size() ? edges[col] : edges.back());
}

int TableWidget::getColumnWidth(unsigned col) const
{
    if (col >= m_columns.size())
        return 0;
    const auto edges = layoutColumns(m_columns, getRowsBox().width());
    return edges[col + 1] - edges[col];
}

int TableWidget::columnAt(int x) const
{
    const GlobBox rows = getRowsBox();
    if (x < rows.left() || x >= rows.right())
        return -1;
    const auto edges = layoutColumns(m_columns, rows.width());
    for (size_t i = 0; i + 1 < edges.size(); ++i)
        if (x - rows.left() < edges[i + 1])
            return static_cast<int>(i);
    return -1;
}

// ---------------------------------------------------------------------------------------------------------
// Rows

void TableWidget::syncRows()
{
    if (m_adaptor && !treeAlive()) {
        // The adaptor is usually the panel around the table, and a panel being destroyed has already lost
        // its adaptor part by the time its children go: an editor committing on its way out must not reach it.
        m_adaptor = nullptr;
        m_rows->reset(nullptr, 0);
        m_editRow = m_editCol = -1;
        return;
    }
    const unsigned n = m_adaptor ? m_adaptor->getSize() : 0;
    if (n == m_rows->count)
        return;
    const unsigned from = std::min(n, m_rows->count);
    if (m_rows->count == 0 || n == 0)
        m_rows->reset(m_adaptor, n);
    else {
        m_rows->count = n;
        m_rows->invalidateFrom(from);
    }
    if (m_currentRow >= static_cast<int>(n))
        m_currentRow = static_cast<int>(n) - 1;
    if (m_editRow >= static_cast<int>(n))
        closeEditor();
    m_scroll = std::clamp<int64_t>(m_scroll, 0, getMaxScroll());
    updateScrollBar();
    redraw();
}

void TableWidget::rowsChanged(unsigned firstRow)
{
    syncRows();
    if (firstRow == 0)
        m_rows->reset(m_adaptor, m_rows->count);
    else
        m_rows->invalidateFrom(firstRow);
    m_scroll = std::clamp<int64_t>(m_scroll, 0, getMaxScroll());
    updateScrollBar();
    redraw();
}

bool TableWidget::treeAlive() const
{
    for (const Glob* g = this; g; g = g->parent())
        if (!is_good_glob_ptr(g))
            return false;
    return true;
}

unsigned TableWidget::getNumRows()
{
    syncRows();
    return m_rows->count;
}

int64_t TableWidget::getRowTop(unsigned row)
{
    syncRows();
    return m_rows->top(row);
}

int TableWidget::getRowHeight(unsigned row)
{
    syncRows();
    return row < m_rows->count ? m_rows->height(row) : 0;
}

int64_t TableWidget::getContentHeight()
{
    syncRows();
    return m_rows->total();
}

int TableWidget::rowAt(XY<int> local)
{
    const GlobBox rows = getRowsBox();
    if (!rows.contains(local) || getNumRows() == 0)
        return -1;
    const int64_t y = m_scroll + (rows.top() - 1 - local.y);
    if (y >= m_rows->total())
        return -1;
    return static_cast<int>(m_rows->rowAtY(y));
}

GlobBox TableWidget::getCellBox(unsigned row, unsigned col)
{
    const GlobBox rows = getRowsBox();
    const int64_t top = rows.top() - (getRowTop(row) - m_scroll);
    const int64_t bottom = top - getRowHeight(row);
    const int left = getColumnLeft(col);
    auto clampInt = [](int64_t v) { return static_cast<int>(std::clamp<int64_t>(v, -1000000, 1000000)); };
    return GlobBox(left, clampInt(bottom), left + getColumnWidth(col), clampInt(top));
}

GlobBox TableWidget::getHeaderBox() const
{
    if (!m_showHeader)
        return {};
    const int b = m_border ? 1 : 0;
    const int top = getHeight() - b;
    return GlobBox(b, std::max(b, top - getDefaultRowHeight()), std::max(b, getWidth() - b), top);
}

GlobBox TableWidget::getRowsBox() const
{
    const int b = m_border ? 1 : 0;
    const int top = m_showHeader ? getHeaderBox().bottom() : getHeight() - b;
    const int right = std::max(b, getWidth() - b - (m_scrollBar ? m_scrollBar->getWidth() : 0));
    return GlobBox(b, b, right, std::max(b, top));
}

// ---------------------------------------------------------------------------------------------------------
// Current row

void TableWidget::setCurrentPosition(int col, int row, int flags)
{
    syncRows();
    const int n = static_cast<int>(m_rows->count);
    row = n == 0 || row < 0 ? -1 : std::min(row, n - 1);
    col = std::clamp(col, 0, std::max(0, static_cast<int>(m_columns.size()) - 1));
    if (row != m_editRow || col != m_editCol)
        closeEditor();
    const bool changed = row != m_currentRow || col != m_currentCol;
    m_currentRow = row;
    m_currentCol = col;
    if (row >= 0 && (flags & PosAlignBottom)) {
        const int64_t bottom = m_rows->top(static_cast<unsigned>(row)) + m_rows->height(static_cast<unsigned>(row));
        scrollTo(bottom - getViewHeight());
    } else if (row >= 0 && (flags & PosReveal)) {
        ensureRowVisible(static_cast<unsigned>(row));
    }
    if (changed && (flags & PosRedraw))
        redraw();
}

bool TableWidget::userSetCurrent(int col, int row)
{
    const int before = m_currentRow;
    setCurrentPosition(col, row, PosRedraw | PosReveal);
    if (m_currentRow == before)
        return true;
    return callMsg(currentRowChangedMsg);
}

// ---------------------------------------------------------------------------------------------------------
// Scrolling

int64_t TableWidget::getMaxScroll()
{
    return std::max<int64_t>(0, getContentHeight() - getViewHeight());
}

int TableWidget::getNumVisibleLines() const
{
    return getViewHeight() / getDefaultRowHeight();
}

int TableWidget::getFirstVisibleRow()
{
    if (getNumRows() == 0)
        return -1;
    return static_cast<int>(m_rows->rowAtY(m_scroll));
}

bool TableWidget::scrollTo(int64_t offset)
{
    const int64_t clamped = std::clamp<int64_t>(offset, 0, getMaxScroll());
    if (clamped == m_scroll)
        return false;
    // An editor left floating over rows that moved would edit the wrong cell: what was typed is kept.
    if (auto* entry = dynamic_cast<TextBoxBase*>(m_editor.get())) {
        const GlobWatch self(this);
        commitEdit(entry->getString());
        if (!self)
            return true;
    } else if (isEditing()) {
        closeEditor();
    }
    m_scroll = clamped;
    updateScrollBar();
    redraw(getRowsBox());
    return true;
}

void TableWidget::ensureRowVisible(unsigned row)
{
    if (row >= getNumRows())
        return;
    const int64_t top = m_rows->top(row);
    const int64_t bottom = top + m_rows->height(row);
    const int view = getViewHeight();
    if (top < m_scroll || bottom - top > view)
        scrollTo(top);
    else if (bottom > m_scroll + view)
        scrollTo(bottom - view);
}

unsigned TableWidget::rowsInPageFrom(unsigned row)
{
    const unsigned n = getNumRows();
    if (row >= n)
        return n == 0 ? 0 : n - 1;
    int64_t used = m_rows->height(row);
    unsigned last = row;
    while (last + 1 < n) {
        const int h = m_rows->height(last + 1);
        if (used + h > getViewHeight())
            break;
        used += h;
        ++last;
    }
    return last;
}

void TableWidget::updateScrollBar()
{
    if (!m_scrollBar)
        return;
    const int64_t total = m_rows->total();
    const int view = getViewHeight();
    if (total <= view || total <= 0) {
        m_scrollBar->setThumbSize(1.0);
        m_scrollBar->setThumbPos(0.0);
        return;
    }
    m_scrollBar->setThumbSize(static_cast<double>(view) / static_cast<double>(total));
    m_scrollBar->setThumbPos(static_cast<double>(m_scroll) / static_cast<double>(total));
}

void TableWidget::reshape()
{
    if (m_scrollBar) {
        const GlobBox rows = getRowsBox();
        const int b = m_border ? 1 : 0;
        m_scrollBar->resize(m_scrollBar->getWidth(), std::max(1, rows.height()));
        m_scrollBar->setPos(getWidth() - b - m_scrollBar->getWidth(), b);
    }
    closeEditor();
    m_scroll = std::clamp<int64_t>(m_scroll, 0, getMaxScroll());
    updateScrollBar();
    redraw();
}

// ---------------------------------------------------------------------------------------------------------
// Editing

void TableWidget::registerFieldEditor(int fieldType, FieldEditorFactory factory)
{
    if (!m_editors)
        m_editors = std::make_unique<Editors>();
    if (factory)
        m_editors->factories[fieldType] = std::move(factory);
    else
        m_editors->factories.erase(fieldType);
}

void TableWidget::setEditingEnabled(bool enabled)
{
    if (!enabled)
        closeEditor();
    m_editingEnabled = enabled;
}

bool TableWidget::isCellEditable(unsigned row, unsigned col)
{
    return m_editingEnabled && row < getNumRows() && m_adaptor && col < m_columns.size()
        && m_columns[col].isEditable();
}

bool TableWidget::isEditing() const
{
    return m_editRow >= 0;
}

Glob* TableWidget::getEditor() const
{
    return m_editor.get();
}

bool TableWidget::beginEdit(unsigned row, unsigned col)
{
    if (!isCellEditable(row, col))
        return false;
    if (isEditing()) {
        if (m_editRow == static_cast<int>(row) && m_editCol == static_cast<int>(col))
            return true;
        closeEditor();
    }
    if (m_currentRow != static_cast<int>(row) || m_currentCol != static_cast<int>(col))
        setCurrentPosition(static_cast<int>(col), static_cast<int>(row), PosRedraw | PosReveal);
    else
        ensureRowVisible(row);

    const TableColumnDescription& column = m_columns[col];
    const GlobBox cell = getCellBox(row, col).intersection(getRowsBox());
    if (cell.empty())
        return false;
    const int type = column.getFieldType();
    const LightweightString<wchar_t> text = m_adaptor->getFieldText(row, col);

    Glob* editor = nullptr;
    if (m_editors && m_editors->factories.count(type)) {
        editor = m_editors->factories[type](*this, row, col, cell.size());
    } else if (type == TableColumnDescription::BoolField) {
        Checkbox::InitArgs args(UIString(), TableColumnDescription::textToBool(text), Checkbox::BoxFirst,
                                static_cast<uint16_t>(cell.width()), static_cast<uint16_t>(cell.height()),
                                getPalette());
        editor = new Checkbox(args);
    } else if (type == TableColumnDescription::ChoiceField) {
        m_editRow = static_cast<int>(row);
        m_editCol = static_cast<int>(col);
        openChoiceMenu(row, col);
        return true;
    } else if (type == TableColumnDescription::TextField) {
        TextBoxBase::InitArgs args(text, static_cast<uint16_t>(cell.width()), static_cast<uint16_t>(cell.height()),
                                   getPalette());
        editor = new TextBoxBase(args);
    }
    if (!editor)
        return false;
    m_editRow = static_cast<int>(row);
    m_editCol = static_cast<int>(col);
    addChild(editor, Glob::Absolute(cell.left(), cell.bottom()));
    m_editor = GlobWatch(editor);
    if (dynamic_cast<TabOrderable*>(editor))
        editor->takeFocus();
    return true;
}

void TableWidget::openChoiceMenu(unsigned row, unsigned col)
{
    std::vector<MenuItem> items;
    const GlobWatch self(this);
    for (const UIString& choice : m_columns[col].getChoices()) {
        const LightweightString<wchar_t> label = choice.getString();
        items.emplace_back(choice, [self, label, row, col] {
            auto* table = static_cast<TableWidget*>(self.get());
            if (table && table->m_editRow == static_cast<int>(row) && table->m_editCol == static_cast<int>(col))
                table->commitEdit(label);
        });
    }
    const GlobBox cell = getCellBox(row, col);
    MenuGlob menu(MenuGlob::InitArgs(std::move(items), static_cast<uint16_t>(std::max(0, cell.width()))));
    menu.setPalette(getPalette());
    const XY<int> at = getScreenPos() + XY<int>(cell.left(), cell.bottom());
    if (!menu.popUp(at, this))
        cancelEdit();
}

bool TableWidget::commitEdit(const LightweightString<wchar_t>& text, bool keepOpen)
{
    syncRows();
    if (!isEditing() || !m_adaptor)
        return false;
    const unsigned row = static_cast<unsigned>(m_editRow);
    const unsigned col = static_cast<unsigned>(m_editCol);
    if (!keepOpen)
        closeEditor();
    const bool taken = row < getNumRows() && m_adaptor->setFieldText(row, col, text);
    // The new text may wrap differently.
    rowsChanged(row);
    if (!taken) {
        if (auto* box = dynamic_cast<Checkbox*>(m_editor.get()))
            box->setValue(TableColumnDescription::textToBool(m_adaptor->getFieldText(row, col)));
        return false;
    }
    return callMsg(fieldEditedMsg);
}

void TableWidget::cancelEdit()
{
    closeEditor();
    takeFocus();
}

void TableWidget::closeEditor()
{
    m_editRow = -1;
    m_editCol = -1;
    m_forwardToEditor = false;
    if (Glob* editor = m_editor.get()) {
        m_editor = GlobWatch();
        const bool hadFocus = editor->hasFocus();
        removeChild(editor);
        if (hadFocus)
            takeFocus();
    }
    redraw();
}

// ---------------------------------------------------------------------------------------------------------
// Input

bool TableWidget::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (sender == m_scrollBar && ScrollBar::isScrollBarMsg(name)) {
        if (name == ScrollBar::thumbMovedMsg)
            scrollTo(std::llround(m_scrollBar->getThumbPos() * static_cast<double>(getContentHeight())));
        else
            scrollBy(name == ScrollBar::upButtonPressedMsg ? -getDefaultRowHeight() : getDefaultRowHeight());
        return true;
    }
    if (sender && sender == m_editor.get() && Checkbox::isCheckboxMsg(name)) {
        commitEdit(TableColumnDescription::boolToText(name == Checkbox::checkedMsg), true);
        return true;
    }
    if (auto* entry = dynamic_cast<TextBoxBase*>(sender); entry && entry == m_editor.get()) {
        // Return, or leaving the entry after a change, commits; leaving it unchanged just closes it.
        if (name == TextBoxBase::commitMsg)
            commitEdit(entry->getString());
        else if (name == TextBoxBase::focusLostMsg && isEditing())
            closeEditor();
        return true;
    }
    if (name == MenuGlob::cancelledMsg) {
        if (isEditing() && !m_editor.get())
            cancelEdit();
        return true;
    }
    return Glob::handleMessageEvent(name, sender);
}

bool TableWidget::react(const Event& event)
{
    if (event.isMouse())
        return handleMouse(event);
    switch (event.type) {
    case Event::Key:
        return handleKey(event);
    case Event::FocusGained:
    case Event::FocusLost:
        redraw();
        return true;
    default:
        return Glob::react(event);
    }
}

int TableWidget::resizeEdgeAt(XY<int> local) const
{
    const GlobBox header = getHeaderBox();
    if (header.empty() || !header.expanded(1).contains(local))
        return -1;
    const auto edges = layoutColumns(m_columns, getRowsBox().width());
    for (size_t i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].isResizeable() && std::abs(local.x - (getRowsBox().left() + edges[i + 1])) <= edgeGrip)
            return static_cast<int>(i);
    return -1;
}

int TableWidget::contextCursor(const XY<int>& local)
{
    if (m_resizeCol >= 0 || resizeEdgeAt(local) >= 0)
        return CursorResizeHorizontal;
    return Glob::contextCursor(local);
}

bool TableWidget::handleMouse(const Event& event)
{
    if (m_forwardToEditor && (event.type == Event::MouseDrag || event.type == Event::MouseUp)) {
        if (event.type == Event::MouseUp)
            m_forwardToEditor = false;
        if (Glob* editor = m_editor.get()) {
            Event e = event;
            e.pos = event.pos - editor->getPosition();
            editor->react(e);
        }
        return true;
    }
    switch (event.type) {
    case Event::MouseMove:
    case Event::MouseLeave: {
        const int hover = event.type == Event::MouseMove && isEnabledInTree() ? rowAt(event.pos) : -1;
        if (hover != m_hoverRow) {
            m_hoverRow = hover;
            redraw(getRowsBox());
        }
        return true;
    }
    case Event::MouseWheel:
        if (event.wheelDelta == 0)
            return false;
        scrollBy(-static_cast<int64_t>(event.wheelDelta) * 3 * getDefaultRowHeight());
        return true;
    case Event::MouseDown: {
        if (event.button != Event::LeftButton || !isEnabledInTree())
            return event.button == Event::LeftButton;
        const int edge = resizeEdgeAt(event.pos);
        if (edge >= 0) {
            m_resizeCol = edge;
            m_resizeStartX = event.pos.x;
            m_resizeStartWidth = getColumnWidth(static_cast<unsigned>(edge));
            return true;
        }
        const int row = rowAt(event.pos);
        const int col = columnAt(event.pos.x);
        if (row < 0 || col < 0)
            return true;
        const bool wasCurrent = row == m_currentRow && col == m_currentCol;
        GlobWatch self(this);
        if (!userSetCurrent(col, row))
            return true;
        if (event.isDoubleClick()) {
            if (!callMsg(rowDoubleClickedMsg))
                return true;
        } else if (isCellEditable(static_cast<unsigned>(row), static_cast<unsigned>(col))
                   && (wasCurrent || m_columns[static_cast<size_t>(col)].editsOnClick())) {
            if (beginEdit(static_cast<unsigned>(row), static_cast<unsigned>(col)) && m_editor.get()) {
                // The press that opened the editor is its first press too (a check box toggles at once).
                Glob* editor = m_editor.get();
                Event e = event;
                e.pos = event.pos - editor->getPosition();
                m_forwardToEditor = true;
                editor->react(e);
            }
        }
        return true;
    }
    case Event::MouseDrag:
        if (m_resizeCol >= 0) {
            const int width = std::max(minColumnWidth, m_resizeStartWidth + event.pos.x - m_resizeStartX);
            if (width != getColumnWidth(static_cast<unsigned>(m_resizeCol))) {
                m_columns[static_cast<size_t>(m_resizeCol)].setWidth(static_cast<uint16_t>(width));
                redraw();
            }
        }
        return true;
    case Event::MouseUp:
        if (m_resizeCol >= 0) {
            const bool changed = getColumnWidth(static_cast<unsigned>(m_resizeCol)) != m_resizeStartWidth;
            m_resizeCol = -1;
            if (changed)
                callMsg(columnResizedMsg);
        }
        return true;
    default:
        return Glob::react(event);
    }
}

bool TableWidget::handleKey(const Event& event)
{
    if (event.key == Event::KeyEscape && isEditing()) {
        // An entry passes Escape on: leave the cell as it was.
        cancelEdit();
        return true;
    }
    if (!isEnabledInTree() || (event.hasAnyModifier() && !event.has(Event::Shift)))
        return false;
    const int n = static_cast<int>(getNumRows());
    const int current = m_currentRow;
    const int col = m_currentCol;
    auto moveTo = [&](int row) {
        userSetCurrent(col, std::clamp(row, 0, std::max(0, n - 1)));
        return true;
    };
    switch (event.key) {
    case Event::KeyUp:
        return n > 0 && moveTo(current < 0 ? 0 : current - 1);
    case Event::KeyDown:
        return n > 0 && moveTo(current < 0 ? 0 : current + 1);
    case Event::KeyHome:
        return n > 0 && moveTo(0);
    case Event::KeyEnd:
        return n > 0 && moveTo(n - 1);
    case Event::KeyPageDown:
        if (n == 0)
            return false;
        // The row at the bottom of the view comes to the top: the user keeps one row of context.
        return moveTo(current < 0 ? 0 : static_cast<int>(rowsInPageFrom(static_cast<unsigned>(current))));
    case Event::KeyPageUp: {
        if (n == 0)
            return false;
        if (current <= 0)
            return moveTo(0);
        // Back by as many rows as fit above the current one.
        int64_t used = m_rows->height(static_cast<unsigned>(current));
        int row = current;
        while (row > 0 && used + m_rows->height(static_cast<unsigned>(row - 1)) <= getViewHeight()) {
            --row;
            used += m_rows->height(static_cast<unsigned>(row));
        }
        return moveTo(row);
    }
    default:
        break;
    }
    if (current < 0 || !isCellEditable(static_cast<unsigned>(current), static_cast<unsigned>(col)))
        return false;
    const int type = m_columns[static_cast<size_t>(col)].getFieldType();
    if (event.key == Event::KeyReturn || event.key == Event::KeyF1 + 1) {
        beginEdit(static_cast<unsigned>(current), static_cast<unsigned>(col));
        return true;
    }
    if (event.key == ' ' && type == TableColumnDescription::BoolField) {
        const bool value = TableColumnDescription::textToBool(
            m_adaptor->getFieldText(static_cast<unsigned>(current), static_cast<unsigned>(col)));
        if (beginEdit(static_cast<unsigned>(current), static_cast<unsigned>(col)))
            if (auto* box = dynamic_cast<Checkbox*>(m_editor.get())) {
                box->setValue(!value);
                commitEdit(TableColumnDescription::boolToText(!value), true);
            }
        return true;
    }
    if (event.isPrintable() && type == TableColumnDescription::TextField
        && !(m_editors && m_editors->factories.count(type))) {
        // Typing over a cell replaces its text, as in a spreadsheet.
        if (beginEdit(static_cast<unsigned>(current), static_cast<unsigned>(col)))
            if (auto* entry = dynamic_cast<TextBoxBase*>(m_editor.get())) {
                entry->selectAll();
                entry->react(event);
            }
        return true;
    }
    return false;
}

// ---------------------------------------------------------------------------------------------------------
// Drawing

void TableWidget::draw()
{
    syncRows();
    Pictor::Painter& p = painter();
    const Palette& pal = getPalette();
    const GlobBox rows = getRowsBox();
    p.fillRect(getLocalBox(), pal.entry());
    if (m_showHeader && p.isVisible(getHeaderBox())) // a scroll repaints the rows alone
        drawHeader();

    if (m_rows->count > 0 && !rows.empty()) {
        Pictor::StateSaver saver(p);
        p.clipTo(rows);
        // Only the rows that meet what is being repainted.
        const Pictor::PaintRect clip = p.clipBounds();
        const int64_t clipTop = static_cast<int64_t>(std::ceil(clip.y1));
        const int64_t clipBottom = static_cast<int64_t>(std::floor(clip.y0));
        unsigned row = m_rows->rowAtY(m_scroll + std::max<int64_t>(0, rows.top() - clipTop));
        const int64_t firstTop = rows.top() - (m_rows->top(row) - m_scroll);
        int64_t top = firstTop;
        const auto edges = layoutColumns(m_columns, rows.width());
        // The grid goes on after the cells, all of it in one fill: a line along the bottom of each row and one
        // down the right of each column, on whole pixels inside the row's own box.
        std::vector<Pictor::PaintRect> grid;
        while (row < m_rows->count && top > rows.bottom() && top > clipBottom) {
            const int h = m_rows->height(row);
            const GlobBox rowBox(rows.left(), static_cast<int>(top - h), rows.right(), static_cast<int>(top));
            drawRow(row, rowBox, edges);
            grid.emplace_back(rowBox.left(), rowBox.bottom(), rowBox.right(), rowBox.bottom() + 1);
            top -= h;
            ++row;
        }
        for (size_t c = 1; c < edges.size(); ++c) {
            const int right = rows.left() + edges[c];
            if (rows.left() + edges[c - 1] >= rows.right())
                break;
            grid.emplace_back(right - 1, static_cast<double>(top), right, static_cast<double>(firstTop));
        }
        p.fillRects(grid, pal.window(1));
    }
    if (m_border)
        p.drawBevel(getLocalBox(), pal.window(1), pal.window(4));
    if (hasFocus() && !m_editor.get())
        StylePainter::drawFocusRing(p, getLocalBox(), pal);
}

bool TableWidget::isOpaque() const
{
    return getPalette().entry().a() >= 1.0; // draw() starts by filling the whole table with it
}

void TableWidget::drawHeader()
{
    Pictor::Painter& p = painter();
    const Palette& pal = getPalette();
    const GlobBox header = getHeaderBox();
    const bool enabled = isEnabledInTree();
    StylePainter::drawButton(p, header, pal, enabled ? StylePainter::Normal : StylePainter::Disabled);
    const auto edges = layoutColumns(m_columns, getRowsBox().width());
    const Pictor::Font& font = fontFor(UifStd::getDefaultFont().withStyle(Pictor::fontStyleBold));
    const int left = getRowsBox().left();
    Pictor::StateSaver saver(p);
    p.clipTo(header);
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const GlobBox cell(left + edges[i], header.bottom(), left + edges[i + 1], header.top());
        StylePainter::drawButton(p, cell, pal, enabled ? StylePainter::Normal : StylePainter::Disabled);
        const GlobBox text(cell.left() + cellPadding(), cell.bottom(), std::max(cell.left() + cellPadding(),
                           cell.right() - cellPadding()), cell.top());
        p.drawTextInBox(m_columns[i].getTitle().getString().view(), font, pal.text(enabled), text,
                        Pictor::TextAlign::Left, Pictor::textEllipsis);
    }
}

void TableWidget::drawRow(unsigned row, const GlobBox& rowBox, const std::vector<int>& edges)
{
    const bool current = m_highlightCurrent && static_cast<int>(row) == m_currentRow;
    for (size_t c = 0; c + 1 < edges.size(); ++c) {
        const GlobBox cell(rowBox.left() + edges[c], rowBox.bottom(), rowBox.left() + edges[c + 1], rowBox.top());
        if (cell.left() >= rowBox.right())
            break;
        drawCell(row, static_cast<unsigned>(c), cell, current);
    }
}

void TableWidget::drawCell(unsigned row, unsigned col, const GlobBox& cell, bool current)
{
    Pictor::Painter& p = painter();
    const Palette& pal = getPalette();
    const TableColumnDescription& column = m_columns[col];
    const bool enabled = isEnabledInTree();

    Colour ink = pal.text(enabled);
    Colour back(0, 0, 0, 0);
    if (column.hasColour())
        back = column.getColour();
    Colour ownInk = ink;
    Colour ownBack(0, 0, 0, 0);
    if (m_adaptor->getFieldColours(row, col, ownInk, ownBack)) {
        if (enabled)
            ink = ownInk;
        if (ownBack.a() > 0.0)
            back = ownBack;
    }
    if (current) {
        // A disabled table still shows where it stands, but without the call to action of the full highlight.
        back = enabled ? pal.highlight() : pal.highlight().mix(pal.window(), 0.65);
        ink = enabled ? pal.highlightText() : pal.disabledText();
    } else if (static_cast<int>(row) == m_hoverRow && enabled) {
        // The row under the pointer is lifted a little, so the eye can follow it across the columns.
        back = (back.a() > 0.0 ? back : pal.entry()).mix(pal.highlight(), 0.15);
    }
    if (back.a() > 0.0)
        p.fillRect(cell, back);

    const LightweightString<wchar_t> text = m_adaptor->getFieldText(row, col);
    const int type = column.getFieldType();
    const int pad = cellPadding();
    const int lineH = std::min(cell.height(), getDefaultRowHeight());
    const GlobBox firstLine(cell.left() + pad, cell.top() - lineH, std::max(cell.left() + pad, cell.right() - pad),
                            cell.top());
    if (type == TableColumnDescription::BoolField) {
        const int side = std::clamp(lineH - 8, 8, 14);
        const int bottom = firstLine.bottom() + (lineH - side) / 2;
        StylePainter::drawCheckBox(p, GlobBox(firstLine.left(), bottom, firstLine.left() + side, bottom + side), pal,
                                   TableColumnDescription::textToBool(text), enabled);
        return;
    }

    Pictor::FontDesc desc = m_adaptor->getFont(row, col);
    const int style = m_adaptor->getTextStyle(row, col);
    uint8_t fontStyle = desc.style;
    if (style & iTableAdaptor::Bold)
        fontStyle |= Pictor::fontStyleBold;
    if (style & iTableAdaptor::Italic)
        fontStyle |= Pictor::fontStyleItalic;
    const Pictor::Font& font = fontFor(desc.withStyle(fontStyle));

    GlobBox textBox = firstLine;
    if (type == TableColumnDescription::ChoiceField && column.isEditable()) {
        // A small arrow says that the cell opens a menu.
        const double cx = firstLine.right() - 5.0;
        const double cy = firstLine.bottom() + lineH / 2.0;
        const std::array<XY<double>, 3> tri = {XY<double>(cx - 4, cy + 2), XY<double>(cx + 4, cy + 2),
                                               XY<double>(cx, cy - 2)};
        p.fillPolygon(tri, ink);
        textBox = GlobBox(firstLine.left(), firstLine.bottom(), std::max(firstLine.left(), firstLine.right() - 12),
                          firstLine.top());
    }

    // Measured only where the width decides something: drawing measures the text again for itself.
    if (cell.height() > lineH && m_adaptor->canWordWrap(row, col) && font.measureWidth(text.view()) > textBox.width()) {
        const GlobBox wrapBox(textBox.left(), cell.bottom(), textBox.right(), cell.top() - 2);
        p.drawWrappedText(text.view(), font, ink, wrapBox);
        return;
    }
    p.drawTextInBox(text.view(), font, ink, textBox, Pictor::TextAlign::Left, Pictor::textEllipsis);
    if (style & iTableAdaptor::Underlined) {
        const double y = textBox.bottom() + (lineH - font.lineHeight()) / 2.0 + font.descent() - 1.5;
        const double w = std::min<double>(font.measureWidth(text.view()), textBox.width());
        p.drawLine(textBox.left(), y, textBox.left() + w, y, ink);
    }
}
