#include "frame/FactoryGlobWrapper.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/GlobManager.h"

#include <algorithm>

namespace {

const char* const className = "FactoryGlobWrapper";

} // namespace

FactoryGlobWrapper::FactoryGlobWrapper(const StandardPanel::InitArgs& args)
    : StandardPanel(args)
    , m_wrappedInfo(args)
{
    const GlobBox userArea = getUserArea();
    m_wrappedInfo.width = static_cast<uint16_t>(userArea.width());
    m_wrappedInfo.height = static_cast<uint16_t>(userArea.height());
    m_wrappedInfo.canvas = getCanvas();
    // The name belongs to the panel: GlobManager::find(name) must answer the panel, not what it wraps.
    m_wrappedInfo.name = LightweightString<char>();
    m_wrappedInfo.pos = {};
    makeWrapped();
}

FactoryGlobWrapper::FactoryGlobWrapper(const FactoryGlobWrapper& other)
    : EventHandler(other)
    , Cv::InternalRefCount(other)
    , iVirtual(other)
    , iObject(other)
    , StandardPanel(other)
{
    wrapLike(other);
}

FactoryGlobWrapper& FactoryGlobWrapper::operator=(const FactoryGlobWrapper& other)
{
    if (this != &other) {
        StandardPanel::operator=(other);
        wrapLike(other);
    }
    return *this;
}

FactoryGlobWrapper::~FactoryGlobWrapper() = default;

void FactoryGlobWrapper::wrapLike(const FactoryGlobWrapper& other)
{
    if (Glob* old = getGlob())
        removeChild(old);
    m_glob = GlobWatch();
    m_wrappedInfo = other.m_wrappedInfo;
    m_wrappedInfo.canvas = getCanvas();
    makeWrapped();
    // The original may have been resized since its widget was made; this widget follows its size.
    if (Glob* mine = getGlob(); mine && other.getGlob())
        mine->resize(other.getGlob()->getWidth(), other.getGlob()->getHeight());
    layoutChildren();
}

void FactoryGlobWrapper::makeWrapped()
{
    m_idstring = LightweightString<char>();
    m_madeSize = {};
    if (m_wrappedInfo.typeName.view() == className)
        return;

    Glob* made = nullptr;
    {
        // A factory may draw while it builds; whatever state it leaves behind is not ours to keep.
        Pictor::StateSaver savedState;
        made = GlobManager::createGlob(m_wrappedInfo);
    }
    if (!made)
        return;
    // Coordinate origin top|left: the user area's top-left. (The alignment fraction that goes with it lines a
    // widget up against a sibling; a widget placed against the user area's corner has none to line up with.)
    addChild(made, Glob::UserTopLeft(0, 0));
    m_glob = GlobWatch(made);
    m_madeSize = made->getSize();
    m_idstring = LightweightString<char>(std::string(className) + ":" + made->idstring().str());
}

Glob* FactoryGlobWrapper::getGlob() const
{
    return m_glob.get();
}

XY<int> FactoryGlobWrapper::getMinSize() const
{
    const XY<int> panelMin = StandardPanel::getMinSize();
    if (!getGlob())
        return panelMin;
    const XY<int> fitting = calcPanelSize(m_madeSize.x, m_madeSize.y);
    return { std::max(panelMin.x, fitting.x), std::max(panelMin.y, fitting.y) };
}

void FactoryGlobWrapper::resize(double width, double height)
{
    const XY<int> before = getSize();
    StandardPanel::resize(width, height);
    Glob* wrapped = getGlob();
    if (!wrapped)
        return;
    const XY<int> change = getSize() - before;
    if (change.x == 0 && change.y == 0)
        return;
    wrapped->resize(std::max(0, wrapped->getWidth() + change.x), std::max(0, wrapped->getHeight() + change.y));
    // A top-left placement depends on the child's height, so place it again now that it has changed.
    layoutChildren();
}

void FactoryGlobWrapper::setVisible(bool visible)
{
    StandardPanel::setVisible(visible);
    if (Glob* wrapped = getGlob())
        wrapped->setVisible(visible);
}

LightweightString<char> FactoryGlobWrapper::idstring() const
{
    return m_idstring.empty() ? LightweightString<char>(className) : m_idstring;
}

void FactoryGlobWrapper::drawBackground()
{
    // The ordinary background covers the whole panel, so it goes first and the margins on top of it; the
    // border and title bar are drawn over both afterwards.
    StandardPanel::drawBackground();

    const GlobBox userArea = getUserArea();
    const Colour marginColour = getPalette().window(3);
    Pictor::Painter& p = painter();
    const Glob* wrapped = getGlob();
    if (!wrapped) {
        p.fillRect(userArea, marginColour);
        return;
    }
    const GlobBox covered = wrapped->getBox();
    // To the right of the widget, the full height of the user area.
    if (covered.right() < userArea.right())
        p.fillRect(GlobBox(covered.right(), userArea.bottom(), userArea.right(), userArea.top()), marginColour);
    // Below the widget, as wide as the widget reaches within the user area.
    const int right = std::min(covered.right(), userArea.right());
    if (covered.bottom() > userArea.bottom() && right > userArea.left())
        p.fillRect(GlobBox(userArea.left(), userArea.bottom(), right, covered.bottom()), marginColour);
}
