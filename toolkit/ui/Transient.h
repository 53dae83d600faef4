#pragma once
// Transient<T>: state that belongs to one gesture in progress (a grip, a drag, the hover), not to the widget's
// value. A copy of a widget is a new widget that no pointer is pressing, so copying or moving a Transient
// gives a fresh value, and a widget's copy and move operations can be written by the compiler (`= default`)
// without carrying half a drag into the copy. The fresh value is T{}, or T{Fresh...} when given:
//
//     Transient<bool> m_hover;
//     Transient<DragState> m_drag;
//     Transient<int, -1> m_highlighted; // -1: no row
//     if (*m_hover) ...; m_drag->start = event.pos;
//
// PerObject<T>: state that belongs to this very object, not to its value: a claim it has to give back (an
// event intercept it pushed, a pop-up it opened and must close when it goes). A copy starts fresh as above;
// an assignment leaves each side its own, so the target still gives back what it holds.

#include <utility>

// The value both hold, and how callers reach it; each decides for itself what a copy carries.
template <class T, auto... Fresh>
class HeldValue {
public:
    T& operator*() { return m_value; }
    const T& operator*() const { return m_value; }
    T* operator->() { return &m_value; }
    const T* operator->() const { return &m_value; }

protected:
    HeldValue() = default;
    explicit HeldValue(T value) : m_value(std::move(value)) {}

    T m_value{Fresh...};
};

template <class T, auto... Fresh>
class Transient : public HeldValue<T, Fresh...> {
public:
    Transient() = default;
    explicit Transient(T value) : HeldValue<T, Fresh...>(std::move(value)) {}
    Transient(const Transient&) : HeldValue<T, Fresh...>() {}
    Transient(Transient&&) noexcept : HeldValue<T, Fresh...>() {}
    Transient& operator=(const Transient& other)
    {
        if (this != &other)
            reset();
        return *this;
    }
    Transient& operator=(Transient&& other) noexcept
    {
        if (this != &other)
            reset();
        return *this;
    }
    Transient& operator=(T value)
    {
        this->m_value = std::move(value);
        return *this;
    }

    // Back to the state of no gesture.
    void reset() { this->m_value = T{Fresh...}; }
};

template <class T, auto... Fresh>
class PerObject : public HeldValue<T, Fresh...> {
public:
    PerObject() = default;
    PerObject(const PerObject&) : HeldValue<T, Fresh...>() {}
    PerObject& operator=(const PerObject&) { return *this; }
    PerObject& operator=(T value)
    {
        this->m_value = std::move(value);
        return *this;
    }
};
