#pragma once
// MenuItem: one entry of a menu, as plain data: a label, what choosing it does, its kind and, rarely, its
// own colours and a tooltip. Menus copy their items, so an item is a small value.
//
// Kinds: 0 and 1 are entries the user can choose (1 is an entry under a group heading), 2 is a group heading
// whose group is shown open, 3 a heading whose group is shown folded. Headings are never chosen themselves.

#include "toolkit/support/Colour.h"
#include "toolkit/support/UIString.h"

#include <functional>
#include <optional>

// What a widget runs when the user acts on it (a menu entry chosen, a button pressed).
using WidgetCallback = std::function<void()>;

enum MenuItemType : int {
    MenuItemNormal = 0,
    MenuItemInGroup = 1,
    MenuItemGroupOpen = 2,
    MenuItemGroupFolded = 3,
};

class MenuItem {
public:
    MenuItem() = default;
    MenuItem(UIString label, WidgetCallback callback = {}, MenuItemType type = MenuItemNormal,
             ResStrFmt format = resFmtAsIs)
        : m_label(std::move(label)), m_callback(std::move(callback)), m_type(type), m_format(format)
    {
    }
    MenuItem(UIString label, WidgetCallback callback, const Colour& back, const Colour& text,
             MenuItemType type = MenuItemNormal)
        : m_label(std::move(label)), m_callback(std::move(callback)), m_type(type), m_colours(Colours{back, text})
    {
    }

    // Sets the help text shown while the pointer rests on the item; answers the item for chaining.
    MenuItem& tooltip(UIString text)
    {
        m_tooltip = std::move(text);
        return *this;
    }
    MenuItem& setEnabled(bool enabled)
    {
        m_enabled = enabled;
        return *this;
    }

    const UIString& getLabel() const { return m_label; }
    // The label as shown, with the item's resource formatting applied.
    LightweightString<wchar_t> getDisplayText() const;
    const WidgetCallback& getCallback() const { return m_callback; }
    MenuItemType getType() const { return m_type; }
    ResStrFmt getFormat() const { return m_format; }
    const UIString& getTooltip() const { return m_tooltip; }
    bool isEnabled() const { return m_enabled; }
    bool isHeading() const { return m_type == MenuItemGroupOpen || m_type == MenuItemGroupFolded; }
    // Whether the user can choose it: an enabled entry that is not a heading.
    bool isSelectable() const { return m_enabled && !isHeading(); }
    bool hasOwnColours() const { return m_colours.has_value(); }
    Colour getBackColour() const { return m_colours ? m_colours->back : Colour(); }
    Colour getTextColour() const { return m_colours ? m_colours->text : Colour(); }

private:
    struct Colours {
        Colour back;
        Colour text;
    };

    UIString m_label;
    WidgetCallback m_callback;
    MenuItemType m_type = MenuItemNormal;
    ResStrFmt m_format = resFmtAsIs;
    UIString m_tooltip;
    std::optional<Colours> m_colours;
    bool m_enabled = true;
};
