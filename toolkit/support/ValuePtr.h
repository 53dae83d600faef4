#pragma once
// ValuePtr<T>: a T kept out of line and made on first use, copied with its owner. For the rarely used parts of
// widgets made by the thousand (a button per list line), whose copy operations should still be `= default`.
// Moving copies too, as moving a widget does (the moved-to widget is a new one): Transient members of T reset,
// and the widget moved from keeps its parts.

#include <memory>

template <class T>
class ValuePtr {
public:
    ValuePtr() = default;
    ValuePtr(const ValuePtr& other) : m_value(copyOf(other)) {}
    ValuePtr(ValuePtr&& other) : ValuePtr(static_cast<const ValuePtr&>(other)) {}
    ValuePtr& operator=(const ValuePtr& other)
    {
        if (this != &other)
            m_value = copyOf(other);
        return *this;
    }
    ValuePtr& operator=(ValuePtr&& other) { return *this = static_cast<const ValuePtr&>(other); }
    ~ValuePtr() = default;

    explicit operator bool() const { return m_value != nullptr; }
    // Null until made.
    T* get() const { return m_value.get(); }
    T* operator->() const { return m_value.get(); }
    // The value, made (default) on first use.
    T& made()
    {
        if (!m_value)
            m_value = std::make_unique<T>();
        return *m_value;
    }

private:
    static std::unique_ptr<T> copyOf(const ValuePtr& other)
    {
        return other.m_value ? std::make_unique<T>(*other.m_value) : nullptr;
    }

    std::unique_ptr<T> m_value;
};
