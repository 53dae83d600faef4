// The compression settings panel (values in from a configb, back out on destruction) and the custom
// format panel (registering a raster and telling its owner).
#include "FormatsTestSupport.h"

#include "formats/CompressionSettingsPanel.h"
#include "formats/CustomFormatPanel.h"
#include "parampanels/UIBuilderParams.h"
#include "toolkit/media/DigitalVideoFormats.h"
#include "toolkit/support/params/BoolParam.h"
#include "toolkit/support/params/NumericParams.h"
#include "toolkit/ui/UifStd.h"

#include <optional>

namespace DVF = Cv::DigitalVideoFormats;

namespace {

UIBuilder::ParamList settings()
{
    return UIBuilder::ParamList(std::vector<Cv::Ptr<GenericParam::iParam>> {
        Cv::Ptr<GenericParam::iParam>(new GenericParam::IntParam(L"Bit rate", "bitrate", ResId(), 50, 1, 400, true)),
        Cv::Ptr<GenericParam::iParam>(new GenericParam::BoolParam(L"Closed GOP", "closed", ResId(), false)),
    });
}

std::string stored(const configb& config, const char* key)
{
    std::string value;
    return config.in(key, value) == 0 ? value : "<absent>";
}

} // namespace

TEST(CompressionSettingsPanel, ContentHeightIsRowsAndTheGapsBetweenThem)
{
    EXPECT_EQ(CompressionSettingsPanel::contentHeight(0), 0);
    EXPECT_EQ(CompressionSettingsPanel::contentHeight(1), UifStd::getButtonHeight());
    EXPECT_EQ(CompressionSettingsPanel::contentHeight(3), 3 * UifStd::getButtonHeight() + 2 * UifStd::getRowGap());
    EXPECT_EQ(CompressionSettingsPanel::contentHeight(65536), 0) << "the count is taken modulo 65536";
}

TEST(CompressionSettingsPanel, ValuesComeFromTheConfigAndGoBackWhenThePanelDies)
{
    UiHarness ui;
    configb config;
    config.set("bitrate", "120");
    auto* panel = ui.make<CompressionSettingsPanel>(CompressionSettingsPanel::InitArgs(settings(), config, 300));
    EXPECT_EQ(panel->getParams()->findParam("bitrate")->getValueAsString(), L"120");
    panel->getParams()->findParam("closed")->setValueFromString(L"true");
    panel->getParams()->findParam("bitrate")->setValueFromString(L"900");
    Glob::destroy(panel);
    ui.step();
    EXPECT_EQ(stored(config, "bitrate"), "400") << "kept within its range";
    EXPECT_EQ(stored(config, "closed"), "true");
}

TEST(CompressionSettingsPanel, WithoutAConfigNothingIsReadOrWritten)
{
    UiHarness ui;
    configb config;
    config.set("bitrate", "120");
    CompressionSettingsPanel::InitArgs args(settings(), config, 300);
    args.config = nullptr;
    auto* panel = ui.make<CompressionSettingsPanel>(args);
    EXPECT_EQ(panel->getParams()->findParam("bitrate")->getValueAsString(), L"50");
    Glob::destroy(panel);
    ui.step();
    EXPECT_EQ(stored(config, "bitrate"), "120");
    EXPECT_EQ(stored(config, "closed"), "<absent>");
}

class CustomFormatPanelTest : public ::testing::Test {
protected:
    UiHarness ui;
    DVF::ScopedCatalogue catalogue { {} };
};

TEST_F(CustomFormatPanelTest, CommittingRegistersTheRasterAndTellsTheOwner)
{
    auto* panel = CustomFormatPanel::make(&ui.owner());
    panel->getParams()->findParam("width")->setValueFromString(L"2560");
    panel->getParams()->findParam("height")->setValueFromString(L"1440");
    panel->doIt();
    EXPECT_EQ(ui.owner().count(CustomFormatPanel::useCustomFormatMsg), 1u);
    const auto known = DVF::getAllKnownFormats();
    ASSERT_EQ(known.size(), 1u);
    EXPECT_EQ(known[0].getWidth(), 2560u);
    EXPECT_EQ(known[0].getHeight(), 1440u);
    EXPECT_EQ(known[0].getName(), "Custom");
}

TEST_F(CustomFormatPanelTest, CommittingWithNoParametersRegistersNothingButStillTellsTheOwner)
{
    auto* panel = CustomFormatPanel::make(&ui.owner(), CustomFormatPanel::InitArgs(UIBuilder::ParamList()));
    panel->doIt();
    EXPECT_EQ(ui.owner().count(CustomFormatPanel::useCustomFormatMsg), 1u);
    EXPECT_TRUE(DVF::getAllKnownFormats().empty());
}

TEST_F(CustomFormatPanelTest, ThePanelOpensRightOfItsOwnersParentWithTopsLinedUp)
{
    auto* hostPanel = ui.make<Glob>(GlobCreationInfo(200, 100), Glob::BottomLeft(50, 400));
    auto* owner = hostPanel->addWidget<Glob>(GlobCreationInfo(40, 20), Glob::BottomLeft(10, 10));
    auto* panel = CustomFormatPanel::make(owner);
    const GlobBox host = hostPanel->getScreenBox();
    EXPECT_TRUE(panel->isShowing());
    EXPECT_EQ(panel->getScreenBox().left(), host.right() + UifStd::getWidgetGap());
    EXPECT_EQ(panel->getScreenBox().top(), host.top());
}

TEST_F(CustomFormatPanelTest, ClicksNeverFallThroughThePanel)
{
    auto* panel = CustomFormatPanel::make(&ui.owner());
    Event press;
    press.type = Event::MouseDown;
    press.pos = { 2, 2 };
    EXPECT_TRUE(panel->handleMouseEvent(press));
}
