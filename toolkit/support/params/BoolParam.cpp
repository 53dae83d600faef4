#include "toolkit/support/params/BoolParam.h"

#include "toolkit/support/params/ParamText.h"

namespace GenericParam {

BoolParam::BoolParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip, bool initial)
    : ParamBase<bool>(std::move(legend), std::move(name), tooltip, initial)
{
}

LightweightString<wchar_t> BoolParam::toText(const bool& value) const
{
    return value ? L"true" : L"false";
}

std::optional<bool> BoolParam::fromText(const LightweightString<wchar_t>& text) const
{
    return ParamText::readBool(text);
}

} // namespace GenericParam
