#pragma once

#include <span>
#include <vector>

#include "platform/base/Types.h"

namespace tessalink::cli {

/// What a picture is turned into by the module.
struct PictureTarget {
    const char* format;  ///< "png", "pdf" or another that needs no module
    int width;           ///< in units
    int height;
    int dpi;  ///< units per inch
};

/// Renders a metafile by the module of the toolkit, which is loaded from the folder of the program
/// or from ../lib beside it. Throws std::runtime_error, also when the module is not installed; the
/// message then says where it comes from.
std::vector<BYTE> renderByModule(std::span<const BYTE> metafile, const PictureTarget& target);

}  // namespace tessalink::cli
