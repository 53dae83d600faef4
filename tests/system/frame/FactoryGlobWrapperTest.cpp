#include "frame/FactoryGlobWrapper.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/GlobManager.h"

#include <gtest/gtest.h>

namespace {

const Colour swatchColour(0.8, 0.1, 0.1);

// Fills itself with one colour, so that what it covers can be told from the margins.
class Swatch : public Glob {
public:
    using Glob::Glob;
    LightweightString<char> idstring() const override { return "Swatch"; }
    void drawBackground() override { painter().fillRect(getLocalBox(), swatchColour); }
};

// "FrameSwatchFill" takes the size it is offered; "FrameSwatchSmall" is always 40 x 30.
constexpr const char* fillType = "FrameSwatchFill";
constexpr const char* smallType = "FrameSwatchSmall";

StandardPanel::InitArgs argsFor(const char* typeName, uint16_t width = 300, uint16_t height = 200)
{
    StandardPanel::InitArgs args(UIString(L"Wrapped"), width, height);
    args.typeName = typeName;
    args.resizable = true;
    return args;
}

void expectAtUserTopLeft(const FactoryGlobWrapper& wrapper, const Glob* wrapped)
{
    ASSERT_NE(wrapped, nullptr);
    EXPECT_EQ(wrapped->getBox().left(), wrapper.getUserArea().left());
    EXPECT_EQ(wrapped->getBox().top(), wrapper.getUserArea().top());
}

} // namespace

class FactoryGlobWrapperTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        GlobManager::registerType(fillType, [](const GlobCreationInfo& info) { return new Swatch(info); });
        GlobManager::registerType(smallType, [](const GlobCreationInfo& info) { return new Swatch(40, 30, info.palette, info.canvas); });
    }
    void TearDown() override
    {
        GlobManager::unregisterType(fillType);
        GlobManager::unregisterType(smallType);
    }

    FactoryGlobWrapper* show(const StandardPanel::InitArgs& args) { return ui.makeTopLevel<FactoryGlobWrapper>(args, { 100, 100 }); }
    Colour marginColour(const Glob* wrapper) { return wrapper->getPalette().window(3); }

    UiHarness ui { 800, 600 };
};

TEST_F(FactoryGlobWrapperTest, WrapsTheRegisteredTypeAsItsOnlyChildFillingTheUserArea)
{
    StandardPanel::InitArgs args = argsFor(fillType);
    args.name = "frame-wrapper-under-test";
    FactoryGlobWrapper* wrapper = show(args);
    Glob* wrapped = wrapper->getGlob();
    expectAtUserTopLeft(*wrapper, wrapped);
    EXPECT_EQ(wrapper->numChildren(), 1u);
    EXPECT_EQ(wrapped->getSize(), wrapper->getUserArea().size());
    EXPECT_EQ(wrapper->idstring().str(), "FactoryGlobWrapper:Swatch");
    // The name belongs to the panel, not to what it wraps.
    EXPECT_EQ(GlobManager::find("frame-wrapper-under-test"), wrapper);

    wrapper->setVisible(false);
    EXPECT_FALSE(wrapped->isVisible());
    wrapper->setVisible(true);
    EXPECT_TRUE(wrapped->isShowing());
}

TEST_F(FactoryGlobWrapperTest, MarginsAroundASmallerWidgetArePaintedInWindowShadeThreeAndFollowAResize)
{
    FactoryGlobWrapper* wrapper = show(argsFor(smallType));
    Glob* wrapped = wrapper->getGlob();
    expectAtUserTopLeft(*wrapper, wrapped);
    ASSERT_FALSE(marginColour(wrapper).isCloseTo(wrapper->getPalette().window())) << "shade 3 must differ from the background";

    for (int round = 0; round < 2; ++round) {
        const GlobBox userArea = wrapper->getUserArea();
        const GlobBox covered = wrapped->getBox();
        EXPECT_TRUE(ui.pixelAt(wrapper, { covered.right() - 1, covered.bottom() }).isCloseTo(swatchColour));
        // Right of the widget, level with it and down at the bottom of the user area.
        EXPECT_TRUE(ui.pixelAt(wrapper, { covered.right(), covered.top() - 1 }).isCloseTo(marginColour(wrapper)));
        EXPECT_TRUE(ui.pixelAt(wrapper, { userArea.right() - 1, userArea.bottom() }).isCloseTo(marginColour(wrapper)));
        // Below the widget, from the user area's left edge.
        EXPECT_TRUE(ui.pixelAt(wrapper, { userArea.left(), covered.bottom() - 1 }).isCloseTo(marginColour(wrapper)));
        // The title bar is drawn over the background, not painted as a margin.
        EXPECT_FALSE(ui.pixelAt(wrapper, wrapper->getTitleBarBox().centre()).isCloseTo(marginColour(wrapper)));

        // Growing the panel grows the widget by as much, and it stays at the top-left.
        wrapper->resize(350, 260);
        EXPECT_EQ(wrapped->getSize(), XY<int>(90, 90));
        expectAtUserTopLeft(*wrapper, wrapped);
    }
}

