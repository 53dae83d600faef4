// The action notifier and its first-use hints: which text each action shows, when a hint is given and
// remembered, where the hint window goes, its check box, and actions reported from other threads.
#include "uistate/UIStateManager.h"

#include "UIStateTestSupport.h"

#include "toolkit/support/FileUtils.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/support/Resources.h"
#include "toolkit/widgets/Checkbox.h"
#include "uistate/HintWindow.h"

#include <atomic>
#include <filesystem>
#include <thread>
#include <vector>

namespace {

// A manager beside the process's own, over the same preferences: what the next run of the editor would see.
class FreshManager : public UIStateManager {
public:
    FreshManager() : UIStateManager(SeparateManager {}) {}
};

eUIActionType action(int number)
{
    return static_cast<eUIActionType>(number);
}

Checkbox* checkboxOf(HintWindow* window)
{
    for (size_t i = 0; window && i < window->numChildren(); ++i)
        if (auto* box = dynamic_cast<Checkbox*>(window->child(i)))
            return box;
    return nullptr;
}

std::wstring text(int resId)
{
    return std::wstring(resourceStrW(resId).view());
}

class Hints : public UIStateFixture {
protected:
    Hints()
    {
        m_guard = manager().addListener(Cv::makeListener<eUIActionType>([this](const eUIActionType& heard) {
            m_heard.push_back(static_cast<int>(heard));
        }));
    }
    ~Hints() override
    {
        m_guard = nullptr;
        manager().hideHints();
    }

    static UIStateManager& manager() { return UIStateManager::instance(); }
    static std::wstring hintText()
    {
        HintWindow* window = UIStateManager::getHintWindow();
        return window ? std::wstring(window->getText().view()) : std::wstring();
    }
    static std::wstring textFor(int number) { return std::wstring(UIStateManager::hintTextFor(action(number)).view()); }

