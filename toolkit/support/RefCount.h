#pragma once
// Intrusive reference counting for the shared model objects that travel in Cv::Ptr.

#include <atomic>

// Root of every polymorphic interface: gives a virtual destructor.
class iVirtual {
public:
    virtual ~iVirtual() = default;
};

namespace Cv {

// The count lives in the object, so a raw pointer can be turned back into a Ptr safely.
// Copying an object does not copy its count: the copy starts unowned.
class InternalRefCount {
public:
    InternalRefCount() = default;
    InternalRefCount(const InternalRefCount&) noexcept {}
    InternalRefCount& operator=(const InternalRefCount&) noexcept { return *this; }
    virtual ~InternalRefCount() = default;

    void incRefCount() const noexcept { m_refs.fetch_add(1, std::memory_order_relaxed); }
    // Answers the count left; the caller destroys the object at zero.
    int decRefCount() const noexcept { return m_refs.fetch_sub(1, std::memory_order_acq_rel) - 1; }
    int getRefCount() const noexcept { return m_refs.load(std::memory_order_relaxed); }

private:
    mutable std::atomic<int> m_refs{0};
};

struct InternalRefCountTraits {
    static void addRef(const InternalRefCount* object) noexcept { object->incRefCount(); }
    // True when this was the last reference.
    static bool release(const InternalRefCount* object) noexcept { return object->decRefCount() == 0; }
};

struct DtorTraits {
    template <typename T>
    static void destroy(T* object) noexcept { delete object; }
};

} // namespace Cv

// Base of shared, reference-counted objects that are passed around by interface.
class iObject : public virtual Cv::InternalRefCount, public virtual iVirtual {
};
