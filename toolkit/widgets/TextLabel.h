#pragma once
// TextLabel: a static text. One line cut with an ellipsis when it is too long, or, with word wrap, as many
// lines as the width needs (those below the bottom edge are clipped). It takes no input and no focus.
//
// The colour is the palette's text colour unless setColour chose another; a disabled label is drawn in the
// disabled text colour whatever its own colour, so that it reads as unavailable.

#include "toolkit/gfx/FontUser.h"
#include "toolkit/support/Colour.h"
#include "toolkit/support/UIString.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/widgets/TextAlignment.h"

#include <cstdint>
#include <optional>

class TextLabel : public Glob, public Pictor::FontUser {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A height of 0 is the standard button height.
        InitArgs(UIString labelText, uint16_t w, uint16_t h = 0, const Palette& pal = Palette(), Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), text(std::move(labelText))
        {
        }
        // For labels made by type name: the "text" setting (UTF-8) and "wrap" (a boolean), read by SettingsReader.
        InitArgs(const GlobCreationInfo& info);

        UIString text;
        TextAlignment alignment;
        std::optional<Colour> colour;
        bool wordWrap = false;
        // Empty family: the default interface font.
        Pictor::FontDesc font;
    };

    explicit TextLabel(const InitArgs& args);
    TextLabel(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    TextLabel(const TextLabel&) = default;
    TextLabel(TextLabel&&) = default;
    TextLabel& operator=(const TextLabel&) = default;
    TextLabel& operator=(TextLabel&&) = default;
    ~TextLabel() override;

    LightweightString<char> idstring() const override;

    void setString(const UIString& text);
    const UIString& getString() const { return m_text; }
    void setAlignment(TextAlignment alignment);
    TextAlignment getAlignment() const { return m_alignment; }
    void setColour(const Colour& colour);
    // Back to the palette's text colour.
    void clearColour();
    // The colour the text is drawn in now.
    Colour getTextColour() const;
    void setWordWrap(bool wrap);
    bool getWordWrap() const { return m_wordWrap; }
    void setFont(const Pictor::FontDesc& desc) override;
    // The lines the text takes at the label's width (1 without word wrap).
    int getNumLines() const;

    // Called by the toolkit
    void drawText() override;

private:
    UIString m_text;
    std::optional<Colour> m_colour;
    TextAlignment m_alignment;
    bool m_wordWrap = false;
};
