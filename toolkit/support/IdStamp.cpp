#include "toolkit/support/IdStamp.h"

#include <limits>

namespace Cv {

StampTable& StampTable::global()
{
    // Never destroyed: widgets with static lifetime may retire their stamps during process exit.
    static StampTable* table = new StampTable;
    return *table;
}

IdStamp StampTable::issue(void* object)
{
    uint32_t slot;
    if (!m_free.empty()) {
        slot = m_free.back();
        m_free.pop_back();
    } else {
        slot = static_cast<uint32_t>(m_slots.size());
        m_slots.emplace_back();
    }
    Slot& s = m_slots[slot];
    ++s.generation; // even (free) -> odd (live)
    s.object = object;
    ++m_live;
    return IdStamp(slot, s.generation);
}

bool StampTable::retire(IdStamp stamp)
{
    if (!isLive(stamp))
        return false;
    Slot& s = m_slots[stamp.slot()];
    s.object = nullptr;
    --m_live;
    if (s.generation == std::numeric_limits<uint32_t>::max()) {
        // One more step would wrap to 0 and the slot's next stamps would repeat ancient ones. The slot is
        // retired for good instead: generation 0 is even, so nothing ever matches it again.
        s.generation = 0;
        return true;
    }
    ++s.generation; // odd (live) -> even (free)
    m_free.push_back(stamp.slot());
    return true;
}

} // namespace Cv
