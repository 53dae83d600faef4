// The widget tree: ownership and destruction order, liveness, named messages, widgets that die mid-dispatch,
// and making and finding widgets through GlobManager.

#include "UiTestWidgets.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

// Reports its own destruction and reads the sibling made before it, which must still be in memory then (the
// sanitizer build catches it if not). A sibling whose destruction was asked for already reports as dying.
class DyingGlob : public Glob {
public:
    DyingGlob(std::vector<std::string>& log, std::string label, DyingGlob* earlier)
        : Glob(10, 10)
        , m_log(log)
        , m_label(std::move(label))
        , m_earlier(earlier)
        , m_earlierStamp(earlier ? earlier->getIdStamp() : IdStamp())
    {
    }
    ~DyingGlob() override
    {
        std::string entry = m_label;
        if (m_earlier)
            entry += " saw " + m_earlier->m_label + (is_good_glob_ptr(m_earlier, m_earlierStamp) ? "" : " dying");
        m_log.push_back(entry);
    }

private:
    std::vector<std::string>& m_log;
    std::string m_label;
    DyingGlob* m_earlier;
    IdStamp m_earlierStamp;
};

} // namespace

TEST(GlobTree, ChildrenDieLastFirstWhileEarlierSiblingsStillLive)
{
    std::vector<std::string> log;
    auto* parent = new ProbeGlob(100, 100);
    auto* first = new DyingGlob(log, "first", nullptr);
    auto* second = new DyingGlob(log, "second", first);
    parent->addChild(first, Glob::BottomLeft());
    parent->addChild(second, Glob::BottomLeft());
    parent->addChild(new DyingGlob(log, "third", second), Glob::BottomLeft());
    delete parent;
    EXPECT_EQ(log, (std::vector<std::string> { "third saw second", "second saw first", "first" }));
}

TEST(GlobTree, ChildrenRemovedDuringADispatchStillDieLastFirst)
{
    UiHarness ui;
    std::vector<std::string> log;
    auto* panel = ui.make<ProbeGlob>(ProbeGlob::InitArgs(100, 100));
    auto* first = new DyingGlob(log, "first", nullptr);
    auto* second = new DyingGlob(log, "second", first);
    panel->addChild(first, Glob::BottomLeft());
    panel->addChild(second, Glob::BottomLeft());
    panel->addChild(new DyingGlob(log, "third", second), Glob::BottomLeft());
    panel->onEvent = [&](ProbeGlob& self, const Event& e) {
        if (!e.isMessage())
            return;
        self.removeAllChildren();
        EXPECT_TRUE(log.empty()) << "nothing is deleted while the message is being handled";
        EXPECT_EQ(self.numChildren(), 0u) << "but the children have left the tree";
    };
    ui.owner().sendMsg(panel, "clear");
    // Deleted after the message, last first; each still finds the one before it in memory, already dying.
    EXPECT_EQ(log, (std::vector<std::string> { "third saw second dying", "second saw first dying", "first" }));
}

TEST(GlobTree, StoredPointersAndStampsTellADeadWidget)
{
    auto* a = new ProbeGlob(10, 10);
    const IdStamp stamp = a->getIdStamp();
    EXPECT_TRUE(is_good_glob_ptr(a));
    EXPECT_TRUE(is_good_glob_ptr(a, stamp));
    delete a;
    EXPECT_FALSE(is_good_glob_ptr(a));
    EXPECT_FALSE(is_good_glob_ptr(a, stamp));

    // A new widget often lands at the freed address; the stamp still tells the two apart.
    auto* b = new ProbeGlob(10, 10);
    EXPECT_TRUE(is_good_glob_ptr(b));
    EXPECT_FALSE(is_good_glob_ptr(b, stamp));
    EXPECT_TRUE(is_good_glob_ptr(b, b->getIdStamp()));
    delete b;

    EXPECT_FALSE(is_good_glob_ptr(nullptr));
    EXPECT_FALSE(is_good_glob_ptr(reinterpret_cast<Glob*>(0x1230)));
}

