#pragma once
// TitleMenuButton: a title beside a DropDownMenuButton, the usual way a choice is offered in a panel row.
//
// The title takes the left part (titleWidth pixels, or what the title needs when 0), the drop-down the rest.
// The drop-down's messages come here first: a widget built on this one catches them in react(); otherwise
// the choice is published to a bound value (the selected position) and the owner hears the same message,
// sent by this widget.

#include "toolkit/ui/Glob.h"
#include "toolkit/ui/MenuItem.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/ValWidget.h"

#include <vector>

class TitleMenuButton : public Glob, public TabOrderableHost, public ValWidget<int> {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        // titleWidth 0 fits the title; width 0 fits the title and the widest entry; height 0 is the standard
        // button height.
        InitArgs(UIString titleText, std::vector<UIString> menuItems, uint16_t titleWidth, uint16_t w, uint16_t h,
                 const Palette& pal = Palette(), Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), title(std::move(titleText)), items(std::move(menuItems)),
              titleWidth(titleWidth)
        {
        }
        // For widgets made by type name: the info's "title" and "items" (a list) settings, read by SettingsReader.
        InitArgs(const GlobCreationInfo& info);

        UIString title;
        std::vector<UIString> items;
        uint16_t titleWidth = 0;
    };

    explicit TitleMenuButton(const InitArgs& args);
    TitleMenuButton(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    // Width and height of the whole (0: fitted, and the standard button height), a drop-down buttonHeight high
    // centred in it, the title fitted on the left; `showSelected` is the drop-down's
    // useSelectedForButtonDisplay.
    TitleMenuButton(UIString title, std::vector<UIString> items, const Palette& palette, uint16_t width,
                    uint16_t height, uint16_t buttonHeight, Canvas* canvas, bool showSelected);
    TitleMenuButton(const TitleMenuButton& other);
    TitleMenuButton(TitleMenuButton&& other) : TitleMenuButton(static_cast<const TitleMenuButton&>(other)) {}
    TitleMenuButton& operator=(const TitleMenuButton& other);
    TitleMenuButton& operator=(TitleMenuButton&& other) { return *this = static_cast<const TitleMenuButton&>(other); }
    ~TitleMenuButton() override;

    LightweightString<char> idstring() const override;

    DropDownMenuButton* getBtn() const { return m_button; }
    void setTitle(const UIString& title);
    const UIString& getTitle() const { return m_look.title; }
    uint16_t getTitleWidth() const { return m_look.titleWidth; }

    // The drop-down's selection: a position among its entries (headings not counted), -1 for none.
    int getSelectedItem() const;
    LightweightString<wchar_t> getSelectedItemNameW() const;
    bool setSelectedItem(const MenuItemIndex& which);

    // Called by the toolkit
    bool react(const Event& event) override;
    void drawText() override;
    void reshape() override;
    void setActive(bool active, eRedrawFlag redraw = Redraw) override;

protected:
    void showValue(const int& position, DataChangeType type) override;

private:
    // What the row shows beside its button, and how it shares its size with it: copied as one.
    struct Look {
        UIString title;
        uint16_t titleWidth = 0;
        // 0: as high as the widget.
        uint16_t buttonHeight = 0;
    };

    void build(const std::vector<MenuItem>& items, MenuItemIndex selection);
    // Makes `button` the row's drop-down (a child).
    void adopt(DropDownMenuButton* button);
    void layOut(const std::vector<MenuItem>& items, uint16_t width, uint16_t height);

    Look m_look;
    DropDownMenuButton* m_button = nullptr;
};
