#pragma once
// NumericTextBox: a text box for a number, with an optional range.
//
//   input (while focused)     | number box does
//   --------------------------+---------------------------------------------------------------------------
//   digits, sign, point, e    | typed as into any text box (other characters are refused)
//   Return, focus lost        | commit: the text is read as a number; one out of range is clamped to it, one
//                             | that is not a number at all puts back the last good value; the box then shows
//                             | the value in its own format
//   Up / Down                 | one step up / down (setStep, 1 by default), clamped, and committed at once
//
// The value is proposed to a bound ValAdaptor<double> (kDataChangeFinal) on every commit that changes it, and
// a value changed elsewhere is shown at once. The box may also be bound to wide text like any text box.
// setValue() from code shows a (clamped) value and tells nobody.

#include "toolkit/widgets/TextBoxBase.h"
#include "toolkit/widgets/ValWidget.h"

#include <optional>

class NumericTextBox : public TextBoxBase, public ValWidget<double> {
public:
    struct InitArgs : TextBoxBase::InitArgs {
        InitArgs() = default;
        InitArgs(double initialValue, uint16_t w, uint16_t h = 0, const Palette& pal = Palette(), Canvas* c = nullptr)
            : TextBoxBase::InitArgs({}, w, h, pal, c), value(initialValue)
        {
        }
        // For boxes made by type name: "value", "min", "max" and "decimals" settings.
        InitArgs(const GlobCreationInfo& info);

        double value = 0.0;
        std::optional<double> minimum;
        std::optional<double> maximum;
        // -1: as many as the value needs (up to six); integer ranges show none.
        int decimals = -1;
    };

    explicit NumericTextBox(const InitArgs& args);
    NumericTextBox(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    NumericTextBox(const NumericTextBox&) = default;
    NumericTextBox(NumericTextBox&&) = default;
    NumericTextBox& operator=(const NumericTextBox&) = default;
    NumericTextBox& operator=(NumericTextBox&&) = default;
    ~NumericTextBox() override;

    LightweightString<char> idstring() const override;

    // The ends may be given either way round. The int form makes the box whole-numbered: no decimals, and
    // only digits and a sign can be typed. The value shown is clamped into the new range.
    void setValueRange(int minimum, int maximum);
    void setValueRange(double minimum, double maximum);
    void clearValueRange();
    std::optional<double> getMinimum() const { return m_min; }
    std::optional<double> getMaximum() const { return m_max; }
    bool isInteger() const { return m_integer; }

    // Shows a value (clamped to the range; NaN and infinities are ignored). Tells nobody.
    void setValue(double value);
    double getValue() const { return m_value; }
    void setDecimals(int decimals);
    int getDecimals() const { return m_decimals; }
    void setStep(double step);
    double getStep() const { return m_step; }

    // The value's text in this box's format.
    LightweightString<wchar_t> format(double value) const;
    // The number a text reads as, before clamping; nothing when it is not a number.
    static std::optional<double> parse(std::wstring_view text);

    using TextBoxBase::setDataAdaptor;
    using ValWidget<double>::setDataAdaptor;

protected:
    // Called by the toolkit
    bool handleKey(const Event& event) override;
    void prepareCommit() override;
    using TextBoxBase::showValue;
    void showValue(const double& value, DataChangeType type) override;

private:
    double clampToRange(double value) const;
    void applyCharacterRules();

    double m_value = 0.0;
    double m_step = 1.0;
    std::optional<double> m_min;
    std::optional<double> m_max;
    int m_decimals = -1;
    bool m_integer = false;
};
