#include "toolkit/platform/SdlBackend.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/platform/DesktopCapture.h"

#include "toolkit/support/MainThread.h"
#include "toolkit/ui/Event.h"
#include "toolkit/ui/Screen.h"

#include <SDL.h>

#include <algorithm>
#include <array>

namespace {

std::string& errorText()
{
    static std::string text;
    return text;
}

int modifiersFrom(Uint16 mod)
{
    int m = 0;
    if (mod & KMOD_SHIFT)
        m |= Event::Shift;
    if (mod & KMOD_CTRL)
        m |= Event::Ctrl;
    if (mod & KMOD_ALT)
        m |= Event::Alt;
    if (mod & KMOD_GUI)
        m |= Event::Cmd;
    return m;
}

// Keys that do not type text. Printable keys arrive as text input instead, so that keyboard layouts, dead
// keys and input methods are respected.
int specialKey(SDL_Keycode sym, int modifiers)
{
    switch (sym) {
    case SDLK_BACKSPACE: return Event::KeyBackspace;
    case SDLK_TAB: return (modifiers & Event::Shift) ? Event::KeyBackTab : Event::KeyTab;
    case SDLK_RETURN:
    case SDLK_KP_ENTER: return Event::KeyReturn;
    case SDLK_ESCAPE: return Event::KeyEscape;
    case SDLK_DELETE: return Event::KeyDelete;
    case SDLK_LEFT: return Event::KeyLeft;
    case SDLK_RIGHT: return Event::KeyRight;
    case SDLK_UP: return Event::KeyUp;
    case SDLK_DOWN: return Event::KeyDown;
    case SDLK_HOME: return Event::KeyHome;
    case SDLK_END: return Event::KeyEnd;
    case SDLK_PAGEUP: return Event::KeyPageUp;
    case SDLK_PAGEDOWN: return Event::KeyPageDown;
    case SDLK_INSERT: return Event::KeyInsert;
    default: break;
    }
    if (sym >= SDLK_F1 && sym <= SDLK_F12)
        return Event::KeyF1 + (sym - SDLK_F1);
    return 0;
}

int mouseButton(Uint8 sdlButton)
{
    switch (sdlButton) {
    case SDL_BUTTON_LEFT: return Event::LeftButton;
    case SDL_BUTTON_RIGHT: return Event::RightButton;
    case SDL_BUTTON_MIDDLE: return Event::MiddleButton;
    default: return Event::NoButton;
    }
}

SDL_SystemCursor systemCursor(int cursorId)
{
    switch (cursorId) {
    case CursorIBeam: return SDL_SYSTEM_CURSOR_IBEAM;
    case CursorCrosshair:
    case CursorEyedropper: return SDL_SYSTEM_CURSOR_CROSSHAIR;
    case CursorHand: return SDL_SYSTEM_CURSOR_HAND;
    case CursorWait: return SDL_SYSTEM_CURSOR_WAIT;
    case CursorResizeHorizontal: return SDL_SYSTEM_CURSOR_SIZEWE;
    case CursorResizeVertical: return SDL_SYSTEM_CURSOR_SIZENS;
    case CursorResizeDiagonal: return SDL_SYSTEM_CURSOR_SIZENWSE;
    case CursorMove: return SDL_SYSTEM_CURSOR_SIZEALL;
    case CursorNotAllowed: return SDL_SYSTEM_CURSOR_NO;
    default: return SDL_SYSTEM_CURSOR_ARROW;
    }
}

// The eyedropper: a pipette drawn at 45 degrees, its tip at the bottom-left pixel (the hot spot), dark with a
// light edge so that it shows on any colour it is aimed at. Straight (not premultiplied) alpha, as SDL wants.
SDL_Cursor* makeEyedropperCursor()
{
    constexpr int size = 24;
    Pictor::Image image(size, size);
    Pictor::Painter p(image);
    const auto drawShape = [&p](const Colour& colour, double grow) {
        const std::array<XY<double>, 4> tube = {XY<double>(1 - grow, 1 - grow), XY<double>(4 + grow, 1 - grow),
                                                XY<double>(16 + grow, 13), XY<double>(13, 16 + grow)};
        p.fillPolygon(tube, colour);
        Pictor::EllipseDescription bulb;
        bulb.centre = {18, 18};
        bulb.radii = {4.5 + grow, 4.5 + grow};
        bulb.fill = colour;
        p.drawEllipse(bulb);
    };
    drawShape(Colour(1, 1, 1), 1.2);
    drawShape(Colour(0.1, 0.1, 0.1), 0.0);
    for (int row = 0; row < size; ++row)
        for (int col = 0; col < size; ++col) {
            const Colour c = image.colourAt(col, row);
            image.setPixel(col, row,
                           (uint32_t(c.a8()) << 24) | (uint32_t(c.r8()) << 16) | (uint32_t(c.g8()) << 8) | c.b8());
        }
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormatFrom(image.bytes(), size, size, 32, image.stride(),
                                                              SDL_PIXELFORMAT_ARGB8888);
    if (!surface)
        return nullptr;
    SDL_Cursor* cursor = SDL_CreateColorCursor(surface, 0, size - 1);
    SDL_FreeSurface(surface);
    return cursor;
}

} // namespace

