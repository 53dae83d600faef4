// The table widget driven as a user drives it: clicks, double clicks, keys, the wheel, the scroll bar, column
// edges dragged in the header and cells edited; and the promise that only the rows in view are asked for.

#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/ScrollBar.h"
#include "toolkit/widgets/TableWidget.h"
#include "toolkit/widgets/iTableAdaptor.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

// A table of rows held in memory, recording what the widget asked of it.
class TestAdaptor : public iTableAdaptor {
public:
    struct Row {
        std::wstring name;
        std::wstring flag = L"0";
        std::wstring kind = L"Video";
        int height = 0; // 0: the standard height
    };

    std::vector<Row> rows;
    // When set, that many rows made up from their number instead of `rows` (a million rows stored would
    // cost the test more than the table).
    unsigned generated = 0;
    std::vector<TableColumnDescription> columns = {
        TableColumnDescription(L"Name", "name", 120).setResizeable(true).setEditable(true),
        TableColumnDescription(L"On", "on", 40).setFieldType(TableColumnDescription::BoolField).setEditable(true),
        TableColumnDescription(L"Kind", "kind")
            .setFieldType(TableColumnDescription::ChoiceField)
            .setEditable(true)
            .setChoices({L"Video", L"Audio", L"Still"})};
    bool uniform = false;
    bool refuseEdits = false;
    std::set<unsigned> rowsAsked;
    size_t heightCalls = 0;
    std::vector<std::pair<unsigned, std::wstring>> edits;
    std::map<unsigned, Colour> backgrounds;

    void fill(unsigned n)
    {
        rows.clear();
        for (unsigned i = 0; i < n; ++i)
            rows.push_back({L"row " + std::to_wstring(i)});
    }

    unsigned getSize() override { return generated ? generated : static_cast<unsigned>(rows.size()); }
    int getRowHeight(unsigned row) override
    {
        ++heightCalls;
        if (generated)
            return TableWidget::getDefaultRowHeight();
        return rows[row].height ? rows[row].height : TableWidget::getDefaultRowHeight();
    }
    bool hasUniformRowHeights() override { return uniform; }
    LightweightString<wchar_t> getFieldText(unsigned row, unsigned col) override
    {
        rowsAsked.insert(row);
        if (generated)
            return LightweightString<wchar_t>(L"row " + std::to_wstring(row));
        const Row& r = rows.at(row);
        return LightweightString<wchar_t>(col == 0 ? r.name : col == 1 ? r.flag : r.kind);
    }
    bool getFieldColours(unsigned row, unsigned, Colour& text, Colour& background) override
    {
        auto it = backgrounds.find(row);
        if (it == backgrounds.end())
            return false;
        text = Colour(0, 0, 0);
        background = it->second;
        return true;
    }
    std::vector<TableColumnDescription> getColumnDefinitions() override { return columns; }
    bool setFieldText(unsigned row, unsigned col, const LightweightString<wchar_t>& text) override
    {
        if (refuseEdits)
            return false;
        edits.emplace_back(col, std::wstring(text.view()));
        Row& r = rows.at(row);
        (col == 0 ? r.name : col == 1 ? r.flag : r.kind) = std::wstring(text.view());
        return true;
    }
};

class TableWidgetTest : public ::testing::Test {
protected:
    UiHarness ui{600, 500};
    TestAdaptor data;
    int rowH = TableWidget::getDefaultRowHeight();

    TableWidget* table(unsigned rows, uint16_t w = 400, uint16_t visibleRows = 10)
    {
        if (data.generated == 0 && data.rows.size() != rows)
            data.fill(rows);
        const int h = TableWidget::calcHeight(visibleRows);
        return ui.make<TableWidget>(
            TableWidget::InitArgs(&data, w, static_cast<uint16_t>(h), UifStd::getColourScheme()),
            Glob::BottomLeft(20, 20));
    }

    // The centre of a cell, in the table's coordinates.
    static XY<int> cellCentre(TableWidget* t, unsigned row, unsigned col)
    {
        return t->getCellBox(row, col).centre();
    }
};

