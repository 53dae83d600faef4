#pragma once
// TitleButton: a push button with a title at its left, for rows whose control opens something (a menu, a
// chooser) rather than holding a value. The button's message reaches the owner sent by the TitleButton, as
// with every titled widget.

#include "toolkit/widgets/Button.h"
#include "toolkit/widgets/TitledGlob.h"

class TitleButton : public TitledGlob<Button> {
public:
    // titleWidth 0 fits the title; width 0 fits the title and the label.
    TitleButton(UIString title, UIString label, uint16_t titleWidth, uint16_t width, uint16_t height = 0,
                const Palette& palette = Palette(), Canvas* canvas = nullptr);
    TitleButton(const TitleButton&) = default;
    TitleButton(TitleButton&&) = default;
    TitleButton& operator=(const TitleButton&) = default;
    TitleButton& operator=(TitleButton&&) = default;

    LightweightString<char> idstring() const override;

    Button* getBtn() const { return widget(); }
};
