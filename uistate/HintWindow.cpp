#include "uistate/HintWindow.h"

#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/Checkbox.h"
#include "uistate/UIStateManager.h"

#include <algorithm>

HintWindow::HintWindow(const StatusMessage::InitArgs& args) : StatusMessage(args)
{
    addCheckbox();
}

HintWindow::HintWindow(const HintWindow& other)
    : EventHandler(other)
    , Cv::InternalRefCount(other)
    , iVirtual(other)
    , iObject(other)
    , StatusMessage(other)
{
    addCheckbox();
}

LightweightString<char> HintWindow::idstring() const
{
    return "HintWindow";
}

void HintWindow::addCheckbox()
{
    const UIString label { ResId(checkboxLabelId) };
    const int height = UifStd::getButtonHeight();
    setFooterHeight(height + UifStd::getRowGap());
    // The panel's user area lies inside its border, so its bottom-right corner is the box's place.
    const GlobBox area = getUserArea();
    const int width = std::min<int>(Checkbox::calcWidth(label), area.width());
    auto* box = addWidget<Checkbox>(
        Checkbox::InitArgs(label, UIStateManager::instance().getHintsEnabled(), Checkbox::BoxFirst, static_cast<uint16_t>(width),
                           static_cast<uint16_t>(height), getPalette()),
        Glob::BottomLeft(area.width() - width, 0));
    box->setName("hint_checkbox");
}

bool HintWindow::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    if (name.view().starts_with(checkboxMsgPrefix)) {
        if (auto* box = dynamic_cast<Checkbox*>(sender))
            UIStateManager::instance().setHintsEnabled(box->getValue(), true);
        return true;
    }
    return StatusMessage::handleMessageEvent(name, sender);
}
