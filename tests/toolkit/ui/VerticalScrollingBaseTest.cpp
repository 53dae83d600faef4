#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/TabOrderManager.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/ui/VerticalScrollingBase.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class Row : public Glob, public TabOrderable {
public:
    using Glob::Glob;
};

constexpr int rowHeight = 22;
constexpr int rowGap = 4;

struct ScrollFixture : testing::Test {
    UiHarness ui;
    VerticalScrollingBase* panel = nullptr;
    std::vector<Row*> rows;

    void build(int numRows, int userHeight = 200)
    {
        StandardPanel::InitArgs args(L"Scrolling", 0, 0, StandardPanel::CloseButton);
        const XY<int> size = StandardPanel::calcPanelSize(260, userHeight, args);
        args.width = static_cast<uint16_t>(size.x);
        args.height = static_cast<uint16_t>(size.y);
        panel = ui.makeTopLevel<VerticalScrollingBase>(args, {100, 100});
        Glob* area = panel->getScrollArea();
        for (int i = 0; i < numRows; ++i)
            rows.push_back(area->addWidget<Row>(Row::InitArgs(200, rowHeight),
                                                i == 0 ? Glob::UserTopLeft(0, 0) : Glob::Below(rowGap)));
        panel->updateScrollExtent();
    }

    // Whether the whole row shows inside the viewport, in screen coordinates.
    bool fullyVisible(const Glob* row) const
    {
        const GlobBox view = panel->getScrollArea()->parent()->getScreenBox();
        return view.contains(row->getScreenBox());
    }
};

} // namespace

TEST_F(ScrollFixture, ContentHeightFollowsTheRows)
{
    build(20);
    EXPECT_EQ(panel->getContentHeight(), 20 * rowHeight + 19 * rowGap + UifStd::getRowGap());
    EXPECT_EQ(panel->getMaxScroll(), panel->getContentHeight() - panel->getViewportHeight());
    EXPECT_EQ(panel->getScrollOffset(), 0);
    EXPECT_TRUE(fullyVisible(rows.front()));
    EXPECT_FALSE(fullyVisible(rows.back()));
}

TEST_F(ScrollFixture, WheelScrollsAndClampsAtBothEnds)
{
    build(30);
    ui.wheel(rows[2], -1);
    EXPECT_EQ(panel->getScrollOffset(), VerticalScrollingBase::wheelStep());

    ui.wheel(panel, -100);
    EXPECT_EQ(panel->getScrollOffset(), panel->getMaxScroll());
    EXPECT_TRUE(fullyVisible(rows.back()));
    EXPECT_FALSE(fullyVisible(rows.front()));
    ui.wheel(panel, -1);
    EXPECT_EQ(panel->getScrollOffset(), panel->getMaxScroll());

    ui.wheel(panel, 100);
    EXPECT_EQ(panel->getScrollOffset(), 0);
    EXPECT_TRUE(fullyVisible(rows.front()));
    // The first row hangs from the top of the viewport again, not above it.
    EXPECT_EQ(rows.front()->getScreenBox().top(), panel->getScrollArea()->parent()->getScreenBox().top());
}

TEST_F(ScrollFixture, PagingKeysMoveTheViewAndClamp)
{
    build(40);
    ASSERT_TRUE(ui.focus(panel));
    ui.pressKey(Event::KeyPageDown);
    EXPECT_EQ(panel->getScrollOffset(), panel->getViewportHeight());
    ui.pressKey(Event::KeyEnd);
    EXPECT_EQ(panel->getScrollOffset(), panel->getMaxScroll());
    ui.pressKey(Event::KeyPageDown);
    EXPECT_EQ(panel->getScrollOffset(), panel->getMaxScroll());
    ui.pressKey(Event::KeyPageUp);
    EXPECT_EQ(panel->getScrollOffset(), panel->getMaxScroll() - panel->getViewportHeight());
    ui.pressKey(Event::KeyHome);
    EXPECT_EQ(panel->getScrollOffset(), 0);
    ui.pressKey(Event::KeyPageUp);
    EXPECT_EQ(panel->getScrollOffset(), 0);
}

TEST_F(ScrollFixture, ShortContentDoesNotScroll)
{
    build(3);
    EXPECT_EQ(panel->getMaxScroll(), 0);
    ui.wheel(panel, -3);
    EXPECT_EQ(panel->getScrollOffset(), 0);
    EXPECT_FALSE(panel->scrollTo(50));
}

