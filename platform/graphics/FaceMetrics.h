#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <string_view>

#include "platform/base/Export.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/LogicalObjects.h"

namespace tessalink {

/// The measures of one typeface in one style, in units of its em (2048 to the em).
struct FaceMetrics {
    static constexpr int cEm = 2048;  ///< units of the em

    int ascent = 0;           ///< from the base line up
    int descent = 0;          ///< from the base line down
    int externalLeading = 0;  ///< what the face asks for between lines, beyond ascent and descent
    /// How far each character of the code page (of a symbol face: each of its codes) moves on.
    /// Control characters have no width and no picture.
    std::array<std::uint16_t, 256> advances{};
};

/// The built-in measures for the font: those of Arial, Times New Roman or Symbol in its style, on
/// every machine the same, for the program's code page; when that changes, so do the measures that
/// were given before. Any face whose character set is that of symbols, or that is called
/// Symbol, gets those of Symbol; faces with a serif family or one of the known serif names those of
/// Times New Roman; all others those of Arial. Bold starts at weight 600.
TESSALINK_API const FaceMetrics& builtInMetrics(const LOGFONTA& font);

/// Whether the characters of the font are codes of a symbol face instead of the code page's.
TESSALINK_API bool isSymbolFont(const LOGFONTA& font);

/// Where the measures of fonts come from.
class TESSALINK_API TextMetricsSource {
public:
    virtual ~TextMetricsSource() = default;
    /// The measures of a font's face; they live as long as the source. Default: the built-in ones.
    virtual const FaceMetrics& MetricsOf(const LOGFONTA& font) const {
        return builtInMetrics(font);
    }
};

/// A font at its size: what texts in it measure, in units of a device. Positions are the rounded
/// sums of the exact widths of the characters before, so that all devices place text alike.
class TESSALINK_API SizedFont {
public:
    /// `aspect` is the horizontal resolution of the device divided by the vertical one: heights are
    /// in vertical units, widths in horizontal ones.
    SizedFont(const FaceMetrics& face, const LOGFONTA& font, double aspect = 1);

    /// The size of the em: of a positive height, which is ascent plus descent, or a negative one,
    /// which is the em itself. A height of 0 stands for 12 units.
    double Em() const { return m_em; }
    /// From the base line up, in units of the device.
    int Ascent() const { return m_ascent; }
    /// From the base line down, in units of the device.
    int Descent() const { return m_descent; }
    /// Ascent and descent together.
    int Height() const { return wrapAdd(m_ascent, m_descent); }
    /// The part of the height beyond the em.
    int InternalLeading() const { return m_internalLeading; }
    /// What the face asks for between lines, beyond the height.
    int ExternalLeading() const { return m_externalLeading; }
    /// The width of the letter x.
    int AverageWidth() const { return WidthOf("x"); }

    /// The width of the text.
    int WidthOf(std::string_view text) const;
    /// The width of a character in units of the em, and where a character starts after others whose
    /// widths have this sum.
    std::uint16_t Advance(char ch) const { return m_face->advances[static_cast<BYTE>(ch)]; }
    /// Where a character starts after others with this sum of advances, in units of the device.
    int Position(std::uint64_t sum) const {
        constexpr int largest = std::numeric_limits<int>::max();
        const double place =
            static_cast<double>(static_cast<std::int64_t>(sum)) * m_widthOfUnit + 0.5;
        return place < largest ? static_cast<int>(place) : largest;
    }

private:
    const FaceMetrics* m_face;
    double m_em = 0;
    double m_widthOfUnit = 0;  ///< the horizontal device units of one unit of the em
    int m_ascent = 0;
    int m_descent = 0;
    int m_internalLeading = 0;
    int m_externalLeading = 0;
};

}  // namespace tessalink
