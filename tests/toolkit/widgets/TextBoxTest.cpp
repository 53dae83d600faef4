// Text boxes driven as a user drives them: typing, selecting, the clipboard, commits and what the owner hears,
// the number box's corrections, and the hooks an entry with its own key rules builds on.

#include "toolkit/support/ValAdaptor.h"
#include "toolkit/support/ValServer.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/TabOrderManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/CustomTextBox.h"
#include "toolkit/widgets/NumericTextBox.h"
#include "toolkit/widgets/TextBoxBase.h"
#include "toolkit/widgets/TitleTextBox.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using WString = LightweightString<wchar_t>;

bool samePixels(const Pictor::Image& a, const Pictor::Image& b)
{
    if (a.width() != b.width() || a.height() != b.height())
        return false;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                return false;
    return true;
}

class TextBoxTest : public ::testing::Test {
protected:
    UiHarness ui{500, 200};

    TextBoxBase* box(const wchar_t* text = L"", uint16_t width = 200)
    {
        auto* b = ui.make<TextBoxBase>(TextBoxBase::InitArgs(text, width, 24, UifStd::getColourScheme()),
                                       Glob::BottomLeft(20, 20));
        ui.focus(b);
        return b;
    }
    XY<int> at(const TextBoxBase* b, size_t pos) const
    {
        return {static_cast<int>(b->xForPos(pos)), b->getHeight() / 2};
    }
};

TEST_F(TextBoxTest, TypingEditingAndCaretKeys)
{
    TextBoxBase* b = box();
    ui.typeText(L"hello world");
    EXPECT_EQ(b->getString(), L"hello world");
    EXPECT_EQ(ui.owner().count(TextBoxBase::changedMsg), 11u);

    ui.pressKey(Event::KeyHome);
    ui.pressKey(Event::KeyDelete);
    ui.pressKey(Event::KeyEnd);
    ui.pressKey(Event::KeyBackspace);
    EXPECT_EQ(b->getString(), L"ello worl");
    ui.pressKey(Event::KeyBackspace, Event::Ctrl);
    EXPECT_EQ(b->getString(), L"ello ") << "Ctrl+Backspace deletes the word before the caret";
    ui.pressKey(Event::KeyLeft, Event::Ctrl);
    EXPECT_EQ(b->getCaretPos(), 0u);
    ui.pressKey(Event::KeyLeft);
    EXPECT_EQ(b->getCaretPos(), 0u) << "the caret stops at the start";
    ui.pressKey(Event::KeyBackspace);
    EXPECT_EQ(b->getString(), L"ello ") << "nothing before the caret to delete";

    // Tab and Escape are not the box's business; the panel around it uses them.
    const size_t heard = ui.owner().count();
    ui.pressKey(Event::KeyEscape);
    EXPECT_EQ(b->getString(), L"ello ");
    EXPECT_EQ(ui.owner().count(), heard);
}

TEST_F(TextBoxTest, ShiftArrowsShiftClickDragAndDoubleClickSelect)
{
    TextBoxBase* b = box(L"alpha beta gamma");
    ui.pressKey(Event::KeyHome);
    ui.pressKey(Event::KeyRight, Event::Shift);
    ui.pressKey(Event::KeyRight, Event::Shift);
    EXPECT_EQ(b->getSelectedText(), L"al");
    ui.pressKey(Event::KeyRight);
    EXPECT_FALSE(b->hasSelection()) << "an arrow without Shift collapses the selection at its end";
    EXPECT_EQ(b->getCaretPos(), 2u);

    ui.click(b, at(b, 6));
    ui.click(b, at(b, 10), Event::LeftButton, Event::Shift);
    EXPECT_EQ(b->getSelectedText(), L"beta");

    ui.drag(b, at(b, 11), at(b, 16));
    EXPECT_EQ(b->getSelectedText(), L"gamma");

    ui.doubleClick(b, at(b, 2));
    EXPECT_EQ(b->getSelectedText(), L"alpha");

    ui.pressKey('a', Event::Ctrl);
    EXPECT_EQ(b->getSelectedText(), L"alpha beta gamma");
    ui.typeText(L"x");
    EXPECT_EQ(b->getString(), L"x") << "typing replaces the selection";
}

