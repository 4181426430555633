#pragma once

#include <array>

#include "examples/bigfive/BigFiveScales.h"

// The interpersonal circle: eight styles of dealing with others, dominance at the top and warmth at
// the right. Extraversion lies between these two and agreeableness between warmth and submission
// (McCrae and Costa, 1989); the scores of the styles are projections of both, made for illustration
// as the norms are.
namespace bigfive {

inline constexpr int cOctants = 8;
inline constexpr int cOctantWidth = 360 / cOctants;
// With a shorter reach no direction stands out, in T points.
inline constexpr int cShortReach = 5;

// Their names; the middles lie at 0, 45 ... degrees counterclockwise from the right.
extern const std::array<const char*, cOctants> cOctantNames;

struct CirclePlace {
    std::array<int, cOctants> tScores{};  // cMinT to cMaxT
    int angle = 0;                        // of the direction, in degrees, 0 to 359
    int reach = 0;                        // from the middle, in T points
    int octant = 0;                       // in which the direction lies
};

CirclePlace circlePlace(const Answers& answers);

}  // namespace bigfive
