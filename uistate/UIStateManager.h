#pragma once
// UIStateManager: where the editor reports what the user does. Each report is passed on to listeners; the
// first time an action happens (while hints are on) a short hint about it is shown in the hint window, and
// the preferences remember that it was shown, across runs.
//
// Preferences: "UI : Show hints" (default true) and, per action, "UI : Hinted <number>" (default false).
//
// Threads: recordAction(action) may be called from any thread; off the main thread it is handed to the main
// thread and handled there. recordAction(action, position) runs where it is called and is meant for the main
// thread: callers with a position are widgets, which live there. Listeners hear each action on the thread that
// handles it, inside the notifier's critical section.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Notifier.h"
#include "toolkit/support/Shutdown.h"
#include "toolkit/support/XY.h"

#include <string>

class HintWindow;

// The actions the host reports. Only their numbers matter here: they are stored in preference keys.
enum eUIActionType : int {
    eFirstUIAction = 0,
    eLastUIAction = 43,
};
constexpr int numUIActionTypes = eLastUIAction + 1;

class UIStateManager : public GenericNotifier<eUIActionType> {
public:
    static UIStateManager& instance();

    // The marker of a report that has no position.
    static constexpr int noPosition = -1234;
    static constexpr const char* showHintsPrefKey = "UI : Show hints";
    static constexpr const char* hintedPrefKeyPrefix = "UI : Hinted ";

    void recordAction(eUIActionType action);
    void recordAction(eUIActionType action, XY<int> screenPosition);

    bool getHintsEnabled() const;
    // With resetIssued, every hint may be shown again.
    void setHintsEnabled(bool enabled, bool resetIssued);
    // Closes the hint window if it is still open.
    void hideHints();

    // The hint the action would show now (empty: none), whether or not it was given before.
    static LightweightString<wchar_t> hintTextFor(eUIActionType action);
    static bool getHintIssued(eUIActionType action);
    // The hint window while it is open, else null.
    static HintWindow* getHintWindow();

protected:
    // A manager beside the process's own, over the same preferences (tests: what a new run would see).
    struct SeparateManager { };
    explicit UIStateManager(SeparateManager);

private:
    UIStateManager();

    void recordActionInternal(eUIActionType action, XY<int> position);
    static void showHint(const LightweightString<wchar_t>& text, XY<int> position);
    static void shutdown(Shutdown::eExitType exitType);
    static void setHintIssued(eUIActionType action);
    static std::string makePrefsKeyFor(eUIActionType action);
    static LightweightString<wchar_t> makePrefsSpecific(int resId, const char* command);
};
