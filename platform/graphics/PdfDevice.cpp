#include "platform/graphics/PdfDevice.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "platform/base/CException.h"
#include "platform/base/CodePage.h"
#include "platform/graphics/SymbolText.h"
#include "platform/graphics/detail/BaseFonts.h"
#include "platform/graphics/detail/Deflate.h"
#include "platform/graphics/detail/PictureWriter.h"

namespace tessalink {

namespace {

using detail::BaseFont;
using detail::HalfPoint;
using detail::isWritten;
using detail::Look;
using detail::Outline;
using detail::PictureText;

constexpr double cUnitsPerInch = 72;
// So many decimals place the far end of the longest page to a thousandth of a point.
constexpr int cScaleDecimals = 8;
constexpr int cSizeDecimals = 4;
constexpr double cThousand = 1000;
// How far a character may stand from its place, in units.
constexpr double cTolerance = 0.25;
// From this em on a thousandth of it is more than that.
constexpr double cLargeEm = 250;
// How far the control points of a quarter of a circle lie from its ends, in parts of the radius.
constexpr double cQuarterCircle = 0.5522847498;

// The objects that every file has. Those of the text alternative, fonts and patterns follow.
constexpr int cCatalog = 1;
constexpr int cPages = 2;
constexpr int cPage = 3;
constexpr int cContents = 4;
constexpr int cLength = 5;
constexpr int cFixedObjects = 5;

// By hatch: lines in a square of eight units.
constexpr std::array<std::string_view, 6> cHatchLines = {
    "0 3.5 m 8 3.5 l S",
    "4.5 0 m 4.5 8 l S",
    "-1 -1 m 9 9 l 7 -1 m 9 1 l -1 7 m 1 9 l S",
    "-1 9 m 9 -1 l -1 1 m 1 -1 l 7 9 m 9 7 l S",
    "0 3.5 m 8 3.5 l 4.5 0 m 4.5 8 l S",
    "-1 -1 m 9 9 l -1 9 m 9 -1 l S",
};

// What the operators of the page have set.
struct State {
    int width = 1;
    UINT dash = PS_SOLID;
    bool roundEnds = false;
    COLORREF stroke = cBlack;
    COLORREF fill = cBlack;
    std::optional<int> hatch;  // what areas are filled with instead of the plain color
    std::optional<std::size_t> font;
    double em = 0;
};

// The words of the format.
class Pdf {
public:
    explicit Pdf(PictureText& text) : m_text(&text) {}

