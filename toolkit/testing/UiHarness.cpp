#include "toolkit/testing/UiHarness.h"

#include "toolkit/support/BackgroundTasks.h"
#include "toolkit/ui/GlobManager.h"

#include <cmath>

UiHarness::UiHarness(uint16_t width, uint16_t height)
{
    auto backend = std::make_unique<OffscreenBackend>();
    m_backend = backend.get();
    m_screen = std::make_unique<Screen>(width, height, std::move(backend));
    m_owner = new RecordingOwner(width, height);
    m_owner->setName("harness-owner");
    show(m_owner, { 0, 0 });
    flush();
}

UiHarness::~UiHarness()
{
    // Calls a test left queued must not run against widgets of the next test.
    glob_poll_background_tasks();
    m_screen.reset();
}

void UiHarness::show(Glob* topLevel, XY<int> at)
{
    topLevel->setPos(at.x, at.y);
    GlobManager::realize(topLevel);
}

XY<int> UiHarness::toScreen(const Glob* widget, std::optional<XY<int>> at)
{
    const XY<int> local = at ? *at : XY<int>(widget->getWidth() / 2, widget->getHeight() / 2);
    return widget->getScreenPos() + local;
}

void UiHarness::press(Glob* widget, std::optional<XY<int>> at, int button, int modifiers)
{
    const XY<int> pos = toScreen(widget, at);
    m_screen->mouseMove(pos, modifiers);
    m_screen->mouseButton(pos, button, true, modifiers);
}

void UiHarness::release(Glob* widget, std::optional<XY<int>> at, int button, int modifiers)
{
    const XY<int> pos = toScreen(widget, at);
    m_screen->mouseMove(pos, modifiers);
    m_screen->mouseButton(pos, button, false, modifiers);
}

void UiHarness::click(Glob* widget, std::optional<XY<int>> at, int button, int modifiers)
{
    separateFromLastPress();
    const XY<int> pos = toScreen(widget, at);
    m_screen->mouseMove(pos, modifiers);
    m_screen->mouseButton(pos, button, true, modifiers);
    m_screen->mouseButton(pos, button, false, modifiers);
}

void UiHarness::separateFromLastPress()
{
    // Far enough from the press before that the two can never pair into a double click.
    if (m_clock.now() - m_screen->getLastPressTime() <= Screen::getDoubleClickTime())
        m_clock.advance(Screen::getDoubleClickTime() + 1);
}

void UiHarness::doubleClick(Glob* widget, std::optional<XY<int>> at, int button)
{
    // The position is taken once: the first click may make the widget go away.
    const XY<int> pos = toScreen(widget, at);
    separateFromLastPress();
    m_screen->mouseMove(pos);
    m_screen->mouseButton(pos, button, true);
    m_screen->mouseButton(pos, button, false);
    m_clock.advance(Screen::getDoubleClickTime() / 4);
    m_screen->mouseButton(pos, button, true);
    m_screen->mouseButton(pos, button, false);
}

void UiHarness::moveTo(Glob* widget, std::optional<XY<int>> at, int modifiers)
{
    m_screen->mouseMove(toScreen(widget, at), modifiers);
}

void UiHarness::drag(Glob* widget, XY<int> from, XY<int> to, int steps, int button)
{
    const XY<int> start = toScreen(widget, from);
    const XY<int> end = toScreen(widget, to);
    m_screen->mouseMove(start);
    m_screen->mouseButton(start, button, true);
    steps = std::max(1, steps);
    for (int i = 1; i <= steps; ++i) {
        const double f = static_cast<double>(i) / steps;
        const XY<int> at(start.x + static_cast<int>(std::lround((end.x - start.x) * f)),
            start.y + static_cast<int>(std::lround((end.y - start.y) * f)));
        m_screen->mouseMove(at);
    }
    m_screen->mouseButton(end, button, false);
}

void UiHarness::wheel(Glob* widget, int notches, std::optional<XY<int>> at)
{
    m_screen->mouseWheel(toScreen(widget, at), notches);
}

void UiHarness::clickAt(XY<int> screenPos, int button, int modifiers)
{
    separateFromLastPress();
    m_screen->mouseMove(screenPos, modifiers);
    m_screen->mouseButton(screenPos, button, true, modifiers);
    m_screen->mouseButton(screenPos, button, false, modifiers);
}

void UiHarness::typeText(std::wstring_view text)
{
    m_screen->text(text);
}

void UiHarness::pressKey(int key, int modifiers)
{
    m_screen->key(key, modifiers);
}

bool UiHarness::focus(Glob* widget)
{
    return m_screen->setFocus(widget);
}

void UiHarness::step(int turns)
{
    for (int i = 0; i < turns; ++i)
        m_screen->processEvents();
}

void UiHarness::advance(double ms)
{
    m_clock.advance(ms);
    m_screen->tick();
}

void UiHarness::flush()
{
    m_screen->flush();
}

Colour UiHarness::pixel(XY<int> screenPos)
{
    flush();
    const Pictor::Image& image = m_screen->getImage();
    return image.colourAt(screenPos.x, image.height() - 1 - screenPos.y);
}

Colour UiHarness::pixelAt(const Glob* widget, XY<int> local)
{
    return pixel(widget->getScreenPos() + local);
}

Pictor::Image UiHarness::grab(const GlobBox& screenArea)
{
    flush();
    return m_screen->grab(screenArea);
}

bool UiHarness::savePng(const std::string& utf8Path)
{
    flush();
    return m_backend->savePng(utf8Path);
}
