#pragma once

#include <span>

#include "examples/gallery/Cards.h"

namespace gallery {

// Profile graphs as in published test reports.
std::span<const Card> profileGraphs();

}  // namespace gallery
