#include "toolkit/gfx/detail/ShapedTextCache.h"

#include <cairo.h>

namespace Pictor {

namespace {

// What the containers spend around an entry: the list node, the index's node and bucket, allocation headers.
constexpr size_t kEntryOverhead = 128;

} // namespace

ShapedTextCache::ShapedTextCache(size_t byteBudget) : m_budget(byteBudget) {}

ShapedTextCache::~ShapedTextCache()
{
    for (Entry& entry : m_entries)
        release(entry);
    release(m_oversized);
}

size_t ShapedTextCache::entryBytes(std::string_view text, const ShapedText& shaped)
{
    return kEntryOverhead + text.size() + shaped.glyphs.size() * sizeof(ShapedGlyph)
        + shaped.runs.size() * sizeof(ShapedRun);
}

void ShapedTextCache::release(Entry& entry)
{
    for (const ShapedRun& run : entry.shaped.runs)
        cairo_scaled_font_destroy(run.font);
    entry.shaped.runs.clear();
}

const ShapedText* ShapedTextCache::find(std::string_view text)
{
    const auto found = m_index.find(text);
    if (found == m_index.end())
        return nullptr;
    if (found->second != m_entries.begin())
        m_entries.splice(m_entries.begin(), m_entries, found->second);
    return &found->second->shaped;
}

void ShapedTextCache::evictTo(size_t bytes)
{
    while (m_bytes > bytes && !m_entries.empty()) {
        Entry& last = m_entries.back();
        m_index.erase(std::string_view(last.text));
        m_bytes -= last.bytes;
        release(last);
        m_entries.pop_back();
    }
}

const ShapedText& ShapedTextCache::insert(std::string_view text, ShapedText shaped)
{
    if (const auto found = m_index.find(text); found != m_index.end()) {
        Entry& old = *found->second;
        m_index.erase(found);
        m_bytes -= old.bytes;
        release(old);
        m_entries.erase(found->second);
    }
    const size_t bytes = entryBytes(text, shaped);
    if (bytes > m_budget) {
        release(m_oversized);
        m_oversized = Entry{std::string(text), std::move(shaped), bytes};
        return m_oversized.shaped;
    }
    evictTo(m_budget - bytes);
    m_entries.push_front(Entry{std::string(text), std::move(shaped), bytes});
    m_index.emplace(std::string_view(m_entries.front().text), m_entries.begin());
    m_bytes += bytes;
    return m_entries.front().shaped;
}

} // namespace Pictor
