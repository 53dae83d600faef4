#include "toolkit/widgets/NumericTextBox.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/ui/GlobManager.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <string>

namespace {

constexpr int kAutoDecimals = 6;

const bool registeredByName = GlobManager::registerWidget<NumericTextBox>("NumericTextBox");

} // namespace

NumericTextBox::InitArgs::InitArgs(const GlobCreationInfo& info) : TextBoxBase::InitArgs(info)
{
    const SettingsReader settings(info.config);
    value = settings.number("value").value_or(value);
    minimum = settings.number("min");
    maximum = settings.number("max");
    decimals = settings.integer("decimals").value_or(decimals);
}

NumericTextBox::NumericTextBox(const InitArgs& args) : TextBoxBase(args), m_decimals(args.decimals)
{
    if (args.minimum && args.maximum)
        setValueRange(*args.minimum, *args.maximum);
    applyCharacterRules();
    m_value = std::isfinite(args.value) ? clampToRange(args.value) : 0.0;
    setString(format(m_value));
}

NumericTextBox::NumericTextBox(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : TextBoxBase(width, height, palette, canvas)
{
    applyCharacterRules();
    setString(format(m_value));
}

NumericTextBox::~NumericTextBox() = default;

LightweightString<char> NumericTextBox::idstring() const
{
    return "NumericTextBox";
}

// ---------------------------------------------------------------------------------------------------------
// Range, value and format

void NumericTextBox::setValueRange(int minimum, int maximum)
{
    setValueRange(static_cast<double>(minimum), static_cast<double>(maximum));
    m_integer = true;
    applyCharacterRules();
    setValue(m_value);
}

void NumericTextBox::setValueRange(double minimum, double maximum)
{
    if (std::isnan(minimum) || std::isnan(maximum))
        return;
    if (minimum > maximum)
        std::swap(minimum, maximum);
    m_min = minimum;
    m_max = maximum;
    m_integer = false;
    applyCharacterRules();
    setValue(m_value);
}

void NumericTextBox::clearValueRange()
{
    m_min.reset();
    m_max.reset();
}

void NumericTextBox::applyCharacterRules()
{
    setAllowedChars(m_integer ? L"0123456789+-" : L"0123456789+-.eE");
}

double NumericTextBox::clampToRange(double value) const
{
    if (m_integer)
        value = std::round(value);
    if (m_min && value < *m_min)
        value = *m_min;
    if (m_max && value > *m_max)
        value = *m_max;
    return value;
}

void NumericTextBox::setValue(double value)
{
    if (!std::isfinite(value))
        return;
    m_value = clampToRange(value);
    setString(format(m_value));
}

void NumericTextBox::setDecimals(int decimals)
{
    m_decimals = std::clamp(decimals, -1, 15);
    setString(format(m_value));
}

void NumericTextBox::setStep(double step)
{
    if (std::isfinite(step) && step > 0.0)
        m_step = step;
}

LightweightString<wchar_t> NumericTextBox::format(double value) const
{
    char buffer[64];
    if (m_integer || m_decimals == 0) {
        std::snprintf(buffer, sizeof buffer, "%.0f", std::round(value));
    } else if (m_decimals > 0) {
        std::snprintf(buffer, sizeof buffer, "%.*f", m_decimals, value);
    } else if (std::fabs(value) >= 1e15) {
        std::snprintf(buffer, sizeof buffer, "%.15g", value);
    } else {
        // As many decimals as the value needs: trailing zeros say nothing.
        std::snprintf(buffer, sizeof buffer, "%.*f", kAutoDecimals, value);
        std::string s(buffer);
        if (s.find('.') != std::string::npos) {
            while (s.back() == '0')
                s.pop_back();
            if (s.back() == '.')
                s.pop_back();
        }
        std::snprintf(buffer, sizeof buffer, "%s", s.c_str());
    }
    std::string s(buffer);
    if (s == "-0")
        s = "0"; // a tiny negative rounded away is still zero to the reader
    return fromUTF8(s);
}

std::optional<double> NumericTextBox::parse(std::wstring_view text)
{
    while (!text.empty() && std::iswspace(static_cast<wint_t>(text.front())))
        text.remove_prefix(1);
    while (!text.empty() && std::iswspace(static_cast<wint_t>(text.back())))
        text.remove_suffix(1);
    if (text.empty())
        return std::nullopt;
    // Only the characters of a decimal number: strtod would also read "inf", "nan" and hexadecimal.
    for (wchar_t c : text)
        if (!(std::iswdigit(static_cast<wint_t>(c)) || c == L'+' || c == L'-' || c == L'.' || c == L'e' || c == L'E'))
            return std::nullopt;
    const std::wstring copy(text);
    wchar_t* end = nullptr;
    const double value = std::wcstod(copy.c_str(), &end);
    if (end != copy.c_str() + copy.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

// ---------------------------------------------------------------------------------------------------------
// Commit and keys

void NumericTextBox::prepareCommit()
{
    const std::optional<double> typed = parse(text());
    const double value = typed ? clampToRange(*typed) : m_value;
    const bool changed = value != m_value;
    m_value = value;
    setString(format(m_value));
    if (changed)
        ValWidget<double>::publishValue(m_value, kDataChangeFinal);
}

bool NumericTextBox::handleKey(const Event& event)
{
    if ((event.key == Event::KeyUp || event.key == Event::KeyDown) && !event.hasAnyModifier()) {
        if (!isEditable())
            return true;
        const double from = parse(text()).value_or(m_value);
        const double to = clampToRange(from + (event.key == Event::KeyUp ? m_step : -m_step));
        setString(format(to));
        commit();
        return true;
    }
    return TextBoxBase::handleKey(event);
}

void NumericTextBox::showValue(const double& value, DataChangeType)
{
    if (!std::isfinite(value))
        return;
    m_value = value;
    setString(format(value));
}
