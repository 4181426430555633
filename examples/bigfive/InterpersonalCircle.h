#pragma once

#include <array>

#include "examples/bigfive/BigFiveScales.h"

// The interpersonal circle: eight styles of dealing with others around a circle, from warm (at the
// right) counterclockwise over dominant (at the top) to trusting. Extraversion lies between
// dominance and warmth, at 45 degrees, and Agreeableness between warmth and yielding, at 315; the
// scores of the styles are projections of these two.
namespace bigfive {

inline constexpr int cOctants = 8;
inline constexpr int cOctantWidth = 360 / cOctants;
// With a shorter reach no direction stands out, in T points.
inline constexpr int cShortReach = 5;

// The names of the octants, whose middles lie at 0, 45 ... degrees.
extern const std::array<const char*, cOctants> cOctantNames;

struct CirclePlace {
    std::array<int, cOctants> tScores{};  // cMinT to cMaxT
    int angle = 0;                        // of the direction, in degrees, 0 to 359
    int reach = 0;                        // from the middle, in T points
    int octant = 0;                       // in which the direction lies
};

CirclePlace circlePlace(const Answers& answers);
// Between two angles, 0 to 180 degrees.
int degreesApart(int angle, int other);

}  // namespace bigfive
