// The address entry, typed into, moved through and pasted into as a user does.
#include "entry/IPAddressEntryBox.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/TabOrderManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/CustomTextBox.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct AddressEntry : testing::Test {
    UiHarness ui;
    IPAddressEntryBox* entry = nullptr;
    IPAddressEntryBox* withPort = nullptr;

    void SetUp() override
    {
        entry = ui.make<IPAddressEntryBox>(IPAddressEntryBox::InitArgs(false), Glob::BottomLeft(20, 300));
        withPort = ui.make<IPAddressEntryBox>(IPAddressEntryBox::InitArgs(true), Glob::BottomLeft(20, 200));
        ui.step();
    }
    CustomTextBox* box(size_t i, IPAddressEntryBox* which = nullptr) { return (which ? which : entry)->getBox(i); }
    std::vector<std::wstring> texts(IPAddressEntryBox* which = nullptr)
    {
        IPAddressEntryBox* e = which ? which : entry;
        std::vector<std::wstring> out;
        for (size_t i = 0; i < e->numBoxes(); ++i)
            out.push_back(e->getBox(i)->text());
        return out;
    }
    void pasteInto(CustomTextBox* target, const wchar_t* clip)
    {
        ui.screen().setClipboardText(clip);
        ui.click(target);
        ui.pressKey('v', Event::Ctrl);
        ui.step();
    }
};

} // namespace

TEST_F(AddressEntry, TypingADottedAddressFillsTheFourBoxes)
{
    ui.click(box(0));
    ui.typeText(L"1.2.3.4");
    EXPECT_EQ(texts(), (std::vector<std::wstring>{L"1", L"2", L"3", L"4"}));
    EXPECT_EQ(entry->getURI(), L"1.2.3.4");
}

TEST_F(AddressEntry, ACompleteOctetMovesTheCaretToTheNextBox)
{
    ui.click(box(0));
    ui.typeText(L"192168");
    EXPECT_EQ(texts(), (std::vector<std::wstring>{L"192", L"168", L"", L""}));
    EXPECT_TRUE(box(2)->hasFocus());
}

TEST_F(AddressEntry, OnlyDigitsAreTyped)
{
    ui.click(box(0));
    ui.typeText(L"a1-b");
    EXPECT_EQ(box(0)->text(), L"1");
}

TEST_F(AddressEntry, PastingAWholeAddressIntoAnyBoxFillsThemAll)
{
    pasteInto(box(2), L"10.0.0.1");
    EXPECT_EQ(texts(), (std::vector<std::wstring>{L"10", L"0", L"0", L"1"}));
}

TEST_F(AddressEntry, PastingTextWithoutADotPastesIntoTheCurrentBoxOnly)
{
    pasteInto(box(1), L"12");
    EXPECT_EQ(texts(), (std::vector<std::wstring>{L"", L"12", L"", L""}));
}

TEST_F(AddressEntry, PastingDottedTextThatIsNoAddressChangesNothing)
{
    entry->setURI(IPAddress(1, 1, 1, 1));
    pasteInto(box(0), L"300.1.1.1");
    pasteInto(box(3), L"1.2.3");
    EXPECT_EQ(entry->getURI(), L"1.1.1.1");
}

TEST_F(AddressEntry, PastingAnAddressWithAPortFillsThePortBox)
{
    pasteInto(box(0, withPort), L"172.16.5.4:8080");
    EXPECT_EQ(withPort->getURI(), L"172.16.5.4:8080");
}

TEST_F(AddressEntry, BackspaceAtTheStartMovesToTheEndOfThePreviousBox)
{
    entry->setURI(IPAddress(11, 22, 33, 44));
    ui.click(box(2));
    box(2)->setCaretPos(0);
    ui.pressKey(Event::KeyBackspace);
    EXPECT_TRUE(box(1)->hasFocus());
    EXPECT_EQ(box(1)->getCaretPos(), 2u);
    EXPECT_EQ(entry->getURI(), L"11.22.33.44");
}

TEST_F(AddressEntry, BackspaceAtTheStartOfTheFirstBoxDoesNothing)
{
    entry->setURI(IPAddress(11, 22, 33, 44));
    ui.click(box(0));
    box(0)->setCaretPos(0);
    ui.pressKey(Event::KeyBackspace);
    EXPECT_TRUE(box(0)->hasFocus());
    EXPECT_EQ(entry->getURI(), L"11.22.33.44");
}

