#pragma once

#include <span>
#include <string>
#include <vector>

#include "apps/tessalink/PictureModule.h"

namespace tessalink::cli {

inline constexpr int cScreenDpi = 96;

/// The format that the user names or the output's name ends in. Throws std::runtime_error for
/// another.
std::string pictureFormat(const std::string& outputPath, const std::string& named,
                          std::span<const std::string> known);

/// Whether the module makes the format: PNG, and PDF with its fonts in it. Throws
/// std::runtime_error where another format is to embed fonts.
bool needsModule(const std::string& format, bool embedsFonts);

/// A picture of so many inches at a resolution. Throws std::runtime_error when it is too large for
/// the format; `name` is what is drawn.
PictureTarget pictureTarget(const std::string& name, const std::string& format, double width,
                            double height, int dpi);

/// Writes the output as a whole.
void storePicture(const std::string& path, std::span<const BYTE> bytes);

}  // namespace tessalink::cli
