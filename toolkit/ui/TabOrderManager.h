#pragma once
// TabOrderManager: the order in which Tab and back-tab move the keyboard focus.
//
// Each top-level widget (its root) keeps one list of tab stops. addTabStop files a widget in the list of the
// root it belongs to when it is called, so build a panel's rows into the panel, then register them. Moving
// skips widgets that are dead, hidden, disabled or that refuse the focus, and wraps round at either end.

#include <cstddef>
#include <vector>

class Glob;
class TabOrderable;

class TabOrderManager {
public:
    // Any negative position (builders use -2) appends; 0..n inserts before that stop.
    static constexpr int append = -2;

    // A widget that is not TabOrderable is refused (answers false); one already listed is moved.
    static bool addTabStop(Glob* widget, int position = append);
    // Adds the host's getTabOrderables, in order, from `position` on. Answers how many were added.
    static size_t addTabStopsFrom(Glob* host, int position = append);
    static bool removeTabStop(Glob* widget);
    // The stops of the root of `widget`, dead ones left out.
    static std::vector<Glob*> getTabStops(Glob* widget);

    // Moves the focus to the next (previous) stop after `from`, or after the focused widget when `from` is
    // null. When `from` is a host listed by its parts, the move starts after its last (before its first)
    // part. Answers the widget that took the focus, or null when no stop could.
    static Glob* incrementTabStop(Glob* from = nullptr);
    static Glob* decrementTabStop(Glob* from = nullptr);
};
