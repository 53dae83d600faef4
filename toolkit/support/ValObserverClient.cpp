#include "toolkit/support/ValObserverClient.h"

#include <algorithm>
#include <utility>

ValSubject::~ValSubject()
{
    // Copied first: an observer may stop observing other subjects, or be destroyed, from its callback.
    const std::vector<ValObserverClient*> observers = m_observers;
    for (ValObserverClient* observer : observers) {
        if (!observer)
            continue;
        // Skipped when an earlier callback destroyed or detached it.
        if (std::find(m_observers.begin(), m_observers.end(), observer) == m_observers.end())
            continue;
        std::erase(observer->m_subjects, this);
        std::replace(m_observers.begin(), m_observers.end(), observer, static_cast<ValObserverClient*>(nullptr));
        observer->handleSubjectDestroyed(*this);
    }
}

void ValSubject::addObserver(ValObserverClient& observer)
{
    if (hasObserver(observer))
        return;
    m_observers.push_back(&observer);
    observer.m_subjects.push_back(this);
}

void ValSubject::removeObserver(ValObserverClient& observer)
{
    if (!hasObserver(observer))
        return;
    std::erase(observer.m_subjects, this);
    forget(observer);
}

bool ValSubject::hasObserver(const ValObserverClient& observer) const
{
    return std::find(m_observers.begin(), m_observers.end(), &observer) != m_observers.end();
}

unsigned ValSubject::getNumObservers() const
{
    return static_cast<unsigned>(m_observers.size() - std::count(m_observers.begin(), m_observers.end(), nullptr));
}

void ValSubject::forget(ValObserverClient& observer)
{
    const auto it = std::find(m_observers.begin(), m_observers.end(), &observer);
    if (it == m_observers.end())
        return;
    // During a round the list is walked by index: blank the entry now and sweep it afterwards.
    if (m_notifyDepth > 0)
        *it = nullptr;
    else
        m_observers.erase(it);
}

bool ValSubject::notifyObservers(DataChangeType type, const ValObserverClient* except)
{
    Cv::DestructionWatch::Scope scope(m_watch);
    ++m_notifyDepth;
    const size_t count = m_observers.size();
    for (size_t i = 0; i < count; ++i) {
        ValObserverClient* observer = m_observers[i];
        if (!observer || observer == except)
            continue;
        observer->handleValueChange(*this, type);
        if (scope.ownerGone())
            return false;
    }
    if (--m_notifyDepth == 0)
        std::erase(m_observers, nullptr);
    return true;
}

bool ValSubject::notifyObserver(ValObserverClient& observer, DataChangeType type)
{
    if (!hasObserver(observer))
        return true;
    Cv::DestructionWatch::Scope scope(m_watch);
    observer.handleValueChange(*this, type);
    return !scope.ownerGone();
}

ValObserverClient::~ValObserverClient()
{
    stopObservingAll();
}

bool ValObserverClient::isObserving(const ValSubject& subject) const
{
    return std::find(m_subjects.begin(), m_subjects.end(), &subject) != m_subjects.end();
}

void ValObserverClient::stopObservingAll()
{
    const std::vector<ValSubject*> subjects = std::exchange(m_subjects, {});
    for (ValSubject* subject : subjects)
        subject->forget(*this);
}