TEST(TableLayout, FixedColumnsKeepTheirWidthAndFillColumnsShareTheRest)
{
    std::vector<TableColumnDescription> cols = {TableColumnDescription(L"a", "a", 100),
                                                TableColumnDescription(L"b", "b"), TableColumnDescription(L"c", "c")};
    EXPECT_EQ(TableWidget::layoutColumns(cols, 301), (std::vector<int>{0, 100, 200, 301}));
    // No room left: fill columns still get the minimum, and the row overhangs rather than hiding them.
    const auto squeezed = TableWidget::layoutColumns(cols, 50);
    EXPECT_EQ(squeezed[1], 100);
    EXPECT_EQ(squeezed[2] - squeezed[1], TableWidget::minColumnWidth);
    EXPECT_EQ(squeezed[3] - squeezed[2], TableWidget::minColumnWidth);
    EXPECT_EQ(TableWidget::layoutColumns({}, 100), std::vector<int>{0});
}

TEST_F(TableWidgetTest, MixedRowHeightsAreFoundByOffsetAndFollowChanges)
{
    data.fill(300);
    for (unsigned i = 0; i < 300; ++i)
        data.rows[i].height = 10 + static_cast<int>(i % 7) * 5;
    TableWidget* t = table(300);
    int64_t expectTop = 0;
    for (unsigned i = 0; i < 300; ++i) {
        ASSERT_EQ(t->getRowTop(i), expectTop) << "row " << i;
        expectTop += data.rows[i].height;
    }
    EXPECT_EQ(t->getContentHeight(), expectTop);

    // The row under the top edge of the view, at every offset across a block boundary.
    for (int64_t off : {int64_t(0), t->getRowTop(63) - 1, t->getRowTop(64), t->getRowTop(64) + 1, t->getRowTop(200)}) {
        t->scrollTo(off);
        const int first = t->getFirstVisibleRow();
        ASSERT_GE(first, 0);
        EXPECT_LE(t->getRowTop(static_cast<unsigned>(first)), t->getScrollOffset());
        EXPECT_GT(t->getRowTop(static_cast<unsigned>(first) + 1), t->getScrollOffset());
    }

    // A row grows: everything below it moves once the owner says so.
    const int64_t before = t->getRowTop(250);
    data.rows[100].height += 40;
    t->rowsChanged(100);
    EXPECT_EQ(t->getRowTop(250), before + 40);
    EXPECT_EQ(t->getContentHeight(), expectTop + 40);
}

TEST_F(TableWidgetTest, OnlyRowsInViewAreAskedForEvenWithAMillionRows)
{
    data.uniform = true;
    data.generated = 1000000;
    TableWidget* t = table(1000000);
    ui.flush();
    const int visible = t->getNumVisibleLines();
    EXPECT_LE(data.rowsAsked.size(), static_cast<size_t>(visible + 1));
    EXPECT_LE(data.heightCalls, 2u) << "uniform rows are never measured one by one";

    data.rowsAsked.clear();
    t->scrollTo(t->getRowTop(500000));
    ui.flush();
    ASSERT_FALSE(data.rowsAsked.empty());
    EXPECT_EQ(*data.rowsAsked.begin(), 500000u);
    EXPECT_LE(*data.rowsAsked.rbegin(), 500000u + static_cast<unsigned>(visible));

    t->scrollTo(t->getMaxScroll());
    EXPECT_EQ(t->getFirstVisibleRow() + visible, 1000000) << "the last page ends with the last row";
}

TEST_F(TableWidgetTest, ClicksMakeARowCurrentAndDoubleClicksAreReported)
{
    TableWidget* t = table(20);
    ui.click(t, cellCentre(t, 3, 0));
    EXPECT_EQ(t->getCurrentRow(), 3);
    EXPECT_EQ(ui.owner().count(TableWidget::currentRowChangedMsg), 1u);

    ui.owner().clear();
    ui.click(t, cellCentre(t, 3, 2));
    EXPECT_EQ(ui.owner().count(TableWidget::currentRowChangedMsg), 0u) << "same row, another column";

    ui.doubleClick(t, cellCentre(t, 5, 0));
    EXPECT_EQ(t->getCurrentRow(), 5);
    EXPECT_EQ(ui.owner().count(TableWidget::rowDoubleClickedMsg), 1u);

    // Below the last row and in the header nothing changes.
    TableWidget* shortTable = table(2);
    ui.owner().clear();
    ui.click(shortTable, XY<int>(50, 5));
    ui.click(shortTable, shortTable->getHeaderBox().centre());
    EXPECT_EQ(ui.owner().count(), 0u);
    EXPECT_EQ(shortTable->getCurrentRow(), -1);
}

