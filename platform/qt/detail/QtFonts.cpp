#include "platform/qt/detail/QtFonts.h"

#include <QCoreApplication>
#include <QFont>
#include <QFontDatabase>
#include <QGlyphRun>
#include <QTextLayout>
#include <QThread>
#include <algorithm>
#include <cmath>
#include <list>
#include <mutex>
#include <optional>
#include <string_view>

#include "platform/base/CodePage.h"
#include "platform/graphics/SymbolText.h"
#include "platform/qt/detail/QtText.h"

namespace tessalink::detail {

namespace {

constexpr LONG cHighestWeight = 1000;
constexpr const char* cSans = "Liberation Sans";
constexpr const char* cSerif = "Liberation Serif";

// Faces of the classic desktop, and the one of the same measures that is shown for them.
struct Substitute {
    std::string_view name;
    const char* family;
    bool isBuiltIn;  // its measures are
};
constexpr Substitute cSubstitutes[] = {
    {"Arial", cSans, true},
    {"Helvetica", cSans, true},
    {"Liberation Sans", cSans, true},
    {"MS Sans Serif", cSans, true},
    {"MS Shell Dlg", cSans, true},
    {"System", cSans, true},
    {"Times New Roman", cSerif, true},
    {"Times", cSerif, true},
    {"Liberation Serif", cSerif, true},
    {"MS Serif", cSerif, true},
    {"Courier New", "Liberation Mono", false},
    {"Courier", "Liberation Mono", false},
};

// What the glyphs of a font depend on, besides its size.
LOGFONTA faceOf(const LOGFONTA& font) {
    LOGFONTA face{};
    face.lfWeight = font.lfWeight == FW_DONTCARE ? FW_NORMAL : font.lfWeight;
    face.lfItalic = font.lfItalic != 0 ? 1 : 0;
    face.lfCharSet = isSymbolFont(font) ? SYMBOL_CHARSET : ANSI_CHARSET;
    face.lfPitchAndFamily = font.lfPitchAndFamily;
    const std::string_view name = font.lfFaceName;
    std::copy(name.begin(), name.end(), face.lfFaceName);
    return face;
}

const Substitute* substituteOf(const LOGFONTA& face) {
    const QString name = toQString(face.lfFaceName);
    const auto found =
        std::find_if(std::begin(cSubstitutes), std::end(cSubstitutes), [&](const Substitute& s) {
            const QLatin1StringView other(s.name.data(), static_cast<qsizetype>(s.name.size()));
            return name.compare(other, Qt::CaseInsensitive) == 0;
        });
    return found != std::end(cSubstitutes) ? &*found : nullptr;
}

// The installed family with measures of its own that a face stands for; nothing when it has the
// built-in ones.
std::optional<QString> ownFamily(const LOGFONTA& face) {
    if (face.lfCharSet == SYMBOL_CHARSET || face.lfFaceName[0] == '\0') return std::nullopt;
    const Substitute* const substitute = substituteOf(face);
    if (substitute != nullptr && substitute->isBuiltIn) return std::nullopt;
    const QString family =
        substitute != nullptr ? QString(substitute->family) : toQString(face.lfFaceName);
    if (!QFontDatabase::hasFamily(family)) return std::nullopt;
    return family;
}

// The family that looks like the built-in measures of a face.
const char* builtInFamily(const LOGFONTA& face) {
    if (face.lfCharSet == SYMBOL_CHARSET) return cSerif;
    LOGFONTA serif = face;
    constexpr std::string_view name = "Times New Roman";
    std::fill(std::begin(serif.lfFaceName), std::end(serif.lfFaceName), '\0');
    std::copy(name.begin(), name.end(), serif.lfFaceName);
    return &builtInMetrics(face) == &builtInMetrics(serif) ? cSerif : cSans;
}

QFont toolkitFont(const LOGFONTA& face) {
    const std::optional<QString> own = ownFamily(face);
    const LONG builtInWeight = face.lfWeight >= FW_SEMIBOLD ? FW_BOLD : FW_NORMAL;
    const LONG weight = own ? std::clamp<LONG>(face.lfWeight, 1, cHighestWeight) : builtInWeight;
    QFont font(own ? *own : QString(builtInFamily(face)));
    font.setWeight(static_cast<QFont::Weight>(weight));
    font.setItalic(face.lfItalic != 0);
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(static_cast<QFont::StyleStrategy>(
        QFont::PreferOutline | QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    font.setPixelSize(FaceMetrics::cEm);
    return font;
}

// A character that the first font lacks, in the font that the toolkit takes it from.
QtGlyphs::Glyph glyphElsewhere(const QFont& font, const QString& character, QtGlyphs& result) {
    QTextLayout layout(character, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    if (runs.isEmpty() || runs.front().glyphIndexes().isEmpty()) return {};
    const QRawFont other = runs.front().rawFont();
    auto place = std::find(result.fonts.begin(), result.fonts.end(), other);
    if (place == result.fonts.end()) place = result.fonts.insert(place, other);
    return {runs.front().glyphIndexes().front(),
            static_cast<std::size_t>(place - result.fonts.begin())};
}

// The glyphs at the size of the measures.
QtGlyphs findGlyphs(const LOGFONTA& face) {
    const bool isSymbol = face.lfCharSet == SYMBOL_CHARSET;
    const QFont font = toolkitFont(face);
    QtGlyphs result;
    result.fonts.push_back(QRawFont::fromFont(font));
    for (std::size_t code = 0; code < result.glyphs.size(); ++code) {
        if (isControlCode(code)) continue;
        const char ch = static_cast<char>(code);
        const char32_t unicode = isSymbol ? symbolToUnicode(ch) : toUnicode(ch);
        const QString text = QString::fromUcs4(&unicode, 1);
        const QList<quint32> indexes = result.fonts.front().glyphIndexesForString(text);
        if (!indexes.isEmpty() && indexes.front() != 0) {
            result.glyphs[code] = {indexes.front(), 0};
        } else {
            result.glyphs[code] = glyphElsewhere(font, text, result);
        }
    }
    return result;
}

FaceMetrics measure(const LOGFONTA& face) {
    const QtGlyphs found = findGlyphs(face);
    const QRawFont& first = found.fonts.front();
    const auto whole = [](qreal value) { return static_cast<int>(std::lround(value)); };
    FaceMetrics metrics;
    metrics.ascent = whole(first.ascent());
    metrics.descent = whole(first.descent());
    metrics.externalLeading = std::max(0, whole(first.leading()));
    for (std::size_t code = 0; code < metrics.advances.size(); ++code) {
        if (isControlCode(code)) continue;
        const QtGlyphs::Glyph& glyph = found.glyphs[code];
        const auto advances = found.fonts[glyph.font].advancesForGlyphIndexes({glyph.index});
        const int advance = advances.isEmpty() ? 0 : whole(advances.front().x());
        metrics.advances[code] = static_cast<std::uint16_t>(std::clamp(advance, 0, 0xFFFF));
    }
    return metrics;
}

// The glyphs that a thread has drawn last. The toolkit's fonts end with the application, so those
// of its thread do, too.
class GlyphCache {
public:
    const QtGlyphs& Get(const LOGFONTA& font, double em) {
        if (m_codePage != codePage()) m_sized.clear();
        m_codePage = codePage();
        const LOGFONTA face = faceOf(font);
        const auto known = std::find_if(m_sized.begin(), m_sized.end(), [&](const Sized& sized) {
            return sized.em == em && sized.face == face;
        });
        if (known != m_sized.end()) return known->glyphs;
        if (m_sized.size() == cMost) m_sized.pop_front();
        QtGlyphs glyphs = AtAnySize(face);
        for (QRawFont& part : glyphs.fonts) part.setPixelSize(em);
        return m_sized.emplace_back(Sized{face, em, std::move(glyphs)}).glyphs;
    }

private:
    static constexpr std::size_t cMost = 64;
    struct Sized {
        LOGFONTA face{};
        double em;
        QtGlyphs glyphs;
    };

    QtGlyphs AtAnySize(const LOGFONTA& face) const {
        const auto known = std::find_if(m_sized.begin(), m_sized.end(),
                                        [&](const Sized& sized) { return sized.face == face; });
        return known != m_sized.end() ? known->glyphs : findGlyphs(face);
    }

    std::list<Sized> m_sized;
    CodePage m_codePage = codePage();
};

thread_local std::unique_ptr<GlyphCache> cache;

}  // namespace

const QtGlyphs& qtGlyphs(const LOGFONTA& font, double em) {
    if (!cache) {
        cache = std::make_unique<GlyphCache>();
        const auto* const application = QCoreApplication::instance();
        if (application != nullptr && application->thread() == QThread::currentThread()) {
            qAddPostRoutine([] { cache.reset(); });
        }
    }
    return cache->Get(font, em);
}

QFont widgetFont(const LOGFONTA& font) {
    QFont result = toolkitFont(faceOf(font));
    // The toolkit has whole sizes only: the spaces between the characters make up for the rest.
    const double em = SizedFont(qtMetrics(font), font).Em();
    const int size = std::max(1, static_cast<int>(std::lround(em)));
    result.setPixelSize(size);
    result.setLetterSpacing(QFont::PercentageSpacing, 100 * em / size);
    result.setUnderline(font.lfUnderline != 0);
    result.setStrikeOut(font.lfStrikeOut != 0);
    return result;
}

const FaceMetrics& qtMetrics(const LOGFONTA& font) {
    struct Known {
        LOGFONTA face;
        CodePage page;
        FaceMetrics metrics;
    };
    static std::mutex mutex;
    static std::list<Known> known;
    const LOGFONTA face = faceOf(font);
    if (!ownFamily(face)) return builtInMetrics(font);
    const std::lock_guard lock(mutex);
    const auto found = std::find_if(known.begin(), known.end(), [&](const Known& k) {
        return k.face == face && k.page == codePage();
    });
    if (found != known.end()) return found->metrics;
    return known.emplace_back(Known{face, codePage(), measure(face)}).metrics;
}

}  // namespace tessalink::detail
