// The date picker: the day list follows month and year, and the chosen day becomes local midnight, checked
// in more than one time zone.
#include "entry/datecanvas.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/DropDownMenuButton.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace {

// Runs a test in a time zone and puts the process's own back afterwards.
class TimeZone {
public:
    explicit TimeZone(const char* zone)
    {
        if (const char* old = std::getenv("TZ"))
            m_old = old;
        m_hadOld = std::getenv("TZ") != nullptr;
        setenv("TZ", zone, 1);
        tzset();
    }
    ~TimeZone()
    {
        if (m_hadOld)
            setenv("TZ", m_old.c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    std::string m_old;
    bool m_hadOld = false;
};

// Seconds of midnight UTC on a day, worked out by the C library's UTC conversion, which does not look at
// the time zone the picker uses.
long long utcMidnight(int year, int month, int day)
{
    std::tm t{};
    t.tm_year = year - 1900;
    t.tm_mon = month - 1;
    t.tm_mday = day;
    return static_cast<long long>(timegm(&t));
}

struct DatePicker : testing::Test {
    UiHarness ui;
    datecanvas* picker = nullptr;

    void SetUp() override
    {
        picker = ui.make<datecanvas>(datecanvas::InitArgs(Palette()), Glob::BottomLeft(20, 600));
        picker->m_set_date(31, 3, 2023);
        picker->post_init();
        ui.step();
    }
    void choose(DropDownMenuButton* button, int position)
    {
        ui.click(button);
        MenuGlob* menu = button->getOpenMenu();
        ASSERT_NE(menu, nullptr);
        menu->setHighlighted(position);
        ui.pressKey(Event::KeyReturn);
        ui.step();
    }
    int yearPosition(int year) { return year - 1900; }
    long long generated()
    {
        char text[12];
        return std::atoll(picker->m_generate_string(text));
    }
};

} // namespace

TEST(DateCanvas, DayLabelsAreEnglishOrdinals)
{
    const std::pair<int, const wchar_t*> cases[] = {{1, L"1st"},   {2, L"2nd"},   {3, L"3rd"},   {4, L"4th"},
                                                    {11, L"11th"}, {12, L"12th"}, {13, L"13th"}, {20, L"20th"},
                                                    {21, L"21st"}, {22, L"22nd"}, {23, L"23rd"}, {24, L"24th"},
                                                    {30, L"30th"}, {31, L"31st"}};
    for (const auto& [day, label] : cases)
        EXPECT_EQ(datecanvas::dayLabel(day), label) << day;
}

TEST(DateCanvas, EveryFourthYearIsLeapCenturiesIncluded)
{
    EXPECT_EQ(datecanvas::daysInMonth(1, 2023), 28);
    EXPECT_EQ(datecanvas::daysInMonth(1, 2024), 29);
    EXPECT_EQ(datecanvas::daysInMonth(1, 1900), 29);
    EXPECT_EQ(datecanvas::daysInMonth(1, 2100), 29);
    EXPECT_EQ(datecanvas::daysInMonth(0, 0), 0);
    EXPECT_EQ(datecanvas::daysInMonth(12, 2024), 0);
}

TEST_F(DatePicker, TheButtonsSitSideBySideAndTheDayButtonFitsTheWidestLabel)
{
    EXPECT_EQ(picker->getDayButton()->getX(), 0);
    EXPECT_EQ(picker->getMonthButton()->getX(), picker->getDayButton()->getWidth());
    EXPECT_EQ(picker->getYearButton()->getX(),
              picker->getDayButton()->getWidth() + picker->getMonthButton()->getWidth());
    EXPECT_EQ(picker->getDayButton()->getWidth(),
              DropDownMenuButton::calcWidth(std::vector<UIString>{L"22nd"}, UifStd::getDefaultFont()));
}

TEST_F(DatePicker, The31stOfMarchBecomesThe28thWhenFebruary2023IsChosen)
{
    choose(picker->getMonthButton(), 1);
    EXPECT_EQ(picker->getDayIndex(), 27);
    EXPECT_EQ(picker->getDayCount(), 28);
    EXPECT_EQ(picker->getDayButton()->getDisplayedText(), L"28th");
}

TEST_F(DatePicker, ALeapDayBecomesThe28thWhenTheYearChanges)
{
    picker->m_set_date(29, 2, 2024);
    EXPECT_EQ(picker->getDayIndex(), 28);
    choose(picker->getYearButton(), yearPosition(2025));
    EXPECT_EQ(picker->getDayIndex(), 27);
    EXPECT_EQ(picker->getDayCount(), 28);
}

TEST_F(DatePicker, ADayChoiceIsKeptAndTheOwnerIsTold)
{
    choose(picker->getDayButton(), 9);
    EXPECT_EQ(picker->getDayIndex(), 9);
    EXPECT_EQ(ui.owner().count(datecanvas::dateChangedMsg), 1u);
}

TEST_F(DatePicker, AfterEachMonthChangeThe31stBecomesThatMonthsLastDayAtLocalMidnight)
{
    // Zones without summer time, so local midnight is a fixed offset from UTC all year.
    const std::pair<const char*, int> zones[] = {{"UTC", 0}, {"Asia/Tokyo", 9 * 3600}};
    for (const auto& [zone, offset] : zones) {
        TimeZone local(zone);
        for (int month = 1; month <= 12; ++month) {
            picker->m_set_date(31, 1, 2023);
            choose(picker->getMonthButton(), month - 1);
            const int last = datecanvas::daysInMonth(month - 1, 2023);
            EXPECT_EQ(picker->getDayIndex(), last - 1) << zone << " " << month;
            EXPECT_EQ(picker->getDayCount(), last) << zone << " " << month;
            EXPECT_EQ(generated(), utcMidnight(2023, month, last) - offset) << zone << " " << month;
        }
    }
}

TEST_F(DatePicker, MidnightIsLocalMidnightInAnotherZone)
{
    TimeZone tokyo("Asia/Tokyo");
    picker->m_set_date(29, 2, 2024);
    EXPECT_EQ(generated(), utcMidnight(2024, 2, 29) - 9 * 3600);
    picker->m_set_date(31, 12, 2023);
    EXPECT_EQ(generated(), utcMidnight(2023, 12, 31) - 9 * 3600);
}

TEST_F(DatePicker, SummerTimeIsAppliedToMidnightWhereItIsInForce)
{
    TimeZone london("Europe/London");
    picker->m_set_date(1, 7, 2024);
    EXPECT_EQ(generated(), utcMidnight(2024, 7, 1) - 3600);
    picker->m_set_date(1, 1, 2024);
    EXPECT_EQ(generated(), utcMidnight(2024, 1, 1));
}

TEST_F(DatePicker, ADayWithoutAMidnightGivesItsFirstHour)
{
    // Clocks went from 00:00 straight to 01:00 that day, so 01:00 local (-02) is the day's first moment.
    TimeZone saoPaulo("America/Sao_Paulo");
    picker->m_set_date(4, 11, 2018);
    EXPECT_EQ(generated(), utcMidnight(2018, 11, 4) + 3 * 3600);
    picker->m_set_date(3, 11, 2018);
    EXPECT_EQ(generated(), utcMidnight(2018, 11, 3) + 3 * 3600);
}

TEST_F(DatePicker, ATimeValueIsReadInLocalTime)
{
    const long long evening = utcMidnight(2024, 2, 28) + 20 * 3600;
    {
        TimeZone utc("UTC");
        picker->m_set_date(static_cast<int64_t>(evening));
        EXPECT_EQ(picker->getDayIndex(), 27);
    }
    {
        TimeZone tokyo("Asia/Tokyo");
        picker->m_set_date(static_cast<int64_t>(evening));
        EXPECT_EQ(picker->getDayIndex(), 28);
        EXPECT_EQ(picker->getMonthIndex(), 1);
        EXPECT_EQ(picker->getYear(), 2024);
    }
}

TEST_F(DatePicker, AYearNotInTheListSelectsTheFirstYear)
{
    picker->m_set_date(1, 6, 1776);
    EXPECT_EQ(picker->getYearIndex(), 0);
    EXPECT_EQ(picker->getYear(), 1900);
    EXPECT_EQ(picker->getYearButton()->getSelectedItem(), 0);
}

TEST_F(DatePicker, ANullBufferGivesAStringTheCallerFrees)
{
    TimeZone utc("UTC");
    picker->m_set_date(1, 1, 2000);
    char* text = picker->m_generate_string(nullptr);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::atoll(text), utcMidnight(2000, 1, 1));
    std::free(text);
}

