#include "examples/bigfive/InterpersonalCircle.h"

#include <algorithm>
#include <cmath>

#include "graphs/profile/Polar.h"

namespace bigfive {

namespace {

constexpr int cFullTurn = 360;

int rounded(double value) {
    return static_cast<int>(std::lround(value));
}

// Where the two traits point to, in T points.
tessalink::Planar directionOf(const Answers& answers) {
    constexpr int extraversion = 0;
    constexpr int agreeableness = 1;
    constexpr double extraversionAngle = 45;
    constexpr double agreeablenessAngle = 315;
    const auto part = [&](int scale, double angle) {
        return tessalink::toPlanar({angle, 1.0 * scoreScale(answers, scale).tScore - cMeanT});
    };
    const auto e = part(extraversion, extraversionAngle);
    const auto a = part(agreeableness, agreeablenessAngle);
    return {e.x + a.x, e.y + a.y};
}

}  // namespace

const std::array<const char*, cOctants> cOctantNames = {
    "warm", "outgoing", "dominant", "competitive", "cold", "withdrawn", "submissive", "trusting"};

CirclePlace circlePlace(const Answers& answers) {
    const tessalink::Polar direction = tessalink::toPolar(directionOf(answers));
    CirclePlace place;
    for (int i = 0; i < cOctants; ++i) {
        const double offset = direction.angle - i * cOctantWidth;
        const double score = cMeanT + tessalink::toPlanar({offset, direction.length}).x;
        place.tScores[static_cast<std::size_t>(i)] = std::clamp(rounded(score), cMinT, cMaxT);
    }
    place.angle = rounded(direction.angle) % cFullTurn;
    place.reach = rounded(direction.length);
    place.octant = rounded(direction.angle / cOctantWidth) % cOctants;
    return place;
}

}  // namespace bigfive