struct SdlBackend::State {
    SDL_Window* window = nullptr;
    SDL_Renderer* renderer = nullptr;
    SDL_Texture* texture = nullptr;
    XY<int> textureSize;
    Uint32 wakeEvent = 0;
    std::array<SDL_Cursor*, SDL_NUM_SYSTEM_CURSORS> cursors{};
    SDL_Cursor* eyedropper = nullptr;
    // A system cursor's number, or eyedropperShown.
    int cursorShown = -1;
    static constexpr int eyedropperShown = SDL_NUM_SYSTEM_CURSORS;
    Screen* screen = nullptr;
    // The desktop around the window, when the window system lets us read it.
    std::unique_ptr<DesktopCapture> desktop;
    bool closeRequested = false;
    bool haveFrame = false;

    ~State()
    {
        for (SDL_Cursor*& c : cursors)
            if (c)
                SDL_FreeCursor(c);
        if (eyedropper)
            SDL_FreeCursor(eyedropper);
        if (texture)
            SDL_DestroyTexture(texture);
        if (renderer)
            SDL_DestroyRenderer(renderer);
        if (window)
            SDL_DestroyWindow(window);
        SDL_QuitSubSystem(SDL_INIT_VIDEO | SDL_INIT_EVENTS);
    }

    // Shows the texture as it is: the whole window is drawn every time because after a present the back
    // buffer's contents are undefined on most renderers.
    void showTexture()
    {
        SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
        SDL_RenderClear(renderer);
        if (texture) {
            const SDL_Rect dst{0, 0, textureSize.x, textureSize.y};
            SDL_RenderCopy(renderer, texture, nullptr, &dst);
        }
    }

    // Bottom-up screen position to the window's top-down pixels and back; the flip is its own inverse.
    XY<int> toScreen(int x, int y) const
    {
        int h = 0;
        SDL_GetWindowSize(window, nullptr, &h);
        return {x, h - 1 - y};
    }
};

std::string SdlBackend::lastError()
{
    return errorText();
}

std::unique_ptr<SdlBackend> SdlBackend::create(const Options& options)
{
    // The editor has its own loop: SDL must not install signal handlers or take SIGINT from the terminal.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    if (SDL_InitSubSystem(SDL_INIT_VIDEO | SDL_INIT_EVENTS) != 0) {
        errorText() = SDL_GetError();
        return nullptr;
    }
    // Without a display there is no graphics card to speak of: the software renderer is exact, and with the
    // framebuffer kept in software too no graphics driver is loaded at all.
    const char* driver = SDL_GetCurrentVideoDriver();
    const bool headless = driver && (SDL_strcmp(driver, "offscreen") == 0 || SDL_strcmp(driver, "dummy") == 0);
    if (headless)
        SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    auto state = std::make_unique<State>();
    // Not high-DPI aware: window points and screen pixels stay one and the same, so input needs no scaling.
    Uint32 flags = 0;
    if (options.resizable)
        flags |= SDL_WINDOW_RESIZABLE;
    flags |= options.hidden ? SDL_WINDOW_HIDDEN : SDL_WINDOW_SHOWN;
    const int w = std::clamp(options.width, 1, Pictor::Image::maxDimension);
    const int h = std::clamp(options.height, 1, Pictor::Image::maxDimension);
    state->window = SDL_CreateWindow(options.title.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, w, h, flags);
    if (!state->window) {
        errorText() = SDL_GetError();
        return nullptr;
    }
    if (!headless)
        state->renderer = SDL_CreateRenderer(state->window, -1, SDL_RENDERER_ACCELERATED);
    if (!state->renderer)
        state->renderer = SDL_CreateRenderer(state->window, -1, SDL_RENDERER_SOFTWARE);
    if (!state->renderer) {
        errorText() = SDL_GetError();
        return nullptr;
    }
    if (driver && SDL_strcmp(driver, "x11") == 0)
        state->desktop = DesktopCapture::openX11();
    state->wakeEvent = SDL_RegisterEvents(1);
    SDL_StartTextInput();
    return std::unique_ptr<SdlBackend>(new SdlBackend(std::move(state)));
}

