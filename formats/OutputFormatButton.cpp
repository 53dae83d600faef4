#include "formats/OutputFormatButton.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/media/CurrentProject.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>

OutputFormatButton::OutputFormatButton(const InitArgs& args)
    : TitleMenuButton(UIString(ResId(titleResource)), {}, args.palette, args.width, args.height,
        static_cast<uint16_t>(UifStd::getButtonHeight()), args.canvas, true)
    , m_fitWidth(args.width == 0)
{
    setName(args.name);
    finishConstruction(args.filter);
}

OutputFormatButton::OutputFormatButton(const Palette& palette, uint16_t w, uint16_t h, Canvas* canvas)
    : OutputFormatButton(nullptr, palette, w, h, canvas)
{
}

OutputFormatButton::OutputFormatButton(iFormatFilter* filter, const Palette& palette, uint16_t w, uint16_t h, Canvas* canvas)
    : TitleMenuButton(UIString(ResId(titleResource)), {}, palette, w, h,
        static_cast<uint16_t>(UifStd::getButtonHeight()), canvas, true)
    , m_fitWidth(w == 0)
{
    finishConstruction(filter);
}

void OutputFormatButton::finishConstruction(iFormatFilter* filter)
{
    if (filter)
        buildOutputFormatList(filter);
    else
        buildOutputFormatList(Cv::CurrentProject::getFrameRate(0));
    getBtn()->useSelectedForButtonDisplay(false);
    setSelectedFormat(Cv::CurrentProject::getOutputImageFormat(0));
}

LightweightString<char> OutputFormatButton::idstring() const { return "OutputFormatButton"; }

void OutputFormatButton::buildOutputFormatList(iFormatFilter* filter)
{
    std::vector<uint32_t> kept;
    for (uint32_t index : OutputFormat::getAllowedOutputFormatsForProjectFrameRate(Cv::CurrentProject::getFrameRate(0)))
        if (!filter || filter->keep(OutputFormat::getFormat(index)))
            kept.push_back(index);
    m_items.clear();
    m_formatIndices.clear();
    addItemsToMenu(kept);
    getBtn()->setStrings(m_items, MenuItemIndex(0));
}

void OutputFormatButton::buildOutputFormatList(Cv::FrameRate rate)
{
    m_items.clear();
    m_formatIndices.clear();
    addItemsToMenu(OutputFormat::getAllowedOutputFormatsForProjectFrameRate(rate));
    getBtn()->setStrings(m_items, MenuItemIndex(0));
}

void OutputFormatButton::addItemsToMenu(const std::vector<uint32_t>& indices)
{
    for (uint32_t type = 0; type < OutputFormat::numTypes; ++type) {
        std::vector<uint32_t> ofType;
        for (uint32_t index : indices)
            if (static_cast<uint32_t>(OutputFormat::getFormat(index).type()) == type)
                ofType.push_back(index);
        if (ofType.empty())
            continue;
        m_items.emplace_back(UIString(OutputFormat::getDisplayString(type)), WidgetCallback(), MenuItemGroupOpen, resFmtAsIs);
        for (uint32_t index : ofType) {
            m_formatIndices.push_back(index);
            m_items.emplace_back(UIString(OutputFormat::getFormat(index).label()), WidgetCallback(), MenuItemInGroup, resFmtAsIs);
        }
    }
    setEnabled(m_formatIndices.size() > 1);

    if (m_fitWidth) {
        // The face shows display strings, which are longer than the menu's labels.
        const Pictor::Font& font = UifStd::defaultFont();
        int widest = 0;
        for (uint32_t index : m_formatIndices)
            widest = std::max(widest, font.pixelWidth(OutputFormat::getFormat(index).getDisplayString().view()));
        resize(std::min(65535, getTitleWidth() + widest + 6 * UifStd::getWidgetGap()), getHeight());
    }
}

bool OutputFormatButton::compare(const OutputFormat::Details& a, const OutputFormat::Details& b, bool strict)
{
    if (a.type() != b.type() || a.imageSize().width != b.imageSize().width || a.imageSize().height != b.imageSize().height
        || a.frameRate() != b.frameRate() || a.scanFormat().mode != b.scanFormat().mode)
        return false;
    return !strict || a.colourEncoding() == b.colourEncoding();
}

bool OutputFormatButton::setSelectedFormat(const OutputFormat::Details& format)
{
    const uint32_t count = OutputFormat::getNumFormats();
    if (count == 0)
        return false;
    int found = -1;
    for (uint32_t i = 0; i < count; ++i) {
        if (compare(OutputFormat::getFormat(i), format, true)) {
            found = static_cast<int>(i);
            break;
        }
        if (compare(OutputFormat::getFormat(i), format, false))
            found = static_cast<int>(i);
    }
    if (found < 0)
        return false;
    const auto offered = std::find(m_formatIndices.begin(), m_formatIndices.end(), static_cast<uint32_t>(found));
    if (offered == m_formatIndices.end())
        return false;
    setSelectedItem(MenuItemIndex(offered - m_formatIndices.begin()));
    getBtn()->setString(UIString(OutputFormat::getFormat(static_cast<uint32_t>(found)).getDisplayString()));
    return true;
}

const OutputFormat::Details& OutputFormatButton::getSelectedFormat() const
{
    const int selected = getSelectedItem();
    if (selected < 0 || static_cast<size_t>(selected) >= m_formatIndices.size())
        return OutputFormat::getFormat(OutputFormat::getNumFormats());
    return OutputFormat::getFormat(m_formatIndices[static_cast<size_t>(selected)]);
}

void OutputFormatButton::setFrameRate(Cv::FrameRate rate)
{
    const bool wasEnabled = isActive();
    const int selected = getSelectedItem();
    const bool hadSelection = selected >= 0 && static_cast<size_t>(selected) < m_formatIndices.size();
    const uint32_t previous = hadSelection ? m_formatIndices[static_cast<size_t>(selected)] : 0;

    OutputFormat::validateProjectSettings();
    buildOutputFormatList(rate);

    auto position = hadSelection ? std::find(m_formatIndices.begin(), m_formatIndices.end(), previous) : m_formatIndices.end();
    if (position == m_formatIndices.end()) {
        const std::vector<uint32_t> allowed = OutputFormat::getAllowedOutputFormatsForProjectFrameRate(rate);
        if (!allowed.empty())
            position = std::find(m_formatIndices.begin(), m_formatIndices.end(), allowed.front());
    }
    // One past the end when neither is offered: the drop-down then selects nothing.
    const size_t p = static_cast<size_t>(position - m_formatIndices.begin());
    setSelectedItem(MenuItemIndex(p));
    getBtn()->setString(UIString(p < m_formatIndices.size() ? OutputFormat::getFormat(m_formatIndices[p]).getDisplayString()
                                                            : LightweightString<wchar_t>()));
    // The rebuild enabled or disabled the button by its new list; the caller's state wins.
    setEnabled(wasEnabled, false);
    getBtn()->redraw();
}

bool OutputFormatButton::react(const Event& event)
{
    if (event.isMessage() && event.sender == getBtn() && event.message == DropDownMenuButton::dropDownMenuButtonMsg) {
        setSelectedFormat(getSelectedFormat());
        getBtn()->redraw();
        callMsg(FormatChangedMsg);
        return true;
    }
    return TitleMenuButton::react(event);
}
