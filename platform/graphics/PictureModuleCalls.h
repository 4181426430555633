#pragma once

#include <cstddef>

/// What a program that does not draw pixels itself calls in the module for pictures of its system
/// (tessalink_qt_module or tessalink_win32_module) after loading it. Plain C: the two may hold
/// different copies of the language's run-time library, so no exception and no object crosses.

extern "C" {

/// What a metafile is turned into.
struct TessalinkPictureJob {
    const unsigned char* metafile;  ///< the bytes of an enhanced metafile
    std::size_t size;               ///< how many there are
    const char* format;             ///< "png" or "pdf"
    int width;                      ///< in units
    int height;                     ///< in units
    int dpi;                        ///< units per inch
};

/// The file, or why there is none; tessalink_free_picture gives it back.
struct TessalinkPictureFile {
    unsigned char* bytes;  ///< the file, owned by the module; null after a failure
    std::size_t size;      ///< how many bytes there are
    char message[200];     ///< empty when all went well
};

/// Draws the picture so that its frame fills the size. Nonzero on success. Always call
/// from the same thread: a toolkit's application object lives as long as the call.
using TessalinkRenderPicture = int (*)(const TessalinkPictureJob* job, TessalinkPictureFile* file);
using TessalinkFreePicture = void (*)(TessalinkPictureFile* file);
}

namespace tessalink {

/// The name of the function of type TessalinkRenderPicture in the module.
inline constexpr const char* cRenderPictureName = "tessalink_render_picture_1";
/// The name of the function of type TessalinkFreePicture in the module.
inline constexpr const char* cFreePictureName = "tessalink_free_picture_1";

}  // namespace tessalink
