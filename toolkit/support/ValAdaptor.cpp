#include "toolkit/support/ValAdaptor.h"

#include "toolkit/support/params/BoolParam.h"
#include "toolkit/support/params/ChoiceParam.h"
#include "toolkit/support/params/NumericParams.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace {

using WText = LightweightString<wchar_t>;
using GenericParam::iParam;

template <typename To, typename From>
To convertValue(const From& value)
{
    if constexpr (std::is_same_v<To, From>) {
        return value;
    } else if constexpr (std::is_integral_v<To> && std::is_floating_point_v<From>) {
        // Clamped while still floating: converting an out-of-range double to an integer is undefined.
        if (std::isnan(value))
            return To(0);
        const double clamped = std::clamp(static_cast<double>(value), double(std::numeric_limits<To>::min()),
                                          double(std::numeric_limits<To>::max()));
        return static_cast<To>(std::round(clamped));
    } else {
        // int <-> double widens exactly; int <-> unsigned keeps the bits, so a choice's "no choice"
        // value (all ones) reads as -1 and back.
        return static_cast<To>(value);
    }
}

class iParamChangeSink {
public:
    virtual void paramChanged() = 0;

protected:
    ~iParamChangeSink() = default;
};

// Registered with the parameter on the adaptor's behalf. The parameter may outlive the adaptor (other
// holders keep it), so the adaptor cuts this loose before it goes.
class ParamListener final : public GenericParam::iValueChangeHandler {
public:
    explicit ParamListener(iParamChangeSink* sink) : m_sink(sink) {}
    void handleValueChange(const WText&) override
    {
        if (m_sink)
            m_sink->paramChanged();
    }
    void detach() { m_sink = nullptr; }

private:
    iParamChangeSink* m_sink = nullptr;
};

// Shared by the typed and the text adaptors: listening to the parameter for as long as the adaptor lives.
template <typename T, typename P>
class ParamAdaptorBase : public ValAdaptor<T>, private iParamChangeSink {
public:
    explicit ParamAdaptorBase(Cv::Ptr<P> param) : m_param(std::move(param)), m_listener(new ParamListener(this))
    {
        m_param->addValueChangeHandler(m_listener);
    }
    ~ParamAdaptorBase() override
    {
        m_listener->detach();
        m_param->removeValueChangeHandler(m_listener);
    }

protected:
    const Cv::Ptr<P>& param() const { return m_param; }

private:
    // The parameter does not say why it changed: changes made through this adaptor are reported with the
    // setter's type once the set is over; changes from elsewhere count as set by code.
    void paramChanged() override { this->sourceChanged(kDataChangeSet); }

    Cv::Ptr<P> m_param;
    Cv::Ptr<ParamListener> m_listener;
};

template <typename T, typename P>
class TypedParamAdaptor final : public ParamAdaptorBase<T, P> {
public:
    using ParamAdaptorBase<T, P>::ParamAdaptorBase;

    T getValue() const override { return convertValue<T>(this->param()->getValue()); }

protected:
    void writeToSource(const T& value, DataChangeType) override
    {
        this->param()->setValue(convertValue<typename P::value_type>(value));
    }
};

class TextParamAdaptor final : public ParamAdaptorBase<WText, iParam> {
public:
    using ParamAdaptorBase::ParamAdaptorBase;

    WText getValue() const override { return param()->getValueAsString(); }

protected:
    void writeToSource(const WText& value, DataChangeType) override { param()->setValueFromString(value); }
};

template <typename T, typename P>
Cv::Ptr<ValAdaptor<T>> adaptIf(const Cv::Ptr<iParam>& param)
{
    if (Cv::Ptr<P> typed = param.dynamicCast<P>())
        return Cv::Ptr<ValAdaptor<T>>(new TypedParamAdaptor<T, P>(std::move(typed)));
    return nullptr;
}

} // namespace

template <typename T>
Cv::Ptr<ValAdaptor<T>> makeParamAdaptor(const Cv::Ptr<iParam>& param)
{
    if (!param)
        return nullptr;
    using namespace GenericParam;
    if constexpr (std::is_same_v<T, int>) {
        if (auto a = adaptIf<int, IntParam>(param))
            return a;
        if (auto a = adaptIf<int, DoubleParam>(param))
            return a;
        return adaptIf<int, ChoiceParam>(param);
    } else if constexpr (std::is_same_v<T, double>) {
        if (auto a = adaptIf<double, DoubleParam>(param))
            return a;
        return adaptIf<double, IntParam>(param);
    } else if constexpr (std::is_same_v<T, bool>) {
        return adaptIf<bool, BoolParam>(param);
    } else {
        static_assert(std::is_same_v<T, WText>);
        return Cv::Ptr<ValAdaptor<WText>>(new TextParamAdaptor(param));
    }
}

template Cv::Ptr<ValAdaptor<int>> makeParamAdaptor<int>(const Cv::Ptr<iParam>&);
template Cv::Ptr<ValAdaptor<double>> makeParamAdaptor<double>(const Cv::Ptr<iParam>&);
template Cv::Ptr<ValAdaptor<bool>> makeParamAdaptor<bool>(const Cv::Ptr<iParam>&);
template Cv::Ptr<ValAdaptor<WText>> makeParamAdaptor<WText>(const Cv::Ptr<iParam>&);
