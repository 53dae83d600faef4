#pragma once
// TitledMenuButtonPlain: a title beside a drop-down menu button where the title column is a share of the
// widget's width rather than the title's own width, so that rows of a column line their controls up whatever
// their titles say. Nothing is bound to it: a choice reaches the owner as the drop-down's message, sent by
// this widget, and the owner reads the selection. The title is drawn as titled rows draw theirs.

#include "toolkit/widgets/TitleMenuButton.h"

class TitledMenuButtonPlain : public TitleMenuButton {
public:
    // titleShare: the part of `width` the title takes, 0..1 (out-of-range values are clamped).
    TitledMenuButtonPlain(UIString title, std::vector<UIString> items, double titleShare, uint16_t width,
                          uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    TitledMenuButtonPlain(const TitledMenuButtonPlain&) = default;
    TitledMenuButtonPlain(TitledMenuButtonPlain&&) = default;
    TitledMenuButtonPlain& operator=(const TitledMenuButtonPlain&) = default;
    TitledMenuButtonPlain& operator=(TitledMenuButtonPlain&&) = default;

    LightweightString<char> idstring() const override;
    // The title in the legend look of titled rows.
    void drawText() override;

    // The title column's width for a share of a width.
    static uint16_t titleWidthFor(double titleShare, uint16_t width);
};
