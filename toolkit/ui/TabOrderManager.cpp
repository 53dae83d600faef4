#include "toolkit/ui/TabOrderManager.h"

#include "toolkit/ui/Glob.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/TabOrderable.h"

#include <algorithm>

namespace {

// One list per root that has stops. Roots are few (one per panel), so a flat list is quickest.
struct TabList {
    GlobWatch root;
    std::vector<GlobWatch> stops;
};

std::vector<TabList>& lists()
{
    static auto* all = new std::vector<TabList>;
    return *all;
}

void pruneDead()
{
    std::erase_if(lists(), [](const TabList& list) { return !list.root.alive(); });
}

TabList* listOf(const Glob* root)
{
    for (TabList& list : lists())
        if (list.root.get() == root)
            return &list;
    return nullptr;
}

// The list that governs a widget: that of the nearest ancestor (or itself) that keeps one.
TabList* scopeOf(Glob* widget)
{
    for (Glob* g = widget; g; g = g->parent())
        if (TabList* list = listOf(g))
            return list;
    return nullptr;
}

std::vector<Glob*> liveStops(const TabList& list)
{
    std::vector<Glob*> out;
    out.reserve(list.stops.size());
    for (const GlobWatch& w : list.stops)
        if (Glob* g = w.get())
            out.push_back(g);
    return out;
}

bool canTakeFocus(Glob* g)
{
    auto* orderable = dynamic_cast<TabOrderable*>(g);
    return orderable && orderable->acceptsFocus() && g->isShowing() && g->isEnabledInTree();
}

Glob* stepFocus(Glob* from, int direction)
{
    Screen* screen = Screen::current();
    Glob* start = from ? from : (screen ? screen->getFocus() : nullptr);
    bool fromNothing = false;
    if (!start && screen && !screen->getTopLevels().empty()) {
        start = screen->getTopLevels().back();
        fromNothing = true;
    }
    if (!start)
        return nullptr;
    pruneDead();
    const TabList* list = scopeOf(start);
    if (!list)
        return nullptr;
    const std::vector<Glob*> stops = liveStops(*list);
    const int n = static_cast<int>(stops.size());
    if (n == 0)
        return nullptr;

    // Where the move starts: the stop itself, or, for a host listed by its parts, its last (first) part.
    int at = direction > 0 ? -1 : n;
    if (!fromNothing) {
        const auto exact = std::find(stops.begin(), stops.end(), start);
        if (exact != stops.end()) {
            at = static_cast<int>(exact - stops.begin());
        } else {
            for (int i = 0; i < n; ++i)
                if (start->isAncestorOf(stops[i])) {
                    at = i;
                    if (direction < 0)
                        break;
                }
        }
    }
    for (int step = 1; step <= n; ++step) {
        const int i = ((at + direction * step) % n + n) % n;
        Glob* candidate = stops[i];
        if (canTakeFocus(candidate) && screen && screen->setFocus(candidate))
            return candidate;
    }
    return nullptr;
}

} // namespace

bool TabOrderManager::addTabStop(Glob* widget, int position)
{
    if (!is_good_glob_ptr(widget) || !dynamic_cast<TabOrderable*>(widget))
        return false;
    pruneDead();
    Glob* root = widget->root();
    TabList* list = listOf(root);
    if (!list) {
        lists().push_back({ GlobWatch(root), {} });
        list = &lists().back();
    }
    std::erase_if(list->stops, [widget](const GlobWatch& w) { return !w.alive() || w.get() == widget; });
    const auto size = static_cast<int>(list->stops.size());
    const int at = position < 0 ? size : std::min(position, size);
    list->stops.insert(list->stops.begin() + at, GlobWatch(widget));
    return true;
}

size_t TabOrderManager::addTabStopsFrom(Glob* host, int position)
{
    if (!is_good_glob_ptr(host))
        return 0;
    std::vector<TabOrderable*> parts;
    host->getTabOrderables(parts);
    size_t added = 0;
    for (TabOrderable* part : parts) {
        const int at = position < 0 ? position : position + static_cast<int>(added);
        if (addTabStop(dynamic_cast<Glob*>(part), at))
            ++added;
    }
    return added;
}

bool TabOrderManager::removeTabStop(Glob* widget)
{
    bool removed = false;
    for (TabList& list : lists())
        removed |= std::erase_if(list.stops, [widget](const GlobWatch& w) { return w.get() == widget; }) > 0;
    return removed;
}

std::vector<Glob*> TabOrderManager::getTabStops(Glob* widget)
{
    if (!is_good_glob_ptr(widget))
        return {};
    const TabList* list = scopeOf(widget);
    return list ? liveStops(*list) : std::vector<Glob*>();
}

Glob* TabOrderManager::incrementTabStop(Glob* from)
{
    return stepFocus(from, +1);
}

Glob* TabOrderManager::decrementTabStop(Glob* from)
{
    return stepFocus(from, -1);
}
