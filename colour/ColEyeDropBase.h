#pragma once
// ColEyeDropBase: the sampling core of the eyedropper. It reads pixels of what the user sees
// (pictor_getScreenRect: the composed screen, or the whole desktop where the window system lets us see it),
// averages them into one colour or measures the range of hue, saturation and value they cover, and turns a
// colour into the text message colour panels receive, and back.
//
// The colour message is "colour_eye_dropper HSV <hue> <saturation> <value>". Its value is the toolkit
// colour's value divided by 255 once more (so it lies in 0..1/255); panels that read these messages scale it
// back, so the division stays.

#include "toolkit/support/Box.h"
#include "toolkit/support/Colour.h"
#include "toolkit/support/LightweightString.h"

class ColEyeDropBase {
public:
    // Minimum and maximum of hue (degrees), saturation and value (0..1), in that order.
    struct ColourRange {
        bool operator==(const ColourRange&) const = default;

        double minHue = 0.0;
        double maxHue = 0.0;
        double minSaturation = 0.0;
        double maxSaturation = 0.0;
        double minValue = 0.0;
        double maxValue = 0.0;
    };

    ColEyeDropBase() = default;
    ColEyeDropBase(const ColEyeDropBase&) = default;
    ColEyeDropBase(ColEyeDropBase&&) = default;
    ColEyeDropBase& operator=(const ColEyeDropBase&) = default;
    ColEyeDropBase& operator=(ColEyeDropBase&&) = default;
    virtual ~ColEyeDropBase() = default;

    // The average of the screen area, each channel truncated; black when the screen cannot be read. The
    // corners are truncated to whole pixels first.
    static RgbTriple_<unsigned char> getPixelColour(const Cv::Box<double, Cv::BottomUpTraits>& area);
    // The range covered by the area's coloured pixels (greys and black do not count). Six zeros when the
    // screen cannot be read; six -1 when the capture holds no pixels or none of them counted.
    static ColourRange getPixelRange(const Cv::Box<double, Cv::BottomUpTraits>& area);
    static LightweightString<char> pixelToMsg(const RgbTriple_<unsigned char>& colour);
    // Reads a colour message back. Always answers 0: the outputs are written only when the text splits at
    // single spaces into exactly five words of which the first is "colour_eye_dropper".
    static int parse(const char* msg, double& hue, double& saturation, double& value);

    static constexpr const char* messagePrefix = "colour_eye_dropper HSV ";

protected:
    // Samples the single pixel at (x, y) and writes its colour message.
    virtual void grabPixelColour(int x, int y, LightweightString<char>& msg);
};
