// The window backend, run on SDL's off-screen video driver (the test environment sets SDL_VIDEODRIVER), so a
// real window, renderer and event queue are used without a display.
#include "toolkit/platform/SdlBackend.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/StandardPanel.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

// Remembers the input that reached it, in its own coordinates.
class Recorder : public Glob {
public:
    using Glob::Glob;
    bool react(const Event& e) override
    {
        events.push_back(e);
        return e.type != Event::Message;
    }
    std::vector<Event> events;
};

struct SdlFixture : testing::Test {
    static constexpr int width = 320;
    static constexpr int height = 240;
    SdlBackend* backend = nullptr;
    std::unique_ptr<Screen> screen;

    void SetUp() override
    {
        SdlBackend::Options options;
        options.width = width;
        options.height = height;
        options.hidden = true;
        auto made = SdlBackend::create(options);
        ASSERT_NE(made, nullptr) << SdlBackend::lastError();
        backend = made.get();
        screen = std::make_unique<Screen>(width, height, std::move(made));
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    }
    void TearDown() override
    {
        screen.reset();
        runDeferredCalls();
    }

    Recorder* showRecorder()
    {
        auto* r = new Recorder(Glob::InitArgs(width, height));
        r->setPos(0, 0);
        GlobManager::realize(r);
        return r;
    }

    static void push(SDL_Event e) { ASSERT_EQ(SDL_PushEvent(&e), 1); }
};

} // namespace

TEST_F(SdlFixture, MouseInputArrivesBottomUpWithTheRightButtons)
{
    Recorder* r = showRecorder();
    SDL_Event e{};
    e.type = SDL_MOUSEMOTION;
    e.motion.x = 10;
    e.motion.y = 20;
    push(e);
    e = {};
    e.type = SDL_MOUSEBUTTONDOWN;
    e.button.button = SDL_BUTTON_RIGHT;
    e.button.x = 10;
    e.button.y = 20;
    push(e);
    e.type = SDL_MOUSEBUTTONUP;
    push(e);
    e = {};
    e.type = SDL_MOUSEWHEEL;
    e.wheel.y = -2;
    e.wheel.mouseX = 10;
    e.wheel.mouseY = 20;
    push(e);
    screen->processEvents();

    EXPECT_EQ(screen->getMousePos(), XY<int>(10, height - 1 - 20));
    std::vector<int> kinds;
    for (const Event& ev : r->events) {
        if (ev.type == Event::MouseDown || ev.type == Event::MouseUp) {
            EXPECT_EQ(ev.button, Event::RightButton);
            EXPECT_EQ(ev.pos, XY<int>(10, height - 1 - 20));
        }
        if (ev.type == Event::MouseWheel) {
            EXPECT_EQ(ev.wheelDelta, -2);
        }
        if (ev.type == Event::MouseDown || ev.type == Event::MouseUp || ev.type == Event::MouseWheel)
            kinds.push_back(ev.type);
    }
    EXPECT_EQ(kinds, (std::vector<int>{Event::MouseDown, Event::MouseUp, Event::MouseWheel}));
}

TEST_F(SdlFixture, KeysAndTypedTextBecomeKeyEvents)
{
    Recorder* r = showRecorder();
    ASSERT_TRUE(screen->setFocus(r));
    SDL_Event e{};
    e.type = SDL_KEYDOWN;
    e.key.keysym.sym = SDLK_TAB;
    e.key.keysym.mod = KMOD_LSHIFT;
    push(e);
    e.key.keysym.sym = SDLK_c;
    e.key.keysym.mod = KMOD_LCTRL;
    push(e);
    e.key.keysym.sym = SDLK_a; // a plain letter types text instead: no key event of its own
    e.key.keysym.mod = KMOD_NONE;
    push(e);
    e = {};
    e.type = SDL_TEXTINPUT;
    SDL_strlcpy(e.text.text, "\xc3\xa9z", sizeof e.text.text);
    push(e);
    screen->processEvents();

    std::vector<std::pair<int, int>> keys;
    for (const Event& ev : r->events)
        if (ev.isKey())
            keys.emplace_back(ev.key, ev.modifiers & Event::AnyModifier);
    const std::vector<std::pair<int, int>> expected{
        {Event::KeyBackTab, Event::Shift}, {'c', Event::Ctrl}, {0xE9, 0}, {'z', 0}};
    EXPECT_EQ(keys, expected);
}

TEST_F(SdlFixture, PresentUploadsOnlyTheChangedPartAndTheWindowShowsIt)
{
    Recorder* r = showRecorder();
    screen->processEvents();
    EXPECT_EQ(backend->getLastUploadPixels(), int64_t(width) * height);

    r->redraw(GlobBox(40, 30, 50, 40));
    screen->processEvents();
    EXPECT_EQ(backend->getLastUploadPixels(), 100);

    const Pictor::Image shown = backend->readPixels();
    ASSERT_FALSE(shown.isNull());
    ASSERT_EQ(shown.width(), width);
    const Pictor::Image& composed = screen->getImage();
    for (XY<int> p : {XY<int>{0, 0}, XY<int>{45, 35}, XY<int>{width - 1, height - 1}})
        EXPECT_EQ(shown.pixel(p.x, p.y) | 0xff000000u, composed.pixel(p.x, p.y) | 0xff000000u);
}

TEST_F(SdlFixture, ScreenFollowsTheWindowSize)
{
    backend->setWindowSize({400, 300});
    // As when the user drags the window's frame.
    SDL_Event e{};
    e.type = SDL_WINDOWEVENT;
    e.window.event = SDL_WINDOWEVENT_SIZE_CHANGED;
    push(e);
    screen->processEvents();
    EXPECT_EQ(backend->getWindowSize(), XY<int>(400, 300));
    EXPECT_EQ(screen->getSize(), XY<int>(400, 300));
    EXPECT_EQ(screen->getImage().width(), 400);
}

TEST_F(SdlFixture, DeferringFromAnotherThreadWakesTheLoop)
{
    bool ran = false;
    std::thread poster([&] { defer([&] { ran = true; }); });
    poster.join();
    // The wake-up is an event in the queue, so a waiting loop returns for it.
    SDL_PumpEvents();
    EXPECT_GT(SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, SDL_USEREVENT, SDL_LASTEVENT), 0);
    screen->processEvents();
    EXPECT_TRUE(ran);
}

TEST_F(SdlFixture, RunEndsWhenTheLastPanelCloses)
{
    auto* panel = new StandardPanel(StandardPanel::InitArgs(L"Closing", 200, 100));
    panel->setPos(10, 10);
    GlobManager::realize(panel);
    GlobWatch watch(panel);
    // A key reaches the topmost panel; Escape closes it, and with it the loop.
    SDL_Event e{};
    e.type = SDL_KEYDOWN;
    e.key.keysym.sym = SDLK_ESCAPE;
    push(e);
    EXPECT_GE(SdlBackend::run(*screen), 1);
    EXPECT_FALSE(watch.alive());
}

TEST_F(SdlFixture, RunEndsWhenTheWindowIsClosed)
{
    showRecorder();
    SDL_Event e{};
    e.type = SDL_QUIT;
    push(e);
    EXPECT_EQ(SdlBackend::run(*screen), 1);
    EXPECT_EQ(screen->getTopLevels().size(), 1u);
}
