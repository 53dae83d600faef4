// The form: its column, its messages to the client, focus, unread entries and routing between forms.
#include "FormTestSupport.h"

#include "toolkit/ui/UifStd.h"

using namespace formtest;

namespace {

// Remembers the index each m_lose_focus call was given.
class WatchedEntry : public fo_entry {
public:
    using fo_entry::fo_entry;
    void m_lose_focus(int newIndex) override
    {
        handedTo.push_back(newIndex);
        fo_entry::m_lose_focus(newIndex);
    }
    std::vector<int> handedTo;
};

} // namespace

TEST_F(FormFixture, ElementsStackDownTheColumnFromTheInsetTopLeft)
{
    const int gap = UifStd::getWidgetGap();
    const GlobBox user = f->getUserArea();
    EXPECT_EQ(f->m_get_element(0)->getX(), user.left() + gap);
    EXPECT_EQ(f->m_get_element(0)->getBox().top(), user.top() - gap);
    for (int i = 1; i < NumRows; ++i) {
        EXPECT_EQ(f->m_get_element(i)->getX(), f->m_get_element(0)->getX());
        EXPECT_EQ(f->m_get_element(i)->getBox().top(), f->m_get_element(i - 1)->getBox().bottom() - UifStd::getRowGap());
    }
    EXPECT_EQ(f->m_max_element_width(), rowWidth);
}

TEST(Form, ATopLevelFormInsetsItsFirstElementByTheBorder)
{
    UiHarness ui;
    form top(300, 200, nullptr, StandardPanel::RaisedBorder, Palette(), UIString(L"Top"));
    top.m_add_element(new fo_entry(200, 24, 0, L"Name", 0));
    EXPECT_EQ(top.m_get_element(0)->getX(), top.getUserArea().left() + UifStd::getBorder());
}

TEST_F(FormFixture, ReturnInAnEntrySendsTheClientFormUpWithTheIndexAndText)
{
    typeInto(NameRow, L"Interview take 3");
    EXPECT_EQ(lastRaw(), "FormUp 000 Interview take 3");
    EXPECT_EQ(f->m_get_element_entry(NameRow), L"Interview take 3");
}

TEST_F(FormFixture, AFormUpMessageCarriesAnEntryOfAnyLength)
{
    const std::wstring longText(20000, L'x');
    ui.screen().setClipboardText(longText + L"end");
    ui.click(box(NameRow));
    ui.pressKey('v', Event::Ctrl);
    ui.pressKey(Event::KeyReturn);
    ui.step();
    ASSERT_EQ(client->reports.size(), 1u);
    EXPECT_EQ(client->reports[0].payload, std::string(20000, 'x') + "end");
}

TEST_F(FormFixture, FoElUpFromAnyoneIsPassedOnWithTheRestOfTheMessage)
{
    f->sendMsg(f, "FoElUp 012 twelve words");
    EXPECT_EQ(lastRaw(), "FormUp 012 twelve words");
}

TEST(Form, AFormWithoutAClientSwallowsElementMessages)
{
    UiHarness ui;
    auto* lonely = new form(300, 200, nullptr, StandardPanel::RaisedBorder, Palette(), UIString(L"Alone"));
    ui.owner().addChild(lonely, Glob::BottomLeft(10, 10));
    lonely->m_add_element(new fo_entry(200, 24, 0, L"Name", 0));
    lonely->m_set_element_entry(0, L"kept");
    EXPECT_TRUE(lonely->m_get_element(0)->m_relay_msg_to_parent("kept"));
    EXPECT_EQ(ui.owner().count(), 0u);
}

TEST_F(FormFixture, ClientParsesEveryElementKindBackIntoItsValue)
{
    typeInto(NameRow, L"Trailer");
    typeInto(PathRow, L"/media/out");
    typeInto(CountRow, L"7");
    typeInto(GainRow, L"2.5");
    ui.click(row<fo_bool>(LoopRow)->getCheckbox());
    ui.click(row<fo_cycle>(FormatRow)->getBtn()->getBtn());
    chooseFromMenu(row<fo_cycle>(FormatRow)->getBtn()->getBtn()->getOpenMenu(), 1);
    ui.click(row<fo_gench>(QualityRow)->getBtn()->getBtn());
    chooseFromMenu(row<fo_gench>(QualityRow)->m_get_menu(), 2);

    EXPECT_EQ(client->valueOf(NameRow), Value(std::string("Trailer")));
    EXPECT_EQ(client->valueOf(PathRow), Value(std::string("/media/out")));
    EXPECT_EQ(client->valueOf(CountRow), Value(7));
    EXPECT_EQ(client->valueOf(GainRow), Value(2.5));
    EXPECT_EQ(client->valueOf(LoopRow), Value(true));
    EXPECT_EQ(client->valueOf(FormatRow), Value(std::string("NTSC")));
    EXPECT_EQ(client->valueOf(QualityRow), Value(std::string("Best")));
}

TEST_F(FormFixture, RequestFocusIgnoresIndexesOutsideTheElements)
{
    f->m_request_focus(2);
    f->m_request_focus(-1);
    f->m_request_focus(NumRows);
    EXPECT_EQ(f->m_get_focus(), 2);
    EXPECT_TRUE(f->m_get_element(2)->m_has_focus());
}

