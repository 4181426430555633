#pragma once

#include <span>
#include <vector>

#include "platform/base/CObject.h"
#include "platform/base/Export.h"
#include "platform/graphics/Colors.h"

/// Hands out the colors of a palette to the series of a graph, the one used least first.
class TESSALINK_API ColorMgr : public CObject {
    DECLARE_DYNAMIC(ColorMgr)

public:
    /// The number of colors in the default palette.
    static constexpr int cDefaultColors = 9;

    /// A palette of the caller's, which must outlive the manager; null stands for the default one
    /// (black, green, red, navy, teal, olive, purple, gray, blue), of which no more colors are
    /// used than it has, and a count of 0 for nine.
    explicit ColorMgr(int count = 0, const COLORREF* palette = nullptr);

    /// How many colors the palette has.
    int GetColorCount() const { return static_cast<int>(m_useCounts.size()); }
    /// The color at an index; black for one that there is not.
    COLORREF GetColor(int index) const;
    /// The index of the color that is used least, the lowest of several; it counts as used once
    /// more.
    BYTE ReserveColor();
    /// The color counts as used once less.
    void ReleaseColor(int index);
    /// No color is used.
    void Reset();

    /// Eight colors that are told apart with protanopia, deuteranopia and tritanopia and in gray
    /// print: any two differ by 25 in CIE L*a*b* in each of these views, and any two, and each and
    /// white, by 12 in lightness. Use: ColorMgr(ColorMgr::ColorSafePalette()).
    static std::span<const COLORREF> ColorSafePalette();
    /// Another palette of the caller's, which must outlive the manager; an empty one stands for the
    /// default palette.
    explicit ColorMgr(std::span<const COLORREF> palette)
        : ColorMgr(static_cast<int>(palette.size()), palette.empty() ? nullptr : palette.data()) {}

private:
    bool has(int index) const { return index >= 0 && index < GetColorCount(); }

    const COLORREF* m_palette;
    std::vector<int> m_useCounts;
};

/// The color of a hue (a fraction of the full turn, red at 0), saturation and lightness, each from
/// 0 to 1. Its components are cut, not rounded.
TESSALINK_API COLORREF HSLToRGB(double h, double s, double l);

/// The reverse; hue and saturation of a gray are 0.
TESSALINK_API void RGBToHSL(COLORREF rgb, double& h, double& s, double& l);
