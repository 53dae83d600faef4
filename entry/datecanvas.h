#pragma once
// datecanvas: three drop-down buttons side by side (day, month, year) that together choose a calendar date,
// and turn it into a C time value of local midnight.
//
//   choice                 | date canvas does
//   -----------------------+-----------------------------------------------------------------------------
//   a day                  | the day index follows it
//   a month or a year      | the index follows it and the day list is made to fit the month: the day is
//                          | clamped to the month's last day and shown clamped at once
//   any of them            | the owner hears dateChangedMsg
//
// Days per month follow the table January..December 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31, with
// February one longer in every year divisible by 4. There is deliberately no century rule: 1900 and 2100
// count as leap years, as the date files this widget was made for count them.
//
// Day labels are English ordinals ("1st", "2nd", "3rd", "4th" ... "21st", "22nd", "23rd" ... "31st"). The
// month labels are the English month names; the year list runs from 1900 to 2100 unless setYears gives
// another (labels given as a resource id show the resource's text).

#include "toolkit/support/UIString.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/TabOrderable.h"

#include <cstdint>
#include <vector>

class DropDownMenuButton;

class datecanvas : public Glob, public TabOrderableHost {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // Width and height 0 fit the buttons; a button height of 0 is the standard button height.
        InitArgs(const Palette& pal, uint16_t w = 0, uint16_t h = 0, uint16_t buttonH = 0, Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), buttonHeight(buttonH)
        {
        }
        uint16_t buttonHeight = 0;
    };

    explicit datecanvas(const InitArgs& args);
    // The third size is the height of the buttons (0: the standard button height).
    datecanvas(const Palette& palette, uint16_t width, uint16_t height, uint16_t buttonHeight = 0,
               Canvas* canvas = nullptr);
    datecanvas(const datecanvas& other);
    datecanvas(datecanvas&& other) : datecanvas(static_cast<const datecanvas&>(other)) {}
    datecanvas& operator=(const datecanvas& other);
    datecanvas& operator=(datecanvas&& other) { return *this = static_cast<const datecanvas&>(other); }
    ~datecanvas() override;

    // Today, from the system clock in local time.
    void init();
    // Shows the three indexes in the buttons.
    void post_init();

    // day 1..31, month 1..12; a year not in the list selects the first year. The day list is then fitted to
    // the month, as a choice would fit it.
    void m_set_date(int day, int month, int year);
    // The same from a time value, read in local time.
    void m_set_date(int64_t timeValue);
    // Prints the seconds count of local midnight on the chosen day (mktime, cut to 32 bits) with "%d" into
    // `buffer`, which must hold 12 characters, and answers it. With a null buffer the text goes into a
    // string allocated with malloc that the caller frees with free().
    char* m_generate_string(char* buffer) const;
    // Kept for callers that bracket showing the widget; nothing to do.
    void m_map_date() {}
    void m_unmap_date() {}

    void setYears(std::vector<UIString> years);
    int getDayIndex() const { return m_choice.day; }
    int getMonthIndex() const { return m_choice.month; }
    int getYearIndex() const { return m_choice.year; }
    // The number in the chosen year's label; 0 when there is none.
    int getYear() const;
    // Entries in the day menu now.
    int getDayCount() const { return m_dayCount; }
    DropDownMenuButton* getDayButton() const { return m_dayButton; }
    DropDownMenuButton* getMonthButton() const { return m_monthButton; }
    DropDownMenuButton* getYearButton() const { return m_yearButton; }

    // The days of a month (index 0..11) in a year, by the rule above; 0 for year 0 or a month above 11.
    static int daysInMonth(int monthIndex, int year);
    // "1st" ... "31st" for day 1..31.
    static LightweightString<wchar_t> dayLabel(int day);

    static constexpr const char* dateChangedMsg = "datecanvas_changed";

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool react(const Event& event) override;
    void reshape() override;
    void draw() override;
    void getTabOrderables(std::vector<TabOrderable*>& out) override;

private:
    void build(uint16_t buttonHeight);
    void validateDays();
    // Sets each button whose selection differs from its index back to the index. Answers whether any changed.
    bool showIndexes();

    // The choice, as indexes into the day, month and year lists: what a copy takes over.
    struct Choice {
        std::vector<UIString> years;
        int day = 0;
        int month = 0;
        int year = 0;
    };

    Choice m_choice;
    DropDownMenuButton* m_dayButton = nullptr; // children: owned by the tree
    DropDownMenuButton* m_monthButton = nullptr;
    DropDownMenuButton* m_yearButton = nullptr;
    int m_dayCount = 0;
};
