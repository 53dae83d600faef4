#pragma once
// Picking from the drop-downs of the format buttons through the harness, as a user would: a click opens the
// menu, a click on a folded heading opens its group, a click on the entry chooses it.

#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/widgets/DropDownMenuButton.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace formatstest {

// The menu's labels as shown, headings included.
inline std::vector<std::wstring> labels(const DropDownMenuButton* button)
{
    std::vector<std::wstring> out;
    for (const MenuItem& item : button->getItems())
        out.push_back(item.getLabel().getString().str());
    return out;
}

inline std::vector<int> types(const DropDownMenuButton* button)
{
    std::vector<int> out;
    for (const MenuItem& item : button->getItems())
        out.push_back(item.getType());
    return out;
}

// Opens the menu and chooses the item with this label (the first one, headings included).
inline void pick(UiHarness& ui, DropDownMenuButton* button, const std::wstring& label)
{
    const std::vector<std::wstring> all = labels(button);
    const auto found = std::find(all.begin(), all.end(), label);
    ASSERT_NE(found, all.end()) << "no item labelled as wanted";
    const size_t index = static_cast<size_t>(found - all.begin());
    ui.click(button);
    MenuGlob* menu = button->getOpenMenu();
    ASSERT_NE(menu, nullptr) << "the menu did not open";
    if (!menu->isItemShown(index)) {
        size_t heading = index;
        while (heading > 0 && !menu->getItems()[heading].isHeading())
            --heading;
        ui.click(menu, menu->getItemBox(heading).centre());
        ASSERT_TRUE(menu->isItemShown(index));
    }
    ui.click(menu, menu->getItemBox(index).centre());
    ui.step();
}

} // namespace formatstest
