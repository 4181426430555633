#include "graphs/common/ColorMgr.h"

#include <algorithm>
#include <array>

#include "platform/base/NumberText.h"

IMPLEMENT_DYNAMIC(ColorMgr, CObject)

namespace {

constexpr std::array<COLORREF, ColorMgr::cDefaultColors> cDefaultPalette = {
    0x000000, 0x008000, 0x0000C0, 0x800000, 0x808000, 0x008080, 0x800080, 0x808080, 0xFF0000};

// Black, blue, rose, green, brown, turquoise, purple, yellow: neighbors differ most.
constexpr std::array<COLORREF, 8> cColorSafePalette = {0x000000, 0xA92802, 0x5E53BE, 0x03A478,
                                                       0x045272, 0xB6CB45, 0x45023C, 0x32DFF0};

// How many colors a manager has.
std::size_t countOf(int count, const COLORREF* palette) {
    if (count <= 0) return ColorMgr::cDefaultColors;
    const auto wanted = static_cast<std::size_t>(count);
    return palette != nullptr ? wanted : std::min(wanted, cDefaultPalette.size());
}

constexpr double cFull = 255;

int component(double part) {
    return tessalink::toInt(part * cFull) & 0xFF;
}

double hue(double p, double q, double t) {
    if (t < 0) t += 1;
    if (t > 1) t -= 1;
    if (6 * t < 1) return p + (q - p) * 6 * t;
    if (2 * t < 1) return q;
    if (3 * t < 2) return p + (q - p) * (2.0 / 3 - t) * 6;
    return p;
}

}  // namespace

ColorMgr::ColorMgr(int count, const COLORREF* palette)
    : m_palette(palette != nullptr ? palette : cDefaultPalette.data()),
      m_useCounts(countOf(count, palette)) {}

COLORREF ColorMgr::GetColor(int index) const {
    return has(index) ? m_palette[index] : cBlack;
}

BYTE ColorMgr::ReserveColor() {
    const auto least = std::min_element(m_useCounts.begin(), m_useCounts.end());
    ++*least;
    return static_cast<BYTE>(least - m_useCounts.begin());
}

void ColorMgr::ReleaseColor(int index) {
    if (has(index)) --m_useCounts[static_cast<std::size_t>(index)];
}

void ColorMgr::Reset() {
    std::fill(m_useCounts.begin(), m_useCounts.end(), 0);
}

std::span<const COLORREF> ColorMgr::ColorSafePalette() {
    return cColorSafePalette;
}

COLORREF HSLToRGB(double h, double s, double l) {
    if (s == 0) {
        const int gray = component(l);
        return RGB(gray, gray, gray);
    }
    const double q = l < 0.5 ? l * (1 + s) : l + s - l * s;
    const double p = 2 * l - q;
    return RGB(component(hue(p, q, h + 1.0 / 3)), component(hue(p, q, h)),
               component(hue(p, q, h - 1.0 / 3)));
}

void RGBToHSL(COLORREF rgb, double& h, double& s, double& l) {
    const double r = GetRValue(rgb) / cFull;
    const double g = GetGValue(rgb) / cFull;
    const double b = GetBValue(rgb) / cFull;
    const double largest = std::max({r, g, b});
    const double smallest = std::min({r, g, b});
    const double delta = largest - smallest;
    l = (largest + smallest) / 2;
    h = s = 0;
    if (delta == 0) return;
    s = l < 0.5 ? delta / (largest + smallest) : delta / (2 - largest - smallest);
    const auto distance = [&](double part) { return ((largest - part) / 6 + delta / 2) / delta; };
    const double dr = distance(r);
    const double dg = distance(g);
    const double db = distance(b);
    h = largest == r ? db - dg : largest == g ? 1.0 / 3 + dr - db : 2.0 / 3 + dg - dr;
    if (h < 0) h += 1;
    if (h > 1) h -= 1;
}
