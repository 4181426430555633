#include "graphs/profile/CircleChart.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "graphs/common/DeviceUnits.h"
#include "graphs/profile/detail/ChartLabel.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

namespace tessalink {

namespace {

constexpr double cMillimetersPerInch = 25.4;
/// 100 points in inches.
constexpr double c100Points = 1.3888888888888888;
constexpr int cPoints = 100;

/// Without a title the sheet is lower by this, in inches.
constexpr double cNoTitle = 0.5;
constexpr double cTitleGapPoints = 2;
constexpr int cTitleLines = 3;

/// Between the circle and the texts around it, and between texts, in inches.
constexpr double cTextGap = 0.05;
/// A symbol on the rim reaches out by so much of its size.
constexpr double cSymbolReach = 0.6;
/// Half of a point, in inches.
constexpr double cLineInches = 0.5 / cPointsPerInch;
/// The square between the circle and the corner of the square around it, by the diameter.
constexpr double cCornerRoom = (1 - std::numbers::sqrt2 / 2) / 2;
/// How often, and by which part of a font's height, a text is moved to get out of the way.
constexpr int cMaxMoves = 64;
constexpr double cMove = 0.25;

/// By so much places are off that were rounded to whole units, and sums of fractions.
constexpr double cHalfUnit = 0.5 + 1e-6;

constexpr double cRadians = std::numbers::pi / 180;
/// Pictures of more inches to an inch of the design are none.
constexpr double cMaxScale = 1e6;

double pixelsPerInch(const CDC& dc, int resolution, int size) {
    return dc.GetDeviceCaps(resolution) * cMillimetersPerInch / dc.GetDeviceCaps(size);
}

double scaleOf(int length, int from, int to) {
    return from == to ? 0 : length / (static_cast<double>(to) - from);
}

/// Calls `visit` for start + skip * step, start + (skip + 1) * step ... up to `last`: for each, or,
/// when there are more than `limit`, for each second, each third ... of the steps.
template <class Visit>
void forSteps(int start, int skip, std::int64_t last, int step, int limit, Visit visit) {
    if (step <= 0) return;
    const std::int64_t count = std::max<std::int64_t>(0, (last - start) / step + 1 - skip);
    const std::int64_t wide = step * std::max<std::int64_t>(1, (count + limit - 1) / limit);
    for (std::int64_t at = start + skip * wide; at <= last; at += wide) visit(static_cast<int>(at));
}

/// How far out, by the half axes rx and ry of an ellipse, the middle of a box has to lie in a
/// direction so that no corner is within the ellipse.
double outsideOf(double rx, double ry, CSize box, double cosine, double sine) {
    const auto isOutside = [&](double distance) {
        const double x = std::max(0.0, std::abs(distance * cosine) - box.cx / (2 * rx));
        const double y = std::max(0.0, std::abs(distance * sine) - box.cy / (2 * ry));
        return x * x + y * y >= 1;
    };
    double inside = 1;
    double outside = 1 + box.cx / rx + box.cy / ry;
    constexpr int halvings = 24;
    for (int i = 0; i < halvings; ++i) {
        const double middle = (inside + outside) / 2;
        (isOutside(middle) ? outside : inside) = middle;
    }
    return outside;
}

CRect boxAround(double x, double y, CSize size) {
    return CRect(CPoint(toDevice(x - size.cx / 2.0), toDevice(y - size.cy / 2.0)), size);
}

}  // namespace

/// The texts of a corner, and on which side of the middle it lies: -1 for left and top.
struct CircleChart::Corner {
    int text;
    int xSide, ySide;
};

/// A move, in device units.
struct CircleChart::Step {
    double x, y;
};

CircleChart::~CircleChart() = default;

const CircleChart::circle_info& CircleChart::GetCircle(int index) const {
    if (index < 0 || index >= GetCircleCount()) AfxThrowInvalidArgException();
    return m_circles[static_cast<std::size_t>(index)];
}

void CircleChart::Draw(CDC* dc, const CRect& rect) {
    if (dc == nullptr) return;
    const RestoredState state(*dc);
    m_taken.clear();
    recalc_layout(dc, rect);
    if (!is_drawable()) return;
    dc->SetTextAlign(TA_LEFT | TA_TOP);
    dc->SetTextColor(cBlack);
    draw_title(dc, rect);
    draw_circumplex(dc);
    draw_axis_text(dc);
    draw_style_texts(dc, rect);
    draw_data(dc, rect);
}

void CircleChart::reserve_legend(CDC*, double&) {}
void CircleChart::draw_sectors(CDC*) {}
void CircleChart::draw_data(CDC*, const CRect&) {}

// Layout.

bool CircleChart::has_scale() const {
    return m_scaleFactor > 0 && m_scaleFactor < cMaxScale;
}

bool CircleChart::is_drawable() const {
    return has_scale() && m_plot.Width() > 0 && m_plot.Height() > 0;
}

bool CircleChart::has_title() const {
    return has_text(TitleText) || has_text(TitleText + 1) || has_text(TitleText + 2);
}

FittedLabel CircleChart::title_line(CDC& dc, int line) const {
    return {dc, load_text(TitleText + line), font_height(title_size(line)), m_typeface,
            sheet_width()};
}

int CircleChart::title_size(int line) const {
    return line == 0 ? m_settings.titleSize : m_settings.subtitleSize;
}

double CircleChart::title_height(CDC& dc) const {
    double points = 0;
    bool isFirst = true;
    for (int line = 0; line < cTitleLines; ++line) {
        if (!has_text(TitleText + line)) continue;
        const int lines = title_line(dc, line).LineCount();
        points += (isFirst ? 0 : cTitleGapPoints) + 1.0 * lines * title_size(line);
        isFirst = false;
    }
    return points * m_scaleFactor / cPointsPerInch;
}

void CircleChart::recalc_layout(CDC* dc, const CRect& rect) {
    m_horzPixelsPerInch = pixelsPerInch(*dc, HORZRES, HORZSIZE);
    m_vertPixelsPerInch = pixelsPerInch(*dc, VERTRES, VERTSIZE);
    const double width = rect.Width() / m_horzPixelsPerInch;
    const double height = rect.Height() / m_vertPixelsPerInch;
    const double designHeight = m_design.height - (has_title() ? 0 : cNoTitle);
    m_scaleFactor =
        std::min(width / (m_design.width + m_design.legendColumn), height / designHeight);
    m_pixelsPer100Points = toDevice(m_scaleFactor * c100Points * m_vertPixelsPerInch);
    m_rect = rect;
    m_plot = {};
    if (!has_scale()) return;

    const double titleHeight = title_height(*dc);
    double plotHeight =
        height - titleHeight - (m_design.topPadding + m_design.bottomPadding) * m_scaleFactor;
    reserve_legend(dc, plotHeight);
    const double plotWidth =
        width - (2 * m_design.sideMargin + m_design.legendColumn) * m_scaleFactor;
    const double side =
        std::min(m_design.maxPlotSize * m_scaleFactor, std::min(plotWidth, plotHeight));

    m_plot.left =
        rect.left + toInt((m_scaleFactor * m_design.width - side) * 0.5 * m_horzPixelsPerInch);
    m_plot.top =
        rect.top + toInt((m_design.topPadding * m_scaleFactor + titleHeight) * m_vertPixelsPerInch);
    m_plot.right = m_plot.left + toInt(side * m_horzPixelsPerInch);
    m_plot.bottom = m_plot.top + toInt(side * m_vertPixelsPerInch);
    m_xScale = scaleOf(m_plot.Width(), m_settings.xMin, m_settings.xMax);
    m_yScale = scaleOf(m_plot.Height(), m_settings.yMin, m_settings.yMax);
}

int CircleChart::dev_x(double x) const {
    return toDevice((x - m_settings.xMin) * m_xScale + m_plot.left);
}

int CircleChart::dev_y(double y) const {
    return toDevice((m_settings.yMax - y) * m_yScale + m_plot.top);
}

int CircleChart::log_in_to_dev_h(double inches) const {
    return toDevice(m_scaleFactor * inches * m_horzPixelsPerInch);
}

int CircleChart::log_in_to_dev_v(double inches) const {
    return toDevice(m_scaleFactor * inches * m_vertPixelsPerInch);
}

int CircleChart::font_height(int points) const {
    return std::max(1, toInt(static_cast<double>(points) * m_pixelsPer100Points / cPoints));
}

int CircleChart::line_width() const {
    return std::max(1, log_in_to_dev_v(cLineInches));
}

int CircleChart::sheet_width() const {
    return log_in_to_dev_h(m_design.width);
}

CPoint CircleChart::center() const {
    return m_plot.CenterPoint();
}

CSize CircleChart::radii() const {
    return {m_plot.Width() / 2, m_plot.Height() / 2};
}

Polar CircleChart::data_place(int x, int y) const {
    // The middle of an odd length lies between two units.
    const auto offset = [](int at, int start, int end, int middle) {
        return at == middle ? 0 : at - (1.0 * start + end) / 2;
    };
    return toPolar({offset(x, m_plot.left, m_plot.right, center().x) / m_xScale,
                    -offset(y, m_plot.top, m_plot.bottom, center().y) / m_yScale});
}

double CircleChart::data_rounding() const {
    return cHalfUnit / std::min(std::abs(m_xScale), std::abs(m_yScale));
}

CPoint CircleChart::polar_point(double angle, double length) const {
    const double rx = std::min(std::abs(length * m_xScale), static_cast<double>(radii().cx));
    const double ry = std::min(std::abs(length * m_yScale), static_cast<double>(radii().cy));
    return {toDevice(center().x + rx * std::cos(angle * cRadians)),
            toDevice(center().y - ry * std::sin(angle * cRadians))};
}

// Title.

void CircleChart::draw_title(CDC* dc, const CRect& rect) {
    const int width = sheet_width();
    double y = rect.top;
    for (int line = 0; line < cTitleLines; ++line) {
        if (!has_text(TitleText + line)) continue;
        const FittedLabel label = title_line(*dc, line);
        const CRect box(CPoint(rect.left + (width - label.Width()) / 2, toDevice(y)), label.Size());
        label.Print(box.left, box.top, 0.5);
        m_taken.push_back(box);
        y += label.LineCount() * font_height(title_size(line)) +
             cTitleGapPoints * m_pixelsPer100Points / cPoints;
    }
}

// The circle.

void CircleChart::draw_circumplex(CDC* dc) {
    draw_circles(dc, center());
    draw_sectors(dc);
    if (m_gridShown != 0 && m_settings.gridDotStep != 0 &&
        m_settings.gridDotStep != m_settings.labelStep) {
        draw_grid(dc, m_settings.xMin, m_settings.xMax, m_settings.yMin, m_settings.yMax);
    }
    draw_outline(*dc);
    if (m_settings.labelStep != 0) draw_labels(dc);
}

void CircleChart::draw_outline(CDC& dc) {
    CPen pen(PS_SOLID, line_width(), cBlack);
    const Selected selectedPen(dc, &pen);
    const Selected hollow(dc, static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH)));
    dc.Ellipse(&m_plot);
}