TEST_F(TextBoxTest, ClipboardCopyCutAndFilteredPaste)
{
    TextBoxBase* b = box(L"one two");
    ui.pressKey('a', Event::Ctrl);
    ui.pressKey('c', Event::Ctrl);
    EXPECT_EQ(ui.screen().getClipboardText(), L"one two");

    ui.pressKey(Event::KeyHome);
    ui.pressKey(Event::KeyRight, Event::Shift | Event::Ctrl);
    ui.pressKey('x', Event::Ctrl);
    EXPECT_EQ(ui.screen().getClipboardText(), L"one");
    EXPECT_EQ(b->getString(), L" two");

    // Newlines and tabs cannot live in one line; disallowed characters and the overflow are dropped too.
    b->setMaxLength(8);
    b->setAllowedChars(L" abcdefghijklmnopqrstuvwxyz");
    ui.screen().setClipboardText(L"a1\nb\tc2defgh");
    ui.pressKey(Event::KeyEnd);
    ui.pressKey('v', Event::Ctrl);
    EXPECT_EQ(b->getString(), L" twoabcd");
    ui.typeText(L"z");
    EXPECT_EQ(b->getString(), L" twoabcd") << "a full box refuses more";
    ui.pressKey(Event::KeyBackspace);
    ui.typeText(L"9Z");
    EXPECT_EQ(b->getString(), L" twoabc") << "digits and capitals are not allowed here";
}

TEST_F(TextBoxTest, ObfuscatedBoxesShowBulletsAndRefuseCopy)
{
    TextBoxBase* plain = box(L"secret");
    TextBoxBase* b = box(L"secret");
    b->setObfuscatedDisplay(true);
    ui.screen().setClipboardText(L"before");
    ui.pressKey('a', Event::Ctrl);
    ui.pressKey('c', Event::Ctrl);
    ui.pressKey('x', Event::Ctrl);
    EXPECT_EQ(ui.screen().getClipboardText(), L"before");
    EXPECT_EQ(b->getString(), L"secret") << "cut is refused too: it would be a copy";
    // Bullets are narrower than the letters, so the caret positions differ from the plain box's.
    EXPECT_NE(b->xForPos(6), plain->xForPos(6));
}

TEST_F(TextBoxTest, ReadOnlyBoxesSelectAndCopyButRefuseEdits)
{
    TextBoxBase* b = box(L"fixed");
    b->setEditable(false);
    ui.typeText(L"zz");
    ui.pressKey(Event::KeyBackspace);
    ui.screen().setClipboardText(L"pasted");
    ui.pressKey('v', Event::Ctrl);
    EXPECT_EQ(b->getString(), L"fixed");
    EXPECT_FALSE(b->isCaretShown());
    ui.pressKey('a', Event::Ctrl);
    ui.pressKey('c', Event::Ctrl);
    EXPECT_EQ(ui.screen().getClipboardText(), L"fixed");
    EXPECT_EQ(ui.owner().count(TextBoxBase::changedMsg), 0u);
}

TEST_F(TextBoxTest, CommitOnReturnAndOnFocusLossAfterAChangeOnly)
{
    auto server = Cv::make<ValServer<WString>>(WString(L"start"));
    TextBoxBase* b = box();
    b->setDataAdaptor(makeServerAdaptor(server));
    EXPECT_EQ(b->getString(), L"start") << "binding shows the bound value";

    ui.pressKey(Event::KeyEnd);
    ui.typeText(L"ed");
    EXPECT_EQ(server->getValue(), L"start") << "half-typed text is not the value yet";
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(server->getValue(), L"started");
    EXPECT_EQ(ui.owner().names().back(), TextBoxBase::returnPressedMsg);
    EXPECT_EQ(ui.owner().count(TextBoxBase::commitMsg), 1u);

    // Focus leaving without a change is not a commit; after a change it is.
    ui.screen().setFocus(nullptr);
    EXPECT_EQ(ui.owner().count(TextBoxBase::commitMsg), 1u);
    EXPECT_EQ(ui.owner().count(TextBoxBase::focusLostMsg), 1u);
    ui.focus(b);
    ui.typeText(L"!");
    ui.screen().setFocus(nullptr);
    EXPECT_EQ(ui.owner().count(TextBoxBase::commitMsg), 2u);
    EXPECT_EQ(server->getValue(), L"started!");

    server->setValue(WString(L"from code"));
    EXPECT_EQ(b->getString(), L"from code");
}

