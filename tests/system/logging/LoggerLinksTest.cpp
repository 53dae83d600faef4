#include "LoggerTestSupport.h"

#include "toolkit/ui/OsServices.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/TableWidget.h"

#include <cstdlib>

using Argv = std::vector<std::string>;

class LoggerLinksTest : public LoggerTest {
protected:
    LoggerLinksTest()
    {
        if (const char* bus = std::getenv("DBUS_SESSION_BUS_ADDRESS"))
            m_bus = bus;
        // Without a session bus the file browser is opened on the folder: one plain command to check.
        unsetenv("DBUS_SESSION_BUS_ADDRESS");
        m_previous = OsServices::setLauncher([this](const Argv& argv, bool, int& status) {
            launched.push_back(argv);
            status = 0;
            return true;
        });
    }
    ~LoggerLinksTest() override
    {
        OsServices::setLauncher(m_previous);
        if (!m_bus.empty())
            setenv("DBUS_SESSION_BUS_ADDRESS", m_bus.c_str(), 1);
    }
    // Writes the link and answers the centre of its row, in the table's coordinates.
    XY<int> writeLink(const LoggerBase::HyperLink& link)
    {
        log->write(link);
        const unsigned row = log->getNumUsedRows() - 1;
        return log->getTable()->getCellBox(row, 0).centre();
    }
    void clickLink(const LoggerBase::HyperLink& link) { ui.click(log->getTable(), writeLink(link)); }
    MenuGlob* openMenu() { return dynamic_cast<MenuGlob*>(ui.screen().getTopLevels().back()); }
    std::vector<std::wstring> labels(MenuGlob* menu)
    {
        std::vector<std::wstring> out;
        for (const MenuItem& item : menu->getItems())
            out.push_back(item.getLabel().getString().str());
        return out;
    }

    std::vector<Argv> launched;

private:
    OsServices::Launcher m_previous;
    std::string m_bus;
};

TEST_F(LoggerLinksTest, AnInternalLinkMakesTheRegisteredTypeWithItsParameters)
{
    GlobCreationInfo seen;
    GlobManager::registerType("LoggerLinksTestPanel", [&seen](const GlobCreationInfo& info) -> Glob* {
        seen = info;
        return new StandardPanel(StandardPanel::InitArgs(UIString(L"Settings"), 200, 100));
    });
    const size_t before = ui.screen().getTopLevels().size();
    clickLink(LoggerBase::HyperLink(
        { L"{\"type\":\"LoggerLinksTestPanel\",\"params\":{\"title\":\"Export settings\",\"tab\":\"audio\"}}" },
        L"settings", true));
    GlobManager::unregisterType("LoggerLinksTestPanel");
    EXPECT_EQ(ui.screen().getTopLevels().size(), before + 1);
    LightweightString<char> title, tab;
    EXPECT_EQ(seen.config.in("title", title), 0);
    EXPECT_EQ(seen.config.in("tab", tab), 0);
    EXPECT_EQ(title, "Export settings");
    EXPECT_EQ(tab, "audio");
    EXPECT_TRUE(launched.empty());
}

TEST_F(LoggerLinksTest, AnInternalLinkOfAnUnknownTypeMakesNothing)
{
    const size_t before = ui.screen().getTopLevels().size();
    clickLink(LoggerBase::HyperLink({ L"{\"type\":\"NoSuchPanelType\"}" }, L"settings", true));
    EXPECT_EQ(ui.screen().getTopLevels().size(), before);
}

TEST_F(LoggerLinksTest, ATargetStartingWithWwwOpensWithTheSystem)
{
    clickLink(LoggerBase::HyperLink({ L"www.example.com/notes" }, L"notes"));
    EXPECT_EQ(launched, std::vector<Argv>({ { "xdg-open", "http://www.example.com/notes" } }));
}

TEST_F(LoggerLinksTest, AnEdlTargetOfAnyCaseOpensWithTheSystem)
{
    clickLink(LoggerBase::HyperLink({ L"/projects/cut.EdL" }, L"list"));
    EXPECT_EQ(launched, std::vector<Argv>({ { "xdg-open", "/projects/cut.EdL" } }));
}

TEST_F(LoggerLinksTest, AMovieFileIsRevealedInTheFileBrowser)
{
    clickLink(LoggerBase::HyperLink({ L"/media/exports/cut.mov" }, L"movie"));
    EXPECT_EQ(launched, std::vector<Argv>({ { "xdg-open", "/media/exports" } }));
}

TEST_F(LoggerLinksTest, ALinkWithNoTargetsDoesNothing)
{
    const size_t before = ui.screen().getTopLevels().size();
    clickLink(LoggerBase::HyperLink({}, L"nothing"));
    EXPECT_TRUE(launched.empty());
    EXPECT_EQ(ui.screen().getTopLevels().size(), before);
}

TEST_F(LoggerLinksTest, RightClickOnAFileLinkOffersCopyOpenAndReveal)
{
    const XY<int> at = writeLink(LoggerBase::HyperLink({ L"/media/a.mov", L"/media/b.wav" }, L"files"));
    ui.click(log->getTable(), at, Event::RightButton);
    MenuGlob* menu = openMenu();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(labels(menu), std::vector<std::wstring>({ L"a.mov,b.wav", L"Copy to clipboard", L"Open",
                                                        L"Show in file browser" }));
    menu->chooseItem(1);
    EXPECT_EQ(ui.screen().getClipboardText(), L"/media/a.mov,/media/b.wav");
}

TEST_F(LoggerLinksTest, OpenFromTheMenuOpensEveryTarget)
{
    log->write(LoggerBase::HyperLink({ L"/a.mov", L"/b.mov" }, L"files"));
    auto* menu = dynamic_cast<MenuGlob*>(log->reviewMenu(0, { 100, 100 }));
    ASSERT_NE(menu, nullptr);
    menu->chooseItem(2);
    EXPECT_EQ(launched, std::vector<Argv>({ { "xdg-open", "/a.mov" }, { "xdg-open", "/b.mov" } }));
}

TEST_F(LoggerLinksTest, TheMenuOfOtherRowsOffersSavingToAFile)
{
    log->write(L"plain");
    auto* menu = dynamic_cast<MenuGlob*>(log->reviewMenu(0, { 100, 100 }));
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(labels(menu), std::vector<std::wstring>({ L"Save to file" }));
}

TEST_F(LoggerLinksTest, DraggingALinkHandsItsFilesToTheSystem)
{
    const XY<int> at = writeLink(LoggerBase::HyperLink({ L"/media/a.mov" }, L"movie"));
    ui.drag(log->getTable(), at, at + XY<int>(0, 3 * UifStd::getWidgetGap()));
    EXPECT_EQ(ui.screen().getClipboardText(), L"file:///media/a.mov\r\n");
    EXPECT_TRUE(launched.empty()); // a drag is not a click
}

TEST_F(LoggerLinksTest, ALinkWithABarInATargetIsNotDragged)
{
    ui.screen().setClipboardText(L"before");
    const XY<int> at = writeLink(LoggerBase::HyperLink({ L"/media/a|b.mov" }, L"movie"));
    ui.drag(log->getTable(), at, at + XY<int>(0, 3 * UifStd::getWidgetGap()));
    EXPECT_EQ(ui.screen().getClipboardText(), L"before");
}
