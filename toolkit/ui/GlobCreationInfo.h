#pragma once
// GlobCreationInfo: what every widget is made from. Each widget class derives its own `InitArgs` from it and
// adds its options, so that a widget can be described as plain data before it exists (and made by name
// through GlobManager).

#include "toolkit/support/Configb.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/XY.h"
#include "toolkit/ui/Palette.h"

#include <cstdint>

class Canvas;

struct GlobCreationInfo {
    GlobCreationInfo() = default;
    GlobCreationInfo(uint16_t w, uint16_t h, const Palette& pal = Palette(), Canvas* c = nullptr)
        : width(w)
        , height(h)
        , palette(pal)
        , canvas(c)
    {
    }
    virtual ~GlobCreationInfo() = default;
    GlobCreationInfo(const GlobCreationInfo&) = default;
    GlobCreationInfo(GlobCreationInfo&&) = default;
    GlobCreationInfo& operator=(const GlobCreationInfo&) = default;
    GlobCreationInfo& operator=(GlobCreationInfo&&) = default;

    XY<uint16_t> size() const { return { width, height }; }

    uint16_t width = 0;
    uint16_t height = 0;
    Palette palette;
    // Null: the parent's canvas (or the screen's, for a top-level widget).
    Canvas* canvas = nullptr;
    // The name GlobManager::find answers the widget by; empty for most widgets.
    LightweightString<char> name;
    // The type GlobManager::createGlob makes.
    LightweightString<char> typeName;
    // Where a top-level widget first appears, bottom-up screen coordinates. A child is placed by its parent.
    XY<int> pos;
    // Free-form settings for widgets made by type name (name = value).
    configb config;
};
