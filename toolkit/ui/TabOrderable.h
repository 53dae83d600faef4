#pragma once
// Keyboard focus interfaces. A widget that can take the focus derives from TabOrderable; a widget that holds
// several of them (an address entry of four boxes) derives from TabOrderableHost and answers them, in order,
// from Glob::getTabOrderables. Both are thin: focus itself arrives as FocusGained / FocusLost events.

class TabOrderable {
public:
    virtual ~TabOrderable() = default;
    // Whether the widget wants the focus now (a read-only box may say no). Hidden and disabled widgets are
    // skipped whatever this says.
    virtual bool acceptsFocus() const { return true; }
};

class TabOrderableHost {
public:
    virtual ~TabOrderableHost() = default;
};
