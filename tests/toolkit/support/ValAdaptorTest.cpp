#include "toolkit/support/ValAdaptor.h"

#include "toolkit/support/params/ChoiceParam.h"
#include "toolkit/support/params/NumericParams.h"
#include "toolkit/support/params/ParamText.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace GenericParam;
using WText = LightweightString<wchar_t>;

namespace {

// Stands in for a value widget: binds to one adaptor, shows what it hears, and can propose values.
template <typename T>
class FakeWidget : public ValObserverClient {
public:
    explicit FakeWidget(Cv::Ptr<ValAdaptor<T>> adaptor) : m_adaptor(std::move(adaptor))
    {
        m_adaptor->addObserver(*this);
        shown = m_adaptor->getValue();
    }

    void userSets(const T& value, DataChangeType type = kDataChangeFinal)
    {
        shown = value;
        m_adaptor->setValue(value, type, this);
    }

    void handleValueChange(ValSubject&, DataChangeType type) override
    {
        shown = m_adaptor->getValue();
        heard.push_back(shown);
        types.push_back(type);
        if (onChange)
            onChange();
    }
    void handleSubjectDestroyed(ValSubject&) override { ++subjectsLost; }

    T shown{};
    std::vector<T> heard;
    std::vector<DataChangeType> types;
    int subjectsLost = 0;
    std::function<void()> onChange;

private:
    Cv::Ptr<ValAdaptor<T>> m_adaptor;
};

Cv::Ptr<IntParam> makeLevel(int initial, int min = 0, int max = 0, bool ranged = false)
{
    return Cv::make<IntParam>(L"Level", "level", ResId(), initial, min, max, ranged);
}

} // namespace

TEST(ValAdaptor, TwoObserversOfOneServerStayInStep)
{
    auto server = Cv::make<ValServer<int>>(1);
    FakeWidget<int> slider(makeServerAdaptor(server));
    FakeWidget<int> box(makeServerAdaptor(server));

    slider.userSets(5, kDataChangeInteractive);
    EXPECT_EQ(server->getValue(), 5);
    EXPECT_EQ(box.shown, 5);
    EXPECT_EQ(box.types, std::vector<DataChangeType>{kDataChangeInteractive});
    EXPECT_TRUE(slider.heard.empty()); // the one who made the change is not told of it

    box.userSets(6);
    server->setValue(9); // a change from code reaches both
    EXPECT_EQ(slider.heard, (std::vector<int>{6, 9}));
    EXPECT_EQ(box.heard, (std::vector<int>{5, 9}));
}

TEST(ValAdaptor, ObserversSharingOneAdaptorHearEachOther)
{
    auto adaptor = makeServerAdaptor(Cv::make<ValServer<int>>(0));
    FakeWidget<int> a(adaptor);
    FakeWidget<int> b(adaptor);
    a.userSets(3);
    EXPECT_EQ(b.heard, std::vector<int>{3});
    EXPECT_TRUE(a.heard.empty());
}

TEST(ValAdaptor, IntAndDoubleViewsOfOneParameter)
{
    auto level = makeLevel(2, 0, 10, true);
    FakeWidget<double> slider(makeParamAdaptor<double>(level));
    FakeWidget<int> box(makeParamAdaptor<int>(level));
    ASSERT_EQ(slider.shown, 2.0);

    slider.userSets(3.7);
    EXPECT_EQ(level->getValue(), 4);
    // The int parameter stored 4, not 3.7: the slider is told so that it snaps to what was stored.
    EXPECT_EQ(slider.heard, std::vector<double>{4.0});
    EXPECT_EQ(box.heard, std::vector<int>{4});

    box.userSets(50); // clamped by the range to 10
    EXPECT_EQ(box.shown, 10);
    EXPECT_EQ(slider.shown, 10.0);

    auto gain = Cv::make<DoubleParam>(L"Gain", "gain", ResId(), 0.25);
    FakeWidget<int> rounded(makeParamAdaptor<int>(gain));
    EXPECT_EQ(rounded.shown, 0);
    gain->setValue(2.6);
    EXPECT_EQ(rounded.heard, std::vector<int>{3});
}

TEST(ValAdaptor, RejectedProposalIsCorrectedForItsOriginOnly)
{
    auto low = makeLevel(5);
    auto high = makeLevel(5);
    high->addValueConstraint(makeConstraint([low](const WText& proposed) {
        return *ParamText::readInteger(proposed) < low->getValue() ? low->getValueAsString() : proposed;
    }));
    FakeWidget<int> typing(makeParamAdaptor<int>(high));
    FakeWidget<WText> text(makeParamAdaptor<WText>(high));

    typing.userSets(3); // corrected back to 5, the value it already had: no change at all
    EXPECT_EQ(high->getValue(), 5);
    EXPECT_EQ(typing.shown, 5);
    EXPECT_EQ(typing.heard, std::vector<int>{5});
    EXPECT_TRUE(text.heard.empty()); // nothing changed, so nobody else is disturbed

    text.userSets(L"oops"); // unreadable: refused
    EXPECT_EQ(text.shown, L"5");
}