    Cv::Ptr<Cv::Guard> m_guard;
    std::vector<int> m_heard;
};

TEST_F(Hints, EachActionHasTheTextOfItsTableEntry)
{
    const std::vector<std::pair<int, int>> plain { { 0, 11472 }, { 1, 11467 }, { 2, 11465 }, { 4, 11464 },
        { 5, 11471 }, { 6, 11473 }, { 7, 11470 }, { 8, 11593 }, { 10, 13038 }, { 13, 13105 }, { 14, 13125 },
        { 15, 13264 }, { 17, 13600 }, { 18, 13599 }, { 19, 13612 }, { 20, 13601 }, { 21, 13602 }, { 22, 13603 },
        { 26, 13606 }, { 28, 13608 }, { 30, 13610 }, { 31, 13611 }, { 33, 13615 }, { 34, 13657 }, { 37, 13694 },
        { 38, 13717 }, { 39, 13856 }, { 40, 13876 }, { 41, 14031 }, { 42, 14159 }, { 43, 14177 } };
    for (const auto& [number, resId] : plain) {
        EXPECT_EQ(textFor(number), text(resId)) << "action " << number;
        EXPECT_EQ(textFor(number).find(L"[#"), std::wstring::npos) << "action " << number << " has no text";
    }
    for (const int none : { 35, 36 })
        EXPECT_EQ(textFor(none), L"") << "action " << none;
}

TEST_F(Hints, WindowArrangementChoosesTheTextsOfActionsNineElevenAndTwentyNine)
{
    EXPECT_EQ(textFor(9), text(11468));
    EXPECT_EQ(textFor(11), text(13079));
    EXPECT_EQ(textFor(29), L"");
    WindowArrangement single;
    single.layout = WindowArrangement::SingleWindow;
    UifStd::setWindowArrangement(single);
    EXPECT_EQ(textFor(9), L"");
    EXPECT_EQ(textFor(11), text(14154));
    EXPECT_EQ(textFor(29), text(13609));
}

TEST_F(Hints, KeyHintsNameTheFirstBoundKey)
{
    writeKeybindings("TogglePlay\tK, Space\nUndo\tCtrl+Shift+Z\n");
    EXPECT_EQ(textFor(23), L"Press K to start or stop playback.");
    EXPECT_EQ(textFor(27), L"Press Ctrl+Shift+Z to undo your last change; nothing you do is lost for good.");
    EXPECT_EQ(textFor(12), L"Press F11 to switch the full-screen view on or off.");
    EXPECT_EQ(textFor(32), L"Press Ctrl+J to join picture and sound, or to separate them so that you can move each on its own.");
}

TEST_F(Hints, ActionTwentyFourJoinsTwoSentencesWithTwoSpaces)
{
    EXPECT_EQ(textFor(24), L"Press Space to start or stop playback.  " + text(13614));
    writeKeybindings("TogglePlay\t\n");
    EXPECT_EQ(textFor(24), L"  " + text(13614));
}

TEST_F(Hints, ActionSixteenNamesTheLutFolder)
{
    const std::wstring folder(getLUTDirectory(0).view());
    EXPECT_EQ(textFor(16), L"Look-up tables (LUTs) are read from " + folder
                               + L". Copy your own LUT files there and they will be offered with the others.");
}

TEST_F(Hints, ActionTwentyFiveDependsOnTheScreenConsole)
{
    EXPECT_EQ(textFor(25), text(13116));
    m_ui.make<Glob>(Glob::InitArgs(40, 20))->setName("ScreenConsole");
    EXPECT_EQ(textFor(25), text(13080));
}

TEST_F(Hints, FirstReportShowsTheHintAndMarksIt)
{
    manager().recordAction(action(7));
    EXPECT_EQ(hintText(), text(11470));
    EXPECT_TRUE(UIStateManager::getHintIssued(action(7)));
    EXPECT_EQ(prefs().getPreference("UI : Hinted 7", LightweightString<char>()), "true");
    EXPECT_EQ(m_heard, std::vector<int> { 7 });
}

TEST_F(Hints, SecondReportOfAnActionShowsNothingUntilTheFlagsAreReset)
{
    manager().recordAction(action(7));
    manager().hideHints();
    manager().recordAction(action(7));
    EXPECT_EQ(UIStateManager::getHintWindow(), nullptr);
    manager().setHintsEnabled(true, true);
    EXPECT_FALSE(UIStateManager::getHintIssued(action(7)));
    manager().recordAction(action(7));
    EXPECT_EQ(hintText(), text(11470));
    EXPECT_EQ(m_heard, (std::vector<int> { 7, 7, 7 }));
}

TEST_F(Hints, SwitchedOffHintsShowNothingButListenersHearEveryAction)
{
    manager().setHintsEnabled(false, false);
    for (int number = 0; number < numUIActionTypes; ++number)
        manager().recordAction(action(number));
    EXPECT_EQ(UIStateManager::getHintWindow(), nullptr);
    EXPECT_EQ(m_heard.size(), size_t(numUIActionTypes));
    EXPECT_FALSE(UIStateManager::getHintIssued(action(0)));
}

TEST_F(Hints, ActionThreeIsNotMarkedOnceTheDeviceFileExists)
{
    const std::filesystem::path file = toUTF8((getDeviceDataDirectory(0) + L"extcfg.dat").view()).str();
    FileTestSupport::writeBytes(file, "configured");
    manager().recordAction(action(3));
    manager().recordAction(action(3));
    std::filesystem::remove(file);
    EXPECT_EQ(UIStateManager::getHintWindow(), nullptr);
    EXPECT_FALSE(UIStateManager::getHintIssued(action(3)));
    EXPECT_EQ(m_heard, (std::vector<int> { 3, 3 }));
    manager().recordAction(action(3));
    EXPECT_EQ(hintText(), text(11469));
}

TEST_F(Hints, ActionTwelveWithNoKeyBoundShowsNothingAndIsNotMarked)
{
    writeKeybindings("ToggleFullScreen\t\n");
    manager().recordAction(action(12));
    EXPECT_EQ(UIStateManager::getHintWindow(), nullptr);
    EXPECT_FALSE(UIStateManager::getHintIssued(action(12)));
    EXPECT_EQ(m_heard, std::vector<int> { 12 });
}

TEST_F(Hints, SecondHintIsAppendedToTheOpenWindow)
{
    manager().recordAction(action(0));
    HintWindow* first = UIStateManager::getHintWindow();
    manager().recordAction(action(1));
    EXPECT_EQ(UIStateManager::getHintWindow(), first);
    EXPECT_EQ(hintText(), text(11472) + L"\n" + text(11467));
    EXPECT_TRUE(UIStateManager::getHintIssued(action(1)));
}

TEST_F(Hints, HintWithoutPositionSitsAtTheButtonHeight)
{
    manager().recordAction(action(0));
    const int h = UifStd::getButtonHeight();
    EXPECT_EQ(UIStateManager::getHintWindow()->getScreenPos(), (XY<int> { h, h }));
}

TEST_F(Hints, HintWithPositionHasItsBottomLeftThere)
{
    manager().recordAction(action(0), { 300, 200 });
    EXPECT_EQ(UIStateManager::getHintWindow()->getScreenPos(), (XY<int> { 300, 200 }));
}

TEST_F(Hints, TrashWidgetOverridesAnExplicitPosition)
{
    Glob* trash = m_ui.make<Glob>(Glob::InitArgs(30, 50), Glob::BottomLeft(500, 100));
    trash->setName("trash");
    manager().recordAction(action(0), { 300, 200 });
    EXPECT_EQ(UIStateManager::getHintWindow()->getScreenPos(), (XY<int> { 540, 175 }));
}

TEST_F(Hints, HintNearTheScreenEdgeStaysOnScreen)
{
    manager().recordAction(action(0), { 1020, 760 });
    const GlobBox box = UIStateManager::getHintWindow()->getScreenBox();
    EXPECT_LE(box.right(), 1024);
    EXPECT_LE(box.top(), 768);
}

TEST_F(Hints, WindowClosedElsewhereIsRecognisedAndANewOneMade)
{
    manager().recordAction(action(0));
    Glob::destroy(UIStateManager::getHintWindow());
    m_ui.step();
    EXPECT_EQ(UIStateManager::getHintWindow(), nullptr);
    manager().recordAction(action(1));
    EXPECT_EQ(hintText(), text(11467));
}

TEST_F(Hints, CheckboxSitsAtTheBottomRightInsideTheBorder)
{
    manager().recordAction(action(0));
    HintWindow* window = UIStateManager::getHintWindow();
    Glob* box = checkboxOf(window);
    ASSERT_NE(box, nullptr);
    const GlobBox area = window->getUserArea();
    EXPECT_EQ(box->getX() + box->getWidth(), area.right());
    EXPECT_EQ(box->getY(), area.bottom());
    EXPECT_EQ(box->getHeight(), UifStd::getButtonHeight());
    EXPECT_EQ(box->getWidth(), Checkbox::calcWidth(UIString(ResId(HintWindow::checkboxLabelId))));
}

TEST_F(Hints, UntickingTheCheckboxStopsHintsAndForgetsTheIssuedOnes)
{
    manager().recordAction(action(0));
    Checkbox* box = checkboxOf(UIStateManager::getHintWindow());
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->getValue());
    m_ui.click(box);
    EXPECT_FALSE(manager().getHintsEnabled());
    EXPECT_FALSE(UIStateManager::getHintIssued(action(0)));
    m_ui.click(box);
    EXPECT_TRUE(manager().getHintsEnabled());
}