TEST_F(ScrollFixture, ScrolledRowsAreClippedToTheViewport)
{
    build(30);
    panel->scrollTo(panel->getMaxScroll() / 2);
    // A row half way in lies behind the title bar; the title bar must still be what shows there.
    const GlobBox bar = panel->getTitleBarBox();
    const XY<int> probe{bar.left() + 5, bar.bottom() + 2};
    const Colour got = ui.pixelAt(panel, probe);
    const Colour want = panel->getPalette().titleBar();
    EXPECT_NEAR(got.r(), want.r(), 0.02);
    EXPECT_NEAR(got.g(), want.g(), 0.02);
    EXPECT_NEAR(got.b(), want.b(), 0.02);
}

TEST_F(ScrollFixture, RowReachedWithTabIsScrolledIntoView)
{
    build(30);
    for (Row* row : rows)
        TabOrderManager::addTabStop(row);
    ASSERT_TRUE(ui.focus(rows[0]));
    ASSERT_FALSE(fullyVisible(rows[20]));
    for (int i = 0; i < 20; ++i)
        ui.pressKey(Event::KeyTab);
    ASSERT_EQ(ui.screen().getFocus(), rows[20]);
    ui.step();
    EXPECT_TRUE(fullyVisible(rows[20]));
    // Back up to the first: the view follows upward too.
    for (int i = 0; i < 20; ++i)
        ui.pressKey(Event::KeyBackTab);
    ASSERT_EQ(ui.screen().getFocus(), rows[0]);
    ui.step();
    EXPECT_TRUE(fullyVisible(rows[0]));
    EXPECT_EQ(panel->getScrollOffset(), 0);
}

TEST_F(ScrollFixture, EnsureVisibleScrollsTheLeastDistance)
{
    build(30);
    panel->ensureVisible(rows[15]);
    EXPECT_TRUE(fullyVisible(rows[15]));
    // The row lands at the bottom edge: it came from below.
    EXPECT_EQ(rows[15]->getScreenBox().bottom(), panel->getScrollArea()->parent()->getScreenBox().bottom());
    const int offset = panel->getScrollOffset();
    panel->ensureVisible(rows[14]);
    EXPECT_EQ(panel->getScrollOffset(), offset);
    panel->ensureVisible(nullptr);
    EXPECT_EQ(panel->getScrollOffset(), offset);
}

TEST_F(ScrollFixture, RowsAddedLaterAreNoticedWithoutBeingAnnounced)
{
    build(3);
    Glob* area = panel->getScrollArea();
    for (int i = 0; i < 20; ++i)
        rows.push_back(area->addWidget<Row>(Row::InitArgs(200, rowHeight), Glob::Below(rowGap)));
    ui.step(2);
    EXPECT_GT(panel->getMaxScroll(), 0);
    ui.wheel(panel, -100);
    EXPECT_TRUE(fullyVisible(rows.back()));
}

TEST_F(ScrollFixture, GrowingThePanelClampsTheOffset)
{
    build(12);
    panel->scrollTo(panel->getMaxScroll());
    ASSERT_GT(panel->getScrollOffset(), 0);
    panel->resize(panel->getWidth(), panel->getHeight() + 400);
    EXPECT_EQ(panel->getMaxScroll(), 0);
    EXPECT_EQ(panel->getScrollOffset(), 0);
    EXPECT_TRUE(fullyVisible(rows.front()));
    EXPECT_TRUE(fullyVisible(rows.back()));
}

TEST_F(ScrollFixture, ScrollBarTrackPagesAndThumbDrags)
{
    build(40);
    const GlobBox bar = panel->getScrollBarBox();
    ui.click(panel, XY<int>{bar.centre().x, bar.bottom() + 2});
    EXPECT_EQ(panel->getScrollOffset(), panel->getViewportHeight());

    panel->scrollTo(0);
    const XY<int> thumb{bar.centre().x, bar.top() - 3};
    ui.drag(panel, thumb, {thumb.x, thumb.y - bar.height() / 4});
    const double expected = double(panel->getContentHeight()) / bar.height() * (bar.height() / 4);
    EXPECT_NEAR(panel->getScrollOffset(), expected, 2.0);
}

TEST_F(ScrollFixture, ContentTallerThanAWidgetCanBeStopsAtTheLastReachableRow)
{
    build(3000); // about 78000 pixels of rows
    EXPECT_EQ(panel->getContentHeight(), 65535);
    panel->scrollTo(1 << 30);
    EXPECT_EQ(panel->getScrollOffset(), panel->getMaxScroll());
    // The view is not scrolled past the rows into empty space: some row still shows whole at the bottom.
    const GlobBox view = panel->getScrollArea()->parent()->getScreenBox();
    bool rowAtBottom = false;
    for (const Row* row : rows)
        if (view.contains(row->getScreenBox()) && row->getScreenBox().bottom() - view.bottom() < rowHeight + rowGap)
            rowAtBottom = true;
    EXPECT_TRUE(rowAtBottom);
}
