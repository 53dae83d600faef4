#pragma once
// Slider: a horizontal track with a thumb that chooses a number within a range.
//
//   input                                   | slider does
//   ----------------------------------------+------------------------------------------------------------
//   press on the thumb, drag                | the thumb follows the pointer, keeping where it was gripped
//   press elsewhere on the track, drag      | the thumb jumps under the pointer, then follows it
//   release                                 | the last step of the gesture
//   Left/Down, Right/Up                     | one step down / up (setStep; a hundredth of the range)
//   Page Down, Page Up                      | a tenth of the range
//   Home, End                               | the minimum, the maximum
//   wheel                                   | one step per notch
//
// Every value is clamped to the range. A change by the user is proposed to the bound adaptor
// (ValWidget<double>: kDataChangeInteractive while dragging, kDataChangeFinal for a release that moves the
// thumb, for keys and the wheel) and the owner hears changedMsg, once per change of value. A release where
// the last drag step left the thumb proposes the same value again, which value holders ignore; observers that
// defer work to the end of a drag should therefore also settle after a pause. setPosition() from code only
// moves the thumb.
//
// The point of interest (a default, a reference) is drawn as a mark under the track.

#include "toolkit/support/Colour.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/ui/Transient.h"
#include "toolkit/widgets/ValWidget.h"

#include <cstdint>
#include <optional>

class Slider : public Glob, public TabOrderable, public ValWidget<double> {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // The colour of the filled part of the track, and the width; a height of 0 is the button height.
        InitArgs(const Colour& trackColour, uint16_t w, uint16_t h = 0, const Palette& pal = Palette(),
                 Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), colour(trackColour)
        {
        }
        // For sliders made by type name: "min", "max" and "value" settings.
        InitArgs(const GlobCreationInfo& info);

        Colour colour = Palette().highlight();
        double minimum = 0.0;
        double maximum = 1.0;
        double value = 0.0;
    };

    explicit Slider(const InitArgs& args);
    Slider(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    Slider(const Slider&) = default;
    Slider(Slider&&) = default;
    Slider& operator=(const Slider&) = default;
    Slider& operator=(Slider&&) = default;
    ~Slider() override;

    LightweightString<char> idstring() const override;

    // The ends may be given either way round; the position is clamped into the new range. A range of one
    // value pins the thumb at the left.
    void setValueRange(double minimum, double maximum);
    double getMinimum() const { return m_min; }
    double getMaximum() const { return m_max; }
    // Moves the thumb; the value is clamped to the range (NaN is ignored). Tells nobody.
    void setPosition(double value);
    double getValue() const { return m_value; }
    void setPointOfInterest(double value);
    void clearPointOfInterest();
    std::optional<double> getPointOfInterest() const { return m_poi; }
    // The key step; 0 (the default) means a hundredth of the range.
    void setStep(double step) { m_step = step > 0.0 ? step : 0.0; }
    void setColour(const Colour& colour);
    const Colour& getColour() const { return m_colour; }

    // ---- Geometry, in the slider's own coordinates
    // The x range the thumb's centre travels along.
    int trackLeft() const;
    int trackRight() const;
    int valueToX(double value) const;
    double xToValue(double x) const;
    GlobBox thumbBox() const;

    static constexpr const char* changedMsg = "slider_changed";

    // Called by the toolkit
    bool react(const Event& event) override;
    void drawBackground() override;
    void drawText() override;

protected:
    void showValue(const double& value, DataChangeType type) override;

private:
    double clampToRange(double value) const;
    double keyStep() const;
    // A user's change: move, publish, tell the owner. Answers whether the slider still exists.
    bool userChange(double value, DataChangeType type);

    Colour m_colour;
    double m_min = 0.0;
    double m_max = 1.0;
    double m_value = 0.0;
    double m_step = 0.0;
    std::optional<double> m_poi;
    // While dragging: the pointer's distance from the thumb's centre when gripped.
    Transient<int> m_grip;
    Transient<bool> m_dragging;
    Transient<bool> m_hover;
};