TEST_F(AddressEntry, ArrowsAtTheEdgesOfABoxMoveToItsNeighbours)
{
    entry->setURI(IPAddress(11, 22, 33, 44));
    ui.click(box(1));
    box(1)->setCaretPos(2);
    ui.pressKey(Event::KeyRight);
    EXPECT_TRUE(box(2)->hasFocus());
    EXPECT_EQ(box(2)->getCaretPos(), 0u);
    ui.pressKey(Event::KeyLeft);
    EXPECT_TRUE(box(1)->hasFocus());
    EXPECT_EQ(box(1)->getCaretPos(), 2u);
    ui.pressKey(Event::KeyLeft);
    EXPECT_TRUE(box(1)->hasFocus());
    EXPECT_EQ(box(1)->getCaretPos(), 1u);
}

TEST_F(AddressEntry, NextFromTheLastBoxDoesNothing)
{
    ui.click(box(3));
    ui.typeText(L"254.");
    EXPECT_TRUE(box(3)->hasFocus());
    ui.click(box(4, withPort));
    ui.typeText(L"65535");
    ui.pressKey(Event::KeyRight);
    EXPECT_TRUE(box(4, withPort)->hasFocus());
    EXPECT_EQ(box(4, withPort)->text(), L"65535");
}

TEST_F(AddressEntry, AFullOctetDoesNotJumpWhenTheCaretOnlyMoves)
{
    entry->setURI(IPAddress(123, 0, 0, 0));
    ui.click(box(0));
    box(0)->setCaretPos(1);
    ui.pressKey(Event::KeyEnd);
    EXPECT_TRUE(box(0)->hasFocus());
}

TEST_F(AddressEntry, TabIsLeftToTheFocusOrder)
{
    TabOrderManager::addTabStopsFrom(entry);
    ui.click(box(0));
    ui.pressKey(Event::KeyTab);
    EXPECT_TRUE(box(1)->hasFocus());
    ui.pressKey(Event::KeyBackTab);
    EXPECT_TRUE(box(0)->hasFocus());
}

TEST_F(AddressEntry, HnextAndHprevMovePastTheWholeEntry)
{
    TabOrderManager::addTabStopsFrom(withPort);
    TabOrderManager::addTabStopsFrom(entry);
    ui.click(box(1, withPort));
    withPort->sendMsg(withPort, IPAddressEntryBox::hnextMsg);
    EXPECT_TRUE(box(0)->hasFocus());
    entry->sendMsg(entry, IPAddressEntryBox::hprevMsg);
    EXPECT_TRUE(box(4, withPort)->hasFocus());
}

TEST_F(AddressEntry, SetURIWithTextThatIsNoAddressLeavesTheBoxesAlone)
{
    entry->setURI(IPAddress(8, 8, 4, 4));
    EXPECT_FALSE(entry->setURI(L"8.8.4"));
    EXPECT_FALSE(entry->setURI(L"localhost"));
    EXPECT_EQ(entry->getURI(), L"8.8.4.4");
    EXPECT_TRUE(entry->setURI(L"9.9.9.9"));
    EXPECT_EQ(entry->getURI(), L"9.9.9.9");
}

TEST_F(AddressEntry, AnAddressWithoutAPortEmptiesThePortBox)
{
    withPort->setURI(IPAddress(1, 2, 3, 4, 80));
    withPort->setURI(IPAddress(1, 2, 3, 4));
    EXPECT_EQ(withPort->getURI(), L"1.2.3.4:");
}

TEST_F(AddressEntry, BoxesAreSizedForTheirWidestNumberAndSpacedByTheIndent)
{
    const int gap = UifStd::getWidgetGap();
    EXPECT_EQ(box(0)->getX(), gap);
    EXPECT_EQ(box(0)->getWidth(), IPAddressEntryBox::calcBoxWidth(L"999"));
    EXPECT_EQ(box(4, withPort)->getWidth(), IPAddressEntryBox::calcBoxWidth(L"12345"));
    for (size_t i = 1; i < 5; ++i)
        EXPECT_EQ(box(i, withPort)->getX(), box(i - 1, withPort)->getBox().right() + UifStd::getIndentWidth());
    EXPECT_EQ(box(3)->getBox().right() + gap, entry->getWidth());
    EXPECT_EQ(box(4, withPort)->getBox().right() + gap, withPort->getWidth());
    EXPECT_EQ(box(0)->getHeight(), entry->getHeight());
}

TEST_F(AddressEntry, AssigningAnEntryWithAPortGivesItAPortBoxAndTheAddress)
{
    ASSERT_TRUE(withPort->setURI(L"10.0.0.7:8080"));
    *entry = *withPort;
    ui.step();
    EXPECT_EQ(entry->numBoxes(), 5u);
    EXPECT_EQ(entry->getURI(), LightweightString<wchar_t>(L"10.0.0.7:8080"));
    EXPECT_NE(entry->getBox(0), withPort->getBox(0));
}
