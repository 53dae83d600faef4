#include "toolkit/widgets/TextBoxBase.h"

#include "toolkit/support/SettingsReader.h"
#include "toolkit/gfx/Painter.h"
#include "toolkit/support/BackgroundTasks.h"
#include "toolkit/support/Clock.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StylePainter.h"
#include "toolkit/ui/UifStd.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cwctype>

namespace {

// Space between the well's edge and the text.
constexpr int kPad = 4;
// A blink phase: the caret is shown for one and hidden for the next.
constexpr double kBlinkMs = 530.0;
constexpr wchar_t kBullet = 0x2022;

const bool registeredByName = GlobManager::registerWidget<TextBoxBase>("TextBoxBase");

bool isWordChar(wchar_t c)
{
    return std::iswalnum(static_cast<wint_t>(c)) || c == L'_';
}

} // namespace

TextBoxBase::InitArgs::InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info)
{
    const SettingsReader settings(info.config);
    text = settings.text("text").value_or(text);
    maxLength = std::max(0, settings.integer("maxLength").value_or(maxLength));
}

TextBoxBase::TextBoxBase(const InitArgs& args) : Glob(args), FontUser(UifStd::getDefaultFont())
{
    initFrom(args);
}

TextBoxBase::TextBoxBase(uint16_t width, uint16_t height, const Palette& palette, Canvas* canvas)
    : Glob(width, height ? height : static_cast<uint16_t>(UifStd::getButtonHeight()), palette, canvas)
    , FontUser(UifStd::getDefaultFont())
{
}

TextBoxBase::~TextBoxBase() = default;

void TextBoxBase::initFrom(const InitArgs& args)
{
    if (getHeight() == 0)
        resize(getWidth(), UifStd::getButtonHeight());
    m_text = args.text.str();
    m_caret = m_anchor = m_text.size();
    m_maxLength = std::max(0, args.maxLength);
    m_alignment = args.alignment;
    setBit(EditableBit, args.editable);
    if (!args.allowedChars.empty())
        m_extras.made().allowed = args.allowedChars;
}

LightweightString<char> TextBoxBase::idstring() const
{
    return "TextBoxBase";
}

// ---------------------------------------------------------------------------------------------------------
// Text and options

void TextBoxBase::setString(const LightweightString<wchar_t>& text)
{
    std::wstring next = text.str();
    setBit(DirtyBit, false);
    if (next == m_text)
        return;
    m_text = std::move(next);
    m_caret = m_anchor = m_text.size();
    m_scroll = 0.0;
    if (hasFocus())
        ensureCaretVisible();
    redraw();
}

void TextBoxBase::setEditable(bool editable)
{
    if (editable == isEditable())
        return;
    setBit(EditableBit, editable);
    if (hasFocus()) {
        if (editable)
            startBlinking();
        else
            stopBlinking();
    }
    redraw();
}

void TextBoxBase::setMaxLength(int maxLength)
{
    m_maxLength = std::max(0, maxLength);
}

void TextBoxBase::setAllowedChars(const LightweightString<wchar_t>& allowed)
{
    if (allowed.empty() && !m_extras)
        return;
    m_extras.made().allowed = allowed;
}

LightweightString<wchar_t> TextBoxBase::getAllowedChars() const
{
    return m_extras ? m_extras->allowed : LightweightString<wchar_t>();
}

void TextBoxBase::setGhostLabel(const UIString& ghost)
{
    if (ghost.empty() && !m_extras)
        return;
    m_extras.made().ghost = ghost;
    if (m_text.empty())
        redraw();
}

UIString TextBoxBase::getGhostLabel() const
{
    return m_extras ? m_extras->ghost : UIString();
}

void TextBoxBase::setObfuscatedDisplay(bool obfuscated)
{
    if (obfuscated == isObfuscated())
        return;
    setBit(ObfuscatedBit, obfuscated);
    ensureCaretVisible();
    redraw();
}

void TextBoxBase::setAlignment(TextAlignment alignment)
{
    if (alignment == m_alignment)
        return;
    m_alignment = alignment;
    redraw();
}

void TextBoxBase::showValue(const LightweightString<wchar_t>& value, DataChangeType)
{
    setString(value);
}

// ---------------------------------------------------------------------------------------------------------
// Caret and selection

