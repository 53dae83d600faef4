#pragma once
// ShapedTextCache: texts a font has shaped for drawing, kept so that drawing the same text again only places
// its glyphs. Internal to toolkit/gfx.
//
// Bounded by bytes, not entries: each entry counts its key, its glyphs and its bookkeeping, and the entries
// used least recently go first once the budget is spent. Each entry keeps a reference to the scaled fonts its
// glyphs are drawn with, released when the entry goes.

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct _cairo_scaled_font;

namespace Pictor {

// Positions are in shaper units (1/1024 pixel) from the start of the line, on its baseline.
struct ShapedGlyph {
    uint32_t index = 0;
    int32_t x = 0;
    int32_t y = 0;
};

// Consecutive glyphs drawn with one font (text the font lacks comes from a fallback font).
struct ShapedRun {
    _cairo_scaled_font* font = nullptr;
    uint32_t firstGlyph = 0;
    uint32_t glyphCount = 0;
    int32_t x = 0; // where the run starts on the line
};

struct ShapedText {
    std::vector<ShapedGlyph> glyphs;
    std::vector<ShapedRun> runs;
    int32_t baseline = 0; // below the line's top
    // Text whose glyphs cannot be drawn one by one (several lines, placeholder boxes): drawn by the full
    // layout every time, and remembered only so that the question is not asked again.
    bool needsLayout = false;
};

class ShapedTextCache {
public:
    explicit ShapedTextCache(size_t byteBudget);
    ~ShapedTextCache();
    ShapedTextCache(const ShapedTextCache&) = delete;
    ShapedTextCache& operator=(const ShapedTextCache&) = delete;

    // The shaped text, or null; a hit becomes the most recently used entry.
    const ShapedText* find(std::string_view text);
    // Takes over the runs' font references. A text larger than the whole budget is not kept, and the answer
    // is then valid only until the next insert.
    const ShapedText& insert(std::string_view text, ShapedText shaped);

    size_t bytesHeld() const { return m_bytes; }
    size_t byteBudget() const { return m_budget; }
    size_t size() const { return m_entries.size(); }
    // What one entry costs against the budget.
    static size_t entryBytes(std::string_view text, const ShapedText& shaped);

private:
    struct Entry {
        std::string text;
        ShapedText shaped;
        size_t bytes = 0;
    };
    void release(Entry& entry);
    void evictTo(size_t bytes);

    size_t m_budget;
    size_t m_bytes = 0;
    std::list<Entry> m_entries; // most recently used first
    std::unordered_map<std::string_view, std::list<Entry>::iterator> m_index;
    Entry m_oversized;
};

} // namespace Pictor
