#include "toolkit/support/Notifier.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

// The listener list, shared with the guards (weakly) and with delivery rounds in progress (strongly), so that
// neither a late guard nor a listener that destroys the notifier touches freed memory.
struct NotifierBase::Table {
    struct Record {
        uint64_t id;
        int type;
        bool removed;
        Cv::Ptr<iObject> holder;
        void* listener;
    };
    using Released = std::vector<Cv::Ptr<iObject>>;

    CriticalSection section;
    std::vector<Record> records;
    uint64_t lastId = 0;
    // Rounds in progress on the thread that holds the section. While there are any, records are only marked
    // removed, so that the indexes of the rounds stay valid and a running listener stays alive.
    int depth = 0;
    bool needsCompaction = false;
    bool closed = false;

    // Section held. Records are marked first and erased afterwards by settle(), never while a loop walks them.
    void markRemoved(Record& record)
    {
        record.removed = true;
        needsCompaction = true;
    }

    // Section held. Outside rounds, erases the marked records. Their holders go to `released`, for the caller
    // to drop after leaving the section, because a listener's destructor may use this notifier again.
    void settle(Released& released)
    {
        if (depth == 0 && needsCompaction)
            compact(released);
    }

    void compact(Released& released)
    {
        for (Record& record : records) {
            if (record.removed)
                released.push_back(std::move(record.holder));
        }
        std::erase_if(records, [](const Record& record) { return record.removed; });
        needsCompaction = false;
    }

    bool removeId(uint64_t id)
    {
        Released released;
        CriticalSection::Lock lock(section);
        for (Record& record : records) {
            if (record.id == id && !record.removed) {
                markRemoved(record);
                settle(released);
                return true;
            }
        }
        return false;
    }
};

NotifierBase::OwnTable::OwnTable()
    : std::shared_ptr<Table>(std::make_shared<Table>())
{
}

NotifierBase::~NotifierBase()
{
    Table::Released released;
    {
        CriticalSection::Lock lock(m_table->section);
        m_table->closed = true;
        for (Table::Record& record : m_table->records)
            m_table->markRemoved(record);
        m_table->settle(released);
    }
}

size_t NotifierBase::getNumListeners() const
{
    CriticalSection::Lock lock(m_table->section);
    return static_cast<size_t>(std::count_if(
        m_table->records.begin(), m_table->records.end(), [](const Table::Record& record) { return !record.removed; }));
}

void NotifierBase::removeAllListeners()
{
    Table::Released released;
    CriticalSection::Lock lock(m_table->section);
    for (Table::Record& record : m_table->records)
        m_table->markRemoved(record);
    m_table->settle(released);
}

Cv::Ptr<Cv::Guard> NotifierBase::addRecord(Cv::Ptr<iObject> holder, void* listener, int type)
{
    uint64_t id = 0;
    {
        CriticalSection::Lock lock(m_table->section);
        if (m_table->closed)
            return {};
        id = ++m_table->lastId;
        m_table->records.push_back({ id, type, false, std::move(holder), listener });
    }
    return Cv::make<Cv::Guard>([table = std::weak_ptr<Table>(m_table), id] {
        if (const std::shared_ptr<Table> live = table.lock())
            live->removeId(id);
    });
}

bool NotifierBase::removeRecords(const void* listener)
{
    if (!listener)
        return false;
    Table::Released released;
    CriticalSection::Lock lock(m_table->section);
    bool found = false;
    for (Table::Record& record : m_table->records) {
        if (record.listener == listener && !record.removed) {
            m_table->markRemoved(record);
            found = true;
        }
    }
    m_table->settle(released);
    return found;
}

void NotifierBase::deliver(int type, Invoke invoke, const void* value) const
{
    // Held for the round: a listener may destroy this notifier, after which only the table is touched.
    const std::shared_ptr<Table> table = m_table;
    Table::Released released;
    CriticalSection::Lock lock(table->section);

    struct Round {
        Table& table;
        Table::Released& released;
        explicit Round(Table& t, Table::Released& r)
            : table(t)
            , released(r)
        {
            ++table.depth;
        }
        ~Round()
        {
            --table.depth;
            table.settle(released);
        }
        Round(const Round&) = delete;
        Round& operator=(const Round&) = delete;
    } round(*table, released);

    // Listeners added during the round lie beyond `end` and wait for the next one.
    const size_t end = table->records.size();
    for (size_t i = 0; i < end; ++i) {
        const Table::Record& record = table->records[i];
        if (record.removed || !CallbackInvokerBase::typeMatch(record.type, type))
            continue;
        invoke(record.listener, value);
    }
}

struct NotifyMsgTypeDictionary::State {
    mutable CriticalSection section;
    std::unordered_map<LightweightString<char>, int> codes;
    std::vector<LightweightString<char>> names; // index = code - firstType
};

NotifyMsgTypeDictionary& NotifyMsgTypeDictionary::instance()
{
    // Never destroyed: notifiers of other libraries may ask for types while the process exits.
    static auto* dictionary = new NotifyMsgTypeDictionary;
    return *dictionary;
}

NotifyMsgTypeDictionary::NotifyMsgTypeDictionary()
    : m_state(std::make_unique<State>())
{
}

NotifyMsgTypeDictionary::~NotifyMsgTypeDictionary() = default;

int NotifyMsgTypeDictionary::getType(const LightweightString<char>& name)
{
    if (name.empty())
        return noType;
    CriticalSection::Lock lock(m_state->section);
    const auto found = m_state->codes.find(name);
    if (found != m_state->codes.end())
        return found->second;
    const int code = firstType + static_cast<int>(m_state->names.size());
    m_state->codes.emplace(name, code);
    m_state->names.push_back(name);
    return code;
}

int NotifyMsgTypeDictionary::findType(const LightweightString<char>& name) const
{
    CriticalSection::Lock lock(m_state->section);
    const auto found = m_state->codes.find(name);
    return found == m_state->codes.end() ? noType : found->second;
}

LightweightString<char> NotifyMsgTypeDictionary::getName(int type) const
{
    CriticalSection::Lock lock(m_state->section);
    if (type < firstType || static_cast<size_t>(type - firstType) >= m_state->names.size())
        return {};
    return m_state->names[static_cast<size_t>(type - firstType)];
}
