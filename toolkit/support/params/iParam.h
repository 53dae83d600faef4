#pragma once
// GenericParam: named, typed values that panels edit and that callers save and restore as text.
//
// Every parameter has a text form (wide text), which is how values are saved, compared by conditions and
// passed to change handlers and constraints. Each kind documents its text form.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/RefCount.h"
#include "toolkit/support/UIString.h"

#include <functional>
#include <utility>

namespace GenericParam {

// Told of a parameter's new value, as text, after it has been stored.
class iValueChangeHandler : public iObject {
public:
    virtual void handleValueChange(const LightweightString<wchar_t>& newValue) = 0;
};

// Asked to correct a value proposed for a parameter before it is stored; answers the text to store.
// Answering the proposal unchanged accepts it. Answering text the parameter cannot read vetoes the change.
class iValueConstraint : public iObject {
public:
    virtual LightweightString<wchar_t> constrain(const LightweightString<wchar_t>& proposed) = 0;
};

class iParam : public iObject {
public:
    virtual LightweightString<char> getName() const = 0;
    // "int", "double", "bool", "choice", "text", "label" or "action".
    virtual LightweightString<char> getValueTypeName() const = 0;
    virtual LightweightString<wchar_t> getLegend() const = 0;
    virtual ResId getTooltip() const = 0;

    virtual LightweightString<wchar_t> getValueAsString() const = 0;
    // Text that cannot be read as the parameter's type leaves the value unchanged and answers false.
    // Readable text goes through the same path as a typed set (range, constraints, handlers) and answers true,
    // even when the value ends up unchanged.
    virtual bool setValueFromString(const LightweightString<wchar_t>& text) = 0;

    // Handlers run in the order added, after each change of the stored value.
    virtual void addValueChangeHandler(const Cv::Ptr<iValueChangeHandler>& handler) = 0;
    // Safe to call from inside a handler, including the handler being removed: it is not called again.
    virtual void removeValueChangeHandler(const Cv::Ptr<iValueChangeHandler>& handler) = 0;
    // Constraints are asked in the order added; each sees the previous one's answer.
    virtual void addValueConstraint(const Cv::Ptr<iValueConstraint>& constraint) = 0;
    // Calls every change handler once with the current value, whether or not it changed: used once after a
    // panel is built so that everything that depends on a value sees the initial one.
    virtual void announce() = 0;
};

// Handlers and constraints from plain functions, for callers that need no state of their own.
class FunctionChangeHandler : public iValueChangeHandler {
public:
    explicit FunctionChangeHandler(std::function<void(const LightweightString<wchar_t>&)> fn) : m_fn(std::move(fn)) {}
    void handleValueChange(const LightweightString<wchar_t>& newValue) override
    {
        if (m_fn)
            m_fn(newValue);
    }

private:
    std::function<void(const LightweightString<wchar_t>&)> m_fn;
};

class FunctionConstraint : public iValueConstraint {
public:
    explicit FunctionConstraint(std::function<LightweightString<wchar_t>(const LightweightString<wchar_t>&)> fn)
        : m_fn(std::move(fn))
    {
    }
    LightweightString<wchar_t> constrain(const LightweightString<wchar_t>& proposed) override
    {
        return m_fn ? m_fn(proposed) : proposed;
    }

private:
    std::function<LightweightString<wchar_t>(const LightweightString<wchar_t>&)> m_fn;
};

inline Cv::Ptr<iValueChangeHandler> makeChangeHandler(std::function<void(const LightweightString<wchar_t>&)> fn)
{
    return Cv::Ptr<iValueChangeHandler>(new FunctionChangeHandler(std::move(fn)));
}

inline Cv::Ptr<iValueConstraint> makeConstraint(
    std::function<LightweightString<wchar_t>(const LightweightString<wchar_t>&)> fn)
{
    return Cv::Ptr<iValueConstraint>(new FunctionConstraint(std::move(fn)));
}

} // namespace GenericParam