TEST_F(TableWidgetTest, KeysMoveTheCurrentRowWithinBothEndsAndKeepItInView)
{
    TableWidget* t = table(100);
    ASSERT_TRUE(ui.focus(t));
    ui.pressKey(Event::KeyUp);
    EXPECT_EQ(t->getCurrentRow(), 0);
    ui.pressKey(Event::KeyUp);
    EXPECT_EQ(t->getCurrentRow(), 0) << "clamped at the top";

    ui.pressKey(Event::KeyPageDown);
    const int page = t->getCurrentRow();
    EXPECT_EQ(page, t->getNumVisibleLines() - 1) << "the row at the bottom of the view";
    ui.pressKey(Event::KeyPageDown);
    EXPECT_EQ(t->getCurrentRow(), 2 * page);
    EXPECT_EQ(t->getFirstVisibleRow(), page) << "the previous bottom row is kept in view for context";

    ui.pressKey(Event::KeyEnd);
    EXPECT_EQ(t->getCurrentRow(), 99);
    EXPECT_EQ(t->getScrollOffset(), t->getMaxScroll());
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(t->getCurrentRow(), 99) << "clamped at the bottom";

    ui.pressKey(Event::KeyPageUp);
    EXPECT_EQ(t->getCurrentRow(), 99 - page);
    ui.pressKey(Event::KeyHome);
    EXPECT_EQ(t->getCurrentRow(), 0);
    EXPECT_EQ(t->getScrollOffset(), 0);
}

TEST_F(TableWidgetTest, WheelAndScrollBarScrollWithoutMovingTheCurrentRow)
{
    TableWidget* t = table(100);
    ui.click(t, cellCentre(t, 1, 0));
    ui.wheel(t, 1);
    EXPECT_EQ(t->getScrollOffset(), 0) << "clamped at the top";
    ui.wheel(t, -2);
    EXPECT_EQ(t->getScrollOffset(), 6 * rowH);
    ui.wheel(t, -1000);
    EXPECT_EQ(t->getScrollOffset(), t->getMaxScroll());
    EXPECT_EQ(t->getCurrentRow(), 1);

    ScrollBar* bar = t->getScrollBar();
    ASSERT_NE(bar, nullptr);
    EXPECT_NEAR(bar->getThumbPos() + bar->getThumbSize(), 1.0, 1e-9) << "the thumb sits at the bottom";
    ui.click(bar, bar->upButtonBox().centre());
    EXPECT_EQ(t->getScrollOffset(), t->getMaxScroll() - rowH);
    // Dragging the thumb to the top of the track.
    const GlobBox thumb = bar->thumbBox();
    ui.drag(bar, thumb.centre(), XY<int>(thumb.centre().x, bar->getHeight() + 50));
    EXPECT_EQ(t->getScrollOffset(), 0);
}

TEST_F(TableWidgetTest, DraggingAResizeableColumnEdgeResizesIt)
{
    TableWidget* t = table(5);
    const GlobBox header = t->getHeaderBox();
    const int edge = t->getColumnLeft(1);
    const int y = header.centre().y;
    EXPECT_EQ(t->contextCursor(XY<int>(edge, y)), CursorResizeHorizontal);
    ui.drag(t, XY<int>(edge, y), XY<int>(edge + 30, y));
    EXPECT_EQ(t->getColumnWidth(0), 150);
    EXPECT_EQ(ui.owner().count(TableWidget::columnResizedMsg), 1u);

    // Never narrower than the minimum.
    ui.drag(t, XY<int>(t->getColumnLeft(1), y), XY<int>(0, y));
    EXPECT_EQ(t->getColumnWidth(0), TableWidget::minColumnWidth);

    // The second column is fixed: its edge is not a grip.
    const int fixedEdge = t->getColumnLeft(2);
    ui.owner().clear();
    ui.drag(t, XY<int>(fixedEdge, y), XY<int>(fixedEdge + 30, y));
    EXPECT_EQ(t->getColumnWidth(1), 40);
    EXPECT_EQ(ui.owner().count(TableWidget::columnResizedMsg), 0u);
}

