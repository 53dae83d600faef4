#include "lists/SimpleFileBrowser.h"
#include "toolkit/testing/UiHarness.h"

#include <gtest/gtest.h>

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
