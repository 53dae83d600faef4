#pragma once
// FactoryGlobWrapper: a panel around a widget that GlobManager makes by type name, so that any registered
// widget type can be shown as a panel of its own.
//
// The wrapped widget is made from the panel's own creation info (its type name and settings) at the size of
// the panel's user area, and placed at the user area's top-left. A factory that makes a widget of another size
// leaves margins to its right and below it; they are painted a shade lighter than the panel (window shade 3).
// When the type name is unknown, or the factory makes nothing, the panel is empty: getGlob() answers null.
//
// Sizes. Resizing the panel resizes the wrapped widget by the same amount, so the margins stay as they were.
// getMinSize() answers the panel size at which the wrapped widget has the size it was made at (but never less
// than an ordinary panel's minimum): the factory chose that size, and the widget is not squeezed below it.
//
// Identity. idstring() is "FactoryGlobWrapper:" followed by the wrapped widget's idstring(), or just
// "FactoryGlobWrapper" when the panel is empty.
//
// A copy makes its own wrapped widget from the same creation info; it never shares the original's.
//
// The wrapper is not registered with GlobManager itself: its creation info names the widget it wraps, so a
// wrapper made by type name would have to wrap itself. For the same reason an info naming "FactoryGlobWrapper"
// gives an empty panel.

#include "toolkit/ui/StandardPanel.h"

#include <utility>

class FactoryGlobWrapper : public StandardPanel {
public:
    explicit FactoryGlobWrapper(const StandardPanel::InitArgs& args);
    FactoryGlobWrapper(const FactoryGlobWrapper& other);
    FactoryGlobWrapper(FactoryGlobWrapper&& other) : FactoryGlobWrapper(std::as_const(other)) {}
    FactoryGlobWrapper& operator=(const FactoryGlobWrapper& other);
    FactoryGlobWrapper& operator=(FactoryGlobWrapper&& other) { return *this = std::as_const(other); }
    ~FactoryGlobWrapper() override;

    // The wrapped widget, or null when there is none (or it has been destroyed since).
    Glob* getGlob() const;

    // Called by the toolkit
    XY<int> getMinSize() const override;
    void resize(double width, double height) override;
    // Shows or hides the wrapped widget with the panel.
    void setVisible(bool visible) override;
    LightweightString<char> idstring() const override;

protected:
    // Called by the toolkit
    void drawBackground() override;

private:
    // Drops the wrapped widget, if any, and makes one from the other's creation info at its widget's size.
    void wrapLike(const FactoryGlobWrapper& other);
    void makeWrapped();

    // What the wrapped widget is made from; a copy of the panel makes its own from it.
    GlobCreationInfo m_wrappedInfo;
    GlobWatch m_glob;
    LightweightString<char> m_idstring;
    // The wrapped widget's size as its factory made it.
    XY<int> m_madeSize;
};
