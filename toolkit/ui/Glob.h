#pragma once
// Glob: the base of every widget and panel.
//
// The tree. A parent owns its children and destroys them last-in-first-out, by index, because a child's
// destructor may still touch the siblings made before it. Children are drawn in index order and hit-tested in
// reverse, so a later child lies on top. Destroy a widget with Glob::destroy (or its parent's removeChild):
// while any event or message is being dispatched, the widget is taken out of the tree at once and deleted
// when the outermost dispatch has returned, so a widget may be removed by the very handler it is running.
//
// Coordinates. y grows upward. A widget's position is its bottom-left corner measured from its parent's
// bottom-left; events arrive in the widget's own coordinates (origin at its bottom-left). The user area is
// the part of a widget that placement is relative to: the whole widget unless insets are set (a panel's
// border and title bar).
//
// Talking upward. A widget tells its owner what happened by a named message: callMsg(name) or
// sendMsg(target, name) deliver an Event of type Event::Message to the target's react(), whose default
// passes it to handleMessageEvent(name, sender). The owner is the parent unless one was set. Message names are
// static members of the sending class ending in `Msg`.
//
// Liveness. Every widget carries an IdStamp. is_good_glob_ptr answers in O(1) whether a stored pointer still
// names a live widget; the form that takes the stamp too is safe even when the address has been reused.
// Code that runs someone else's code (sends a message, calls a callback) checks its own liveness afterwards
// before touching `this` again; callMsg and sendMsg answer it directly.
//
// Cost. Widgets are made by the thousand (one per line of a list), so the rarely used features live in one
// extension allocated on first use, the flags are bits, and the size is checked at compile time.

#include "toolkit/support/IdStamp.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/RefCount.h"
#include "toolkit/support/UIString.h"
#include "toolkit/support/XY.h"
#include "toolkit/ui/Canvas.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/Event.h"
#include "toolkit/ui/EventHandler.h"
#include "toolkit/ui/GlobCreationInfo.h"
#include "toolkit/ui/Palette.h"
#include "toolkit/ui/WidgetPosition.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

class Screen;
class TabOrderable;
namespace Pictor {
class Painter;
}

