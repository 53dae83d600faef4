#pragma once
// The shared machinery of parameters: identity (name, legend, tooltip), the handler and constraint lists,
// and, in ParamBase<T>, a typed value with its text form.
//
// Setting a value, step by step:
//   1. a value the kind can never hold is refused; the parameter's own rule adjusts the rest (an applying
//      range clamps);
//   2. if there are constraints, the value's text goes through each in the order added, and the answer is
//      read back (an unreadable answer vetoes the change) and adjusted again by the parameter's own rule;
//   3. if the result equals the stored value nothing else happens: handlers are NOT called for a value that
//      did not change, so that two parties echoing a value to each other come to rest;
//   4. otherwise the value is stored and every handler is called with its text.
// announce() exists for the one case that needs handlers to run without a change.
//
// Handlers may change the parameter again (the nested change is reported to every handler, and the outer
// round stops early so that nobody hears the older value last), add or remove handlers, or release the last
// reference to the parameter.

#include "toolkit/support/DestructionWatch.h"
#include "toolkit/support/params/iParam.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace GenericParam {

class ParamCore : public iParam {
public:
    LightweightString<char> getName() const override { return m_name; }
    LightweightString<wchar_t> getLegend() const override { return m_legend; }
    ResId getTooltip() const override { return m_tooltip; }

    void addValueChangeHandler(const Cv::Ptr<iValueChangeHandler>& handler) override;
    void removeValueChangeHandler(const Cv::Ptr<iValueChangeHandler>& handler) override;
    void addValueConstraint(const Cv::Ptr<iValueConstraint>& constraint) override;

    unsigned getNumValueChangeHandlers() const;

protected:
    ParamCore(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip);

    bool hasConstraints() const { return !m_constraints.empty(); }
    // Runs `text` through every constraint. Answers false when a constraint destroyed this parameter.
    bool applyConstraints(LightweightString<wchar_t>& text);
    // Calls the handlers with `newValue`. Answers false when a handler destroyed this parameter.
    bool notifyChange(const LightweightString<wchar_t>& newValue);

private:
    LightweightString<wchar_t> m_legend;
    LightweightString<char> m_name;
    ResId m_tooltip;
    std::vector<Cv::Ptr<iValueChangeHandler>> m_handlers; // removed during a round: left null, swept after
    std::vector<Cv::Ptr<iValueConstraint>> m_constraints;
    uint64_t m_changeCount = 0;
    unsigned m_notifyDepth = 0;
    Cv::DestructionWatch m_watch;
};

template <typename T>
class ParamBase : public ParamCore {
public:
    using value_type = T;

    const T& getValue() const { return m_value; }
    // The value the parameter was made with (after its own adjustment), e.g. a slider's point of interest.
    const T& getDefaultValue() const { return m_default; }
    // Answers true when the stored value changed.
    bool setValue(T proposed);

    LightweightString<wchar_t> getValueAsString() const override { return toText(m_value); }
    bool setValueFromString(const LightweightString<wchar_t>& text) override
    {
        std::optional<T> value = fromText(text);
        if (!value)
            return false;
        setValue(std::move(*value));
        return true;
    }
    void announce() override { notifyChange(getValueAsString()); }

protected:
    ParamBase(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip, T initial)
        : ParamCore(std::move(legend), std::move(name), tooltip)
        , m_value(initial)
        , m_default(std::move(initial))
    {
    }

    virtual LightweightString<wchar_t> toText(const T& value) const = 0;
    virtual std::optional<T> fromText(const LightweightString<wchar_t>& text) const = 0;
    // Values a parameter can never hold (a NaN) are refused outright, leaving the stored value alone.
    virtual bool accepts(const T&) const { return true; }
    // The parameter's own rule, applied to every value before it is stored.
    virtual T adjust(const T& value) const { return value; }

    // For constructors, once the rule's data exists: adjusts the initial and default values silently.
    void adjustInitialValue()
    {
        m_value = adjust(m_value);
        m_default = adjust(m_default);
    }
    // For when the rule itself changes (a new range): re-adjusts the stored value, reporting a change.
    void readjustValue()
    {
        T adjusted = adjust(m_value);
        if (adjusted == m_value)
            return;
        m_value = std::move(adjusted);
        notifyChange(toText(m_value));
    }

private:
    T m_value;
    T m_default;
};

template <typename T>
bool ParamBase<T>::setValue(T proposed)
{
    if (!accepts(proposed))
        return false;
    T candidate = adjust(proposed);
    if (hasConstraints()) {
        LightweightString<wchar_t> text = toText(candidate);
        if (!applyConstraints(text))
            return false;
        std::optional<T> corrected = fromText(text);
        if (!corrected || !accepts(*corrected))
            return false;
        candidate = adjust(*corrected);
    }
    if (candidate == m_value)
        return false;
    m_value = std::move(candidate);
    notifyChange(toText(m_value));
    return true;
}

} // namespace GenericParam
