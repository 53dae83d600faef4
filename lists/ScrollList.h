#pragma once
// ScrollList: a vertically scrolling list of text lines; the user selects one line or, in multi-select mode,
// several. Each line is a ScrollListItemWidget in the list's radio group; a line is selected when its button
// is down.
//
// What the owner hears:
//   clickMsg              the selection changed by the mouse
//   itemSelectedMsg       a line was chosen: a double click (two presses on the same line within
//                         doubleClickTime) or Return
//   keypressMsg           a key asked to move the selection (even to the place after the last line)
//
// Mouse selection (modifiers of the press):
//   Ctrl, multi-select      toggles the line
//   Shift, multi-select     selects the range from the line to the nearest selected line after it (else
//                           before it, else the line alone); everything else is deselected
//   otherwise               multi-select without "plain click replaces", or any other modifier: toggles;
//                           else the line becomes the only selection
//
// The line pressed last (and when) is one value for every list in the process: a quick press on the same
// index in another list is a double click there too.
//
// Only the lines in view are children of the list's view, so scrolling and painting cost the same for a
// hundred lines as for a hundred thousand; the others wait unattached, owned by the list.

#include "lists/ScrollListItem.h"
#include "lists/ScrollListItemWidget.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/widgets/RadioSet.h"

#include <cstdint>
#include <vector>

class ScrollBar;

class ScrollList : public StandardPanel, public radio_set, public TabOrderable {
public:
    struct InitArgs : StandardPanel::InitArgs {
        InitArgs();
        // A line height of 0 is the standard button height.
        InitArgs(std::vector<LightweightString<wchar_t>> lines, uint16_t w, uint16_t h, uint16_t lineHeight = 0,
            const Palette& pal = Palette(), Canvas* c = nullptr);

        std::vector<LightweightString<wchar_t>> strings;
        uint16_t lineHeight = 0;
        SLItemAppearance appearance = SLItemFlat;
    };

    explicit ScrollList(const InitArgs& args);
    ScrollList(const std::vector<LightweightString<wchar_t>>& strings, uint16_t width, uint16_t height,
        const Palette& palette = Palette(), Canvas* canvas = nullptr);
    // A copy has the same lines (new ones) and modes; its selection starts empty unless one is required.
    ScrollList(const ScrollList& other);
    ScrollList(ScrollList&& other)
        : ScrollList(static_cast<const ScrollList&>(other))
    {
    }
    ScrollList& operator=(const ScrollList& other);
    ScrollList& operator=(ScrollList&& other) { return *this = static_cast<const ScrollList&>(other); }
    ~ScrollList() override;

    LightweightString<char> idstring() const override;

    // ---- Lines
    virtual void setStrings(const std::vector<LightweightString<wchar_t>>& strings);
    virtual void setStrings(const std::vector<ScrollListItem>& items);
    int numItems() const { return static_cast<int>(m_lines.size()); }
    LightweightString<wchar_t> getItemW(int index) const;
    // The line widget, or null out of range.
    ScrollListItemWidget* getItemWidget(int index) const;
    // The line's background: the warning colour for a warned line.
    Colour getItemColour(int index) const;
    void setItemWarn(int index, bool warn);
    uint32_t getLineHeight() const { return m_modes.lineHeight; }
    virtual void setLineHeight(uint16_t height);

    // ---- Selection. Flags: bit 0 redraw, bit 1 tell the owner clickMsg.
    enum SelectFlags : int { RedrawFlag = 1, NotifyFlag = 2 };
    int numSelected() const;
    // The first selected line, or -1.
    int getSelectedItem() const;
    LightweightString<wchar_t> getSelectedItemStringW() const;
    bool itemSelected(int index) const;
    // Scrolls the line into view (just enough), then selects it as a plain click would. Out of range: ignored.
    void selectItem(int index, int flags = RedrawFlag);
    // The first line with exactly that text.
    void selectItem(const LightweightString<wchar_t>& text, int flags = RedrawFlag);
    void selectItemByWidget(Glob* line, int flags = RedrawFlag);
    void clearSelection();
    // Multi-select switches the one-line-always-selected rule off. `ownerFlag` is kept for the owner.
    void multiSelect(bool multi, bool replaceOnPlainClick = true, bool ownerFlag = false);
    bool isMultiSelect() const { return m_modes.multi; }
    bool getOwnerFlag() const { return m_modes.ownerFlag; }
    void oneItemAlwaysSelected(bool always);
    // The line selected when a selection is required and none exists.
    void setPreferredItem(int index) { m_modes.preferred = index; }
    int getPreferredItem() const { return m_modes.preferred; }
    // The down colours of every line, now and for lines made later.
    void setDownCols(const Colour& back, const Colour& text);

    // ---- View
    bool itemIsVisible(int index) const;
    // Back to the first line.
    void resetView();
    uint32_t getScrollOffset() const { return m_offset; }
    uint32_t getVisibleHeight() const;
    uint32_t getTotalHeight() const { return m_modes.lineHeight * static_cast<uint32_t>(m_lines.size()); }
    ScrollBar* getScrollBar() const { return m_scrollBar; }
    // A right-button press on a line: a selectable line is selected with both flags.
    void handleMenuClick(Glob* line);

    static constexpr const char* clickMsg = "scroll_list_clicked";
    static constexpr const char* itemSelectedMsg = "scroll_list_item_selected";
    static constexpr const char* keypressMsg = "ScrollList::Keypress";
    static const char* scrollListItemSelectedMessage() { return itemSelectedMsg; }
    static constexpr double doubleClickTime = 400.0;

    using Glob::addWidget;
    using Glob::getWidget;

    // Called by the toolkit
    bool react(const Event& event) override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    bool handleMouseEvent(const Event& event) override;
    void reshape() override;
    void setPalette(const Palette& palette) override;

protected:
    // Makes one line; derived lists make lines of their own kind.
    virtual ScrollListItemWidget* makeWidget(int index, const LightweightString<wchar_t>& text, const Palette& palette,
        uint16_t width, uint16_t lineHeight, Canvas* canvas);
    void selectItemInternal(int index, int modifiers, int flags);
    // The widget that holds the lines in view.
    Glob* getLineView() const { return m_view; }

private:
    void makeChildren();
    std::vector<LightweightString<wchar_t>> lineTexts() const;
    void destroyLines();
    void addLine(int index, const LightweightString<wchar_t>& text);
    void restoreSelection(const LightweightString<wchar_t>& selectedText);
    void setLineDown(int index, bool down, bool redrawLine);
    int indexOfLine(const Glob* line) const;
    void lineClicked(Glob* line, int modifiers);
    bool handleKey(int key);
    void scrollTo(int64_t offset);
    void updateThumb();
    // Clamps the offset and attaches the lines in view at their places.
    void layoutLines();
    void detachLinesInView();

    // What a copy takes over; its lines are made again from their texts and its view starts at the top.
    struct Modes {
        int preferred = 0;
        uint32_t lineHeight = 0;
        Colour downBack;
        Colour downText;
        SLItemAppearance appearance = SLItemFlat;
        bool multi = false;
        bool replaceOnPlainClick = true;
        bool ownerFlag = false;
        bool oneAlwaysSelected = false;
    };

    std::vector<ScrollListItemWidget*> m_lines; // owned; the ones in view are also children of m_view
    Glob* m_view = nullptr;
    ScrollBar* m_scrollBar = nullptr;
    int m_firstAttached = 0;
    int m_endAttached = 0; // one past the last line attached to the view
    uint32_t m_offset = 0;
    Modes m_modes;
};
