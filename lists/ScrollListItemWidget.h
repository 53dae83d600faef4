#pragma once
// ScrollListItemWidget: one line of a ScrollList, a latching Button in the list's radio group.
//
// A line does not select itself: a left press while it is selectable (enabled and not ignoring clicks) is
// reported to its owner as listItemMsg, carrying the press's modifier keys, and the list decides what the
// press means (select, toggle, extend, double click). The release does nothing, so the button's own
// activation never runs. Other buttons pass through to the list (the right button opens its menu click).
//
// Lines are made by the hundred thousand, so a line adds one byte to a Button: its look bits.

#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/TextAlignment.h"

#include <cstdint>

enum SLItemAppearance : uint8_t {
    SLItemFlat, // a plain row; selected rows take the down colours
    SLItemButton, // a raised button face per row
};

class ScrollListItemWidget : public Button {
public:
    struct InitArgs : Button::InitArgs {
        InitArgs() = default;
        InitArgs(const LightweightString<wchar_t>& text, const Palette& pal, SLItemAppearance look, uint16_t w,
            uint16_t h, Canvas* c = nullptr)
            : Button::InitArgs(UIString(text), w, h, pal, c)
            , appearance(look)
        {
        }
        SLItemAppearance appearance = SLItemFlat;
    };

    explicit ScrollListItemWidget(const InitArgs& args);
    ScrollListItemWidget(const LightweightString<wchar_t>& text, const Palette& palette, SLItemAppearance appearance,
        uint16_t width, uint16_t height, Canvas* canvas = nullptr);
    ScrollListItemWidget(const ScrollListItemWidget&) = default;
    ScrollListItemWidget(ScrollListItemWidget&&) = default;
    ScrollListItemWidget& operator=(const ScrollListItemWidget&) = default;
    ScrollListItemWidget& operator=(ScrollListItemWidget&&) = default;
    ~ScrollListItemWidget() override = default;

    LightweightString<char> idstring() const override;

    LightweightString<wchar_t> getText() const { return getString().getString(); }
    void setWarn(bool warn);
    bool isWarn() const { return hasLook(WarnBit); }
    void setBold(bool bold);
    void setAlignment(TextAlignment::Horizontal horizontal);
    SLItemAppearance getAppearance() const { return hasLook(ButtonLookBit) ? SLItemButton : SLItemFlat; }
    // Enabled and not ignoring clicks: a press will be reported.
    bool isSelectable() const { return isEnabledInTree() && !ignoresMouseClicks(); }

    static constexpr const char* listItemMsg = "list_item";

    // Called by the toolkit
    bool react(const Event& event) override;
    void drawBackground() override;
    void drawText() override;

protected:
    // The inset of the line's content from its edges.
    static constexpr int textInset = 4;

private:
    enum LookBit : uint8_t {
        WarnBit = 1u << 0,
        BoldBit = 1u << 1,
        ButtonLookBit = 1u << 2,
        AlignShift = 3, // two bits of TextAlignment::Horizontal
    };
    bool hasLook(uint8_t bit) const { return (m_look & bit) != 0; }
    void setLook(uint8_t bit, bool on) { m_look = static_cast<uint8_t>(on ? (m_look | bit) : (m_look & ~bit)); }
    // Tells the owner of a press, with its modifiers. Answers whether this line still lives.
    bool reportPress(const Event& press);

    uint8_t m_look = 0;
};
