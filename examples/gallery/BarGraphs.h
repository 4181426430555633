#pragma once

#include <span>

#include "examples/gallery/Cards.h"

// Bar graphs as practitioners draw them.
namespace gallery {

std::span<const Card> barGraphs();

}  // namespace gallery
