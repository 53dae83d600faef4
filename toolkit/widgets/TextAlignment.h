#pragma once
// TextAlignment: where a text sits in its box, across and up-down. The members are small numbers so that
// callers can write them as plain values: TextAlignment(2, 1) is right-aligned and centred vertically, the
// look of a number box.

#include <cstdint>

namespace Pictor {
enum class TextAlign : uint8_t;
}

struct TextAlignment {
    enum Horizontal : uint8_t {
        Left = 0,
        HCentre = 1,
        Right = 2,
    };
    enum Vertical : uint8_t {
        Top = 0,
        VCentre = 1,
        Bottom = 2,
    };

    constexpr TextAlignment() = default;
    // Values outside the enumerations fall back to Left and VCentre.
    constexpr TextAlignment(int h, int v)
        : horizontal(h >= Left && h <= Right ? static_cast<Horizontal>(h) : Left)
        , vertical(v >= Top && v <= Bottom ? static_cast<Vertical>(v) : VCentre)
    {
    }
    constexpr bool operator==(const TextAlignment&) const = default;

    Horizontal horizontal = Left;
    Vertical vertical = VCentre;

    // The painter's alignment for a horizontal placement.
    static Pictor::TextAlign toPainter(Horizontal h);
};
