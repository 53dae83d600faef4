#include "toolkit/support/params/ActionParam.h"
#include "toolkit/support/params/BoolParam.h"
#include "toolkit/support/params/ChoiceParam.h"
#include "toolkit/support/params/NumericParams.h"
#include "toolkit/support/params/ParamText.h"
#include "toolkit/support/params/TextParam.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

using namespace GenericParam;
using WText = LightweightString<wchar_t>;

namespace {

// Records every value a parameter reports, and what the parameter itself held at that moment.
struct Recorder {
    std::vector<std::wstring> heard;
    std::vector<std::wstring> storedWhenHeard;

    Cv::Ptr<iValueChangeHandler> attachTo(const Cv::Ptr<iParam>& param)
    {
        iParam* raw = param.get();
        auto handler = makeChangeHandler([this, raw](const WText& v) {
            heard.push_back(v.str());
            storedWhenHeard.push_back(raw->getValueAsString().str());
        });
        param->addValueChangeHandler(handler);
        return handler;
    }
};

// A lower bound taken from another numeric parameter, as panels attach one.
Cv::Ptr<iValueConstraint> notLowerThan(const Cv::Ptr<iParam>& other)
{
    return makeConstraint([other](const WText& proposed) {
        const double p = *ParamText::readDouble(proposed);
        const double o = *ParamText::readDouble(other->getValueAsString());
        return o > p ? other->getValueAsString() : proposed;
    });
}

Cv::Ptr<IntParam> makeInt(int initial, int min = 0, int max = 0, bool ranged = false)
{
    return Cv::make<IntParam>(L"Level", "level", ResId(), initial, min, max, ranged);
}

} // namespace

TEST(ParamConstraint, LowerBoundCorrectsTheProposalAndIsOneSided)
{
    auto low = makeInt(5);
    auto high = makeInt(7);
    high->addValueConstraint(notLowerThan(low));
    Recorder rec;
    rec.attachTo(high);

    high->setValue(3);
    EXPECT_EQ(high->getValue(), 5);
    ASSERT_EQ(rec.heard.size(), 1u);
    EXPECT_EQ(rec.heard[0], L"5");

    // Moving the bound afterwards does not drag the constrained parameter along.
    low->setValue(8);
    EXPECT_EQ(high->getValue(), 5);

    // Text goes through the same constraint.
    EXPECT_TRUE(high->setValueFromString(L"6"));
    EXPECT_EQ(high->getValue(), 8);
}

TEST(ParamConstraint, ConstraintsChainInOrderAndUnreadableAnswersVeto)
{
    auto p = Cv::make<TextParam>(L"Name", "name", ResId(), L"start");
    p->addValueConstraint(makeConstraint([](const WText& t) { return t + L"-a"; }));
    p->addValueConstraint(makeConstraint([](const WText& t) { return t + L"-b"; }));
    p->setValue(L"x");
    EXPECT_EQ(p->getValue(), L"x-a-b");

    auto n = makeInt(4);
    n->addValueConstraint(makeConstraint([](const WText& t) { return t == L"13" ? WText(L"unlucky") : t; }));
    EXPECT_TRUE(n->setValueFromString(L"13")); // readable text, but the constraint vetoed it
    EXPECT_EQ(n->getValue(), 4);
    n->setValue(12);
    EXPECT_EQ(n->getValue(), 12);
}

TEST(ParamHandlers, RunAfterStoringAndOnlyOnChange)
{
    auto p = makeInt(1);
    Recorder a;
    Recorder b;
    a.attachTo(p);
    b.attachTo(p);

    EXPECT_TRUE(p->setValue(2));
    EXPECT_FALSE(p->setValue(2)); // unchanged: nobody is told
    EXPECT_TRUE(p->setValueFromString(L" 2 "));
    EXPECT_EQ(a.heard, std::vector<std::wstring>{L"2"});
    EXPECT_EQ(a.storedWhenHeard, a.heard); // the value was stored before the handler ran
    EXPECT_EQ(b.heard, a.heard);

    p->announce(); // announcing tells everyone once even without a change
    EXPECT_EQ(a.heard.size(), 2u);
    EXPECT_EQ(b.heard.back(), L"2");
}

