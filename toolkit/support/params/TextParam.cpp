#include "toolkit/support/params/TextParam.h"

namespace GenericParam {

TextParam::TextParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip,
                     LightweightString<wchar_t> initial, LightweightString<wchar_t> hint, bool obfuscated,
                     bool advance)
    : ParamBase<LightweightString<wchar_t>>(std::move(legend), std::move(name), tooltip, std::move(initial))
    , m_hint(std::move(hint))
    , m_obfuscated(obfuscated)
    , m_advance(advance)
{
}

LabelParam::LabelParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip)
    : ParamCore(std::move(legend), std::move(name), tooltip)
{
}

} // namespace GenericParam
