#pragma once
// Observed values, the lowest layer: a ValSubject keeps a list of ValObserverClients and tells them when
// its value changes. ValServer (a value holder) and ValAdaptor (the bridge a widget binds to) are subjects;
// value widgets are observers.
//
// Links are kept at both ends, so either side may be destroyed first, at any time, even while a
// notification is being delivered: a destroyed observer is skipped for the rest of the round, and a subject
// destroyed by one of its observers stops the round without touching itself again. An observer hears of a
// subject's destruction through handleSubjectDestroyed, after the subject has forgotten it.
//
// User-interface thread only: nothing here is locked.

#include "toolkit/support/DestructionWatch.h"

#include <vector>

// Why a value changed, passed along with the change so that observers can, for instance, skip costly work
// during a drag and do it once at the end.
enum DataChangeType {
    kDataChangeSet = 0,         // set by code, restored from settings, or announced
    kDataChangeInteractive = 1, // one step of a user gesture still under way (a slider being dragged)
    kDataChangeFinal = 2,       // the last step of a user gesture, or a single edit
};

class ValObserverClient;

class ValSubject {
public:
    ValSubject() = default;
    // Observers watch one object, not its copies.
    ValSubject(const ValSubject&) noexcept {}
    ValSubject& operator=(const ValSubject&) noexcept { return *this; }
    virtual ~ValSubject();

    // Adding an observer twice has no further effect.
    void addObserver(ValObserverClient& observer);
    void removeObserver(ValObserverClient& observer);
    bool hasObserver(const ValObserverClient& observer) const;
    unsigned getNumObservers() const;

protected:
    // Tells every observer except `except`, in the order they were added; observers added meanwhile first
    // hear of the next change. Answers false when an observer destroyed this subject.
    bool notifyObservers(DataChangeType type, const ValObserverClient* except = nullptr);
    // Tells one observer, if it observes this subject. Answers false when it destroyed this subject.
    bool notifyObserver(ValObserverClient& observer, DataChangeType type);

    Cv::DestructionWatch m_watch;

private:
    friend class ValObserverClient;
    void forget(ValObserverClient& observer);

    std::vector<ValObserverClient*> m_observers; // removed during a round: left null, swept after
    unsigned m_notifyDepth = 0;
};

class ValObserverClient {
public:
    ValObserverClient() = default;
    // A copy is a new observer that watches nothing yet.
    ValObserverClient(const ValObserverClient&) noexcept {}
    ValObserverClient& operator=(const ValObserverClient&) noexcept { return *this; }
    virtual ~ValObserverClient();

    // `source` changed. Read the new value from it; it may be the very subject being set by this observer
    // when what was stored differs from what it proposed (a correction it should show).
    virtual void handleValueChange(ValSubject& source, DataChangeType type) = 0;
    // `source` is being destroyed and no longer knows this observer; do not call it again.
    virtual void handleSubjectDestroyed(ValSubject& source) { (void)source; }

    bool isObserving(const ValSubject& subject) const;
    void stopObservingAll();

private:
    friend class ValSubject;
    std::vector<ValSubject*> m_subjects;
};
