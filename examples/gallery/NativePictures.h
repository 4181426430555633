#pragma once

#include <string>

#include "examples/gallery/Cards.h"

namespace gallery {

// Writes what the system's own device draws of a card, where there is one: START.png directly, and
// START-played.png from its metafile, played by the system.
void writeNativePictures(const Card& card, const std::string& start);

}  // namespace gallery
