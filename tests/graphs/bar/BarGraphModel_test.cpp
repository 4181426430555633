// The layout once more, written down plainly from its rules, against what graphs draw.
#include <gtest/gtest.h>

#include <cmath>

#include "graphs/rtf/MetaFile.h"
#include "platform/graphics/RecordingDevice.h"
#include "platform/graphics/SvgDevice.h"
#include "tests/graphs/bar/RandomBarGraph.h"
#include "tests/support/ShownPrimitives.h"

namespace {

using namespace tessalink;
using namespace tessalink::test;
using Lines = std::vector<std::string>;

int rounded(double value) {
    return static_cast<int>(std::trunc(value + 0.5));
}
int half(int value) {
    return static_cast<int>(std::floor(value / 2.0));
}
int lineCount(const std::string& text) {
    return text.empty() ? 0 : 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

constexpr COLORREF cFramePen = 0x102030;
constexpr COLORREF cFrameBrush = 0xA0B0C0;

class BarModel {
public:
    BarModel(const GraphData& graph, const DeviceCaps& caps) : m_graph(graph), m_null(caps) {}

    Lines Draw(CRect r) {
        int design = 0;
        for (const SectionData& s : m_graph.sections) design += height_of(s);
        if (design == 0) return {};
        const int frame = m_graph.frame;
        r = CRect(r.left + frame, r.top + frame, r.right - frame, r.bottom - frame);
        fit(r, design);
        int total = 0;
        for (const SectionData& s : m_graph.sections) total += rounded(height_of(s) * m_ys);
        if (m_graph.alignment & 8) {
            r.top = r.bottom - total;
        } else if (m_graph.alignment & 4) {
            r.top += half(r.bottom - r.top - total);
        }
        r.bottom = r.top + total;
        const int width = static_cast<int>(std::ceil(1000 * m_xs) + 0.1);
        if (m_graph.alignment & 2) {
            r.left = r.right - width;
        } else if (m_graph.alignment & 1) {
            r.left += half(r.right - r.left - width);
        }
        r.right = r.left + width;
        if (frame)
            box({r.left - 1, r.top - 1, r.right + 1, r.bottom + 1}, 1, cFramePen, cFrameBrush);
        int y = r.top;
        for (const SectionData& s : m_graph.sections) {
            const int height = rounded(height_of(s) * m_ys);
            draw(s, CRect(r.left, y, r.right, y + height));
            y += height;
        }
        return m_lines;
    }

private:
    static int bar_height(const SectionData& s) {
        return s.barHeight != 0 ? s.barHeight : half(3 * s.fontSize + 1);
    }
    static int label_lines(const SectionData& s) {
        int most = 0;
        for (const LegendText& t : s.labels) most = std::max(most, lineCount(t.text));
        return most;
    }
    static int stem(const SectionData& s) {
        const bool has = s.kind == SectionData::Texts ? s.useLine != 0 : !s.labels.empty();
        return has ? half(s.bodySize) : 0;
    }
    static int height_of(const SectionData& s) {
        const int descriptions =
            s.fontSize * std::max(lineCount(s.leftDesc), lineCount(s.rightDesc));
        int content = 0;
        if (s.kind == SectionData::Heading) {
            for (const TextData& t : s.texts) {
                content = std::max(content, lineCount(t.text) * t.size);
            }
        } else if (s.kind <= SectionData::FilledScale) {
            content = std::max(bar_height(s), descriptions);
        } else if (s.kind == SectionData::Values) {
            content = std::max(s.bodySize, descriptions);
        } else {
            content = std::max(stem(s) + label_lines(s) * s.bodySize, descriptions);
        }
        return s.top + s.bottom + content;
    }
    void fit(const CRect& r, int design) {
        m_xs = (r.right - r.left) / 1000.0;
        m_ys = (r.bottom - r.top) / static_cast<double>(design);
        const double dx = m_null.Caps().dpiX;
        const double dy = m_null.Caps().dpiY;
        if (m_xs * dy >= dx * m_ys) {
            m_xs = dx * m_ys / dy;
        } else {
            m_ys = m_xs * dy / dx;
        }
    }

    void add(Primitive p, int pen, COLORREF penColor) {
        p.pen = {pen < 0 ? UINT{PS_NULL} : UINT{PS_SOLID}, {pen, 0}, penColor};
        m_lines.push_back(toText(p));
    }
    static LOGBRUSH solid(COLORREF color) { return {BS_SOLID, color, 0}; }
    void box(CRect rect, int pen, COLORREF penColor, COLORREF fill, bool ellipse = false,
             bool hollow = false) {
        rect.NormalizeRect();
        if (rect.IsRectEmpty()) return;
        Primitive p;
        p.kind = ellipse ? Primitive::Kind::Ellipse : Primitive::Kind::Rectangle;
        p.rect = rect;
        p.brush = hollow ? LOGBRUSH{BS_NULL, 0, 0} : solid(fill);
        add(p, pen, penColor);
    }
    void line(int x1, int y1, int x2, int y2, int pen, COLORREF color) {
        Primitive p;
        p.points = {{x1, y1}, {x2, y2}};
        add(p, pen, color);
    }
    // Lines from y down; align is 0, 2 or 6.
    void text(const std::string& text, int x, int y, unsigned align, int height, const char* face,
              COLORREF color) {
        CFont font;
        font.CreateFont(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, face);
        CDC dc(m_null);
        dc.SelectObject(&font);
        TEXTMETRICA metrics{};
        dc.GetTextMetrics(&metrics);
        std::size_t start = 0;
        while (start < text.size()) {
            const std::size_t end = std::min(text.find('\n', start), text.size());
            const std::string piece = text.substr(start, end - start);
            start = end + 1;
            Primitive p;
            p.kind = Primitive::Kind::Text;
            p.text = piece;
            p.positions = {0};
            for (std::size_t i = 1; i <= piece.size(); ++i) {
                p.positions.push_back(dc.GetTextExtent(piece.c_str(), static_cast<int>(i)).cx);
            }
            const int width = p.positions.back();
            const int left = align == 6 ? x - width / 2 : align == 2 ? x - width : x;
            p.points = {{left, y + metrics.tmAscent}};
            p.font = font.Get();
            p.color = color;
            p.textBackground = RECT{left, y, left + width, y + metrics.tmHeight};
            if (!piece.empty()) m_lines.push_back(toText(p));
            y += metrics.tmHeight;
        }
    }
    int em(int height, const char* face) {
        CFont font;
        font.CreateFont(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, face);
        CDC dc(m_null);
        dc.SelectObject(&font);
        return dc.GetTextExtent("M", 1).cx;
    }

    void draw(const SectionData& s, const CRect& r) {
        switch (s.kind) {
            case SectionData::Heading:
                draw_heading(s, r);
                break;
            case SectionData::Scale:
            case SectionData::FilledScale:
                draw_scale(s, r);
                break;
            default:
                draw_legend(s, r);
        }
    }

    void draw_heading(const SectionData& s, const CRect& r) {
        const int tm = rounded(s.top * m_ys);
        const int bm = rounded(s.bottom * m_ys);
        for (const TextData& t : s.texts) {
            const int fh = rounded(t.size * m_ys);
            const int block = lineCount(t.text) * fh;
            const int y = t.flags & 8   ? r.bottom - block - bm
                          : t.flags & 4 ? r.top + tm + half(r.bottom - r.top - block - bm - tm)
                                        : r.top + tm;
            text(t.text, r.left + rounded(t.position * m_xs), y,
                 t.flags & 2   ? 2
                 : t.flags & 1 ? 6
                               : 0,
                 fh, "Arial", t.color);
        }
    }

    static int at(const SectionData& s, double score, const CRect& b) {
        const double unit = static_cast<double>(b.right - b.left) / (s.max - s.min);
        return b.left + rounded((score - s.min) * unit);
    }
    static int plot_min(const SectionData& s) { return std::max(s.plotMin, s.min); }
    static int plot_max(const SectionData& s) { return std::min(s.plotMax, s.max); }
    static int plotted(const SectionData& s, double score, const CRect& b) {
        if (score < plot_min(s)) return at(s, plot_min(s), b);
        return at(s, score > plot_max(s) ? plot_max(s) : score, b);
    }

    void draw_scale(const SectionData& s, const CRect& r) {
        const int l = rounded((s.left + s.leftWidth) * m_xs);
        const int rr = rounded((s.right + s.rightWidth) * m_xs);
        const int bh = rounded(bar_height(s) * m_ys);
        const int tm = rounded(s.top * m_ys);
        const int bm = rounded(s.bottom * m_ys);
        const int fh = rounded(s.fontSize * m_ys);
        const int h = r.bottom - r.top;
        const auto top = [&](int block) { return r.top + tm + half(h - block - bm - tm); };
        if (s.leftWidth != 0) {
            text(s.leftDesc, r.left + l - em(fh, "Arial"), top(lineCount(s.leftDesc) * fh), 2, fh,
                 "Arial", s.descColor);
        }
        if (s.rightWidth != 0) {
            text(s.rightDesc, r.right - rr + em(fh, "Arial"), top(lineCount(s.rightDesc) * fh), 0,
                 fh, "Arial", s.descColor);
        }
        const CRect b(r.left + l, top(bh), r.right - rr, top(bh) + bh);
        const int pen = std::max(rounded(s.lineSize * m_xs), 1);
        box(b, pen, s.box, s.kind == SectionData::FilledScale ? s.fill : cFrameBrush);
        draw_ticks(s, s.minor, half(pen + 1), s.minorColor, b);
        draw_ticks(s, s.major, pen, s.majorColor, b);
        for (const RangeData& range : s.ranges) draw_range(s, range, b);
        for (const PointData& point : s.points) draw_point(s, point, b);
    }
    void draw_ticks(const SectionData& s, int step, int pen, COLORREF color, const CRect& b) {
        if (step <= 0) return;
        for (int t = std::max(s.tickStart, s.plotMin); t <= std::min(s.tickEnd, s.plotMax);
             t += step) {
            line(plotted(s, t, b), b.top, plotted(s, t, b), b.bottom, pen, color);
        }
    }
    void draw_range(const SectionData& s, const RangeData& g, const CRect& b) {
        double from = g.from < s.min ? s.min : g.from;
        from = from > s.max ? s.max : from;
        double to = g.to > s.max ? s.max : g.to;
        to = to < s.min ? s.min : to;
        if (from == to) return;
        const int h = rounded(bar_height(s) * g.fraction * m_ys);
        const int d = half(b.bottom - h - b.top);
        const int pen = g.line < 0 ? -1 : g.line == 0 ? 1 : std::max(rounded(g.line * m_xs), 1);
        box({at(s, from, b), b.top + d, at(s, to, b), b.bottom - d}, pen, g.border, g.fill);
    }
    void draw_point(const SectionData& s, const PointData& p, const CRect& b) {
        const int size = p.size < bar_height(s) ? p.size : bar_height(s);
        const int rx = half(static_cast<int>(size * m_xs + 1.5));
        const int ry = half(static_cast<int>(size * m_ys + 1.5));
        double v = p.value < plot_min(s) ? plot_min(s) : p.value;
        v = v > plot_max(s) ? plot_max(s) : v;
        const int x = plotted(s, v, b);
        const int y = b.top + half(b.bottom - b.top);
        const bool hollow = p.symbol >= 4;
        const int width = rounded(p.line * m_xs);
        const int pen = p.line == 0 || width == 0 ? 1 : width;
        const int r = ry * 12 / 10;
        const int w = rx * 12 / 10;
        const int t = rounded(w * 0.8660254);
        Primitive shape;
        shape.kind = Primitive::Kind::Polygon;
        shape.brush = hollow ? LOGBRUSH{BS_NULL, 0, 0} : solid(p.color);
        switch (hollow ? p.symbol - 4 : p.symbol) {
            case 0:
            case 1:
                box({x - rx, y - ry, x + rx, y + ry}, pen, p.color, p.color, p.symbol % 4 == 0,
                    hollow);
                break;
            case 2:
                shape.points = {{x, y - r}, {x + t, y + r / 2}, {x - t, y + r / 2}};
                add(shape, pen, p.color);
                break;
            case 3:
                shape.points = {{x, y - r}, {x + w, y}, {x, y + r}, {x - w, y}};
                add(shape, pen, p.color);
                break;
            default:
                break;
        }
    }

    void draw_legend(const SectionData& s, const CRect& r) {
        const int l = rounded((s.left + s.leftWidth) * m_xs);
        const int rr = rounded((s.right + s.rightWidth) * m_xs);
        const int tm = rounded(s.top * m_ys);
        const int bm = rounded(s.bottom * m_ys);
        const int room = r.bottom - r.top - bm - tm;
        const int fh = rounded(s.fontSize * m_ys);
        const int gap = em(fh, "Arial");
        const auto top = [&](const std::string& text, unsigned align) {
            const int rest = room - lineCount(text) * fh;
            return r.top + tm + (align & 4 ? half(rest) : align & 8 ? rest : 0);
        };
        const auto column = [&](const std::string& text, unsigned align, int from, int to,
                                int fromMargin, int toMargin) {
            const unsigned ta = align & 2 ? 2 : align & 1 ? 6 : 0;
            const int x = ta == 2   ? to - rounded(toMargin * m_xs)
                          : ta == 6 ? from + half(to - from)
                                    : from + rounded(fromMargin * m_xs);
            this->text(text, x, top(text, align), ta, fh, "Arial", s.descColor);
        };
        if (s.leftWidth != 0) {
            column(s.leftDesc, s.leftAlign, r.left, r.left + l - gap, s.left, 0);
        }
        if (s.rightWidth != 0) {
            column(s.rightDesc, s.rightAlign, r.right - rr + gap, r.right, 0, s.right);
        }
        const CRect b(r.left + l, r.top + tm, r.right - rr, r.bottom - bm);
        if (s.kind == SectionData::Values) {
            draw_values(s, b);
        } else {
            draw_labels(s, b);
        }
    }
    void label(const SectionData& s, const std::string& text, int x, int y) {
        this->text(text, x, y, 6, rounded(s.bodySize * m_ys), "Times New Roman", s.fill);
    }
    void draw_values(const SectionData& s, const CRect& b) {
        const SectionData& scale = m_graph.sections[s.scale];
        const auto value = [&](int v) { label(s, std::to_string(v), at(scale, v, b), b.top); };
        value(s.first);
        value(s.last);
        int v = s.start;
        while (v <= s.first) v += s.delta;
        for (; v < s.last; v += s.delta) value(v);
    }
    // Stems or brackets, and the texts below them, or above brackets that open downward.
    void draw_labels(const SectionData& s, const CRect& b) {
        const SectionData& scale = m_graph.sections[s.scale];
        const int pen = std::max(rounded(s.lineSize * m_xs), 1);
        const int height = rounded(stem(s) * m_ys);
        const int fh = rounded(s.bodySize * m_ys);
        for (const LegendText& t : s.labels) {
            const int from = at(scale, t.from, b);
            const int to = at(scale, t.to, b);
            if (s.kind == SectionData::Texts) {
                if (s.useLine) line(from, b.top, from, b.top + height, pen, s.fill);
                label(s, t.text, from, b.top + height);
                continue;
            }
            const int above = s.up ? 0 : label_lines(s) * fh;
            const int open = b.top + above + (s.up ? 0 : height);
            const int bar = b.top + above + half(height);
            Primitive bracket;
            bracket.kind = Primitive::Kind::Polyline;
            bracket.points = {{std::min(from, to), open},
                              {std::min(from, to), bar},
                              {std::max(from, to), bar},
                              {std::max(from, to), open},
                              {std::max(from, to), bar}};
            add(bracket, pen, s.fill);
            label(s, t.text, from + half(to - from),
                  s.up ? b.top + height : b.top + above - lineCount(t.text) * fh);
        }
    }

    const GraphData& m_graph;
    NullDevice m_null;
    double m_xs = 0;
    double m_ys = 0;
    Lines m_lines;
};

Lines drawn(BarGraph& graph, const DeviceCaps& caps, const CRect& rect) {
    RecordingDevice device(caps);
    CDC dc(device);
    CPen pen(PS_SOLID, 1, cFramePen);
    CBrush brush(cFrameBrush);
    dc.SelectObject(&pen);
    dc.SelectObject(&brush);
    graph.Draw(&dc, rect);
    return device.Lines();
}

TEST(BarGraphModel, RandomGraphsAreDrawnByTheRules) {
    const DeviceCaps devices[] = {{96, 96}, {300, 300}, {600, 600}, {600, 300}, {96, 120}};
    std::size_t primitives = 0;
    for (std::uint64_t seed = 0; seed < 800; ++seed) {
        GraphDice dice(seed, false);
        const GraphData data = dice.Graph(seed % 100 == 0 ? 200 : 6);
        const DeviceCaps& caps = devices[seed % std::size(devices)];
        const int extent = seed % 5 == 0 ? 60 : 3000;
        const CRect rect(CPoint(dice.Number(-500, 500), dice.Number(-500, 500)),
                         CSize(dice.Number(1, extent), dice.Number(1, extent)));
        const Lines lines = drawn(*build(data), caps, rect);
        ASSERT_EQ(lines, BarModel(data, caps).Draw(rect)) << "graph " << seed;
        primitives += lines.size();
    }
    EXPECT_GT(primitives, 20000U);
}

TEST(BarGraphModel, MetafilesPlayWhatIsDrawn) {
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
        const auto graph = build(GraphDice(seed, false).Graph(6));
        const CRect rect(10, 10, 900, 700);
        MetaFile file(10, 8, nullptr);
        graph->Draw(&file, rect);
        file.Close();
        RecordingDevice played(fixedScreen());
        CDC dc(played);
        CRect whole(0, 0, 960, 768);
        file.Play(dc, whole);
        RecordingDevice direct(fixedScreen());
        CDC directly(direct);
        graph->Draw(&directly, rect);
        ASSERT_EQ(shown(played.Primitives()), shown(direct.Primitives())) << "graph " << seed;
    }
}

// Whatever the numbers and texts: nothing but a picture, and the context as it was.
TEST(BarGraphModel, WildGraphsHarmNothing) {
    for (std::uint64_t seed = 0; seed < 1500; ++seed) {
        GraphDice dice(seed, true);
        const auto graph = build(dice.Graph(8));
        const CRect rects[] = {{0, 0, 1, 1},          {0, 0, 40000, 40000},
                               {50, 50, 50, 50},      {INT_MIN, INT_MIN, INT_MAX, INT_MAX},
                               {300, 200, -100, -50}, {0, 0, 800, 600}};
        RecordingDevice recording({seed % 2 == 0 ? 96 : 0, 96});
        SvgDevice svg({800, 600});
        MetaFile file(1, 1, nullptr);
        CDC recorded(recording);
        CDC written(svg);
        CDC nowhere;
        CDC* const contexts[] = {&recorded, &written, &file, &nowhere};
        for (CDC* dc : contexts) {
            dc->SetTextAlign(TA_RIGHT | TA_BOTTOM);
            graph->Draw(dc, rects[seed % std::size(rects)]);
            ASSERT_EQ(dc->GetTextAlign(), TA_RIGHT | TA_BOTTOM);
            ASSERT_EQ(dc->GetCurrentFont(), CGdiObject::FromStock(SYSTEM_FONT));
        }
        svg.Finish();
        file.Close();
        while (graph->GetSectionCount() > 0) graph->RemoveSectionAt(0);
        EXPECT_EQ(graph->GetDesignHeight(), 0);
    }
}

}  // namespace
