#include "toolkit/support/Configb.h"

void configb::set(std::string_view key, std::string_view value)
{
    if (const auto it = m_index.find(key); it != m_index.end()) {
        m_entries[it->second].value = LightweightString<char>(value);
        return;
    }
    m_index.emplace(std::string(key), m_entries.size());
    m_entries.push_back({LightweightString<char>(key), LightweightString<char>(value)});
}

const configb::Entry* configb::find(std::string_view key) const
{
    const auto it = m_index.find(key);
    return it == m_index.end() ? nullptr : &m_entries[it->second];
}

int configb::in(std::string_view key, LightweightString<char>& out) const
{
    const Entry* entry = find(key);
    if (!entry)
        return -1;
    out = entry->value;
    return 0;
}

int configb::in(std::string_view key, std::string& out) const
{
    const Entry* entry = find(key);
    if (!entry)
        return -1;
    out = entry->value.str();
    return 0;
}

bool configb::remove(std::string_view key)
{
    const auto it = m_index.find(key);
    if (it == m_index.end())
        return false;
    const size_t position = it->second;
    m_index.erase(it);
    m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(position));
    for (auto& [name, index] : m_index)
        if (index > position)
            --index;
    return true;
}

void configb::clear()
{
    m_entries.clear();
    m_index.clear();
}
