#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/graphics/Geometry.h"

/// Cards of many pictures, and their comparison with stored ones.
namespace tessalink::test {

/// Where the pictures of a card stand, each with what it shows above it.
struct CardLayout {
    static constexpr int cMargin = 6;
    static constexpr int cCaptionHeight = 16;

    struct Cell {
        CSize size;
        bool hasCaption;
        CPoint caption;
        CPoint picture;
    };

    CardLayout(int columns, std::vector<Cell> all) : cells(std::move(all)) {
        const auto count = static_cast<std::size_t>(columns);
        std::vector<int> widths(count);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            widths[i % count] = std::max<int>(widths[i % count], cells[i].size.cx);
        }
        whole = CSize(cMargin, cMargin);
        for (const int width : widths) whole.cx += width + cMargin;
        for (std::size_t row = 0; row < cells.size(); row += count) {
            int height = 0;
            int left = cMargin;
            for (std::size_t i = row; i < std::min(row + count, cells.size()); ++i) {
                Cell& cell = cells[i];
                const int caption = cell.hasCaption ? cCaptionHeight : 0;
                cell.caption = CPoint(left, whole.cy);
                cell.picture = CPoint(left, whole.cy + caption);
                height = std::max<int>(height, cell.size.cy + caption + cMargin);
                left += widths[i - row] + cMargin;
            }
            whole.cy += height;
        }
    }

    std::vector<Cell> cells;
    CSize whole;
};

/// A picture as numbers: red, green and blue of its pixels in bytes, row by row.
struct PixelPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// Pictures that differ by less are alike: text that another version of the system smooths, or
/// places between two pixels, stays below; a gray line that has moved by a pixel does not, nor has
/// text of another color.
inline constexpr double cPictureTolerance = 8;

/// The differences of one channel, summed up over the pixels around each.
class PictureDifferences {
public:
    PictureDifferences(const PixelPicture& a, const PixelPicture& b, int shift)
        : m_a(a), m_b(b), m_shift(shift) {}

    double Worst() const {
        double worst = 0;
        for (int y = 0; y < m_a.height; y += cBlock) {
            for (int x = 0; x < m_a.width; x += cBlock) worst = std::max(worst, of_block(x, y));
        }
        return worst;
    }

private:
    static constexpr int cBlock = 8;

    double of_block(int left, int top) const {
        constexpr double cPixels = 9.0 * cBlock * cBlock;
        int sum = 0;
        for (int y = top; y < std::min(top + cBlock, m_a.height); ++y) {
            for (int x = left; x < std::min(left + cBlock, m_a.width); ++x) {
                sum += std::abs(around(x, y));
            }
        }
        return sum / cPixels;
    }
    int around(int x, int y) const {
        int sum = 0;
        for (int row = std::max(y - 1, 0); row <= std::min(y + 1, m_a.height - 1); ++row) {
            for (int i = std::max(x - 1, 0); i <= std::min(x + 1, m_a.width - 1); ++i) {
                sum += channel(m_a, i, row) - channel(m_b, i, row);
            }
        }
        return sum;
    }
    int channel(const PixelPicture& picture, int x, int y) const {
        const std::uint32_t pixel =
            picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                           static_cast<std::size_t>(x)];
        return static_cast<int>(pixel >> m_shift & 0xFF);
    }

    const PixelPicture& m_a;
    const PixelPicture& m_b;
    int m_shift;
};

/// How much two pictures of one size differ where they differ most, from 0 to 255. Each channel is
/// taken by itself; the differences are averaged over 3 by 3 pixels, and the amounts of these over
/// blocks of 8 by 8. So edges that are smoothed in another way count little, a line that has moved
/// by a pixel counts fully.
inline double worstDifference(const PixelPicture& a, const PixelPicture& b) {
    double worst = 0;
    for (const int shift : {0, 8, 16}) {
        worst = std::max(worst, PictureDifferences(a, b, shift).Worst());
    }
    return worst;
}

}  // namespace tessalink::test
