#pragma once

#include <span>
#include <string>
#include <vector>

#include "examples/gallery/Cards.h"

// Bar graphs as practitioners draw them.
namespace gallery {

std::span<const Card> barGraphs();

// What is wrong with the texts of a picture: those that leave the sheet, and those that overlap one
// another or a mark, a line or the edge of a box.
std::vector<std::string> textFaults(const Card& card);

}  // namespace gallery