SdlBackend::SdlBackend(std::unique_ptr<State> state) : m_state(std::move(state)) {}

SdlBackend::~SdlBackend()
{
    // Other threads may still post work; they must no longer poke a window that is gone.
    setDeferWakeup({});
}

void SdlBackend::attach(Screen& screen)
{
    m_state->screen = &screen;
    if (m_state->wakeEvent != Uint32(-1)) {
        const Uint32 type = m_state->wakeEvent;
        setDeferWakeup([type] {
            SDL_Event e{};
            e.type = type;
            SDL_PushEvent(&e);
        });
    }
}

XY<int> SdlBackend::getWindowSize() const
{
    int w = 0;
    int h = 0;
    SDL_GetRendererOutputSize(m_state->renderer, &w, &h);
    return {w, h};
}

void SdlBackend::setWindowSize(XY<int> size)
{
    SDL_SetWindowSize(m_state->window, std::clamp(size.x, 1, 65535), std::clamp(size.y, 1, 65535));
}

bool SdlBackend::pollEvents(Screen& screen)
{
    SDL_Event e;
    while (SDL_PollEvent(&e)) {
        switch (e.type) {
        case SDL_QUIT: m_state->closeRequested = true; break;
        case SDL_WINDOWEVENT:
            if (e.window.event == SDL_WINDOWEVENT_CLOSE) {
                m_state->closeRequested = true;
            } else if (e.window.event == SDL_WINDOWEVENT_SIZE_CHANGED) {
                const XY<int> size = getWindowSize();
                screen.setSize(static_cast<uint16_t>(std::clamp(size.x, 1, 65535)),
                               static_cast<uint16_t>(std::clamp(size.y, 1, 65535)));
            } else if (e.window.event == SDL_WINDOWEVENT_EXPOSED && m_state->haveFrame) {
                m_state->showTexture();
                SDL_RenderPresent(m_state->renderer);
            } else if (e.window.event == SDL_WINDOWEVENT_LEAVE) {
                m_state->cursorShown = -1;
            }
            break;
        case SDL_MOUSEMOTION:
            screen.mouseMove(m_state->toScreen(e.motion.x, e.motion.y), modifiersFrom(SDL_GetModState()));
            break;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            if (int button = mouseButton(e.button.button))
                screen.mouseButton(m_state->toScreen(e.button.x, e.button.y), button,
                                   e.type == SDL_MOUSEBUTTONDOWN, modifiersFrom(SDL_GetModState()));
            break;
        case SDL_MOUSEWHEEL: {
            int notches = e.wheel.y;
            if (e.wheel.direction == SDL_MOUSEWHEEL_FLIPPED)
                notches = -notches;
            if (notches != 0)
                screen.mouseWheel(m_state->toScreen(e.wheel.mouseX, e.wheel.mouseY), notches,
                                  modifiersFrom(SDL_GetModState()));
            break;
        }
        case SDL_KEYDOWN: {
            const int mods = modifiersFrom(e.key.keysym.mod);
            const SDL_Keycode sym = e.key.keysym.sym;
            if (int key = specialKey(sym, mods)) {
                screen.key(key, mods);
            } else if ((mods & (Event::Ctrl | Event::Alt | Event::Cmd)) && sym >= 0x20 && sym < 0x7f) {
                // Shortcuts type no text, so the key itself is what the widgets hear (Ctrl+C arrives as 'c').
                screen.key(static_cast<int>(sym), mods);
            }
            break;
        }
        case SDL_TEXTINPUT: {
            const LightweightString<wchar_t> typed = fromUTF8(e.text.text);
            const int mods = modifiersFrom(SDL_GetModState());
            // The shortcut was delivered as a key already; some systems type its character as well.
            if (!typed.empty() && !(mods & (Event::Ctrl | Event::Cmd)))
                screen.text(typed.view(), mods & ~Event::Shift);
            break;
        }
        default: break; // the wake-up event needs no handling: waking was its whole job
        }
    }
    return !m_state->closeRequested;
}

