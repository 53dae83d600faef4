#include "entry/IPAddressEntryBox.h"

#include "toolkit/gfx/Font.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/TabOrderManager.h"
#include "toolkit/ui/UifStd.h"
#include "toolkit/widgets/CustomTextBox.h"

#include <string>

namespace {

const bool registeredByName = GlobManager::registerWidget<IPAddressEntryBox>("IPAddressEntryBox");

const wchar_t* const octetSizer = L"999";
const wchar_t* const portSizer = L"12345";

bool isPasteKey(const Event& key)
{
    return (key.has(Event::Ctrl) || key.has(Event::Cmd)) && !key.has(Event::Alt) &&
           (key.key == L'v' || key.key == L'V');
}

// The key rules of one box; the entry hears the moves as messages from the box.
bool filterBoxKey(CustomTextBox& box, const Event& key)
{
    const bool noSelection = !box.hasSelection();
    if ((key.key == Event::KeyBackspace || key.key == Event::KeyLeft) && box.getCaretPos() == 0 && noSelection) {
        box.callMsg(IPAddressEntryBox::prevMsg);
        return true;
    }
    if ((key.key == L'.' || key.key == Event::KeyRight) && box.caretAtEnd() && noSelection && !key.hasAnyModifier()) {
        box.callMsg(IPAddressEntryBox::nextMsg);
        return true;
    }
    if (isPasteKey(key)) {
        Screen* screen = box.getScreen();
        if (screen && screen->getClipboardText().contains(L".")) {
            box.callMsg(IPAddressEntryBox::pasteMsg);
            return true;
        }
    }
    return false;
}

void afterBoxKey(CustomTextBox& box, const Event& key, bool handled)
{
    // Only what adds digits completes a part: moving the caret or selecting in a full box must not jump.
    const bool adds = key.isPrintable() || isPasteKey(key);
    if (handled && adds && box.caretAtEnd() && box.isFull())
        box.callMsg(IPAddressEntryBox::nextMsg);
}

} // namespace

IPAddressEntryBox::InitArgs::InitArgs(bool port, uint16_t h, const Palette& pal, Canvas* c)
    : StandardPanel::InitArgs(UIString(), calcWidth(port), h ? h : static_cast<uint16_t>(UifStd::getButtonHeight()),
                              NoWidgets, pal, c),
      withPort(port)
{
    border = NoBorder;
    movable = false;
}

IPAddressEntryBox::InitArgs::InitArgs(const GlobCreationInfo& info) : InitArgs(false, info.height, info.palette, info.canvas)
{
    LightweightString<char> port;
    if (info.config.in("port", port) == 0)
        withPort = port == "1";
    width = calcWidth(withPort);
    name = info.name;
}

IPAddressEntryBox::IPAddressEntryBox(const InitArgs& args) : StandardPanel(args)
{
    makeBoxes(args.withPort);
}

