// Arbitrary bytes as a colour message (colour panels receive them from other panels and from pasted text):
// parsing always answers 0, never writes the outputs unless the text starts with the message's first word,
// and a message made from any colour reads back to that colour's hue and saturation.
#include "FuzzChecks.h"
#include "colour/ColEyeDropBase.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    double h = -7.0;
    double s = -7.0;
    double v = -7.0;
    check(ColEyeDropBase::parse(text.c_str(), h, s, v) == 0, "parsing answered other than 0");
    const bool written = !(h == -7.0 && s == -7.0 && v == -7.0);
    if (written)
        check(text.rfind("colour_eye_dropper ", 0) == 0, "a text of another message wrote the outputs");

    if (size >= 3) {
        const RgbTriple colour(data[0], data[1], data[2]);
        const LightweightString<char> msg = ColEyeDropBase::pixelToMsg(colour);
        double hue = -1.0;
        double saturation = -1.0;
        double value = -1.0;
        ColEyeDropBase::parse(msg.c_str(), hue, saturation, value);
        const HSV expected = Colour(colour.r / 255.0, colour.g / 255.0, colour.b / 255.0).toHSV();
        check(hue == expected.h && saturation == expected.s && value == expected.v / 255.0,
              "a colour's message read back to another colour");
    }
    return 0;
}