TEST(ValAdaptor, EchoingObserversComeToRest)
{
    auto server = Cv::make<ValServer<int>>(0);
    FakeWidget<int> a(makeServerAdaptor(server));
    FakeWidget<int> b(makeServerAdaptor(server));
    // Each writes back what it hears, as a careless widget might.
    a.onChange = [&a] { a.userSets(a.shown); };
    b.onChange = [&b] { b.userSets(b.shown); };
    a.userSets(7);
    EXPECT_EQ(server->getValue(), 7);
    EXPECT_EQ(b.heard, std::vector<int>{7});
    EXPECT_TRUE(a.heard.empty());
}

TEST(ValAdaptor, SourceSnapsDuringASetAreReportedOnceWithTheFinalValue)
{
    auto level = makeLevel(0);
    level->addValueChangeHandler(makeChangeHandler([raw = level.get()](const WText&) {
        if (raw->getValue() % 2 != 0)
            raw->setValue(raw->getValue() + 1);
    }));
    FakeWidget<int> setter(makeParamAdaptor<int>(level));
    FakeWidget<int> other(makeParamAdaptor<int>(level));
    setter.userSets(3);
    EXPECT_EQ(level->getValue(), 4);
    EXPECT_EQ(setter.heard, std::vector<int>{4});
    EXPECT_EQ(other.shown, 4);
}

TEST(ValAdaptor, ObserversAndAdaptorsDetachSafelyWhenDestroyed)
{
    auto level = makeLevel(0);
    const unsigned before = level->getNumValueChangeHandlers();
    auto adaptor = makeParamAdaptor<int>(level);
    EXPECT_EQ(level->getNumValueChangeHandlers(), before + 1);
    {
        FakeWidget<int> gone(adaptor);
        EXPECT_EQ(adaptor->getNumObservers(), 1u);
    }
    EXPECT_EQ(adaptor->getNumObservers(), 0u);
    level->setValue(1); // nobody dangling is called

    // An observer destroyed by an earlier observer mid-round is skipped, not called (the sanitizer build
    // would report the use after free).
    FakeWidget<int> killer(adaptor);
    auto* doomed = new FakeWidget<int>(adaptor);
    FakeWidget<int> last(adaptor);
    killer.onChange = [&doomed] {
        delete doomed;
        doomed = nullptr;
    };
    level->setValue(2);
    EXPECT_EQ(doomed, nullptr);
    EXPECT_EQ(last.heard, std::vector<int>{2});
    level->setValue(3);
    EXPECT_EQ(last.heard, (std::vector<int>{2, 3}));
    killer.onChange = nullptr;
}

TEST(ValAdaptor, AnAdaptorDestroyedFirstLetsItsObserversAndParameterGo)
{
    // Observes without holding a reference, as a widget's cache of its binding might.
    struct Listener : ValObserverClient {
        int changes = 0;
        int lost = 0;
        void handleValueChange(ValSubject&, DataChangeType) override { ++changes; }
        void handleSubjectDestroyed(ValSubject&) override { ++lost; }
    };
    auto level = makeLevel(0);
    const unsigned before = level->getNumValueChangeHandlers();
    auto adaptor = makeParamAdaptor<int>(level);
    Listener a;
    Listener b;
    adaptor->addObserver(a);
    adaptor->addObserver(b);
    level->setValue(1);
    EXPECT_EQ(a.changes, 1);

    adaptor = nullptr;
    EXPECT_EQ(level->getNumValueChangeHandlers(), before);
    EXPECT_EQ(a.lost, 1);
    EXPECT_EQ(b.lost, 1);
    level->setValue(2);
    EXPECT_EQ(a.changes, 1);

    // And a subject destroyed by one of its own observers stops the round cleanly.
    auto* server = new ValServer<int>(0);
    Listener first;
    struct Destroyer : ValObserverClient {
        ValServer<int>* target = nullptr;
        void handleValueChange(ValSubject&, DataChangeType) override
        {
            delete target;
            target = nullptr;
        }
    } destroyer;
    destroyer.target = server;
    Listener after;
    server->addObserver(first);
    server->addObserver(destroyer);
    server->addObserver(after);
    server->setValue(1);
    EXPECT_EQ(first.changes, 1);
    EXPECT_EQ(after.changes, 0);
    EXPECT_EQ(after.lost, 1);
    EXPECT_EQ(first.lost, 1);
}

TEST(ValAdaptor, ParamAdaptorsFitOnlyMatchingKinds)
{
    auto choice = Cv::make<ChoiceParam>(L"Mode", "mode", ResId(), 20u,
                                        std::vector<ChoiceParam::Choice>{{L"A", 10}, {L"B", 20}});
    EXPECT_FALSE(makeParamAdaptor<bool>(choice));
    EXPECT_FALSE(makeParamAdaptor<double>(choice));
    EXPECT_FALSE(makeParamAdaptor<int>(Cv::Ptr<iParam>()));

    FakeWidget<int> menu(makeParamAdaptor<int>(choice));
    FakeWidget<WText> text(makeParamAdaptor<WText>(choice));
    EXPECT_EQ(menu.shown, 20);
    menu.userSets(10);
    EXPECT_EQ(text.shown, L"10");
    menu.userSets(-1); // "no choice" is not among the entries: refused and corrected
    EXPECT_EQ(menu.shown, 10);
    EXPECT_EQ(choice->getValue(), 10u);
}
