#include "colour/CursorCapturer.h"

#include "ColourTestTiles.h"
#include "colour/EyeDropperButton.h"
#include "colour/MagnifyTool.h"
#include "toolkit/support/DiagnosticLog.h"
#include "toolkit/ui/Screen.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const Colour red = Colour::fromBytes(255, 0, 0);
const Colour blue = Colour::fromBytes(0, 0, 255);

// Keeps what is logged while it lives.
class LogLines {
public:
    LogLines()
        : m_previous(DiagnosticLog::setSink([this](LogTarget target, std::string_view line) {
            lines.emplace_back(line);
            targets.push_back(target);
        }))
    {
    }
    ~LogLines() { DiagnosticLog::setSink(m_previous); }
    std::vector<std::string> lines;
    std::vector<LogTarget> targets;

private:
    DiagnosticLog::Sink m_previous;
};

} // namespace

// An eyedropper button at (10, 10) of the owner and, at (300, 300), a picture 40 pixels square: red on the
// left half, blue on the right.
class Capturer : public ::testing::Test {
protected:
    template <typename T = CursorCapturer>
    T* makeButton()
    {
        return ui.make<T>(ImageButton::InitArgs(Pictor::Image(), 40, 40), Glob::BottomLeft(10, 10));
    }
    void startCapture(CursorCapturer* button)
    {
        ui.click(button);
        ASSERT_TRUE(button->enabled());
    }

    UiHarness ui{800, 600};
    PictureTile* picture = showPicture(ui, columnsOf({red, blue}, 20, 40), {300, 300});
    CursorCapturer* button = makeButton();
};

TEST_F(Capturer, APressShowsTheButtonDownAndTheReleaseStartsTheCapture)
{
    ui.press(button);
    EXPECT_TRUE(button->isDown());
    EXPECT_FALSE(button->enabled());
    ui.release(button);
    EXPECT_TRUE(button->enabled());
    EXPECT_FALSE(ui.owner().heard(Button::clickMsg));
}

TEST_F(Capturer, CapturingHoldsTheScreenWithFilterCursorAndMagnifier)
{
    startCapture(button);
    EXPECT_EQ(getEventInterceptStack(0).size(), 1u);
    EXPECT_EQ(ui.backend().getCursorShape(), CursorEyedropper);
    EXPECT_FALSE(ui.screen().tooltipsEnabled());
    MagnifyTool* magnifier = button->getMagnifier();
    ASSERT_NE(magnifier, nullptr);
    EXPECT_EQ(magnifier->getSize(), XY<int>(130, 130));
    EXPECT_EQ(magnifier->getScreenPos(), glib_getMousePos() + XY<int>(15, -130));
}

TEST_F(Capturer, TheMagnifierFollowsThePointer)
{
    startCapture(button);
    ui.moveTo(picture, XY<int>{5, 30});
    EXPECT_EQ(button->getMagnifier()->getScreenPos(), XY<int>(305 + 15, 330 - 130));
    EXPECT_EQ(button->getMagnifier()->getViewCentre(), XY<int>(305, 330));
}

TEST_F(Capturer, MovingWhileCapturingReachesNoOtherWidget)
{
    auto* other = ui.make<Button>(Button::InitArgs(L"Other", 80, 30), Glob::BottomLeft(100, 10));
    startCapture(button);
    ui.moveTo(other);
    EXPECT_FALSE(other->isHovered());
    ui.click(other);
    EXPECT_FALSE(ui.owner().heard(Button::clickMsg));
}

TEST_F(Capturer, AnAreaReleaseSendsTheAverageColourAndEndsTheCapture)
{
    button->setDropperStyle(captureArea);
    startCapture(button);
    // From (300, 300) to the pixel at (339, 309), that pixel included: 20 red and 20 blue columns.
    ui.drag(picture, {0, 0}, {39, 9});
    EXPECT_EQ(ui.owner().last(), ColEyeDropBase::pixelToMsg(RgbTriple(127, 0, 127)));
    EXPECT_FALSE(button->enabled());
    EXPECT_FALSE(button->isDown());
    EXPECT_EQ(button->getMagnifier(), nullptr);
    EXPECT_TRUE(getEventInterceptStack(0).empty());
    EXPECT_TRUE(ui.screen().tooltipsEnabled());
}

