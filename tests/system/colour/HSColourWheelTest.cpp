#include "colour/HSColourWheel.h"

#include "frame/StartupSettings.h"
#include "toolkit/support/ValAdaptor.h"
#include "toolkit/support/ValServer.h"
#include "toolkit/testing/UiHarness.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Hears every colour published to the value the wheel is bound to.
class PublishedColours : public ValObserverClient {
public:
    explicit PublishedColours(ValServer<ColourData>& server) : m_server(server) { server.addObserver(*this); }
    void handleValueChange(ValSubject&, DataChangeType type) override
    {
        values.push_back(m_server.getValue());
        types.push_back(type);
    }

    std::vector<ColourData> values;
    std::vector<DataChangeType> types;

private:
    ValServer<ColourData>& m_server;
};

} // namespace

// A wheel of radius 100 whose centre lies at (104, 104) of the widget, bound to a value.
class ColourWheel : public ::testing::Test {
protected:
    ColourWheel()
    {
        wheel = ui.make<HSColourWheel>(HSColourWheel::InitArgs(208, 0.75, 4), Glob::BottomLeft(20, 20));
        wheel->setDataAdaptor(makeServerAdaptor(server));
    }

    XY<int> at(int dx, int dy) const { return {104 + dx, 104 + dy}; }
    const ColourData& lastPublished() const { return published.values.back(); }

    UiHarness ui;
    Cv::Ptr<ValServer<ColourData>> server = Cv::make<ValServer<ColourData>>(ColourData(0, 0, 0.75));
    PublishedColours published{*server};
    HSColourWheel* wheel = nullptr;
};

TEST_F(ColourWheel, DraggingTheCursorPublishesTheHueAndSaturationOfWhereItStops)
{
    ui.drag(wheel, at(0, 0), at(50, 0));
    ASSERT_FALSE(published.values.empty());
    EXPECT_NEAR(lastPublished().hue, 256.0, 1e-9);
    EXPECT_NEAR(lastPublished().saturation, 0.5, 1e-12);
    EXPECT_EQ(lastPublished().value, 0.75);
    EXPECT_EQ(published.types.back(), kDataChangeInteractive);

    ui.drag(wheel, at(50, 0), at(0, 80));
    EXPECT_NEAR(lastPublished().hue, 346.0, 1e-9);
    EXPECT_NEAR(lastPublished().saturation, 0.8, 1e-12);
    ui.drag(wheel, at(0, 80), at(-30, -30));
    EXPECT_NEAR(lastPublished().hue, 121.0, 1e-9);
}

TEST_F(ColourWheel, ALeftPressAwayFromTheCursorMovesNothing)
{
    ui.drag(wheel, at(40, 40), at(60, 60));
    EXPECT_TRUE(published.values.empty());
    EXPECT_FALSE(wheel->dragMode());
}

TEST_F(ColourWheel, ARightPressJumpsTheCursorThereAndDrags)
{
    ui.press(wheel, at(30, 0), Event::RightButton);
    EXPECT_TRUE(wheel->dragMode());
    ASSERT_EQ(published.values.size(), 1u);
    EXPECT_NEAR(lastPublished().hue, 256.0, 1e-9);
    EXPECT_NEAR(lastPublished().saturation, 0.3, 1e-12);
    ui.moveTo(wheel, at(0, 30));
    EXPECT_NEAR(lastPublished().hue, 346.0, 1e-9);
    ui.release(wheel, at(0, 30), Event::RightButton);
    EXPECT_FALSE(wheel->dragMode());
}

TEST_F(ColourWheel, TheDragContinuesOutsideTheWheelAndStaysOnIt)
{
    ui.press(wheel, at(0, 0));
    ui.moveTo(wheel, at(300, 0));
    EXPECT_TRUE(wheel->dragMode());
    EXPECT_LE(wheel->getCursor().x, 100.0);
    for (const ColourData& c : published.values)
        EXPECT_LE(c.saturation, 1.0);
    ui.moveTo(wheel, at(-40, 0));
    ui.release(wheel, at(-40, 0));
    EXPECT_NEAR(lastPublished().hue, 76.0, 1e-9);
    EXPECT_NEAR(lastPublished().saturation, 0.4, 1e-12);
}