void CircleChart::draw_circles(CDC* dc, const CPoint& center) {
    CPen pen(PS_SOLID, line_width(), cBlack);
    auto* const noPen = static_cast<CPen*>(CGdiObject::FromStock(NULL_PEN));
    for (const circle_info& circle : m_circles) {
        CBrush brush;
        if (circle.filled != 0) brush.CreateSolidBrush(circle.color);
        auto* const white = static_cast<CBrush*>(CGdiObject::FromStock(WHITE_BRUSH));
        const Selected filling(*dc, circle.filled != 0 ? &brush : white);
        const int rx = toInt(circle.radius * m_xScale);
        const int ry = toInt(circle.radius * m_yScale);
        // The outline of the whole, which may be one unit larger, is drawn later.
        const bool isRim = rx == radii().cx && ry == radii().cy;
        const Selected line(*dc, isRim ? noPen : &pen);
        dc->Ellipse(center.x - rx, center.y - ry, center.x + rx, center.y + ry);
    }
}

void CircleChart::draw_dots(CDC& dc, bool isVertical, int at, int first, int end) {
    const int size = m_scaleFactor >= 1 ? toInt(m_scaleFactor) : 1;
    auto* const black = static_cast<CBrush*>(CGdiObject::FromStock(BLACK_BRUSH));
    const CPoint middle = center();
    const CSize r = radii();
    const int fixed = isVertical ? dev_x(at) : dev_y(at);
    const double offset = isVertical ? (fixed - middle.x) / static_cast<double>(r.cx)
                                     : (fixed - middle.y) / static_cast<double>(r.cy);
    if (!(std::abs(offset) < 1)) return;
    const double halfChord = (isVertical ? r.cy : r.cx) * std::sqrt(1 - offset * offset);
    forSteps(first, 0, end, m_settings.gridDotStep, cMaxGridDots, [&](int value) {
        const int along = isVertical ? dev_y(value) : dev_x(value);
        if (std::abs(along - (isVertical ? middle.y : middle.x)) > halfChord) return;
        const CPoint dot = isVertical ? CPoint(fixed, along) : CPoint(along, fixed);
        const CRect box(CPoint(dot.x - size / 2, dot.y - size / 2), CSize(size, size));
        dc.FillRect(&box, black);
    });
}

