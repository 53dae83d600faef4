#pragma once
// MenuGlob: a list of menu items, one under the other, that the user chooses from.
//
// A panel or a drop-down button keeps its items in a MenuGlob (or a plain list) that is never shown; popUp()
// shows a copy as a top-level pop-up and returns at once. The pop-up takes the keyboard and watches clicks
// outside itself:
//
//   input                         | pop-up does
//   ------------------------------+---------------------------------------------------------------
//   pointer moves over a row      | highlights it (open headings and disabled items never are)
//   release over an entry         | closes, tells the owner (chosenMsg), then runs the entry's callback
//   release over a heading        | folds or opens its group; the pop-up resizes under its top edge
//   Up / Down                     | the previous / next entry or folded heading, wrapping round
//   Home / End, PageUp / PageDown | the first / last of those, or a page of rows on
//   Right, Return on a heading    | opens the folded group and highlights its first entry
//   Left on an entry of a group   | folds the group and highlights its heading
//   Return                        | as a release over the highlighted entry
//   a letter or digit             | the next row after the highlight whose text starts with it
//   wheel, press on a scroll arrow| scrolls a menu taller than the screen
//   Escape, press outside         | closes without choosing (cancelledMsg; the press outside is used up)
//
// The keyboard stops on a heading only while its group is folded: an open group's entries can be reached
// directly, a folded one's only through its heading.
//
// Rows are one height, so the row under a point and the rows in an area are found by arithmetic: opening and
// painting a menu of thousands of items touches only the rows that show. The pop-up is destroyed before the
// callback runs, so a callback may open another menu or destroy the panel the menu belongs to.

#include "toolkit/ui/Glob.h"
#include "toolkit/ui/MenuItem.h"
#include "toolkit/ui/Transient.h"

#include <vector>

class MenuGlob : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        explicit InitArgs(std::vector<MenuItem> menuItems, uint16_t minimumWidth = 0)
            : items(std::move(menuItems)), minWidth(minimumWidth)
        {
        }
        std::vector<MenuItem> items;
        uint16_t minWidth = 0;
    };

    explicit MenuGlob(const InitArgs& args);
    MenuGlob(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    // A copy is a new, closed menu with the same items, nothing highlighted and scrolled to the top: never a
    // second handle on a pop-up.
    MenuGlob(const MenuGlob&) = default;
    MenuGlob(MenuGlob&&) = default;
    MenuGlob& operator=(const MenuGlob&) = default;
    MenuGlob& operator=(MenuGlob&&) = default;
    ~MenuGlob() override;

    LightweightString<char> idstring() const override;

    // ---- Items
    void addMenuItem(MenuItem item);
    void setItems(std::vector<MenuItem> items);
    void clearItems();
    size_t numItems() const { return m_items.size(); }
    const std::vector<MenuItem>& getItems() const { return m_items; }
    // Whether the item shows (it is not in a folded group).
    bool isItemShown(size_t index) const;
    // Folds or opens a heading's group. Answers false for an index that is not a heading.
    bool setGroupFolded(size_t headingIndex, bool folded);
    // -1 when nothing is highlighted.
    int getHighlighted() const { return *m_highlighted; }
    // Highlights an entry the user can choose (the keyboard may also rest on a folded heading, but owners
    // point at entries). Refused (answers false) for anything else; -1 clears the highlight. The highlighted
    // row is scrolled into view.
    bool setHighlighted(int index);
    // Closes the pop-up (if this is one) and runs the item's callback. Answers false, doing nothing, for an
    // item that cannot be chosen. `this` may be gone when it returns.
    bool chooseItem(size_t index);
    // The item chosen last, for an owner that hears chosenMsg; -1 before a choice.
    int getChosenIndex() const { return *m_chosen; }
    // Where an item's row is now, in the menu's coordinates; empty when it does not show.
    GlobBox getItemBox(size_t index) const { return rowBox(index); }

    // ---- Size and scrolling
    // The size that shows every shown row's full label, at least `minWidth` wide.
    XY<int> calcSize() const;
    void sizeToItems();
    // A taller menu keeps this height and scrolls; 0 is no limit. Pop-ups are limited to the screen.
    void setMaxHeight(uint16_t height);
    bool isScrollable() const;
    // The first row showing, counted among the shown rows.
    size_t getFirstRow() const { return *m_firstRow; }
    void scrollBy(int rows);
    size_t numShownRows() const { return m_rows.size(); }
    // How many rows fit between the frame (and the scroll arrows).
    size_t rowsInView() const;

    // ---- Pop-up
    // Shows a copy of this menu as a pop-up with its top-left corner at the screen point (moved as needed to
    // lie on the screen). Answers the pop-up, or null when there is no screen or nothing to show. The owner
    // hears chosenMsg before an entry's callback runs, and cancelledMsg when the pop-up closes without one.
    MenuGlob* popUp(XY<int> screenTopLeft, Glob* owner) const;
    // The same for a menu made for the occasion.
    static MenuGlob* popUp(const InitArgs& args, XY<int> screenTopLeft, Glob* owner);
    bool isPopUp() const { return *m_popUp; }
    // Closes the pop-up without a choice. Does nothing for a menu that is not a pop-up.
    void dismiss();

    static constexpr const char* cancelledMsg = "menu_cancelled";
    static constexpr const char* chosenMsg = "menu_chosen";

    // Called by the toolkit
    bool react(const Event& event) override;
    bool handleMouseEvent(const Event& event) override;
    void drawBackground() override;
    void drawText() override;
    void reshape() override;

protected:
    // Row geometry, in the menu's own bottom-up coordinates. The rows fill the menu from its top edge down
    // (below the upper scroll arrow when the menu scrolls).
    virtual int rowHeight() const;
    // The box of a shown row (counted among the shown rows) at its place now, scrolled or not.
    GlobBox rowBoxAt(size_t row) const;
    // The box of an item; empty when it does not show.
    GlobBox rowBox(size_t index) const;
    // The item under a point, or -1.
    int itemAt(XY<int> local) const;
    virtual void drawItem(size_t index, const GlobBox& box, bool highlighted);
    // The padding inside the frame, on every side.
    static constexpr int framePad = 2;

private:
    bool handleKey(int key);
    // Moves the highlight `step` navigable rows on, wrapping round when `wrap`.
    void moveHighlight(int step, bool wrap = true);
    bool isNavigable(size_t index) const;
    // As setHighlighted, but accepting every row the keyboard stops on.
    bool highlightRow(int index);
    void jumpToLetter(int key);
    void closePopUp();
    void rebuildRows();
    // Where an item is among the shown rows, or -1.
    int rowOf(size_t index) const;
    void ensureRowVisible(size_t row);
    void clampScroll();
    void fitAfterFolding();
    int arrowHeight() const;
    GlobBox upArrowBox() const;
    GlobBox downArrowBox() const;
    void updateTooltip();

    std::vector<MenuItem> m_items;
    // The items that show, in order: the rows.
    std::vector<uint32_t> m_rows;
    uint16_t m_minWidth = 0;
    uint16_t m_maxHeight = 0;
    Transient<size_t> m_firstRow;
    Transient<int, -1> m_highlighted;
    // The last choice is this menu's own answer to its owner: a copy has made none yet.
    PerObject<int, -1> m_chosen;
    // A pop-up's claim on the keyboard and on clicks outside it, given back when it closes or goes.
    PerObject<bool> m_popUp;
    PerObject<IdStamp> m_interceptId;
};
