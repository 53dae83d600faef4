// Repainting a table: drawn once per flush however many dirty areas meet it, only the rows a repaint reaches
// are asked for, a screen built up from partial repaints equals one painted whole, and the grid stays sharp.

#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/TableWidget.h"
#include "toolkit/widgets/iTableAdaptor.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

class NumberedRows : public iTableAdaptor {
public:
    std::set<unsigned> rowsAsked;

    unsigned getSize() override { return 5000; }
    bool hasUniformRowHeights() override { return true; }
    LightweightString<wchar_t> getFieldText(unsigned row, unsigned col) override
    {
        rowsAsked.insert(row);
        return LightweightString<wchar_t>((col == 0 ? L"office " : L"Take ") + std::to_wstring(row));
    }
    std::vector<TableColumnDescription> getColumnDefinitions() override
    {
        return {TableColumnDescription(L"Clip", "clip", 120), TableColumnDescription(L"Take", "take")};
    }
};

class CountingTable : public TableWidget {
public:
    using TableWidget::TableWidget;
    int paints = 0;
    void draw() override
    {
        ++paints;
        TableWidget::draw();
    }
};

class TableRepaint : public ::testing::Test {
protected:
    UiHarness ui{500, 400};
    NumberedRows rows;
    CountingTable* table = ui.make<CountingTable>(
        TableWidget::InitArgs(&rows, 300, static_cast<uint16_t>(TableWidget::calcHeight(12)), UifStd::getColourScheme()),
        Glob::BottomLeft(20, 20));

    GlobBox tableOnScreen() const
    {
        const XY<int> at = UiHarness::toScreen(table, XY<int>(0, 0));
        return GlobBox(at.x, at.y, at.x + table->getWidth(), at.y + table->getHeight());
    }

    static bool samePixels(const Pictor::Image& a, const Pictor::Image& b)
    {
        for (int row = 0; row < a.height(); ++row)
            for (int col = 0; col < a.width(); ++col)
                if (a.pixel(col, row) != b.pixel(col, row))
                    return false;
        return a.width() == b.width() && a.height() == b.height();
    }
};

} // namespace

TEST_F(TableRepaint, AScrollPaintsTheTableOnceThoughItsRowsAndScrollBarAreDirtySeparately)
{
    ui.flush();
    const int before = table->paints;
    table->scrollBy(table->getViewHeight());
    ui.flush();

    EXPECT_EQ(table->paints, before + 1);
}

TEST_F(TableRepaint, ARepaintOfOneRowAsksOnlyForTheRowsItReaches)
{
    ui.flush();
    rows.rowsAsked.clear();
    const GlobBox cell = table->getCellBox(5, 0);
    const XY<int> at = UiHarness::toScreen(table, XY<int>(cell.left(), cell.bottom() + 2));
    ui.screen().invalidate(GlobBox(at.x, at.y, at.x + 10, at.y + 3));
    ui.flush();

    ASSERT_FALSE(rows.rowsAsked.empty());
    EXPECT_LE(rows.rowsAsked.size(), 3u);
    EXPECT_TRUE(rows.rowsAsked.count(5));
}

TEST_F(TableRepaint, PartialRepaintsLeaveTheSamePixelsAsAWholeRepaint)
{
    ui.flush();
    table->scrollBy(3 * TableWidget::getDefaultRowHeight() + 5);
    ui.flush();
    ui.moveTo(table, table->getCellBox(4, 1).centre()); // the row under the pointer is lifted
    ui.flush();
    table->setCurrentPosition(0, 6);
    ui.flush();
    ui.moveTo(table, table->getCellBox(7, 0).centre());
    ui.flush();
    const Pictor::Image partly = ui.grab(tableOnScreen());

    ui.screen().invalidateAll();
    ui.flush();
    const Pictor::Image whole = ui.grab(tableOnScreen());

    EXPECT_TRUE(samePixels(partly, whole));
}

TEST_F(TableRepaint, GridLinesAreOneSharpPixelInsideEachCell)
{
    const GlobBox cell = table->getCellBox(2, 0);
    const Colour line = table->getPalette().window(1);
    const Colour entry = table->getPalette().entry();
    const int x = cell.right() - 3; // in the cell's padding, clear of its text
    const int y = cell.bottom() + 2;

    EXPECT_TRUE(ui.pixelAt(table, {x, cell.bottom()}).isCloseTo(line)) << "the row's own bottom pixel";
    EXPECT_TRUE(ui.pixelAt(table, {x, cell.bottom() - 1}).isCloseTo(entry)) << "the next row's top pixel";
    EXPECT_TRUE(ui.pixelAt(table, {x, cell.bottom() + 1}).isCloseTo(entry));
    EXPECT_TRUE(ui.pixelAt(table, {cell.right() - 1, y}).isCloseTo(line)) << "the column's own right pixel";
    EXPECT_TRUE(ui.pixelAt(table, {cell.right(), y}).isCloseTo(entry)) << "the next column's left pixel";
    EXPECT_TRUE(ui.pixelAt(table, {cell.right() - 2, y}).isCloseTo(entry));
}
