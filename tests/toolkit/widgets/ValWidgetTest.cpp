// Value widgets bound to one value: a change made through any of them, or by code, shows in all; a source
// that corrects a proposal is shown corrected; either side may die first.

#include "toolkit/support/ValAdaptor.h"
#include "toolkit/support/ValServer.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/Slider.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

// A source that refuses values above a cap, as a parameter's "must not be higher than" does.
class CappedAdaptor : public ValAdaptor<double> {
public:
    explicit CappedAdaptor(double cap) : m_cap(cap) {}
    double getValue() const override { return m_value; }

protected:
    void writeToSource(const double& value, DataChangeType type) override
    {
        const double stored = std::min(value, m_cap);
        if (stored == m_value)
            return;
        m_value = stored;
        sourceChanged(type);
    }

private:
    double m_cap;
    double m_value = 0.0;
};

class TypeRecorder : public ValObserverClient {
public:
    void handleValueChange(ValSubject&, DataChangeType type) override { types.push_back(type); }
    std::vector<DataChangeType> types;
};

class ValWidgetTest : public ::testing::Test {
protected:
    UiHarness ui{400, 300};

    Slider* slider(int y)
    {
        return ui.make<Slider>(Slider::InitArgs(Palette().highlight(), 200, 22, UifStd::getColourScheme()),
                               Glob::BottomLeft(20, y));
    }
    Checkbox* checkbox(int y)
    {
        return ui.make<Checkbox>(Checkbox::InitArgs(L"Loop", false, Checkbox::BoxFirst, 0, 0, UifStd::getColourScheme()),
                                 Glob::BottomLeft(20, y));
    }
};

TEST_F(ValWidgetTest, TwoCheckboxesOnOneValueShowEachOthersChanges)
{
    auto server = Cv::make<ValServer<bool>>(true);
    Checkbox* a = checkbox(20);
    Checkbox* b = checkbox(60);
    a->setDataAdaptor(makeServerAdaptor(server));
    b->setDataAdaptor(makeServerAdaptor(server));
    EXPECT_TRUE(a->getValue()) << "binding shows the current value at once";
    EXPECT_TRUE(b->getValue());

    ui.click(a);
    EXPECT_FALSE(server->getValue());
    EXPECT_FALSE(b->getValue());
    EXPECT_EQ(ui.owner().count(Checkbox::uncheckedMsg), 1u) << "only the box the user clicked tells its owner";

    server->setValue(true);
    EXPECT_TRUE(a->getValue());
    EXPECT_TRUE(b->getValue());
    EXPECT_EQ(ui.owner().count(), 1u);
}

TEST_F(ValWidgetTest, TwoSlidersOnOneValueFollowDragsAndCode)
{
    auto server = Cv::make<ValServer<double>>(0.25);
    Slider* a = slider(20);
    Slider* b = slider(80);
    a->setDataAdaptor(makeServerAdaptor(server));
    b->setDataAdaptor(makeServerAdaptor(server));
    EXPECT_DOUBLE_EQ(b->getValue(), 0.25);

    TypeRecorder recorder;
    server->addObserver(recorder);
    const int y = a->getHeight() / 2;
    const int x80 = a->valueToX(0.8);
    ui.drag(a, {a->valueToX(0.25), y}, {x80, y}, 3);
    EXPECT_DOUBLE_EQ(server->getValue(), a->xToValue(x80));
    EXPECT_DOUBLE_EQ(b->getValue(), server->getValue());
    ASSERT_EQ(recorder.types.size(), 3u) << "one change per drag step";
    EXPECT_EQ(recorder.types.front(), kDataChangeInteractive);

    // A key is a whole gesture in itself.
    ui.focus(a);
    ui.pressKey(Event::KeyHome);
    EXPECT_EQ(recorder.types.back(), kDataChangeFinal);
    EXPECT_DOUBLE_EQ(b->getValue(), 0.0);

    // Dragging the other one, then setting from code.
    const int x10 = b->valueToX(0.1);
    ui.drag(b, {b->valueToX(0.0), y}, {x10, y});
    EXPECT_DOUBLE_EQ(a->getValue(), b->xToValue(x10));
    server->setValue(0.6);
    EXPECT_DOUBLE_EQ(a->getValue(), 0.6);
    EXPECT_DOUBLE_EQ(b->getValue(), 0.6);
    server->removeObserver(recorder);
}

TEST_F(ValWidgetTest, ACorrectedProposalIsShownAsStored)
{
    Cv::Ptr<ValAdaptor<double>> capped(new CappedAdaptor(0.5));
    Slider* s = slider(20);
    s->setDataAdaptor(capped);
    ui.click(s, XY<int>(s->valueToX(0.9), s->getHeight() / 2));
    EXPECT_DOUBLE_EQ(capped->getValue(), 0.5);
    EXPECT_DOUBLE_EQ(s->getValue(), 0.5) << "the thumb goes back to what the source kept";
}

TEST_F(ValWidgetTest, SetPositionFromCodeDoesNotWriteTheValue)
{
    auto server = Cv::make<ValServer<double>>(0.3);
    Slider* s = slider(20);
    s->setDataAdaptor(makeServerAdaptor(server));
    s->setPosition(0.9);
    EXPECT_DOUBLE_EQ(server->getValue(), 0.3);
}

TEST_F(ValWidgetTest, EitherSideMayGoFirst)
{
    auto server = Cv::make<ValServer<double>>(0.0);
    Slider* s = slider(20);
    {
        Cv::Ptr<ValAdaptor<double>> adaptor = makeServerAdaptor(server);
        s->setDataAdaptor(adaptor);
        EXPECT_EQ(adaptor->getNumObservers(), 1u);
        Glob::destroy(s);
        EXPECT_EQ(adaptor->getNumObservers(), 0u) << "a destroyed widget leaves no dangling observer";
    }
    server->setValue(0.5); // nobody left to tell

    // The widget keeps the adaptor alive; unbinding releases it and the widget keeps its last value.
    Slider* t = slider(80);
    t->setDataAdaptor(makeServerAdaptor(server));
    EXPECT_DOUBLE_EQ(t->getValue(), 0.5);
    t->unbind();
    EXPECT_FALSE(t->isBound());
    server->setValue(0.7);
    EXPECT_DOUBLE_EQ(t->getValue(), 0.5);
    ui.click(t, XY<int>(t->valueToX(0.2), t->getHeight() / 2));
    EXPECT_DOUBLE_EQ(server->getValue(), 0.7);
}

TEST_F(ValWidgetTest, AnObserverMayDestroyTheWidgetThatMadeTheChange)
{
    auto server = Cv::make<ValServer<bool>>(false);
    Checkbox* c = checkbox(20);
    c->setDataAdaptor(makeServerAdaptor(server));

    struct Destroyer : ValObserverClient {
        Glob* victim = nullptr;
        void handleValueChange(ValSubject&, DataChangeType) override { Glob::destroy(victim); }
    } destroyer;
    destroyer.victim = c;
    server->addObserver(destroyer);
    ui.click(c);
    EXPECT_TRUE(server->getValue());
    EXPECT_FALSE(is_good_glob_ptr(c));
    EXPECT_EQ(ui.owner().count(), 0u) << "a destroyed box sends nothing";
    server->removeObserver(destroyer);
}

} // namespace
