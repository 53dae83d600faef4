#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/Event.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/ui/VerticalScrollingBase.h"

#include <gtest/gtest.h>

namespace {

StandardPanel::InitArgs panelArgs(unsigned widgets, bool resizable = false, bool movable = true)
{
    StandardPanel::InitArgs args(L"Test panel", 300, 200, widgets);
    args.resizable = resizable;
    args.movable = movable;
    return args;
}

// A row that takes the keyboard, so keys reach the panel from inside it, as from a real entry box.
class FocusRow : public Glob, public TabOrderable {
public:
    using Glob::Glob;
};

// A panel that commits itself instead of passing the news on.
class CommittingPanel : public StandardPanel {
public:
    using StandardPanel::StandardPanel;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override
    {
        if (name == doItMsg) {
            ++commits;
            return true;
        }
        return StandardPanel::handleMessageEvent(name, sender);
    }
    int commits = 0;
};

XY<int> titlePoint(const StandardPanel* panel)
{
    return panel->getTitleBarBox().centre();
}

} // namespace

TEST(StandardPanel, DraggingTheTitleBarMovesAMovablePanel)
{
    UiHarness ui;
    auto* panel = ui.makeTopLevel<StandardPanel>(panelArgs(StandardPanel::CloseButton), {100, 100});
    const XY<int> from = titlePoint(panel);
    ui.drag(panel, from, {from.x + 50, from.y - 30});
    EXPECT_EQ(panel->getPosition(), XY<int>(150, 70));

    // The user area is not a handle: a drag there leaves the panel where it is.
    const GlobBox user = panel->getUserArea();
    ui.drag(panel, user.centre(), {user.centre().x + 40, user.centre().y});
    EXPECT_EQ(panel->getPosition(), XY<int>(150, 70));

    auto* fixed = ui.makeTopLevel<StandardPanel>(panelArgs(StandardPanel::CloseButton, false, false), {500, 300});
    const XY<int> fixedFrom = titlePoint(fixed);
    ui.drag(fixed, fixedFrom, {fixedFrom.x + 20, fixedFrom.y + 20});
    EXPECT_EQ(fixed->getPosition(), XY<int>(500, 300));
}

TEST(StandardPanel, DraggedTopLevelPanelStaysOnScreen)
{
    UiHarness ui(800, 600);
    auto* panel = ui.makeTopLevel<StandardPanel>(panelArgs(StandardPanel::CloseButton), {100, 100});
    const XY<int> from = titlePoint(panel);
    ui.drag(panel, from, {from.x + 2000, from.y + 2000});
    const XY<int> expected = GlobManager::getSafePosForGlob({100 + 2000, 100 + 2000}, panel->getSize());
    EXPECT_EQ(panel->getPosition(), expected);
    EXPECT_TRUE(ui.screen().getArea().contains(panel->getScreenBox()));
}

TEST(StandardPanel, DraggingEdgesResizesAgainstTheOppositeEdge)
{
    UiHarness ui;
    auto* panel = ui.makeTopLevel<StandardPanel>(panelArgs(StandardPanel::CloseButton, true), {200, 200});
    const int h = panel->getHeight();

    ui.drag(panel, {299, h / 2}, {339, h / 2}); // right edge
    EXPECT_EQ(panel->getBox(), GlobBox(200, 200, 540, 400));

    ui.drag(panel, {0, h / 2}, {30, h / 2}); // left edge: the right edge stays
    EXPECT_EQ(panel->getBox(), GlobBox(230, 200, 540, 400));

    ui.drag(panel, {panel->getWidth() - 1, 0}, {panel->getWidth() + 19, -50}); // bottom-right corner
    EXPECT_EQ(panel->getBox(), GlobBox(230, 150, 560, 400));

    // Shrinking stops at the minimum size, with the top and left edges left where they were.
    ui.drag(panel, {panel->getWidth() - 1, 0}, {-2000, 2000});
    EXPECT_EQ(panel->getSize(), panel->getMinSize());
    EXPECT_EQ(panel->getX(), 230);
    EXPECT_EQ(panel->getY() + panel->getHeight(), 400);
}

TEST(StandardPanel, EdgesOfAFixedSizePanelDoNotResize)
{
    UiHarness ui;
    auto* panel = ui.makeTopLevel<StandardPanel>(panelArgs(StandardPanel::CloseButton, false), {200, 200});
    ui.drag(panel, {299, 100}, {360, 100});
    EXPECT_EQ(panel->getSize(), XY<int>(300, 200));
    EXPECT_EQ(panel->contextCursor({299, 100}), panel->contextCursor({150, 100}));
}

TEST(StandardPanel, CloseButtonDestroysThePanel)
{
    UiHarness ui;
    auto* panel = ui.makeTopLevel<StandardPanel>(panelArgs(StandardPanel::CloseButton), {100, 100});
    GlobWatch watch(panel);
    const GlobBox close = panel->getStandardWidgetBox(StandardPanel::CloseButton);
    ASSERT_FALSE(close.empty());
    ui.click(panel, close.centre());
    ui.step();
    EXPECT_FALSE(watch.alive());
}

