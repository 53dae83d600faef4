#pragma once
// HostPanel: the row of a numeric parameter. A slider titled with the legend on the left and a number box on
// the right, in a row of the given width:
//
//   |<- legend ->|<------- slider track ------->|  G  |<- number box, 2H ->|
//   |<------------------ S = W - 2H - G ----------->|
//
// The number box is one default font size high, centred in the row. Both parts are bound to the parameter
// by the builder; the host only lays them out and offers both to the tab order.

#include "toolkit/support/Colour.h"
#include "toolkit/support/UIString.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/widgets/TitledGlob.h"

class NumericTextBox;
class Slider;

class HostPanel : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        InitArgs(UIString legendText, uint16_t legendColumn, const Colour& trackColour, uint16_t w, uint16_t h,
                 const Palette& pal = Palette(), Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c)
            , legend(std::move(legendText))
            , legendWidth(legendColumn)
            , sliderColour(trackColour)
        {
        }
        UIString legend;
        uint16_t legendWidth = 0;
        Colour sliderColour;
    };

    explicit HostPanel(const InitArgs& args);
    ~HostPanel() override;

    LightweightString<char> idstring() const override;

    TitledGlob<Slider>* getTitledSlider() const { return m_slider; }
    Slider* getSlider() const;
    NumericTextBox* getNumberBox() const { return m_numberBox; }

    // The slider part's width for a row: S = W - 2H - G. Negative room wraps, as every width does.
    static uint16_t sliderPartWidth(uint16_t rowWidth);

private:
    TitledGlob<Slider>* m_slider = nullptr;
    NumericTextBox* m_numberBox = nullptr;
};