TEST_F(ColourWheel, GrabbingTheCursorWithoutMovingItPublishesNothing)
{
    ui.drag(wheel, at(50, 0), at(50, 0), 1);
    ui.press(wheel, at(0, 0));
    ui.moveTo(wheel, at(0, 0));
    EXPECT_TRUE(published.values.empty());
    EXPECT_TRUE(wheel->dragMode());
}

TEST_F(ColourWheel, AValueSetElsewhereMovesTheCursor)
{
    server->setValue(ColourData(166.0, 0.25, 0.75));
    EXPECT_NEAR(wheel->getCursor().x, 0.0, 1e-9);
    EXPECT_NEAR(wheel->getCursor().y, -25.0, 1e-9);
}

TEST_F(ColourWheel, ABrightnessSetElsewhereIsStoredButNotShownWhileReflectLumaIsOff)
{
    StartupSettings::ScopedOverride off(StartupSettings::Values{});
    const Colour before = ui.pixelAt(wheel, at(0, 60));
    server->setValue(ColourData(0.0, 0.0, 0.25));
    EXPECT_EQ(wheel->getDisplayV(), 0.25);
    EXPECT_EQ(wheel->getShownV(), 0.75);
    EXPECT_EQ(ui.pixelAt(wheel, at(0, 60)), before);
    // Colours made from positions take the stored brightness.
    ui.drag(wheel, at(0, 0), at(20, 0));
    EXPECT_EQ(lastPublished().value, 0.25);
}

TEST_F(ColourWheel, ABrightnessSetElsewhereIsShownWhileReflectLumaIsOn)
{
    StartupSettings::Values on;
    on.colourWheelReflectLuma = 1;
    StartupSettings::ScopedOverride reflect(on);
    server->setValue(ColourData(0.0, 0.0, 0.25));
    EXPECT_EQ(wheel->getShownV(), 0.25);
    const HSV shown = ui.pixelAt(wheel, at(0, 60)).toHSV();
    EXPECT_NEAR(shown.v, 0.25, 0.01);
}

TEST_F(ColourWheel, TheFieldShowsHueAndSaturationAtTheDisplayBrightness)
{
    wheel->setCursorVisible(false);
    wheel->setDisplayV(1.0);
    // Straight up is hue 346; half way out, saturation one half.
    EXPECT_TRUE(ui.pixelAt(wheel, at(0, 50)).isCloseTo(Colour::fromHSV({346.0, 0.5, 1.0}), 0.02));
    EXPECT_TRUE(ui.pixelAt(wheel, at(50, 0)).isCloseTo(Colour::fromHSV({256.0, 0.5, 1.0}), 0.02));
    wheel->setDisplayV(0.5);
    EXPECT_TRUE(ui.pixelAt(wheel, at(0, 50)).isCloseTo(Colour::fromHSV({346.0, 0.5, 0.5}), 0.02));
}

TEST_F(ColourWheel, TheRimIsBlendedIntoTheBackground)
{
    wheel->setBackgrndCol(Colour(0, 0, 0));
    wheel->setDisplayV(1.0);
    // The pixel centred at (60.5, 79.5) from the centre lies 0.1 inside the rim: mostly field, partly background.
    const HSV rim = ui.pixelAt(wheel, at(60, 79)).toHSV();
    EXPECT_GT(rim.v, 0.4);
    EXPECT_LT(rim.v, 0.8);
    EXPECT_EQ(ui.pixelAt(wheel, at(60, 81)), Colour(0, 0, 0));
    EXPECT_EQ(ui.pixelAt(wheel, at(60, 78)).toHSV().v, 1.0);
}

TEST_F(ColourWheel, AnInactiveWheelIgnoresTheMouse)
{
    wheel->setActive(false);
    ui.drag(wheel, at(0, 0), at(50, 0));
    EXPECT_TRUE(published.values.empty());
}
