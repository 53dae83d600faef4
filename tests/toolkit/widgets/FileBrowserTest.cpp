// The folder browser over a real folder made for each test: listing, going in and up by mouse and keys,
// choosing and cancelling, and folders that cannot be read.

#include "toolkit/support/FileUtils.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/FileBrowser.h"
#include "toolkit/widgets/TableWidget.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class FileBrowserTest : public ::testing::Test {
protected:
    UiHarness ui{800, 600};
    fs::path root;

    void SetUp() override
    {
        root = fs::temp_directory_path() / ("tessel-browser-" + std::to_string(::getpid()) + "-"
                                            + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(root);
        fs::create_directories(root / "beta" / "inner");
        fs::create_directories(root / "alpha");
        fs::create_directories(root / ".hidden");
        std::ofstream(root / "notes.txt") << "x";
    }
    void TearDown() override
    {
        std::error_code ec;
        fs::permissions(root / "beta", fs::perms::owner_all, ec);
        fs::remove_all(root, ec);
    }

    LightweightString<wchar_t> path(const fs::path& p) const { return fromUTF8(p.string()); }

    FileBrowserBase* browser(unsigned options = FileBrowserBase::defaultOptions, const fs::path& at = {})
    {
        FileBrowserBase::InitArgs args(L"Choose", path(at.empty() ? root : at), 460, 380);
        args.options = options;
        return ui.make<FileBrowserBase>(args, Glob::BottomLeft(10, 10));
    }

    static std::vector<std::wstring> names(const FileBrowserBase* b)
    {
        std::vector<std::wstring> out;
        for (const auto& e : b->getEntries())
            out.emplace_back(e.name.view());
        return out;
    }

    Button* buttonLabelled(Glob* panel, const wchar_t* label)
    {
        for (size_t i = 0; i < panel->numChildren(); ++i)
            if (auto* b = dynamic_cast<Button*>(panel->child(i)); b && b->getString().getString() == label)
                return b;
        return nullptr;
    }
};

TEST_F(FileBrowserTest, ListsFoldersFirstAndFilesOrHiddenNamesOnlyWhenAsked)
{
    EXPECT_EQ(names(browser()), (std::vector<std::wstring>{L"alpha", L"beta"}));
    fs::create_directories(root / "Gamma");
    std::ofstream(root / "Zebra.txt") << "z";
    EXPECT_EQ(names(browser(FileBrowserBase::ListFiles | FileBrowserBase::ShowHidden)),
              (std::vector<std::wstring>{L".hidden", L"alpha", L"beta", L"Gamma", L"notes.txt", L"Zebra.txt"}))
        << "names sort without regard to case";
}

TEST_F(FileBrowserTest, DoubleClickGoesInAndUpComesBackToTheFolderLeft)
{
    FileBrowserBase* b = browser();
    TableWidget* table = b->getTable();
    ui.doubleClick(table, table->getCellBox(1, 0).centre());
    EXPECT_EQ(b->getFolder(), path(root / "beta"));
    EXPECT_EQ(names(b), std::vector<std::wstring>{L"inner"});

    ui.click(buttonLabelled(b, L"Up"));
    EXPECT_EQ(b->getFolder(), path(root));
    ASSERT_EQ(b->getCurrentRow(), 1) << "the folder just left is current";

    // Keys: Right goes into the current row, Backspace goes up.
    ui.focus(table);
    ui.pressKey(Event::KeyRight);
    EXPECT_EQ(b->getFolder(), path(root / "beta"));
    ui.pressKey(Event::KeyBackspace);
    EXPECT_EQ(b->getFolder(), path(root));

    // The root has no parent: it stays.
    ASSERT_TRUE(b->setFolder(L"/"));
    EXPECT_FALSE(b->goUp());
    EXPECT_EQ(b->getFolder(), L"/");
}