TEST_F(TableWidgetTest, TextCellsAreEditedInAnEntryThatCommitsOrCancels)
{
    TableWidget* t = table(10);
    ui.click(t, cellCentre(t, 2, 0));
    EXPECT_FALSE(t->isEditing()) << "the first click only makes the row current";
    ui.click(t, cellCentre(t, 2, 0));
    ASSERT_TRUE(t->isEditing());
    ui.pressKey(Event::KeyBackspace);
    ui.typeText(L"X");
    ui.pressKey(Event::KeyReturn);
    EXPECT_FALSE(t->isEditing());
    ASSERT_EQ(data.edits.size(), 1u);
    EXPECT_EQ(data.edits[0].second, L"row X");
    EXPECT_EQ(ui.owner().count(TableWidget::fieldEditedMsg), 1u);

    // Escape leaves the cell as it was; typing on a current cell replaces its text.
    ui.pressKey(Event::KeyReturn);
    ASSERT_TRUE(t->isEditing());
    ui.typeText(L"zzz");
    ui.pressKey(Event::KeyEscape);
    EXPECT_EQ(data.edits.size(), 1u);
    EXPECT_TRUE(t->hasFocus()) << "the keyboard comes back to the table";
    ui.typeText(L"new");
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(data.rows[2].name, L"new");

    // An adaptor that refuses: nothing is reported.
    data.refuseEdits = true;
    ui.owner().clear();
    ui.pressKey(Event::KeyReturn);
    ui.typeText(L"q");
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(ui.owner().count(TableWidget::fieldEditedMsg), 0u);
    EXPECT_EQ(data.rows[2].name, L"new");
}

TEST_F(TableWidgetTest, BoolCellsToggleAtOneClickAndChoiceCellsOfferTheirChoices)
{
    TableWidget* t = table(10);
    ui.click(t, cellCentre(t, 4, 1));
    EXPECT_EQ(data.rows[4].flag, L"1");
    ASSERT_NE(dynamic_cast<Checkbox*>(t->getEditor()), nullptr);
    ui.click(t->getEditor());
    EXPECT_EQ(data.rows[4].flag, L"0");
    ASSERT_TRUE(ui.focus(t));
    ui.pressKey(' ');
    EXPECT_EQ(data.rows[4].flag, L"1");
    EXPECT_EQ(ui.owner().count(TableWidget::fieldEditedMsg), 3u);

    // Choice: the first click selects, the second opens the menu; choosing commits.
    ui.click(t, cellCentre(t, 6, 2));
    ui.click(t, cellCentre(t, 6, 2));
    const auto& tops = ui.screen().getTopLevels();
    auto* menu = dynamic_cast<MenuGlob*>(tops.back());
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->numItems(), 3u);
    menu->chooseItem(2);
    EXPECT_EQ(data.rows[6].kind, L"Still");
    EXPECT_FALSE(t->isEditing());
}

TEST_F(TableWidgetTest, ColouredCellsAndTheCurrentRowShowOnScreen)
{
    data.fill(10);
    data.backgrounds[1] = Colour(1.0, 0.0, 0.0);
    TableWidget* t = table(10);
    t->setCurrentPosition(0, 3);
    const Colour coloured = ui.pixelAt(t, cellCentre(t, 1, 0) + XY<int>(40, 0));
    EXPECT_GT(coloured.r(), 0.9);
    EXPECT_LT(coloured.g(), 0.1);
    const Colour current = ui.pixelAt(t, cellCentre(t, 3, 0) + XY<int>(40, 0));
    const Colour highlight = UifStd::getColourScheme().highlight();
    EXPECT_NEAR(current.r(), highlight.r(), 0.02);
    EXPECT_NEAR(current.b(), highlight.b(), 0.02);
}

TEST_F(TableWidgetTest, TheRowUnderThePointerIsLiftedUntilThePointerLeaves)
{
    TableWidget* t = table(10);
    const XY<int> probe(40, 0);
    const Colour plain = ui.pixelAt(t, cellCentre(t, 2, 0) + probe);
    ui.moveTo(t, cellCentre(t, 2, 0));
    const Colour lifted = ui.pixelAt(t, cellCentre(t, 2, 0) + probe);
    EXPECT_NE(lifted, plain);
    EXPECT_EQ(ui.pixelAt(t, cellCentre(t, 3, 0) + probe), plain) << "only the row under the pointer";
    ui.moveTo(&ui.owner(), XY<int>(550, 480));
    EXPECT_EQ(ui.pixelAt(t, cellCentre(t, 2, 0) + probe), plain);
}

TEST_F(TableWidgetTest, RowsRemovedUnderTheTableKeepItsStateInRange)
{
    TableWidget* t = table(100);
    t->setCurrentPosition(0, 90);
    EXPECT_GT(t->getScrollOffset(), 0);
    data.fill(5);
    // The table notices a new row count at its next paint or question, without being told.
    EXPECT_EQ(t->getNumRows(), 5u);
    EXPECT_EQ(t->getCurrentRow(), 4);
    EXPECT_EQ(t->getScrollOffset(), 0);
    data.rows.clear();
    EXPECT_EQ(t->getNumRows(), 0u);
    EXPECT_EQ(t->getCurrentRow(), -1);
    ASSERT_TRUE(ui.focus(t));
    ui.pressKey(Event::KeyDown);
    ui.click(t, XY<int>(30, 30));
    EXPECT_EQ(ui.owner().count(TableWidget::currentRowChangedMsg), 0u);
}

