#include "dataentry/GridLayoutMgr.h"

#include <algorithm>
#include <vector>

#include "dataentry/DataEntryCtl.h"
#include "platform/windows/Messages.h"

namespace {

int ceiledQuotient(int a, std::uint32_t b) {
    return static_cast<int>((static_cast<std::uint64_t>(a) + b - 1) / b);
}

/// Grows the table to the index and raises the element to the size.
void raise(std::vector<std::uint16_t>& sizes, int index, int size) {
    const auto place = static_cast<std::size_t>(index);
    if (place >= sizes.size()) sizes.resize(place + 1);
    sizes[place] = std::max(sizes[place], static_cast<std::uint16_t>(size));
}

/// Where each line or cell starts.
std::vector<int> starts(const std::vector<std::uint16_t>& sizes) {
    std::vector<int> result;
    result.reserve(sizes.size());
    int start = 0;
    for (const std::uint16_t size : sizes) {
        result.push_back(start);
        start += size;
    }
    return result;
}

}  // namespace

GridLayoutMgr::Lines GridLayoutMgr::lines_of(int itemCount) const {
    // The number of items in a line goes before the number of lines.
    const std::uint32_t length = m_fillDown != 0 ? m_rows : m_columns;
    const std::uint32_t count = m_fillDown != 0 ? m_columns : m_rows;
    if (length != 0) {
        const auto bounded = static_cast<int>(std::min<std::uint32_t>(length, INT32_MAX));
        return {bounded, ceiledQuotient(itemCount, length)};
    }
    if (count == 0) return {};
    const auto bounded = static_cast<int>(std::min<std::uint32_t>(count, INT32_MAX));
    return {ceiledQuotient(itemCount, count), bounded};
}

void GridLayoutMgr::RecalcLayout(DataEntryCtl* form, CDC* dc, const CRect&) {
    const int count = form->GetItemCount();
    const Lines lines = lines_of(count);
    if (count == 0 || lines.length == 0) return;
    const bool down = m_fillDown != 0;
    std::vector<std::uint16_t> cells;   // by position in the line
    std::vector<std::uint16_t> depths;  // by line
    for (int i = 0; i < count; ++i) {
        const CSize size = measured(form, dc, i, CSize(0, 0));
        raise(cells, i % lines.length, down ? size.cy : size.cx);
        raise(depths, i / lines.length, down ? size.cx : size.cy);
    }
    const std::vector<int> cellStarts = starts(cells);
    const std::vector<int> lineStarts = starts(depths);
    for (int i = 0; i < count; ++i) {
        const auto cell = static_cast<std::size_t>(i % lines.length);
        const auto line = static_cast<std::size_t>(i / lines.length);
        const CPoint corner(lineStarts[line], cellStarts[cell]);
        const CSize size(depths[line], cells[cell]);
        form->SetItemLoc(i, down ? CRect(corner, size)
                                 : CRect(CPoint(corner.y, corner.x), CSize(size.cy, size.cx)));
    }
}

int GridLayoutMgr::back_across(int item, const Lines& lines, int itemCount) {
    int line = item / lines.length - 1;
    int cell = item % lines.length;
    if (line < 0) {
        line = lines.count - 1;
        --cell;
    }
    if (line < 0 || cell < 0) return item;
    // The last lines may be short or, when there are more lines than needed, empty.
    std::int64_t target = std::int64_t{line} * lines.length + cell;
    if (target >= itemCount) {
        target -= ((target - itemCount) / lines.length + 1) * lines.length;
    }
    return target < 0 ? item : static_cast<int>(target);
}

int GridLayoutMgr::on_across(int item, const Lines& lines, int itemCount) const {
    const int line = item / lines.length;
    const int cell = item % lines.length;
    const std::int64_t next = (std::int64_t{line} + 1) * lines.length + cell;
    if (next < itemCount) return static_cast<int>(next);
    const bool stays = cell + 1 >= lines.length || (m_fillDown != 0 && cell + 1 >= itemCount);
    return stays ? item : cell + 1;
}

int GridLayoutMgr::NavigateOnKeyDown(DataEntryCtl* form, UINT key, UINT repeat, UINT flags,
                                     int& item) {
    const bool down = m_fillDown != 0;
    const int count = form->GetItemCount();
    const Lines lines = lines_of(count);
    const bool isArrow = key >= VK_LEFT && key <= VK_DOWN;
    if (!isArrow || count == 0 || lines.length == 0) {
        return DataEntryLayoutMgr::NavigateOnKeyDown(form, key, repeat, flags, item);
    }
    if (key == (down ? VK_UP : VK_LEFT)) {
        --item;
    } else if (key == (down ? VK_DOWN : VK_RIGHT)) {
        ++item;
    } else if (key == (down ? VK_LEFT : VK_UP)) {
        item = back_across(item, lines, count);
    } else {
        item = on_across(item, lines, count);
    }
    return 1;
}
