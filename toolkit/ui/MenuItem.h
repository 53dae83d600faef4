#pragma once
// MenuItem: one entry of a menu, as plain data: a label, what choosing it does, its kind and, rarely, its
// own colours and a tooltip. Menus copy their items, so an item is a small value.
//
// Kinds: 0 and 1 are entries the user can choose (1 is an entry under a group heading), 2 is a group heading
// whose group is shown open, 3 a heading whose group is shown folded. Headings are never chosen themselves.
// A heading's group is the run of kind-1 entries right after it; folding the heading hides them.
//
// A label may hold "||": the text before it is the main column, the text after it a second column drawn
// right-aligned (a format's name on the left, its dimensions on the right).
//
// Positions. Menus that keep a selection count their entries without the headings: position 0 is the first
// entry that is not a heading. Lists of identifiers kept beside a menu then line up with its entries.

#include "toolkit/support/Colour.h"
#include "toolkit/support/UIString.h"

#include <functional>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

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
    // Turns a heading open or folded; other kinds are left as they are.
    void setFolded(bool folded)
    {
        if (isHeading())
            m_type = folded ? MenuItemGroupFolded : MenuItemGroupOpen;
    }
    bool isFolded() const { return m_type == MenuItemGroupFolded; }
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

    // The display text split at the first "||": the main column and the right-hand one (empty when none).
    static std::pair<std::wstring_view, std::wstring_view> splitColumns(std::wstring_view text)
    {
        const size_t bar = text.find(L"||");
        if (bar == std::wstring_view::npos)
            return {text, {}};
        return {text.substr(0, bar), text.substr(bar + 2)};
    }

    // Plain items, one per label, for menus given only their texts.
    static std::vector<MenuItem> fromLabels(const std::vector<UIString>& labels)
    {
        std::vector<MenuItem> items;
        items.reserve(labels.size());
        for (const UIString& label : labels)
            items.emplace_back(label);
        return items;
    }

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

// Which entry of a menu to select: a position among the entries that are not headings, or a label. A label
// that matches no entry selects nothing new; a position past the end selects nothing.
class MenuItemIndex {
public:
    // Any integer type, so that an index kept as size_t or u16 needs no cast; what no menu can reach (negative
    // or beyond 16 bits) selects nothing.
    template <std::integral T>
    MenuItemIndex(T position)
        : m_position(std::cmp_less(position, 0) || std::cmp_greater(position, 0xFFFF) ? -1 : static_cast<int>(position))
    {
    }
    MenuItemIndex(LightweightString<wchar_t> label) : m_label(std::move(label)), m_byLabel(true) {}
    MenuItemIndex(const wchar_t* label) : MenuItemIndex(LightweightString<wchar_t>(label ? label : L"")) {}
    MenuItemIndex(const UIString& label) : MenuItemIndex(label.getString()) {}

    bool byLabel() const { return m_byLabel; }
    int position() const { return m_position; }
    const LightweightString<wchar_t>& label() const { return m_label; }

private:
    int m_position = -1;
    LightweightString<wchar_t> m_label;
    bool m_byLabel = false;
};