void CircleChart::draw_grid(CDC* dc, int x0, int x1, int y0, int y1) {
    const int step = m_settings.labelStep;
    forSteps(x0, 1, std::int64_t{x1} - 1, step, cMaxGridLines,
             [&](int x) { draw_dots(*dc, true, x, y0, y1); });
    forSteps(y0, 1, std::int64_t{y1} - 1, step, cMaxGridLines,
             [&](int y) { draw_dots(*dc, false, y, x0, x1); });
}

void CircleChart::draw_label(CDC* dc, int value, int x, int y, int& color) {
    CString text;
    text.Format("%d", value);
    const CRect box = boxAround(x, y, dc->GetTextExtent(text));
    update_bk_color(dc, x, y, color);
    dc->ExtTextOut(box.left, box.top, 0, nullptr, text, nullptr);
    m_taken.push_back(box);
}

void CircleChart::draw_labels(CDC* dc) {
    const LabelFonts fonts(*dc, font_height(m_settings.labelSize), m_typeface);
    const RestoredState state(*dc);
    dc->SetBkMode(OPAQUE);
    dc->SetBkColor(cWhite);
    int color = cWhite;
    const CPoint middle = center();
    forSteps(m_settings.xMin, 0, m_settings.xMax, m_settings.labelStep, cMaxLabels,
             [&](int x) { draw_label(dc, x, dev_x(x), middle.y, color); });
    forSteps(m_settings.yMin, 0, m_settings.yMax, m_settings.labelStep, cMaxLabels,
             [&](int y) { draw_label(dc, y, middle.x, dev_y(y), color); });
}

