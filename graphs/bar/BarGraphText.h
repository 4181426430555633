#pragma once

#include <span>
#include <vector>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

class BarGraph;

/// What a bar graph shows, in words: for those who can't see the picture.
namespace tessalink {

/// How many points, and how many ranges, a sentence names at most.
inline constexpr int cMaxMarksInSentence = 20;

/// What one scale shows.
struct ScaleText {
    /// A mark at one score.
    struct Point {
        CString name;      ///< what the mark stands for; may be empty
        double value = 0;  ///< the score
    };
    /// A mark from one score to another.
    struct Range {
        CString name;     ///< what the mark stands for; may be empty
        double from = 0;  ///< the score at its left end
        double to = 0;    ///< the score at its right end
    };

    CString name;  ///< the scale's description, without line ends and switches of fonts
    int min = 0;   ///< the score at the left end
    int max = 0;   ///< the score at the right end
    std::vector<Point> points;  ///< in their order
    std::vector<Range> ranges;  ///< in their order
};

/// The scales of the graph in their order, each with its points and ranges in theirs. A scale has
/// the name of its left description, without one that of the right; marks have no names, which a
/// caller who knows them can fill in.
TESSALINK_API std::vector<ScaleText> scaleTexts(const BarGraph& graph);

/// A sentence for each scale: "Worry: 63, range 57 to 69, on a scale from 20 to 80." Numbers have
/// up to two decimals.
TESSALINK_API CString sentencesOf(std::span<const ScaleText> scales);

}  // namespace tessalink
