#pragma once
// configb: an ordered record of narrow (UTF-8) key/value texts. Panels save their values into one and restore
// them from it by name, so lookups are by key while iteration keeps the order in which keys first arrived.

#include "toolkit/support/LightweightString.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

class configb {
public:
    struct Entry {
        LightweightString<char> key;
        LightweightString<char> value;
        bool operator==(const Entry&) const = default;
    };
    using const_iterator = std::vector<Entry>::const_iterator;

    configb() = default;

    // Replaces the value of an existing key where it stands; a new key goes to the end.
    void set(std::string_view key, std::string_view value);
    // Answers 0 and fills out when the key is present; answers -1 and leaves out untouched when it is not.
    int in(std::string_view key, LightweightString<char>& out) const;
    int in(std::string_view key, std::string& out) const;
    bool contains(std::string_view key) const { return m_index.find(key) != m_index.end(); }
    // Answers whether the key was there. The others keep their order.
    bool remove(std::string_view key);
    void clear();

    size_t size() const { return m_entries.size(); }
    bool empty() const { return m_entries.empty(); }
    const_iterator begin() const { return m_entries.begin(); }
    const_iterator end() const { return m_entries.end(); }

    // Two records are equal when they hold the same entries in the same order.
    bool operator==(const configb& other) const { return m_entries == other.m_entries; }

private:
    const Entry* find(std::string_view key) const;

    std::vector<Entry> m_entries;
    std::map<std::string, size_t, std::less<>> m_index; // key -> position in m_entries
};
