#include "examples/gallery/NativePictures.h"

namespace gallery {

void writeNativePictures(const Card&, const std::string&) {}

}  // namespace gallery
