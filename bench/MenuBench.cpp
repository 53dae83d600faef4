// Menu benchmarks: opening a drop-down of thousands of entries and painting it, and scrolling it a notch.
// Only the rows in view may cost anything beyond one pass over the items.
//
//     build/menus-rel/bin/tessel-bench --benchmark_filter=Menu

#include "toolkit/ui/MenuGlob.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/widgets/DropDownMenuButton.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

std::vector<MenuItem> manyItems(int count)
{
    std::vector<MenuItem> items;
    items.reserve(size_t(count));
    for (int i = 0; i < count; ++i) {
        if (i % 50 == 0)
            items.emplace_back(UIString(LightweightString<wchar_t>(L"Group " + std::to_wstring(i / 50))), WidgetCallback(),
                               i % 100 == 0 ? MenuItemGroupOpen : MenuItemGroupFolded);
        items.emplace_back(UIString(LightweightString<wchar_t>(L"Entry " + std::to_wstring(i) + L"||" +
                                                              std::to_wstring(i * 3) + L"x" + std::to_wstring(i))),
                           WidgetCallback(), MenuItemInGroup);
    }
    return items;
}

// Press on a drop-down button: the menu is made, sized, placed and painted; Escape closes it.
void BM_MenuOpenDropDown(benchmark::State& state)
{
    Screen screen(1280, 800);
    auto* button = new DropDownMenuButton(
        DropDownMenuButton::InitArgs(manyItems(static_cast<int>(state.range(0))), MenuItemIndex(0), 200));
    button->setPos(100, 700);
    screen.addTopLevel(button);
    screen.flush();
    const XY<int> at = button->getScreenBox().centre();
    for (auto _ : state) {
        screen.mouseButton(at, Event::LeftButton, true);
        screen.mouseButton(at, Event::LeftButton, false);
        screen.flush();
        if (!button->getOpenMenu())
            state.SkipWithError("the menu did not open");
        screen.key(Event::KeyEscape);
        screen.flush();
    }
}
BENCHMARK(BM_MenuOpenDropDown)->Arg(50)->Arg(5000)->Unit(benchmark::kMillisecond);

// One wheel notch in an open menu and the paint that follows.
void BM_MenuScrollWheel(benchmark::State& state)
{
    Screen screen(1280, 800);
    std::vector<MenuItem> items = manyItems(static_cast<int>(state.range(0)));
    for (MenuItem& item : items)
        item.setFolded(false);
    MenuGlob* menu = MenuGlob::popUp(MenuGlob::InitArgs(items), {100, 790}, nullptr);
    if (!menu) {
        state.SkipWithError("no menu");
        return;
    }
    screen.flush();
    const XY<int> at = menu->getScreenBox().centre();
    int direction = -1;
    for (auto _ : state) {
        const size_t before = menu->getFirstRow();
        screen.mouseWheel(at, direction);
        screen.flush();
        if (menu->getFirstRow() == before)
            direction = -direction;
    }
}
BENCHMARK(BM_MenuScrollWheel)->Arg(5000)->Unit(benchmark::kMicrosecond);

} // namespace
