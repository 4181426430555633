#include "platform/graphics/detail/BaseFonts.h"

#include "platform/graphics/detail/BuiltInFaces.h"
#include "platform/graphics/detail/PictureWriter.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cStyles = 4;
constexpr std::size_t cFirstCourier = 2 * cStyles;
constexpr std::size_t cSymbol = 3 * cStyles;

}  // namespace

// clang-format off
const std::array<BaseFont, cBaseFonts> cBaseFontTable = {{
    {"Helvetica",             {-166, -225, 1000,  931},   0,   718, -207, 718,  88},
    {"Helvetica-Bold",        {-170, -228, 1003,  962},   0,   718, -207, 718, 140},
    {"Helvetica-Oblique",     {-170, -225, 1116,  931}, -12,   718, -207, 718,  88},
    {"Helvetica-BoldOblique", {-174, -228, 1114,  962}, -12,   718, -207, 718, 140},
    {"Times-Roman",           {-168, -218, 1000,  898},   0,   683, -217, 662,  84},
    {"Times-Bold",            {-168, -218, 1000,  935},   0,   683, -217, 676, 139},
    {"Times-Italic",          {-169, -217, 1010,  883}, -15.5, 683, -217, 653,  76},
    {"Times-BoldItalic",      {-200, -218,  996,  921}, -15,   683, -217, 669, 121},
    {"Courier",               { -23, -250,  715,  805},   0,   629, -157, 562,  51},
    {"Courier-Bold",          {-113, -250,  749,  801},   0,   629, -157, 562, 106},
    {"Courier-Oblique",       { -27, -250,  849,  805}, -12,   629, -157, 562,  51},
    {"Courier-BoldOblique",   { -57, -250,  869,  801}, -12,   629, -157, 562, 106},
    {"Symbol",                {-180, -293, 1090, 1010},   0,  1010, -293, 729,  85},
}};
// clang-format on

std::size_t baseFontFor(const LOGFONTA& font) {
    const FaceKind kind = faceKindOf(font);
    if (kind == FaceKind::Symbol) return cSymbol;
    const std::size_t style =
        (font.lfWeight >= FW_SEMIBOLD ? 1u : 0u) + (font.lfItalic != 0 ? 2u : 0u);
    return static_cast<std::size_t>(kind) * cStyles + style;
}

BaseFontWidths::BaseFontWidths(std::size_t font)
    : m_face(font < cFirstCourier ? &builtInFace(font)
             : font == cSymbol    ? &builtInFace(cTextFaces)
                                  : nullptr) {}

}  // namespace tessalink::detail