void TextBoxBase::setCaretPos(size_t pos, bool extend)
{
    pos = std::min(pos, m_text.size());
    const bool changed = pos != m_caret || (!extend && m_anchor != pos);
    m_caret = pos;
    if (!extend)
        m_anchor = pos;
    ensureCaretVisible();
    restartBlink();
    if (changed)
        redraw();
}

void TextBoxBase::setSelection(size_t anchor, size_t caret)
{
    m_anchor = std::min(anchor, m_text.size());
    setCaretPos(caret, true);
    redraw();
}

void TextBoxBase::selectAll()
{
    setSelection(0, m_text.size());
}

LightweightString<wchar_t> TextBoxBase::getSelectedText() const
{
    return LightweightString<wchar_t>(m_text.substr(selectionStart(), selectionEnd() - selectionStart()));
}

bool TextBoxBase::isCaretShown() const
{
    if (!isEditable() || !hasFocus() || !isEnabledInTree())
        return false;
    const double since = service_get_msecs_precise() - m_blink->start;
    return since < 0.0 || static_cast<long long>(since / kBlinkMs) % 2 == 0;
}

size_t TextBoxBase::wordStart(size_t pos) const
{
    pos = std::min(pos, m_text.size());
    while (pos > 0 && !isWordChar(m_text[pos - 1]))
        --pos;
    while (pos > 0 && isWordChar(m_text[pos - 1]))
        --pos;
    return pos;
}

size_t TextBoxBase::wordEnd(size_t pos) const
{
    while (pos < m_text.size() && !isWordChar(m_text[pos]))
        ++pos;
    while (pos < m_text.size() && isWordChar(m_text[pos]))
        ++pos;
    return pos;
}

void TextBoxBase::selectWordAt(size_t pos)
{
    if (m_text.empty())
        return;
    pos = std::min(pos, m_text.size() - 1);
    // The run of characters of the same kind as the one under the pointer: a word, or a run of spaces;
    // any other character is selected on its own.
    auto kind = [](wchar_t c) { return isWordChar(c) ? 0 : std::iswspace(static_cast<wint_t>(c)) ? 1 : 2; };
    const int k = kind(m_text[pos]);
    size_t from = pos;
    size_t to = pos + 1;
    if (k != 2) {
        while (from > 0 && kind(m_text[from - 1]) == k)
            --from;
        while (to < m_text.size() && kind(m_text[to]) == k)
            ++to;
    }
    setSelection(from, to);
}

// ---------------------------------------------------------------------------------------------------------
// Editing

std::wstring TextBoxBase::filterInput(std::wstring_view input, size_t keep) const
{
    std::wstring out;
    out.reserve(input.size());
    for (wchar_t c : input) {
        if (c < 0x20 || c == 0x7f || (c >= 0x80 && c < 0xa0))
            continue; // newlines, tabs and other controls have no place in one line of text
        if (!isCharAllowed(c))
            continue;
        out.push_back(c);
    }
    if (m_maxLength > 0) {
        const size_t room = keep >= static_cast<size_t>(m_maxLength) ? 0 : m_maxLength - keep;
        if (out.size() > room)
            out.resize(room);
    }
    return out;
}

bool TextBoxBase::isCharAllowed(wchar_t c) const
{
    if (!m_extras || m_extras->allowed.empty())
        return true;
    return m_extras->allowed.find(c) != LightweightString<wchar_t>::npos;
}

bool TextBoxBase::replaceSelection(const std::wstring& text)
{
    const size_t from = selectionStart();
    const size_t to = selectionEnd();
    if (from == to && text.empty())
        return true;
    m_text.replace(from, to - from, text);
    m_caret = m_anchor = from + text.size();
    setBit(DirtyBit, true);
    ensureCaretVisible();
    restartBlink();
    redraw();
    return report(eChanged);
}

bool TextBoxBase::insertText(std::wstring_view typed)
{
    if (!isEditable())
        return true;
    const size_t keep = m_text.size() - (selectionEnd() - selectionStart());
    const std::wstring filtered = filterInput(typed, keep);
    if (filtered.empty())
        return true; // nothing survived: the selection stays, as the user would expect of a refused key
    return replaceSelection(filtered);
}

