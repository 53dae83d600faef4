#include "toolkit/widgets/RadioSet.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>

namespace {

const bool registeredByName = GlobManager::registerWidget<RadioSet>("RadioSet");

} // namespace

RadioSet::InitArgs::InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info)
{
    const SettingsReader settings(info.config);
    for (const auto& label : settings.list("labels").value_or(SettingsReader::List()))
        labels.emplace_back(label);
    selected = settings.integer("selected").value_or(selected);
    row = settings.boolean("row").value_or(row);
}

XY<int> RadioSet::calcSize(const std::vector<UIString>& labels, bool row)
{
    const int h = UifStd::getButtonHeight();
    int widest = 0;
    int total = 0;
    for (const UIString& label : labels) {
        const int w = Button::calcWidth(label, Button::RadioStyle);
        widest = std::max(widest, w);
        total += w;
    }
    if (row)
        return {total, h};
    return {widest, static_cast<int>(labels.size()) * h};
}

RadioSet::RadioSet(const InitArgs& args) : Glob(args), m_row(args.row)
{
    const XY<int> fits = calcSize(args.labels, args.row);
    resize(args.width ? args.width : fits.x, args.height ? args.height : fits.y);
    for (const UIString& label : args.labels)
        addButton(label);
    select(args.selected, NoRedraw);
}

RadioSet::RadioSet(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height, palette, canvas)
{
}

// A copy is a new widget: it makes buttons of its own with the original's labels and selection.
RadioSet::RadioSet(const RadioSet& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), Glob(other),
      radio_set(other), m_row(other.m_row)
{
    for (size_t i = 0; i < other.numWidgets(); ++i)
        if (const Button* b = other.getWidget(i))
            addButton(b->getString());
    select(other.getSelectedIndex(), NoRedraw);
}

RadioSet::~RadioSet() = default;

LightweightString<char> RadioSet::idstring() const
{
    return "RadioSet";
}

Button* RadioSet::addButton(const UIString& label)
{
    const auto h = static_cast<uint16_t>(UifStd::getButtonHeight());
    Button::InitArgs args(label, m_row ? Button::calcWidth(label, Button::RadioStyle) : getWidth(), h, getPalette());
    args.style = Button::RadioStyle;
    const bool first = numChildren() == 0;
    auto* button = addWidget<Button>(args, first ? UserTopLeft(0, 0) : m_row ? RightOf(0) : Below(0));
    addWidget(button);
    return button;
}

bool RadioSet::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    // The buttons' own clicks are the group's business; the owner hears selectionChangedMsg instead.
    if (name == Button::clickMsg && indexOf(dynamic_cast<Button*>(sender)) >= 0)
        return true;
    return Glob::handleMessageEvent(name, sender);
}

void RadioSet::setActive(bool active, eRedrawFlag redrawFlag)
{
    Glob::setActive(active, redrawFlag);
    // The buttons are disabled with the set (isEnabledInTree) but drawn from their own state too.
    for (size_t i = 0; i < numWidgets(); ++i)
        if (Button* b = getWidget(i))
            b->redraw();
}
