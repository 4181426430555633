#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "platform/graphics/FaceMetrics.h"

namespace tessalink::detail {

/// A font that every viewer of PDF has, with its measures in thousandths of the em, from the Adobe
/// font metrics files of the base fonts.
struct BaseFont {
    std::string_view name;
    std::array<int, 4> box;  ///< around all characters: left, bottom, right, top
    double italicAngle;      ///< in degrees, counterclockwise
    int ascent;
    int descent;
    int capHeight;
    int stemWidth;

    bool IsSymbol() const { return name == "Symbol"; }
    bool IsFixed() const { return name.starts_with("Courier"); }
    bool HasSerifs() const { return !name.starts_with("Helvetica"); }
};

inline constexpr std::size_t cBaseFonts = 13;
/// Regular, bold, italic and bold italic of Helvetica, Times and Courier, then Symbol.
extern const std::array<BaseFont, cBaseFonts> cBaseFontTable;

/// Which of them shows texts of the font.
std::size_t baseFontFor(const LOGFONTA& font);

/// The widths of the characters of a base font.
class BaseFontWidths {
public:
    explicit BaseFontWidths(std::size_t font);

    /// In thousandths of the em.
    int Of(unsigned char code) const {
        if (m_face == nullptr) return cFixedWidth;
        return (m_face->advances[code] * cThousand + FaceMetrics::cEm / 2) / FaceMetrics::cEm;
    }

private:
    static constexpr int cFixedWidth = 600;
    static constexpr int cThousand = 1000;

    const FaceMetrics* m_face;  ///< null for a face of one width
};

}  // namespace tessalink::detail
