#pragma once
// TableWidget: rows of cells under a header of column titles, with a current row, a vertical scroll bar and
// editors for editable cells. What it shows comes from an iTableAdaptor (not owned), asked only for the rows
// in view.
//
// Geometry. From the top: the header (one standard row high, unless turned off), then the rows, each as high
// as the adaptor says; a scroll bar runs down the right-hand side beside the rows. Columns take the widths of
// their descriptions; columns of width 0 share what is left. The scroll offset counts pixels of rows scrolled
// off the top, and every way of scrolling clamps it to 0..getMaxScroll().
//
// Input:
//
//   input                                   | table does
//   ----------------------------------------+---------------------------------------------------------------
//   pointer over a row                      | hover look on the row
//   press on a row                          | makes it current (currentRowChangedMsg when it changed)
//   second press of a double click          | rowDoubleClickedMsg
//   press on the current cell, editable     | opens the cell's editor (editable bool cells, and columns set to
//                                           | edit on click, open at the first press)
//   drag near a resizeable column's right   | resizes the column (columnResizedMsg on release)
//     edge in the header                    |
//   Up / Down, Page Up / Down, Home / End   | moves the current row and scrolls it into view
//   Return or F2 on an editable cell        | opens its editor; a typed character opens a text cell's editor
//   Space on an editable bool cell          | toggles it
//   wheel, scroll bar                       | scrolls without moving the current row
//
// Editors. A text cell is edited in a TextBoxBase over the cell (Return or leaving it changed commits, Escape
// cancels), a bool cell with a check box (each toggle commits), a choice cell with a menu of the column's
// choices. An owner can register its own editor for any field type. A commit goes to iTableAdaptor::setFieldText, and
// the owner hears fieldEditedMsg when the adaptor took it. Scrolling commits and closes an open editor.
//
// Rows are found by running totals of their heights kept in blocks, computed when first needed and kept until
// the owner calls rowsChanged(), so finding the row at a scroll offset costs a binary search and a page
// scroll costs the rows it shows, however many rows there are.

#include "toolkit/gfx/FontDesc.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/widgets/TableColumnDescription.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class iTableAdaptor;
class ScrollBar;