TEST(Form, MovingTheFocusTellsTheOldElementWhereItWentAndMovesTheFlag)
{
    UiHarness ui;
    auto* f = new form(300, 200, nullptr, StandardPanel::RaisedBorder, Palette(), UIString(L"Focus"));
    ui.owner().addChild(f, Glob::BottomLeft(10, 10));
    auto* first = new WatchedEntry(200, 24, 0, L"One", 0);
    f->m_add_element(first);
    f->m_add_element(new fo_entry(200, 24, 1, L"Two", 0));
    f->m_request_focus(0);
    f->m_request_focus(1);
    EXPECT_EQ(first->handedTo, std::vector<int>{1});
    EXPECT_FALSE(first->m_has_focus());
    EXPECT_TRUE(f->m_get_element(1)->m_has_focus());
}

TEST_F(FormFixture, FocusRequestMessageMovesTheFocusOnlyToAnotherElement)
{
    f->sendMsg(f, "FoElFR 003");
    EXPECT_EQ(f->m_get_focus(), 3);
    f->sendMsg(f, "FoElFR 99");
    f->sendMsg(f, "FoElFR x");
    EXPECT_EQ(f->m_get_focus(), 3);
}

TEST_F(FormFixture, PromptMessageMakesAnUnfocusedElementAskForTheFocus)
{
    f->sendMsg(f->m_get_element(CountRow), fo_eleme::promptMsg);
    EXPECT_EQ(f->m_get_focus(), CountRow);
}

TEST_F(FormFixture, PressOnAnUnfocusedElementsTitleTakesTheFocus)
{
    fo_eleme* gain = f->m_get_element(GainRow);
    ui.click(gain, XY<int>{fo_eleme::focusMarkWidth + 5, rowHeight / 2});
    EXPECT_EQ(f->m_get_focus(), GainRow);
    EXPECT_TRUE(gain->m_has_focus());
}

TEST_F(FormFixture, TypingInAnEntryTakesTheFocusAndMarksItUnread)
{
    typeInto(PathRow, L"/tmp", false);
    EXPECT_EQ(f->m_get_focus(), PathRow);
    EXPECT_TRUE(f->m_get_element(PathRow)->m_is_unread());
    ui.pressKey(Event::KeyReturn);
    EXPECT_FALSE(f->m_get_element(PathRow)->m_is_unread());
}

TEST_F(FormFixture, UnreadEntriesAreReportedOnceAndEmptyOnesNever)
{
    typeInto(NameRow, L"Draft", false);
    typeInto(PathRow, L"x", false);
    ui.pressKey(Event::KeyBackspace);
    ASSERT_TRUE(f->m_get_element(PathRow)->m_is_unread());
    client->raw.clear();

    f->m_send_unread_entry_elements();
    EXPECT_EQ(client->raw, std::vector<std::string>{"FormUp 000 Draft"});
    f->m_send_unread_entry_elements();
    EXPECT_EQ(client->raw.size(), 1u);
}

TEST_F(FormFixture, UnreadNumbersAreClampedBeforeTheyAreReported)
{
    typeInto(CountRow, L"77", false);
    client->raw.clear();
    f->m_send_unread_entry_elements();
    EXPECT_EQ(client->raw, std::vector<std::string>{"FormUp 002 10"});
}

TEST_F(FormFixture, TheUpdateTableCopiesAValueIntoAnotherFormsElement)
{
    auto* other = new form(420, 100, nullptr, StandardPanel::RaisedBorder, Palette(), UIString(L"Summary"));
    ui.owner().addChild(other, Glob::BottomLeft(500, 40));
    other->m_add_element(new fo_entry(rowWidth, rowHeight, 0, L"Title", 0));
    const form_update_table table[] = {{f, NameRow, other, 0}, {nullptr, -1, nullptr, -1}, {f, PathRow, other, 0}};
    form::m_set_update_table(table);

    typeInto(NameRow, L"Teaser");
    typeInto(PathRow, L"/not/routed");
    form::m_set_update_table(nullptr);

    EXPECT_EQ(other->m_get_element_entry(0), L"Teaser");
    EXPECT_EQ(form::m_update_others(table, f, NameRow, L"x"), 1);
    EXPECT_EQ(form::m_update_others(table, f, PathRow, L"y"), 0);
    EXPECT_EQ(form::m_update_others(table, other, NameRow, L"z"), 0);
}

TEST_F(FormFixture, ACopiedFormHasElementsOfItsOwnWithTheSameValues)
{
    f->m_set_element_entry(NameRow, L"Original");
    f->m_set_element_choice_state(FormatRow, 2, false);
    form copy(*f);
    ASSERT_EQ(copy.m_element_count(), NumRows);
    for (int i = 0; i < NumRows; ++i) {
        EXPECT_NE(copy.m_get_element(i), f->m_get_element(i));
        EXPECT_EQ(copy.m_get_element(i)->idstring(), f->m_get_element(i)->idstring());
    }
    EXPECT_EQ(copy.m_get_element_entry(NameRow), L"Original");
    EXPECT_EQ(copy.m_get_element_choice_state(FormatRow), 2);
    copy.m_set_element_entry(NameRow, L"Changed");
    EXPECT_EQ(f->m_get_element_entry(NameRow), L"Original");
}

