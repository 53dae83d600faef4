// The four conditions of a described panel on real row widgets: enabling by "active if", showing by
// "visible if", and correcting a value by a bound held by another parameter.
#include "ParamPanelTestSupport.h"

#include "parampanels/detail/Conditions.h"

#include "toolkit/support/params/NumericParams.h"

#include <gtest/gtest.h>

using namespace paramtest;

TEST(ActiveIf, RowIsEnabledOnlyWhileEveryPairMatches)
{
    UiHarness ui;
    const auto params = buildRows(ui, R"({"p": [
        {"type": "int", "name": "a", "default": 0},
        {"type": "bool", "name": "b"},
        {"type": "text", "name": "c", "active if": "a=1,b=true"}]})");
    Glob* c = row(params, "c");
    ASSERT_TRUE(c);

    set(params, "a", L"1");
    EXPECT_FALSE(c->isActive()) << "b is still false";
    set(params, "b", L"true");
    EXPECT_TRUE(c->isActive());
    set(params, "a", L"2");
    EXPECT_FALSE(c->isActive());
    set(params, "a", L"1");
    EXPECT_TRUE(c->isActive());
}

TEST(ActiveIf, UnknownNameKeepsTheRowDisabledForGood)
{
    UiHarness ui;
    const auto params = buildRows(ui, R"({"p": [
        {"type": "int", "name": "a", "default": 0},
        {"type": "text", "name": "c", "active if": "a=1,ghost=1"}]})");
    Glob* c = row(params, "c");
    ASSERT_TRUE(c);
    for (const wchar_t* a : {L"1", L"0", L"1"}) {
        set(params, "a", a);
        EXPECT_FALSE(c->isActive()) << "a=" << a;
    }
}

TEST(ActiveIf, PairsAreKeyedByNameAndComparedAsText)
{
    const auto twice = ActiveConstraint::fromText("a=1, a = 2 ,=3", nullptr);
    ASSERT_TRUE(twice);
    ASSERT_EQ(twice->getRequirements().size(), 1u);
    EXPECT_EQ(twice->getRequirements().at("a"), "2");

    // A choice is compared by its value, never its label; a bool by "true"/"false", not "1".
    UiHarness ui;
    const auto params = buildRows(ui, R"({"p": [
        {"type": "int", "name": "q", "values": {"Low": 1, "High": 2}},
        {"type": "bool", "name": "on", "default": true},
        {"type": "text", "name": "byValue", "active if": "q=2"},
        {"type": "text", "name": "byLabel", "active if": "q=High"},
        {"type": "text", "name": "byDigit", "active if": "on=1"}]})");
    set(params, "q", L"2");
    EXPECT_TRUE(row(params, "byValue")->isActive());
    EXPECT_FALSE(row(params, "byLabel")->isActive());
    EXPECT_FALSE(row(params, "byDigit")->isActive());
}

TEST(VisibleIf, OnePairWhoseCommaBelongsToTheValue)
{
    UiHarness ui;
    const auto params = buildRows(ui, R"({"p": [
        {"type": "text", "name": "mode", "value": "1"},
        {"type": "bool", "name": "extra", "visible if": "mode=2,3"}]})");
    Glob* extra = row(params, "extra");
    ASSERT_TRUE(extra);
    EXPECT_FALSE(extra->isVisible()) << "the initial announcement applies the condition";

    set(params, "mode", L"2");
    EXPECT_FALSE(extra->isVisible());
    set(params, "mode", L"2,3");
    EXPECT_TRUE(extra->isVisible());
    set(params, "mode", L"3");
    EXPECT_FALSE(extra->isVisible());
}

TEST(VisibleIf, UnknownControllerOrInvalidPairLeavesTheRowVisible)
{
    UiHarness ui;
    const auto params = buildRows(ui, R"({"p": [
        {"type": "text", "name": "mode"},
        {"type": "bool", "name": "orphan", "visible if": "nothing=1"},
        {"type": "bool", "name": "broken", "visible if": "mode"},
        {"type": "bool", "name": "nameless", "visible if": "=1"}]})");
    set(params, "mode", L"1");
    for (const char* name : {"orphan", "broken", "nameless"})
        EXPECT_TRUE(row(params, name)->isVisible()) << name;
}

