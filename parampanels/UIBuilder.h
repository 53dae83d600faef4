#pragma once
// UIBuilder: makes a panel of editable rows from a JSON description of parameters, or from ready-made
// parameters, and hands back a UIBuilder::Params that keeps the parameters, their conditions and their
// listeners together (UIBuilderParams.h).
//
// One row per parameter, in one column under a common legend width, each row wired to its parameter both
// ways. W is the width of the panel's user area, L the legend width, H the button height, G the widget gap:
//
//   bool      Checkbox, W by H
//   choice    TitleMenuButton titled with the legend, H high, as wide as the button wants
//   int/float a host W by H: slider titled with the legend (S = W - 2H - G wide, track S - L), number box 2H
//   text      TitleTextBox W by H, the entry W - L wide; "advance" commits do the panel's main action
//   label     the legend as markup, W wide, as many lines high as it needs
//   action    a button (or, with "action_params_on_menu", an item of the panel's menu); lists only
//   unknown   the legend as a plain line of text; not a parameter
//
// Rows whose "visible if" names one parameter with different values are alternatives: at most one shows, so
// they share a place and the panel is made shorter. Building from a description announces every value once,
// so that "visible if" takes effect, but leaves "active if" alone until the first change: every row starts
// enabled. Building from a list evaluates its post-conditions at once.
//
// The builder itself lives only inside buildFromJSON and build; what it makes belongs to the panel (widgets)
// and to the shared parameters and Params. Build into an empty panel: a second build starts again at the top
// of the user area.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/RefCount.h"
#include "toolkit/support/UIString.h"
#include "toolkit/support/Vectors.h"
#include "toolkit/support/params/iParam.h"
#include "toolkit/ui/WidgetPosition.h"

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace JSON {
class Element;
}
class BoundConstraint;
struct EntryConditions;
class Glob;
class StandardPanel;
class VerticalScrollingBase;

class UIBuilder {
public:
    using ParamList = LightweightVector<Cv::Ptr<GenericParam::iParam>>;

    // A condition that looks at the whole parameter list after any parameter changed ("active if").
    class iPostCondition : public iObject {
    public:
        virtual void evaluate(const ParamList& params) = 0;
    };

    class Params;

    // Parses `text` as a description and builds from it. Text that is not JSON builds nothing.
    static Cv::Ptr<Params> buildFromJSON(const LightweightString<wchar_t>& text, StandardPanel* panel);
    // Builds one row per entry of the description's first child. A null description or panel builds nothing;
    // the answer is then an empty Params.
    static Cv::Ptr<Params> buildFromJSON(const Cv::Ptr<JSON::Element>& description, StandardPanel* panel);
    // Builds one row per ready-made parameter, with redraws held back until every row exists.
    static Cv::Ptr<Params> build(const ParamList& params, StandardPanel* panel);

    // The number of entries a description holds: 0 for a null description or a root whose number of
    // children is not exactly one, else the number of children of that one child (at most 65535).
    static uint16_t getNumParams(const Cv::Ptr<JSON::Element>& description);

    // The first parameter in `params` whose name equals `name` exactly; null when none does.
    static Cv::Ptr<GenericParam::iParam> findParam(const ParamList& params, const LightweightString<char>& name);

    // An entry's "tooltip" truncated to an integer; none when absent or negative.
    static ResId getTooltip(const Cv::Ptr<JSON::Element>& entry);

    UIBuilder(const UIBuilder&);
    UIBuilder(UIBuilder&&) noexcept;
    UIBuilder& operator=(const UIBuilder&);
    UIBuilder& operator=(UIBuilder&&) noexcept;
    ~UIBuilder();

private:
    UIBuilder(const Cv::Ptr<JSON::Element>& description, StandardPanel* panel);
    UIBuilder(const ParamList& params, StandardPanel* panel);

    void init();
    void calcMaxLegendWidth(const Cv::Ptr<JSON::Element>& entries);
    void calcMaxLegendWidth(const ParamList& params);
    void buildRows(const Cv::Ptr<JSON::Element>& entries);
    void shareAlternativePlaces(const std::vector<EntryConditions>& conditions);
    void releaseBoundsWithPanel();
    void announceValues();
    Cv::Ptr<Params> takeResult();

    void makeBoolParam(const Cv::Ptr<JSON::Element>& entry);
    void makeChoiceParam(const Cv::Ptr<JSON::Element>& entry);
    void makeIntParam(const Cv::Ptr<JSON::Element>& entry);
    void makeFloatParam(const Cv::Ptr<JSON::Element>& entry);
    void makeTextParam(const Cv::Ptr<JSON::Element>& entry);
    void makeLabelParam(const Cv::Ptr<JSON::Element>& entry);
    void makeUnknownRow(const Cv::Ptr<JSON::Element>& entry);

    void makeBoolWidget(const Cv::Ptr<GenericParam::iParam>& param);
    void makeChoiceWidget(const Cv::Ptr<GenericParam::iParam>& param);
    void makeIntWidget(const Cv::Ptr<GenericParam::iParam>& param);
    void makeFloatWidget(const Cv::Ptr<GenericParam::iParam>& param);
    void makeTextWidget(const Cv::Ptr<GenericParam::iParam>& param);
    void makeLabelWidget(const Cv::Ptr<GenericParam::iParam>& param);
    void makeActionWidget(const Cv::Ptr<GenericParam::iParam>& param);
    void makeNumericWidget(const Cv::Ptr<GenericParam::iParam>& param, double defaultValue,
                           std::optional<std::pair<double, double>> range, bool integral);

    // The parent of the rows: the scrolling area when the panel scrolls, else the panel.
    Glob* rowParent() const;
    // Places a row made for the next place in the column and answers it.
    template <typename T> T* addRow(const typename T::InitArgs& args);
    // Tooltip, widget map, parameter list and tab order: what every parameter's row gets.
    void enterRow(Glob* row, const Cv::Ptr<GenericParam::iParam>& param);

    StandardPanel* m_panel = nullptr;
    VerticalScrollingBase* m_scrollingView = nullptr;
    ParamList m_params;
    WidgetPosition m_rowPosition;
    uint16_t m_availableWidth = 0;
    uint16_t m_legendWidth = 0;
    std::map<LightweightString<char>, Glob*> m_widgets;
    std::vector<Cv::Ptr<iPostCondition>> m_postConditions;

    // The row of each description entry (or parameter), in order: where alternatives share places.
    std::vector<Glob*> m_rows;
    // Bounds that may tie parameters to each other in a cycle; released when the panel goes.
    std::vector<Cv::Ptr<BoundConstraint>> m_bounds;
    // Made first, so that action rows can reach it; filled when the rows are done.
    Cv::Ptr<Params> m_result;
};
