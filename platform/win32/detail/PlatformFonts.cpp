#include "platform/win32/detail/PlatformFonts.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <list>
#include <mutex>
#include <span>
#include <string>
#include <string_view>

#include "platform/base/CodePage.h"
#include "platform/graphics/SymbolText.h"
#include "platform/win32/detail/PlatformText.h"

namespace tessalink::detail {

namespace {

// Faces whose measures are the built-in ones.
constexpr std::string_view cBuiltIn[] = {"Arial",         "Helvetica",       "Liberation Sans",
                                         "MS Sans Serif", "MS Shell Dlg",    "MS Shell Dlg 2",
                                         "System",        "Times New Roman", "Times",
                                         "MS Serif",      "Liberation Serif"};
// What shows them: the first that is installed, or else the first.
constexpr const char* cSans[] = {"Arial", "Liberation Sans"};
constexpr const char* cSerif[] = {"Times New Roman", "Liberation Serif"};
constexpr const char* cSymbol = "Symbol";

bool isSameName(std::string_view a, std::string_view b) {
    const auto lower = [](char ch) {
        return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char one, char other) { return lower(one) == lower(other); });
}

int CALLBACK noteFace(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM found) {
    *reinterpret_cast<bool*>(found) = true;
    return 0;
}

bool isInstalled(const char* face) {
    LOGFONTW wanted = {};
    wanted.lfCharSet = DEFAULT_CHARSET;
    const std::wstring name = toPlatform(face);
    std::copy_n(name.begin(), std::min<std::size_t>(name.size(), LF_FACESIZE - 1),
                wanted.lfFaceName);
    bool isFound = false;
    const WindowContext screen(nullptr);
    ::EnumFontFamiliesExW(screen.Get(), &wanted, noteFace, reinterpret_cast<LPARAM>(&isFound), 0);
    return isFound;
}

const char* firstInstalled(std::span<const char* const> faces) {
    const auto found = std::find_if(faces.begin(), faces.end(), isInstalled);
    return found != faces.end() ? *found : faces.front();
}

struct Known {
    LOGFONTA face;
    CodePage page;
    bool isOwn = false;  // it has measures of its own
    FaceMetrics metrics;
};

// What the measures of a font depend on.
LOGFONTA faceOf(const LOGFONTA& font) {
    LOGFONTA face = {};
    face.lfWeight = font.lfWeight;
    face.lfItalic = font.lfItalic;
    face.lfPitchAndFamily = font.lfPitchAndFamily;
    const std::string_view name = font.lfFaceName;
    std::copy(name.begin(), name.end(), face.lfFaceName);
    return face;
}

bool hasOwnMeasures(const LOGFONTA& font) {
    if (isSymbolFont(font) || font.lfFaceName[0] == '\0') return false;
    const bool isBuiltIn =
        std::any_of(std::begin(cBuiltIn), std::end(cBuiltIn),
                    [&](std::string_view name) { return isSameName(font.lfFaceName, name); });
    return !isBuiltIn && isInstalled(font.lfFaceName);
}

// The face that shows a font.
const char* shownFace(const LOGFONTA& font, bool isOwn) {
    static const char* const sans = firstInstalled(cSans);
    static const char* const serif = firstInstalled(cSerif);
    if (isOwn) return font.lfFaceName;
    if (isSymbolFont(font)) return hasSymbolFace() ? cSymbol : serif;
    LOGFONTA withSerifs = {};
    withSerifs.lfPitchAndFamily = FF_ROMAN;
    withSerifs.lfWeight = font.lfWeight;
    withSerifs.lfItalic = font.lfItalic;
    return &builtInMetrics(font) == &builtInMetrics(withSerifs) ? serif : sans;
}

LOGFONTW platformFont(const LOGFONTA& font, LONG em, bool isOwn) {
    LOGFONTW result = {};
    result.lfHeight = -em;
    result.lfWeight = font.lfWeight == FW_DONTCARE ? FW_NORMAL : font.lfWeight;
    result.lfItalic = font.lfItalic;
    result.lfUnderline = font.lfUnderline;
    result.lfStrikeOut = font.lfStrikeOut;
    const bool isSymbol = isSymbolFont(font) && hasSymbolFace();
    result.lfCharSet = isSymbol ? SYMBOL_CHARSET : DEFAULT_CHARSET;
    result.lfOutPrecision = OUT_TT_PRECIS;
    result.lfPitchAndFamily = font.lfPitchAndFamily;
    const std::wstring name = toPlatform(shownFace(font, isOwn));
    std::copy_n(name.begin(), std::min<std::size_t>(name.size(), LF_FACESIZE - 1),
                result.lfFaceName);
    return result;
}

FaceMetrics measure(const LOGFONTA& face) {
    const LOGFONTW wanted = platformFont(face, FaceMetrics::cEm, true);
    const GdiHandle<HFONT> font(::CreateFontIndirectW(&wanted));
    const ContextHandle memory(::CreateCompatibleDC(nullptr));
    const Selection selected(memory.get(), font.get());
    TEXTMETRICW told = {};
    ::GetTextMetricsW(memory.get(), &told);
    FaceMetrics metrics;
    metrics.ascent = told.tmAscent;
    metrics.descent = told.tmDescent;
    metrics.externalLeading = std::max<int>(0, told.tmExternalLeading);
    for (std::size_t code = 0; code < metrics.advances.size(); ++code) {
        if (isControlCode(static_cast<char>(code))) continue;
        const std::wstring character = toPlatform(std::string(1, static_cast<char>(code)));
        SIZE size = {};
        ::GetTextExtentPoint32W(memory.get(), character.data(), static_cast<int>(character.size()),
                                &size);
        metrics.advances[code] = static_cast<std::uint16_t>(std::clamp<int>(size.cx, 0, 0xFFFF));
    }
    return metrics;
}

const Known& known(const LOGFONTA& font) {
    static std::mutex mutex;
    static std::list<Known> faces;
    const LOGFONTA face = faceOf(font);
    const std::lock_guard lock(mutex);
    const auto found = std::find_if(faces.begin(), faces.end(), [&](const Known& one) {
        return one.face == face && one.page == codePage();
    });
    if (found != faces.end()) return *found;
    Known added = {face, codePage(), hasOwnMeasures(font), {}};
    if (added.isOwn) added.metrics = measure(face);
    return faces.emplace_back(added);
}

}  // namespace

bool hasSymbolFace() {
    static const bool isThere = isInstalled(cSymbol);
    return isThere;
}

wchar_t shownCharacter(const LOGFONTA& font, char code) {
    // Codes of symbols are characters of their own to the platform.
    constexpr wchar_t cSymbols = 0xF000;
    if (isControlCode(code)) return L' ';
    if (!isSymbolFont(font)) return toPlatform(std::string_view(&code, 1)).front();
    return hasSymbolFace() ? static_cast<wchar_t>(cSymbols | static_cast<BYTE>(code))
                           : static_cast<wchar_t>(symbolToUnicode(code));
}

GdiHandle<HFONT> makePlatformFont(const LOGFONTA& font, double em) {
    const LOGFONTW wanted =
        platformFont(font, std::max(1L, std::lround(em)), !isSymbolFont(font) && known(font).isOwn);
    return GdiHandle<HFONT>(::CreateFontIndirectW(&wanted));
}

const FaceMetrics& platformMetrics(const LOGFONTA& font) {
    if (isSymbolFont(font)) return builtInMetrics(font);
    const Known& face = known(font);
    return face.isOwn ? face.metrics : builtInMetrics(font);
}

}  // namespace tessalink::detail
