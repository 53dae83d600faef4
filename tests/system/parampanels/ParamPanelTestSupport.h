#pragma once
// Reads a description the way the panel builder does, but with a plain text label as every row: enough to
// exercise the parameter model and its conditions on real widgets without the row layout.

#include "parampanels/Conditions.h"
#include "parampanels/DescriptionReader.h"
#include "parampanels/UIBuilderParams.h"
#include "toolkit/support/JSON.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/widgets/TextLabel.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace paramtest {

inline Cv::Ptr<UIBuilder::Params> buildRows(UiHarness& ui, std::string_view json)
{
    const Cv::Ptr<JSON::Element> root = JSON::parse(json);
    EXPECT_TRUE(root) << "test description does not parse";
    const Cv::Ptr<JSON::Element> entries = root ? root->getChild(size_t(0)) : nullptr;
    UIBuilder::ParamList params;
    UIBuilder::Params::WidgetMap widgets;
    UIBuilder::Params::PostConditions conditions;
    if (!entries)
        return Cv::make<UIBuilder::Params>(params, widgets, conditions);

    int y = 0;
    for (size_t i = 0; i < entries->getNumChildren(); ++i) {
        const Cv::Ptr<GenericParam::iParam> param = DescriptionReader::readParam(entries->getChild(i));
        if (!param)
            continue;
        Glob* row = ui.make<TextLabel>(TextLabel::InitArgs(param->getLegend(), 200, 20), Glob::BottomLeft(0, y));
        y += 24;
        widgets[param->getName()] = row;
        params.push_back(param);
    }
    for (size_t i = 0; i < entries->getNumChildren(); ++i)
        attachConditions(DescriptionReader::readConditions(entries->getChild(i)), params, widgets, conditions);

    Cv::Ptr<UIBuilder::Params> built = Cv::make<UIBuilder::Params>(params, widgets, conditions);
    for (const auto& param : params)
        param->announce();
    return built;
}

inline Glob* row(const Cv::Ptr<UIBuilder::Params>& params, const char* name)
{
    const auto it = params->getWidgets().find(name);
    return it == params->getWidgets().end() ? nullptr : it->second;
}

inline void set(const Cv::Ptr<UIBuilder::Params>& params, const char* name, const wchar_t* value)
{
    const Cv::Ptr<GenericParam::iParam> param = params->findParam(name);
    ASSERT_TRUE(param) << name;
    param->setValueFromString(value);
}

inline std::wstring value(const Cv::Ptr<UIBuilder::Params>& params, const char* name)
{
    const Cv::Ptr<GenericParam::iParam> param = params->findParam(name);
    return param ? param->getValueAsString().str() : L"<missing>";
}

// Records the message texts a Params passes to its listeners.
struct Heard {
    std::vector<std::string> messages;
    Cv::Ptr<iCallbackBase<int, NotifyMsg>> listener()
    {
        return Cv::makeListener<NotifyMsg>([this](const NotifyMsg& msg) { messages.push_back(msg.getMessage().str()); });
    }
};

} // namespace paramtest