TEST(StandardPanel, ACopyHasTheTitleButtonsAndAMenuOfItsOwnButNoDragInProgress)
{
    UiHarness ui;
    auto* panel = ui.make<StandardPanel>(panelArgs(StandardPanel::CloseButton), Glob::BottomLeft(50, 50));
    panel->getMenu()->addMenuItem(MenuItem(L"Only", {}));
    ui.press(panel, titlePoint(panel));
    StandardPanel copy(*panel);
    EXPECT_EQ(copy.getTitle(), panel->getTitle());
    EXPECT_EQ(copy.getStandardWidgets(), panel->getStandardWidgets());
    ASSERT_TRUE(copy.hasMenu());
    EXPECT_NE(copy.getMenu(), panel->getMenu());
    EXPECT_EQ(copy.getMenu()->numItems(), 1u);
    const XY<int> before = copy.getPosition();
    const XY<int> title = titlePoint(&copy);
    copy.react(Event::makeMouse(Event::MouseDrag, {title.x + 40, title.y}));
    EXPECT_EQ(copy.getPosition(), before);
    ui.release(panel, titlePoint(panel));
}

TEST(StandardPanel, ReleasingAwayFromAButtonCancelsIt)
{
    UiHarness ui;
    auto* panel = ui.make<StandardPanel>(panelArgs(StandardPanel::CloseButton | StandardPanel::DoItButton),
                                         Glob::BottomLeft(50, 50));
    GlobWatch watch(panel);
    const GlobBox close = panel->getStandardWidgetBox(StandardPanel::CloseButton);
    ui.press(panel, close.centre());
    ui.release(panel, panel->getUserArea().centre());
    ui.step();
    EXPECT_TRUE(watch.alive());
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 0u);
}

TEST(StandardPanel, DoItReachesTheOwnerUnlessThePanelHandlesIt)
{
    UiHarness ui;
    auto* panel = ui.make<StandardPanel>(panelArgs(StandardPanel::CloseButton | StandardPanel::DoItButton),
                                         Glob::BottomLeft(50, 50));
    const GlobBox doIt = panel->getStandardWidgetBox(StandardPanel::DoItButton);
    ASSERT_FALSE(doIt.empty());
    EXPECT_FALSE(doIt.intersects(panel->getStandardWidgetBox(StandardPanel::CloseButton)));
    ui.click(panel, doIt.centre());
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 1u);
    EXPECT_EQ(ui.owner().lastSender(), panel);

    auto* committing = ui.make<CommittingPanel>(panelArgs(StandardPanel::DoItButton), Glob::BottomLeft(400, 50));
    ui.owner().clear();
    ui.click(committing, committing->getStandardWidgetBox(StandardPanel::DoItButton).centre());
    EXPECT_EQ(committing->commits, 1);
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 0u);
}

TEST(StandardPanel, OwnerMayDestroyThePanelFromItsDoItMessage)
{
    UiHarness ui;
    auto* panel = ui.make<StandardPanel>(panelArgs(StandardPanel::DoItButton), Glob::BottomLeft(50, 50));
    GlobWatch watch(panel);
    ui.owner().onMessage = [&](const RecordingOwner::Received& r) {
        if (r.name == StandardPanel::doItMsg)
            Glob::destroy(r.sender);
    };
    ui.click(panel, panel->getStandardWidgetBox(StandardPanel::DoItButton).centre());
    ui.step();
    EXPECT_FALSE(watch.alive());
}

TEST(StandardPanel, EscapeClosesAndReturnCommitsOnlyWithTheirButtons)
{
    UiHarness ui;
    auto* plain = ui.make<StandardPanel>(panelArgs(StandardPanel::NoWidgets), Glob::BottomLeft(20, 20));
    GlobWatch plainWatch(plain);
    ASSERT_TRUE(ui.focus(plain));
    ui.pressKey(Event::KeyEscape);
    ui.pressKey(Event::KeyReturn);
    ui.step();
    EXPECT_TRUE(plainWatch.alive());
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 0u);

    auto* panel = ui.make<StandardPanel>(panelArgs(StandardPanel::CloseButton | StandardPanel::DoItButton),
                                         Glob::BottomLeft(400, 20));
    auto* row = panel->addWidget<FocusRow>(FocusRow::InitArgs(100, 22), Glob::UserTopLeft(0, 0));
    GlobWatch watch(panel);
    // Keys the focused row does not use travel up to its panel.
    ASSERT_TRUE(ui.focus(row));
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 1u);
    ui.pressKey(Event::KeyEscape);
    ui.step();
    EXPECT_FALSE(watch.alive());
}

