#pragma once

#include <QRawFont>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/graphics/FaceMetrics.h"

class QFont;

namespace tessalink::detail {

// What a font's characters look like in the toolkit: for each code a glyph in one of some fonts.
// More than one is needed where the first lacks characters.
struct QtGlyphs {
    struct Glyph {
        std::uint32_t index = 0;
        std::size_t font = 0;
    };

    std::vector<QRawFont> fonts;
    std::array<Glyph, 256> glyphs;
};

// Whether the code has no picture and no width.
constexpr bool isControlCode(std::size_t code) {
    return code < 0x20 || code == 0x7F;
}

// The glyphs of a font for an em in units. They belong to the calling thread, until its next call.
const QtGlyphs& qtGlyphs(const LOGFONTA& font, double em);

// The measures of a face; the built-in ones unless another face was asked for and is installed.
// Any thread may call it; the result stays.
const FaceMetrics& qtMetrics(const LOGFONTA& font);

// The font for a widget whose text shall look as it is drawn elsewhere.
QFont widgetFont(const LOGFONTA& font);

}  // namespace tessalink::detail
