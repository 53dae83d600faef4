#pragma once
// Small widgets the gallery pages are made of: a text label, a clickable row for choosing pages, and a
// surface drawn by a function. They are the workbench's own, plain stand-ins until the standard widgets
// exist; pages should prefer the real widgets as they arrive.

#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/StandardPanel.h"
#include "toolkit/ui/TabOrderable.h"
#include "toolkit/ui/UifStd.h"

#include <functional>

// The creation arguments of a gallery page: a thin-bordered panel in the standard scheme, with no title-bar
// buttons, sized so that its user area is userWidth by userHeight.
StandardPanel::InitArgs galleryPageArgs(UIString title, int userWidth, int userHeight);

// The widget called `name` at or below root, or null. Pages find widgets again this way to show states
// that need the screen (hover, focus) once the page is shown.
Glob* findNamed(Glob* root, const char* name);

class GalleryLabel : public Glob {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs(LightweightString<wchar_t> labelText, uint16_t w, uint16_t h, const Palette& pal = Palette())
            : GlobCreationInfo(w, h, pal), text(std::move(labelText))
        {
        }
        LightweightString<wchar_t> text;
    };
    explicit GalleryLabel(const InitArgs& args) : Glob(args), m_text(args.text) {}
    LightweightString<char> idstring() const override { return "GalleryLabel"; }
    void drawText() override;

private:
    LightweightString<wchar_t> m_text;
};

// A row that runs its action when clicked, or on Return while it has the focus.
class ChooserRow : public Glob, public TabOrderable {
public:
    struct InitArgs : GlobCreationInfo {
        InitArgs(LightweightString<wchar_t> labelText, std::function<void()> onChoose, uint16_t w, uint16_t h,
                 const Palette& pal = Palette())
            : GlobCreationInfo(w, h, pal), text(std::move(labelText)), action(std::move(onChoose))
        {
        }
        LightweightString<wchar_t> text;
        std::function<void()> action;
    };
    explicit ChooserRow(const InitArgs& args) : Glob(args), m_text(args.text), m_action(args.action) {}
    LightweightString<char> idstring() const override { return "ChooserRow"; }
    void setSelected(bool selected);
    bool react(const Event& event) override;
    void drawText() override;

private:
    LightweightString<wchar_t> m_text;
    std::function<void()> m_action;
    bool m_selected = false;
    bool m_hover = false;
};

// Draws with a function of the painter, the surface's own box and its palette.
class DrawingSurface : public Glob {
public:
    using DrawFunction = std::function<void(Pictor::Painter&, const GlobBox&, const Palette&)>;
    struct InitArgs : GlobCreationInfo {
        InitArgs(DrawFunction drawWith, uint16_t w, uint16_t h, const Palette& pal = Palette())
            : GlobCreationInfo(w, h, pal), function(std::move(drawWith))
        {
        }
        DrawFunction function;
    };
    explicit DrawingSurface(const InitArgs& args) : Glob(args), m_function(args.function) {}
    LightweightString<char> idstring() const override { return "DrawingSurface"; }
    void drawText() override;

private:
    DrawFunction m_function;
};

// Adds a label to panel with its top-left corner at (x, y) of the panel's user area, in the panel's palette.
GalleryLabel* addLabel(Glob* panel, LightweightString<wchar_t> text, int x, int y, int width,
                       int height = UifStd::getButtonHeight());