TEST(ParamHandlers, NestedChangeLeavesEveryHandlerWithTheNewestValue)
{
    auto p = makeInt(0);
    // The first handler snaps odd values to the next even one.
    p->addValueChangeHandler(makeChangeHandler([raw = p.get()](const WText& v) {
        const auto n = *ParamText::readInteger(v);
        if (n % 2 != 0)
            raw->setValue(static_cast<int32_t>(n + 1));
    }));
    Recorder later;
    later.attachTo(p);

    p->setValue(3);
    EXPECT_EQ(p->getValue(), 4);
    ASSERT_FALSE(later.heard.empty());
    EXPECT_EQ(later.heard.back(), L"4");
    EXPECT_EQ(std::count(later.heard.begin(), later.heard.end(), L"3"), 0);
}

TEST(ParamHandlers, HandlersMayRemoveThemselvesOrReleaseTheParameter)
{
    auto p = makeInt(0);
    int calls = 0;
    iValueChangeHandler* self = nullptr;
    {
        auto once = makeChangeHandler([&](const WText&) {
            ++calls;
            p->removeValueChangeHandler(Cv::Ptr<iValueChangeHandler>(self));
        });
        self = once.get();
        p->addValueChangeHandler(once);
    } // the parameter's list holds the only reference now
    Recorder after;
    after.attachTo(p);
    p->setValue(1);
    p->setValue(2);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(after.heard.size(), 2u);
    EXPECT_EQ(p->getNumValueChangeHandlers(), 1u);

    // A handler that drops the last reference: the parameter must not touch itself afterwards.
    Cv::Ptr<IntParam> owner = makeInt(0);
    int laterCalls = 0;
    owner->addValueChangeHandler(makeChangeHandler([&owner](const WText&) { owner = nullptr; }));
    owner->addValueChangeHandler(makeChangeHandler([&laterCalls](const WText&) { ++laterCalls; }));
    IntParam* raw = owner.get();
    raw->setValue(9);
    EXPECT_FALSE(owner);
    EXPECT_EQ(laterCalls, 0);
}

