#include "frame/FactoryGlobWrapper.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/GlobManager.h"

#include <gtest/gtest.h>

namespace {

const Colour swatchColour(0.8, 0.1, 0.1);

// A widget that fills itself with one colour, so that what it covers can be told from the margins.
class Swatch : public Glob {
public:
    using Glob::Glob;
    LightweightString<char> idstring() const override { return "Swatch"; }
    void drawBackground() override { painter().fillRect(getLocalBox(), swatchColour); }
};

// Registered types: "FrameSwatchFill" takes the size it is given; "FrameSwatchSmall" is always 40 x 30.
constexpr const char* fillType = "FrameSwatchFill";
constexpr const char* smallType = "FrameSwatchSmall";

StandardPanel::InitArgs argsFor(const char* typeName, uint16_t width = 300, uint16_t height = 200)
{
    StandardPanel::InitArgs args(UIString(L"Wrapped"), width, height);
    args.typeName = typeName;
    args.resizable = true;
    return args;
}

// Where the wrapped widget sits, measured against the panel's user area.
void expectAtUserTopLeft(const FactoryGlobWrapper& wrapper, const Glob* wrapped)
{
    const GlobBox userArea = wrapper.getUserArea();
    EXPECT_EQ(wrapped->getBox().left(), userArea.left());
    EXPECT_EQ(wrapped->getBox().top(), userArea.top());
}

} // namespace

class FactoryGlobWrapperTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        GlobManager::registerType(fillType, [](const GlobCreationInfo& info) { return new Swatch(info); });
        GlobManager::registerType(smallType, [](const GlobCreationInfo& info) {
            return new Swatch(40, 30, info.palette, info.canvas);
        });
    }
    void TearDown() override
    {
        GlobManager::unregisterType(fillType);
        GlobManager::unregisterType(smallType);
    }

    FactoryGlobWrapper* show(const StandardPanel::InitArgs& args, XY<int> at = { 100, 100 })
    {
        return ui.makeTopLevel<FactoryGlobWrapper>(args, at);
    }

    UiHarness ui { 800, 600 };
};

TEST_F(FactoryGlobWrapperTest, WrapsTheRegisteredTypeFillingTheUserArea)
{
    FactoryGlobWrapper* wrapper = show(argsFor(fillType));
    Glob* wrapped = wrapper->getGlob();
    ASSERT_NE(wrapped, nullptr);
    EXPECT_EQ(wrapper->numChildren(), 1u);
    EXPECT_EQ(wrapper->child(0), wrapped);
    EXPECT_EQ(wrapped->getSize(), wrapper->getUserArea().size());
    expectAtUserTopLeft(*wrapper, wrapped);
    EXPECT_EQ(wrapper->idstring().str(), "FactoryGlobWrapper:Swatch");
    EXPECT_TRUE(wrapped->getPalette() == wrapper->getPalette());
}

TEST_F(FactoryGlobWrapperTest, TheNameBelongsToThePanelNotToTheWrappedWidget)
{
    StandardPanel::InitArgs args = argsFor(fillType);
    args.name = "frame-wrapper-under-test";
    FactoryGlobWrapper* wrapper = show(args);
    EXPECT_EQ(GlobManager::find("frame-wrapper-under-test"), wrapper);
    EXPECT_TRUE(wrapper->getGlob()->getName().empty());
}

