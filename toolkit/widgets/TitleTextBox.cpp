#include "toolkit/widgets/TitleTextBox.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/widgets/TitledGlob.h"

#include <algorithm>

namespace {

const bool registeredByName = GlobManager::registerWidget<TitleTextBox>("TitleTextBox");

} // namespace

TitleTextBox::InitArgs::InitArgs(const GlobCreationInfo& info) : TextBoxBase::InitArgs(info)
{
    const SettingsReader settings(info.config);
    title = settings.text("title").value_or(title.getString());
    entryWidth = static_cast<uint16_t>(
        std::clamp(settings.integer("entryWidth").value_or(info.width), 0, static_cast<int>(info.width)));
}

TitleTextBox::TitleTextBox(const InitArgs& args)
    : TextBoxBase(args), m_title(args.title), m_entryWidth(args.entryWidth)
{
}

TitleTextBox::TitleTextBox(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : TextBoxBase(width, height, palette, canvas), m_entryWidth(width)
{
}

TitleTextBox::~TitleTextBox() = default;

LightweightString<char> TitleTextBox::idstring() const
{
    return "TitleTextBox";
}

void TitleTextBox::setTitle(const UIString& title)
{
    m_title = title;
    redraw();
}

void TitleTextBox::setEntryWidth(uint16_t width)
{
    m_entryWidth = width;
    reshape();
    redraw();
}

uint16_t TitleTextBox::getEntryWidth() const
{
    return std::min(m_entryWidth, getWidth());
}

GlobBox TitleTextBox::entryArea() const
{
    const GlobBox box = getLocalBox();
    return GlobBox(box.right() - getEntryWidth(), box.bottom(), box.right(), box.top());
}

void TitleTextBox::drawBackground()
{
    TextBoxBase::drawBackground();
    const GlobBox box = getLocalBox();
    const int gap = UifStd::getWidgetGap();
    const GlobBox column(box.left(), box.bottom(), std::max<int>(box.left(), entryArea().left() - gap), box.top());
    TitledGlobDetail::drawTitle(painter(), m_title, column, getPalette(), isEnabledInTree());
}
