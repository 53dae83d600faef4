#pragma once
// CopyOnWrite<T>: one value shared by every copy of its holder until a holder changes it. A copy costs one
// atomic increment; the first change made through a holder that shares the value copies it first, so the
// other holders never see the change. An empty holder allocates nothing. The count of holders is atomic,
// so copies may live on different threads; the value itself is not guarded.

#include <atomic>
#include <cstdint>
#include <utility>

template <typename T>
class CopyOnWrite {
public:
    CopyOnWrite() noexcept = default;
    explicit CopyOnWrite(T value) : m_rep(new Rep{std::move(value)}) {}
    CopyOnWrite(const CopyOnWrite& other) noexcept : m_rep(other.m_rep)
    {
        if (m_rep)
            m_rep->holders.fetch_add(1, std::memory_order_relaxed);
    }
    CopyOnWrite(CopyOnWrite&& other) noexcept : m_rep(std::exchange(other.m_rep, nullptr)) {}
    ~CopyOnWrite() { reset(); }
    CopyOnWrite& operator=(CopyOnWrite other) noexcept
    {
        std::swap(m_rep, other.m_rep);
        return *this;
    }

    // The shared value, or null when nothing is held.
    const T* get() const noexcept { return m_rep ? &m_rep->value : nullptr; }

    // The value to change: made empty when nothing is held, copied first while others share it.
    T& mutableValue()
    {
        if (!m_rep)
            m_rep = new Rep{};
        else if (m_rep->holders.load(std::memory_order_acquire) != 1)
            *this = CopyOnWrite(m_rep->value);
        return m_rep->value;
    }

    void reset() noexcept
    {
        if (m_rep && m_rep->holders.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete m_rep;
        m_rep = nullptr;
    }

    bool sharesWith(const CopyOnWrite& other) const noexcept { return m_rep == other.m_rep; }

private:
    struct Rep {
        T value;
        std::atomic<uint32_t> holders{1};
    };

    Rep* m_rep = nullptr;
};
