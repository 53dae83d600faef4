// Arbitrary bytes as a parameter description. Every entry must read into a parameter of the kind its "type"
// names, or into none; an applying range must hold the value; and saving then restoring the parameters must
// leave every value as it was.
#include "FuzzChecks.h"
#include "parampanels/detail/Conditions.h"
#include "parampanels/detail/DescriptionReader.h"
#include "parampanels/UIBuilderParams.h"
#include "toolkit/support/Configb.h"
#include "toolkit/support/JSON.h"

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace {

template <typename P>
void checkRange(const P& param)
{
    if (param.isRangeEnabled())
        check(param.getMinValue() <= param.getValue() && param.getValue() <= param.getMaxValue(),
              "a value outside its applying range");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const Cv::Ptr<JSON::Element> root = JSON::parse(std::string_view(reinterpret_cast<const char*>(data), size));
    const uint16_t counted = UIBuilder::getNumParams(root);
    const Cv::Ptr<JSON::Element> entries = root ? root->getChild(size_t(0)) : nullptr;
    check(entries || counted == 0, "counted entries that building cannot see");
    if (!entries)
        return 0;

    UIBuilder::ParamList params;
    for (size_t i = 0; i < entries->getNumChildren(); ++i) {
        const Cv::Ptr<JSON::Element> entry = entries->getChild(i);
        const DescriptionReader::Kind kind = DescriptionReader::kindOf(entry);
        const Cv::Ptr<GenericParam::iParam> param = DescriptionReader::readParam(entry);
        check((kind == DescriptionReader::Kind::Unknown) == !param, "a parameter for an unknown type or none for a known one");
        if (!param)
            continue;
        if (const auto i32 = param.dynamicCast<GenericParam::IntParam>())
            checkRange(*i32);
        if (const auto dbl = param.dynamicCast<GenericParam::DoubleParam>())
            checkRange(*dbl);
        params.push_back(param);
    }

    // "active if" and "visible if" only: rows are absent here, and the conditions must cope with that.
    std::map<LightweightString<char>, Glob*> rows;
    for (const auto& param : params)
        rows[param->getName()] = nullptr;
    std::vector<Cv::Ptr<UIBuilder::iPostCondition>> conditions;
    for (size_t i = 0; i < entries->getNumChildren(); ++i) {
        EntryConditions entry = DescriptionReader::readConditions(entries->getChild(i));
        entry.lowerBound = {};
        entry.upperBound = {};
        attachConditions(entry, params, rows, conditions);
    }
    const auto model = Cv::make<UIBuilder::Params>(params, UIBuilder::Params::WidgetMap(rows), conditions);
    for (const auto& param : params)
        param->announce();

    configb saved;
    model->saveState(saved);
    check(saved.size() <= params.size(), "saved more keys than parameters");
    std::vector<LightweightString<wchar_t>> before;
    for (const auto& param : params)
        before.push_back(param->getValueAsString());
    model->restoreState(saved);
    // Parameters sharing a name share one saved text (the last one's): compare only names used once.
    std::map<LightweightString<char>, int> uses;
    for (const auto& param : params)
        ++uses[param->getName()];
    for (unsigned i = 0; i < params.size(); ++i) {
        if (uses[params[i]->getName()] == 1)
            check(params[i]->getValueAsString() == before[i], "restoring changed a value");
    }
    return 0;
}
