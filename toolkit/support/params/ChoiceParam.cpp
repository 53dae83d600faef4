#include "toolkit/support/params/ChoiceParam.h"

#include "toolkit/support/params/ParamText.h"

#include <algorithm>

namespace GenericParam {

ChoiceParam::ChoiceParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip,
                         uint32_t initial, std::vector<Choice> choices)
    : ParamBase<uint32_t>(std::move(legend), std::move(name), tooltip, initial)
    , m_choices(std::move(choices))
{
}

unsigned ChoiceParam::indexOfValue(uint32_t value) const
{
    const auto it
        = std::find_if(m_choices.begin(), m_choices.end(), [value](const Choice& c) { return c.value == value; });
    return it == m_choices.end() ? npos : static_cast<unsigned>(it - m_choices.begin());
}

LightweightString<wchar_t> ChoiceParam::getSelectedLabel() const
{
    const unsigned i = indexOfValue(getValue());
    return i == npos ? LightweightString<wchar_t>() : m_choices[i].label;
}

LightweightString<wchar_t> ChoiceParam::toText(const uint32_t& value) const
{
    return ParamText::writeInteger(value);
}

std::optional<uint32_t> ChoiceParam::fromText(const LightweightString<wchar_t>& text) const
{
    const auto number = ParamText::readInteger(text);
    if (!number || *number < 0 || *number > int64_t(noChoice))
        return std::nullopt;
    return static_cast<uint32_t>(*number);
}

} // namespace GenericParam
