// The entries of a form: what the user types is validated, corrected where the row's rules say so, and
// reported as collected.
#include "FormTestSupport.h"

using namespace formtest;

namespace {

// A path row that refuses wildcards, as a client's own path check would.
class NoWildcardPath : public fo_path {
public:
    using fo_path::fo_path;
    int m_validate_entry(const LightweightString<wchar_t>& text) override { return text.contains(L"*") ? 1 : 0; }
};

} // namespace

TEST_F(FormFixture, IntegerAboveTheMaximumBecomesTheMaximumInTheBoxAndTheReport)
{
    typeInto(CountRow, L"42");
    EXPECT_EQ(box(CountRow)->getString(), L"10");
    EXPECT_EQ(row<fo_v_int>(CountRow)->m_get_value(), 10);
    EXPECT_EQ(lastRaw(), "FormUp 002 10");
}

TEST_F(FormFixture, IntegerOfLettersBecomesTheMinimum)
{
    typeInto(CountRow, L"abc");
    EXPECT_EQ(box(CountRow)->getString(), L"1");
    EXPECT_EQ(client->valueOf(CountRow), Value(1));
}

TEST_F(FormFixture, IntegerValidationOfEmptyTextReadsTheCurrentEntry)
{
    auto* count = row<fo_v_int>(CountRow);
    count->m_set_value(6);
    EXPECT_EQ(count->m_validate_entry(L""), 0);
    EXPECT_EQ(count->m_get_value(), 6);
}

TEST_F(FormFixture, IntegerBoxTakesEightCharacters)
{
    typeInto(CountRow, L"1234567890", false);
    EXPECT_EQ(box(CountRow)->getString(), L"12345678");
}

TEST(FormEntry, IntegerRangeGivenBackwardsBecomesZeroToZero)
{
    fo_v_int backwards(200, 24, 0, L"n", 10, 1);
    EXPECT_EQ(backwards.m_get_min(), 0);
    EXPECT_EQ(backwards.m_get_max(), 0);
    backwards.m_set_value(5);
    EXPECT_EQ(backwards.m_get_entry(), L"0");
}

TEST_F(FormFixture, RealBoundsCarryOnlyTheDecimalsTheFormatPrints)
{
    auto* gain = row<fo_v_dbl>(GainRow);
    EXPECT_EQ(gain->m_get_format(), "%.2f");
    EXPECT_DOUBLE_EQ(gain->m_get_min(), 1.23);
    EXPECT_DOUBLE_EQ(gain->m_get_value(), 1.23);
}

TEST_F(FormFixture, EmptyRealEntrySetsTheMinimumAndClearsTheText)
{
    auto* gain = row<fo_v_dbl>(GainRow);
    gain->m_set_entry(L"3.5");
    gain->m_set_entry(L"");
    EXPECT_DOUBLE_EQ(gain->m_get_value(), 1.23);
    EXPECT_EQ(gain->m_get_entry(), L"");
    EXPECT_EQ(box(GainRow)->getString(), L"");
}

TEST_F(FormFixture, RealAboveTheMaximumIsShownAsTheMaximumInTheFormat)
{
    typeInto(GainRow, L"7");
    EXPECT_EQ(box(GainRow)->getString(), L"5.00");
    EXPECT_EQ(client->valueOf(GainRow), Value(5.0));
}

TEST_F(FormFixture, RealSetFromCodeIsShownInTheFormat)
{
    row<fo_v_dbl>(GainRow)->m_set_entry(L"2.5");
    EXPECT_EQ(box(GainRow)->getString(), L"2.50");
}

TEST(FormEntry, RealMaximumLengthLeavesTheDecimalPointOut)
{
    UiHarness ui;
    auto* f = new form(400, 100, nullptr, StandardPanel::RaisedBorder, Palette(), UIString(L"Real"));
    ui.owner().addChild(f, Glob::BottomLeft(10, 10));
    auto* level = new fo_v_dbl(300, 24, 0, L"Level", -12.5, 345.0, 2);
    f->m_add_element(level);
    // "-12" and "345" are three characters each, plus two decimals.
    EXPECT_EQ(level->m_get_max_length(), 5);
    ui.click(level->getTextBox());
    level->getTextBox()->selectAll();
    ui.typeText(L"123.45");
    EXPECT_EQ(level->getTextBox()->getString(), L"123.4");
}

TEST(FormEntry, NegativeDecimalsCountAsNone)
{
    fo_v_dbl whole(200, 24, 0, L"w", 0.0, 9.0, -3);
    EXPECT_EQ(whole.m_get_format(), "%.0f");
    EXPECT_EQ(whole.m_get_entry(), L"0");
}

TEST(FormEntry, RealRangeThatCrossesAfterRoundingBecomesZeroToZero)
{
    fo_v_dbl crossed(200, 24, 0, L"c", 2.0, 1.0, 1);
    EXPECT_DOUBLE_EQ(crossed.m_get_min(), 0.0);
    EXPECT_DOUBLE_EQ(crossed.m_get_max(), 0.0);
}

TEST_F(FormFixture, PathBoxTakes128CharactersAndKeepsItsOption)
{
    ui.screen().setClipboardText(LightweightString<wchar_t>(std::wstring(200, L'p')));
    ui.click(box(PathRow));
    ui.pressKey('v', Event::Ctrl);
    EXPECT_EQ(box(PathRow)->getString().size(), 128u);
    EXPECT_EQ(row<fo_path>(PathRow)->m_get_option(), 1);
}

TEST(FormEntry, RejectedPathPutsBackTheLastAcceptedText)
{
    UiHarness ui;
    formtest::FormClient* client = new formtest::FormClient();
    ui.owner().addChild(client, Glob::BottomLeft(0, 0));
    auto* f = new form(400, 100, client, StandardPanel::RaisedBorder, Palette(), UIString(L"Paths"));
    client->source = f;
    ui.owner().addChild(f, Glob::BottomLeft(10, 10));
    auto* path = new NoWildcardPath(300, 24, 0, L"Media", 0);
    f->m_add_element(path);

    ui.click(path->getTextBox());
    ui.typeText(L"/media/a");
    ui.pressKey(Event::KeyReturn);
    path->getTextBox()->selectAll();
    ui.typeText(L"/media/*");
    ui.pressKey(Event::KeyReturn);

    EXPECT_EQ(path->getTextBox()->getString(), L"/media/a");
    EXPECT_EQ(path->m_get_last_accepted(), L"/media/a");
    ASSERT_EQ(client->raw.size(), 2u);
    EXPECT_EQ(client->raw[1], "FormUp 000 /media/a");
}

TEST_F(FormFixture, SettingAnEntryFromCodeTellsNobodyAndLeavesItRead)
{
    f->m_set_element_entry(NameRow, L"Set by code");
    EXPECT_EQ(box(NameRow)->getString(), L"Set by code");
    EXPECT_FALSE(f->m_get_element(NameRow)->m_is_unread());
    EXPECT_TRUE(client->raw.empty());
}

TEST(FormEntry, AnAssignedEntryShowsTheOthersTextWithinTheOthersLimit)
{
    fo_entry target(200, 24, 0, L"Name", 0);
    fo_entry source(200, 24, 1, L"Name", 4);
    source.getTextBox()->setString(L"abcd");
    target = source;
    EXPECT_EQ(target.getTextBox()->getString(), L"abcd");
    EXPECT_EQ(target.getTextBox()->getMaxLength(), 4);
    EXPECT_NE(target.getTextBox(), source.getTextBox());
}