class Glob : public virtual EventHandler, public virtual iObject, public CanvasClient, public Drawable {
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;
        InitArgs() = default;
        InitArgs(const GlobCreationInfo& info)
            : GlobCreationInfo(info)
        {
        }
    };

    explicit Glob(const GlobCreationInfo& info);
    Glob(uint16_t width, uint16_t height, const Palette& palette = Palette(), Canvas* canvas = nullptr);
    // A copy takes the original's size, palette, flags and extras (name, context strings, cursor) but is a new
    // widget: no parent, no children, a stamp of its own. Moving is copying, so the source stays whole.
    Glob(const Glob& other);
    Glob(Glob&& other) : Glob(std::as_const(other)) {}
    // Takes over the other's appearance; this widget keeps its place in the tree, its children and its stamp.
    Glob& operator=(const Glob& other);
    Glob& operator=(Glob&& other) { return *this = std::as_const(other); }
    ~Glob() override;

    // ---- Identity and liveness
    virtual LightweightString<char> idstring() const;
    IdStamp getIdStamp() const { return m_stamp; }
    void setName(const LightweightString<char>& name);
    LightweightString<char> getName() const;

    // ---- The tree
    Glob* parent() const { return m_parent; }
    // Who hears this widget's messages: the owner set with setOwner while it lives, else the parent.
    Glob* owner() const;
    void setOwner(Glob* owner);
    size_t numChildren() const { return m_children.size(); }
    Glob* child(size_t index) const { return index < m_children.size() ? m_children[index].widget : nullptr; }
    // -1 when `child` is not a child of this widget.
    int childIndex(const Glob* child) const;
    bool isAncestorOf(const Glob* other) const;
    Glob* root();
    // Adopts a widget made elsewhere (GlobManager::createGlob) and places it; answers it. A widget that had
    // a parent, or was shown on the screen, is taken from there first. Null or this widget itself is refused.
    Glob* addChild(Glob* child, const WidgetPosition& position);
    // Makes a child of the InitArgs' widget type and places it.
    template <typename T> T* addWidget(const typename T::InitArgs& args, const WidgetPosition& position)
    {
        T* made = new T(args);
        addChild(made, position);
        return made;
    }
    // The same, placed against `sibling` instead of the user area (or below / right of it).
    template <typename T> T* addWidgetRelative(const typename T::InitArgs& args, Glob* sibling, WidgetPosition position)
    {
        position.sibling = sibling;
        return addWidget<T>(args, position);
    }
    // Gives up ownership: the child leaves the tree, unharmed, and belongs to the caller.
    Glob* detachChild(Glob* child);
    // Destroys a child (after the current dispatch, if one is running).
    void removeChild(Glob* child);
    // Destroys every child, last first.
    void removeAllChildren();
    // Destroys a widget wherever it is: child, top-level, or unattached. Null and dead pointers are ignored.
    static void destroy(Glob* widget);

    // ---- Placement
    static WidgetPosition Absolute(int x, int y);
    static WidgetPosition UserTopLeft(int x = 0, int y = 0);
    static WidgetPosition BottomLeft(int x = 0, int y = 0);
    static WidgetPosition Centre(int x = 0, int y = 0);
    static WidgetPosition RightCentre(int x = 0, int y = 0);
    // Below the sibling, or below the child added before when sibling is null.
    static WidgetPosition Below(int gap, Glob* sibling = nullptr, WidgetAlignment alignment = {});
    static WidgetPosition RightOf(int gap, Glob* sibling = nullptr, WidgetAlignment alignment = {});
    // The child's placement; a null widget in the answer when `child` is not a child of this widget.
    WidgetDetails getWidget(const Glob* child) const;
    // Re-places a child and then every child placed after it, so rows placed below it follow it.
    bool setWidgetDetails(const WidgetDetails& details);
    // Re-places every child from its recorded placement (after a resize or a change of user area).
    void layoutChildren();
    // Places a top-level widget on the screen (the screen's area stands in for the user area).
    void setupRootPos(const WidgetPosition& position);
    GlobBox getUserArea() const;
    void setUserAreaInsets(int left, int bottom, int right, int top);

    // ---- Geometry
    int getX() const { return m_pos.x; }
    int getY() const { return m_pos.y; }
    XY<int> getPosition() const { return m_pos; }
    uint16_t getWidth() const { return m_width; }
    uint16_t getHeight() const { return m_height; }
    XY<int> getSize() const { return { m_width, m_height }; }
    // This widget's area in its own coordinates, and in its parent's.
    GlobBox getLocalBox() const { return GlobBox(0, 0, m_width, m_height); }
    GlobBox getBox() const { return GlobBox::fromOriginAndSize(m_pos, getSize()); }
    // Bottom-left corner in screen coordinates (for an unattached widget, relative to its root).
    XY<int> getScreenPos() const;
    GlobBox getScreenBox() const;
    // Moves the widget within its parent (or on the screen when top-level); its placement becomes Absolute.
    void setPos(int x, int y);
    // Answers the deepest visible widget at a point in this widget's coordinates (this one when no child
    // is there), or null when the point is outside. Disabled widgets are found too: the screen decides.
    Glob* findWidgetAt(XY<int> local);

    // ---- State
    bool isVisible() const { return hasFlag(VisibleFlag); }
    // Visible and every ancestor visible, and on a screen or inside something that is.
    bool isShowing() const;
    bool isActive() const { return hasFlag(ActiveFlag); }
    // Active and every ancestor active.
    bool isEnabledInTree() const;
    void setEnabled(bool enabled, bool redraw = true) { setActive(enabled, redraw ? Redraw : NoRedraw); }
    void setMovable(bool movable) { setFlag(MovableFlag, movable); }
    bool isMovable() const { return hasFlag(MovableFlag); }
    void setResizable(bool resizable) { setFlag(ResizableFlag, resizable); }
    bool isResizable() const { return hasFlag(ResizableFlag); }
    const Palette& getPalette() const { return m_palette; }
    // The widget's own colour: its background.
    Colour getCol() const { return m_palette.window(); }
    // Help text shown as a tooltip. The id 999999 (no resource) shows the literal text; empty means none.
    void setContextString(UIString title, UIString text);
    UIString getContextTitle() const;
    UIString getContextText() const;
    // A cursor id for the pointer over this widget; -1 takes the parent's.
    void setMouseCursor(int cursorId);
    bool hasFocus() const;
    // Asks the screen for the keyboard focus. Answers whether this widget has it afterwards.
    bool takeFocus();
    Screen* getScreen() const;

    // ---- Messages
    // Delivers a named message to `target` at once. Answers whether this widget is still alive afterwards;
    // when it answers false, `this` must not be touched. A null or dead target receives nothing.
    bool sendMsg(Glob* target, const char* msg);
    bool sendMsg(Glob* target, const LightweightString<char>& msg);
    // sendMsg to the owner.
    bool callMsg(const char* msg);
    bool callMsg(const LightweightString<char>& msg);

    // ---- Drawing
    // Marks the widget (or part of it, in its own coordinates) for painting in the next flush.
    void redraw();
    void redraw(const GlobBox& localArea);
    // The painter of the paint pass in progress, translated to this widget and clipped to it. Outside a
    // paint pass: the thread's current painter (to render a widget into an image of one's own, translate a
    // painter and call draw()), or, when there is none, a painter that draws nothing.
    Pictor::Painter& painter() const;

    // Called by the toolkit
    bool react(const Event& event) override;
    // Answers whether the message was handled.
    virtual bool handleMessageEvent(LightweightString<char> name, Glob* sender);
    virtual bool handleMouseEvent(const Event& event);
    // Paints the widget itself (children are painted after it by the screen): background, border, text.
    virtual void draw();
    // True for a widget whose draw() covers every pixel of its area with opaque colour: the screen then leaves
    // what lies beneath it unpainted. Answer only what draw() keeps to, palette included.
    virtual bool isOpaque() const { return false; }
    virtual void drawBackground();
    virtual void drawBorder();
    virtual void drawText();
    // Sizes are rounded and limited to 0..65535. Calls reshape().
    virtual void resize(double width, double height);
    // Called after the size changed: re-places the children.
    virtual void reshape();
    virtual void setPalette(const Palette& palette);
    virtual void setActive(bool active, eRedrawFlag redraw = Redraw);
    virtual void setVisible(bool visible);
    // The cursor for the pointer at a point of this widget; -1 takes the parent's.
    virtual int contextCursor(const XY<int>& local);
    // Appends the focusable widgets of this one, in tab order: itself when it is TabOrderable, otherwise
    // those of its children.
    virtual void getTabOrderables(std::vector<TabOrderable*>& out);

    // Marks a dispatch in progress: destruction requested inside one waits for the outermost to end.
    class DispatchScope {
    public:
        DispatchScope();
        ~DispatchScope();
        DispatchScope(const DispatchScope&) = delete;
        DispatchScope& operator=(const DispatchScope&) = delete;
    };

