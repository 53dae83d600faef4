#include "forms/fo_entry.h"

#include "toolkit/widgets/TitleTextBox.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

namespace {

std::string narrow(const LightweightString<wchar_t>& text)
{
    return fo_eleme::msgFromUIText(text).str();
}

// Digits of the truncated value, plus one for the sign of a negative one.
int printedWidth(double value)
{
    char digits[400];
    const int n = std::snprintf(digits, sizeof digits, "%.0f", std::trunc(std::fabs(value)));
    return (n > 0 ? n : 1) + (value < 0.0 ? 1 : 0);
}

// Keeps a number row's value within its range; answers 1 when it had to move it, so that the row shows the
// bound instead of the text typed. A NaN compares false both ways: it is out of range, and the minimum is
// the safest value to show.
template <typename Number>
int keptInRange(Number& value, Number min, Number max)
{
    if (!(value >= min)) {
        value = min;
        return 1;
    }
    if (value > max) {
        value = max;
        return 1;
    }
    return 0;
}

} // namespace

// ---------------------------------------------------------------------------------------------------------
// fo_entry

fo_entry::fo_entry(uint16_t width, uint16_t height, int index, UIString title, int maximumLength, double proportion)
    : fo_eleme(width, height, fo_entry_element, index, std::move(title), proportion),
      m_collected{.maxLength = maximumLength}
{
    makeBox();
}

fo_entry::fo_entry(const fo_entry& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), fo_eleme(other),
      m_collected(other.m_collected)
{
    makeBoxLike(other);
}

fo_entry& fo_entry::operator=(const fo_entry& other)
{
    if (this != &other) {
        fo_eleme::operator=(other);
        m_collected = other.m_collected;
        removeChild(m_box);
        makeBoxLike(other);
    }
    return *this;
}

fo_entry::~fo_entry() = default;

void fo_entry::makeBox()
{
    const GlobBox area = controlArea(false);
    m_box = addWidget<TitleTextBox>(
        TitleTextBox::InitArgs(UIString(), m_collected.text, static_cast<uint16_t>(area.width()),
                               static_cast<uint16_t>(area.width()), getHeight(), getPalette().makeChildPalette()),
        Glob::BottomLeft(area.left(), 0));
    m_box->setMaxLength(m_collected.maxLength);
    m_box->requestCallback(returnPressedMsg, this, TextBoxBase::eReturnPressed);
    m_box->requestCallback(editedMsg, this, TextBoxBase::eChanged);
}

void fo_entry::makeBoxLike(const fo_entry& other)
{
    makeBox();
    m_box->setString(other.m_box->getString());
}

LightweightString<char> fo_entry::idstring() const
{
    return "fo_entry";
}

void fo_entry::setMaxLength(int maximumLength)
{
    m_collected.maxLength = maximumLength;
    m_box->setMaxLength(maximumLength);
}

void fo_entry::showEntry(const LightweightString<wchar_t>& text)
{
    m_collected.text = text;
    m_box->setString(text);
}

void fo_entry::m_set_entry(const LightweightString<wchar_t>& text)
{
    showEntry(text);
}

int fo_entry::m_validate_state()
{
    return m_validate_entry(m_box->getString());
}

int fo_entry::m_validate_entry(const LightweightString<wchar_t>&)
{
    return 0;
}

void fo_entry::m_collect_entry()
{
    m_collected.text = m_box->getString();
}

void fo_entry::m_gain_focus()
{
    fo_eleme::m_gain_focus();
    // The row the form points at is the row the keys go to.
    if (m_box->isShowing() && !m_box->hasFocus())
        m_box->takeFocus();
}

bool fo_entry::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (sender == m_box && name == returnPressedMsg) {
        if (!m_take_focus())
            return true;
        m_collected.unread = false;
        m_collect_entry();
        m_relay_msg_to_parent(msgFromUIText(m_collected.text));
        return true;
    }
    if (sender == m_box && name == editedMsg) {
        m_collected.unread = true;
        m_take_focus();
        return true;
    }
    return fo_eleme::handleMessageEvent(name, sender);
}

void fo_entry::drawText()
{
    drawTitleColumn();
}

void fo_entry::reshape()
{
    if (m_box) {
        const GlobBox area = controlArea(false);
        m_box->resize(area.width(), getHeight());
        m_box->setEntryWidth(static_cast<uint16_t>(area.width()));
        m_box->setPos(area.left(), 0);
    }
    fo_eleme::reshape();
}

// ---------------------------------------------------------------------------------------------------------
// fo_path

fo_path::fo_path(uint16_t width, uint16_t height, int index, UIString title, int option, double proportion)
    : fo_entry(width, height, index, std::move(title), pathMaxLength, proportion), m_option(option)
{
}

LightweightString<char> fo_path::idstring() const
{
    return "fo_path";
}

void fo_path::acceptOrRestore(const LightweightString<wchar_t>& text)
{
    if (m_validate_entry(text) != 0) {
        showEntry(m_lastAccepted);
        return;
    }
    showEntry(text);
    m_lastAccepted = text;
}