void CircleChart::update_bk_color(CDC* dc, int x, int y, int& color) {
    const double length = data_place(x, y).length;
    const auto covers = [&](const circle_info& circle) {
        return std::isfinite(length) && length <= std::abs(circle.radius) + data_rounding();
    };
    const auto topmost = std::find_if(m_circles.rbegin(), m_circles.rend(), covers);
    const bool isFilled = topmost != m_circles.rend() && topmost->filled != 0;
    const COLORREF under = isFilled ? topmost->color : cWhite;
    color = static_cast<int>(under);
    dc->SetBkColor(under);
}

// The texts around the circle.

/// What is left free outside the circle for numbers and symbols on its rim.
CSize CircleChart::rim_gap(CDC& dc) const {
    const double free = cTextGap + m_design.maxSymbolSize * cSymbolReach;
    CSize gap(log_in_to_dev_h(free), log_in_to_dev_v(free));
    if (m_settings.labelStep <= 0) return gap;
    LabelFonts fonts(dc, font_height(m_settings.labelSize), m_typeface);
    const auto width = [&](int value) {
        CString text;
        text.Format("%d", value);
        return fonts.Width(text);
    };
    const int widest = std::max(width(m_settings.xMin), width(m_settings.xMax));
    gap.cx = std::max<LONG>(gap.cx, widest / 2 + log_in_to_dev_h(cTextGap));
    gap.cy = std::max<LONG>(gap.cy, fonts.Height() / 2 + log_in_to_dev_v(cTextGap));
    return gap;
}

bool CircleChart::is_free(const CRect& place) const {
    const bool isInside = place.left >= m_rect.left && place.top >= m_rect.top &&
                          place.right <= m_rect.right && place.bottom <= m_rect.bottom;
    return isInside && std::none_of(m_taken.begin(), m_taken.end(), [&](const CRect& other) {
               return CRect().IntersectRect(&place, &other);
           });
}

