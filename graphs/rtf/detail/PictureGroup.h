#pragma once

#include <span>
#include <string_view>

#include "platform/base/CString.h"
#include "platform/base/NumberText.h"
#include "platform/base/Types.h"

class CFile;

namespace tessalink::detail {

inline constexpr double cHundredthsPerInch = 2540;  // of a millimeter

inline int rounded(double value) {
    return toInt(value + 0.5);
}

/// A picture as the group of RTF that shows it. All kinds of a picture give the same sizes, so that
/// pages are laid out alike.
struct PictureGroup {
    const char* kind;  ///< "emfblip" or "pngblip"
    std::span<const BYTE> bytes;
    double width;  ///< in inches
    double height;
    std::string_view text = {};  ///< its text alternative; empty: none
};

/// What a picture that newer readers show stands in, and one for those that pass over it.
inline constexpr std::string_view cShownPicture = "{\\*\\shppict";
inline constexpr std::string_view cOtherPicture = "{\\nonshppict";
inline constexpr std::string_view cPictureEnd = "}";

/// The group up to its digits.
CString pictureStart(const PictureGroup& picture);
/// Writes the group, in pieces. File faults pass through.
void writePicture(CFile& file, const PictureGroup& picture);

}  // namespace tessalink::detail
