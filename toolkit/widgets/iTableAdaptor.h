#pragma once
// iTableAdaptor: where a TableWidget gets what it shows. The table holds no rows of its own; it asks the
// adaptor, and only for the rows it is about to draw, so a table over a million rows costs what its visible
// rows cost.
//
// Row heights. getRowHeight may differ from row to row (a wrapped cell makes a taller row). The table keeps
// running totals of the heights and asks for each row's height once, until the owner says that rows changed
// (TableWidget::rowsChanged). An adaptor whose rows are all one height says so with hasUniformRowHeights, and
// then no row but the first is ever measured.
//
// Rows and columns count from 0. Calls for a row at or past getSize() do not happen.

#include "toolkit/gfx/FontDesc.h"
#include "toolkit/support/Colour.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/widgets/TableColumnDescription.h"

#include <cstdint>
#include <vector>

class iTableAdaptor {
public:
    // Text styles, as bits; 0 and Plain are the same.
    enum TextStyle : int {
        Plain = 1,
        Bold = 2,
        Underlined = 4, // links
        Italic = 8,
    };

    virtual ~iTableAdaptor() = default;

    // The number of rows.
    virtual unsigned getSize() = 0;
    // In pixels; values below 1 are taken as 1. The default is the table's standard row height.
    virtual int getRowHeight(unsigned row);
    // True when every row is as high as row 0: the table then finds rows by arithmetic alone.
    virtual bool hasUniformRowHeights() { return false; }
    virtual LightweightString<wchar_t> getFieldText(unsigned row, unsigned col) = 0;
    // Fills in the cell's own colours and answers true, or answers false for the palette's (and the
    // column's background). The background is only used when `background` is left with a non-zero alpha.
    virtual bool getFieldColours(unsigned row, unsigned col, Colour& text, Colour& background);
    virtual Pictor::FontDesc getFont(unsigned row, unsigned col);
    // TextStyle bits.
    virtual int getTextStyle(unsigned row, unsigned col);
    // Whether a text wider than its cell is drawn on several lines (the row must be tall enough to show them).
    virtual bool canWordWrap(unsigned row, unsigned col);
    virtual std::vector<TableColumnDescription> getColumnDefinitions() = 0;

    // An edit of an editable cell, committed. Answers whether the value was taken; the table redraws the
    // row either way. The default refuses every edit.
    virtual bool setFieldText(unsigned row, unsigned col, const LightweightString<wchar_t>& text);
};
