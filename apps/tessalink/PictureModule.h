#pragma once

#include <span>
#include <vector>

#include "platform/base/Types.h"
#include "platform/graphics/PictureModuleCalls.h"

namespace tessalink::cli {

/// What a picture is turned into by the module.
struct PictureTarget {
    const char* format;  ///< "png", "pdf" or another that needs no module
    int width;           ///< in units
    int height;
    int dpi;  ///< units per inch
};

/// The module of the toolkit, which is loaded from the folder of the program or from ../lib beside
/// it. All pictures of a process must be rendered in the same thread.
class PictureModule {
public:
    /// Throws std::runtime_error when the module is not installed; the message says where it comes
    /// from.
    PictureModule();

    /// Renders a metafile. Throws std::runtime_error.
    std::vector<BYTE> Render(std::span<const BYTE> metafile, const PictureTarget& target) const;

private:
    TessalinkRenderPicture m_render;
    TessalinkFreePicture m_free;
};

/// Renders a metafile by the module. Throws std::runtime_error.
std::vector<BYTE> renderByModule(std::span<const BYTE> metafile, const PictureTarget& target);

}  // namespace tessalink::cli
