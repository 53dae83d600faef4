#include "formats/CustomFormatPanel.h"

#include "parampanels/UIBuilderParams.h"
#include "toolkit/media/DigitalVideoFormats.h"
#include "toolkit/support/Configb.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Button.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr int userWidth = 400;
// Each of the three buttons takes this share of the panel's width.
constexpr double buttonShare = 0.2;

int contentHeight(unsigned rows)
{
    const int buttonRow = UifStd::getButtonHeight() + UifStd::getWidgetGap();
    if (rows == 0)
        return buttonRow;
    return static_cast<int>(rows) * UifStd::getButtonHeight() + static_cast<int>(rows - 1) * UifStd::getRowGap() + buttonRow;
}

void logPress(const char* name) { std::fprintf(stderr, "%s\n", name); }

} // namespace

CustomFormatPanel::InitArgs::InitArgs()
    : InitArgs(Cv::DigitalVideoFormats::DigitalVideoFormatInfo::getParams())
{
}

CustomFormatPanel::InitArgs::InitArgs(UIBuilder::ParamList parameters)
    : StandardPanel::InitArgs(UIString(ResId(titleResource)), 0, 0,
        StandardPanel::CloseButton | StandardPanel::DoItButton, UifStd::getColourScheme())
    , params(std::move(parameters))
{
    const XY<int> size = StandardPanel::calcPanelSize(userWidth, contentHeight(params.size()), *this);
    width = static_cast<uint16_t>(size.x);
    height = static_cast<uint16_t>(size.y);
}

CustomFormatPanel::CustomFormatPanel(const InitArgs& args)
    : StandardPanel(args)
{
    init(args.params);
}

CustomFormatPanel::~CustomFormatPanel() = default;

LightweightString<char> CustomFormatPanel::idstring() const { return "CustomFormatPanel"; }

CustomFormatPanel* CustomFormatPanel::make(Glob* owner, const InitArgs& args)
{
    auto* panel = new CustomFormatPanel(args);
    const XY<int> size = panel->getSize();
    XY<int> at;
    if (Glob* anchor = owner ? owner->parent() : nullptr) {
        // Right of the owner's panel, tops lined up.
        const GlobBox box = anchor->getScreenBox();
        at = { box.right() + UifStd::getWidgetGap(), box.top() - size.y };
    } else if (Screen* screen = Screen::current()) {
        at = screen->getMousePos();
    }
    at = GlobManager::getSafePosForGlob(at, size);
    panel->setPos(at.x, at.y);
    GlobManager::realize(panel);
    panel->m_owner = owner;
    return panel;
}

void CustomFormatPanel::init(const UIBuilder::ParamList& params)
{
    m_params = UIBuilder::build(params, this);
    // Every row starts at its parameter's default.
    m_params->restoreState(configb());

    const auto buttonWidth = static_cast<uint16_t>(getUserArea().width() * buttonShare);
    const auto buttonHeight = static_cast<uint16_t>(UifStd::getButtonHeight());
    const Palette& palette = getPalette();
    const WidgetPosition first = params.empty() ? UserTopLeft(0, 0) : Below(UifStd::getWidgetGap());
    auto* add = addWidget<Button>(Button::InitArgs(UIString(ResId(addResource), resFmtEllipsis), buttonWidth, buttonHeight, palette), first);
    auto* edit = addWidget<Button>(Button::InitArgs(UIString(ResId(editResource), resFmtEllipsis), buttonWidth, buttonHeight, palette),
        RightOf(UifStd::getWidgetGap(), add));
    auto* remove = addWidget<Button>(Button::InitArgs(UIString(ResId(editResource), resFmtEllipsis), buttonWidth, buttonHeight, palette),
        RightOf(UifStd::getWidgetGap(), edit));
    // Deleting needs no further panel, so its label has no ellipsis.
    remove->setStringAuto(UIString(ResId(deleteResource)));
    add->setCallback([this] { handleAddPress(NotifyMsg()); });
    edit->setCallback([this] { handleEditPress(NotifyMsg()); });
    remove->setCallback([this] { handleDeletePress(NotifyMsg()); });
}

int CustomFormatPanel::handleAddPress(const NotifyMsg&)
{
    logPress("handleAddPress");
    return 0;
}

int CustomFormatPanel::handleEditPress(const NotifyMsg&)
{
    logPress("handleEditPress");
    return 0;
}

int CustomFormatPanel::handleDeletePress(const NotifyMsg&)
{
    logPress("handleDeletePress");
    return 0;
}

bool CustomFormatPanel::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (name == StandardPanel::doItMsg) {
        if (m_params && !m_params->getParams().empty()) {
            configb values;
            m_params->saveState(values);
            Cv::DigitalVideoFormats::DigitalVideoFormatInfo::setParams(values);
        }
        sendMsg(m_owner, useCustomFormatMsg);
        return true;
    }
    return StandardPanel::handleMessageEvent(name, sender);
}

bool CustomFormatPanel::handleMouseEvent(const Event& event)
{
    // Clicks never fall through to whatever lies under the pop-up.
    StandardPanel::handleMouseEvent(event);
    return true;
}

void CustomFormatPanel::draw()
{
    Pictor::UpdateDeferrer deferAll;
    StandardPanel::draw();
}