bool TextBoxBase::deleteSelection()
{
    if (!isEditable() || !hasSelection())
        return true;
    return replaceSelection(std::wstring());
}

bool TextBoxBase::copy()
{
    Screen* screen = getScreen();
    if (!screen || isObfuscated() || !hasSelection())
        return false;
    screen->setClipboardText(getSelectedText());
    return true;
}

bool TextBoxBase::cut()
{
    if (!isEditable() || !copy())
        return false;
    return deleteSelection();
}

bool TextBoxBase::paste()
{
    Screen* screen = getScreen();
    if (!screen || !isEditable())
        return true;
    const LightweightString<wchar_t> clip = screen->getClipboardText();
    return insertText(clip.view());
}

bool TextBoxBase::commit()
{
    GlobWatch self(this);
    prepareCommit();
    if (!self)
        return false;
    setBit(DirtyBit, false);
    publishValue(getString(), kDataChangeFinal);
    if (!self)
        return false;
    return report(eCommit);
}

// ---------------------------------------------------------------------------------------------------------
// Reports

void TextBoxBase::requestCallback(const LightweightString<char>& msg, EventHandler* target, eCallbackEvent event)
{
    const int index = static_cast<int>(event);
    if (index <= 0 || index >= NumCallbackEvents)
        return;
    Extras::Callback& cb = m_extras.made().callbacks[static_cast<size_t>(index)];
    cb.msg = msg;
    cb.target = msg.empty() ? nullptr : target;
    Glob* glob = dynamic_cast<Glob*>(cb.target);
    cb.watch = GlobWatch(glob);
    cb.isWidget = glob != nullptr;
}

bool TextBoxBase::report(eCallbackEvent event)
{
    static const char* const defaults[NumCallbackEvents] = {nullptr, changedMsg, returnPressedMsg, commitMsg,
                                                            focusLostMsg};
    const size_t index = static_cast<size_t>(event);
    if (index == 0 || index >= NumCallbackEvents)
        return true;
    if (m_extras && m_extras->callbacks[index].target) {
        const Extras::Callback cb = m_extras->callbacks[index];
        if (Glob* glob = cb.watch.get())
            return sendMsg(glob, cb.msg);
        if (!cb.isWidget) {
            // A handler that is not a widget: its owner keeps it alive for as long as it asked to hear.
            GlobWatch self(this);
            {
                DispatchScope scope;
                cb.target->react(Event::makeMessage(cb.msg, this));
            }
            return self.alive();
        }
        // The handler widget died: nobody hears this event any more.
        m_extras->callbacks[index] = {};
        return true;
    }
    return callMsg(defaults[index]);
}

// ---------------------------------------------------------------------------------------------------------
// Geometry

GlobBox TextBoxBase::entryArea() const
{
    return getLocalBox();
}

std::wstring TextBoxBase::displayText() const
{
    if (isObfuscated())
        return std::wstring(m_text.size(), kBullet);
    return m_text;
}

double TextBoxBase::prefixWidth(size_t pos) const
{
    if (pos == 0)
        return 0.0;
    const std::wstring shown = displayText();
    return getFont().measureWidth(std::wstring_view(shown).substr(0, std::min(pos, shown.size())));
}

double TextBoxBase::xForPos(size_t pos) const
{
    const GlobBox area = entryArea();
    const double inner = area.width() - 2.0 * kPad;
    const double total = prefixWidth(m_text.size());
    double offset = 0.0;
    if (total <= inner) {
        if (m_alignment.horizontal == TextAlignment::Right)
            offset = inner - total;
        else if (m_alignment.horizontal == TextAlignment::HCentre)
            offset = (inner - total) / 2.0;
    }
    return area.left() + kPad + offset - m_scroll + prefixWidth(pos);
}

size_t TextBoxBase::posForX(double x) const
{
    // Prefix widths grow with the position, so the nearest caret position is found by bisection.
    size_t lo = 0;
    size_t hi = m_text.size();
    while (lo < hi) {
        const size_t mid = (lo + hi) / 2;
        if (xForPos(mid + 1) <= x)
            lo = mid + 1;
        else
            hi = mid;
    }
    if (lo < m_text.size()) {
        const double left = xForPos(lo);
        const double right = xForPos(lo + 1);
        if (x - left > right - x)
            ++lo;
    }
    return lo;
}

