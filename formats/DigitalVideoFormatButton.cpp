#include "formats/DigitalVideoFormatButton.h"

#include "toolkit/media/CurrentProject.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <string>

using namespace Cv::DigitalVideoFormats;

namespace {

TitleMenuButton::InitArgs titledArgs(uint16_t titleWidth, const GlobCreationInfo& info)
{
    TitleMenuButton::InitArgs titled(UIString(ResId(DigitalVideoFormatButton::titleResource)), {}, titleWidth,
        info.width, info.height, info.palette, info.canvas);
    titled.name = info.name;
    return titled;
}

// Rasters are told apart by their family first (1 to 6 are offered); proxies and unknown groups are not.
constexpr uint32_t firstOfferedGroup = FormatGroups::SD625;
constexpr uint32_t lastOfferedGroup = FormatGroups::Other;
// Once this many entries stand, further groups start folded.
constexpr size_t openGroupLimit = 10;

} // namespace

DigitalVideoFormatButton::DigitalVideoFormatButton(const InitArgs& args)
    : TitleMenuButton(titledArgs(args.titleWidth, args))
    , m_showDimensions(args.showDimensions)
{
    init(args.formats, 0);
}

DigitalVideoFormatButton::DigitalVideoFormatButton(const Formats& formats, uint16_t titleWidth, const GlobCreationInfo& info)
    : TitleMenuButton(titledArgs(titleWidth, info))
{
    init(formats, 0);
}

DigitalVideoFormatButton::DigitalVideoFormatButton(const Formats& formats, uint16_t w, uint16_t h,
    const Palette& palette, Canvas* canvas)
    : TitleMenuButton(UIString(ResId(titleResource)), {}, palette, w, h, 0, canvas, false)
{
    init(formats, 0);
}

DigitalVideoFormatButton::DigitalVideoFormatButton(uint16_t titleWidth, const GlobCreationInfo& info)
    : DigitalVideoFormatButton(getAllKnownFormats(), titleWidth, info)
{
}

DigitalVideoFormatButton::DigitalVideoFormatButton(uint16_t w, uint16_t h, const Palette& palette, Canvas* canvas)
    : DigitalVideoFormatButton(getAllKnownFormats(), w, h, palette, canvas)
{
}

LightweightString<char> DigitalVideoFormatButton::idstring() const { return "DigitalVideoFormatButton"; }

void DigitalVideoFormatButton::reinit(const Formats& formats) { init(formats, getSelectedFormatID()); }

uint32_t DigitalVideoFormatButton::getSelectedFormatID() const
{
    const int selected = getSelectedItem();
    if (m_formatIds.empty() || selected < 0 || static_cast<size_t>(selected) >= m_formatIds.size())
        return 0;
    return m_formatIds[static_cast<size_t>(selected)];
}

void DigitalVideoFormatButton::setFormatID(uint32_t uid)
{
    const auto found = std::find(m_formatIds.begin(), m_formatIds.end(), uid);
    if (found == m_formatIds.end())
        return;
    setSelectedItem(MenuItemIndex(found - m_formatIds.begin()));
    getBtn()->setString(UIString(getFormatName(findByUID(uid), m_showDimensions ? L", " : nullptr)));
    showSelectedAsContext();
}

LightweightString<wchar_t> DigitalVideoFormatButton::getFormatName(const DigitalVideoFormatInfo& info, const wchar_t* separator)
{
    LightweightString<wchar_t> name = fromUTF8(info.getName().view());
    if (!separator)
        return name;
    name += separator;
    name.append(std::to_wstring(info.getDisplayWidth()) + L"x" + std::to_wstring(info.getDisplayHeight()));
    return name;
}

void DigitalVideoFormatButton::init(const Formats& formats, uint32_t uid)
{
    m_items.clear();
    m_formatIds.clear();

    std::vector<std::vector<DigitalVideoFormatInfo>> buckets(lastOfferedGroup + 1);
    for (const DigitalVideoFormatInfo& format : formats) {
        const uint32_t group = format.getGroup();
        // A divisor of 0 gives a displayed width of 0, so such a raster is never divided by nor offered.
        if (group >= firstOfferedGroup && group <= lastOfferedGroup && format.getDisplayWidth() > 0)
            buckets[group].push_back(format);
    }
    const auto filled = std::count_if(buckets.begin(), buckets.end(), [](const auto& b) { return !b.empty(); });
    for (uint32_t group = firstOfferedGroup; group <= lastOfferedGroup; ++group) {
        if (buckets[group].empty())
            continue;
        const LightweightString<wchar_t> heading
            = filled == 1 ? LightweightString<wchar_t>() : Cv::getDisplayString(static_cast<FormatGroups::FormatGroup>(group));
        addFormats(buckets[group], heading, m_items.size() < openGroupLimit);
    }

    getBtn()->setStrings(m_items, MenuItemIndex(0));
    getBtn()->useSelectedForButtonDisplay(false);
    if (m_formatIds.empty())
        return;

    LightweightString<wchar_t> text = fromUTF8(findByUID(m_formatIds.front()).getName().view());
    if (uid == 0)
        uid = Cv::CurrentProject::getOutputImageFormat(0).getUID();
    size_t position = 0;
    if (const auto found = std::find(m_formatIds.begin(), m_formatIds.end(), uid); found != m_formatIds.end()) {
        position = static_cast<size_t>(found - m_formatIds.begin());
        text = getFormatName(findByUID(uid), m_showDimensions ? L", " : nullptr);
    }
    // When the wanted raster is not offered the face shows the first one's bare name, without its size.
    setSelectedItem(MenuItemIndex(position));
    getBtn()->setString(UIString(text));
    showSelectedAsContext();
    setEnabled(m_items.size() > 1);
}

void DigitalVideoFormatButton::addFormats(
    const std::vector<DigitalVideoFormatInfo>& formats, const LightweightString<wchar_t>& heading, bool fewItems)
{
    const bool withHeading = !heading.empty();
    if (withHeading)
        m_items.emplace_back(UIString(heading), WidgetCallback(), getCol(), getPalette().subheadingText(),
            fewItems ? MenuItemGroupOpen : MenuItemGroupFolded);
    for (const DigitalVideoFormatInfo& format : formats) {
        m_formatIds.push_back(format.getUID());
        MenuItem item(UIString(getFormatName(format, L"||")), WidgetCallback(),
            withHeading ? MenuItemInGroup : MenuItemNormal, resFmtAsIs);
        std::wstring tooltip;
        for (const LightweightString<char>& line : format.getDescription()) {
            if (!tooltip.empty())
                tooltip += L"\n";
            tooltip += fromUTF8(line.view()).str();
        }
        item.tooltip(UIString(LightweightString<wchar_t>(tooltip)));
        m_items.push_back(std::move(item));
    }
}

void DigitalVideoFormatButton::showSelectedAsContext()
{
    const MenuItem* selected = getBtn()->getSelectedMenuItem();
    getBtn()->setContextString(selected ? selected->getLabel() : UIString(), UIString());
}

bool DigitalVideoFormatButton::react(const Event& event)
{
    if (event.isMessage() && event.sender == getBtn() && event.message == DropDownMenuButton::dropDownMenuButtonMsg) {
        getBtn()->setString(UIString(getFormatName(findByUID(getSelectedFormatID()), m_showDimensions ? L", " : nullptr)));
        getBtn()->redraw();
        showSelectedAsContext();
        callMsg(FormatChangedMsg);
        return true;
    }
    return TitleMenuButton::react(event);
}
