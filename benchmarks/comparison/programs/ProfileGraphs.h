// The graphs of the row of profiles, by the product.
#pragma once

#include <algorithm>
#include <memory>

#include "benchmarks/comparison/programs/ProfileData.h"
#include "graphs/profile/CircumplexGraph.h"
#include "graphs/profile/ProfileGraph.h"

namespace profiles {

inline const CRect cPlace(0, 0, cWidth, cHeight);

/// The graph with so many profiles; beyond the first eight their names and colors repeat.
inline std::unique_ptr<ProfileGraph> graph(int count) {
    auto made =
        std::make_unique<ProfileGraph>(cLowest, cHighest, cTick, 0, 1, 0, cWidth / 2, cHeight / 2);
    auto* const labels = new CStringArray;
    labels->Add("");
    for (int scale = 0; scale < cScales; ++scale) labels->Add(scaleName(scale).text);
    made->SetXLegend(labels, nullptr, nullptr, nullptr);
    for (const Band& band : cBands) made->AddBand(band.from, band.to, band.color);
    for (int i = 0; i < count; ++i) {
        const int kind = i % cProfiles;
        auto* const scores = new double[cScales];
        for (int scale = 0; scale < cScales; ++scale) scores[scale] = scoreOf(kind, scale);
        made->AddProfile(profileName(kind).text, scores, cColors[static_cast<std::size_t>(kind)],
                         static_cast<unsigned>(i));
    }
    return made;
}

/// A circle in octants with 16 points that are named beside them and in the legend.
inline std::unique_ptr<CircumplexGraph> circle() {
    constexpr int octants = 8;
    constexpr int points = 16;
    constexpr double turn = 360;
    auto made =
        std::make_unique<CircumplexGraph>(-10, 10, -10, 10, 5, 1, 14, 12, 10, 9, 9, 9, 8, 9);
    made->SetTitle("Interpersonal circle", "", "").SetLegendPlacement(CircumplexGraph::LegendRight);
    for (const double radius : {10, 7, 4}) made->AddCircle(radius, cBands[1].color);
    for (int i = 0; i < octants; ++i) {
        made->AddSector((i - 0.5) * turn / octants, (i + 0.5) * turn / octants, scaleName(i).text);
    }
    for (int i = 0; i < points; ++i) {
        made->AddPoint(tessalink::Polar{i * turn / points, 3.0 + i % 6}, i, scaleName(i).text,
                       cColors[static_cast<std::size_t>(i % cProfiles)], CircumplexGraph::AnySymbol,
                       CircumplexGraph::NameInBoth);
    }
    return made;
}

}  // namespace profiles
