// UIBuilder::Params: saving and restoring, counting a description, and how parameter changes and actions
// reach the conditions and the listeners, including rounds nested inside listeners.
#include "ParamPanelTestSupport.h"

#include "toolkit/support/Configb.h"
#include "toolkit/support/params/ActionParam.h"
#include "toolkit/support/params/NumericParams.h"

#include <gtest/gtest.h>

using namespace paramtest;

namespace {

const char* const kEveryKind = R"({"p": [
    {"type": "bool", "name": "on"},
    {"type": "int", "name": "count", "default": 3, "min": 0, "max": 10},
    {"type": "int", "name": "quality", "values": {"Low": 1, "High": 2}},
    {"type": "float", "name": "gain", "default": 0.5},
    {"type": "text", "name": "title", "value": "untitled"},
    {"type": "label", "name": "note", "legend": "Just a note"},
    {"type": "mystery", "name": "notAParam", "legend": "A line of text"}]})";

// Counts its evaluations, to see when Params runs its post-conditions.
class CountingCondition : public UIBuilder::iPostCondition {
public:
    void evaluate(const UIBuilder::ParamList&) override { ++count; }
    int count = 0;
};

Cv::Ptr<GenericParam::IntParam> intParam(const char* name, int value)
{
    return Cv::make<GenericParam::IntParam>(L"", name, ResId(), value);
}

} // namespace

TEST(ParamsState, SaveThenRestoreOnAFreshPanelReproducesEveryValue)
{
    UiHarness ui;
    const auto first = buildRows(ui, kEveryKind);
    set(first, "on", L"true");
    set(first, "count", L"7");
    set(first, "quality", L"2");
    set(first, "gain", L"-0.125");
    set(first, "title", L"Tëst, with = signs");

    configb store;
    store.set("stale", "left over");
    store.set("count", "1");
    first->saveState(store);
    EXPECT_FALSE(store.contains("stale"));
    EXPECT_FALSE(store.contains("notAParam"));
    LightweightString<char> saved;
    ASSERT_EQ(store.in("title", saved), 0);
    EXPECT_EQ(saved, toUTF8(L"Tëst, with = signs")) << "stored as UTF-8";

    const auto second = buildRows(ui, kEveryKind);
    second->restoreState(store);
    ASSERT_EQ(second->getParams().size(), first->getParams().size());
    for (unsigned i = 0; i < first->getParams().size(); ++i)
        EXPECT_EQ(second->getParams()[i]->getValueAsString(), first->getParams()[i]->getValueAsString())
            << first->getParams()[i]->getName().str();
}

TEST(ParamsState, RestoreLeavesMissingAndUnreadableValuesAlone)
{
    UiHarness ui;
    const auto params = buildRows(ui, kEveryKind);
    configb store;
    store.set("count", "lots");
    store.set("quality", "7");  // not one of the choices
    store.set("gain", "0.75");
    store.set("unrelated", "1");
    params->restoreState(store);
    EXPECT_EQ(value(params, "count"), L"3");
    EXPECT_EQ(value(params, "quality"), L"1");
    EXPECT_EQ(value(params, "gain"), L"0.75");
    EXPECT_EQ(value(params, "title"), L"untitled");

    // Restored values still go through the parameter's own range.
    store.set("count", "99");
    params->restoreState(store);
    EXPECT_EQ(value(params, "count"), L"10");
}

TEST(ParamsState, GetNumParamsWantsARootWithExactlyOneChild)
{
    EXPECT_EQ(UIBuilder::getNumParams(JSON::parse(std::string_view(R"({"p": [{}, {}, {"type": "bool"}]})"))), 3);
    EXPECT_EQ(UIBuilder::getNumParams(JSON::parse(std::string_view(R"({"p": [{}, {}], "q": []})"))), 0);
    EXPECT_EQ(UIBuilder::getNumParams(nullptr), 0);

    // Rows are still read from the first child when there are two.
    UiHarness ui;
    const auto built = buildRows(ui, R"({"p": [{"type": "bool", "name": "a"}], "q": [{"type": "bool", "name": "b"}]})");
    ASSERT_EQ(built->getParams().size(), 1u);
    EXPECT_EQ(built->getParams()[0]->getName(), "a");
}

TEST(ParamsNotification, EachChangeRunsConditionsThenListenersWithTheName)
{
    const auto a = intParam("a", 0);
    const auto condition = Cv::make<CountingCondition>();
    const auto params = Cv::make<UIBuilder::Params>(UIBuilder::ParamList{a}, UIBuilder::Params::WidgetMap{},
                                                    UIBuilder::Params::PostConditions{condition});
    std::vector<int> seenByListener;
    params->addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg& msg) {
        EXPECT_EQ(msg.getMessage(), "a");
        seenByListener.push_back(condition->count);
    }));
    a->setValue(1);
    a->setValue(1); // no change, no news
    a->setValue(2);
    EXPECT_EQ(condition->count, 2);
    EXPECT_EQ(seenByListener, (std::vector<int>{1, 2})) << "conditions run before the listeners hear";
}

