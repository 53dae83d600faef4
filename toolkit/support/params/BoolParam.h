#pragma once
// A yes/no parameter. Text form: "true" or "false"; reading also accepts "1" and "0" (and any letter case).

#include "toolkit/support/params/ParamBase.h"

namespace GenericParam {

class BoolParam : public ParamBase<bool> {
public:
    BoolParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip, bool initial);

    LightweightString<char> getValueTypeName() const override { return "bool"; }

protected:
    LightweightString<wchar_t> toText(const bool& value) const override;
    std::optional<bool> fromText(const LightweightString<wchar_t>& text) const override;
};

} // namespace GenericParam
