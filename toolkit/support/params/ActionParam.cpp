#include "toolkit/support/params/ActionParam.h"

namespace GenericParam {

ActionParam::ActionParam(LightweightString<wchar_t> legend, LightweightString<char> name, ResId tooltip,
                         Callback callback)
    : ParamCore(std::move(legend), std::move(name), tooltip)
    , m_callback(std::move(callback))
{
}

bool ActionParam::invoke(const LightweightVector<Cv::Ptr<iParam>>& params)
{
    if (!m_callback)
        return false;
    // Called through a copy: the callback may drop the last reference to this action while it runs.
    const Callback callback = m_callback;
    return callback(params);
}

} // namespace GenericParam