TEST_F(FactoryGlobWrapperTest, MarginsAroundASmallerWidgetArePaintedInWindowShadeThree)
{
    FactoryGlobWrapper* wrapper = show(argsFor(smallType));
    const Glob* wrapped = wrapper->getGlob();
    ASSERT_NE(wrapped, nullptr);
    ASSERT_EQ(wrapped->getSize(), XY<int>(40, 30));
    expectAtUserTopLeft(*wrapper, wrapped);

    const GlobBox userArea = wrapper->getUserArea();
    const GlobBox covered = wrapped->getBox();
    const Colour margin = wrapper->getPalette().window(3);
    ASSERT_FALSE(margin.isCloseTo(wrapper->getPalette().window())) << "shade 3 must differ from the plain background";

    EXPECT_TRUE(ui.pixelAt(wrapper, { covered.left() + 20, covered.bottom() + 15 }).isCloseTo(swatchColour));
    // Right of the widget, level with it and at the bottom of the user area.
    EXPECT_TRUE(ui.pixelAt(wrapper, { covered.right() + 1, covered.top() - 1 }).isCloseTo(margin));
    EXPECT_TRUE(ui.pixelAt(wrapper, { userArea.right() - 1, userArea.bottom() }).isCloseTo(margin));
    // Below the widget, from the user area's left edge.
    EXPECT_TRUE(ui.pixelAt(wrapper, { userArea.left(), covered.bottom() - 1 }).isCloseTo(margin));
    EXPECT_TRUE(ui.pixelAt(wrapper, { covered.right() - 1, userArea.bottom() }).isCloseTo(margin));
    // The title bar is drawn over the background, not painted as a margin.
    const GlobBox bar = wrapper->getTitleBarBox();
    EXPECT_FALSE(ui.pixelAt(wrapper, { bar.left() + 2, bar.bottom() + 2 }).isCloseTo(margin));
}

TEST_F(FactoryGlobWrapperTest, ResizingThePanelResizesTheWrappedWidgetByAsMuchAndKeepsItAtTheTop)
{
    FactoryGlobWrapper* wrapper = show(argsFor(smallType));
    Glob* wrapped = wrapper->getGlob();
    wrapper->resize(350, 260);
    EXPECT_EQ(wrapped->getSize(), XY<int>(90, 90));
    expectAtUserTopLeft(*wrapper, wrapped);
    // The margins stay where they were relative to the top-left, so they are painted in their new places.
    const GlobBox userArea = wrapper->getUserArea();
    EXPECT_TRUE(ui.pixelAt(wrapper, { userArea.right() - 1, userArea.bottom() }).isCloseTo(wrapper->getPalette().window(3)));
    EXPECT_TRUE(ui.pixelAt(wrapper, { wrapped->getBox().right() - 1, wrapped->getBox().bottom() }).isCloseTo(swatchColour));
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
    // Growing is free, and the widget follows.
    ui.drag(wrapper, { wrapper->getWidth() - 2, middle }, { wrapper->getWidth() + 48, middle });
    EXPECT_EQ(wrapper->getWidth(), 470);
    EXPECT_EQ(wrapped->getWidth(), made.x + 50);
}

TEST_F(FactoryGlobWrapperTest, HidingThePanelHidesTheWrappedWidget)
{
    FactoryGlobWrapper* wrapper = show(argsFor(fillType));
    wrapper->setVisible(false);
    EXPECT_FALSE(wrapper->getGlob()->isVisible());
    wrapper->setVisible(true);
    EXPECT_TRUE(wrapper->getGlob()->isVisible());
    EXPECT_TRUE(wrapper->getGlob()->isShowing());
}

TEST_F(FactoryGlobWrapperTest, ACopyMakesAWidgetOfItsOwnAtTheOriginalsCurrentSize)
{
    FactoryGlobWrapper* original = show(argsFor(smallType));
    original->resize(320, 210);
    FactoryGlobWrapper* copy = new FactoryGlobWrapper(*original);
    ui.show(copy, { 450, 100 });

    ASSERT_NE(copy->getGlob(), nullptr);
    EXPECT_NE(copy->getGlob(), original->getGlob());
    EXPECT_EQ(copy->getGlob()->parent(), copy);
    EXPECT_EQ(copy->numChildren(), 1u);
    EXPECT_EQ(copy->getGlob()->getSize(), original->getGlob()->getSize());
    expectAtUserTopLeft(*copy, copy->getGlob());
    EXPECT_EQ(copy->idstring(), original->idstring());

    // The copy's widget outlives the original.
    const GlobWatch copiedWidget(copy->getGlob());
    Glob::destroy(original);
    EXPECT_TRUE(copiedWidget.alive());
    EXPECT_TRUE(ui.pixelAt(copy->getGlob(), { 5, 5 }).isCloseTo(swatchColour));
}

