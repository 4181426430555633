#pragma once

#include <cstdint>

#include "dataentry/DataEntryLayoutMgr.h"

/// Places items in a grid. The items of a column share its width, those of a row its height; a
/// width or height counts up to 65,535 pixels.
///
/// Filled down, items run down a column and then on to the next: so many rows, or with 0 rows as
/// many as so many columns need. Filled across, they run along a row: so many columns, or with 0
/// columns as many as so many rows need. With neither, nothing is placed.
///
/// The arrows go from cell to cell and on at the edges of the grid.
class TESSALINK_API GridLayoutMgr : public DataEntryLayoutMgr {
public:
    /// See above; `fillDown` nonzero fills down.
    GridLayoutMgr(unsigned rows, unsigned cols, int fillDown)
        : DataEntryLayoutMgr(1, 1), m_rows(rows), m_columns(cols), m_fillDown(fillDown) {}

    int NavigateOnKeyDown(DataEntryCtl* form, UINT key, UINT repeat, UINT flags,
                          int& item) override;
    void RecalcLayout(DataEntryCtl* form, CDC* dc, const CRect& area) override;

private:
    /// The grid along the direction that it is filled in: `length` items in a line, then the next.
    struct Lines {
        int length = 0;
        int count = 0;
    };

    Lines lines_of(int itemCount) const;
    static int back_across(int item, const Lines& lines, int itemCount);
    int on_across(int item, const Lines& lines, int itemCount) const;

    std::uint32_t m_rows;
    std::uint32_t m_columns;
    int m_fillDown;
};
