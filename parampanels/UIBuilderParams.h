#pragma once
// UIBuilder::Params: what a caller keeps of a built panel. It holds the parameters in row order, the row
// widget of each name, the "active if" conditions and the listeners, and it turns every parameter change into
// one round of condition evaluation followed by one message to each listener (the message text is the
// changed parameter's name).
//
// An action runs with modifications switched off, so that the many changes it may make are heard as one
// message afterwards, and only when the action says it changed something.
//
// The widget map holds plain pointers into the panel: a Params must not be used for its rows after the panel
// is gone. The parameters may outlive it; destroying a Params detaches it from them.

#include "parampanels/UIBuilder.h"
#include "toolkit/support/DestructionWatch.h"
#include "toolkit/support/Notifier.h"

#include <map>
#include <utility>
#include <vector>

class Glob;
class configb;

class UIBuilder::Params : public iObject {
public:
    using WidgetMap = std::map<LightweightString<char>, Glob*>;
    using PostConditions = std::vector<Cv::Ptr<iPostCondition>>;
    using Listener = iCallbackBase<int, NotifyMsg>;

    Params();
    Params(ParamList params, WidgetMap widgets, PostConditions postConditions);
    // A copy reports the same parameters to its own listeners: it gets broadcasters of its own. A move takes
    // the broadcasters over, so the parameters then report to the new Params.
    Params(const Params& other);
    Params(Params&& other) noexcept;
    Params& operator=(const Params& other);
    Params& operator=(Params&& other) noexcept;
    ~Params() override;

    void addListener(const Cv::Ptr<Listener>& listener);
    bool empty() const { return m_contents.params.empty(); }

    const ParamList& getParams() const { return m_contents.params; }
    const WidgetMap& getWidgets() const { return m_contents.widgets; }
    const PostConditions& getPostConditions() const { return m_contents.postConditions; }
    Cv::Ptr<GenericParam::iParam> findParam(const LightweightString<char>& name) const
    {
        return UIBuilder::findParam(m_contents.params, name);
    }
    bool modificationsEnabled() const { return m_contents.modificationsEnabled; }

    // Empties the store, then writes every parameter's value as UTF-8 text under its name.
    void saveState(configb& store) const;
    // Sets every parameter whose name is in the store from the stored text; the others keep their values.
    void restoreState(const configb& store);

    // Re-evaluates every post-condition, then tells every listener. Answers 0.
    int handleParameterModification(const NotifyMsg& msg);
    // Runs the GenericParam::ActionParam that `msg` carries, batching what it changes. Answers 0.
    int handleActionParam(const NotifyMsg& msg);

private:
    void attachBroadcasters();
    void detachBroadcasters();

    // What a copy takes over as it is; the broadcasters are each Params' own.
    struct Contents {
        ParamList params;
        WidgetMap widgets;
        PostConditions postConditions;
        std::vector<Cv::Ptr<Listener>> listeners;
        bool modificationsEnabled = true;
    };

    Contents m_contents;
    // One per entry of m_contents.params, in the same order, so that they can be taken off again.
    std::vector<Cv::Ptr<GenericParam::iValueChangeHandler>> m_broadcasters;
    Cv::DestructionWatch m_watch;
};
