#include "uistate/UIStateManager.h"

#include "toolkit/support/CriticalSection.h"
#include "toolkit/support/FileUtils.h"
#include "toolkit/support/MainThread.h"
#include "toolkit/support/Preferences.h"
#include "toolkit/support/ProductText.h"
#include "toolkit/support/Resources.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/KeybindingManager.h"
#include "toolkit/ui/Screen.h"
#include "toolkit/ui/UifStd.h"
#include "uistate/HintWindow.h"

#include <atomic>

namespace {

constexpr int shutdownPriority = 100;

// The one hint window of the process, with its stamp, so that a window destroyed elsewhere (clicked away,
// timed out) is recognised even if another widget now lives at its address.
struct HintWindowHandle {
    HintWindow* window = nullptr;
    IdStamp stamp;

    HintWindow* live() const { return window && is_good_glob_ptr(window, stamp) ? window : nullptr; }
};

HintWindowHandle& hintWindowHandle()
{
    static HintWindowHandle handle;
    return handle;
}

// The shutdown callback points into this library: should the library be unloaded before the process ends,
// the callback goes with it.
struct ShutdownRegistration {
    std::atomic<Shutdown::CallbackId> id { 0 };
    ~ShutdownRegistration()
    {
        if (const Shutdown::CallbackId added = id.load())
            Shutdown::removeCallback(added);
    }
};

ShutdownRegistration shutdownRegistration;

int windowLayout()
{
    return UifStd::getWindowArrangement().layout;
}

LightweightString<wchar_t> resourceText(int id)
{
    return resourceStrW(id);
}

} // namespace

UIStateManager& UIStateManager::instance()
{
    static std::atomic<UIStateManager*> made { nullptr };
    static CriticalSection creation;
    UIStateManager* manager = made.load(std::memory_order_acquire);
    if (!manager) {
        const CriticalSection::Lock lock(creation);
        manager = made.load(std::memory_order_relaxed);
        if (!manager) {
            manager = new UIStateManager(); // lives until the process ends
            made.store(manager, std::memory_order_release);
        }
    }
    return *manager;
}

UIStateManager::UIStateManager()
{
    shutdownRegistration.id = Shutdown::addCallback(ShutdownSequence::Callback(&UIStateManager::shutdown), shutdownPriority);
}

UIStateManager::UIStateManager(SeparateManager) {}

void UIStateManager::recordAction(eUIActionType action)
{
    if (isMainThread())
        recordActionInternal(action, { noPosition, noPosition });
    else
        defer(DeferableMethodCallback(this, &UIStateManager::recordActionInternal, action,
                                      XY<int> { noPosition, noPosition }));
}

void UIStateManager::recordAction(eUIActionType action, XY<int> screenPosition)
{
    recordActionInternal(action, screenPosition);
}

bool UIStateManager::getHintsEnabled() const
{
    return prefs().getPreference(showHintsPrefKey, true);
}

void UIStateManager::setHintsEnabled(bool enabled, bool resetIssued)
{
    prefs().setPreference(showHintsPrefKey, enabled);
    if (resetIssued)
        for (int action = eFirstUIAction; action <= eLastUIAction; ++action)
            prefs().removePreference(makePrefsKeyFor(static_cast<eUIActionType>(action)));
}

void UIStateManager::hideHints()
{
    HintWindowHandle& handle = hintWindowHandle();
    if (HintWindow* window = handle.live())
        Glob::destroy(window);
    handle = {};
}

void UIStateManager::shutdown(Shutdown::eExitType)
{
    instance().hideHints();
}

bool UIStateManager::getHintIssued(eUIActionType action)
{
    return prefs().getPreference(makePrefsKeyFor(action), false);
}

void UIStateManager::setHintIssued(eUIActionType action)
{
    prefs().setPreference(makePrefsKeyFor(action), true);
}

std::string UIStateManager::makePrefsKeyFor(eUIActionType action)
{
    return hintedPrefKeyPrefix + std::to_string(static_cast<int>(action));
}

HintWindow* UIStateManager::getHintWindow()
{
    return hintWindowHandle().live();
}

LightweightString<wchar_t> UIStateManager::makePrefsSpecific(int resId, const char* command)
{
    const std::vector<KeyBinding> keys = KeybindingManager::instance().getKeysAssignedToCommand(command);
    if (keys.empty())
        return {};
    return replacePlaceholder(resourceText(resId), L"$KEY$", KeybindingManager::keyToString(keys.front()));
}

