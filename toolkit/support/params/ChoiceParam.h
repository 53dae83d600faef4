#pragma once
// A choice from an ordered list of (label, value) entries. The parameter's value is the chosen entry's
// value, not its position, and its text form is that value as a decimal number ("2"), never the label:
// saved state survives relabelling and reordering of the list.
//
// Only values of the list can be set; anything else is refused and leaves the value unchanged. The initial
// value is stored as given, even when it is not in the list (noChoice marks a list with nothing to choose).

#include "toolkit/support/params/ParamBase.h"

#include <cstdint>
#include <vector>

namespace GenericParam {

class ChoiceParam : public ParamBase<uint32_t> {
public:
    struct Choice {
        LightweightString<wchar_t> label;
        uint32_t value = 0;
    };
    static constexpr uint32_t noChoice = 0xFFFFFFFFu;
    static constexpr unsigned npos = static_cast<unsigned>(-1);

    ChoiceParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip, uint32_t initial,
                std::vector<Choice> choices);

    LightweightString<char> getValueTypeName() const override { return "choice"; }

    const std::vector<Choice>& getChoices() const { return m_choices; }
    unsigned getNumChoices() const { return static_cast<unsigned>(m_choices.size()); }
    // Position in the list of the first entry with `value`; npos when there is none.
    unsigned indexOfValue(uint32_t value) const;
    // The label of the current value; empty when the value is not in the list.
    LightweightString<wchar_t> getSelectedLabel() const;

protected:
    LightweightString<wchar_t> toText(const uint32_t& value) const override;
    std::optional<uint32_t> fromText(const LightweightString<wchar_t>& text) const override;
    bool accepts(const uint32_t& value) const override { return indexOfValue(value) != npos; }

private:
    std::vector<Choice> m_choices;
};

} // namespace GenericParam