TEST(ParamsNotification, ListenerChangingAParameterStartsANestedRound)
{
    UiHarness ui;
    const auto params = buildRows(ui, R"({"p": [
        {"type": "int", "name": "a", "default": 0},
        {"type": "int", "name": "b", "default": 0},
        {"type": "bool", "name": "c", "active if": "b=1"}]})");
    Heard first;
    Heard second;
    bool cWasActiveInFirst = false;
    params->addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg& msg) {
        first.messages.push_back(msg.getMessage().str());
        if (msg.getMessage() == "a")
            set(params, "b", L"1");
        else
            cWasActiveInFirst = row(params, "c")->isActive();
    }));
    params->addListener(second.listener());

    set(params, "a", L"1");
    EXPECT_EQ(first.messages, (std::vector<std::string>{"a", "b"}));
    // The nested round finishes before the outer one reaches the second listener.
    EXPECT_EQ(second.messages, (std::vector<std::string>{"b", "a"}));
    EXPECT_TRUE(cWasActiveInFirst) << "the nested round re-evaluated the conditions first";
    EXPECT_TRUE(row(params, "c")->isActive());
}

TEST(ParamsNotification, ListenerDroppingTheLastReferenceEndsTheRound)
{
    const auto a = intParam("a", 0);
    auto params = Cv::make<UIBuilder::Params>(UIBuilder::ParamList{a}, UIBuilder::Params::WidgetMap{},
                                              UIBuilder::Params::PostConditions{});
    int laterCalls = 0;
    params->addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg&) { params = nullptr; }));
    params->addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg&) { ++laterCalls; }));
    a->setValue(1);
    EXPECT_FALSE(params);
    EXPECT_EQ(laterCalls, 0);
    // The parameter lives on and no longer reports to the destroyed Params.
    EXPECT_EQ(a->getNumValueChangeHandlers(), 0u);
    a->setValue(2);
    EXPECT_EQ(a->getValue(), 2);
}

TEST(ParamsNotification, CopiesAndMovesReportToTheirOwnListeners)
{
    const auto a = intParam("a", 0);
    auto original = Cv::make<UIBuilder::Params>(UIBuilder::ParamList{a}, UIBuilder::Params::WidgetMap{},
                                                UIBuilder::Params::PostConditions{});
    Heard heard;
    original->addListener(heard.listener());
    {
        UIBuilder::Params copy(*original);
        EXPECT_EQ(a->getNumValueChangeHandlers(), 2u);
        a->setValue(1);
        EXPECT_EQ(heard.messages.size(), 2u) << "the copy took the listener too";
    }
    EXPECT_EQ(a->getNumValueChangeHandlers(), 1u);

    UIBuilder::Params moved(std::move(*original));
    original = nullptr;
    EXPECT_EQ(a->getNumValueChangeHandlers(), 1u);
    a->setValue(2);
    EXPECT_EQ(heard.messages.size(), 3u) << "the moved-to Params kept the broadcaster";
}

TEST(ParamsActions, ListenersHearOneMessageAfterTheActionAndOnlyIfItSaysSo)
{
    const auto a = intParam("a", 0);
    const auto b = intParam("b", 0);
    const auto condition = Cv::make<CountingCondition>();
    bool answer = true;
    Heard heard;
    size_t heardDuringAction = 99;
    int conditionRunsDuringAction = 99;
    const auto action = Cv::make<GenericParam::ActionParam>(
        L"Reset", "reset", ResId(), [&](const UIBuilder::ParamList& list) {
            for (const auto& param : list)
                param->setValueFromString(L"5");
            heardDuringAction = heard.messages.size();
            conditionRunsDuringAction = condition->count;
            return answer;
        });
    const auto params = Cv::make<UIBuilder::Params>(UIBuilder::ParamList{a, b, action},
                                                    UIBuilder::Params::WidgetMap{},
                                                    UIBuilder::Params::PostConditions{condition});
    params->addListener(heard.listener());

    params->handleActionParam(NotifyMsg("reset", action));
    EXPECT_EQ(a->getValue(), 5);
    EXPECT_EQ(b->getValue(), 5);
    EXPECT_EQ(heardDuringAction, 0u);
    EXPECT_EQ(conditionRunsDuringAction, 0);
    EXPECT_EQ(heard.messages, (std::vector<std::string>{"reset"}));
    EXPECT_EQ(condition->count, 1);
    EXPECT_TRUE(params->modificationsEnabled());

    answer = false;
    a->setValue(0);
    heard.messages.clear();
    params->handleActionParam(NotifyMsg("reset", action));
    EXPECT_EQ(a->getValue(), 5);
    EXPECT_TRUE(heard.messages.empty());
    EXPECT_TRUE(params->modificationsEnabled());
}

TEST(ParamsActions, ActionRunInsideAnotherActionIsHeard)
{
    Heard heard;
    Cv::Ptr<UIBuilder::Params> params;
    const auto inner = Cv::make<GenericParam::ActionParam>(L"Inner", "inner", ResId(),
                                                           [](const UIBuilder::ParamList&) { return true; });
    const auto outer = Cv::make<GenericParam::ActionParam>(
        L"Outer", "outer", ResId(), [&](const UIBuilder::ParamList&) {
            params->handleActionParam(NotifyMsg("inner", inner));
            return false;
        });
    params = Cv::make<UIBuilder::Params>(UIBuilder::ParamList{inner, outer}, UIBuilder::Params::WidgetMap{},
                                         UIBuilder::Params::PostConditions{});
    params->addListener(heard.listener());

    params->handleActionParam(NotifyMsg("outer", outer));
    EXPECT_EQ(heard.messages, (std::vector<std::string>{"inner"}));
}