TEST(VisibleIf, RowDestroyedBeforeTheParameterIsLeftAlone)
{
    UiHarness ui;
    const auto params = buildRows(ui, R"({"p": [
        {"type": "text", "name": "mode"},
        {"type": "bool", "name": "extra", "visible if": "mode=on"}]})");
    const Cv::Ptr<GenericParam::iParam> mode = params->findParam("mode");
    Glob* extra = row(params, "extra");
    extra->parent()->removeChild(extra);
    // The parameter is shared and outlives the row; its handler must notice the row is gone.
    mode->setValueFromString(L"on");
    mode->setValueFromString(L"off");
    EXPECT_EQ(mode->getValueAsString(), L"off");
}

TEST(Bounds, LowerBoundCorrectsOnlyWhenTheBoundedParameterChanges)
{
    UiHarness ui;
    const auto params = buildRows(ui, R"({"p": [
        {"type": "int", "name": "low", "default": 5},
        {"type": "int", "name": "value", "default": 6, "must not be lower than": "low"}]})");
    set(params, "value", L"3");
    EXPECT_EQ(value(params, "value"), L"5");
    set(params, "low", L"8");
    EXPECT_EQ(value(params, "value"), L"5") << "moving the bound does not correct the other";
    set(params, "value", L"7");
    EXPECT_EQ(value(params, "value"), L"8");
    set(params, "value", L"8");
    EXPECT_EQ(value(params, "value"), L"8") << "equal values pass";
}

TEST(Bounds, UpperBoundAcrossIntAndFloat)
{
    UiHarness ui;
    const auto params = buildRows(ui, R"({"p": [
        {"type": "float", "name": "high", "default": 2.25},
        {"type": "int", "name": "count", "default": 0, "must not be higher than": "high"},
        {"type": "float", "name": "gain", "default": 0, "must not be higher than": "high"}]})");
    set(params, "gain", L"3.75");
    EXPECT_EQ(value(params, "gain"), L"2.25");
    set(params, "gain", L"-1");
    EXPECT_EQ(value(params, "gain"), L"-1");
    // An int bounded by a float takes the float's text, which it reads to the nearest integer.
    set(params, "count", L"9");
    EXPECT_EQ(value(params, "count"), L"2");
}

TEST(Bounds, NonNumericOrUnknownBoundLetsEveryValueThrough)
{
    UiHarness ui;
    const auto params = buildRows(ui, R"({"p": [
        {"type": "text", "name": "words", "value": "100"},
        {"type": "bool", "name": "flag", "default": true},
        {"type": "int", "name": "a", "must not be lower than": "words"},
        {"type": "int", "name": "b", "must not be higher than": "flag"},
        {"type": "int", "name": "c", "must not be lower than": "missing"}]})");
    set(params, "a", L"3");
    set(params, "b", L"3");
    set(params, "c", L"3");
    EXPECT_EQ(value(params, "a"), L"3");
    EXPECT_EQ(value(params, "b"), L"3");
    EXPECT_EQ(value(params, "c"), L"3");
}

TEST(Bounds, FractionsAndUnreadableTextAgainstTheBound)
{
    const auto bound = Cv::make<GenericParam::IntParam>(L"", "bound", ResId(), 10);
    MinValueConstraint atLeast(bound);
    MaxValueConstraint atMost(bound);
    EXPECT_EQ(atLeast.constrain(L"9.5"), L"10");
    EXPECT_EQ(atMost.constrain(L"10.5"), L"10");
    EXPECT_EQ(atMost.constrain(L"10"), L"10");
    // Unreadable text counts as 0 against the bound.
    EXPECT_EQ(atLeast.constrain(L"abc"), L"10");
    EXPECT_EQ(atMost.constrain(L"abc"), L"abc");
}
