#include "toolkit/platform/OffscreenBackend.h"

#include "toolkit/gfx/ImageIO.h"
#include "toolkit/ui/Screen.h"

void OffscreenBackend::attach(Screen& screen)
{
    m_presented = screen.getImage();
}

bool OffscreenBackend::pollEvents(Screen& screen)
{
    // Taken out first: input delivered now may queue more, which waits for the next poll like a window's.
    std::vector<Input> pending;
    pending.swap(m_queue);
    for (const Input& in : pending) {
        switch (in.kind) {
        case Input::Button:
            screen.mouseButton(in.pos, in.value, in.down, in.modifiers);
            break;
        case Input::Move:
            screen.mouseMove(in.pos, in.modifiers);
            break;
        case Input::Wheel:
            screen.mouseWheel(in.pos, in.value, in.modifiers);
            break;
        case Input::Key:
            screen.key(in.value, in.modifiers);
            break;
        case Input::Text:
            screen.text(in.text.view(), in.modifiers);
            break;
        }
    }
    return !m_closeRequested;
}

void OffscreenBackend::present(const Pictor::Image& image, const std::vector<GlobBox>& changed)
{
    m_presented = image;
    m_lastChanged = changed;
    ++m_presentCount;
}

void OffscreenBackend::queueMouseButton(XY<int> pos, int button, bool down, int modifiers)
{
    m_queue.push_back({ Input::Button, pos, button, down, modifiers, {} });
}

void OffscreenBackend::queueMouseMove(XY<int> pos, int modifiers)
{
    m_queue.push_back({ Input::Move, pos, 0, false, modifiers, {} });
}

void OffscreenBackend::queueMouseWheel(XY<int> pos, int notches, int modifiers)
{
    m_queue.push_back({ Input::Wheel, pos, notches, false, modifiers, {} });
}

void OffscreenBackend::queueKey(int key, int modifiers)
{
    m_queue.push_back({ Input::Key, {}, key, false, modifiers, {} });
}

void OffscreenBackend::queueText(const LightweightString<wchar_t>& text)
{
    m_queue.push_back({ Input::Text, {}, 0, false, 0, text });
}

bool OffscreenBackend::savePng(const std::string& utf8Path) const
{
    return !m_presented.isNull() && Pictor::writePng(m_presented, utf8Path);
}
