#include "graphs/common/ColorMgr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace {

using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;

TEST(ColorMgr, HasTheDefaultPalette) {
    const ColorMgr colors;
    EXPECT_EQ(colors.GetColorCount(), 9);
    const COLORREF expected[] = {RGB(0, 0, 0),     RGB(0, 128, 0),     RGB(192, 0, 0),
                                 RGB(0, 0, 128),   RGB(0, 128, 128),   RGB(128, 128, 0),
                                 RGB(128, 0, 128), RGB(128, 128, 128), RGB(0, 0, 255)};
    for (int i = 0; i < 9; ++i) EXPECT_EQ(colors.GetColor(i), expected[i]) << i;
    for (const int outside : {-1, 9, 1 << 30}) EXPECT_EQ(colors.GetColor(outside), cBlack);
    EXPECT_EQ(ColorMgr(5).GetColorCount(), 5);
    EXPECT_EQ(ColorMgr(20).GetColorCount(), 9);
    EXPECT_EQ(ColorMgr(-1).GetColorCount(), 9);
    const COLORREF own[] = {1, 2};
    EXPECT_EQ(ColorMgr(2, own).GetColor(1), 2u);
}

TEST(ColorMgr, ReservesTheColorThatIsUsedLeast) {
    ColorMgr colors(3);
    const auto reserve = [&] { return int{colors.ReserveColor()}; };
    for (const int expected : {0, 1, 2, 0, 1}) EXPECT_EQ(reserve(), expected);
    colors.ReleaseColor(1);
    colors.ReleaseColor(1);
    colors.ReleaseColor(7);
    colors.ReleaseColor(-1);
    for (const int expected : {1, 1, 2, 0}) EXPECT_EQ(reserve(), expected);
    colors.Reset();
    for (const int expected : {0, 1, 2}) EXPECT_EQ(reserve(), expected);
}

TEST(HSL, TurnsIntoRGBAndBack) {
    struct Case {
        double h, s, l;
        COLORREF rgb;
    };
    const Case cases[] = {
        {0, 0, 0, RGB(0, 0, 0)},
        {0, 0, 1, RGB(255, 255, 255)},
        {0, 1, 0.5, RGB(255, 0, 0)},
        {1.0 / 3, 1, 0.5, RGB(0, 255, 0)},
        {2.0 / 3, 1, 0.5, RGB(0, 0, 255)},
        {1.0 / 6, 1, 0.5, RGB(254, 255, 0)},
        {0.5, 1, 0.25, RGB(0, 127, 127)},
        {0.3, 0, 0.5, RGB(127, 127, 127)},
        {0.75, 0.5, 0.75, RGB(191, 159, 223)},
    };
    for (const Case& c : cases) EXPECT_EQ(HSLToRGB(c.h, c.s, c.l), c.rgb) << c.h << ' ' << c.l;
    for (COLORREF rgb = 0; rgb < 0x1000000; rgb += 0x010D17) {
        double h = 0;
        double s = 0;
        double l = 0;
        RGBToHSL(rgb, h, s, l);
        EXPECT_TRUE(h >= 0 && h <= 1 && s >= 0 && s <= 1.0000001 && l >= 0 && l <= 1);
        const COLORREF again = HSLToRGB(h, s, l);
        // Cut components may be one too small.
        for (const int shift : {0, 8, 16}) {
            const int before = static_cast<int>(rgb >> shift & 0xFF);
            const int after = static_cast<int>(again >> shift & 0xFF);
            ASSERT_TRUE(after == before || after == before - 1) << std::hex << rgb << ' ' << again;
        }
    }
}

// sRGB to linear light (IEC 61966-2-1).
Vector linear(COLORREF color) {
    const auto one = [](BYTE part) {
        const double value = part / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return {one(GetRValue(color)), one(GetGValue(color)), one(GetBValue(color))};
}

Vector times(const Matrix& matrix, const Vector& v) {
    Vector result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t i = 0; i < 3; ++i) result[row] += matrix[row][i] * v[i];
    }
    return result;
}

// CIE L*a*b* of linear light under D65.
Vector lab(const Vector& rgb) {
    constexpr Matrix toXYZ = {{{0.4124564, 0.3575761, 0.1804375},
                               {0.2126729, 0.7151522, 0.0721750},
                               {0.0193339, 0.1191920, 0.9503041}}};
    constexpr Vector white = {0.95047, 1, 1.08883};
    const auto f = [](double t) {
        return t > 216.0 / 24389 ? std::cbrt(t) : t * 841 / 108 + 4.0 / 29;
    };
    const Vector xyz = times(toXYZ, rgb);
    const double x = f(xyz[0] / white[0]);
    const double y = f(xyz[1] / white[1]);
    const double z = f(xyz[2] / white[2]);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

// What eyes see that lack one kind of cone (Machado, Oliveira and Fernandes 2009, severity 1).
constexpr Matrix cViews[] = {
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868},
      {0.114503, 0.786281, 0.099216},
      {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968},
      {0.280085, 0.672501, 0.047413},
      {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779},
      {-0.078411, 0.930809, 0.147602},
      {0.004733, 0.691367, 0.303900}}},
};

Vector seen(const Matrix& view, COLORREF color) {
    Vector light = times(view, linear(color));
    for (double& part : light) part = std::clamp(part, 0.0, 1.0);
    return lab(light);
}

TEST(ColorMgr, AnEmptyPaletteStandsForTheDefaultOne) {
    const COLORREF one[] = {RGB(1, 2, 3)};
    const ColorMgr colors(std::span<const COLORREF>(one, 0));
    EXPECT_EQ(colors.GetColorCount(), ColorMgr::cDefaultColors);
    EXPECT_EQ(colors.GetColor(0), RGB(0, 0, 0));
}

TEST(ColorMgr, ColorSafePaletteIsToldApartByEverybodyAndInGrey) {
    const auto palette = ColorMgr::ColorSafePalette();
    ASSERT_GE(palette.size(), 8u);
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const double lightness = lab(linear(palette[i]))[0];
        EXPECT_GE(100 - lightness, 12) << i;
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_GE(std::fabs(lightness - lab(linear(palette[k]))[0]), 12) << i << ' ' << k;
            for (const Matrix& view : cViews) {
                const Vector a = seen(view, palette[i]);
                const Vector b = seen(view, palette[k]);
                EXPECT_GE(std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]), 25) << i << ' ' << k;
            }
        }
    }
    const ColorMgr colors(palette);
    EXPECT_EQ(colors.GetColorCount(), static_cast<int>(palette.size()));
    EXPECT_EQ(colors.GetColor(1), palette[1]);
}

}  // namespace