TEST_F(Hints, PreferencesSurviveANewManagerReadingTheSameStore)
{
    manager().recordAction(action(5));
    manager().setHintsEnabled(false, false);
    prefs().reload();
    FreshManager next;
    EXPECT_FALSE(next.getHintsEnabled());
    EXPECT_TRUE(UIStateManager::getHintIssued(action(5)));
    next.setHintsEnabled(true, false);
    next.recordAction(action(5));
    next.recordAction(action(6));
    EXPECT_EQ(hintText(), text(11471) + L"\n" + text(11473)) << "only the hint not given before is new";
}

TEST_F(Hints, PositionedReportRunsOnTheCallingThread)
{
    manager().setHintsEnabled(false, false);
    std::thread([] { UIStateManager::instance().recordAction(action(2), { 10, 10 }); }).join();
    EXPECT_EQ(m_heard, std::vector<int> { 2 });
    EXPECT_EQ(numDeferredCalls(), 0u);
}

TEST_F(Hints, ActionsFromEightThreadsAreEachHandledOnceOnTheMainThread)
{
    constexpr int threads = 8;
    constexpr int perThread = 10000;
    manager().setHintsEnabled(false, false);
    std::atomic<int> offMain { 0 };
    std::vector<int> perAction(numUIActionTypes, 0);
    const auto guard = manager().addListener(Cv::makeListener<eUIActionType>([&](const eUIActionType& heard) {
        if (!isMainThread())
            ++offMain;
        ++perAction[static_cast<size_t>(heard)];
    }));
    std::vector<std::thread> reporters;
    for (int t = 0; t < threads; ++t)
        reporters.emplace_back([t] {
            for (int i = 0; i < perThread; ++i)
                UIStateManager::instance().recordAction(action((t * perThread + i) % numUIActionTypes));
        });
    // The main thread drains while the others are still posting, as a running editor would.
    size_t handled = 0;
    for (auto& reporter : reporters) {
        handled += runDeferredCalls();
        reporter.join();
    }
    handled += runDeferredCalls();
    EXPECT_EQ(handled, size_t(threads * perThread));
    EXPECT_EQ(offMain.load(), 0);
    std::vector<int> expected(numUIActionTypes, 0);
    for (int n = 0; n < threads * perThread; ++n)
        ++expected[static_cast<size_t>(n % numUIActionTypes)];
    EXPECT_EQ(perAction, expected);
    EXPECT_EQ(m_heard.size(), size_t(threads * perThread));
}

} // namespace