TEST_F(FactoryGlobWrapperTest, AssigningReplacesTheWrappedWidget)
{
    FactoryGlobWrapper* target = show(argsFor(fillType));
    const GlobWatch oldWidget(target->getGlob());
    FactoryGlobWrapper source(argsFor(smallType));
    *target = source;
    ui.step();
    EXPECT_FALSE(oldWidget.alive());
    ASSERT_NE(target->getGlob(), nullptr);
    EXPECT_NE(target->getGlob(), source.getGlob());
    EXPECT_EQ(target->numChildren(), 1u);
    EXPECT_EQ(target->getGlob()->getSize(), XY<int>(40, 30));
    expectAtUserTopLeft(*target, target->getGlob());
}

TEST_F(FactoryGlobWrapperTest, AWrappedWidgetDestroyedFromOutsideIsForgotten)
{
    FactoryGlobWrapper* wrapper = show(argsFor(fillType));
    Glob::destroy(wrapper->getGlob());
    EXPECT_EQ(wrapper->getGlob(), nullptr);
    wrapper->resize(400, 300);
    wrapper->setVisible(false);
    wrapper->setVisible(true);
    EXPECT_TRUE(ui.pixelAt(wrapper, { 20, 20 }).isCloseTo(wrapper->getPalette().window(3)));
}

// ---- Nothing to wrap

TEST_F(FactoryGlobWrapperTest, AnUnknownTypeGivesAnEmptyPanelThatStillBehaves)
{
    FactoryGlobWrapper* wrapper = show(argsFor("NoSuchWidgetType"));
    EXPECT_EQ(wrapper->getGlob(), nullptr);
    EXPECT_EQ(wrapper->numChildren(), 0u);
    EXPECT_EQ(wrapper->idstring().str(), "FactoryGlobWrapper");
    EXPECT_EQ(wrapper->getMinSize(), StandardPanel(argsFor("NoSuchWidgetType")).getMinSize());

    // Drawn: the whole user area is uncovered.
    const GlobBox userArea = wrapper->getUserArea();
    EXPECT_TRUE(ui.pixelAt(wrapper, userArea.centre()).isCloseTo(wrapper->getPalette().window(3)));

    wrapper->resize(120, 90);
    wrapper->setVisible(false);
    wrapper->setVisible(true);
    FactoryGlobWrapper copy(*wrapper);
    EXPECT_EQ(copy.getGlob(), nullptr);
    EXPECT_EQ(copy.numChildren(), 0u);
    *wrapper = copy;
    ui.flush();
    EXPECT_EQ(wrapper->numChildren(), 0u);
}

TEST_F(FactoryGlobWrapperTest, AFactoryThatMakesNothingOrAWrapperOfItselfGivesAnEmptyPanel)
{
    GlobManager::registerType("FrameNothing", [](const GlobCreationInfo&) { return nullptr; });
    // Made by its own name, a wrapper would wrap a wrapper of the same info, and so on without end.
    GlobManager::registerType("FactoryGlobWrapper", [](const GlobCreationInfo& info) {
        return new FactoryGlobWrapper(StandardPanel::InitArgs(info));
    });

    EXPECT_EQ(show(argsFor("FrameNothing"))->getGlob(), nullptr);
    Glob* selfWrapped = GlobManager::createGlob(argsFor("FactoryGlobWrapper"));
    ASSERT_NE(selfWrapped, nullptr);
    EXPECT_EQ(selfWrapped->numChildren(), 0u);

    Glob::destroy(selfWrapped);
    GlobManager::unregisterType("FrameNothing");
    GlobManager::unregisterType("FactoryGlobWrapper");
}