    // 0 to 1 as 0 to 255, to three decimals.
    Pdf& Part(BYTE part) {
        constexpr int whole = 255;
        if (part == 0 || part == whole) {
            m_text->Put(part == 0 ? '0' : '1');
            return *this;
        }
        const int thousandths = (part * 1000 + whole / 2) / whole;
        const std::array<char, 4> word = {'.', static_cast<char>('0' + thousandths / 100),
                                          static_cast<char>('0' + thousandths / 10 % 10),
                                          static_cast<char>('0' + thousandths % 10)};
        std::size_t length = word.size();
        while (word[length - 1] == '0') --length;
        m_text->Put(std::string_view(word.data(), length));
        return *this;
    }
    Pdf& Color(COLORREF color) {
        Part(GetRValue(color));
        m_text->Put(' ');
        Part(GetGValue(color));
        m_text->Put(' ');
        return Part(GetBValue(color));
    }
    // Gray or red, green and blue, and the operator for it.
    Pdf& SetColor(COLORREF color, std::string_view gray, std::string_view rgb) {
        const BYTE red = GetRValue(color);
        if (red == GetGValue(color) && red == GetBValue(color)) {
            Part(red);
            m_text->Put(gray);
        } else {
            Color(color);
            m_text->Put(rgb);
        }
        return *this;
    }
    Pdf& Hundredths(std::int64_t hundredths) {
        if (hundredths < 0) m_text->Put('-');
        const std::int64_t size = hundredths < 0 ? -hundredths : hundredths;
        m_text->Put(size / 100);
        const int rest = static_cast<int>(size % 100);
        if (rest == 0) return *this;
        m_text->Put('.').Put(static_cast<char>('0' + rest / 10));
        if (rest % 10 != 0) m_text->Put(static_cast<char>('0' + rest % 10));
        return *this;
    }
    Pdf& Halves(const HalfPoint& point, std::string_view end) {
        m_text->Halves(point.x).Put(' ').Halves(point.y).Put(end);
        return *this;
    }
    // A character of a text in parentheses.
    Pdf& Character(char ch) {
        if (ch == '(' || ch == ')' || ch == '\\') m_text->Put('\\');
        m_text->Put(ch);
        return *this;
    }
    // A text for people.
    Pdf& Told(std::string_view text) {
        const bool isPlain =
            std::all_of(text.begin(), text.end(), [](char ch) { return ch >= ' ' && ch <= '~'; });
        if (!isPlain) return Unicode(text);
        m_text->Put('(');
        for (const char ch : text) Character(ch);
        m_text->Put(')');
        return *this;
    }
    Pdf& Hex(unsigned value, int digits) {
        for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
            m_text->Put("0123456789ABCDEF"[value >> static_cast<unsigned>(shift) & 0xFU]);
        }
        return *this;
    }

private:
    Pdf& Unicode(std::string_view text) {
        m_text->Put("<FEFF");
        for (const char ch : text) {
            const char32_t character = toUnicode(ch);
            Hex(isWritten(character) ? static_cast<unsigned>(character) : ' ', 4);
        }
        m_text->Put('>');
        return *this;
    }

    PictureText* m_text;
};

class PdfWriter final : public detail::PictureWriter {
public:
    explicit PdfWriter(const PictureSheet& sheet);

private:
    using Codes = std::bitset<256>;

    void OpenClip(const Region& clip) override;
    void CloseClip() override;
    void Shape(const Outline& outline, const Look& look) override;
    void Characters(const TextRun& run) override;
    void End() override;

    // The page.
    void SetFill(COLORREF color);
    void SetHatch(int hatch, COLORREF color);
    void SetStroke(const Look& look, bool roundEnds);
    void SetFont(const TextRun& run);
    void PutOutline(const Outline& outline);
    void PutEllipse(const Outline& outline);
    // Gives whether a part of the region lies on the sheet.
    bool PutRects(const Region& region);
    void PutCharacters(const TextRun& run, std::size_t first);

    // What stands around it.
    bool IsTagged() const { return !m_title.empty() || !m_description.empty(); }
    int NewObject() { return ++m_objects; }
    void Begin(int object);
    void EndObject() { Text().Put(">>\nendobj\n"); }
    void EndStream(std::string_view bytes);
    void PutPageSize();
    void PutScale();
    void EndPage();
    int PutInfo();
    int PutStructure();
    std::string PutFonts();
    int PutFont(std::size_t font);
    int PutDescriptor(const BaseFont& font);
    int PutUnicodes(const Codes& codes);
    std::string PutPatterns();
    void PutCatalog(int structure);
    void PutPages(const std::string& resources);
    void PutTrailer(int info);

