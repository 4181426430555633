#pragma once

#include <span>

#include "examples/gallery/Cards.h"

namespace gallery {

// Circumplex and style graphs as in published test reports.
std::span<const Card> circleGraphs();

// The texts of the style graph, which loads them from the program's string table: puts the one of
// this number into `text`, or returns false.
bool styleText(UINT number, CString& text);

}  // namespace gallery