private:
    friend class Screen;
    friend class GlobManager;

    enum Flag : uint32_t {
        VisibleFlag = 1u << 0,
        ActiveFlag = 1u << 1,
        MovableFlag = 1u << 2,
        ResizableFlag = 1u << 3,
        DyingFlag = 1u << 4, // destruction requested; the stamp is already retired
        TopLevelFlag = 1u << 5, // shown on the screen as a top-level widget
        NamedFlag = 1u << 6, // registered with GlobManager by name
        DestructingFlag = 1u << 7, // inside ~Glob
    };
    struct Extension;
    friend class GlobRegistry;

    // The live widget registered under a name most recently, or null.
    static Glob* findNamed(const LightweightString<char>& name);

    bool hasFlag(Flag f) const { return (m_flags & f) != 0; }
    void setFlag(Flag f, bool on) { m_flags = on ? (m_flags | f) : (m_flags & ~uint32_t(f)); }
    Extension& ext();
    void initFrom(const GlobCreationInfo& info);
    void copyAppearance(const Glob& other);
    void registerLive();
    void retireIdentity();
    void unlinkFromParent();
    void placeChild(size_t index);
    void requestRedrawOfArea(const GlobBox& screenArea);
    bool deliver(Glob* target, const LightweightString<char>& msg);

    Glob* m_parent = nullptr;
    std::vector<WidgetDetails> m_children;
    std::unique_ptr<Extension> m_ext;
    IdStamp m_stamp;
    XY<int> m_pos;
    uint16_t m_width = 0;
    uint16_t m_height = 0;
    uint32_t m_flags = VisibleFlag | ActiveFlag;
    Palette m_palette;
};

// Whether `glob` is a live widget. Safe on any pointer value; O(1).
bool is_good_glob_ptr(const Glob* glob);
// Whether `glob` is the live widget the stamp was taken from: safe even if the address has since been reused.
bool is_good_glob_ptr(const Glob* glob, const IdStamp& stamp);

// Keeps a widget pointer together with its stamp and answers whether it still lives:
//     GlobWatch self(this); callback(); if (!self) return;
class GlobWatch {
public:
    GlobWatch() = default;
    explicit GlobWatch(const Glob* glob)
        : m_glob(const_cast<Glob*>(glob))
        , m_stamp(glob ? glob->getIdStamp() : IdStamp())
    {
    }

    bool alive() const { return m_glob && is_good_glob_ptr(m_glob, m_stamp); }
    explicit operator bool() const { return alive(); }
    // The widget while it lives, else null.
    Glob* get() const { return alive() ? m_glob : nullptr; }

private:
    Glob* m_glob = nullptr;
    IdStamp m_stamp;
};