TEST(GlobTree, LivenessRegistryStaysExactThroughManyBirthsAndDeaths)
{
    // Interleaved creation and destruction exercises the registry's probing and hole filling.
    std::vector<std::unique_ptr<ProbeGlob>> alive;
    std::vector<const Glob*> dead;
    for (int round = 0; round < 5000; ++round) {
        alive.push_back(std::make_unique<ProbeGlob>(1, 1));
        if (round % 3 == 2) {
            const size_t victim = static_cast<size_t>(round * 7919) % alive.size();
            dead.push_back(alive[victim].get());
            alive.erase(alive.begin() + static_cast<long>(victim));
        }
    }
    for (const auto& g : alive)
        ASSERT_TRUE(is_good_glob_ptr(g.get()));
    size_t deadSeenAlive = 0;
    for (const Glob* g : dead) {
        bool reused = false;
        for (const auto& a : alive)
            reused |= a.get() == g;
        if (!reused && is_good_glob_ptr(g))
            ++deadSeenAlive;
    }
    EXPECT_EQ(deadSeenAlive, 0u);
}

TEST(GlobTree, DetachGivesTheChildAwayAndCopiesAreNewWidgets)
{
    ProbeGlob parent(100, 100);
    Glob* child = parent.addChild(new ProbeGlob(10, 10), Glob::BottomLeft(5, 5));
    child->setName("original");
    EXPECT_EQ(parent.detachChild(child), child);
    EXPECT_EQ(child->parent(), nullptr);
    EXPECT_EQ(parent.numChildren(), 0u);

    ProbeGlob copy(*static_cast<ProbeGlob*>(child));
    EXPECT_NE(copy.getIdStamp(), child->getIdStamp());
    delete child;
    EXPECT_EQ(GlobManager::find("original"), &copy) << "the copy keeps the name after the original dies";
    EXPECT_EQ(parent.addChild(&parent, Glob::BottomLeft()), nullptr) << "a widget cannot be its own child";
}

// ---------------------------------------------------------------------------------------------------------
// Named messages

TEST(GlobMessages, CallMsgReachesTheParentAsAMessageEvent)
{
    ProbeGlob parent(100, 100);
    auto* child = parent.addWidget<ProbeGlob>(ProbeGlob::InitArgs(10, 10), Glob::BottomLeft());
    EXPECT_TRUE(child->callMsg("child_clicked"));
    ASSERT_EQ(parent.messages.size(), 1u);
    EXPECT_EQ(parent.messages[0].name, "child_clicked");
    EXPECT_EQ(parent.messages[0].sender, child);
}

TEST(GlobMessages, AnExplicitOwnerHearsInsteadOfTheParentUntilItDies)
{
    ProbeGlob parent(100, 100);
    auto* child = parent.addWidget<ProbeGlob>(ProbeGlob::InitArgs(10, 10), Glob::BottomLeft());
    auto* listener = new ProbeGlob(10, 10);
    child->setOwner(listener);
    child->callMsg("to_owner");
    EXPECT_EQ(listener->messages.size(), 1u);
    EXPECT_TRUE(parent.messages.empty());

    delete listener;
    EXPECT_EQ(child->owner(), &parent);
    child->callMsg("after_owner_died");
    ASSERT_EQ(parent.messages.size(), 1u);
    EXPECT_EQ(parent.messages[0].name, "after_owner_died");
}

TEST(GlobMessages, MessagesToDeadOrMissingTargetsGoNowhere)
{
    ProbeGlob sender(10, 10);
    auto* target = new ProbeGlob(10, 10);
    delete target;
    EXPECT_TRUE(sender.sendMsg(target, "lost"));
    EXPECT_TRUE(sender.sendMsg(nullptr, "lost"));
    EXPECT_TRUE(sender.callMsg("no_owner")) << "a widget without parent or owner sends into the void";
}

