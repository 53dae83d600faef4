#pragma once
// ImageButton: a Button that shows a picture, scaled to fit inside its face with its proportions kept, and
// optionally a label under it. It behaves exactly as a Button (press, latch, keys, message or callback); a
// disabled image button shows its picture faded.

#include "toolkit/gfx/Image.h"
#include "toolkit/widgets/Button.h"

class ImageButton : public Button {
public:
    struct InitArgs : Button::InitArgs {
        InitArgs() = default;
        // A width or height of 0 is the standard button height: a square tool button.
        InitArgs(Pictor::Image picture, uint16_t w = 0, uint16_t h = 0, const Palette& pal = Palette(),
                 Canvas* c = nullptr)
            : Button::InitArgs(UIString(), w, h, pal, c), image(std::move(picture))
        {
        }
        InitArgs(const GlobCreationInfo& info) : Button::InitArgs(info) {}

        Pictor::Image image;
    };

    explicit ImageButton(const InitArgs& args);
    ImageButton(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    ImageButton(const ImageButton&) = default;
    ImageButton(ImageButton&&) = default;
    ImageButton& operator=(const ImageButton&) = default;
    ImageButton& operator=(ImageButton&&) = default;
    ~ImageButton() override;

    LightweightString<char> idstring() const override;

    void setImage(const Pictor::Image& image);
    const Pictor::Image& getImage() const { return m_image; }
    // Where the picture is drawn, in the button's own coordinates (empty without a picture).
    GlobBox imageArea() const;

    // Called by the toolkit
    void drawText() override;

private:
    Pictor::Image m_image;
};
