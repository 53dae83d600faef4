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

CustomTextBox::CustomTextBox(const CustomTextBox& other)
    : EventHandler(other)
    , Cv::InternalRefCount(other)
    , iVirtual(other)
    , iObject(other)
    , TextBoxBase(other)
{
    *this = other;
}

CustomTextBox::CustomTextBox(CustomTextBox&& other) : CustomTextBox(static_cast<const CustomTextBox&>(other)) {}

CustomTextBox& CustomTextBox::operator=(const CustomTextBox& other)
{
    if (this == &other)
        return *this;
    TextBoxBase::operator=(other);
    m_hooks = other.m_hooks ? std::make_unique<Hooks>(*other.m_hooks) : nullptr;
    return *this;
}

CustomTextBox& CustomTextBox::operator=(CustomTextBox&& other)
{
    return *this = static_cast<const CustomTextBox&>(other);
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
    if (!m_hooks)
        m_hooks = std::make_unique<Hooks>();
    m_hooks->filter = std::move(filter);
}

void CustomTextBox::setAfterKey(AfterKey after)
{
    if (!after && !m_hooks)
        return;
    if (!m_hooks)
        m_hooks = std::make_unique<Hooks>();
    m_hooks->after = std::move(after);
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
