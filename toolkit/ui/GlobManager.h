#pragma once
// GlobManager: making widgets by type name, finding them by name, and putting top-level widgets on the screen.
//
// Types are registered by name with a factory; createGlob(info) makes an unattached widget of info.typeName
// (null for an unknown name), which the caller then shows with realize() or adopts as a child.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/XY.h"
#include "toolkit/ui/GlobCreationInfo.h"
#include "toolkit/ui/WidgetPosition.h"

#include <functional>
#include <vector>

class Glob;

class GlobManager {
public:
    using Factory = std::function<Glob*(const GlobCreationInfo&)>;

    // Registering a name again replaces its factory. An empty name or factory is refused (answers false).
    static bool registerType(const LightweightString<char>& typeName, Factory factory);
    static bool unregisterType(const LightweightString<char>& typeName);
    static bool isRegistered(const LightweightString<char>& typeName);
    // Registers a widget class made from its own InitArgs, built from the info. For the class's source file:
    //     const bool registeredByName = GlobManager::registerWidget<Button>("Button");
    template <typename T> static bool registerWidget(const char* typeName)
    {
        return registerType(typeName,
                            [](const GlobCreationInfo& info) -> Glob* { return new T(typename T::InitArgs(info)); });
    }
    // A registered type made from the info; null when the type is unknown or its factory made nothing.
    static Glob* createGlob(const GlobCreationInfo& info);

    // The live widget with that name (the one named most recently when several are), or null.
    static Glob* find(const LightweightString<char>& name);

    // A position for a new top-level widget of the given size: centred on the pointer, kept on screen.
    static XY<int> getPosForGlob(const GlobCreationInfo& info);
    static XY<int> getPosForGlob(XY<int> size);
    // The position nearest to `wanted` at which a widget of `size` lies wholly on the screen (inside the
    // margin of the window arrangement); when it is larger than the screen its top-left stays visible.
    static XY<int> getSafePosForGlob(XY<int> wanted, XY<int> size);
    // Keeps an existing top-level widget on screen.
    static void makeSafe(Glob* glob);

    // Shows a new top-level widget on the screen, on top of the others; the screen owns it from now on.
    // Answers false (and leaves the widget alone) when there is no screen or the widget has a parent.
    static bool realize(Glob* glob);
    static void raise(Glob* glob);
    static void lower(Glob* glob);
};
