#include "platform/graphics/SvgDevice.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "platform/base/CodePage.h"
#include "platform/graphics/SymbolText.h"
#include "platform/graphics/detail/PictureWriter.h"

namespace tessalink {

namespace {

using detail::FaceKind;
using detail::HalfPoint;
using detail::isWritten;
using detail::Look;
using detail::Outline;
using detail::PictureText;

constexpr int cPixelsPerInch = 96;
// Clips and hatches that are kept for use again; the oldest makes room.
constexpr std::size_t cKeptClips = 32;
constexpr std::size_t cKeptHatches = 32;
// What the text of a font has room for at first.
constexpr std::size_t cRoomOfFont = 256;

// By kind of face. Under the name of Symbol many viewers would look for its codes.
constexpr std::array<std::string_view, 4> cFamilies = {
    "Arial,Liberation Sans,Helvetica,sans-serif",
    "Times New Roman,Liberation Serif,Times,serif",
    "Courier New,Liberation Mono,Courier,monospace",
    "Times New Roman,Liberation Serif,Times,DejaVu Sans,serif",
};

constexpr std::string_view familyOf(FaceKind kind) {
    return cFamilies[static_cast<std::size_t>(kind)];
}

// By hatch: lines in a square of eight units.
constexpr std::array<std::string_view, 6> cHatchPaths = {
    "M0 3.5h8",
    "M4.5 0v8",
    "M-1-1l10 10M7-1l2 2M-1 7l2 2",
    "M-1 9l10-10M-1 1l2-2M7 9l2-2",
    "M0 3.5h8M4.5 0v8",
    "M-1-1l10 10M-1 9l10-10",
};

struct Hatch {
    int hatch;
    COLORREF color;
    bool opaque;
    COLORREF background;

    bool operator==(const Hatch&) const = default;
};

// Definitions that are in the text already, by what they define.
template <class Key, std::size_t KEPT>
class Definitions {
public:
    // The number of the definition, and whether it is new.
    std::pair<int, bool> NumberOf(const Key& key) {
        const auto known = std::find_if(m_known.begin(), m_known.end(),
                                        [&](const auto& entry) { return entry.first == key; });
        if (known != m_known.end()) return {known->second, false};
        const auto index = static_cast<std::size_t>(m_count) % KEPT;
        ++m_count;
        if (m_known.size() < KEPT) {
            m_known.emplace_back(key, m_count);
        } else {
            m_known[index] = {key, m_count};
        }
        return {m_count, true};
    }

private:
    std::vector<std::pair<Key, int>> m_known;
    int m_count = 0;
};

// Writes the words of XML.
class Xml {
public:
    explicit Xml(PictureText& text) : m_text(&text) {}

    Xml& Attribute(std::string_view start, std::int64_t number) {
        m_text->Put(start).Put(number).Put('"');
        return *this;
    }
    Xml& HalvesAttribute(std::string_view start, std::int64_t halves) {
        m_text->Put(start).Halves(halves).Put('"');
        return *this;
    }
    Xml& Color(COLORREF color) {
        constexpr std::string_view digits = "0123456789abcdef";
        constexpr unsigned twice = 0x11;
        const std::array<unsigned, 3> parts = {GetRValue(color), GetGValue(color),
                                               GetBValue(color)};
        const bool isShort = std::all_of(parts.begin(), parts.end(),
                                         [](unsigned part) { return part % twice == 0; });
        std::array<char, 7> word = {'#'};
        std::size_t length = 1;
        for (const unsigned part : parts) {
            word[length++] = digits[part / 16];
            if (!isShort) word[length++] = digits[part % 16];
        }
        m_text->Put(std::string_view(word.data(), length));
        return *this;
    }
    Xml& Character(char32_t character) {
        switch (character) {
            case '&':
                m_text->Put("&amp;");
                break;
            case '<':
                m_text->Put("&lt;");
                break;
            case '>':
                m_text->Put("&gt;");
                break;
            case '"':
                m_text->Put("&quot;");
                break;
            default:
                Utf8(character);
        }
        return *this;
    }
    Xml& Escaped(std::string_view text) {
        for (const char ch : text) {
            const char32_t character = toUnicode(ch);
            Character(isWritten(character) ? character : U' ');
        }
        return *this;
    }

private:
    // Up to three bytes: no character here is beyond the basic plane.
    void Utf8(char32_t character) {
        const auto more = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
        if (character < 0x80) {
            m_text->Put(static_cast<char>(character));
        } else if (character < 0x800) {
            m_text->Put(static_cast<char>(0xC0 | character >> 6)).Put(more(character));
        } else {
            m_text->Put(static_cast<char>(0xE0 | character >> 12)).Put(more(character >> 6));
            m_text->Put(more(character));
        }
    }

