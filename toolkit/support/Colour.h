#pragma once
// Colours. `Colour` is what widgets and palettes pass around: four floating channels in 0..1 (alpha 1 is
// opaque). `NormalisedRGB` is a bare colour without alpha, the form the hue/saturation/value arithmetic
// works in. `RgbTriple_<T>` is a packed triple as stored in images (8-bit: `RgbTriple`).
//
// HSV convention used everywhere in the toolkit: hue in degrees, 0 <= h < 360 (red 0, green 120, blue 240);
// saturation and value in 0..1. A hue given as 360 (or any multiple or negative angle) wraps into that range,
// so 360 means red. Greys, black and white have hue 0 and saturation 0.

#include <cstdint>

template <typename T>
struct RgbTriple_ {
    constexpr RgbTriple_() = default;
    constexpr RgbTriple_(T red, T green, T blue) : r(red), g(green), b(blue) {}
    constexpr bool operator==(const RgbTriple_&) const = default;

    T r{};
    T g{};
    T b{};
};
using RgbTriple = RgbTriple_<unsigned char>;

struct NormalisedRGB {
    constexpr NormalisedRGB() = default;
    constexpr NormalisedRGB(double red, double green, double blue) : r(red), g(green), b(blue) {}
    constexpr bool operator==(const NormalisedRGB&) const = default;

    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
};

struct HSV {
    constexpr bool operator==(const HSV&) const = default;

    double h = 0.0; // degrees, 0 <= h < 360
    double s = 0.0; // 0..1
    double v = 0.0; // 0..1
};

// Channels outside 0..1 are clamped and NaN counts as 0, so any input gives a defined colour.
HSV RGBToHSV(const NormalisedRGB& rgb);
// The hue wraps into 0..360 first; saturation and value are clamped to 0..1.
NormalisedRGB HSVToRGB(const HSV& hsv);

class Colour {
public:
    // Opaque black.
    constexpr Colour() = default;
    // Channels are clamped to 0..1 (NaN becomes 0): a colour is always drawable.
    Colour(double r, double g, double b, double a = 1.0);
    explicit Colour(const NormalisedRGB& rgb, double a = 1.0) : Colour(rgb.r, rgb.g, rgb.b, a) {}
    explicit Colour(const RgbTriple& rgb, uint8_t a = 255);
    static Colour fromBytes(uint8_t r, uint8_t g, uint8_t b, uint8_t a = 255);
    static Colour fromHSV(const HSV& hsv, double a = 1.0) { return Colour(HSVToRGB(hsv), a); }

    double r() const { return m_r; }
    double g() const { return m_g; }
    double b() const { return m_b; }
    double a() const { return m_a; }
    bool isOpaque() const { return m_a >= 1.0; }

    // 8-bit forms round to the nearest step, so fromBytes followed by these gives the same bytes back.
    uint8_t r8() const { return toByte(m_r); }
    uint8_t g8() const { return toByte(m_g); }
    uint8_t b8() const { return toByte(m_b); }
    uint8_t a8() const { return toByte(m_a); }
    RgbTriple toRgbTriple() const { return {r8(), g8(), b8()}; }
    NormalisedRGB toNormalisedRGB() const { return {m_r, m_g, m_b}; }
    HSV toHSV() const { return RGBToHSV(toNormalisedRGB()); }

    Colour withAlpha(double a) const { return Colour(m_r, m_g, m_b, a); }
    // Linear blend towards `other`: t = 0 gives this colour, t = 1 gives other (t is clamped to 0..1).
    // Alpha blends too.
    Colour mix(const Colour& other, double t) const;
    // Multiplies the colour channels (not alpha): factors below 1 darken, above 1 brighten, clamped at white.
    Colour scale(double factor) const;
    // Perceived brightness (Rec. 709 weights), for choosing a readable text colour over a background.
    double luma() const { return 0.2126 * m_r + 0.7152 * m_g + 0.0722 * m_b; }

    // Exact comparison of the stored channels.
    bool operator==(const Colour&) const = default;
    // Equal within `tolerance` on every channel; the default absorbs one 8-bit step's rounding.
    bool isCloseTo(const Colour& other, double tolerance = 1.0 / 255.0) const;

    static uint8_t toByte(double channel);

private:
    double m_r = 0.0;
    double m_g = 0.0;
    double m_b = 0.0;
    double m_a = 1.0;
};
