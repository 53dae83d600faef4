#pragma once
// MenuGlob: a list of menu items, one under the other, that the user chooses from.
//
// A panel keeps its items in a MenuGlob that is never shown; popUp() shows a copy of it as a top-level
// pop-up and returns at once. The pop-up takes the keyboard and watches clicks outside itself:
//
//   input                         | pop-up does
//   ------------------------------+---------------------------------------------------------------
//   pointer moves over an item    | highlights it (headings and disabled items are never highlighted)
//   release over an item          | closes, then runs the item's callback
//   Up / Down                     | highlights the previous / next choosable item, wrapping round
//   Return                        | as a release over the highlighted item (nothing when none is)
//   Escape, press outside         | closes without choosing (the press outside is used up)
//
// The pop-up is destroyed before the callback runs, so a callback may open another menu or destroy the panel
// the menu belongs to. The geometry of rows is kept in a few virtual functions so that kinds of item with
// other heights or columns can be added without changing the input logic.

#include "toolkit/ui/Glob.h"
#include "toolkit/ui/MenuItem.h"

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
    MenuGlob(const MenuGlob& other);
    MenuGlob(MenuGlob&& other);
    MenuGlob& operator=(const MenuGlob& other);
    MenuGlob& operator=(MenuGlob&& other);
    ~MenuGlob() override;

    LightweightString<char> idstring() const override;

    // ---- Items
    void addMenuItem(MenuItem item);
    void setItems(std::vector<MenuItem> items);
    void clearItems();
    size_t numItems() const { return m_items.size(); }
    const std::vector<MenuItem>& getItems() const { return m_items; }
    // -1 when nothing is highlighted.
    int getHighlighted() const { return m_highlighted; }
    // Refused (answers false) for an index that cannot be chosen; -1 clears the highlight.
    bool setHighlighted(int index);
    // Closes the pop-up (if this is one) and runs the item's callback. Answers false, doing nothing, for an
    // item that cannot be chosen. `this` may be gone when it returns.
    bool chooseItem(size_t index);

    // ---- Size
    // The size that shows every item's full label, at least `minWidth` wide.
    XY<int> calcSize() const;
    void sizeToItems() { resize(calcSize().x, calcSize().y); }

    // ---- Pop-up
    // Shows a copy of this menu as a pop-up with its top-left corner at the screen point (moved as needed to
    // lie on the screen). Answers the pop-up, or null when there is no screen or nothing to show. The owner
    // hears cancelledMsg when the pop-up closes without a choice.
    MenuGlob* popUp(XY<int> screenTopLeft, Glob* owner) const;
    bool isPopUp() const { return m_popUp; }
    // Closes the pop-up without a choice. Does nothing for a menu that is not a pop-up.
    void dismiss();

    static const char* const cancelledMsg;

    // ---- Overrides
    bool react(const Event& event) override;
    bool handleMouseEvent(const Event& event) override;
    void drawBackground() override;
    void drawText() override;

protected:
    // Row geometry, in the menu's own bottom-up coordinates. The rows fill the menu from its top edge down.
    virtual int rowHeight(size_t index) const;
    virtual GlobBox rowBox(size_t index) const;
    // The item under a point, or -1.
    virtual int itemAt(XY<int> local) const;
    virtual void drawItem(size_t index, const GlobBox& box, bool highlighted);
    // The padding inside the frame, on every side.
    static constexpr int framePad = 2;

private:
    bool handleKey(int key);
    // Moves the highlight `step` choosable items on, wrapping round.
    void moveHighlight(int step);
    void closePopUp();

    std::vector<MenuItem> m_items;
    uint16_t m_minWidth = 0;
    int m_highlighted = -1;
    bool m_popUp = false;
    IdStamp m_interceptId;
};
