#include "parampanels/UIBuilderParams.h"

#include "parampanels/detail/Conditions.h"
#include "toolkit/support/Configb.h"
#include "toolkit/support/params/ActionParam.h"

#include <utility>

UIBuilder::Params::Params() = default;

UIBuilder::Params::Params(ParamList params, WidgetMap widgets, PostConditions postConditions)
    : m_contents{std::move(params), std::move(widgets), std::move(postConditions), {}, true}
{
    attachBroadcasters();
}

// A copy is a new shared object: its reference count starts afresh.
UIBuilder::Params::Params(const Params& other)
    : Cv::InternalRefCount()
    , m_contents(other.m_contents)
{
    attachBroadcasters();
}

UIBuilder::Params::Params(Params&& other) noexcept
{
    *this = std::move(other);
}

UIBuilder::Params& UIBuilder::Params::operator=(const Params& other)
{
    return *this = Params(other);
}

UIBuilder::Params& UIBuilder::Params::operator=(Params&& other) noexcept
{
    if (this == &other)
        return *this;
    detachBroadcasters();
    m_contents = std::move(other.m_contents);
    // The parameters keep the same broadcasters; they now report here.
    m_broadcasters = std::exchange(other.m_broadcasters, {});
    for (const auto& broadcaster : m_broadcasters) {
        if (broadcaster)
            static_cast<ChangeBroadcaster*>(broadcaster.get())->setTarget(this);
    }
    return *this;
}

UIBuilder::Params::~Params()
{
    detachBroadcasters();
}

void UIBuilder::Params::attachBroadcasters()
{
    m_broadcasters.reserve(m_contents.params.size());
    for (const Cv::Ptr<GenericParam::iParam>& param : m_contents.params) {
        if (!param) {
            m_broadcasters.emplace_back();
            continue;
        }
        Cv::Ptr<GenericParam::iValueChangeHandler> broadcaster(new ChangeBroadcaster(param->getName(), this));
        param->addValueChangeHandler(broadcaster);
        m_broadcasters.push_back(std::move(broadcaster));
    }
}

void UIBuilder::Params::detachBroadcasters()
{
    // Broadcasters and parameters pair up by position; a moved-from Params has neither.
    for (size_t i = 0; i < m_broadcasters.size(); ++i) {
        const Cv::Ptr<GenericParam::iValueChangeHandler>& broadcaster = m_broadcasters[i];
        if (!broadcaster)
            continue;
        // A parameter that is in the middle of telling its handlers keeps the broadcaster alive for the call;
        // it must find nobody to report to.
        static_cast<ChangeBroadcaster*>(broadcaster.get())->setTarget(nullptr);
        if (i < m_contents.params.size() && m_contents.params[static_cast<unsigned>(i)])
            m_contents.params[static_cast<unsigned>(i)]->removeValueChangeHandler(broadcaster);
    }
    m_broadcasters.clear();
}

void UIBuilder::Params::addListener(const Cv::Ptr<Listener>& listener)
{
    if (listener)
        m_contents.listeners.push_back(listener);
}

void UIBuilder::Params::saveState(configb& store) const
{
    store.clear();
    for (const Cv::Ptr<GenericParam::iParam>& param : m_contents.params) {
        if (param)
            store.set(param->getName().view(), toUTF8(param->getValueAsString().view()).view());
    }
}

void UIBuilder::Params::restoreState(const configb& store)
{
    // Restoring reports each change like any other, and a listener may drop this Params on hearing one.
    Cv::DestructionWatch::Scope scope(m_watch);
    const ParamList params = m_contents.params;
    for (const Cv::Ptr<GenericParam::iParam>& param : params) {
        LightweightString<char> stored;
        if (!param || store.in(param->getName().view(), stored) != 0)
            continue;
        // Text the parameter cannot read leaves it as it was.
        param->setValueFromString(fromUTF8(stored.view()));
        if (scope.ownerGone())
            return;
    }
}

int UIBuilder::Params::handleParameterModification(const NotifyMsg& msg)
{
    if (!m_contents.modificationsEnabled)
        return 0;
    Cv::DestructionWatch::Scope scope(m_watch);
    // Conditions and listeners may change parameters, which starts a nested round here; both lists are
    // walked by index over what existed when this round began, so additions wait for the next round.
    const ParamList params = m_contents.params;
    const size_t numConditions = m_contents.postConditions.size();
    for (size_t i = 0; i < numConditions && i < m_contents.postConditions.size(); ++i) {
        const Cv::Ptr<iPostCondition> condition = m_contents.postConditions[i];
        if (condition)
            condition->evaluate(params);
        if (scope.ownerGone())
            return 0;
    }
    const size_t numListeners = m_contents.listeners.size();
    for (size_t i = 0; i < numListeners && i < m_contents.listeners.size(); ++i) {
        const Cv::Ptr<Listener> listener = m_contents.listeners[i];
        listener->execute(msg);
        if (scope.ownerGone())
            return 0;
    }
    return 0;
}

int UIBuilder::Params::handleActionParam(const NotifyMsg& msg)
{
    const Cv::Ptr<GenericParam::ActionParam> action = msg.getObjectAs<GenericParam::ActionParam>();
    if (!action)
        return 0;
    Cv::DestructionWatch::Scope scope(m_watch);
    m_contents.modificationsEnabled = false;
    const ParamList params = m_contents.params; // the action may drop this Params while it runs
    const bool changed = action->invoke(params);
    if (scope.ownerGone())
        return 0;
    // Switched back on, not restored: an action run from inside another action is heard when it ends, and
    // the outer one's later changes are then reported one by one.
    m_contents.modificationsEnabled = true;
    if (changed)
        handleParameterModification(msg);
    return 0;
}