TEST_F(TextBoxTest, RequestedCallbacksReplaceTheOwnersMessageAndSurviveTheTargetsDeath)
{
    auto* listener = new RecordingOwner(10, 10);
    ui.owner().addChild(listener, Glob::BottomLeft(400, 100));
    TextBoxBase* b = box();
    b->requestCallback("advance", listener, TextBoxBase::eCommit);
    ui.typeText(L"a");
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(listener->count("advance"), 1u);
    EXPECT_EQ(ui.owner().count(TextBoxBase::commitMsg), 0u) << "one channel per event, never two";
    EXPECT_EQ(ui.owner().count(TextBoxBase::returnPressedMsg), 1u);

    Glob::destroy(listener);
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(ui.owner().count(TextBoxBase::commitMsg), 0u) << "a dead handler is forgotten, not called";

    // The box may be destroyed by whoever hears it.
    ui.owner().onMessage = [&](const RecordingOwner::Received& r) {
        if (r.name == TextBoxBase::changedMsg)
            Glob::destroy(r.sender);
    };
    GlobWatch watch(b);
    ui.typeText(L"xyz");
    EXPECT_FALSE(watch.alive());
}

TEST_F(TextBoxTest, LongTextScrollsToKeepTheCaretInView)
{
    TextBoxBase* b = box(L"", 60);
    ui.typeText(L"a long line of text that cannot fit");
    const GlobBox area = b->entryArea();
    EXPECT_GT(b->getScrollOffset(), 0.0);
    EXPECT_LE(b->xForPos(b->getCaretPos()), area.right());
    ui.pressKey(Event::KeyHome);
    EXPECT_DOUBLE_EQ(b->getScrollOffset(), 0.0);
    EXPECT_GE(b->xForPos(0), area.left());
    // Deleting the end brings hidden text back instead of leaving empty room.
    ui.pressKey(Event::KeyEnd);
    for (int i = 0; i < 30; ++i)
        ui.pressKey(Event::KeyBackspace);
    EXPECT_DOUBLE_EQ(b->getScrollOffset(), 0.0);
}

TEST_F(TextBoxTest, CaretBlinksOnTheToolkitClockAndGhostShowsOnlyWhenEmptyAndUnfocused)
{
    TextBoxBase* b = box(L"");
    EXPECT_TRUE(b->isCaretShown());
    ui.advance(600);
    EXPECT_FALSE(b->isCaretShown());
    ui.advance(530);
    EXPECT_TRUE(b->isCaretShown());
    ui.advance(530);
    ui.typeText(L"k");
    EXPECT_TRUE(b->isCaretShown()) << "an edit shows the caret at once";

    ui.pressKey(Event::KeyBackspace);
    ui.advance(600); // the caret off, so that only the ghost can differ
    const Pictor::Image focusedPlain = ui.grab(b->getScreenBox());
    b->setGhostLabel(UIString(L"Search"));
    EXPECT_TRUE(samePixels(focusedPlain, ui.grab(b->getScreenBox()))) << "no ghost while the user is about to type";

    ui.screen().setFocus(nullptr);
    const Pictor::Image unfocusedWithGhost = ui.grab(b->getScreenBox());
    b->setGhostLabel(UIString());
    const Pictor::Image unfocusedPlain = ui.grab(b->getScreenBox());
    EXPECT_FALSE(samePixels(unfocusedWithGhost, unfocusedPlain));
    b->setGhostLabel(UIString(L"Search"));
    b->setString(L"typed");
    b->setString(L"");
    EXPECT_TRUE(samePixels(unfocusedWithGhost, ui.grab(b->getScreenBox()))) << "the ghost returns when emptied";
}