void TextBoxBase::ensureCaretVisible()
{
    const GlobBox area = entryArea();
    const double inner = std::max(1.0, area.width() - 2.0 * kPad);
    const double total = prefixWidth(m_text.size());
    if (total <= inner) {
        m_scroll = 0.0;
        return;
    }
    const double caret = prefixWidth(m_caret);
    if (caret - m_scroll > inner - 1.0)
        m_scroll = caret - inner + 1.0;
    if (caret - m_scroll < 0.0)
        m_scroll = caret;
    // No empty room at the right while text is hidden at the left.
    m_scroll = std::clamp(m_scroll, 0.0, std::max(0.0, total - inner + 1.0));
}

void TextBoxBase::reshape()
{
    Glob::reshape();
    ensureCaretVisible();
}

// ---------------------------------------------------------------------------------------------------------
// Blinking

void TextBoxBase::restartBlink()
{
    m_blink->start = service_get_msecs_precise();
    setBit(CaretOnBit, true);
}

void TextBoxBase::startBlinking()
{
    m_blink->start = service_get_msecs_precise();
    setBit(CaretOnBit, true);
    if (!m_blink->poller.running())
        m_blink->poller = Cv::ScopedBackgroundPoller([this] { pollBlink(); });
}

void TextBoxBase::stopBlinking()
{
    m_blink->poller.stop();
}

void TextBoxBase::pollBlink()
{
    // Only the focused box polls, so this costs one clock reading per loop turn.
    const bool shown = isCaretShown();
    if (shown != hasBit(CaretOnBit)) {
        setBit(CaretOnBit, shown);
        redraw(entryArea());
    }
}

// ---------------------------------------------------------------------------------------------------------
// Input

void TextBoxBase::setActive(bool active, eRedrawFlag redrawFlag)
{
    if (!active)
        setBit(DraggingBit, false);
    Glob::setActive(active, redrawFlag);
}

int TextBoxBase::contextCursor(const XY<int>& local)
{
    if (isEnabledInTree() && entryArea().contains(local))
        return CursorIBeam;
    return Glob::contextCursor(local);
}

bool TextBoxBase::react(const Event& event)
{
    if (event.isMouse())
        return handleMouse(event);
    switch (event.type) {
    case Event::FocusGained:
        if (isEditable())
            startBlinking();
        ensureCaretVisible();
        redraw();
        return true;
    case Event::FocusLost: {
        stopBlinking();
        setBit(DraggingBit, false);
        redraw();
        if (hasBit(DirtyBit) && !commit())
            return true;
        report(eFocusLost);
        return true;
    }
    case Event::Key:
        if (!isEnabledInTree())
            return false;
        return handleKey(event);
    default:
        return Glob::react(event);
    }
}

bool TextBoxBase::handleMouse(const Event& event)
{
    switch (event.type) {
    case Event::MouseDown: {
        if (event.button != Event::LeftButton || !isEnabledInTree())
            return false;
        const size_t pos = posForX(event.pos.x);
        if (event.clickCount >= 2) {
            selectWordAt(pos);
            return true;
        }
        setCaretPos(pos, event.has(Event::Shift));
        setBit(DraggingBit, true);
        return true;
    }
    case Event::MouseDrag:
        if (!hasBit(DraggingBit))
            return false;
        setCaretPos(posForX(event.pos.x), true);
        return true;
    case Event::MouseUp:
        if (!hasBit(DraggingBit))
            return false;
        setBit(DraggingBit, false);
        return true;
    default:
        return Glob::handleMouseEvent(event);
    }
}