TEST(StandardPanel, CalcPanelSizeGivesExactlyTheWantedUserArea)
{
    UiHarness ui;
    const StandardPanel::BorderStyle styles[] = {StandardPanel::NoBorder, StandardPanel::ThinBorder,
                                                 StandardPanel::RaisedBorder, StandardPanel::SunkenBorder};
    for (StandardPanel::BorderStyle style : styles) {
        for (unsigned widgets : {unsigned(StandardPanel::NoWidgets), unsigned(StandardPanel::CloseButton)}) {
            for (const wchar_t* title : {L"", L"Titled"}) {
                StandardPanel::InitArgs args(title, 0, 0, widgets);
                args.border = style;
                const XY<int> size = StandardPanel::calcPanelSize(217, 93, args);
                args.width = static_cast<uint16_t>(size.x);
                args.height = static_cast<uint16_t>(size.y);
                auto* panel = ui.make<StandardPanel>(args);
                SCOPED_TRACE(testing::Message() << "style " << int(style) << " widgets " << widgets << " title "
                                                << (*title ? "yes" : "no"));
                EXPECT_EQ(panel->getUserArea().size(), XY<int>(217, 93));
                EXPECT_EQ(panel->calcPanelSize(217, 93), size);
                // The title bar, when there is one, lies above the user area and does not overlap it.
                if (panel->hasTitleBar()) {
                    EXPECT_EQ(panel->getTitleBarBox().bottom(), panel->getUserArea().top());
                }
                Glob::destroy(panel);
            }
        }
    }
}

TEST(StandardPanel, AddingAButtonToAnUntitledPanelMakesRoomForTheTitleBar)
{
    UiHarness ui;
    StandardPanel::InitArgs args(L"", 200, 150, StandardPanel::NoWidgets);
    auto* panel = ui.make<StandardPanel>(args);
    auto* row = panel->addWidget<Glob>(Glob::InitArgs(50, 20), Glob::UserTopLeft(0, 0));
    const int topBefore = row->getY() + row->getHeight();
    panel->addStandardWidgets(StandardPanel::CloseButton);
    EXPECT_TRUE(panel->hasTitleBar());
    EXPECT_EQ(row->getY() + row->getHeight(), topBefore - UifStd::getWindowArrangement().titleBarHeight);
}

TEST(StandardPanel, TitleBarIsPaintedInTheTitleBarColour)
{
    UiHarness ui;
    auto* panel = ui.makeTopLevel<StandardPanel>(panelArgs(StandardPanel::CloseButton), {100, 100});
    const GlobBox bar = panel->getTitleBarBox();
    const GlobBox close = panel->getStandardWidgetBox(StandardPanel::CloseButton);
    // Between the title text and the close button only the bar itself shows.
    const Colour got = ui.pixelAt(panel, {close.left() - 4, bar.bottom() + 3});
    const Colour want = panel->getPalette().titleBar();
    EXPECT_NEAR(got.r(), want.r(), 0.02);
    EXPECT_NEAR(got.g(), want.g(), 0.02);
    EXPECT_NEAR(got.b(), want.b(), 0.02);
}

TEST(StandardPanel, MadeByTypeNameWithItsTitle)
{
    UiHarness ui;
    GlobCreationInfo info(240, 160);
    info.typeName = "StandardPanel";
    info.config.set("title", "Named \xc3\xa9");
    Glob* made = GlobManager::createGlob(info);
    auto* panel = dynamic_cast<StandardPanel*>(made);
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->getTitle().getString(), LightweightString<wchar_t>(L"Named \u00e9"));
    EXPECT_EQ(panel->getSize(), XY<int>(240, 160));
    Glob::destroy(made);
    info.typeName = "VerticalScrollingBase";
    made = GlobManager::createGlob(info);
    EXPECT_NE(dynamic_cast<VerticalScrollingBase*>(made), nullptr);
    Glob::destroy(made);
}

TEST(StandardPanel, PointerShowsWhatAnEdgeOrButtonWillDo)
{
    UiHarness ui;
    auto* panel = ui.makeTopLevel<StandardPanel>(panelArgs(StandardPanel::CloseButton, true), {200, 200});
    ui.moveTo(panel, XY<int>{299, 100});
    ui.step();
    EXPECT_EQ(ui.backend().getCursorShape(), CursorResizeHorizontal);
    ui.moveTo(panel, XY<int>{150, 1});
    ui.step();
    EXPECT_EQ(ui.backend().getCursorShape(), CursorResizeVertical);
    ui.moveTo(panel, XY<int>{299, 1});
    ui.step();
    EXPECT_EQ(ui.backend().getCursorShape(), CursorResizeDiagonal);
    ui.moveTo(panel, panel->getStandardWidgetBox(StandardPanel::CloseButton).centre());
    ui.step();
    EXPECT_EQ(ui.backend().getCursorShape(), CursorHand);
    ui.moveTo(panel, panel->getUserArea().centre());
    ui.step();
    EXPECT_EQ(ui.backend().getCursorShape(), CursorArrow);
}