TEST_F(TextBoxTest, DisabledBoxesIgnoreInput)
{
    TextBoxBase* b = box(L"kept");
    b->setEnabled(false);
    ui.typeText(L"x");
    ui.click(b);
    EXPECT_EQ(b->getString(), L"kept");
    EXPECT_FALSE(b->hasFocus());
}

// ---------------------------------------------------------------------------------------------------------
// Title text box

TEST_F(TextBoxTest, TitleTextBoxPutsTheEntryRightOfItsLegend)
{
    auto* t = ui.make<TitleTextBox>(TitleTextBox::InitArgs(UIString(L"Name"), L"abc", 120, 200, 24),
                                    Glob::BottomLeft(10, 100));
    EXPECT_EQ(t->entryArea().left(), 80);
    EXPECT_EQ(t->entryArea().width(), 120);
    ui.click(t, XY<int>(10, 12));
    EXPECT_TRUE(t->hasFocus()) << "a press on the legend focuses the entry";
    ui.pressKey(Event::KeyEnd);
    ui.typeText(L"d");
    EXPECT_EQ(t->getString(), L"abcd");
    EXPECT_GE(t->xForPos(0), 80.0) << "text starts inside the entry, not under the legend";

    auto* wide = ui.make<TitleTextBox>(TitleTextBox::InitArgs(UIString(L"X"), L"", 500, 100, 24),
                                       Glob::BottomLeft(10, 150));
    EXPECT_EQ(wide->entryArea().width(), 100) << "an entry wider than the box is clamped to it";
}

TEST_F(TextBoxTest, CommittingAnAdvancingRowPerformsThePanelsMainActionAndTabCommitsToo)
{
    StandardPanel::InitArgs args(L"Find", 320, 140, StandardPanel::NoWidgets, UifStd::getColourScheme());
    auto* panel = ui.make<StandardPanel>(args, Glob::BottomLeft(10, 10));
    auto* query = panel->addWidget<TitleTextBox>(TitleTextBox::InitArgs(UIString(L"Find"), L"", 200, 280, 24),
                                                 Glob::UserTopLeft(6, 6));
    auto* other = panel->addWidget<TitleTextBox>(TitleTextBox::InitArgs(UIString(L"In"), L"", 200, 280, 24),
                                                 Glob::Below(UifStd::getRowGap()));
    TabOrderManager::addTabStop(query);
    TabOrderManager::addTabStop(other);
    query->requestCallback(StandardPanel::doItMsg, panel, TextBoxBase::eCallbackEvent(3));

    ui.focus(query);
    ui.typeText(L"clip");
    ui.pressKey(Event::KeyTab);
    EXPECT_TRUE(other->hasFocus());
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 1u) << "leaving a changed entry finishes it";
    ui.typeText(L"bin");
    ui.pressKey(Event::KeyTab);
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 1u) << "only the advancing row performs the action";
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 2u) << "Return finishes it whether changed or not";
    ui.pressKey(Event::KeyTab);
    EXPECT_EQ(ui.owner().count(StandardPanel::doItMsg), 2u) << "tabbing through unchanged is not finishing";
}

// ---------------------------------------------------------------------------------------------------------
// Number box

