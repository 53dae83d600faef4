#pragma once
// Sequence containers of the support layer.
//
// LightweightVector<T>: a shared sequence that is cheap to copy, for lists handed around by value (the
// parameter list of a panel, for instance). Copies share one buffer until one of them is changed; the
// change then copies the buffer first, so other holders never see it. Reading is through const access
// only, which is what keeps the sharing safe. The count of sharers is atomic, as in LightweightString;
// the elements themselves are not guarded.
//
// Vector<T> and VectorExt<T>: ordinary owned sequences over std::vector with the helpers callers keep
// rewriting. Sizes and indices are unsigned 32-bit, the width the widget code uses for counts.

#include "toolkit/support/CopyOnWrite.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

template <typename T>
class LightweightVector {
public:
    using value_type = T;
    using const_iterator = typename std::vector<T>::const_iterator;
    static constexpr unsigned npos = static_cast<unsigned>(-1);

    LightweightVector() noexcept = default;
    LightweightVector(std::initializer_list<T> items) : LightweightVector(std::vector<T>(items)) {}
    explicit LightweightVector(std::vector<T> items)
        : m_items(items.empty() ? Shared() : Shared(std::move(items)))
    {
    }

    unsigned size() const noexcept { return static_cast<unsigned>(items().size()); }
    bool empty() const noexcept { return size() == 0; }
    const T& operator[](unsigned i) const noexcept { return items()[i]; }
    const T& front() const noexcept { return items().front(); }
    const T& back() const noexcept { return items().back(); }
    const_iterator begin() const noexcept { return items().begin(); }
    const_iterator end() const noexcept { return items().end(); }
    const std::vector<T>& items() const noexcept { return m_items.get() ? *m_items.get() : emptyItems(); }

    bool contains(const T& value) const { return indexOf(value) != npos; }
    unsigned indexOf(const T& value) const
    {
        const auto& v = items();
        const auto it = std::find(v.begin(), v.end(), value);
        return it == v.end() ? npos : static_cast<unsigned>(it - v.begin());
    }

    // Mutators detach first, so other copies keep the old contents.
    void push_back(T value) { mutableItems().push_back(std::move(value)); }
    void add(T value) { push_back(std::move(value)); }
    void set(unsigned i, T value) { mutableItems()[i] = std::move(value); }
    void insert(unsigned at, T value)
    {
        auto& v = mutableItems();
        v.insert(v.begin() + std::min<size_t>(at, v.size()), std::move(value));
    }
    // Out-of-range indices are ignored: removing what is not there changes nothing.
    void removeAt(unsigned i)
    {
        if (i < size()) {
            auto& v = mutableItems();
            v.erase(v.begin() + i);
        }
    }
    // Removes the first element equal to value; answers whether there was one.
    bool remove(const T& value)
    {
        const unsigned i = indexOf(value);
        removeAt(i);
        return i != npos;
    }
    void clear() noexcept { m_items.reset(); }
    void reserve(unsigned count) { mutableItems().reserve(count); }

    // True when both share one buffer: copying did not allocate.
    bool sharesWith(const LightweightVector& other) const noexcept { return m_items.sharesWith(other.m_items); }

    friend bool operator==(const LightweightVector& a, const LightweightVector& b)
    {
        return a.m_items.sharesWith(b.m_items) || a.items() == b.items();
    }

private:
    using Shared = CopyOnWrite<std::vector<T>>;

    static const std::vector<T>& emptyItems() noexcept
    {
        static const std::vector<T> none;
        return none;
    }
    std::vector<T>& mutableItems() { return m_items.mutableValue(); }

    Shared m_items;
};

template <typename T>
class Vector : public std::vector<T> {
public:
    using Base = std::vector<T>;
    using Base::Base;
    static constexpr unsigned npos = static_cast<unsigned>(-1);

    Vector() = default;
    Vector(const Base& items) : Base(items) {}
    Vector(Base&& items) noexcept : Base(std::move(items)) {}

    unsigned size() const noexcept { return static_cast<unsigned>(Base::size()); }
    void add(T value) { Base::push_back(std::move(value)); }
    bool contains(const T& value) const { return indexOf(value) != npos; }
    unsigned indexOf(const T& value) const
    {
        const auto it = std::find(Base::begin(), Base::end(), value);
        return it == Base::end() ? npos : static_cast<unsigned>(it - Base::begin());
    }
    // Removes the first element equal to value, keeping the order of the rest; answers whether there was one.
    bool remove(const T& value)
    {
        const unsigned i = indexOf(value);
        if (i == npos)
            return false;
        Base::erase(Base::begin() + i);
        return true;
    }
    // Out-of-range indices are ignored.
    void removeAt(unsigned i)
    {
        if (i < size())
            Base::erase(Base::begin() + i);
    }
};

// Vector with the less common helpers: uniqueness, bulk removal, predicates and reordering.
template <typename T>
class VectorExt : public Vector<T> {
public:
    using Base = Vector<T>;
    using Base::Base;
    using Base::npos;

    // Adds value unless an equal one is present; answers its index either way.
    unsigned addUnique(T value)
    {
        const unsigned i = this->indexOf(value);
        if (i != npos)
            return i;
        this->add(std::move(value));
        return this->size() - 1;
    }
    // Removes every element equal to value; answers how many went.
    unsigned removeAll(const T& value)
    {
        return removeIf([&value](const T& item) { return item == value; });
    }
    template <typename Pred>
    unsigned removeIf(Pred pred)
    {
        const auto from = std::remove_if(this->begin(), this->end(), pred);
        const auto removed = static_cast<unsigned>(this->end() - from);
        this->erase(from, this->end());
        return removed;
    }
    template <typename Pred>
    unsigned indexOfIf(Pred pred) const
    {
        const auto it = std::find_if(this->begin(), this->end(), pred);
        return it == this->end() ? npos : static_cast<unsigned>(it - this->begin());
    }
    // Inserts before index `at`; an index past the end appends.
    void insertAt(unsigned at, T value)
    {
        this->insert(this->begin() + std::min(at, this->size()), std::move(value));
    }
    // Moves one element so that it ends up at index `to`, shifting those between. Out-of-range indices are ignored.
    void moveItem(unsigned from, unsigned to)
    {
        if (from >= this->size() || to >= this->size() || from == to)
            return;
        if (from < to)
            std::rotate(this->begin() + from, this->begin() + from + 1, this->begin() + to + 1);
        else
            std::rotate(this->begin() + to, this->begin() + from, this->begin() + from + 1);
    }
};
