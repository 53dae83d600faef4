#include "LoggerTestSupport.h"

#include "toolkit/support/FileTestSupport.h"
#include "toolkit/support/FileUtils.h"
#include "toolkit/support/OS.h"
#include "toolkit/support/TextFile.h"
#include "toolkit/widgets/FileBrowserBase.h"
#include "toolkit/widgets/StatusMessage.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

std::string readFile(const LightweightString<wchar_t>& path)
{
    std::ifstream in(toUTF8(path.view()).str(), std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace

class LoggerExportTest : public LoggerTest {
protected:
    LightweightString<wchar_t> inFolder(const char* name) const { return fromUTF8(scratch.file(name)); }

    // Each test writes into a folder of its own: the tests run in parallel processes.
    const FileTestSupport::ScratchFolder scratch { "tessel-logger-export" };
    const std::filesystem::path& folder = scratch.path();
};

TEST_F(LoggerExportTest, TheWebPageConvertsEveryKindAsTheKindsTableSays)
{
    log->write(L"plain");
    log->write(L"hidden", Kind::Unexported);
    log->write(L"careful", Kind::Warning);
    log->write(L"note", Kind::Emphasis);
    log->write(L"failed", Kind::Error);
    log->write(L"Rendering", Kind::StatusLine);
    log->write(LoggerBase::HyperLink({ L"/a.mov" }, L"movie"));
    log->write(L"Export", Kind::Heading);
    log->write(L"Mixing", Kind::StatusLineNoWrap);
    log->write(L"done", Kind::Success);
    log->write(L"odd", static_cast<Kind>(10));
    log->write(L"");
    EXPECT_EQ(log->makeHtml(),
              "<pre>\n"
              "plain\n"
              "\n"
              "<font color=\"#999900\">careful</font>\n"
              "<i>note</i>\n"
              "<font color=\"#FF0000\">failed</font>\n"
              "\n<b>Rendering</b>\n"
              "\n"
              "<b>Export</b>\n"
              "\n<b>Mixing</b>\n"
              "<font color=\"#00CC33\">done</font>\n"
              "\n"
              "<p>\n"
              "</pre>\n");
}

TEST_F(LoggerExportTest, MarkupInLoggedTextIsEscapedInTheWebPage)
{
    log->write(L"<script>alert('x & y')</script> \"q\"");
    log->write(L"<b>", Kind::Error);
    EXPECT_EQ(log->makeHtml(),
              "<pre>\n"
              "&lt;script&gt;alert(&#39;x &amp; y&#39;)&lt;/script&gt; &quot;q&quot;\n"
              "<font color=\"#FF0000\">&lt;b&gt;</font>\n"
              "</pre>\n");
}

TEST_F(LoggerExportTest, TheWebPageHoldsTheWholeLogNotTheRowsOnScreen)
{
    // Leading empty lines never reach the screen but are part of what was logged.
    log->write(L"\n\nfirst\nsecond");
    EXPECT_EQ(log->getNumUsedRows(), 2u);
    EXPECT_EQ(log->makeHtml(), "<pre>\n\n\nfirst\nsecond\n</pre>\n");
}

TEST_F(LoggerExportTest, ChoosingAFolderWritesTaskLogHtmlThereAndSaysSo)
{
    log->write(L"line");
    log->exportHtml();
    auto* browser = dynamic_cast<FileBrowserBase*>(ui.screen().getTopLevels().back());
    ASSERT_NE(browser, nullptr);
    ASSERT_TRUE(browser->setFolder(fromUTF8(folder.string())));
    browser->choose();
    const LightweightString<wchar_t> path = inFolder("TaskLog.html");
    EXPECT_EQ(readFile(path), "<pre>\nline\n</pre>\n");
    auto* message = dynamic_cast<StatusMessage*>(ui.screen().getTopLevels().back());
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->getText(), L"The log has been saved to " + path);
}

TEST_F(LoggerExportTest, PlainTextHasOneLinePerStoreRowReserveRowsIncluded)
{
    log->write(L"one");
    log->write(L"two", Kind::Warning);
    const LightweightString<wchar_t> path = inFolder("rows.txt");
    ASSERT_TRUE(log->writeRows(path));
    std::string expected = "one\ntwo\n";
    for (unsigned i = 2; i < log->getStoreSize(); ++i)
        expected += "\n";
    EXPECT_GT(log->getStoreSize(), 2u);
    EXPECT_EQ(readFile(path), expected);
}

TEST_F(LoggerExportTest, SaveToFileWritesLogTxtInTheUsersFolder)
{
    log->write(L"saved");
    ASSERT_TRUE(log->saveToFile());
    const LightweightString<wchar_t> path = joinPaths(OS()->fileManager().getUserDirectory(), L"log.txt");
    EXPECT_EQ(readFile(path).substr(0, 6), "saved\n");
    removeFile(path);
}

TEST_F(LoggerExportTest, ClosingWritesTheRowsToTheLogFile)
{
    Logger::InitArgs args(10, 600, 0);
    args.logFileName = L"export-test.log";
    auto* logging = ui.make<Logger>(args);
    const LightweightString<wchar_t> path = logging->getLogFilePath();
    EXPECT_EQ(path, getSystemLogDirectory() + L"export-test.log");
    removeFile(path);
    logging->write(L"kept\nfor later");
    Glob::destroy(logging);
    EXPECT_EQ(readFile(path).substr(0, 15), "kept\nfor later\n");
}

TEST_F(LoggerExportTest, TheCallbackHearsLoggerDiedWhenThePanelCloses)
{
    log->set_callback_who(&ui.owner());
    Glob::destroy(log);
    EXPECT_EQ(ui.owner().count(Logger::diedMsg), 1u);
}
