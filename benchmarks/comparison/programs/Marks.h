// The picture that the drawing row draws: 480 marks with a label each.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>

namespace marks {

inline constexpr int cCount = 480;
inline constexpr int cColumns = 24;
inline constexpr int cPitch = 30;
inline constexpr int cSize = 9;
inline constexpr int cLabelOffset = 10;
inline constexpr int cFontHeight = 16;
inline constexpr unsigned cPenColor = 0xC00000;
inline constexpr unsigned cBrushColor = 0x0000C0;

struct Mark {
    int x;
    int y;
    char label[8];
    int length;
};

inline const std::array<Mark, cCount>& all() {
    static const std::array<Mark, cCount> made = [] {
        std::array<Mark, cCount> marks{};
        for (int i = 0; i < cCount; ++i) {
            Mark& mark = marks[static_cast<std::size_t>(i)];
            mark.x = i % cColumns * cPitch;
            mark.y = i / cColumns * cPitch;
            mark.length = std::snprintf(mark.label, sizeof mark.label, "%d", i);
        }
        return marks;
    }();
    return made;
}

}  // namespace marks

std::size_t libemfMarks();
