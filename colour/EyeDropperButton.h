#pragma once
// EyeDropperButton: the eyedropper button as colour panels use it. In the point style a press anywhere
// samples the pixel under the pointer and sends the owner its colour message; the area style, and the
// capture itself, are the CursorCapturer's.

#include "colour/ColEyeDropBase.h"
#include "colour/CursorCapturer.h"

class EyeDropperButton : public CursorCapturer, public ColEyeDropBase {
public:
    explicit EyeDropperButton(const ImageButton::InitArgs& args) : CursorCapturer(args) {}
    EyeDropperButton(const EyeDropperButton&) = default;
    EyeDropperButton(EyeDropperButton&&) = default;
    EyeDropperButton& operator=(const EyeDropperButton&) = default;
    EyeDropperButton& operator=(EyeDropperButton&&) = default;
    ~EyeDropperButton() override = default;

    LightweightString<char> idstring() const override { return "EyeDropperButton"; }

    // A picture of an eyedropper for the button's face, `size` pixels square, drawn in the palette's text
    // colour.
    static Pictor::Image makeIcon(int size, const Palette& palette);

    // ---- Called by the toolkit
    void evaluatePixelAndNotify(uint16_t x, uint16_t y) override;
};
