#pragma once
// UIBuilder: makes a panel of editable rows from a JSON description of parameters, or from ready-made
// parameters, and hands back a UIBuilder::Params that keeps the parameters, their conditions and their
// listeners together.
//
// This header holds what the parameter model needs: the condition interface evaluated after every change,
// the description counting rule and parameter lookup. Params itself is in UIBuilderParams.h.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/RefCount.h"
#include "toolkit/support/Vectors.h"
#include "toolkit/support/params/iParam.h"

#include <cstdint>

namespace JSON {
class Element;
}

class UIBuilder {
public:
    using ParamList = LightweightVector<Cv::Ptr<GenericParam::iParam>>;

    // A condition that looks at the whole parameter list after any parameter changed ("active if").
    class iPostCondition : public iObject {
    public:
        virtual void evaluate(const ParamList& params) = 0;
    };

    class Params;

    // The number of entries a description holds: 0 for a null description or a root whose number of
    // children is not exactly one, else the number of children of that one child (at most 65535).
    static uint16_t getNumParams(const Cv::Ptr<JSON::Element>& description);

    // The first parameter in `params` whose name equals `name` exactly; null when none does.
    static Cv::Ptr<GenericParam::iParam> findParam(const ParamList& params, const LightweightString<char>& name);
};