TEST_F(DatePicker, YearsAfter2038WrapInThe32BitCount)
{
    TimeZone utc("UTC");
    picker->m_set_date(1, 1, 2100);
    EXPECT_EQ(generated(), static_cast<int32_t>(static_cast<uint32_t>(utcMidnight(2100, 1, 1))));
}

TEST_F(DatePicker, AMonthPastDecemberOrAYearWithoutANumberLeavesNoDays)
{
    picker->m_set_date(5, 13, 2023);
    EXPECT_EQ(picker->getDayCount(), 0);
    EXPECT_EQ(picker->getDayIndex(), -1);
    picker->setYears({L"Someday"});
    picker->m_set_date(5, 5, 2023);
    EXPECT_EQ(picker->getDayCount(), 0);
}

TEST_F(DatePicker, InitShowsTodayInLocalTime)
{
    picker->init();
    picker->post_init();
    const std::time_t now = std::time(nullptr);
    std::tm today{};
    localtime_r(&now, &today);
    EXPECT_EQ(picker->getDayIndex(), today.tm_mday - 1);
    EXPECT_EQ(picker->getMonthButton()->getSelectedItem(), today.tm_mon);
    EXPECT_EQ(picker->getYear(), today.tm_year + 1900);
}

TEST_F(DatePicker, ACopyKeepsTheChosenDateInButtonsOfItsOwn)
{
    auto* copy = new datecanvas(*picker);
    ui.show(copy, { 20, 400 });
    copy->post_init();
    EXPECT_EQ(copy->getDayIndex(), 30);
    EXPECT_EQ(copy->getMonthIndex(), 2);
    EXPECT_EQ(copy->getYear(), 2023);
    EXPECT_NE(copy->getDayButton(), picker->getDayButton());
    EXPECT_EQ(copy->getDayButton()->getSelectedItem(), 30);
}