IPAddressEntryBox::IPAddressEntryBox(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : StandardPanel([&] {
          InitArgs args(false, height, palette, canvas);
          args.width = width;
          return args;
      }())
{
    makeBoxes(false);
}

IPAddressEntryBox::IPAddressEntryBox(const IPAddressEntryBox& other)
    : EventHandler(other), Cv::InternalRefCount(other), iVirtual(other), iObject(other), StandardPanel(other),
      TabOrderableHost(other)
{
    makeBoxesLike(other);
}

IPAddressEntryBox& IPAddressEntryBox::operator=(const IPAddressEntryBox& other)
{
    if (this != &other) {
        StandardPanel::operator=(other);
        makeBoxesLike(other);
    }
    return *this;
}

IPAddressEntryBox::~IPAddressEntryBox() = default;

LightweightString<char> IPAddressEntryBox::idstring() const
{
    return "IPAddressEntryBox";
}

int IPAddressEntryBox::gap()
{
    return UifStd::getIndentWidth();
}

uint16_t IPAddressEntryBox::calcBoxWidth(const LightweightString<wchar_t>& text)
{
    return static_cast<uint16_t>(UifStd::defaultFont().pixelWidth(text.view()) + 2 * UifStd::getWidgetGap());
}

uint16_t IPAddressEntryBox::calcWidth(bool withPort)
{
    int width = 2 * UifStd::getWidgetGap() + 4 * calcBoxWidth(octetSizer) + 3 * gap();
    if (withPort)
        width += calcBoxWidth(portSizer) + gap();
    return static_cast<uint16_t>(width);
}

void IPAddressEntryBox::makeBoxesLike(const IPAddressEntryBox& other)
{
    for (CustomTextBox* box : m_boxes)
        removeChild(box);
    makeBoxes(other.hasPort());
    for (size_t i = 0; i < m_boxes.size(); ++i)
        m_boxes[i]->setString(other.m_boxes[i]->getString());
}

void IPAddressEntryBox::makeBoxes(bool withPort)
{
    m_boxes.clear();
    const int parts = withPort ? 5 : 4;
    for (int i = 0; i < parts; ++i) {
        const bool port = i == 4;
        CustomTextBox::InitArgs args(L"", calcBoxWidth(port ? portSizer : octetSizer), getHeight(),
                                     getPalette().makeChildPalette());
        args.allowedChars = L"0123456789";
        args.maxLength = port ? portMaxLength : octetMaxLength;
        args.alignment = TextAlignment(TextAlignment::HCentre, TextAlignment::VCentre);
        const WidgetPosition where = i == 0 ? BottomLeft(UifStd::getWidgetGap(), 0) : RightOf(gap(), m_boxes.back());
        CustomTextBox* box = addWidget<CustomTextBox>(args, where);
        box->setKeyFilter(filterBoxKey);
        box->setAfterKey(afterBoxKey);
        m_boxes.push_back(box);
    }
}

void IPAddressEntryBox::reshape()
{
    for (CustomTextBox* box : m_boxes)
        box->resize(box->getWidth(), getHeight());
    StandardPanel::reshape();
}

int IPAddressEntryBox::indexOf(const Glob* box) const
{
    for (size_t i = 0; i < m_boxes.size(); ++i)
        if (m_boxes[i] == box)
            return static_cast<int>(i);
    return -1;
}

LightweightString<wchar_t> IPAddressEntryBox::getURI() const
{
    std::wstring uri;
    for (size_t i = 0; i < 4 && i < m_boxes.size(); ++i) {
        if (i > 0)
            uri += L'.';
        uri += m_boxes[i]->text();
    }
    if (m_boxes.size() >= 5)
        uri += L':' + m_boxes[4]->text();
    return LightweightString<wchar_t>(std::move(uri));
}

void IPAddressEntryBox::setURI(const IPAddress& address)
{
    for (int i = 0; i < 4 && static_cast<size_t>(i) < m_boxes.size(); ++i)
        m_boxes[static_cast<size_t>(i)]->setString(LightweightString<wchar_t>(std::to_wstring(address.getPart(i))));
    if (hasPort())
        m_boxes[4]->setString(address.hasPort() ? LightweightString<wchar_t>(std::to_wstring(address.getPort()))
                                                : LightweightString<wchar_t>());
}

bool IPAddressEntryBox::setURI(const LightweightString<wchar_t>& text)
{
    const std::optional<IPAddress> address = IPAddress::fromString(text.view());
    if (!address)
        return false;
    setURI(*address);
    return true;
}

bool IPAddressEntryBox::handleMessageEvent(LightweightString<char> name, Glob* sender)
{
    const int from = indexOf(sender);
    if (name == nextMsg && from >= 0) {
        if (static_cast<size_t>(from) + 1 < m_boxes.size()) {
            CustomTextBox* to = m_boxes[static_cast<size_t>(from) + 1];
            to->takeFocus();
            to->setCaretPos(0);
        }
        return true;
    }
    if (name == prevMsg && from >= 0) {
        if (from > 0) {
            CustomTextBox* to = m_boxes[static_cast<size_t>(from) - 1];
            to->takeFocus();
            to->setCaretPos(to->text().size());
        }
        return true;
    }
    if (name == hnextMsg) {
        TabOrderManager::incrementTabStop(this);
        return true;
    }
    if (name == hprevMsg) {
        TabOrderManager::decrementTabStop(this);
        return true;
    }
    if (name == pasteMsg) {
        Screen* screen = getScreen();
        if (screen && setURI(screen->getClipboardText()))
            redraw();
        return true;
    }
    return false;
}

void IPAddressEntryBox::getTabOrderables(std::vector<TabOrderable*>& out)
{
    for (CustomTextBox* box : m_boxes)
        out.push_back(box);
}

void IPAddressEntryBox::setActive(bool active, eRedrawFlag redrawFlag)
{
    StandardPanel::setActive(active, redrawFlag);
    for (CustomTextBox* box : m_boxes)
        box->setActive(active, redrawFlag);
}

void IPAddressEntryBox::setPalette(const Palette& palette)
{
    StandardPanel::setPalette(palette);
    for (CustomTextBox* box : m_boxes)
        box->setPalette(palette.makeChildPalette());
}

void IPAddressEntryBox::drawBackground()
{
    StandardPanel::drawBackground();
    for (size_t i = 1; i < m_boxes.size(); ++i) {
        const GlobBox left = m_boxes[i - 1]->getBox();
        const GlobBox between(left.right(), 0, m_boxes[i]->getX(), getHeight());
        StylePainter::drawLabel(painter(), between, getPalette(), i == 4 ? L":" : L".", Pictor::TextAlign::Centre,
                                isEnabledInTree());
    }
}