void SdlBackend::waitForEvents(int timeoutMs)
{
    if (timeoutMs < 0)
        SDL_WaitEvent(nullptr);
    else
        SDL_WaitEventTimeout(nullptr, timeoutMs);
}

void SdlBackend::wake()
{
    SDL_Event e{};
    e.type = m_state->wakeEvent;
    SDL_PushEvent(&e);
}

void SdlBackend::present(const Pictor::Image& image, const std::vector<GlobBox>& changed)
{
    State& s = *m_state;
    if (image.isNull())
        return;
    std::vector<GlobBox> areas = changed;
    if (!s.texture || s.textureSize != XY<int>{image.width(), image.height()}) {
        if (s.texture)
            SDL_DestroyTexture(s.texture);
        s.texture = SDL_CreateTexture(s.renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING,
                                      image.width(), image.height());
        if (!s.texture) {
            errorText() = SDL_GetError();
            return;
        }
        SDL_SetTextureBlendMode(s.texture, SDL_BLENDMODE_NONE);
        s.textureSize = {image.width(), image.height()};
        // A new texture holds nothing yet: all of it is new.
        areas.assign(1, GlobBox(0, 0, image.width(), image.height()));
    }
    const GlobBox whole(0, 0, image.width(), image.height());
    m_lastUpload = 0;
    for (const GlobBox& area : areas) {
        const GlobBox part = area.intersection(whole);
        if (part.empty())
            continue;
        // The image stores its top row first, as the texture does.
        const int firstRow = image.height() - part.top();
        const SDL_Rect rect{part.left(), firstRow, part.width(), part.height()};
        SDL_UpdateTexture(s.texture, &rect, image.row(firstRow) + part.left(), image.stride());
        m_lastUpload += int64_t(part.width()) * part.height();
    }
    s.showTexture();
    SDL_RenderPresent(s.renderer);
    s.haveFrame = true;
}

Pictor::Image SdlBackend::readPixels() const
{
    const XY<int> size = getWindowSize();
    Pictor::Image out(size.x, size.y);
    if (out.isNull())
        return out;
    m_state->showTexture();
    if (SDL_RenderReadPixels(m_state->renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, out.bytes(), out.stride()) != 0) {
        errorText() = SDL_GetError();
        return Pictor::Image();
    }
    return out;
}

Pictor::Image SdlBackend::captureDesktop(const GlobBox& area)
{
    State& s = *m_state;
    if (!s.desktop || !s.screen)
        return {};
    // The window's top-left on the desktop; the screen's y runs up from the window's bottom.
    int windowX = 0;
    int windowY = 0;
    SDL_GetWindowPosition(s.window, &windowX, &windowY);
    return s.desktop->capture(windowX + area.left(), windowY + s.screen->getSize().y - area.top(), area.width(),
                              area.height());
}

bool SdlBackend::hasDesktopCapture() const
{
    return m_state->desktop != nullptr;
}

void SdlBackend::setCursorShape(int cursorId)
{
    State& s = *m_state;
    if (cursorId == CursorEyedropper) {
        if (s.cursorShown == State::eyedropperShown)
            return;
        if (!s.eyedropper)
            s.eyedropper = makeEyedropperCursor();
        if (s.eyedropper) {
            SDL_SetCursor(s.eyedropper);
            s.cursorShown = State::eyedropperShown;
            return;
        }
    }
    const SDL_SystemCursor which = systemCursor(cursorId);
    if (s.cursorShown == int(which))
        return;
    SDL_Cursor*& cursor = s.cursors[which];
    if (!cursor)
        cursor = SDL_CreateSystemCursor(which);
    if (cursor) {
        SDL_SetCursor(cursor);
        s.cursorShown = int(which);
    }
}

LightweightString<wchar_t> SdlBackend::getClipboardText()
{
    char* text = SDL_GetClipboardText();
    if (!text)
        return {};
    LightweightString<wchar_t> result = fromUTF8(text);
    SDL_free(text);
    return result;
}

void SdlBackend::setClipboardText(const LightweightString<wchar_t>& text)
{
    SDL_SetClipboardText(toUTF8(text.view()).c_str());
}

int64_t SdlBackend::run(Screen& screen)
{
    int64_t turns = 0;
    bool hadTopLevel = !screen.getTopLevels().empty();
    for (;;) {
        ++turns;
        if (!screen.processEvents())
            break;
        if (!screen.getTopLevels().empty())
            hadTopLevel = true;
        else if (hadTopLevel)
            break;
        screen.backend().waitForEvents(timerServiceMs);
    }
    return turns;
}