TEST_F(TableWidgetTest, AnOwnerMayDestroyTheTableFromItsOwnReport)
{
    TableWidget* t = table(10);
    ui.owner().onMessage = [](const RecordingOwner::Received& r) { Glob::destroy(r.sender); };
    const GlobWatch watch(t);
    ui.doubleClick(t, cellCentre(t, 2, 0));
    ui.step();
    EXPECT_FALSE(watch.alive());
    EXPECT_EQ(ui.owner().count(TableWidget::rowDoubleClickedMsg), 0u) << "the first report destroyed it";
}

// A panel that is its own table's adaptor, as log and browser panels are.
class PanelWithTable : public Glob, public iTableAdaptor {
public:
    explicit PanelWithTable(const GlobCreationInfo& info) : Glob(info)
    {
        table = addWidget<TableWidget>(TableWidget::InitArgs(this, 300, 200), Glob::BottomLeft(0, 0));
    }
    unsigned getSize() override { return 3; }
    LightweightString<wchar_t> getFieldText(unsigned, unsigned) override { return L"text"; }
    std::vector<TableColumnDescription> getColumnDefinitions() override
    {
        return {TableColumnDescription(L"Text", "text").setEditable(true)};
    }
    bool setFieldText(unsigned, unsigned, const LightweightString<wchar_t>&) override
    {
        ++commits;
        return true;
    }
    TableWidget* table = nullptr;
    int commits = 0;
};

TEST_F(TableWidgetTest, APanelThatIsItsTablesAdaptorCanBeDestroyedWithAnEditorOpen)
{
    auto* panel = new PanelWithTable(GlobCreationInfo(300, 200));
    ui.show(panel, XY<int>(10, 10));
    ASSERT_TRUE(panel->table->beginEdit(1, 0));
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(panel->commits, 1);
    ASSERT_TRUE(panel->table->beginEdit(2, 0));
    ASSERT_TRUE(panel->table->getEditor()->hasFocus());
    ui.typeText(L"unsaved");
    // Deleted outright, as the screen deletes its panels when it closes: the editor loses the focus while
    // the panel's adaptor part is already gone, and must not commit to it (a call into the destroyed part
    // aborts the test).
    const GlobWatch table(panel->table);
    delete panel;
    EXPECT_FALSE(table.alive());
}

TEST_F(TableWidgetTest, ARegisteredEditorReplacesTheBuiltInOne)
{
    data.columns[0].setFieldType(TableColumnDescription::UserField + 17).setEditOnClick(true);
    TableWidget* t = table(10);
    int made = 0;
    t->registerFieldEditor(TableColumnDescription::UserField + 17,
                           [&](TableWidget&, unsigned row, unsigned, XY<int> size) -> Glob* {
                               ++made;
                               EXPECT_EQ(row, 3u);
                               return new Glob(static_cast<uint16_t>(size.x), static_cast<uint16_t>(size.y));
                           });
    ui.click(t, cellCentre(t, 3, 0));
    EXPECT_EQ(made, 1);
    ASSERT_NE(t->getEditor(), nullptr);
    EXPECT_TRUE(t->commitEdit(L"from editor"));
    EXPECT_EQ(data.rows[3].name, L"from editor");
    EXPECT_EQ(t->getEditor(), nullptr);
}

} // namespace

TEST_F(TableWidgetTest, ACopyShowsTheSameRowsAndViewWithAScrollBarOfItsOwn)
{
    TableWidget* t = table(100);
    t->setColumnWidth(0, 90);
    t->setCurrentPosition(2, 40);
    const TableWidget copy(*t);
    EXPECT_EQ(copy.getCurrentRow(), 40);
    EXPECT_EQ(copy.getCurrentColumn(), 2);
    EXPECT_EQ(copy.getScrollOffset(), t->getScrollOffset());
    EXPECT_EQ(copy.getColumns().at(0).getWidth(), 90);
    ASSERT_NE(copy.getScrollBar(), nullptr);
    EXPECT_NE(copy.getScrollBar(), t->getScrollBar());
}
