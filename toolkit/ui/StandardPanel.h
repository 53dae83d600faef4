#pragma once
// StandardPanel: the base of panels: a widget with a border, a title bar and the standard title-bar buttons.
//
// Layout, from the outside in: the border (its width depends on the style), then the title bar along the top
// (when the panel has a title or any standard button), then the user area, where children are placed. The
// user area is set as the Glob user-area insets, so UserTopLeft(0, 0) is just under the title bar.
//
// Title-bar buttons are drawn, not child widgets: a panel holds no widgets it did not ask for, and a list of
// a thousand small panels pays nothing for buttons it does not show. From the right: close, then do-it; the
// menu button sits at the left end.
//
// Input the panel handles itself:
//   press and release on close        | close(): the panel is destroyed
//   press and release on do-it        | doItMsg is sent to the panel itself; unless a subclass handles it,
//                                     | handleMessageEvent passes it on to the owner
//   press on the menu button          | the panel menu pops up under the button
//   drag on the rest of the title bar | moves a movable panel
//   drag on an edge or corner         | resizes a resizable panel (never below getMinSize())
//   Escape / Return                   | as close / do-it, when the panel has that button
// A press on the panel also gives it the keyboard, unless one of its children holds it already.
//
// GlobManager makes one by the type name "StandardPanel" (title from the "title" setting of the info).

#include "toolkit/ui/Glob.h"
#include "toolkit/ui/MenuItem.h"
#include "toolkit/ui/Transient.h"

#include <utility>

class MenuGlob;

class StandardPanel : public Glob {
public:
    enum BorderStyle : uint8_t {
        NoBorder,     // the user area is the whole panel below the title bar
        ThinBorder,   // a one-pixel line
        RaisedBorder, // a bevel of UifStd::getBorder() pixels: the usual panel
        SunkenBorder, // the same bevel pressed in: panels nested inside others
    };

    // Standard title-bar buttons, combined as bits.
    enum StandardWidgets : unsigned {
        NoWidgets = 0,
        CloseButton = 1u << 0,
        DoItButton = 1u << 1,
        MenuButton = 1u << 2,
    };

    struct InitArgs : GlobCreationInfo {
        InitArgs() = default;
        InitArgs(UIString panelTitle, uint16_t w, uint16_t h, unsigned widgets = CloseButton,
                 const Palette& pal = Palette(), Canvas* c = nullptr)
            : GlobCreationInfo(w, h, pal, c), title(std::move(panelTitle)), standardWidgets(widgets)
        {
        }
        InitArgs(const GlobCreationInfo& info) : GlobCreationInfo(info) {}
        // For panels made by type name: the title comes from the info's "title" setting.
        static InitArgs fromInfo(const GlobCreationInfo& info);

        UIString title;
        BorderStyle border = RaisedBorder;
        unsigned standardWidgets = CloseButton;
        bool movable = true;
        bool resizable = false;
    };

