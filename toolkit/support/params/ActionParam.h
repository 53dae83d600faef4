#pragma once
// A command offered on a parameter panel: a legend and a callback. It holds no value. The callback receives
// the panel's whole parameter list, may change any of them, and answers true when it changed something that
// the panel's listeners should hear about.

#include "toolkit/support/Vectors.h"
#include "toolkit/support/params/ParamBase.h"

#include <functional>

namespace GenericParam {

class ActionParam : public ParamCore {
public:
    using Callback = std::function<bool(const LightweightVector<Cv::Ptr<iParam>>&)>;

    ActionParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip, Callback callback);

    LightweightString<char> getValueTypeName() const override { return "action"; }
    LightweightString<wchar_t> getValueAsString() const override { return {}; }
    bool setValueFromString(const LightweightString<wchar_t>&) override { return false; }
    void announce() override {}

    // Runs the callback; false when there is none.
    bool invoke(const LightweightVector<Cv::Ptr<iParam>>& params);

private:
    Callback m_callback;
};

} // namespace GenericParam