TEST(GlobMessages, WidgetDestroyedInsideItsOwnHandlerLivesUntilTheDispatchEnds)
{
    UiHarness ui;
    auto* doomed = ui.make<ProbeGlob>(ProbeGlob::InitArgs(40, 40), Glob::BottomLeft(10, 10));
    bool stillUsable = false;
    doomed->onEvent = [&](ProbeGlob& self, const Event& e) {
        if (!e.isPress())
            return;
        Glob::destroy(&self);
        // Removed from sight and dead to liveness checks at once, yet its memory is still there.
        stillUsable = self.getWidth() == 40 && !is_good_glob_ptr(&self) && self.parent() == nullptr;
    };
    ui.click(doomed);
    EXPECT_TRUE(stillUsable);
    EXPECT_FALSE(is_good_glob_ptr(doomed));
    EXPECT_EQ(ui.owner().numChildren(), 0u);
}

TEST(GlobMessages, ParentRemovingTheClickedChildFromAMessageHandlerIsSafe)
{
    UiHarness ui;
    auto* button = ui.make<ProbeGlob>(ProbeGlob::InitArgs(40, 20), Glob::BottomLeft(10, 10));
    int reportsAfterDeath = 0;
    button->onEvent = [&](ProbeGlob& self, const Event& e) {
        if (!e.isPress())
            return;
        if (!self.callMsg("button_pressed"))
            return; // gone: touch nothing
        ++reportsAfterDeath;
    };
    ui.owner().onMessage = [&](const RecordingOwner::Received& r) { ui.owner().removeChild(r.sender); };
    ui.click(button);
    EXPECT_EQ(reportsAfterDeath, 0);
    EXPECT_FALSE(is_good_glob_ptr(button));
    EXPECT_EQ(ui.owner().count("button_pressed"), 1u);
}

// ---------------------------------------------------------------------------------------------------------
// GlobManager

TEST(GlobManagerTest, MakesRegisteredTypesByNameAndFindsNamedWidgets)
{
    UiHarness ui;
    ASSERT_TRUE(GlobManager::registerType("probe",
        [](const GlobCreationInfo& info) { return new ProbeGlob(ProbeGlob::InitArgs(info.width, info.height)); }));
    EXPECT_FALSE(GlobManager::registerType("", [](const GlobCreationInfo&) { return nullptr; }));

    GlobCreationInfo info(30, 20);
    info.typeName = "probe";
    info.name = "trash";
    Glob* made = GlobManager::createGlob(info);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getSize(), XY<int>(30, 20));
    EXPECT_EQ(GlobManager::find("trash"), made);

    info.typeName = "no_such_type";
    EXPECT_EQ(GlobManager::createGlob(info), nullptr);

    ASSERT_TRUE(GlobManager::realize(made));
    EXPECT_FALSE(GlobManager::realize(nullptr));
    Glob::destroy(made);
    EXPECT_EQ(GlobManager::find("trash"), nullptr);
    GlobManager::unregisterType("probe");
}

TEST(GlobManagerTest, SafePositionsKeepPanelsOnTheScreen)
{
    UiHarness ui(800, 600);
    const int margin = UifStd::getWindowArrangement().screenMargin;
    EXPECT_EQ(
        GlobManager::getSafePosForGlob({ 790, 590 }, { 100, 50 }), XY<int>(800 - margin - 100, 600 - margin - 50));
    EXPECT_EQ(GlobManager::getSafePosForGlob({ -40, -40 }, { 100, 50 }), XY<int>(margin, margin));
    EXPECT_EQ(GlobManager::getSafePosForGlob({ 300, 200 }, { 100, 50 }), XY<int>(300, 200));
    ui.screen().mouseMove({ 400, 300 });
    EXPECT_EQ(GlobManager::getPosForGlob(XY<int>(100, 50)), XY<int>(350, 275));
}
