#pragma once
// RowStore: the log panel's rows, in blocks of a fixed number of rows. The panel grows its store by a few
// hundred rows at a time; a plain vector grown by a fixed step would copy every row at each step (quadratic
// over a long log), while blocks never move what they hold. Indexing is one shift and one mask.

#include <cstddef>
#include <memory>
#include <vector>

template <typename Row> class RowStore {
public:
    static constexpr size_t blockShift = 8;
    static constexpr size_t blockRows = size_t(1) << blockShift;

    size_t size() const { return m_size; }
    size_t capacity() const { return m_blocks.size() * blockRows; }
    void reserve(size_t rows)
    {
        while (capacity() < rows)
            m_blocks.push_back(std::make_unique<Row[]>(blockRows));
    }
    // New rows are copies of `fill`; rows cut off are reset to `fill` too, so a later growth starts clean.
    void resize(size_t rows, const Row& fill)
    {
        reserve(rows);
        for (size_t i = std::min(rows, m_size); i < std::max(rows, m_size); ++i)
            (*this)[i] = fill;
        m_size = rows;
    }
    void push_back(const Row& row)
    {
        reserve(m_size + 1);
        (*this)[m_size++] = row;
    }
    Row& operator[](size_t i) { return m_blocks[i >> blockShift][i & (blockRows - 1)]; }
    const Row& operator[](size_t i) const { return m_blocks[i >> blockShift][i & (blockRows - 1)]; }

private:
    std::vector<std::unique_ptr<Row[]>> m_blocks;
    size_t m_size = 0;
};
