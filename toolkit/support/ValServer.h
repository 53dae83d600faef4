#pragma once
// ValServer<T>: holds one value and tells its observers when the value changes. Setting an equal value
// (operator==) tells nobody, so two parties that echo a value to each other come to rest.

#include "toolkit/support/RefCount.h"
#include "toolkit/support/ValObserverClient.h"

#include <utility>

template <typename T>
class ValServer : public iObject, public ValSubject {
public:
    explicit ValServer(T initial = T()) : m_value(std::move(initial)) {}

    const T& getValue() const { return m_value; }
    // Answers whether the value changed. `except` is not told: it is the party making the change and
    // already knows.
    bool setValue(T value, DataChangeType type = kDataChangeSet, const ValObserverClient* except = nullptr)
    {
        if (value == m_value)
            return false;
        m_value = std::move(value);
        notifyObservers(type, except);
        return true;
    }
    // Tells every observer the current value without a change (after binding new observers, for instance).
    void announce(DataChangeType type = kDataChangeSet) { notifyObservers(type); }

private:
    T m_value;
};