TEST(NumericParams, RangeClampsOnlyWhenItApplies)
{
    auto free = makeInt(50, 0, 10, false);
    EXPECT_EQ(free->getValue(), 50);
    free->setValue(-7);
    EXPECT_EQ(free->getValue(), -7);

    auto bounded = makeInt(50, 10, 0, true); // given upside down
    EXPECT_EQ(bounded->getMinValue(), 0);
    EXPECT_EQ(bounded->getMaxValue(), 10);
    EXPECT_EQ(bounded->getValue(), 10);
    EXPECT_EQ(bounded->getDefaultValue(), 10);
    bounded->setValue(-3);
    EXPECT_EQ(bounded->getValue(), 0);
    EXPECT_TRUE(bounded->setValueFromString(L"1e9"));
    EXPECT_EQ(bounded->getValue(), 10);

    // Switching a range on clamps the stored value and reports it.
    Recorder rec;
    rec.attachTo(free);
    free->setRange(0, 5, true);
    EXPECT_EQ(free->getValue(), 0);
    EXPECT_EQ(rec.heard, std::vector<std::wstring>{L"0"});

    auto d = Cv::make<DoubleParam>(L"Gain", "gain", ResId(), 0.5, -1.0, 1.0, true);
    d->setValue(2.5);
    EXPECT_EQ(d->getValue(), 1.0);
    EXPECT_FALSE(d->setValue(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(d->setValue(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(d->getValue(), 1.0);
}

TEST(NumericParams, TextFormsReadBackAndBadTextChangesNothing)
{
    auto i = makeInt(7);
    for (const wchar_t* bad : {L"", L"abc", L"12abc", L"--4", L"4 4", L"\u0663"})
        EXPECT_FALSE(i->setValueFromString(bad)) << std::wstring(bad).size();
    EXPECT_EQ(i->getValue(), 7);
    EXPECT_TRUE(i->setValueFromString(L"2.5"));
    EXPECT_EQ(i->getValue(), 3); // halves round away from zero
    EXPECT_TRUE(i->setValueFromString(L"-99999999999"));
    EXPECT_EQ(i->getValue(), std::numeric_limits<int32_t>::min());
    EXPECT_EQ(i->getValueAsString(), L"-2147483648");

    auto d = Cv::make<DoubleParam>(L"Gain", "gain", ResId(), 0.1);
    EXPECT_EQ(d->getValueAsString(), L"0.1");
    for (const wchar_t* bad : {L"nan", L"inf", L"1e999", L"0x10", L"1,5", L"+-1"})
        EXPECT_FALSE(d->setValueFromString(bad));
    EXPECT_EQ(d->getValue(), 0.1);
    EXPECT_TRUE(d->setValueFromString(L" +2.5e-3 "));
    EXPECT_EQ(d->getValue(), 0.0025);
    // Every stored double survives its own text form exactly.
    for (double v : {1.0 / 3.0, -1e-300, 123456789.125, 5e-324}) {
        d->setValue(v);
        auto copy = Cv::make<DoubleParam>(L"", "", ResId(), 0.0);
        ASSERT_TRUE(copy->setValueFromString(d->getValueAsString()));
        EXPECT_EQ(copy->getValue(), v);
    }
}

TEST(ParamText, IntegersSaturateAtTheEdgesOf64Bits)
{
    EXPECT_EQ(ParamText::readInteger(L"-9223372036854775808"), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(ParamText::readInteger(L"9223372036854775807"), std::numeric_limits<int64_t>::max());
    EXPECT_EQ(ParamText::readInteger(L"9223372036854775808"), std::numeric_limits<int64_t>::max());
    EXPECT_EQ(ParamText::readInteger(L"-99999999999999999999999"), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(ParamText::readInteger(L"+0"), 0);
    EXPECT_FALSE(ParamText::readInteger(L"-"));
    EXPECT_EQ(ParamText::writeInteger(std::numeric_limits<int64_t>::min()), L"-9223372036854775808");
}

TEST(BoolParam, TextForms)
{
    auto b = Cv::make<BoolParam>(L"Enabled", "enabled", ResId(), false);
    EXPECT_EQ(b->getValueAsString(), L"false");
    EXPECT_TRUE(b->setValueFromString(L"1"));
    EXPECT_EQ(b->getValueAsString(), L"true");
    EXPECT_TRUE(b->setValueFromString(L"0"));
    EXPECT_FALSE(b->getValue());
    EXPECT_TRUE(b->setValueFromString(L"TRUE"));
    EXPECT_TRUE(b->getValue());
    EXPECT_FALSE(b->setValueFromString(L"yes"));
    EXPECT_FALSE(b->setValueFromString(L"2"));
    EXPECT_TRUE(b->getValue());
}

TEST(ChoiceParam, ValueNotPositionIsTheTextForm)
{
    const std::vector<ChoiceParam::Choice> sizes = {{L"Small", 10}, {L"Medium", 20}, {L"Large", 2}};
    auto c = Cv::make<ChoiceParam>(L"Size", "size", ResId(), 20u, sizes);
    EXPECT_EQ(c->getValueAsString(), L"20");
    EXPECT_EQ(c->getSelectedLabel(), L"Medium");

    EXPECT_TRUE(c->setValueFromString(L"2")); // the value 2, which is the third entry
    EXPECT_EQ(c->indexOfValue(c->getValue()), 2u);
    EXPECT_EQ(c->getSelectedLabel(), L"Large");

    // Values outside the list, negative numbers and labels are all refused.
    c->setValueFromString(L"1");
    EXPECT_FALSE(c->setValue(11));
    EXPECT_FALSE(c->setValueFromString(L"-10"));
    EXPECT_FALSE(c->setValueFromString(L"Small"));
    EXPECT_EQ(c->getValue(), 2u);

    auto none = Cv::make<ChoiceParam>(L"Empty", "empty", ResId(), ChoiceParam::noChoice,
                                      std::vector<ChoiceParam::Choice>{});
    EXPECT_EQ(none->getValueAsString(), L"4294967295");
    EXPECT_EQ(none->getSelectedLabel(), L"");
    EXPECT_FALSE(none->setValue(0));
}

TEST(ValuelessParams, LabelsAndActionsHoldNothingAndActionsRunTheirCallback)
{
    auto label = Cv::make<LabelParam>(L"<b>Note</b>", "note", ResId(12));
    EXPECT_FALSE(label->setValueFromString(L"x"));
    EXPECT_EQ(label->getValueAsString(), L"");

    auto level = makeInt(1);
    LightweightVector<Cv::Ptr<iParam>> all{Cv::Ptr<iParam>(level), Cv::Ptr<iParam>(label)};
    auto reset = Cv::make<ActionParam>(L"Reset", "reset", ResId(), [](const LightweightVector<Cv::Ptr<iParam>>& ps) {
        bool changed = false;
        for (const auto& p : ps)
            changed |= p->getValueTypeName() == "int" && p->setValueFromString(L"0");
        return changed;
    });
    EXPECT_TRUE(reset->invoke(all));
    EXPECT_EQ(level->getValue(), 0);
    EXPECT_FALSE(Cv::make<ActionParam>(L"Nothing", "nothing", ResId(), nullptr)->invoke(all));
}