TEST_F(FileBrowserTest, OkChoosesTheCurrentFolderOrTheOneShownAndCloses)
{
    FileBrowserBase* b = browser();
    std::wstring chosen;
    ui.owner().onMessage = [&](const RecordingOwner::Received& r) {
        if (r.name == FileBrowserBase::chosenMsg)
            chosen = static_cast<FileBrowserBase*>(r.sender)->getChosenPath().view();
    };
    GlobWatch watch(b);
    b->setCurrentRow(0);
    ui.click(buttonLabelled(b, L"OK"));
    ui.step();
    EXPECT_EQ(chosen, std::wstring(path(root / "alpha").view()));
    EXPECT_FALSE(watch.alive());

    // No current row: the folder shown is the choice; Return does what OK does.
    FileBrowserBase* second = browser();
    ui.focus(second->getTable());
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(chosen, std::wstring(path(root).view()));
    EXPECT_EQ(ui.owner().count(FileBrowserBase::chosenMsg), 2u);
}

TEST_F(FileBrowserTest, CancelAndTheCloseButtonTellTheOwnerThatNothingWasChosen)
{
    FileBrowserBase* b = browser();
    ui.click(buttonLabelled(b, L"Cancel"));
    EXPECT_EQ(ui.owner().count(FileBrowserBase::cancelledMsg), 1u);

    FileBrowserBase* second = browser();
    ui.click(second, second->getStandardWidgetBox(StandardPanel::CloseButton).centre());
    EXPECT_EQ(ui.owner().count(FileBrowserBase::cancelledMsg), 2u);
    EXPECT_EQ(ui.owner().count(FileBrowserBase::chosenMsg), 0u);
}

TEST_F(FileBrowserTest, FilesCannotBeChosenInAFolderBrowser)
{
    FileBrowserBase* b = browser(FileBrowserBase::ChooseFolder | FileBrowserBase::ListFiles);
    ASSERT_EQ(names(b).back(), L"notes.txt");
    b->setCurrentRow(static_cast<int>(b->getEntries().size()) - 1);
    EXPECT_EQ(b->getSelectedPath(), path(root)) << "a file row falls back to the folder shown";
    EXPECT_FALSE(b->enter(static_cast<unsigned>(b->getCurrentRow())));

    FileBrowserBase* files = browser(FileBrowserBase::ListFiles);
    files->setCurrentRow(static_cast<int>(files->getEntries().size()) - 1);
    EXPECT_EQ(files->getSelectedPath(), path(root / "notes.txt"));
}

TEST_F(FileBrowserTest, MissingFoldersAndFilesAreRefusedAsFolders)
{
    // A start folder that does not exist: the browser opens somewhere real instead.
    FileBrowserBase* b = browser(FileBrowserBase::defaultOptions, root / "no-such-folder");
    EXPECT_TRUE(directoryExists(b->getFolder()));
    EXPECT_FALSE(b->setFolder(path(root / "notes.txt")));
    EXPECT_FALSE(b->setFolder(L""));
}

TEST_F(FileBrowserTest, AnUnreadableFolderShowsEmptyAndTheUserCanStillGoUp)
{
    FileBrowserBase* b = browser();
    if (::geteuid() == 0)
        GTEST_SKIP() << "permissions do not keep the superuser out";
    fs::permissions(root / "beta", fs::perms::none);
    ASSERT_TRUE(b->setFolder(path(root / "beta")));
    EXPECT_FALSE(b->isFolderReadable());
    EXPECT_TRUE(b->getEntries().empty());
    ui.flush();
    EXPECT_TRUE(b->goUp());
    EXPECT_TRUE(b->isFolderReadable());
}

TEST_F(FileBrowserTest, MakeCentresTheBrowserUnlessGivenAPlace)
{
    FileBrowser* centred = FileBrowser::make(&ui.owner(), path(root), UIString(L"Pick"));
    ASSERT_NE(centred, nullptr);
    const XY<int> mid = centred->getScreenBox().centre();
    EXPECT_NEAR(mid.x, 400, 1);
    EXPECT_NEAR(mid.y, 300, 1);

    FileBrowser* placed = FileBrowser::make(&ui.owner(), path(root), UIString(L"Pick"), XY<int>(30, 40));
    ASSERT_NE(placed, nullptr);
    EXPECT_EQ(placed->getScreenPos(), XY<int>(30, 40));
    // The keyboard starts in the list.
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(placed->getCurrentRow(), 0);
    placed->cancel();
    EXPECT_EQ(ui.owner().count(FileBrowserBase::cancelledMsg), 1u) << "the chooser hears it, not a parent";
}

} // namespace
