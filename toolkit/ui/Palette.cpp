#include "toolkit/ui/Palette.h"

#include <algorithm>

namespace {

const Colour black(0.0, 0.0, 0.0);
const Colour white(1.0, 1.0, 1.0);

// How far each shade moves the base background towards black (negative) or white (positive). Small steps
// keep the surfaces calm; the spread is wide enough for a bevel to read on a dark background.
constexpr double shadeSteps[Palette::NumShades] = { -0.45, -0.22, 0.0, 0.07, 0.15, 0.26 };

Colour shadeOf(const Colour& base, int shade)
{
    const double step = shadeSteps[std::clamp(shade, 0, Palette::NumShades - 1)];
    if (step < 0.0)
        return base.mix(black, -step);
    return base.mix(white, step);
}

} // namespace

Palette::Palette()
    : m_roles(standardRoles())
{
}

const std::array<uint32_t, Palette::NumRoles>& Palette::standardRoles()
{
    // Built once: every widget's creation info starts from this palette.
    static const std::array<uint32_t, NumRoles> roles = [] {
        std::array<uint32_t, NumRoles> r {};
        auto put = [&r](Role role, uint8_t red, uint8_t green, uint8_t blue) {
            r[role] = pack(Colour::fromBytes(red, green, blue));
        };
        // A dark editor look: near-neutral greys with a faint blue cast, one blue accent, muted secondary text.
        put(Window, 46, 48, 53);
        put(Text, 216, 218, 222);
        put(SubheadingText, 143, 179, 217);
        put(DisabledText, 118, 122, 130);
        put(Highlight, 61, 123, 217);
        put(HighlightText, 255, 255, 255);
        put(Border, 24, 25, 28);
        put(TitleBar, 34, 36, 41);
        put(TitleText, 201, 204, 210);
        put(Focus, 90, 155, 240);
        put(Warning, 224, 160, 64);
        put(Entry, 30, 32, 36);
        return r;
    }();
    return roles;
}

Palette::Palette(const Colour& window, const Colour& text)
    : Palette()
{
    set(Window, window);
    set(Text, text);
    // Secondary text sits between the text and the background so it reads on any pair of colours.
    set(SubheadingText, text.mix(window, 0.3));
    set(DisabledText, text.mix(window, 0.55));
    set(Border, shadeOf(window, 0));
    set(TitleBar, shadeOf(window, 1));
    set(TitleText, text);
    // Entries are dark wells on a light background and light wells on a dark one.
    set(Entry, window.luma() > 0.5 ? window.mix(white, 0.6) : window.mix(black, 0.3));
}

Colour Palette::window(int shade) const
{
    return shadeOf(get(Window), shade);
}

Colour Palette::get(Role role) const
{
    return role < NumRoles ? unpack(m_roles[role]) : Colour();
}

void Palette::set(Role role, const Colour& colour)
{
    if (role < NumRoles)
        m_roles[role] = pack(colour);
}

Palette Palette::makeChildPalette() const
{
    Palette child = *this;
    child.set(Window, window(3));
    return child;
}

uint32_t Palette::pack(const Colour& c)
{
    return (uint32_t(c.r8()) << 24) | (uint32_t(c.g8()) << 16) | (uint32_t(c.b8()) << 8) | c.a8();
}

Colour Palette::unpack(uint32_t rgba)
{
    return Colour::fromBytes(uint8_t(rgba >> 24), uint8_t(rgba >> 16), uint8_t(rgba >> 8), uint8_t(rgba));
}