    PictureText* m_text;
};

class SvgWriter final : public detail::PictureWriter {
public:
    explicit SvgWriter(const PictureSheet& sheet);

private:
    void OpenClip(const Region& clip) override;
    void CloseClip() override { Text().Put("</g>\n"); }
    void Shape(const Outline& outline, const Look& look) override;
    void Characters(const TextRun& run) override;
    void End() override { Text().Put("</svg>\n"); }

    // The number of the pattern for the hatch, which is written first when it is new.
    int PatternOf(const Look& look);
    void PutRects(const Region& region);
    void PutPoints(std::string_view start, const Outline& outline);
    void PutOutline(const Outline& outline);
    void PutFill(const Look& look, int pattern);
    void PutStroke(const Look& look);
    void PutFont(const TextRun& run);
    void DescribeFont(const LOGFONTA& font, double em);

    Xml m_xml{Text()};
    Definitions<Region, cKeptClips> m_clips;
    Definitions<Hatch, cKeptHatches> m_hatches;
    LOGFONTA m_font{};  // the one that m_fontText describes
    double m_fontEm = 0;
    PictureText m_fontText{cRoomOfFont};
};

SvgWriter::SvgWriter(const PictureSheet& sheet) : PictureWriter(sheet) {
    const DeviceCaps& caps = Caps();
    Text().Put(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg "
        "xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\"");
    const auto size = [&](std::string_view start, int units) {
        Text().Put(start);
        if (caps.dpiX == cPixelsPerInch) {
            Text().Put(units);
        } else {
            Text().Put(units * detail::cMillimetersPerInch / caps.dpiX).Put("mm");
        }
        Text().Put("\"");
    };
    size(" width=\"", caps.width);
    size(" height=\"", caps.height);
    Text().Put(" viewBox=\"0 0 ").Put(caps.width).Put(" ").Put(caps.height).Put("\"");
    if (!sheet.language.empty()) {
        Text().Put(" xml:lang=\"");
        m_xml.Escaped(sheet.language);
        Text().Put("\"");
    }
    Text().Put(" xml:space=\"preserve\" shape-rendering=\"crispEdges\" stroke-linejoin=\"round\"");
    Text().Put(" font-family=\"").Put(familyOf(FaceKind::Arial)).Put("\">\n");
    const auto told = [&](std::string_view start, std::string_view text, std::string_view end) {
        if (text.empty()) return;
        Text().Put(start);
        m_xml.Escaped(text);
        Text().Put(end);
    };
    told("<title>", sheet.title, "</title>\n");
    told("<desc>", sheet.description, "</desc>\n");
}

void SvgWriter::OpenClip(const Region& clip) {
    const auto [number, isNew] = m_clips.NumberOf(clip);
    if (isNew) {
        m_xml.Attribute("<clipPath id=\"c", number);
        Text().Put(">");
        PutRects(clip);
        Text().Put("/></clipPath>\n");
    }
    Text().Put("<g clip-path=\"url(#c").Put(number).Put(")\">\n");
}

// Shapes.

int SvgWriter::PatternOf(const Look& look) {
    if (!look.isFilled || !look.isHatched) return 0;
    const Hatch hatch = {look.hatch, look.color, look.isOpaque,
                         look.isOpaque ? look.background : cWhite};
    const auto [number, isNew] = m_hatches.NumberOf(hatch);
    if (!isNew) return number;
    m_xml.Attribute("<pattern id=\"h", number);
    Text().Put(" width=\"8\" height=\"8\" patternUnits=\"userSpaceOnUse\">");
    if (hatch.opaque) {
        Text().Put("<path d=\"M0 0h8v8h-8z\" fill=\"");
        m_xml.Color(hatch.background);
        Text().Put("\"/>");
    }
    Text().Put("<path d=\"").Put(cHatchPaths[static_cast<std::size_t>(hatch.hatch)]);
    Text().Put("\" stroke=\"");
    m_xml.Color(hatch.color);
    Text().Put("\"/></pattern>\n");
    return number;
}

void SvgWriter::PutRects(const Region& region) {
    Text().Put("<path d=\"");
    EachRect(region, [&](const CRect& rect) {
        Text().Put("M").Put(rect.left).Put(" ").Put(rect.top).Put("h").Put(rect.Width());
        Text().Put("v").Put(rect.Height()).Put("h").Put(-rect.Width()).Put("z");
    });
    Text().Put("\"");
}

void SvgWriter::PutPoints(std::string_view start, const Outline& outline) {
    Text().Put(start);
    for (std::size_t i = 0; i < outline.points.size(); ++i) {
        const HalfPoint at = outline.At(i);
        Text().Put(i == 0 ? "" : " ").Halves(at.x).Put(",").Halves(at.y);
    }
    Text().Put("\"");
    if (outline.roundEnds) Text().Put(" stroke-linecap=\"round\"");
    if (outline.evenOdd) Text().Put(" fill-rule=\"evenodd\"");
}

void SvgWriter::PutOutline(const Outline& outline) {
    const HalfPoint& corner = outline.corner;
    const HalfPoint& size = outline.size;
    switch (outline.kind) {
        case Outline::Kind::Polyline:
            return PutPoints("<polyline points=\"", outline);
        case Outline::Kind::Polygon:
            return PutPoints("<polygon points=\"", outline);
        case Outline::Kind::Rects:
            return PutRects(*outline.region);
        case Outline::Kind::Rectangle:
            m_xml.HalvesAttribute("<rect x=\"", corner.x).HalvesAttribute(" y=\"", corner.y);
            m_xml.Attribute(" width=\"", size.x).Attribute(" height=\"", size.y);
            return;
        case Outline::Kind::Ellipse:
            m_xml.HalvesAttribute("<ellipse cx=\"", corner.x + size.x);
            m_xml.HalvesAttribute(" cy=\"", corner.y + size.y);
            m_xml.HalvesAttribute(" rx=\"", size.x).HalvesAttribute(" ry=\"", size.y);
    }
}

void SvgWriter::PutFill(const Look& look, int pattern) {
    if (!look.isFilled) {
        Text().Put(" fill=\"none\"");
    } else if (pattern != 0) {
        Text().Put(" fill=\"url(#h").Put(pattern).Put(")\"");
    } else if (look.color != cBlack) {
        Text().Put(" fill=\"");
        m_xml.Color(look.color);
        Text().Put("\"");
    }
}

void SvgWriter::PutStroke(const Look& look) {
    Text().Put(" stroke=\"");
    m_xml.Color(look.stroke);
    Text().Put("\"");
    if (look.width > 1) m_xml.Attribute(" stroke-width=\"", look.width);
    if (look.dash != PS_SOLID) {
        Text().Put(" stroke-dasharray=\"").Put(detail::dashesOf(look.dash)).Put("\"");
    }
}

void SvgWriter::Shape(const Outline& outline, const Look& look) {
    const int pattern = PatternOf(look);
    PutOutline(outline);
    PutFill(look, pattern);
    if (look.isStroked) PutStroke(look);
    Text().Put("/>\n");
}

// Texts.

void SvgWriter::DescribeFont(const LOGFONTA& font, double em) {
    m_font = font;
    m_fontEm = em;
    m_fontText.Cut(0);
    m_fontText.Put(" font-size=\"").Put(em).Put("\"");
    const FaceKind kind = detail::faceKindOf(font);
    const bool own = !detail::isKnownFace(font);
    if (own || kind != FaceKind::Arial) {
        m_fontText.Put(" font-family=\"");
        if (own) {
            std::string plain(font.lfFaceName);
            std::erase_if(plain, [](char ch) { return ch == '\'' || ch == '\\'; });
            m_fontText.Put("'");
            Xml(m_fontText).Escaped(plain);
            m_fontText.Put("',");
        }
        m_fontText.Put(familyOf(kind)).Put("\"");
    }
    if (font.lfWeight >= FW_SEMIBOLD) m_fontText.Put(" font-weight=\"bold\"");
    if (font.lfItalic != 0) m_fontText.Put(" font-style=\"italic\"");
}

void SvgWriter::PutFont(const TextRun& run) {
    const double em = run.sizedFont->Em();
    if (m_fontEm != em || m_font != *run.font) DescribeFont(*run.font, em);
    Text().Put(m_fontText.View());
}

void SvgWriter::Characters(const TextRun& run) {
    const bool codes = isSymbolFont(*run.font);
    const auto characterOf = [codes](char ch) {
        return codes ? symbolToUnicode(ch) : toUnicode(ch);
    };
    const auto shows = [&](char ch) { return isWritten(characterOf(ch)); };
    if (std::none_of(run.text.begin(), run.text.end(), shows)) return;
    std::string_view start = "<text x=\"";
    for (std::size_t i = 0; i < run.text.size(); ++i) {
        if (!shows(run.text[i])) continue;
        Text().Put(std::exchange(start, " "));
        Text().Put(std::int64_t{run.origin.x} + run.positions[i]);
    }
    m_xml.Attribute("\" y=\"", run.origin.y);
    PutFont(run);
    if (run.color != cBlack) {
        Text().Put(" fill=\"");
        m_xml.Color(run.color);
        Text().Put("\"");
    }
    Text().Put(">");
    for (const char ch : run.text) {
        if (shows(ch)) m_xml.Character(characterOf(ch));
    }
    Text().Put("</text>\n");
}

}  // namespace

SvgDevice::SvgDevice(const PictureSheet& sheet)
    : PictureDevice(std::make_unique<SvgWriter>(sheet)) {}

}  // namespace tessalink
