#pragma once
// DropDownMenuButton: a button that opens a menu of choices under itself and shows the choice it holds.
//
//   input                                  | button does
//   ---------------------------------------+------------------------------------------------------------
//   press, or Space / Return / Down keyed  | opens the menu under itself (drawn pressed while it is open),
//                                          | the selected entry highlighted and in view
//   a press on the button while it is open | the menu closes (the press is the menu's)
//   the user chooses an entry              | it becomes the selection; the owner hears the button's
//                                          | message (dropDownMenuButtonMsg unless setMessage chose another)
//   the menu closes without a choice       | nothing changes
//   anything while disabled                | nothing; drawn dimmed
//
// The selection is a position among the menu's entries, headings not counted (see MenuItem.h), or none
// (-1). Setting it from code never tells the owner. The face shows the selected entry's main column, unless
// useSelectedForButtonDisplay(false) was called: then it shows the text given with setString, which owners
// that describe the choice in their own words keep up to date.

#include "toolkit/gfx/FontDesc.h"
#include "toolkit/ui/MenuItem.h"
#include "toolkit/widgets/Button.h"

#include <memory>
#include <vector>

class MenuGlob;

class DropDownMenuButton : public Button {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // A width of 0 fits the widest entry; a height of 0 is the standard button height.
        InitArgs(std::vector<MenuItem> menuItems, MenuItemIndex selection = MenuItemIndex(0), uint16_t w = 0,
                 uint16_t h = 0, const Palette& pal = Palette(), Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), items(std::move(menuItems)), selected(std::move(selection))
        {
        }
        InitArgs(const std::vector<UIString>& labels, MenuItemIndex selection = MenuItemIndex(0), uint16_t w = 0,
                 uint16_t h = 0, const Palette& pal = Palette(), Canvas* c = nullptr);
        // For buttons made by type name: the entries are the info's "items" setting, a SettingsReader list.
        InitArgs(const GlobCreationInfo& info);

        std::vector<MenuItem> items;
        MenuItemIndex selected = MenuItemIndex(0);
    };

    explicit DropDownMenuButton(const InitArgs& args);
    DropDownMenuButton(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    // A copy has the same menu and selection, but never the original's open pop-up.
    DropDownMenuButton(const DropDownMenuButton& other) = default;
    DropDownMenuButton(DropDownMenuButton&& other) = default;
    DropDownMenuButton& operator=(const DropDownMenuButton& other) = default;
    DropDownMenuButton& operator=(DropDownMenuButton&& other) = default;
    ~DropDownMenuButton() override;

    LightweightString<char> idstring() const override;

    // ---- The menu
    // Replaces the menu (closing it if open) and selects one entry.
    void setStrings(std::vector<MenuItem> items, MenuItemIndex selection);
    void setStrings(const std::vector<UIString>& labels, MenuItemIndex selection);
    const std::vector<MenuItem>& getItems() const { return m_items; }
    // Entries the user can be given, headings not counted.
    size_t numEntries() const;

    // ---- The selection
    // By position, or by label (compared with the label's text and with its text as shown). A label that
    // matches no entry leaves the selection as it was; a position past the end selects nothing. Answers
    // whether something is selected afterwards.
    bool setSelectedItem(const MenuItemIndex& which);
    // -1 when nothing is selected.
    int getSelectedItem() const { return m_selected; }
    // The selected entry's label text, empty when nothing is selected.
    LightweightString<wchar_t> getSelectedItemNameW() const;
    // The selected entry, or null.
    const MenuItem* getSelectedMenuItem() const;

    // ---- The face
    void useSelectedForButtonDisplay(bool use);
    bool usesSelectedForButtonDisplay() const { return m_showSelected; }
    // The text the face shows now.
    LightweightString<wchar_t> getDisplayedText() const;
    // The width that shows the widest label (its main column), the arrow and the margins.
    static uint16_t calcWidth(const std::vector<UIString>& labels, const Pictor::FontDesc& font);
    static uint16_t calcWidth(const std::vector<MenuItem>& items, const Pictor::FontDesc& font);

    // ---- What a choice sends
    void setMessage(const LightweightString<char>& message);
    LightweightString<char> getMessage() const;

    // ---- Opening
    // Opens the menu under the button; answers it, or null when there is nothing to show.
    MenuGlob* openMenu();
    MenuGlob* getOpenMenu() const;
    void closeMenu();

    static constexpr const char* dropDownMenuButtonMsg = "drop_down_menu_button_chosen";

    // Called by the toolkit
    bool react(const Event& event) override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void drawText() override;

private:
    // Item index of an entry position, or -1.
    int itemOfEntry(int position) const;
    int entryOfItem(size_t index) const;
    void selectEntry(int position);
    void menuClosed();
    void fitWidth();

    std::vector<MenuItem> m_items;
    LightweightString<char> m_message;
    // Destroys the pop-up this button opened, unless it is gone already.
    struct CloseMenu {
        IdStamp stamp;
        void operator()(Glob* menu) const;
    };
    Transient<std::unique_ptr<Glob, CloseMenu>> m_openMenu;
    int m_selected = -1;
    bool m_showSelected = true;
};
