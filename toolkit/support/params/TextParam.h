#pragma once
// TextParam: free wide text; its text form is the text itself, so every text is readable.
// LabelParam: a line of display text (its legend) that holds no value.

#include "toolkit/support/params/ParamBase.h"

namespace GenericParam {

class TextParam : public ParamBase<LightweightString<wchar_t>> {
public:
    // `hint` is shown greyed while the entry is empty; `obfuscated` masks the characters shown (passwords);
    // `advance` makes committing the entry perform the panel's main action.
    TextParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip,
              LightweightString<wchar_t> initial, LightweightString<wchar_t> hint = {}, bool obfuscated = false,
              bool advance = false);

    LightweightString<char> getValueTypeName() const override { return "text"; }

    const LightweightString<wchar_t>& getInitialText() const { return getDefaultValue(); }
    const LightweightString<wchar_t>& getHint() const { return m_hint; }
    bool isObfuscated() const { return m_obfuscated; }
    bool isAdvance() const { return m_advance; }

protected:
    LightweightString<wchar_t> toText(const LightweightString<wchar_t>& value) const override { return value; }
    std::optional<LightweightString<wchar_t>> fromText(const LightweightString<wchar_t>& text) const override
    {
        return text;
    }

private:
    LightweightString<wchar_t> m_hint;
    bool m_obfuscated = false;
    bool m_advance = false;
};

class LabelParam : public ParamCore {
public:
    LabelParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip);

    LightweightString<char> getValueTypeName() const override { return "label"; }
    // No value: the text form is empty, setting from text is refused, and there is nothing to announce.
    LightweightString<wchar_t> getValueAsString() const override { return {}; }
    bool setValueFromString(const LightweightString<wchar_t>&) override { return false; }
    void announce() override {}
};

} // namespace GenericParam
