#include "toolkit/widgets/CustomTextBox.h"

#include "toolkit/ui/GlobManager.h"

namespace {

const bool registeredByName = [] {
    GlobManager::registerType("CustomTextBox", [](const GlobCreationInfo& info) -> Glob* {
        return new CustomTextBox(CustomTextBox::InitArgs(TextBoxBase::InitArgs(info)));
    });
    return true;
}();

} // namespace

CustomTextBox::CustomTextBox(const InitArgs& args) : TextBoxBase(args) {}

CustomTextBox::CustomTextBox(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : TextBoxBase(width, height, palette, canvas)
{
}

CustomTextBox::~CustomTextBox() = default;

LightweightString<char> CustomTextBox::idstring() const
{
    return "CustomTextBox";
}

void CustomTextBox::setKeyFilter(KeyFilter filter)
{
    if (!filter && !m_hooks)
        return;
    m_hooks.made().filter = std::move(filter);
}

void CustomTextBox::setAfterKey(AfterKey after)
{
    if (!after && !m_hooks)
        return;
    m_hooks.made().after = std::move(after);
}

bool CustomTextBox::filterKey(const Event&)
{
    return false;
}

void CustomTextBox::afterKey(const Event&, bool) {}

bool CustomTextBox::handleKey(const Event& event)
{
    GlobWatch self(this);
    if (m_hooks && m_hooks->filter) {
        // A copy: the filter may replace itself or destroy the box.
        const KeyFilter filter = m_hooks->filter;
        if (filter(*this, event))
            return true;
        if (!self)
            return true;
    }
    if (filterKey(event))
        return true;
    if (!self)
        return true;
    const bool handled = TextBoxBase::handleKey(event);
    if (!self)
        return true;
    afterKey(event, handled);
    if (!self)
        return true;
    if (m_hooks && m_hooks->after) {
        const AfterKey after = m_hooks->after;
        after(*this, event, handled);
    }
    return handled;
}
