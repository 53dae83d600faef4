#pragma once
// IdStamp: the identity of a live object (a widget), safe to keep after the object may have gone.
//
// A stamp is a slot number in a StampTable plus the generation that slot had when the stamp was issued.
// Retiring a stamp moves its slot to the next generation, so every copy of the old stamp stops matching at
// once; the slot is then reused for a later object under the new generation. Asking whether a stamp is live
// is one bounds check and one comparison, never a search.
//
// Live generations are odd and free ones even. The null stamp (generation 0) is therefore never live, and a
// stamp made up from a free slot's current generation cannot pass for a live one either. A slot whose
// generation would wrap round is never reused, so an old stamp cannot come back to life even after four
// billion reuses.
//
// The tables are not locked: stamps belong to widgets, which live on the user-interface thread.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

class IdStamp {
public:
    constexpr IdStamp() = default;
    constexpr IdStamp(uint32_t slot, uint32_t generation) : m_slot(slot), m_generation(generation) {}

    constexpr uint32_t slot() const { return m_slot; }
    constexpr uint32_t generation() const { return m_generation; }
    constexpr bool isNull() const { return m_generation == 0; }
    // One integer, for passing a stamp through an untyped channel (a message payload, a map key).
    constexpr uint64_t asUInt64() const { return (uint64_t(m_generation) << 32) | m_slot; }
    static constexpr IdStamp fromUInt64(uint64_t packed)
    {
        return IdStamp(static_cast<uint32_t>(packed), static_cast<uint32_t>(packed >> 32));
    }

    constexpr bool operator==(const IdStamp&) const = default;

private:
    uint32_t m_slot = 0;
    uint32_t m_generation = 0;
};
static_assert(sizeof(IdStamp) == 8, "a stamp is kept inside every widget");

template <>
struct std::hash<IdStamp> {
    size_t operator()(const IdStamp& s) const noexcept { return std::hash<uint64_t>()(s.asUInt64()); }
};

namespace Cv {

class StampTable {
public:
    StampTable() = default;
    StampTable(const StampTable&) = delete;
    StampTable& operator=(const StampTable&) = delete;

    // The table shared by all widgets of the process.
    static StampTable& global();

    // Hands out a stamp for a new object. `object` is remembered so that a live stamp can be turned back
    // into its object (lookup); it may be null when only liveness matters.
    IdStamp issue(void* object = nullptr);
    // Ends the stamp's life. Answers false, and changes nothing, when it was not live (retiring twice is harmless).
    bool retire(IdStamp stamp);
    bool isLive(IdStamp stamp) const
    {
        return stamp.slot() < m_slots.size() && m_slots[stamp.slot()].generation == stamp.generation()
            && (stamp.generation() & 1u) != 0;
    }
    // The object a live stamp was issued for; null for a stamp that is not live.
    void* lookup(IdStamp stamp) const { return isLive(stamp) ? m_slots[stamp.slot()].object : nullptr; }

    size_t liveCount() const { return m_live; }
    size_t slotCount() const { return m_slots.size(); }

private:
    struct Slot {
        uint32_t generation = 0;
        void* object = nullptr;
    };

    std::vector<Slot> m_slots;
    std::vector<uint32_t> m_free; // reused last-in first-out: the most recently freed slot is warm in cache
    size_t m_live = 0;
};

// A stamp issued from the global table for as long as its owner lives. A copy of the owner is a different
// object and gets a stamp of its own; the owner's address is recorded so that the stamp leads back to it.
class OwnedStamp {
public:
    explicit OwnedStamp(void* owner) : m_stamp(StampTable::global().issue(owner)) {}
    OwnedStamp(const OwnedStamp&) = delete;
    OwnedStamp& operator=(const OwnedStamp&) = delete;
    ~OwnedStamp() { StampTable::global().retire(m_stamp); }

    IdStamp get() const { return m_stamp; }
    operator IdStamp() const { return m_stamp; }

private:
    IdStamp m_stamp;
};

} // namespace Cv
