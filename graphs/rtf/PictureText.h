#pragma once

#include <string_view>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

class CFile;
class MetaFile;

namespace tessalink {

/// The text alternative of a picture as a property of it, to stand in the group of the RTF picture
/// before its kind. The text is in the code page; line ends become blanks. Empty for an empty text.
TESSALINK_API CString pictureTextAsRTF(std::string_view text);

/// Writes the picture as MetaFile::SaveAsRTF does, with a text alternative that word processors
/// show and screen readers read; without a text the same bytes. File faults pass through.
TESSALINK_API void savePictureAsRTF(const MetaFile& picture, CFile& file, double width,
                                    double height, std::string_view text);

}  // namespace tessalink
