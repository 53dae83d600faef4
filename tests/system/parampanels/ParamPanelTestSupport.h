#pragma once
// Builds a described panel on the harness, and reads and sets its parameters by name.

#include "parampanels/UIBuilder.h"
#include "parampanels/UIBuilderParams.h"
#include "toolkit/support/JSON.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/StandardPanel.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace paramtest {

inline Cv::Ptr<UIBuilder::Params> buildRows(UiHarness& ui, std::string_view json)
{
    const Cv::Ptr<JSON::Element> root = JSON::parse(json);
    EXPECT_TRUE(root) << "test description does not parse";
    auto* panel = ui.make<StandardPanel>(StandardPanel::InitArgs(L"Test", 400, 700));
    return UIBuilder::buildFromJSON(root, panel);
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