void fo_path::m_set_entry(const LightweightString<wchar_t>& text)
{
    acceptOrRestore(text);
}

void fo_path::m_collect_entry()
{
    acceptOrRestore(getTextBox()->getString());
}

// ---------------------------------------------------------------------------------------------------------
// fo_v_int

fo_v_int::fo_v_int(uint16_t width, uint16_t height, int index, UIString title, int minimum, int maximum,
                   double proportion)
    : fo_entry(width, height, index, std::move(title), intMaxLength, proportion),
      m_min(maximum < minimum ? 0 : minimum), m_max(maximum < minimum ? 0 : maximum), m_value(m_min)
{
    showEntry(LightweightString<wchar_t>(std::to_wstring(m_value)));
}

LightweightString<char> fo_v_int::idstring() const
{
    return "fo_v_int";
}

int fo_v_int::m_validate_entry(const LightweightString<wchar_t>& text)
{
    m_value = std::atoi(narrow(text.empty() ? m_get_entry() : text).c_str());
    return keptInRange(m_value, m_min, m_max);
}

void fo_v_int::m_set_value(int value)
{
    m_value = value;
    keptInRange(m_value, m_min, m_max);
    showEntry(LightweightString<wchar_t>(std::to_wstring(m_value)));
}

void fo_v_int::m_set_entry(const LightweightString<wchar_t>& text)
{
    m_validate_entry(text);
    showEntry(LightweightString<wchar_t>(std::to_wstring(m_value)));
}

void fo_v_int::m_collect_entry()
{
    const LightweightString<wchar_t> typed = getTextBox()->getString();
    if (m_validate_entry(typed) != 0)
        showEntry(LightweightString<wchar_t>(std::to_wstring(m_value)));
    else
        showEntry(typed);
}

// ---------------------------------------------------------------------------------------------------------
// fo_v_dbl

fo_v_dbl::fo_v_dbl(uint16_t width, uint16_t height, int index, UIString title, double minimum, double maximum,
                   int decimals, double proportion)
    : fo_entry(width, height, index, std::move(title), 0, proportion),
      m_decimals(decimals < 0 ? 0 : std::min(decimals, maxDecimals))
{
    m_init_format();
    // Printed and read back, so the bounds hold what the box can show and nothing more.
    m_min = std::atof(narrow(m_format_value(minimum)).c_str());
    m_max = std::atof(narrow(m_format_value(maximum)).c_str());
    if (m_min > m_max)
        m_min = m_max = 0.0;
    m_value = m_min;
    // The decimal point is not counted: a long value may need the box scrolled, never cut.
    setMaxLength(std::max(printedWidth(m_min), printedWidth(m_max)) + m_decimals);
    showEntry(m_format_value(m_value));
}

LightweightString<char> fo_v_dbl::idstring() const
{
    return "fo_v_dbl";
}

void fo_v_dbl::m_init_format()
{
    if (!m_format.empty())
        return;
    constexpr int bufferSize = 16;
    char* buffer = new (std::nothrow) char[bufferSize];
    if (!buffer) {
        std::fprintf(stderr, "fo_v_dbl::m_init_format() failed new char [%d]\n", bufferSize);
        m_format = "%f";
        return;
    }
    std::snprintf(buffer, bufferSize, "%%.%df", m_decimals);
    m_format = buffer;
    delete[] buffer;
}

LightweightString<wchar_t> fo_v_dbl::m_format_value(double value) const
{
    char printed[512];
    const int n = std::snprintf(printed, sizeof printed, m_format.c_str(), value);
    if (n < 0)
        return {};
    if (static_cast<size_t>(n) < sizeof printed)
        return msgToUIText(std::string_view(printed, static_cast<size_t>(n)));
    // Values beyond 1e300 print long: make room rather than cut digits off.
    std::string big(static_cast<size_t>(n) + 1, '\0');
    std::snprintf(big.data(), big.size(), m_format.c_str(), value);
    big.resize(static_cast<size_t>(n));
    return msgToUIText(big);
}

int fo_v_dbl::m_validate_entry(const LightweightString<wchar_t>& text)
{
    m_value = std::atof(narrow(text.empty() ? m_get_entry() : text).c_str());
    return keptInRange(m_value, m_min, m_max);
}

void fo_v_dbl::m_set_value(double value)
{
    m_value = value;
    keptInRange(m_value, m_min, m_max);
    showEntry(m_format_value(m_value));
}

void fo_v_dbl::m_set_entry(const LightweightString<wchar_t>& text)
{
    if (text.empty()) {
        m_value = m_min;
        showEntry({});
        return;
    }
    m_validate_entry(text);
    showEntry(m_format_value(m_value));
}

void fo_v_dbl::m_collect_entry()
{
    const LightweightString<wchar_t> typed = getTextBox()->getString();
    if (m_validate_entry(typed) != 0)
        showEntry(m_format_value(m_value));
    else
        showEntry(typed);
}
