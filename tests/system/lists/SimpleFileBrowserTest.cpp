#include "lists/SimpleFileBrowser.h"
#include "toolkit/support/Resources.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/widgets/TableColumnDescription.h"

#include <gtest/gtest.h>

TEST(SimpleFileBrowser, ShowsOneResizeableNameColumn)
{
    UiHarness ui;
    SimpleFileBrowser browser(nullptr, { 10, 10 });
    const std::vector<TableColumnDescription> columns = browser.getColumnDefinitions();
    ASSERT_EQ(columns.size(), 1u);
    EXPECT_EQ(columns[0].getKey(), LightweightString<char>("name"));
    EXPECT_EQ(columns[0].getTitle().getString(), resourceStrW(ResId(10668)));
    EXPECT_TRUE(columns[0].isResizeable());
    EXPECT_EQ(browser.getOptions(), SimpleFileBrowser::browserOptions);
}

TEST(SimpleFileBrowser, MakeWithNoXCentresTheBrowser)
{
    UiHarness ui;
    SimpleFileBrowser* browser = SimpleFileBrowser::make(FileBrowserBase::InitArgs(), { 0, 40 });
    ASSERT_NE(browser, nullptr);
    const GlobBox screen = ui.screen().getArea();
    EXPECT_EQ(browser->getX(), (screen.width() - browser->getWidth()) / 2);
    EXPECT_EQ(browser->getY(), (screen.height() - browser->getHeight()) / 2);
}

TEST(SimpleFileBrowser, MakeWithAnXPutsTheBottomLeftCornerThere)
{
    UiHarness ui;
    SimpleFileBrowser* browser = SimpleFileBrowser::make(FileBrowserBase::InitArgs(), { 30, 40 });
    ASSERT_NE(browser, nullptr);
    EXPECT_EQ(browser->getPosition(), XY<int>(30, 40));
}
