#pragma once

#include <QString>

namespace tessalink::desk {

/// Works through the desk on a sample file and saves a picture of each step as PNG in a folder,
/// which is made. Nothing of it needs a screen. Throws what makeSample throws, and
/// std::runtime_error when a picture can't be saved.
void makePictures(const QString& folder, const QString& instruments);

}  // namespace tessalink::desk
