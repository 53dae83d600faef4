#include "LoggerTestSupport.h"

#include "logging/LoggerFunctions.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/Gauge.h"

#include <thread>

class LoggerFunctionsTest : public LoggerTest {
protected:
    // Calls every free function on the handle.
    static void callEveryFunction(Logger* handle)
    {
        loggerWrite(handle, L"text", LoggerBase::eOutputType::Warning);
        logger_write(handle, "%d", 1);
        logger_warning(handle, "%d", 2);
        logger_error(handle, "%d", 3);
        logger_status_line(handle, "%d", 4);
        logger_display_progress(handle, 0.5);
        logger_setFont(handle, "Serif", Colour());
        logger_set_new_title(handle, L"Renamed");
    }
};

TEST_F(LoggerFunctionsTest, EachFormattingFunctionWritesItsKind)
{
    logger_write(log, "frame %d of %s", 7, "cut");
    logger_warning(log, "w");
    logger_error(log, "e");
    logger_status_line(log, "s");
    const std::vector<TaskLog::Entry> entries = log->getTaskLog().getContents();
    ASSERT_EQ(entries.size(), 4u);
    EXPECT_EQ(entries[0].text, "frame 7 of cut");
    EXPECT_EQ(entries[0].kind, 0);
    EXPECT_EQ(entries[1].kind, 2);
    EXPECT_EQ(entries[2].kind, 4);
    EXPECT_EQ(entries[3].kind, 5);
}

TEST_F(LoggerFunctionsTest, FormattedTextIsCutAt1023Characters)
{
    const std::string longText(3000, 'a');
    logger_write(log, "%s", longText.c_str());
    EXPECT_EQ(log->getTaskLog().getContents().front().text.size(), 1023u);
}

TEST_F(LoggerFunctionsTest, ADeadHandleIsIgnoredByEveryFunction)
{
    Logger* dead = makeLogger(Logger::ShowGauge);
    Glob::destroy(dead);
    callEveryFunction(dead); // must neither crash nor reach anything (ASan watches the freed panel)
    EXPECT_EQ(log->getTaskLog().size(), 0u);
}

TEST_F(LoggerFunctionsTest, AHandleToAnotherKindOfWidgetIsIgnoredByEveryFunction)
{
    auto* button = ui.make<Button>(Button::InitArgs(UIString(L"Not a log")));
    callEveryFunction(reinterpret_cast<Logger*>(button));
    EXPECT_EQ(button->getString().getString(), L"Not a log");
    EXPECT_EQ(log->getTaskLog().size(), 0u);
}

TEST_F(LoggerFunctionsTest, ALiveHandleTakesEveryFunction)
{
    log = makeLogger(Logger::ShowGauge);
    callEveryFunction(log);
    EXPECT_EQ(log->getTaskLog().size(), 5u);
    EXPECT_DOUBLE_EQ(log->getGauge()->getMeasure(), 0.5);
    EXPECT_EQ(log->getTitle().getString(), L"Renamed");
    logger_write(log, "after");
    EXPECT_EQ(log->getRow(log->getNumUsedRows() - 1).font.name, "Serif");
}

TEST_F(LoggerFunctionsTest, MakeLoggerCentresForANegativeXAndOtherwiseUsesTheCorner)
{
    Logger* centred = make_logger(L"Export", false, L"", true, 10, 500, -1, 0);
    ASSERT_NE(centred, nullptr);
    const XY<int> screen = ui.screen().getSize();
    EXPECT_EQ(centred->getScreenBox().centre(), XY<int>(screen.x / 2, screen.y / 2));
    EXPECT_NE(centred->getGauge(), nullptr);

    Logger* placed = make_logger(L"Import", true, L"", false, 10, 500, 30, 40);
    ASSERT_NE(placed, nullptr);
    EXPECT_EQ(placed->getScreenPos(), XY<int>(30, 40));
    EXPECT_EQ(placed->getGauge(), nullptr);
}

TEST_F(LoggerFunctionsTest, ChangesFromAWorkerThreadReachThePanelOnTheUserInterfaceThread)
{
    log = makeLogger(Logger::ShowGauge);
    std::thread worker([this] {
        logger_set_new_title(log, L"From a worker");
        logger_display_progress(log, 0.25);
    });
    worker.join();
    EXPECT_NE(log->getTitle().getString(), L"From a worker");
    ui.step();
    EXPECT_EQ(log->getTitle().getString(), L"From a worker");
    EXPECT_DOUBLE_EQ(log->getGauge()->getMeasure(), 0.25);
}