LightweightString<wchar_t> UIStateManager::hintTextFor(eUIActionType action)
{
    if (windowLayout() == WindowArrangement::FreePanels && action == 9)
        return resourceText(11468);
    switch (static_cast<int>(action)) {
    case 0: return resourceText(11472);
    case 1: return resourceText(11467);
    case 2: return resourceText(11465);
    case 3:
        // Once the device set-up file exists, the user has found the hardware settings already.
        return fileExists(getDeviceDataDirectory(0) + L"extcfg.dat") ? LightweightString<wchar_t>() : resourceText(11469);
    case 4: return resourceText(11464);
    case 5: return resourceText(11471);
    case 6: return resourceText(11473);
    case 7: return resourceText(11470);
    case 8: return resourceText(11593);
    case 10: return resourceText(13038);
    case 11: return resourceText(windowLayout() == WindowArrangement::FreePanels ? 13079 : 14154);
    case 12: return makePrefsSpecific(13605, "ToggleFullScreen");
    case 13: return makeProductSpecific(13105);
    case 14: return resourceText(13125);
    case 15: return makeProductSpecific(13264);
    case 16: return replacePlaceholder(resourceText(13348), L"$LOCATION$", getLUTDirectory(0));
    case 17: return makeProductSpecific(13600);
    case 18: return resourceText(13599);
    case 19: return resourceText(13612);
    case 20: return resourceText(13601);
    case 21: return resourceText(13602);
    case 22: return resourceText(13603);
    case 23: return makePrefsSpecific(13604, "TogglePlay");
    // The second sentence stands even without a key to name in the first.
    case 24: return makePrefsSpecific(13604, "TogglePlay") + L"  " + resourceText(13614);
    case 25: return resourceText(GlobManager::find("ScreenConsole") ? 13080 : 13116);
    case 26: return resourceText(13606);
    case 27: return makePrefsSpecific(13607, "Undo");
    case 28: return resourceText(13608);
    case 29: return windowLayout() == WindowArrangement::SingleWindow ? resourceText(13609) : LightweightString<wchar_t>();
    case 30: return resourceText(13610);
    case 31: return resourceText(13611);
    case 32: return makePrefsSpecific(13613, "Join/Unjoin");
    case 33: return resourceText(13615);
    case 34: return resourceText(13657);
    case 37: return resourceText(13694);
    case 38: return resourceText(13717);
    case 39: return resourceText(13856);
    case 40: return resourceText(13876);
    case 41: return resourceText(14031);
    case 42: return resourceText(14159);
    case 43: return resourceText(14177);
    default: return {};
    }
}

void UIStateManager::recordActionInternal(eUIActionType action, XY<int> position)
{
    if (getHintsEnabled() && !getHintIssued(action)) {
        const LightweightString<wchar_t> text = hintTextFor(action);
        // An action with nothing to say now is not marked, so that it is tried again next time.
        if (!text.empty()) {
            showHint(text, position);
            setHintIssued(action);
        }
    }
    issueNotification(action, NotifyMsgTypeDictionary::instance().getUIStateChangedType());
}

void UIStateManager::showHint(const LightweightString<wchar_t>& text, XY<int> position)
{
    HintWindowHandle& handle = hintWindowHandle();
    if (HintWindow* open = handle.live()) {
        open->addMessage(UIString(text));
        return;
    }
    XY<int> anchor = position;
    if (anchor.x == noPosition && anchor.y == noPosition)
        anchor = { UifStd::getButtonHeight(), UifStd::getButtonHeight() };
    // Hints sit just above the trash whenever there is one, even over a position the caller gave: that is
    // where users look while they work.
    if (Glob* trash = GlobManager::find("trash")) {
        const XY<int> at = trash->getScreenPos();
        anchor = { at.x + 40, at.y + trash->getHeight() + 25 };
    }
    if (!Screen::current())
        return;
    HintWindow* window = nullptr;
    {
        const RedrawSuppressor quiet;
        window = new HintWindow(StatusMessage::InitArgs(UIString(text), 0, StatusMessage::defaultTimeout,
                                                        UifStd::getColourScheme()));
        const XY<int> at = GlobManager::getSafePosForGlob(anchor, window->getSize());
        window->setPos(at.x, at.y);
    }
    if (!GlobManager::realize(window)) {
        delete window;
        return;
    }
    handle = { window, window->getIdStamp() };
}
