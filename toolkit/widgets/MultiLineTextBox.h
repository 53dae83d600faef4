#pragma once
// MultiLineTextBox: a block of plain text shown word-wrapped to the box's width, from the top down, with
// half the gap above the first line. Lines below the bottom edge are clipped; size the box with
// calcHeightForLines (and getNumLines, or WordWrappingTextRenderer::calcNumDisplayLines) to show them all.
// It is for reading: no input, no focus.

#include "toolkit/gfx/FontUser.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/widgets/TextAlignment.h"

#include <cstdint>

class MultiLineTextBox : public Glob, public Pictor::FontUser {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        InitArgs(LightweightString<wchar_t> initialText, uint16_t w, uint16_t h, const Palette& pal = Palette(),
                 Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), text(std::move(initialText))
        {
        }
        // For boxes made by type name: the "text" setting (UTF-8).
        InitArgs(const GlobCreationInfo& info);

        LightweightString<wchar_t> text;
        // Empty family: the default interface font.
        Pictor::FontDesc font;
        // Room above and below the text, together; -1: the widget gap.
        int gap = -1;
        TextAlignment::Horizontal alignment = TextAlignment::Left;
    };

    explicit MultiLineTextBox(const InitArgs& args);
    MultiLineTextBox(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    MultiLineTextBox(const MultiLineTextBox&) = default;
    MultiLineTextBox(MultiLineTextBox&&) = default;
    MultiLineTextBox& operator=(const MultiLineTextBox&) = default;
    MultiLineTextBox& operator=(MultiLineTextBox&&) = default;
    ~MultiLineTextBox() override;

    LightweightString<char> idstring() const override;

    // The height that shows `lines` lines of the default family at `fontSize` pixels, with `gap` pixels of
    // room shared above and below them. No lines (or fewer) still leave the gap.
    static uint16_t calcHeightForLines(int lines, int fontSize, int gap);

    void setString(const LightweightString<wchar_t>& text);
    const LightweightString<wchar_t>& getString() const { return m_text; }
    void setAlignment(TextAlignment::Horizontal alignment);
    void setFont(const Pictor::FontDesc& desc) override;
    // The lines the text takes at the box's width.
    int getNumLines() const;

    // Called by the toolkit
    void drawText() override;

private:
    LightweightString<wchar_t> m_text;
    int m_gap = 0;
    TextAlignment::Horizontal m_alignment = TextAlignment::Left;
};
