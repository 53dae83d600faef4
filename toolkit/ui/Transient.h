#pragma once
// Transient<T>: state that belongs to one gesture in progress (a grip, a drag, the hover), not to the widget's
// value. A copy of a widget is a new widget that no pointer is pressing, so copying or moving a Transient
// gives a fresh T{}, and a widget's copy and move operations can be written by the compiler (`= default`)
// without carrying half a drag into the copy.
//
//     Transient<bool> m_hover;
//     Transient<DragState> m_drag;
//     if (*m_hover) ...; m_drag->start = event.pos;

#include <utility>

template <class T>
class Transient {
public:
    Transient() = default;
    explicit Transient(T value) : m_value(std::move(value)) {}
    Transient(const Transient&) {}
    Transient(Transient&&) noexcept {}
    Transient& operator=(const Transient& other)
    {
        if (this != &other)
            m_value = T{};
        return *this;
    }
    Transient& operator=(Transient&& other) noexcept
    {
        if (this != &other)
            m_value = T{};
        return *this;
    }
    Transient& operator=(T value)
    {
        m_value = std::move(value);
        return *this;
    }

    T& operator*() { return m_value; }
    const T& operator*() const { return m_value; }
    T* operator->() { return &m_value; }
    const T* operator->() const { return &m_value; }

    // Back to the state of no gesture.
    void reset() { m_value = T{}; }

private:
    T m_value{};
};
