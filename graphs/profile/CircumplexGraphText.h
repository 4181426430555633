#pragma once

#include <vector>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

class CircumplexGraph;

/// What a circumplex graph shows, in words: for those who can't see the picture.
namespace tessalink {

/// How many points sentences name at most.
inline constexpr int cMaxPointsInText = 50;

/// One point of a graph. Names and titles are without line ends and switches of fonts.
struct CircumplexPointText {
    CString name;       ///< may be empty
    double x = 0;       ///< in units of the data
    double y = 0;       ///< in units of the data
    double angle = 0;   ///< from the middle of the data, in degrees counterclockwise from the right
    double length = 0;  ///< from the middle of the data
};

/// What a circumplex graph shows.
struct CircumplexText {
    CString title;                            ///< its lines with a blank between them
    int xMin = 0;                             ///< the lowest x of the data
    int xMax = 0;                             ///< the highest x of the data
    int yMin = 0;                             ///< the lowest y of the data
    int yMax = 0;                             ///< the highest y of the data
    std::vector<CircumplexPointText> points;  ///< in their order
};

/// What the graph shows now.
TESSALINK_API CircumplexText circumplexText(const CircumplexGraph& graph);

/// A sentence for the graph and one for each point: "Interpersonal circle: x from -10 to 10, y from
/// -10 to 10. Self: x 3, y 4, angle 53.13, length 5." Numbers have up to two decimals; a value that
/// is none is "no score".
TESSALINK_API CString sentencesOf(const CircumplexText& text);

}  // namespace tessalink