bool TextBoxBase::handleKey(const Event& event)
{
    const bool shift = event.has(Event::Shift);
    const bool command = event.has(Event::Ctrl) || event.has(Event::Cmd);
    if (command && !event.has(Event::Alt)) {
        switch (std::towlower(static_cast<wint_t>(event.key))) {
        case L'a':
            selectAll();
            return true;
        case L'c':
            copy();
            return true;
        case L'x':
            cut();
            return true;
        case L'v':
            paste();
            return true;
        default:
            break;
        }
    }
    switch (event.key) {
    case Event::KeyLeft:
        if (hasSelection() && !shift)
            setCaretPos(selectionStart());
        else
            setCaretPos(command ? wordStart(m_caret) : (m_caret > 0 ? m_caret - 1 : 0), shift);
        return true;
    case Event::KeyRight:
        if (hasSelection() && !shift)
            setCaretPos(selectionEnd());
        else
            setCaretPos(command ? wordEnd(m_caret) : m_caret + 1, shift);
        return true;
    case Event::KeyHome:
        setCaretPos(0, shift);
        return true;
    case Event::KeyEnd:
        setCaretPos(m_text.size(), shift);
        return true;
    case Event::KeyBackspace:
        if (!isEditable())
            return true;
        if (!hasSelection() && m_caret > 0)
            m_anchor = command ? wordStart(m_caret) : m_caret - 1;
        deleteSelection();
        return true;
    case Event::KeyDelete:
        if (!isEditable())
            return true;
        if (!hasSelection() && m_caret < m_text.size())
            m_anchor = command ? wordEnd(m_caret) : m_caret + 1;
        deleteSelection();
        return true;
    case Event::KeyReturn: {
        if (!commit())
            return true;
        report(eReturnPressed);
        return true;
    }
    default:
        break;
    }
    if (event.isPrintable() && !command && !event.has(Event::Alt)) {
        const wchar_t c = static_cast<wchar_t>(event.key);
        insertText(std::wstring_view(&c, 1));
        return true;
    }
    return false;
}

// ---------------------------------------------------------------------------------------------------------
// Drawing

void TextBoxBase::drawBackground()
{
    Pictor::Painter& p = painter();
    const GlobBox area = entryArea();
    if (area != getLocalBox())
        p.fillRect(getLocalBox(), getPalette().window());
    if (!isEnabledInTree()) {
        // A disabled box is a flat well: nothing to type into.
        p.fillRect(area, getPalette().window(2));
        StylePainter::drawBevel(p, area, getPalette(), true);
        return;
    }
    StylePainter::drawEntryWell(p, area, getPalette(), hasFocus());
}

void TextBoxBase::drawText()
{
    Pictor::Painter& p = painter();
    const Palette& pal = getPalette();
    const Pictor::Font& font = getFont();
    const GlobBox area = entryArea();
    const Pictor::PaintRect inner(area.left() + 2, area.bottom() + 1, area.right() - 2, area.top() - 1);
    if (inner.empty())
        return;
    Pictor::StateSaver saver(p);
    p.clipTo(inner);

    double baseline = 0.0;
    switch (m_alignment.vertical) {
    case TextAlignment::Top:
        baseline = area.top() - kPad / 2.0 - font.ascent();
        break;
    case TextAlignment::Bottom:
        baseline = area.bottom() + kPad / 2.0 + font.descent();
        break;
    default:
        baseline = (area.bottom() + area.top()) / 2.0 - (font.ascent() - font.descent()) / 2.0;
        break;
    }
    const double lineBottom = baseline - font.descent();
    const double lineTop = baseline + font.ascent();
    const bool enabled = isEnabledInTree();

    if (m_text.empty()) {
        const UIString ghost = getGhostLabel();
        if (!ghost.empty() && !hasFocus()) {
            const LightweightString<wchar_t> g = ghost.getString();
            p.drawText(g.view(), font, pal.disabledText(), xForPos(0), baseline);
        }
    } else {
        const std::wstring shown = displayText();
        const double x = xForPos(0);
        p.drawText(std::wstring_view(shown), font, pal.text(enabled), x, baseline);
        if (hasSelection() && enabled) {
            // The selected part is drawn again over the highlight, clipped to it, so it reads as one line.
            const double x0 = xForPos(selectionStart());
            const double x1 = xForPos(selectionEnd());
            const Pictor::PaintRect band(x0, lineBottom, x1, lineTop);
            const Colour back = hasFocus() ? pal.highlight() : pal.highlight().mix(pal.entry(), 0.5);
            p.fillRect(band, back);
            Pictor::StateSaver inside(p);
            p.clipTo(band);
            p.drawText(std::wstring_view(shown), font, pal.highlightText(), x, baseline);
        }
    }
    if (isCaretShown()) {
        const double cx = std::floor(xForPos(m_caret));
        p.fillRect(Pictor::PaintRect(cx, lineBottom, cx + 1.0, lineTop), pal.text());
    }
}
