#include "parampanels/UIBuilder.h"

#include "toolkit/support/JSON.h"

#include <algorithm>

uint16_t UIBuilder::getNumParams(const Cv::Ptr<JSON::Element>& description)
{
    // Stricter than building, which takes child 0 whatever else the root holds: a root with extra
    // children is not a description we can count.
    if (!description || description->getNumChildren() != 1)
        return 0;
    const Cv::Ptr<JSON::Element> entries = description->getChild(size_t(0));
    if (!entries)
        return 0;
    return static_cast<uint16_t>(std::min<size_t>(entries->getNumChildren(), UINT16_MAX));
}

Cv::Ptr<GenericParam::iParam> UIBuilder::findParam(const ParamList& params, const LightweightString<char>& name)
{
    for (const Cv::Ptr<GenericParam::iParam>& param : params) {
        if (param && param->getName() == name)
            return param;
    }
    return {};
}
