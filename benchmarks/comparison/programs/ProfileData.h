// The profile graph that the row of profiles draws: 60 labelled scales, 8 profiles with a symbol at
// each score, three bands, a score axis with seven ticks and numbers, and a legend.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>

namespace profiles {

inline constexpr int cScales = 60;
inline constexpr int cProfiles = 8;
inline constexpr int cLowest = 20;
inline constexpr int cHighest = 80;
inline constexpr int cTick = 10;
inline constexpr int cWidth = 1000;
inline constexpr int cHeight = 700;
inline constexpr int cFontHeight = 14;

struct Band {
    int from;
    int to;
    unsigned color;  // 0xBBGGRR, as all colors here
};
inline constexpr std::array<Band, 3> cBands = {
    {{20, 40, 0xF8F0E8}, {40, 60, 0xFFFFF0}, {60, 80, 0xE8F0F8}}};

inline constexpr std::array<unsigned, cProfiles> cColors = {0x0000C0, 0xC00000, 0x008000, 0x800080,
                                                            0x0080C0, 0xC08000, 0x404040, 0xC000C0};

/// The score of a profile on a scale, both from 0: a whole number in the range.
inline int scoreOf(int profile, int scale) {
    constexpr int step = 7;
    constexpr int apart = 13;
    return cLowest + 2 + (scale * step + profile * apart) % (cHighest - cLowest - 3);
}

struct Label {
    char text[12];
    int length;
};

inline Label label(const char* form, int number) {
    Label made{};
    made.length = std::snprintf(made.text, sizeof made.text, form, number);
    return made;
}

/// The names of scale and profile, from 0.
inline Label scaleName(int scale) {
    return label("S%d", scale + 1);
}
inline Label profileName(int profile) {
    return label("Profile %d", profile + 1);
}

}  // namespace profiles

std::size_t libemfProfiles();