    Pdf m_pdf{Text()};
    std::string m_title;
    std::string m_description;
    std::string m_language;
    std::size_t m_pageStart = 0;
    State m_state;
    State m_outside;  // the state outside the clip that is open
    std::array<Codes, detail::cBaseFonts> m_used;
    std::bitset<cHatchLines.size()> m_usedHatches;
    int m_objects = cFixedObjects;
    std::vector<std::size_t> m_places;  // where objects start, by number
};

PdfWriter::PdfWriter(const PictureSheet& sheet)
    : PictureWriter(sheet),
      m_title(sheet.title),
      m_description(sheet.description),
      m_language(sheet.language) {
    // The second line tells programs that transfer files that this is no text.
    Text().Put("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n");
    Begin(cContents);
    Text().Put(detail::cCanDeflate ? "/Filter/FlateDecode" : "");
    Text().Put("/Length ").Put(cLength).Put(" 0 R>>\nstream\n");
    m_pageStart = Text().Size();
    if (IsTagged()) Text().Put("/Figure<</MCID 0>>BDC\n");
    PutScale();
    Text().Put(" cm\n1 j\n");
}

// The page: operators behind what they need. Units are those of the sheet, from the top down.

void PdfWriter::PutScale() {
    const double scale = cUnitsPerInch / Caps().dpiX;
    Text().Put(scale, cScaleDecimals).Put(" 0 0 ").Put(-scale, cScaleDecimals).Put(" 0 ");
    Text().Put(std::max(Caps().height, 1) * scale, cSizeDecimals);
}

bool PdfWriter::PutRects(const Region& region) {
    bool any = false;
    EachRect(region, [&](const CRect& rect) {
        Text().Put(rect.left).Put(' ').Put(rect.top).Put(' ').Put(rect.Width()).Put(' ');
        Text().Put(rect.Height()).Put(" re\n");
        any = true;
    });
    return any;
}

void PdfWriter::OpenClip(const Region& clip) {
    m_outside = m_state;
    Text().Put("q\n");
    // What lies off the sheet shows nothing.
    if (!PutRects(clip)) Text().Put("-2 -2 1 1 re\n");
    Text().Put("W n\n");
}

void PdfWriter::CloseClip() {
    Text().Put("Q\n");
    m_state = m_outside;
}

void PdfWriter::SetFill(COLORREF color) {
    if (m_state.fill == color && !m_state.hatch) return;
    m_state.fill = color;
    m_state.hatch.reset();
    m_pdf.SetColor(color, " g\n", " rg\n");
}

void PdfWriter::SetHatch(int hatch, COLORREF color) {
    if (m_state.fill == color && m_state.hatch == hatch) return;
    m_state.fill = color;
    m_state.hatch = hatch;
    m_usedHatches.set(static_cast<std::size_t>(hatch));
    Text().Put("/P cs ");
    m_pdf.Color(color);
    Text().Put(" /H").Put(hatch).Put(" scn\n");
}

void PdfWriter::SetStroke(const Look& look, bool roundEnds) {
    if (m_state.stroke != look.stroke) m_pdf.SetColor(look.stroke, " G\n", " RG\n");
    if (m_state.width != look.width) Text().Put(look.width).Put(" w\n");
    if (m_state.roundEnds != roundEnds) Text().Put(roundEnds ? "1 J\n" : "0 J\n");
    if (m_state.dash != look.dash) {
        Text().Put('[').Put(look.dash == PS_SOLID ? "" : detail::dashesOf(look.dash));
        Text().Put("] 0 d\n");
    }
    m_state.stroke = look.stroke;
    m_state.width = look.width;
    m_state.roundEnds = roundEnds;
    m_state.dash = look.dash;
}

void PdfWriter::PutEllipse(const Outline& outline) {
    constexpr std::int64_t half = 50;
    const auto control = [](std::int64_t radius) {
        return static_cast<std::int64_t>(std::lround(static_cast<double>(radius) * cQuarterCircle));
    };
    const HalfPoint radius = {outline.size.x * half, outline.size.y * half};
    const HalfPoint middle = {outline.corner.x * half + radius.x,
                              outline.corner.y * half + radius.y};
    const HalfPoint bend = {control(radius.x), control(radius.y)};
    const auto put = [&](std::int64_t x, std::int64_t y, std::string_view end) {
        m_pdf.Hundredths(middle.x + x);
        Text().Put(' ');
        m_pdf.Hundredths(middle.y + y);
        Text().Put(end);
    };
    const auto quarter = [&](const HalfPoint& first, const HalfPoint& second,
                             const HalfPoint& end) {
        put(first.x, first.y, " ");
        put(second.x, second.y, " ");
        put(end.x, end.y, " c\n");
    };
    put(radius.x, 0, " m\n");
    quarter({radius.x, bend.y}, {bend.x, radius.y}, {0, radius.y});
    quarter({-bend.x, radius.y}, {-radius.x, bend.y}, {-radius.x, 0});
    quarter({-radius.x, -bend.y}, {-bend.x, -radius.y}, {0, -radius.y});
    quarter({bend.x, -radius.y}, {radius.x, -bend.y}, {radius.x, 0});
    Text().Put("h ");
}

void PdfWriter::PutOutline(const Outline& outline) {
    switch (outline.kind) {
        case Outline::Kind::Polyline:
        case Outline::Kind::Polygon:
            for (std::size_t i = 0; i < outline.points.size(); ++i) {
                m_pdf.Halves(outline.At(i), i == 0 ? " m " : " l ");
            }
            if (outline.kind == Outline::Kind::Polygon) Text().Put("h ");
            return;
        case Outline::Kind::Rectangle:
            m_pdf.Halves(outline.corner, " ");
            Text().Put(outline.size.x).Put(' ').Put(outline.size.y).Put(" re ");
            return;
        case Outline::Kind::Ellipse:
            return PutEllipse(outline);
        case Outline::Kind::Rects:
            PutRects(*outline.region);
    }
}

void PdfWriter::Shape(const Outline& outline, const Look& look) {
    if (outline.kind == Outline::Kind::Rects) {
        bool shows = false;
        EachRect(*outline.region, [&](const CRect&) { shows = true; });
        if (!shows) return;
    }
    const std::string_view fill = outline.evenOdd ? "f*\n" : "f\n";
    if (look.isFilled && look.isHatched && look.isOpaque) {
        SetFill(look.background);
        PutOutline(outline);
        Text().Put(fill);
    }
    if (look.isFilled) look.isHatched ? SetHatch(look.hatch, look.color) : SetFill(look.color);
    if (look.isStroked) SetStroke(look, outline.roundEnds);
    PutOutline(outline);
    if (look.isFilled && look.isStroked) {
        Text().Put(outline.evenOdd ? "B*\n" : "B\n");
    } else {
        Text().Put(look.isFilled ? fill : "S\n");
    }
}

// Texts.

void PdfWriter::SetFont(const TextRun& run) {
    const std::size_t font = detail::baseFontFor(*run.font);
    const double em = std::round(run.sizedFont->Em() * 100) / 100;
    if (m_state.font == font && m_state.em == em) return;
    m_state.font = font;
    m_state.em = em;
    Text().Put("/F").Put(static_cast<int>(font)).Put(' ').Put(em).Put(" Tf\n");
}

// The code that shows a character in a base font; nothing for one without a picture.
std::optional<char> shownCode(char ch, bool isSymbol) {
    if (isSymbol) return symbolToUnicode(ch) == U' ' ? ' ' : ch;
    return isWritten(toUnicode(ch)) ? std::optional(ch) : std::nullopt;
}

void PdfWriter::PutCharacters(const TextRun& run, std::size_t first) {
    const std::size_t font = *m_state.font;
    const bool isSymbol = detail::cBaseFontTable[font].IsSymbol();
    const double em = m_state.em;
    const detail::BaseFontWidths widths(font);
    Codes& used = m_used[font];
    double pen = 0;  // where the viewer stands, from the first character on
    Text().Put("[(");
    for (std::size_t i = first; i < run.text.size(); ++i) {
        const std::optional<char> code = shownCode(run.text[i], isSymbol);
        if (!code) continue;
        const double place = static_cast<double>(run.positions[i]) - run.positions[first];
        if (std::abs(place - pen) > cTolerance && em > 0) {
            const int parts = em > cLargeEm ? 100 : 1;  // of a thousandth
            const double back = std::round((pen - place) * cThousand * parts / em) / parts;
            Text().Put(')');
            m_pdf.Hundredths(std::llround(back * 100));
            Text().Put('(');
            pen -= back * em / cThousand;
        }
        m_pdf.Character(*code);
        const auto byte = static_cast<unsigned char>(*code);
        used.set(byte);
        pen += widths.Of(byte) * em / cThousand;
    }
    Text().Put(")]TJ\n");
}

void PdfWriter::Characters(const TextRun& run) {
    const bool isSymbol = isSymbolFont(*run.font);
    const auto first = static_cast<std::size_t>(
        std::find_if(run.text.begin(), run.text.end(),
                     [&](char ch) { return shownCode(ch, isSymbol).has_value(); }) -
        run.text.begin());
    if (first == run.text.size()) return;
    Text().Put("BT\n");
    SetFont(run);
    SetFill(run.color);
    Text().Put("1 0 0 -1 ").Put(std::int64_t{run.origin.x} + run.positions[first]);
    Text().Put(' ').Put(run.origin.y).Put(" Tm\n");
    PutCharacters(run, first);
    Text().Put("ET\n");
}

// What stands around the page: objects, each with its number.

void PdfWriter::Begin(int object) {
    const auto index = static_cast<std::size_t>(object);
    if (m_places.size() <= index) m_places.resize(index + 1);
    m_places[index] = Text().Size();
    Text().Put(object).Put(" 0 obj\n<<");
}

void PdfWriter::EndStream(std::string_view bytes) {
    Text().Put("/Length ").Put(static_cast<std::int64_t>(bytes.size())).Put(">>\nstream\n");
    Text().Put(bytes).Put("\nendstream\nendobj\n");
}

void PdfWriter::PutPageSize() {
    const double scale = cUnitsPerInch / Caps().dpiX;
    Text().Put("[0 0 ").Put(std::max(Caps().width, 1) * scale, cSizeDecimals).Put(' ');
    Text().Put(std::max(Caps().height, 1) * scale, cSizeDecimals).Put(']');
}

void PdfWriter::EndPage() {
    if (IsTagged()) Text().Put("EMC\n");
    if (detail::cCanDeflate) {
        const std::string page = detail::deflated(Text().View().substr(m_pageStart));
        Text().Cut(m_pageStart);
        Text().Put(page);
    }
    const std::size_t length = Text().Size() - m_pageStart;
    Text().Put("\nendstream\nendobj\n");
    m_places.resize(cFixedObjects + 1);
    m_places[cLength] = Text().Size();
    Text().Put(cLength).Put(" 0 obj\n").Put(static_cast<std::int64_t>(length)).Put("\nendobj\n");
}

int PdfWriter::PutInfo() {
    if (m_title.empty()) return 0;
    const int info = NewObject();
    Begin(info);
    Text().Put("/Title");
    m_pdf.Told(m_title);
    EndObject();
    return info;
}

// The page as one figure, which screen readers announce.
int PdfWriter::PutStructure() {
    if (!IsTagged()) return 0;
    const int root = NewObject();
    const int figure = NewObject();
    Begin(root);
    Text().Put("/Type/StructTreeRoot/K ").Put(figure).Put(" 0 R/ParentTree<</Nums[0[");
    Text().Put(figure).Put(" 0 R]]>>/ParentTreeNextKey 1");
    EndObject();
    Begin(figure);
    Text().Put("/Type/StructElem/S/Figure/P ").Put(root).Put(" 0 R/Pg ").Put(cPage);
    Text().Put(" 0 R/K 0/A<</O/Layout/Placement/Block/BBox");
    PutPageSize();
    Text().Put(">>/Alt");
    m_pdf.Told(m_description.empty() ? m_title : m_description);
    EndObject();
    return root;
}

int PdfWriter::PutDescriptor(const BaseFont& font) {
    constexpr int fixed = 1;
    constexpr int serif = 2;
    constexpr int symbolic = 4;
    constexpr int latin = 32;
    constexpr int italic = 64;
    const int object = NewObject();
    Begin(object);
    Text().Put("/Type/FontDescriptor/FontName/").Put(font.name).Put("/Flags ");
    Text().Put((font.IsSymbol() ? symbolic : latin) + (font.IsFixed() ? fixed : 0) +
               (font.HasSerifs() ? serif : 0) + (font.italicAngle != 0 ? italic : 0));
    Text().Put("/FontBBox[");
    for (const int edge : font.box) Text().Put(edge).Put(' ');
    Text().Put("]/ItalicAngle ").Put(font.italicAngle).Put("/Ascent ").Put(font.ascent);
    Text().Put("/Descent ").Put(font.descent).Put("/CapHeight ").Put(font.capHeight);
    Text().Put("/StemV ").Put(font.stemWidth);
    EndObject();
    return object;
}

// The Unicode characters of the codes of Symbol.
int PdfWriter::PutUnicodes(const Codes& codes) {
    constexpr std::size_t mostOfBlock = 100;
    PictureText map(std::size_t{1} << 10);
    map.Put(
        "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n"
        "/CIDSystemInfo<</Registry(Adobe)/Ordering(UCS)/Supplement 0>>def\n"
        "/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n"
        "1 begincodespacerange\n<00><FF>\nendcodespacerange\n");
    std::size_t left = codes.count();
    std::size_t ofBlock = 0;
    for (unsigned code = 0; code < codes.size(); ++code) {
        if (!codes.test(code)) continue;
        if (ofBlock == 0) {
            ofBlock = std::min(left, mostOfBlock);
            left -= ofBlock;
            map.Put(static_cast<int>(ofBlock)).Put(" beginbfchar\n");
        }
        map.Put('<');
        Pdf(map).Hex(code, 2);
        map.Put("><");
        Pdf(map).Hex(static_cast<unsigned>(symbolToUnicode(static_cast<char>(code))), 4);
        map.Put(--ofBlock == 0 ? ">\nendbfchar\n" : ">\n");
    }
    map.Put("endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend");
    const int object = NewObject();
    Begin(object);
    EndStream(map.View());
    return object;
}

int PdfWriter::PutFont(std::size_t font) {
    const BaseFont& base = detail::cBaseFontTable[font];
    const Codes& codes = m_used[font];
    const int descriptor = PutDescriptor(base);
    const int unicodes = base.IsSymbol() ? PutUnicodes(codes) : 0;
    std::size_t first = 0;
    std::size_t last = codes.size() - 1;
    while (!codes.test(first)) ++first;
    while (!codes.test(last)) --last;
    const int object = NewObject();
    Begin(object);
    Text().Put("/Type/Font/Subtype/Type1/BaseFont/").Put(base.name);
    if (base.IsSymbol()) {
        Text().Put("/ToUnicode ").Put(unicodes).Put(" 0 R");
    } else {
        Text().Put("/Encoding/WinAnsiEncoding");
    }
    Text().Put("/FontDescriptor ").Put(descriptor).Put(" 0 R/FirstChar ");
    Text().Put(static_cast<int>(first)).Put("/LastChar ").Put(static_cast<int>(last));
    Text().Put("/Widths[");
    const detail::BaseFontWidths widths(font);
    for (std::size_t code = first; code <= last; ++code) {
        Text().Put(widths.Of(static_cast<unsigned char>(code)));
        Text().Put(code == last ? ']' : ' ');
    }
    EndObject();
    return object;
}

// Both give the resources of the page that name what they have written.

std::string PdfWriter::PutFonts() {
    std::string names;
    for (std::size_t font = 0; font < m_used.size(); ++font) {
        if (m_used[font].none()) continue;
        const std::string object = std::to_string(PutFont(font));
        names += "/F" + std::to_string(font) + ' ' + object + " 0 R";
    }
    return names.empty() ? names : "/Font<<" + names + ">>";
}

std::string PdfWriter::PutPatterns() {
    std::string names;
    for (std::size_t hatch = 0; hatch < cHatchLines.size(); ++hatch) {
        if (!m_usedHatches.test(hatch)) continue;
        const int object = NewObject();
        names += "/H" + std::to_string(hatch) + ' ' + std::to_string(object) + " 0 R";
        Begin(object);
        Text().Put("/Type/Pattern/PatternType 1/PaintType 2/TilingType 1/BBox[0 0 8 8]");
        Text().Put("/XStep 8/YStep 8/Resources<<>>/Matrix[");
        PutScale();
        Text().Put(']');
        EndStream(cHatchLines[hatch]);
    }
    if (names.empty()) return names;
    return "/ColorSpace<</P[/Pattern/DeviceRGB]>>/Pattern<<" + names + ">>";
}

void PdfWriter::PutCatalog(int structure) {
    Begin(cCatalog);
    Text().Put("/Type/Catalog/Pages ").Put(cPages).Put(" 0 R");
    if (structure != 0) {
        Text().Put("/MarkInfo<</Marked true>>/StructTreeRoot ").Put(structure).Put(" 0 R");
    }
    if (!m_title.empty()) Text().Put("/ViewerPreferences<</DisplayDocTitle true>>");
    if (!m_language.empty()) {
        Text().Put("/Lang");
        m_pdf.Told(m_language);
    }
    EndObject();
}

void PdfWriter::PutPages(const std::string& resources) {
    Begin(cPages);
    Text().Put("/Type/Pages/Count 1/Kids[").Put(cPage).Put(" 0 R]");
    EndObject();
    Begin(cPage);
    Text().Put("/Type/Page/Parent ").Put(cPages).Put(" 0 R/MediaBox");
    PutPageSize();
    Text().Put("/Contents ").Put(cContents).Put(" 0 R/Resources<<").Put(resources).Put(">>");
    if (IsTagged()) Text().Put("/StructParents 0/Tabs/S");
    EndObject();
}

void PdfWriter::PutTrailer(int info) {
    constexpr std::size_t digits = 10;
    const std::size_t start = Text().Size();
    Text().Put("xref\n0 ").Put(m_objects + 1).Put("\n0000000000 65535 f \n");
    for (int object = 1; object <= m_objects; ++object) {
        const std::string place = std::to_string(m_places[static_cast<std::size_t>(object)]);
        Text().Put(std::string(digits - place.size(), '0')).Put(place).Put(" 00000 n \n");
    }
    Text().Put("trailer\n<</Size ").Put(m_objects + 1).Put("/Root ").Put(cCatalog).Put(" 0 R");
    if (info != 0) Text().Put("/Info ").Put(info).Put(" 0 R");
    Text().Put(">>\nstartxref\n").Put(static_cast<std::int64_t>(start)).Put("\n%%EOF\n");
}

void PdfWriter::End() {
    EndPage();
    const int info = PutInfo();
    const int structure = PutStructure();
    const std::string fonts = PutFonts();
    PutCatalog(structure);
    PutPages(fonts + PutPatterns());
    PutTrailer(info);
}

void refuseOtherCodePages() {
    if (codePage() == CodePage::Western) return;
    throw CException(CString(
        "PDF without embedded fonts has the letters of Windows-1252 only, and texts are in " +
        codePageName() + ": write PDF with embedded fonts, or SVG"));
}

}  // namespace

PdfDevice::PdfDevice(const PictureSheet& sheet)
    : PictureDevice((refuseOtherCodePages(), std::make_unique<PdfWriter>(sheet))) {}

}  // namespace tessalink
