#include "platform/graphics/FaceMetrics.h"

#include <algorithm>
#include <cmath>

#include "platform/base/CodePage.h"
#include "platform/base/HostServices.h"
#include "platform/graphics/detail/BuiltInFaces.h"

namespace tessalink {

namespace {

constexpr int cDefaultEm = 12;

// Beginnings of the names of faces with serifs.
constexpr std::array<std::string_view, 8> cSerifNames = {
    "Times", "Georgia", "Garamond", "Palatino", "Book Antiqua", "Bookman", "Century", "Cambria"};

constexpr std::size_t cFirstSerif = 4;

using Faces = std::array<FaceMetrics, detail::cTextFaces + 1>;

Faces facesOfCodePage() {
    Faces faces;
    for (std::size_t i = 0; i < detail::cTextFaces; ++i) {
        const detail::BuiltInFace& face = detail::cFaces[i];
        faces[i] = {face.ascent, face.descent, face.externalLeading, {}};
    }
    for (std::size_t place = 0; place < detail::cFaceCharacters; ++place) {
        const auto byte = fromUnicode(detail::cCharactersOfFaces[place]);
        if (!byte) continue;
        for (std::size_t i = 0; i < detail::cTextFaces; ++i) {
            faces[i].advances[static_cast<BYTE>(*byte)] = detail::cFaces[i].advances[place];
        }
    }
    faces.back() = detail::cSymbolFace;
    return faces;
}

void measureAnew();

Faces firstFaces() {
    whenHostServicesChange(measureAnew);
    return facesOfCodePage();
}

// Fonts that exist already follow a new code page.
Faces& keptFaces() {
    static Faces faces = firstFaces();
    return faces;
}

void measureAnew() {
    keptFaces() = facesOfCodePage();
}

// Whether a name that ends in a NUL starts so.
bool startsNoCase(const char* name, std::string_view start) {
    const auto lower = [](char ch) {
        return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
    };
    return std::all_of(start.begin(), start.end(),
                       [&](char ch) { return lower(*name++) == lower(ch); });
}

bool hasSerifs(const LOGFONTA& font) {
    const char* const name = font.lfFaceName;
    const bool known = std::any_of(cSerifNames.begin(), cSerifNames.end(),
                                   [&](std::string_view s) { return startsNoCase(name, s); });
    return known || (*name == '\0' && (font.lfPitchAndFamily & cFamilyMask) == FF_ROMAN);
}

int rounded(double value) {
    return toInt(std::floor(value + 0.5));
}

}  // namespace

bool isSymbolFont(const LOGFONTA& font) {
    return font.lfCharSet == SYMBOL_CHARSET || startsNoCase(font.lfFaceName, "Symbol");
}

const FaceMetrics& detail::builtInFace(std::size_t face) {
    return keptFaces()[face];
}

const FaceMetrics& builtInMetrics(const LOGFONTA& font) {
    if (isSymbolFont(font)) return keptFaces().back();
    const std::size_t style =
        (font.lfWeight >= FW_SEMIBOLD ? 1u : 0u) + (font.lfItalic != 0 ? 2u : 0u);
    return keptFaces()[(hasSerifs(font) ? cFirstSerif : 0) + style];
}

SizedFont::SizedFont(const FaceMetrics& face, const LOGFONTA& font, double aspect) : m_face(&face) {
    const double height = font.lfHeight;
    const double cell = face.ascent + face.descent;
    m_em = height > 0 ? height * FaceMetrics::cEm / cell : height < 0 ? -height : cDefaultEm;
    const double scale = m_em / FaceMetrics::cEm;
    m_widthOfUnit = scale * aspect;
    m_ascent = rounded(face.ascent * scale);
    // What was asked for as a cell height is one.
    m_descent = height > 0 ? font.lfHeight - m_ascent : rounded(face.descent * scale);
    m_internalLeading = Height() - rounded(m_em);
    m_externalLeading = rounded(face.externalLeading * scale);
}

int SizedFont::WidthOf(std::string_view text) const {
    std::uint64_t sum = 0;
    for (const char ch : text) sum += Advance(ch);
    return Position(sum);
}

}  // namespace tessalink