    explicit StandardPanel(const InitArgs& args);
    StandardPanel(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    StandardPanel(const StandardPanel&) = default;
    StandardPanel(StandardPanel&&) = default;
    // Takes the other's appearance, title, buttons and menu items; children follow the new size and insets.
    StandardPanel& operator=(const StandardPanel& other);
    StandardPanel& operator=(StandardPanel&& other) { return *this = std::as_const(other); }
    ~StandardPanel() override;

    LightweightString<char> idstring() const override;

    // ---- Title and buttons
    void setTitle(const UIString& title);
    const UIString& getTitle() const { return m_title; }
    void addStandardWidgets(unsigned widgets);
    void removeStandardWidgets(unsigned widgets);
    unsigned getStandardWidgets() const { return m_widgets; }
    bool hasStandardWidget(StandardWidgets widget) const { return (m_widgets & widget) != 0; }
    // A disabled title-bar button is drawn dimmed and ignores presses (and Return or Escape, for do-it and
    // close): a panel whose commit needs a choice keeps its do-it button off until there is one.
    void setStandardWidgetEnabled(StandardWidgets widget, bool enabled);
    bool isStandardWidgetEnabled(StandardWidgets widget) const { return (m_disabledWidgets & widget) == 0; }
    void setBorderStyle(BorderStyle style);
    BorderStyle getBorderStyle() const { return m_border; }
    bool hasTitleBar() const { return !m_title.empty() || m_widgets != NoWidgets; }

    // ---- Size
    // The panel size that gives a user area of the wanted size, for this panel's border and title bar.
    XY<int> calcPanelSize(int userWidth, int userHeight) const;
    // The same for a panel made from `args`, before it exists.
    static XY<int> calcPanelSize(int userWidth, int userHeight, const InitArgs& args);
    // Resizing by the user stops here: room for the title-bar buttons and one row of the user area.
    virtual XY<int> getMinSize() const;

    // ---- Menu
    // The panel's menu, made on first use (which also adds the menu button).
    MenuGlob* getMenu();
    bool hasMenu() const { return m_menu.get() != nullptr; }
    // Pops the menu up under the menu button; answers the pop-up, or null when there is nothing to show.
    MenuGlob* openMenu();
    // The pop-up showing now, or null.
    MenuGlob* getOpenMenu() const;

    // ---- Closing and committing
    // Destroys the panel (after the current dispatch). Subclasses may refuse by overriding.
    virtual void close();
    // What the do-it button and Return do: sends doItMsg to the panel itself. Answers whether the panel
    // still exists afterwards.
    bool doIt();

    // Geometry of the title bar and its buttons, in the panel's own coordinates (empty when absent).
    GlobBox getTitleBarBox() const;
    GlobBox getStandardWidgetBox(StandardWidgets widget) const;

    // The message of the panel's commit button (and of anything that commits the panel, such as Return).
    static constexpr const char* doItMsg = "standard_panel_do_it";

    // Called by the toolkit
    bool react(const Event& event) override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    bool handleMouseEvent(const Event& event) override;
    void drawBackground() override;
    void drawBorder() override;
    void drawText() override;
    int contextCursor(const XY<int>& local) override;

protected:
    // Width of the strip along the edges that resizes a resizable panel.
    static constexpr int resizeGrip = 5;
    int borderWidth() const;
    int titleBarHeight() const;

private:
    enum class Drag : uint8_t { None, Move, Resize, Button };
    // Edges being dragged, as bits.
    enum Edge : uint8_t { EdgeLeft = 1, EdgeRight = 2, EdgeBottom = 4, EdgeTop = 8 };

    void updateInsets();
    unsigned edgesAt(XY<int> local) const;
    StandardWidgets buttonAt(XY<int> local) const;
    void pressButton(StandardWidgets button);
    void dragTo(XY<int> screenPos);
    void drawTitleButton(StandardWidgets button);

    // The panel's menu, never shown itself (popUp shows copies). A copy of the panel has a copy of the menu;
    // assigning gives the other's items to this panel's own menu, so a pointer from getMenu() stays good.
    class OwnedMenu {
    public:
        OwnedMenu() = default;
        OwnedMenu(const OwnedMenu& other);
        OwnedMenu& operator=(const OwnedMenu& other);
        ~OwnedMenu();
        MenuGlob* get() const { return m_menu; }
        // Takes a menu made for a panel that has none yet.
        void adopt(MenuGlob* menu) { m_menu = menu; }

    private:
        MenuGlob* m_menu = nullptr;
    };

    struct DragState {
        Drag kind = Drag::None;
        uint8_t edges = 0;
        StandardWidgets pressed = NoWidgets;
        bool pressedInside = false;
        XY<int> startScreen;
        GlobBox startBox;
    };

    UIString m_title;
    OwnedMenu m_menu;
    // The pop-up this panel opened: its callbacks may refer to the panel, so it is closed when the panel goes.
    PerObject<GlobWatch> m_openMenu;
    unsigned m_widgets = CloseButton;
    unsigned m_disabledWidgets = NoWidgets;
    BorderStyle m_border = RaisedBorder;
    Transient<DragState> m_drag;
};