TEST_F(TextBoxTest, NumberBoxCorrectsOnCommitAndStepsWithArrows)
{
    auto* n = ui.make<NumericTextBox>(NumericTextBox::InitArgs(5.0, 80, 24), Glob::BottomLeft(20, 100));
    n->setValueRange(10, 1);
    EXPECT_EQ(n->getString(), L"5");
    auto server = Cv::make<ValServer<double>>(5.0);
    n->setDataAdaptor(makeServerAdaptor(server));
    ui.focus(n);

    ui.pressKey('a', Event::Ctrl);
    ui.typeText(L"42");
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(n->getString(), L"10") << "out of range: clamped";
    EXPECT_DOUBLE_EQ(server->getValue(), 10.0);

    ui.pressKey('a', Event::Ctrl);
    ui.typeText(L"x-.");
    ui.pressKey(Event::KeyReturn);
    EXPECT_EQ(n->getString(), L"10") << "not a number: the last good value comes back";

    ui.pressKey(Event::KeyDown);
    ui.pressKey(Event::KeyDown);
    EXPECT_EQ(n->getString(), L"8");
    EXPECT_DOUBLE_EQ(server->getValue(), 8.0);
    ui.pressKey(Event::KeyUp);
    ui.pressKey(Event::KeyUp);
    ui.pressKey(Event::KeyUp);
    EXPECT_EQ(n->getString(), L"10") << "stepping stops at the maximum";

    ui.pressKey('a', Event::Ctrl);
    ui.typeText(L"2.7");
    EXPECT_EQ(n->getString(), L"27") << "whole-numbered boxes refuse the point";

    server->setValue(3.0);
    EXPECT_EQ(n->getString(), L"3");
}

TEST_F(TextBoxTest, NumberBoxFormatsAndReadsDecimals)
{
    auto* n = ui.make<NumericTextBox>(NumericTextBox::InitArgs(0.0, 80, 24), Glob::BottomLeft(20, 100));
    n->setValueRange(-1.5, 2.25);
    n->setValue(0.1);
    EXPECT_EQ(n->getString(), L"0.1");
    n->setValue(-7.0);
    EXPECT_EQ(n->getString(), L"-1.5");
    n->setDecimals(3);
    EXPECT_EQ(n->getString(), L"-1.500");
    n->setValue(-0.0001);
    EXPECT_EQ(n->format(-0.0001), L"-0.000");
    n->setDecimals(0);
    EXPECT_EQ(n->format(-0.2), L"0") << "no minus sign in front of a zero";

    EXPECT_FALSE(NumericTextBox::parse(L"inf"));
    EXPECT_FALSE(NumericTextBox::parse(L"0x10"));
    EXPECT_FALSE(NumericTextBox::parse(L"1e999"));
    EXPECT_FALSE(NumericTextBox::parse(L"1..2"));
    EXPECT_DOUBLE_EQ(NumericTextBox::parse(L" -2.5e1 ").value_or(0), -25.0);
}

// ---------------------------------------------------------------------------------------------------------
// Custom key rules: the shape of an address entry's octet box

TEST_F(TextBoxTest, CustomBoxLetsItsOwnerTakeKeysOverAndSeeTheResult)
{
    CustomTextBox::InitArgs args(L"", 60, 24);
    args.maxLength = 3;
    args.allowedChars = L"0123456789";
    auto* c = ui.make<CustomTextBox>(args, Glob::BottomLeft(20, 100));
    ui.focus(c);
    int nexts = 0;
    int prevs = 0;
    c->setKeyFilter([&](CustomTextBox& box, const Event& e) {
        if (e.key == '.' && box.caretAtEnd()) {
            ++nexts;
            return true;
        }
        if (e.key == Event::KeyBackspace && box.getCaretPos() == 0) {
            ++prevs;
            return true;
        }
        return false;
    });
    c->setAfterKey([&](CustomTextBox& box, const Event&, bool) {
        if (box.caretAtEnd() && box.isFull())
            ++nexts;
    });

    ui.typeText(L"12.");
    EXPECT_EQ(c->getString(), L"12");
    EXPECT_EQ(nexts, 1);
    ui.typeText(L"3");
    EXPECT_EQ(nexts, 2) << "a full part moves on by itself";
    ui.pressKey(Event::KeyHome);
    ui.pressKey(Event::KeyBackspace);
    EXPECT_EQ(prevs, 1);
    EXPECT_EQ(c->getString(), L"123");
    ui.pressKey(Event::KeyEnd);
    ui.pressKey(Event::KeyBackspace);
    EXPECT_EQ(c->getString(), L"12") << "keys the filter leaves alone are handled as usual";
}

} // namespace