TEST_F(Capturer, InRangeModeTheRangeIsKeptAndTheOwnerHearsTheBareMessage)
{
    button->setDropperStyle(captureArea);
    button->setProcessingMode(CursorCapturer::ProcessRange);
    startCapture(button);
    ui.drag(picture, {0, 0}, {39, 9});
    EXPECT_EQ(ui.owner().last(), LightweightString<char>("colour_eye_dropper HSV "));
    EXPECT_EQ(button->getSelectedRange().minHue, 0.0);
    EXPECT_EQ(button->getSelectedRange().maxHue, 240.0);
}

TEST_F(Capturer, AnAreaReleaseOnTheButtonSamplesNothingButEndsTheCapture)
{
    button->setDropperStyle(captureArea);
    startCapture(button);
    ui.press(picture, XY<int>{5, 5});
    ui.release(button);
    EXPECT_EQ(ui.owner().count(), 0u);
    EXPECT_FALSE(button->enabled());
}

TEST_F(Capturer, InThePointStyleAReleaseEndsTheCaptureWithoutSampling)
{
    startCapture(button);
    ui.click(picture, XY<int>{5, 5});
    EXPECT_EQ(ui.owner().count(), 0u);
    EXPECT_FALSE(button->enabled());
}

TEST_F(Capturer, APressOnTheButtonWhileCapturingIsSwallowed)
{
    button->setDropperStyle(captureArea);
    startCapture(button);
    ui.press(button);
    EXPECT_TRUE(button->enabled());
    EXPECT_EQ(button->getAnchor(), XY<double>(-1.0, -1.0));
}

TEST_F(Capturer, EscapeEndsTheCapture)
{
    startCapture(button);
    ui.pressKey(Event::KeyEscape);
    EXPECT_FALSE(button->enabled());
    EXPECT_FALSE(button->isDown());
    EXPECT_EQ(button->getMagnifier(), nullptr);
}

TEST_F(Capturer, TheMagnifierOutlinesTheAreaOnceAnAnchorIsSet)
{
    button->setDropperStyle(captureArea);
    startCapture(button);
    ui.moveTo(picture, XY<int>{5, 5});
    EXPECT_FALSE(button->getMagnifier()->getAreaToOutline());
    ui.press(picture, XY<int>{5, 5});
    ui.moveTo(picture, XY<int>{9, 12});
    ASSERT_TRUE(button->getMagnifier()->getAreaToOutline());
    EXPECT_EQ(*button->getMagnifier()->getAreaToOutline(), Cv::Box<double>(305, 305, 310, 313));
    EXPECT_EQ(button->getAreaToSample(), Cv::Box<double>(305, 305, 310, 313));
}

TEST_F(Capturer, AnAnchorAtTheScreensLeftEdgeOutlinesNothing)
{
    button->setDropperStyle(captureArea);
    startCapture(button);
    ui.screen().mouseButton({0, 100}, Event::LeftButton, true);
    ui.screen().mouseMove({20, 120});
    EXPECT_FALSE(button->getMagnifier()->getAreaToOutline());
}

TEST_F(Capturer, StartingTwiceOrStoppingWhenIdleChangesNothing)
{
    EXPECT_EQ(button->disableCapture(), 0);
    startCapture(button);
    EXPECT_EQ(button->enableCapture(), 0);
    EXPECT_EQ(getEventInterceptStack(0).size(), 1u);
}

TEST_F(Capturer, DestroyingTheButtonWhileCapturingFreesTheScreen)
{
    startCapture(button);
    Glob::destroy(button);
    EXPECT_TRUE(getEventInterceptStack(0).empty());
    EXPECT_TRUE(ui.screen().tooltipsEnabled());
    for (Glob* top : ui.screen().getTopLevels())
        EXPECT_EQ(dynamic_cast<MagnifyTool*>(top), nullptr);
}

TEST_F(Capturer, ThePointStyleEyedropperSendsThePixelsColourOnPress)
{
    auto* dropper = makeButton<EyeDropperButton>();
    startCapture(dropper);
    ui.press(picture, XY<int>{30, 5});
    EXPECT_EQ(ui.owner().last(), ColEyeDropBase::pixelToMsg(RgbTriple(0, 0, 255)));
}

TEST(CapturerWithoutScreen, AFailedStartIsLoggedAndLeavesTheButtonIdle)
{
    LogLines log;
    CursorCapturer button(ImageButton::InitArgs(Pictor::Image(), 40, 40));
    EXPECT_EQ(button.enableCapture(), -1);
    EXPECT_FALSE(button.enabled());
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_EQ(log.lines[0], "Failed to enabled cursor capture.");
    EXPECT_EQ(log.targets[0], LogBoth);
}
