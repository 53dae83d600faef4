#include "toolkit/support/params/ParamBase.h"

#include <algorithm>

namespace GenericParam {

ParamCore::ParamCore(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip)
    : m_legend(std::move(legend))
    , m_name(std::move(name))
    , m_tooltip(tooltip)
{
}

void ParamCore::addValueChangeHandler(const Cv::Ptr<iValueChangeHandler>& handler)
{
    if (handler)
        m_handlers.push_back(handler);
}

void ParamCore::removeValueChangeHandler(const Cv::Ptr<iValueChangeHandler>& handler)
{
    const auto it = std::find(m_handlers.begin(), m_handlers.end(), handler);
    if (it == m_handlers.end() || !handler)
        return;
    // During a round the list is being walked by index: blank the entry now and sweep it afterwards.
    if (m_notifyDepth > 0)
        *it = nullptr;
    else
        m_handlers.erase(it);
}

void ParamCore::addValueConstraint(const Cv::Ptr<iValueConstraint>& constraint)
{
    if (constraint)
        m_constraints.push_back(constraint);
}

unsigned ParamCore::getNumValueChangeHandlers() const
{
    const auto live = std::count_if(m_handlers.begin(), m_handlers.end(), [](const auto& h) { return bool(h); });
    return static_cast<unsigned>(live);
}

bool ParamCore::applyConstraints(LightweightString<wchar_t>& text)
{
    Cv::DestructionWatch::Scope scope(m_watch);
    // Constraints are not expected to add constraints, but walking by index keeps that harmless too.
    for (size_t i = 0; i < m_constraints.size(); ++i) {
        const Cv::Ptr<iValueConstraint> constraint = m_constraints[i];
        text = constraint->constrain(text);
        if (scope.ownerGone())
            return false;
    }
    return true;
}

bool ParamCore::notifyChange(const LightweightString<wchar_t>& newValue)
{
    const uint64_t thisChange = ++m_changeCount;
    Cv::DestructionWatch::Scope scope(m_watch);
    ++m_notifyDepth;
    // Handlers added during the round first hear the next change.
    const size_t count = m_handlers.size();
    for (size_t i = 0; i < count; ++i) {
        // Held for the call, so a handler that removes itself survives until it returns.
        const Cv::Ptr<iValueChangeHandler> handler = m_handlers[i];
        if (!handler)
            continue;
        handler->handleValueChange(newValue);
        if (scope.ownerGone())
            return false;
        // A handler changed the value again; that nested round told everyone the newer value.
        if (m_changeCount != thisChange)
            break;
    }
    if (--m_notifyDepth == 0)
        std::erase(m_handlers, Cv::Ptr<iValueChangeHandler>());
    return true;
}

} // namespace GenericParam
