#include "LoggerTestSupport.h"

#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Gauge.h"
#include "toolkit/widgets/TableWidget.h"

using Rows = std::vector<std::string>;

TEST_F(LoggerTest, LeadingEmptyLinesOfAnEmptyLogAreDropped)
{
    log->write(L"\n\nabc");
    EXPECT_EQ(rows(*log), Rows({ "abc" }));
}

TEST_F(LoggerTest, EmptyLinesAfterTheFirstRowAreKept)
{
    log->write(L"first");
    log->write(L"\n\nabc");
    EXPECT_EQ(rows(*log), Rows({ "first", "", "", "abc" }));
}

TEST_F(LoggerTest, AStatusLineFirstInTheLogHasNoBlankRowAbove)
{
    log->write(L"Rendering", Kind::StatusLine);
    EXPECT_EQ(rows(*log), Rows({ "Rendering" }));
}

TEST_F(LoggerTest, LaterStatusLinesOfBothKindsHaveABlankRowAbove)
{
    log->write(L"a");
    log->write(L"Rendering", Kind::StatusLine);
    log->write(L"Mixing", Kind::StatusLineNoWrap);
    EXPECT_EQ(rows(*log), Rows({ "a", "", "Rendering", "", "Mixing" }));
}

TEST_F(LoggerTest, HeadingsNeverHaveABlankRowAbove)
{
    log->write(L"a");
    log->write(L"Export", Kind::Heading);
    EXPECT_EQ(rows(*log), Rows({ "a", "Export" }));
}

TEST_F(LoggerTest, AStatusLineLeavesASpaceRowAmongTheReserveRows)
{
    log->write(L"a");
    log->write(L"Rendering", Kind::StatusLine);
    bool spaceRowAhead = false;
    for (unsigned i = log->getNumUsedRows(); i < log->getStoreSize(); ++i)
        spaceRowAhead = spaceRowAhead || log->getRow(i).text == " ";
    EXPECT_TRUE(spaceRowAhead);
}

TEST_F(LoggerTest, FastScrollPadsTheStoreByHalfAPage)
{
    const int halfPage = log->getTable()->getNumVisibleLines() / 2;
    ASSERT_GE(halfPage, 2);
    log->write(L"a");
    EXPECT_EQ(log->getStoreSize(), static_cast<unsigned>(halfPage));
    for (int i = 1; i < halfPage; ++i)
        log->write(L"b");
    EXPECT_EQ(log->getStoreSize(), static_cast<unsigned>(halfPage));
    log->write(L"c");
    EXPECT_EQ(log->getStoreSize(), static_cast<unsigned>(2 * halfPage));
}

TEST_F(LoggerTest, WithoutFastScrollTheStoreGrowsLineByLine)
{
    log->setFastScroll(false);
    for (int i = 0; i < 5; ++i)
        log->write(L"line");
    EXPECT_EQ(log->getStoreSize(), 5u);
}

TEST_F(LoggerTest, TheLastLineIsShownAsANewOneArrives)
{
    for (int i = 0; i < 100; ++i)
        log->write(L"line " + std::to_wstring(i));
    TableWidget* table = log->getTable();
    EXPECT_EQ(table->getCurrentRow(), 99);
    EXPECT_LE(table->getRowTop(99) + table->getRowHeight(99), table->getScrollOffset() + table->getViewHeight());
}

TEST_F(LoggerTest, ALongLineGetsARowAsTallAsItsWrappedText)
{
    log->write(std::wstring(40, L'x') + L" " + std::wstring(300, L'w'));
    const Logger::LoggedItem& row = log->getRow(0);
    EXPECT_GT(row.displayLines, 2);
    EXPECT_EQ(log->getRowHeight(0), row.displayLines * TableWidget::getDefaultRowHeight());
    EXPECT_TRUE(log->canWordWrap(0, 0));
}

TEST_F(LoggerTest, LongLinkAndNoWrapStatusRowsAreTallButNotWrapped)
{
    log->write(L"a");
    const std::wstring longText = L"long " + std::wstring(300, L'w');
    log->write(LoggerBase::HyperLink({ L"/a.mov" }, longText));
    log->write(longText, Kind::StatusLineNoWrap);
    for (unsigned row : { 1u, 3u }) {
        EXPECT_GT(log->getRow(row).displayLines, 1) << row;
        EXPECT_FALSE(log->canWordWrap(row, 0)) << row;
    }
}

TEST_F(LoggerTest, EachKindHasItsColourFontAndTextStyle)
{
    const Palette& palette = log->getPalette();
    log->write(L"normal");
    log->write(L"warning", Kind::Warning);
    log->write(L"error", Kind::Error);
    log->write(L"success", Kind::Success);
    log->write(L"heading", Kind::Heading);
    log->write(LoggerBase::HyperLink({ L"/a.mov" }, L"link"));
    log->write(L"unknown", static_cast<Kind>(12));
    EXPECT_TRUE(log->getRow(0).textColour.isCloseTo(palette.text()));
    EXPECT_TRUE(log->getRow(1).textColour.isCloseTo(Colour(1.0, 1.0, 0.0)));
    EXPECT_TRUE(log->getRow(2).textColour.isCloseTo(palette.warning()));
    EXPECT_TRUE(log->getRow(3).textColour.isCloseTo(Colour(0.1, 0.7, 0.3)));
    EXPECT_TRUE(log->getRow(4).textColour.isCloseTo(palette.subheadingText()));
    EXPECT_EQ(log->getRow(4).font, Pictor::getTitleFontDesc());
    EXPECT_EQ(log->getTextStyle(5, 0), iTableAdaptor::Underlined);
    EXPECT_EQ(log->getTextStyle(0, 0), iTableAdaptor::Plain);
    EXPECT_EQ(log->getFieldText(5, 0), L"link");
    EXPECT_TRUE(log->getRow(6).textColour.isCloseTo(palette.text()));
    EXPECT_EQ(log->getRow(6).font, log->getRow(0).font);
}

TEST_F(LoggerTest, AnItemsTagIsCarriedIntoEachOfItsRows)
{
    log->write(LoggerBase::Item { L"one\ntwo", Kind::Normal, 77 });
    EXPECT_EQ(log->getRow(0).tag, 77);
    EXPECT_EQ(log->getRow(1).tag, 77);
}

TEST_F(LoggerTest, ProgressZeroStartsTheClockWithNoText)
{
    log = makeLogger(Logger::ShowGauge);
    log->progress(0.0);
    EXPECT_TRUE(log->getGauge()->getString().getString().empty());
    EXPECT_DOUBLE_EQ(log->getGauge()->getMeasure(), 0.0);
}

TEST_F(LoggerTest, HalfDoneAfterTenSecondsShowsTenSecondsRemaining)
{
    log = makeLogger(Logger::ShowGauge);
    log->progress(0.0);
    ui.clock().advance(10000);
    log->progress(0.5);
    EXPECT_EQ(log->getGauge()->getString().getString(), L"00:00:10 remaining");
}

TEST_F(LoggerTest, CompletionShowsTheElapsedTimeRoundedAndRestartsTheClock)
{
    log = makeLogger(Logger::ShowGauge);
    log->progress(0.0);
    ui.clock().advance(3723500); // 1 h 2 min 3.5 s
    log->progress(1.0);
    EXPECT_EQ(log->getGauge()->getString().getString(), L"Finished in 01:02:04");
    // The next fraction starts a new clock rather than estimating from the old one.
    ui.clock().advance(5000);
    log->progress(0.5);
    EXPECT_TRUE(log->getGauge()->getString().getString().empty());
}