TEST_F(FactoryGlobWrapperTest, DraggingAnEdgeCannotSqueezeTheWrappedWidgetBelowItsMadeSize)
{
    FactoryGlobWrapper* wrapper = show(argsFor(fillType, 420, 260));
    Glob* wrapped = wrapper->getGlob();
    const XY<int> made = wrapped->getSize();
    const int middle = wrapper->getHeight() / 2;
    ui.drag(wrapper, { wrapper->getWidth() - 2, middle }, { -300, middle });
    EXPECT_EQ(wrapper->getWidth(), 420);
    EXPECT_EQ(wrapped->getSize(), made);
    ui.drag(wrapper, { wrapper->getWidth() - 2, middle }, { wrapper->getWidth() + 48, middle });
    EXPECT_EQ(wrapper->getWidth(), 470);
    EXPECT_EQ(wrapped->getWidth(), made.x + 50);
}

TEST_F(FactoryGlobWrapperTest, CopiesAndAssignmentsMakeAWidgetOfTheirOwnAtTheSourcesSize)
{
    FactoryGlobWrapper* original = show(argsFor(smallType));
    original->resize(320, 210);
    auto* copy = new FactoryGlobWrapper(*original);
    ui.show(copy, { 450, 100 });
    EXPECT_NE(copy->getGlob(), original->getGlob());
    EXPECT_EQ(copy->numChildren(), 1u);
    expectAtUserTopLeft(*copy, copy->getGlob());
    EXPECT_EQ(copy->getGlob()->getSize(), original->getGlob()->getSize());

    // Assigning replaces the target's widget, and the copy's widget outlives the original.
    FactoryGlobWrapper* target = show(argsFor(fillType));
    const GlobWatch replaced(target->getGlob());
    *target = *copy;
    const GlobWatch copiedWidget(copy->getGlob());
    Glob::destroy(original);
    ui.step();
    EXPECT_FALSE(replaced.alive());
    EXPECT_TRUE(copiedWidget.alive());
    EXPECT_EQ(target->numChildren(), 1u);
    expectAtUserTopLeft(*target, target->getGlob());
    EXPECT_EQ(target->getGlob()->getSize(), copy->getGlob()->getSize());
    EXPECT_TRUE(ui.pixelAt(copy->getGlob(), { 5, 5 }).isCloseTo(swatchColour));
}

// ---- Nothing to wrap

TEST_F(FactoryGlobWrapperTest, AnUnknownTypeGivesAnEmptyPanelThatStillDrawsResizesAndCopies)
{
    FactoryGlobWrapper* wrapper = show(argsFor("NoSuchWidgetType"));
    EXPECT_EQ(wrapper->getGlob(), nullptr);
    EXPECT_EQ(wrapper->numChildren(), 0u);
    EXPECT_EQ(wrapper->idstring().str(), "FactoryGlobWrapper");
    EXPECT_EQ(wrapper->getMinSize(), StandardPanel(argsFor("NoSuchWidgetType")).getMinSize());
    // The whole user area is uncovered.
    EXPECT_TRUE(ui.pixelAt(wrapper, wrapper->getUserArea().centre()).isCloseTo(marginColour(wrapper)));

    wrapper->resize(120, 90);
    FactoryGlobWrapper copy(*wrapper);
    EXPECT_EQ(copy.getGlob(), nullptr);
    *wrapper = copy;
    ui.flush();
    EXPECT_EQ(wrapper->numChildren(), 0u);
}

TEST_F(FactoryGlobWrapperTest, AWidgetDestroyedFromOutsideOrAFactoryOfNothingOrOfItselfLeavesItEmpty)
{
    FactoryGlobWrapper* wrapper = show(argsFor(fillType));
    Glob::destroy(wrapper->getGlob());
    EXPECT_EQ(wrapper->getGlob(), nullptr);
    wrapper->resize(400, 300);
    EXPECT_TRUE(ui.pixelAt(wrapper, { 20, 20 }).isCloseTo(marginColour(wrapper)));

    GlobManager::registerType("FrameNothing", [](const GlobCreationInfo&) { return nullptr; });
    EXPECT_EQ(show(argsFor("FrameNothing"))->getGlob(), nullptr);
    GlobManager::unregisterType("FrameNothing");

    // Made by its own name, a wrapper would wrap a wrapper of the same info, without end.
    GlobManager::registerType("FactoryGlobWrapper", [](const GlobCreationInfo& info) {
        return new FactoryGlobWrapper(StandardPanel::InitArgs(info));
    });
    Glob* selfWrapped = GlobManager::createGlob(argsFor("FactoryGlobWrapper"));
    GlobManager::unregisterType("FactoryGlobWrapper");
    ASSERT_NE(selfWrapped, nullptr);
    EXPECT_EQ(selfWrapped->numChildren(), 0u);
    Glob::destroy(selfWrapped);
}
