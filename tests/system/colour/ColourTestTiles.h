#pragma once
// Test pictures put on the screen: a top-level widget that paints an image as it is, pixel for pixel.

#include "toolkit/gfx/Image.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/Glob.h"

#include <vector>

class PictureTile : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        explicit InitArgs(Pictor::Image picture)
            : GlobCreationInfo(static_cast<uint16_t>(picture.width()), static_cast<uint16_t>(picture.height()))
            , image(std::move(picture))
        {
        }
        Pictor::Image image;
    };
    explicit PictureTile(const InitArgs& args) : Glob(args), m_image(args.image) {}
    void drawBackground() override { painter().drawImage(m_image, 0, 0); }

private:
    Pictor::Image m_image;
};

// An image of the given colours side by side, one column each, `height` rows high.
inline Pictor::Image columnsOf(const std::vector<Colour>& colours, int width = 1, int height = 1)
{
    Pictor::Image image(static_cast<int>(colours.size()) * width, height);
    for (int row = 0; row < height; ++row)
        for (int col = 0; col < image.width(); ++col)
            image.setPixel(col, row, Pictor::Image::premultiplied(colours[col / width]));
    return image;
}

// Shows the picture with its bottom-left corner at `at` and paints the screen.
inline PictureTile* showPicture(UiHarness& ui, Pictor::Image picture, XY<int> at)
{
    PictureTile* tile = ui.makeTopLevel<PictureTile>(PictureTile::InitArgs(std::move(picture)), at);
    ui.flush();
    return tile;
}
