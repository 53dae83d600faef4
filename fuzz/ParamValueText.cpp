// Arbitrary bytes as a saved parameter value (restoring a panel reads values back from a settings record
// that the user may have edited): each kind must either refuse the text and keep its value, or store a value
// that obeys its range and whose own text form reads back to exactly the same value.
#include "FuzzChecks.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/params/BoolParam.h"
#include "toolkit/support/params/ChoiceParam.h"
#include "toolkit/support/params/NumericParams.h"
#include "toolkit/support/params/TextParam.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

using namespace GenericParam;

// Refused text leaves the value alone; accepted text leaves a value whose text form is stable.
template <typename P>
void feed(P& param, const LightweightString<wchar_t>& text)
{
    const auto before = param.getValue();
    if (!param.setValueFromString(text)) {
        check(param.getValue() == before, "a refused text changed the value");
        return;
    }
    const auto after = param.getValue();
    check(param.setValueFromString(param.getValueAsString()), "a value's own text is refused");
    check(param.getValue() == after, "a value does not read back from its own text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const LightweightString<wchar_t> text = fromUTF8(std::string_view(reinterpret_cast<const char*>(data), size));

    IntParam ranged(L"Ranged", "ranged", ResId(), 5, -100, 100, true);
    feed(ranged, text);
    check(ranged.getValue() >= -100 && ranged.getValue() <= 100, "an integer left its range");

    IntParam free(L"Free", "free", ResId(), 5);
    feed(free, text);

    DoubleParam gain(L"Gain", "gain", ResId(), 0.5, -1.0, 1.0, true);
    feed(gain, text);
    check(gain.getValue() >= -1.0 && gain.getValue() <= 1.0, "a number left its range");

    DoubleParam unbounded(L"Any", "any", ResId(), 0.5);
    feed(unbounded, text);
    check(unbounded.getValue() == unbounded.getValue(), "a number became NaN");

    BoolParam flag(L"Flag", "flag", ResId(), false);
    feed(flag, text);

    ChoiceParam mode(L"Mode", "mode", ResId(), 2u, {{L"One", 1}, {L"Two", 2}, {L"Big", 4000000000u}});
    feed(mode, text);
    check(mode.indexOfValue(mode.getValue()) != ChoiceParam::npos, "a choice holds a value not on its list");

    TextParam name(L"Name", "name", ResId(), L"");
    feed(name, text);
    check(name.getValue() == text, "a text value differs from the text given");
    return 0;
}