/// Moves the place by as few of the steps as make it free, in one of the directions. It stays when
/// none does.
void CircleChart::move_out(CRect& place, std::span<const Step> steps) const {
    for (int i = 0; i <= cMaxMoves; ++i) {
        for (const Step& step : steps) {
            CRect moved = place;
            moved.OffsetRect(toInt(i * step.x), toInt(i * step.y));
            if (!is_free(moved)) continue;
            place = moved;
            return;
        }
    }
}

void CircleChart::draw_rim_text(CDC* dc, const CString& text, double angle, int points) {
    if (text.IsEmpty()) return;
    const double cosine = std::cos(angle * cRadians);
    const double sine = std::sin(angle * cRadians);
    const CSize gap = rim_gap(*dc);
    const double rx = radii().cx + gap.cx;
    const double ry = radii().cy + gap.cy;
    const int height = font_height(points);

    // Behind the tangent of the circle the box ends within the sheet; it is moved inward from
    // there.
    const double c = std::abs(cosine);
    const double room = sheet_width() / 2.0 - rx * c - height * c * std::abs(sine);
    const FittedLabel label(*dc, text, height, m_typeface,
                            std::max(1, toInt(2 * room / (1 + c * c))));
    const double outward = outsideOf(rx, ry, label.Size(), cosine, sine);
    CRect place = boxAround(center().x + rx * outward * cosine, center().y - ry * outward * sine,
                            label.Size());
    const double step = height * cMove;
    move_out(place, std::array{Step{step * cosine, -step * sine}, Step{0, step}, Step{0, -step}});
    label.Print(place.left, place.top, (1 - cosine) / 2);
    m_taken.push_back(place);
}

void CircleChart::draw_axis_text(CDC* dc) {
    struct Side {
        int text;
        double angle;
    };
    constexpr std::array<Side, 4> sides = {
        {{NorthText, 90}, {SouthText, 270}, {EastText, 0}, {WestText, 180}}};
    for (const Side& side : sides) {
        if (!has_text(side.text)) continue;
        draw_rim_text(dc, load_text(side.text), side.angle, m_settings.axisTextSize);
    }
}

/// The lines stand one below the other, centered, between the sheet's edge and the circle.
void CircleChart::draw_corner(CDC& dc, const Corner& corner) {
    const int inH =
        std::min(log_in_to_dev_h(m_design.styleMarginH), toInt(m_plot.Width() * cCornerRoom));
    const int inV =
        std::min(log_in_to_dev_v(m_design.styleMarginV), toInt(m_plot.Height() * cCornerRoom));
    const int room = m_plot.left + inH - m_rect.left;
    std::vector<FittedLabel> lines;
    CSize size;
    for (int i = 0; i < static_cast<int>(m_settings.quadrantTextSizes.size()); ++i) {
        if (!has_text(corner.text + i)) continue;
        const int height = font_height(m_settings.quadrantTextSizes[static_cast<std::size_t>(i)]);
        lines.emplace_back(dc, load_text(corner.text + i), height,
                           i == 0 ? cArial : m_typeface.GetString(), room);
        size.cx = std::max<LONG>(size.cx, lines.back().Width());
        size.cy += lines.back().Height();
    }
    if (lines.empty()) return;
    CRect place(CPoint(corner.xSide < 0 ? m_plot.left + inH - size.cx : m_plot.right - inH,
                       corner.ySide < 0 ? m_plot.top + inV - size.cy : m_plot.bottom - inV),
                size);
    const double step = font_height(m_settings.quadrantTextSizes[0]) * cMove;
    move_out(place, std::array{Step{step * corner.xSide, 0}, Step{0, step * corner.ySide}});
    int y = place.top;
    for (const FittedLabel& line : lines) {
        line.Print(place.left + (size.cx - line.Width()) / 2, y, 0.5);
        y += line.Height();
    }
    m_taken.push_back(place);
}

void CircleChart::draw_style_texts(CDC* dc, const CRect&) {
    constexpr std::array<Corner, 4> corners = {{{NorthWestText, -1, -1},
                                                {NorthEastText, 1, -1},
                                                {SouthWestText, -1, 1},
                                                {SouthEastText, 1, 1}}};
    for (const Corner& corner : corners) draw_corner(*dc, corner);
}

}  // namespace tessalink