class TableWidget : public Glob, public TabOrderable {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        InitArgs(iTableAdaptor* tableAdaptor, uint16_t w, uint16_t h, const Palette& pal = Palette(),
                 Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), adaptor(tableAdaptor)
        {
        }
        InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info) {}

        iTableAdaptor* adaptor = nullptr;
        bool showHeader = true;
        bool border = true;
        bool highlightCurrentRow = true;
        // Whether editable cells open editors at all.
        bool editing = true;
    };

    // Bits of the style given to calcHeight.
    enum HeightStyle : int {
        HeightNoHeader = 1,
        HeightNoBorder = 2,
    };
    // Bits of the flags given to setCurrentPosition.
    enum PositionFlags : int {
        PosRedraw = 1,
        PosAlignBottom = 4, // scroll so that the row is the last one in view
        PosReveal = 8,      // scroll the least distance that shows the row
    };

    using FieldEditorFactory = std::function<Glob*(TableWidget& table, unsigned row, unsigned col, XY<int> size)>;

    explicit TableWidget(const InitArgs& args);
    TableWidget(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    // A copy shows the same adaptor and columns but has no editor open.
    TableWidget(const TableWidget& other);
    TableWidget(TableWidget&& other) : TableWidget(static_cast<const TableWidget&>(other)) {}
    TableWidget& operator=(const TableWidget& other);
    TableWidget& operator=(TableWidget&& other) { return *this = static_cast<const TableWidget&>(other); }
    ~TableWidget() override;

    LightweightString<char> idstring() const override;

    // ---- Sizes
    // The height of one standard row (and of the header).
    static int getDefaultRowHeight();
    // The height of a table that shows `rows` standard rows, with HeightStyle bits.
    static int calcHeight(unsigned rows, int style = 0);
    // A row height that shows the text wrapped to a cell of `cellWidth` pixels.
    static int calcWrappedRowHeight(std::wstring_view text, const Pictor::FontDesc& font, int cellWidth);
    // The padding at each side of a cell's text.
    static int cellPadding() { return 4; }

    // ---- Adaptor and columns
    void setAdaptor(iTableAdaptor* adaptor);
    iTableAdaptor* getAdaptor() const { return m_adaptor; }
    // Reads the column definitions again (widths the user dragged are replaced).
    void refreshColumns();
    const std::vector<TableColumnDescription>& getColumns() const { return m_columns; }
    void setColumnWidth(unsigned col, uint16_t width);
    // The laid-out columns: the left edge and width of each, in the table's own coordinates.
    int getColumnLeft(unsigned col) const;
    int getColumnWidth(unsigned col) const;
    // Column edges for a row `width` pixels wide: n + 1 offsets from 0. Fixed widths are kept; columns of
    // width 0 share what is left equally, but none is narrower than minColumnWidth.
    static std::vector<int> layoutColumns(const std::vector<TableColumnDescription>& columns, int width);
    static constexpr int minColumnWidth = 16;

    // ---- Rows
    // The rows from `firstRow` on changed height, or rows were inserted or removed there. A change of
    // getSize() alone is noticed without this.
    void rowsChanged(unsigned firstRow = 0);
    unsigned getNumRows();
    // Pixels from the top of the first row to the top of `row` (to the bottom of the last for getNumRows()).
    int64_t getRowTop(unsigned row);
    int getRowHeight(unsigned row);
    int64_t getContentHeight();
    // The row at a point of the table, or -1.
    int rowAt(XY<int> local);
    // The column at an x of the table, or -1.
    int columnAt(int x) const;
    // A cell's box in the table's own coordinates (it may lie partly or wholly outside the rows box).
    GlobBox getCellBox(unsigned row, unsigned col);
    GlobBox getHeaderBox() const;
    GlobBox getRowsBox() const;

    // ---- Current row
    int getCurrentRow() const { return m_currentRow; }
    int getCurrentColumn() const { return m_currentCol; }
    // From code: tells nobody. -1 for no current row. PositionFlags say whether to redraw and scroll.
    void setCurrentPosition(int col, int row, int flags = PosRedraw | PosReveal);

    // ---- Scrolling
    int64_t getScrollOffset() const { return m_scroll; }
    int64_t getMaxScroll();
    int getViewHeight() const { return getRowsBox().height(); }
    // How many standard rows fit in view.
    int getNumVisibleLines() const;
    // The first row (partly) in view, or -1 when there are none.
    int getFirstVisibleRow();
    // Answers whether the offset changed.
    bool scrollTo(int64_t offset);
    bool scrollBy(int64_t pixels) { return scrollTo(m_scroll + pixels); }
    void ensureRowVisible(unsigned row);
    // The row that is the last in view once `row` is shown as the first: what Page Down moves by.
    unsigned rowsInPageFrom(unsigned row);

    // ---- Editing
    // Replaces the editor for a field type (built-in types included). An empty factory removes it.
    void registerFieldEditor(int fieldType, FieldEditorFactory factory);
    void setEditingEnabled(bool enabled);
    bool isEditingEnabled() const { return m_editingEnabled; }
    bool isCellEditable(unsigned row, unsigned col);
    // Opens the editor of an editable cell (committing one that is open). Answers whether one opened.
    bool beginEdit(unsigned row, unsigned col);
    // Hands the text to the adaptor. Closes the editor unless `keepOpen`. Answers whether the adaptor took
    // it. `this` may be gone afterwards if the owner destroyed it on hearing fieldEditedMsg: check first.
    bool commitEdit(const LightweightString<wchar_t>& text, bool keepOpen = false);
    void cancelEdit();
    bool isEditing() const;
    Glob* getEditor() const;
    int getEditRow() const { return m_editRow; }
    int getEditColumn() const { return m_editCol; }

    ScrollBar* getScrollBar() const { return m_scrollBar; }

    static constexpr const char* currentRowChangedMsg = "table_current_row_changed";
    static constexpr const char* rowDoubleClickedMsg = "table_row_double_clicked";
    static constexpr const char* columnResizedMsg = "table_column_resized";
    static constexpr const char* fieldEditedMsg = "table_field_edited";

    // Called by the toolkit
    bool react(const Event& event) override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void draw() override;
    bool isOpaque() const override;
    void reshape() override;
    int contextCursor(const XY<int>& local) override;

private:
    struct RowIndex;
    struct Editors;

    void build(const InitArgs& args);
    // What a copy takes over: the options, the adaptor with its columns and editors, and where the view stands.
    void showLike(const TableWidget& other);
    // Notices a change of the adaptor's row count; keeps the current row and scroll offset in range.
    void syncRows();
    // False once this table or any widget around it is being destroyed.
    bool treeAlive() const;
    void updateScrollBar();
    bool handleMouse(const Event& event);
    bool handleKey(const Event& event);
    // The user moved the current row: scroll to it, tell the owner. Answers whether `this` still lives.
    bool userSetCurrent(int col, int row);
    // The header column edge near x that can be dragged, or -1.
    int resizeEdgeAt(XY<int> local) const;
    void closeEditor();
    void openChoiceMenu(unsigned row, unsigned col);
    void drawHeader();
    // The row's cells; the grid is drawn afterwards for all the rows at once. `edges` as layoutColumns answers.
    void drawRow(unsigned row, const GlobBox& rowBox, const std::vector<int>& edges);
    void drawCell(unsigned row, unsigned col, const GlobBox& cell, bool current);

    iTableAdaptor* m_adaptor = nullptr;
    std::vector<TableColumnDescription> m_columns;
    std::unique_ptr<RowIndex> m_rows;
    std::unique_ptr<Editors> m_editors; // registered editor factories, made on first registration
    ScrollBar* m_scrollBar = nullptr;
    GlobWatch m_editor;
    int64_t m_scroll = 0;
    int m_currentRow = -1;
    int m_currentCol = 0;
    int m_editRow = -1;
    int m_editCol = -1;
    // A drag of a column edge in progress: the column, and its width when gripped.
    int m_hoverRow = -1;
    int m_resizeCol = -1;
    int m_resizeStartX = 0;
    int m_resizeStartWidth = 0;
    bool m_forwardToEditor = false; // the press that opened an editor: its drag and release go there too
    bool m_showHeader = true;
    bool m_border = true;
    bool m_highlightCurrent = true;
    bool m_editingEnabled = true;
};
