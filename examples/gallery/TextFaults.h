#pragma once

#include <functional>
#include <string>
#include <vector>

#include "examples/gallery/Cards.h"

namespace gallery {

// Whether texts with a background may lie over lines and rings that were drawn before them, as
// numbers on axes do.
enum class UnderText { Nothing, LinesAndRings };

// What is wrong with the texts of a picture: those that leave the sheet, and those that overlap one
// another or a mark, a line or the edge of a shape.
std::vector<std::string> textFaults(const Card& card, UnderText allowed = UnderText::Nothing);

// Only which texts leave the sheet and which overlap one another, of any picture.
std::vector<std::string> textOverlaps(const std::function<void(CDC&)>& draw, int width, int height);

}  // namespace gallery
