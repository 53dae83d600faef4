#include "toolkit/support/Notifier.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

// Records what it hears as "<message>@<type>".
struct Recorder {
    std::vector<std::string> heard;

    Cv::Ptr<iCallbackBase<int, NotifyMsg>> listener(const char* tag)
    {
        return Cv::makeListener<NotifyMsg>(
            [this, tag](const NotifyMsg& msg) { heard.push_back(std::string(tag) + ":" + msg.getMessage().str()); });
    }
};

struct Payload : public iObject {
    explicit Payload(int v)
        : value(v)
    {
    }
    int value;
};

enum eAction { actionPlay = 3, actionUndo = 27 };

} // namespace

TEST(Notifier, ListenersHearTheirTypeOrEveryType)
{
    Notifier notifier;
    Recorder recorder;
    const auto saves = notifier.registerNotification(recorder.listener("save"), 11);
    const auto all = notifier.addListener(recorder.listener("all"));

    notifier.issueNotification("created", 10);
    notifier.issueNotification("saved", 11);
    EXPECT_EQ(recorder.heard, (std::vector<std::string> { "all:created", "save:saved", "all:saved" }));
}

TEST(Notifier, ReleasedGuardHearsNothingMore)
{
    Notifier notifier;
    Recorder recorder;
    auto guard = notifier.addListener(recorder.listener("a"));
    auto explicitRelease = notifier.addListener(recorder.listener("b"));
    notifier.issueNotification("one", 1);

    guard = nullptr;
    explicitRelease->release();
    notifier.issueNotification("two", 1);
    EXPECT_EQ(recorder.heard, (std::vector<std::string> { "a:one", "b:one" }));
    EXPECT_EQ(notifier.getNumListeners(), 0u);
}

TEST(Notifier, ExplicitRemovalTakesEveryRegistrationOfTheListener)
{
    Notifier notifier;
    Recorder recorder;
    const auto listener = recorder.listener("x");
    const auto g1 = notifier.registerNotification(listener, 1);
    const auto g2 = notifier.registerNotification(listener, 2);
    EXPECT_TRUE(notifier.removeListener(listener));
    EXPECT_FALSE(notifier.removeListener(listener));
    notifier.issueNotification("m", 1);
    notifier.issueNotification("m", 2);
    EXPECT_TRUE(recorder.heard.empty());
}

TEST(Notifier, RemovalDuringARoundStopsLaterCallsInIt)
{
    Notifier notifier;
    std::vector<std::string> heard;
    Cv::Ptr<Cv::Guard> second;
    Cv::Ptr<Cv::Guard> self;
    const auto first = notifier.addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg&) {
        heard.push_back("first");
        second = nullptr; // removes a listener that has not been called yet
    }));
    second = notifier.addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg&) { heard.push_back("second"); }));
    self = notifier.addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg&) {
        heard.push_back("self");
        self = nullptr; // removes itself while it runs: it must survive until it returns
        heard.push_back("self still running");
    }));

    notifier.issueNotification("", 0);
    notifier.issueNotification("", 0);
    EXPECT_EQ(heard, (std::vector<std::string> { "first", "self", "self still running", "first" }));
}

TEST(Notifier, ListenerAddedDuringARoundHearsOnlyTheNextOne)
{
    Notifier notifier;
    Recorder recorder;
    std::vector<Cv::Ptr<Cv::Guard>> added;
    const auto adder = notifier.addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg&) {
        if (added.empty())
            added.push_back(notifier.addListener(recorder.listener("late")));
    }));
    notifier.issueNotification("first", 0);
    EXPECT_TRUE(recorder.heard.empty());
    notifier.issueNotification("second", 0);
    EXPECT_EQ(recorder.heard, (std::vector<std::string> { "late:second" }));
}

TEST(Notifier, NestedNotificationFromAListener)
{
    Notifier notifier;
    Recorder recorder;
    const auto forwarder = notifier.registerNotification(Cv::makeListener<NotifyMsg>([&](const NotifyMsg& msg) {
        notifier.issueNotification(LightweightString<char>("re:") + msg.getMessage(), 2);
    }),
        1);
    Cv::Ptr<Cv::Guard> removedInNested;
    const auto remover = notifier.registerNotification(
        Cv::makeListener<NotifyMsg>([&](const NotifyMsg&) { removedInNested = nullptr; }), 2);
    removedInNested = notifier.addListener(recorder.listener("outer"));

    // The nested round (type 2) removes "outer" before the outer round (type 1) reaches it.
    notifier.issueNotification("ping", 1);
    EXPECT_TRUE(recorder.heard.empty());
    EXPECT_EQ(notifier.getNumListeners(), 2u);
}

TEST(Notifier, DeliveryRunsOnTheReportingThread)
{
    Notifier notifier;
    std::thread::id heardOn;
    const auto guard = notifier.addListener(
        Cv::makeListener<NotifyMsg>([&](const NotifyMsg&) { heardOn = std::this_thread::get_id(); }));
    std::thread::id reporter;
    std::thread([&] {
        reporter = std::this_thread::get_id();
        notifier.issueNotification("from worker", 7);
    }).join();
    EXPECT_EQ(heardOn, reporter);
    EXPECT_NE(heardOn, std::this_thread::get_id());
}

