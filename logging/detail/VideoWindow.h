#pragma once
// VideoWindow: a surface that shows a picture kept in a render target of its own size, on a background
// colour. Whoever renders draws into the target, then asks for a redraw.

#include "toolkit/gfx/Image.h"
#include "toolkit/support/Colour.h"
#include "toolkit/ui/Glob.h"

class VideoWindow : public Glob {
public:
    VideoWindow(uint16_t width, uint16_t height, const Colour& background, const Palette& palette);

    LightweightString<char> idstring() const override { return "VideoWindow"; }

    // The picture shown, as large as the window; made (cleared to the background) on first use.
    Pictor::Image& getRenderTarget();

    // Called by the toolkit
    void draw() override;
    void reshape() override;

private:
    Pictor::Image m_target;
    Colour m_background;
};
