#include "entry/datecanvas.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/DropDownMenuButton.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

namespace {

constexpr int daysPerMonth[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr int firstListedYear = 1900;
constexpr int lastListedYear = 2100;
constexpr size_t timeTextSize = 12; // "-2147483648" and its end

std::vector<UIString> dayLabels(int count)
{
    std::vector<UIString> labels;
    for (int day = 1; day <= count; ++day)
        labels.emplace_back(datecanvas::dayLabel(day));
    return labels;
}

std::vector<UIString> monthLabels()
{
    return {L"January", L"February", L"March",     L"April",   L"May",      L"June",
            L"July",    L"August",   L"September", L"October", L"November", L"December"};
}

std::vector<UIString> defaultYears()
{
    std::vector<UIString> years;
    for (int year = firstListedYear; year <= lastListedYear; ++year)
        years.emplace_back(LightweightString<wchar_t>(std::to_wstring(year)));
    return years;
}

} // namespace

datecanvas::datecanvas(const InitArgs& args) : Glob(args), m_choice{.years = defaultYears()}
{
    build(args.buttonHeight);
}

datecanvas::datecanvas(const Palette& palette, uint16_t width, uint16_t height, uint16_t buttonHeight, Canvas* canvas)
    : datecanvas(InitArgs(palette, width, height, buttonHeight, canvas))
{
}

datecanvas::datecanvas(const datecanvas& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), Glob(other),
      TabOrderableHost(other), m_choice(other.m_choice)
{
    build(static_cast<uint16_t>(other.m_dayButton->getHeight()));
}

datecanvas& datecanvas::operator=(const datecanvas& other)
{
    if (this != &other) {
        Glob::operator=(other);
        m_choice = other.m_choice;
        m_yearButton->setStrings(m_choice.years, MenuItemIndex(m_choice.year));
        validateDays();
        showIndexes();
    }
    return *this;
}

datecanvas::~datecanvas() = default;

LightweightString<char> datecanvas::idstring() const
{
    return "datecanvas";
}

void datecanvas::build(uint16_t buttonHeight)
{
    const uint16_t h = buttonHeight ? buttonHeight : static_cast<uint16_t>(UifStd::getButtonHeight());
    const Pictor::FontDesc font = UifStd::getDefaultFont();
    const Palette pal = getPalette();
    m_dayButton = addWidget<DropDownMenuButton>(
        DropDownMenuButton::InitArgs(dayLabels(31), MenuItemIndex(0),
                                     DropDownMenuButton::calcWidth(std::vector<UIString>{L"22nd"}, font), h, pal),
        BottomLeft(0, 0));
    m_dayCount = 31;
    m_monthButton = addWidget<DropDownMenuButton>(
        DropDownMenuButton::InitArgs(monthLabels(), MenuItemIndex(0), 0, h, pal), BottomLeft(0, 0));
    m_yearButton = addWidget<DropDownMenuButton>(
        DropDownMenuButton::InitArgs(m_choice.years, MenuItemIndex(0), 0, h, pal), BottomLeft(0, 0));
    if (getWidth() == 0 || getHeight() == 0) {
        const int fitted = m_dayButton->getWidth() + m_monthButton->getWidth() + m_yearButton->getWidth();
        resize(getWidth() ? getWidth() : fitted, getHeight() ? getHeight() : h);
    }
    validateDays();
    reshape();
}

void datecanvas::setYears(std::vector<UIString> years)
{
    m_choice.years = std::move(years);
    if (m_choice.year < 0 || static_cast<size_t>(m_choice.year) >= m_choice.years.size())
        m_choice.year = 0;
    m_yearButton->setStrings(m_choice.years, MenuItemIndex(m_choice.year));
    validateDays();
    showIndexes();
}

void datecanvas::init()
{
    m_set_date(static_cast<int64_t>(std::time(nullptr)));
}

void datecanvas::post_init()
{
    showIndexes();
}

int datecanvas::getYear() const
{
    if (m_choice.year < 0 || static_cast<size_t>(m_choice.year) >= m_choice.years.size())
        return 0;
    return std::atoi(toUTF8(m_choice.years[static_cast<size_t>(m_choice.year)].getString().view()).c_str());
}

void datecanvas::m_set_date(int day, int month, int year)
{
    m_choice.day = day - 1;
    m_choice.month = month - 1;
    m_choice.year = 0;
    const LightweightString<wchar_t> wanted(std::to_wstring(year));
    for (size_t i = 0; i < m_choice.years.size(); ++i) {
        if (m_choice.years[i].getString() == wanted) {
            m_choice.year = static_cast<int>(i);
            break;
        }
    }
    validateDays();
    showIndexes();
}

void datecanvas::m_set_date(int64_t timeValue)
{
    const std::time_t when = static_cast<std::time_t>(timeValue);
    std::tm local{};
    if (!localtime_r(&when, &local))
        return;
    m_set_date(local.tm_mday, local.tm_mon + 1, local.tm_year + 1900);
}

char* datecanvas::m_generate_string(char* buffer) const
{
    std::tm midnight{};
    midnight.tm_mday = m_choice.day + 1;
    midnight.tm_mon = m_choice.month;
    midnight.tm_year = getYear() - 1900;
    // Let the C library decide whether summer time applies on that day.
    midnight.tm_isdst = -1;
    const auto seconds = static_cast<int32_t>(static_cast<int64_t>(std::mktime(&midnight)));
    char* out = buffer ? buffer : static_cast<char*>(std::malloc(timeTextSize));
    if (out)
        std::snprintf(out, timeTextSize, "%d", seconds);
    return out;
}

int datecanvas::daysInMonth(int monthIndex, int year)
{
    if (year == 0 || monthIndex < 0 || monthIndex > 11)
        return 0;
    return daysPerMonth[monthIndex] + (monthIndex == 1 && year % 4 == 0 ? 1 : 0);
}

LightweightString<wchar_t> datecanvas::dayLabel(int day)
{
    const int lastDigit = day % 10;
    const bool teen = day % 100 >= 11 && day % 100 <= 13;
    const wchar_t* suffix = L"th";
    if (!teen && lastDigit == 1)
        suffix = L"st";
    else if (!teen && lastDigit == 2)
        suffix = L"nd";
    else if (!teen && lastDigit == 3)
        suffix = L"rd";
    return LightweightString<wchar_t>(std::to_wstring(day) + suffix);
}

void datecanvas::validateDays()
{
    const int count = daysInMonth(m_choice.month, getYear());
    if (m_choice.day > count - 1)
        m_choice.day = count - 1;
    if (count != m_dayCount) {
        m_dayButton->setStrings(dayLabels(count), MenuItemIndex(0));
        m_dayCount = count;
    }
}

bool datecanvas::showIndexes()
{
    bool changed = false;
    const std::pair<DropDownMenuButton*, int> shown[]
        = { { m_dayButton, m_choice.day }, { m_monthButton, m_choice.month }, { m_yearButton, m_choice.year } };
    for (const auto& [button, index] : shown) {
        if (button->getSelectedItem() == index)
            continue;
        button->setSelectedItem(MenuItemIndex(index));
        button->redraw();
        changed = true;
    }
    return changed;
}

bool datecanvas::react(const Event& event)
{
    if (event.isMessage() && event.message == DropDownMenuButton::dropDownMenuButtonMsg) {
        if (event.sender == m_dayButton) {
            m_choice.day = m_dayButton->getSelectedItem();
        } else if (event.sender == m_monthButton) {
            m_choice.month = m_monthButton->getSelectedItem();
            validateDays();
        } else if (event.sender == m_yearButton) {
            m_choice.year = m_yearButton->getSelectedItem();
            validateDays();
        } else {
            return Glob::react(event);
        }
        showIndexes();
        callMsg(dateChangedMsg);
        return true;
    }
    return Glob::react(event);
}

void datecanvas::reshape()
{
    if (m_dayButton) {
        m_dayButton->setPos(0, 0);
        m_monthButton->setPos(m_dayButton->getWidth(), 0);
        m_yearButton->setPos(m_dayButton->getWidth() + m_monthButton->getWidth(), 0);
    }
    Glob::reshape();
}

void datecanvas::draw()
{
    // The indexes are the truth; the buttons catch up before anything shows, in one paint.
    Pictor::UpdateDeferrer oneRepaint;
    showIndexes();
    Glob::draw();
}

void datecanvas::getTabOrderables(std::vector<TabOrderable*>& out)
{
    out.push_back(m_dayButton);
    out.push_back(m_monthButton);
    out.push_back(m_yearButton);
}