TEST(Notifier, NotifierAndGuardsMayDieInEitherOrder)
{
    Recorder recorder;
    Cv::Ptr<Cv::Guard> lateGuard;
    {
        Notifier notifier;
        lateGuard = notifier.addListener(recorder.listener("x"));
    }
    lateGuard = nullptr; // the notifier is gone: releasing does nothing

    auto notifier = std::make_unique<Notifier>();
    const auto killer = notifier->addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg&) { notifier.reset(); }));
    const auto after = notifier->addListener(recorder.listener("after"));
    notifier->issueNotification("last words", 0);
    EXPECT_EQ(notifier, nullptr);
    EXPECT_TRUE(recorder.heard.empty());
}

TEST(Notifier, MessageCarriesTextObjectOrBoth)
{
    Notifier notifier;
    std::vector<int> values;
    std::vector<std::string> texts;
    const auto guard = notifier.addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg& msg) {
        texts.push_back(msg.getMessage().str());
        const auto payload = msg.getObjectAs<Payload>();
        values.push_back(payload ? payload->value : -1);
    }));
    notifier.issueNotification(NotifyMsg(Cv::make<Payload>(12)), 12);
    notifier.issueNotification(NotifyMsg("both", Cv::make<Payload>(5)), 1);
    notifier.issueNotification(NotifyMsg(), 1);
    EXPECT_EQ(values, (std::vector<int> { 12, 5, -1 }));
    EXPECT_EQ(texts, (std::vector<std::string> { "", "both", "" }));
    EXPECT_TRUE(NotifyMsg().empty());
}

TEST(Notifier, CopyStartsWithoutListeners)
{
    Notifier original;
    Recorder recorder;
    const auto guard = original.addListener(recorder.listener("o"));
    Notifier copy(original);
    copy.issueNotification("to copy", 0);
    EXPECT_TRUE(recorder.heard.empty());
    copy = original;
    EXPECT_EQ(copy.getNumListeners(), 0u);
    EXPECT_EQ(original.getNumListeners(), 1u);
}

TEST(GenericNotifier, TypedValuesAndOverriddenEntryPoint)
{
    // A subject that records what it reports, the way a manager may extend issueNotification.
    class ActionNotifier : public GenericNotifier<eAction> {
    public:
        void issueNotification(const eAction& value, int type) override
        {
            ++issued;
            GenericNotifier<eAction>::issueNotification(value, type);
        }
        int issued = 0;
    };
    struct Handler {
        int handle(const eAction& action)
        {
            actions.push_back(action);
            return 0;
        }
        std::vector<eAction> actions;
    } handler;

    ActionNotifier notifier;
    const int type = NotifyMsgTypeDictionary::instance().getUIStateChangedType();
    const auto guard = notifier.registerNotification(Cv::makeListener(&handler, &Handler::handle), type);
    notifier.issueNotification(actionPlay, type);
    notifier.call(actionUndo, type); // bypasses the override
    notifier.issueNotification(actionUndo, type + 1);
    EXPECT_EQ(handler.actions, (std::vector<eAction> { actionPlay, actionUndo }));
    EXPECT_EQ(notifier.issued, 2);
}

TEST(Notifier, ConcurrentReportsAndRegistrationsAreSafe)
{
    Notifier notifier;
    std::atomic<int> heard { 0 };
    std::atomic<bool> stop { false };
    const auto steady
        = notifier.addListener(Cv::makeListener<NotifyMsg>([&](const NotifyMsg&) { heard.fetch_add(1); }));

    std::vector<std::thread> threads;
    for (int t = 0; t < 2; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 2000; ++i)
                notifier.issueNotification("tick", i % 3);
        });
    }
    threads.emplace_back([&] {
        while (!stop.load()) {
            auto churn = notifier.registerNotification(Cv::makeListener<NotifyMsg>([](const NotifyMsg&) {}), 1);
            churn = nullptr;
        }
    });
    threads[0].join();
    threads[1].join();
    stop.store(true);
    threads[2].join();
    EXPECT_EQ(heard.load(), 4000);
    EXPECT_EQ(notifier.getNumListeners(), 1u);
}

TEST(NotifyMsgTypeDictionary, NamesGetStableCodesAboveTheHandPickedOnes)
{
    NotifyMsgTypeDictionary dictionary;
    const int progress = dictionary.getType("task_progress");
    const int addition = dictionary.getType("task_addition");
    EXPECT_GE(progress, NotifyMsgTypeDictionary::firstType);
    EXPECT_NE(progress, addition);
    EXPECT_EQ(dictionary.getType("task_progress"), progress);
    EXPECT_EQ(dictionary.findType("task_addition"), addition);
    EXPECT_EQ(dictionary.getName(addition), "task_addition");

    EXPECT_EQ(dictionary.findType("never_registered"), NotifyMsgTypeDictionary::noType);
    EXPECT_EQ(dictionary.getType(""), NotifyMsgTypeDictionary::noType);
    EXPECT_TRUE(dictionary.getName(12).empty());
    EXPECT_TRUE(dictionary.getName(addition + 1000).empty());
}
