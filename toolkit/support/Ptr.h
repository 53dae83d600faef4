#pragma once
// Cv::Ptr: an intrusive, null-able, thread-safe reference-counted pointer.

#include "toolkit/support/RefCount.h"

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

namespace Cv {

template <typename T, typename RefTraits = InternalRefCountTraits, typename Dtor = DtorTraits>
class Ptr {
public:
    using element_type = T;

    Ptr() noexcept = default;
    Ptr(std::nullptr_t) noexcept {}
    explicit Ptr(T* object) noexcept : m_object(object) { acquire(); }
    Ptr(const Ptr& other) noexcept : m_object(other.m_object) { acquire(); }
    Ptr(Ptr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    template <typename U>
        requires std::is_convertible_v<U*, T*>
    Ptr(const Ptr<U, RefTraits, Dtor>& other) noexcept : m_object(other.get()) { acquire(); }
    template <typename U>
        requires std::is_convertible_v<U*, T*>
    Ptr(Ptr<U, RefTraits, Dtor>&& other) noexcept : m_object(other.detach()) {}
    ~Ptr() { releaseObject(); }

    Ptr& operator=(Ptr other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    T* get() const noexcept { return m_object; }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    void reset(T* object = nullptr) noexcept { *this = Ptr(object); }
    // Gives up ownership without releasing: the caller now holds the reference.
    T* detach() noexcept { return std::exchange(m_object, nullptr); }

    template <typename U>
    Ptr<U, RefTraits, Dtor> dynamicCast() const noexcept
    {
        return Ptr<U, RefTraits, Dtor>(dynamic_cast<U*>(m_object));
    }

    template <typename U>
    bool operator==(const Ptr<U, RefTraits, Dtor>& other) const noexcept { return m_object == other.get(); }
    bool operator==(std::nullptr_t) const noexcept { return m_object == nullptr; }
    bool operator==(const T* other) const noexcept { return m_object == other; }

private:
    void acquire() const noexcept
    {
        if (m_object)
            RefTraits::addRef(m_object);
    }
    void releaseObject() noexcept
    {
        if (m_object && RefTraits::release(m_object))
            Dtor::destroy(m_object);
        m_object = nullptr;
    }

    T* m_object = nullptr;
};

template <typename T, typename... Args>
Ptr<T> make(Args&&... args)
{
    return Ptr<T>(new T(std::forward<Args>(args)...));
}

} // namespace Cv

template <typename T, typename R, typename D>
struct std::hash<Cv::Ptr<T, R, D>> {
    size_t operator()(const Cv::Ptr<T, R, D>& p) const noexcept { return std::hash<T*>()(p.get()); }
};
