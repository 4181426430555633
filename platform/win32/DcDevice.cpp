#include "platform/win32/DcDevice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>
#include <list>
#include <optional>
#include <utility>
#include <vector>

#include "platform/base/CInvalidArgException.h"
#include "platform/win32/detail/GdiHandle.h"
#include "platform/win32/detail/PlatformFonts.h"
#include "platform/win32/detail/PlatformText.h"
#include "platform/win32/detail/Scale.h"

namespace tessalink {

using detail::ContextHandle;
using detail::GdiHandle;
using detail::Scale;
using detail::Selection;

namespace {

constexpr double cMmPerInch = 25.4;

bool hasPen(const Paint& paint) {
    return paint.pen.lopnStyle != PS_NULL;
}

bool hasBrush(const Paint& paint) {
    return paint.brush.lbStyle != BS_NULL;
}

bool isThin(const LOGPEN& pen) {
    return pen.lopnWidth.x <= 1;
}

bool isDashed(const LOGPEN& pen) {
    return isThin(pen) && pen.lopnStyle >= PS_DASH && pen.lopnStyle <= PS_DASHDOTDOT;
}

// What a pen draws and leaves out in turns, in units.
std::vector<DWORD> dashesOf(const LOGPEN& pen, const Scale& scale) {
    static const std::array<std::vector<int>, 4> lengths = {
        {{18, 6}, {3, 3}, {9, 6, 3, 6}, {9, 3, 3, 3, 3, 3}}};
    std::vector<DWORD> dashes;
    for (const int length : lengths.at(pen.lopnStyle - PS_DASH)) {
        dashes.push_back(static_cast<DWORD>(scale.Length(length)));
    }
    return dashes;
}

GdiHandle<HPEN> makePen(const LOGPEN& pen, const Scale& scale) {
    if (pen.lopnStyle == PS_NULL) return GdiHandle<HPEN>(::CreatePen(PS_NULL, 0, 0));
    const int width = scale.Length(std::max<int>(pen.lopnWidth.x, 1));
    const LOGBRUSH ink = {BS_SOLID, pen.lopnColor, 0};
    if (width <= 1 || !isThin(pen)) {
        const UINT style =
            isThin(pen) || pen.lopnStyle == PS_INSIDEFRAME ? pen.lopnStyle : PS_SOLID;
        return GdiHandle<HPEN>(
            ::CreatePen(static_cast<int>(style), width > 1 ? width : 1, pen.lopnColor));
    }
    constexpr DWORD cKind = PS_GEOMETRIC | PS_ENDCAP_FLAT | PS_JOIN_MITER;
    if (!isDashed(pen)) {
        return GdiHandle<HPEN>(
            ::ExtCreatePen(cKind | PS_SOLID, static_cast<DWORD>(width), &ink, 0, nullptr));
    }
    const std::vector<DWORD> dashes = dashesOf(pen, scale);
    return GdiHandle<HPEN>(::ExtCreatePen(cKind | PS_USERSTYLE, static_cast<DWORD>(width), &ink,
                                          static_cast<DWORD>(dashes.size()), dashes.data()));
}

GdiHandle<HBRUSH> makeBrush(const LOGBRUSH& brush) {
    const LOGBRUSH wanted = {brush.lbStyle == BS_NULL ? static_cast<UINT>(BS_NULL) : brush.lbStyle,
                             brush.lbColor, brush.lbHatch};
    return GdiHandle<HBRUSH>(::CreateBrushIndirect(&wanted));
}

// The last few objects that were made from descriptions.
template <class Description, class Handle>
class Made {
public:
    template <class Make>
    Handle Get(const Description& description, Make make) {
        const auto known = std::find_if(m_made.begin(), m_made.end(),
                                        [&](const auto& one) { return one.first == description; });
        if (known != m_made.end()) return known->second.get();
        if (m_made.size() == cMost) m_made.pop_front();
        return m_made.emplace_back(description, make()).second.get();
    }

private:
    static constexpr std::size_t cMost = 32;

    std::list<std::pair<Description, GdiHandle<Handle>>> m_made;
};

struct SizedFace {
    LOGFONTA font;
    double em;
    bool operator==(const SizedFace& other) const { return font == other.font && em == other.em; }
};

struct Objects {
    Made<std::pair<LOGPEN, int>, HPEN> pens;
    Made<LOGBRUSH, HBRUSH> brushes;
    Made<SizedFace, HFONT> fonts;
};

// Made once for a thread: a window that paints itself for every key needs the same few ones.
Objects& objects() {
    static thread_local Objects made;
    return made;
}

GdiHandle<HRGN> makeRegion(const Region& region, const Scale& scale, const POINT& offset) {
    const std::size_t count = region.Rects().size();
    std::vector<BYTE> bytes(sizeof(RGNDATAHEADER) + count * sizeof(RECT));
    RGNDATAHEADER header = {};
    header.dwSize = sizeof(header);
    header.iType = RDH_RECTANGLES;
    header.nCount = static_cast<DWORD>(count);
    std::memcpy(bytes.data(), &header, sizeof(header));
    BYTE* place = bytes.data() + sizeof(header);
    for (const RECT& rect : region.Rects()) {
        CRect edges = scale.Edges(rect);
        edges.OffsetRect(offset.x, offset.y);
        std::memcpy(place, static_cast<const RECT*>(edges), sizeof(RECT));
        place += sizeof(RECT);
    }
    return GdiHandle<HRGN>(::ExtCreateRegion(nullptr, static_cast<DWORD>(bytes.size()),
                                             reinterpret_cast<const RGNDATA*>(bytes.data())));
}

DeviceCaps capsFor(int width, int height, int dpi) {
    const auto millimeters = [dpi](int length) {
        return static_cast<int>(std::lround(length * cMmPerInch / dpi));
    };
    DeviceCaps caps;
    caps.dpiX = caps.dpiY = dpi;
    caps.width = width;
    caps.height = height;
    caps.widthMm = millimeters(width);
    caps.heightMm = millimeters(height);
    return caps;
}

class PlatformMetrics final : public TextMetricsSource {
public:
    const FaceMetrics& MetricsOf(const LOGFONTA& font) const override {
        return detail::platformMetrics(font);
    }
};

}  // namespace

// The platform's context and what is selected in it.
class DcDevice::Context {
public:
    Context(HDC context, int dpi)
        : m_dc(context), m_scale(dpi), m_isScaled(dpi > 0), m_saved(::SaveDC(context)) {
        if (m_saved == 0) AfxThrowInvalidArgException();
        ::SetMapMode(m_dc, MM_TEXT);
        ::SetWindowOrgEx(m_dc, 0, 0, nullptr);
        ::GetViewportOrgEx(m_dc, &m_origin);
        ::SetTextAlign(m_dc, TA_LEFT | TA_BASELINE | TA_NOUPDATECP);
        ::SetStretchBltMode(m_dc, COLORONCOLOR);
        m_own.reset(::CreateRectRgn(0, 0, 0, 0));
        m_isClipped = ::GetClipRgn(m_dc, m_own.get()) == 1;
    }
    ~Context() { ::RestoreDC(m_dc, m_saved); }
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    HDC Dc() const { return m_dc; }
    const Scale& Units() const { return m_scale; }
    // Whether units are those of a screen.
    bool IsScaled() const { return m_isScaled; }

    // Shows nothing outside the region, null for no region, and outside the rectangle. Returns
    // whether anything can show.
    bool Clip(const Region* region, const RECT* rect = nullptr) {
        std::optional<Region> wanted;
        if (region != nullptr) wanted = *region;
        if (rect != nullptr) wanted = wanted ? wanted->And(Region(*rect)) : Region(*rect);
        if (wanted != m_clip) {
            ::SelectClipRgn(m_dc, m_isClipped ? m_own.get() : nullptr);
            if (wanted && !wanted->IsEmpty()) {
                ::ExtSelectClipRgn(m_dc, makeRegion(*wanted, m_scale, m_origin).get(), RGN_AND);
            }
            m_clip = std::move(wanted);
        }
        return !m_clip || !m_clip->IsEmpty();
    }

    // Pen, brush and modes, for a shape.
    void Use(const Paint& paint) {
        UsePen(paint.pen);
        UseBrush(paint.brush);
        ::SetBkMode(m_dc, paint.opaque ? OPAQUE : TRANSPARENT);
        ::SetBkColor(m_dc, paint.background);
        ::SetPolyFillMode(m_dc, paint.fillMode);
    }
    void UsePen(const LOGPEN& pen) {
        const std::pair<LOGPEN, int> key(pen, m_scale.Dpi());
        ::SelectObject(m_dc, objects().pens.Get(key, [&] { return makePen(pen, m_scale); }));
    }
    HBRUSH UseBrush(const LOGBRUSH& brush) {
        const HBRUSH made = objects().brushes.Get(brush, [&] { return makeBrush(brush); });
        ::SelectObject(m_dc, made);
        return made;
    }
    // Nothing outlines, or fills, what follows.
    void Without(int stockObject) { ::SelectObject(m_dc, ::GetStockObject(stockObject)); }

    void Fill(const Paint& paint, std::span<const RECT> rects) {
        std::vector<RECT> edges;
        edges.reserve(rects.size());
        for (const RECT& rect : rects) edges.push_back(m_scale.Edges(rect));
        FillPixels(paint, edges);
    }
    void FillPixels(const Paint& paint, std::span<const RECT> rects) {
        ::SetBkMode(m_dc, paint.opaque ? OPAQUE : TRANSPARENT);
        ::SetBkColor(m_dc, paint.background);
        const HBRUSH brush = UseBrush(paint.brush);
        for (const RECT& rect : rects) ::FillRect(m_dc, &rect, brush);
    }
    void Fill(const RECT& rect, COLORREF color) {
        Paint paint = {};
        paint.brush = {BS_SOLID, color, 0};
        Fill(paint, {&rect, 1});
    }

    std::vector<POINT> Middles(std::span<const POINT> points) const {
        std::vector<POINT> middles;
        middles.reserve(points.size());
        for (const POINT& point : points) {
            middles.push_back({m_scale.Middle(point.x), m_scale.Middle(point.y)});
        }
        return middles;
    }

    HFONT FontFor(const TextRun& run) const {
        const double em = run.sizedFont->Em() * m_scale.Factor();
        return objects().fonts.Get(SizedFace{*run.font, em},
                                   [&] { return detail::makePlatformFont(*run.font, em); });
    }

private:
    HDC m_dc;
    Scale m_scale;
    bool m_isScaled;
    int m_saved;
    POINT m_origin = {};
    GdiHandle<HRGN> m_own;  // what the context clipped before
    bool m_isClipped = false;
    std::optional<Region> m_clip;
};

const TextMetricsSource& platformTextMetrics() {
    static const PlatformMetrics metrics;
    return metrics;
}

DeviceCaps capsOf(HDC context) {
    const auto told = [context](int index) { return ::GetDeviceCaps(context, index); };
    DeviceCaps caps;
    caps.dpiX = std::max(1, told(LOGPIXELSX));
    caps.dpiY = std::max(1, told(LOGPIXELSY));
    caps.width = told(HORZRES);
    caps.height = told(VERTRES);
    caps.widthMm = told(HORZSIZE);
    caps.heightMm = told(VERTSIZE);
    caps.isPrinter = told(TECHNOLOGY) == DT_RASPRINTER;
    return caps;
}

DcDevice::DcDevice(HDC context, int dpi) : m_context(std::make_unique<Context>(context, dpi)) {}

DcDevice::DcDevice(HDC context, int width, int height, int dpi)
    : m_caps(capsFor(width, height, dpi)), m_context(std::make_unique<Context>(context, 0)) {}

DcDevice::~DcDevice() = default;

const DeviceCaps& DcDevice::Caps() const {
    if (m_caps) return *m_caps;
    m_caps = capsOf(m_context->Dc());
    const Scale& scale = m_context->Units();
    if (!m_context->IsScaled()) return *m_caps;
    m_caps = capsFor(scale.UnitEdge(m_caps->width), scale.UnitEdge(m_caps->height),
                     detail::cUnitsPerInch);
    return *m_caps;
}

const TextMetricsSource& DcDevice::TextMetrics() const {
    return platformTextMetrics();
}

// A line of whole units.
void DcDevice::DrawLine(const Paint& paint, POINT from, POINT to) {
    const std::array<POINT, 2> ends = {from, to};
    DrawPolyline(paint, ends);
}

void DcDevice::DrawPolyline(const Paint& paint, std::span<const POINT> points) {
    if (points.size() < 2 || !hasPen(paint) || !m_context->Clip(paint.clip)) return;
    const bool isStraight =
        points.size() == 2 && (points[0].x == points[1].x || points[0].y == points[1].y);
    if (isStraight && isThin(paint.pen) && !isDashed(paint.pen)) {
        // Where a unit is several pixels, its lines end at its edges.
        CRect line(points[0], points[1]);
        const bool isBack = line.right < line.left || line.bottom < line.top;
        line.NormalizeRect();
        if (points[0].y == points[1].y) {
            if (isBack) line.OffsetRect(1, 0);
            line.bottom = wrapAdd(line.top, 1);
        } else {
            if (isBack) line.OffsetRect(0, 1);
            line.right = wrapAdd(line.left, 1);
        }
        return m_context->Fill(line, paint.pen.lopnColor);
    }
    m_context->Use(paint);
    const std::vector<POINT> middles = m_context->Middles(points);
    ::Polyline(m_context->Dc(), middles.data(), static_cast<int>(middles.size()));
}

void DcDevice::DrawPolygon(const Paint& paint, std::span<const POINT> points) {
    if (points.empty() || !m_context->Clip(paint.clip)) return;
    m_context->Use(paint);
    const std::vector<POINT> middles = m_context->Middles(points);
    ::Polygon(m_context->Dc(), middles.data(), static_cast<int>(middles.size()));
}

void DcDevice::DrawRectangle(const Paint& paint, const RECT& rect) {
    if (!m_context->Clip(paint.clip)) return;
    const Scale& scale = m_context->Units();
    const CRect whole(rect);
    if (hasPen(paint) && isThin(paint.pen) && whole.Width() == 1 && whole.Height() == 1) {
        return m_context->Fill(rect, paint.pen.lopnColor);
    }
    if (scale.IsOne() || !isThin(paint.pen) || isDashed(paint.pen)) {
        m_context->Use(paint);
        const CRect edges = scale.Edges(rect);
        ::Rectangle(m_context->Dc(), edges.left, edges.top, edges.right, edges.bottom);
        return;
    }
    CRect inside(rect);
    if (hasPen(paint)) {
        inside.DeflateRect(1, 1);
    } else {
        inside.right = wrapSub(inside.right, 1);
        inside.bottom = wrapSub(inside.bottom, 1);
    }
    const RECT filling = inside;
    if (hasBrush(paint) && !inside.IsRectEmpty()) m_context->Fill(paint, {&filling, 1});
    if (!hasPen(paint)) return;
    const Region frame = Region(rect).Minus(Region(filling));
    for (const RECT& edge : frame.Rects()) m_context->Fill(edge, paint.pen.lopnColor);
}

void DcDevice::DrawEllipse(const Paint& paint, const RECT& rect) {
    if (!m_context->Clip(paint.clip)) return;
    CRect edges = m_context->Units().Edges(rect);
    if (!hasPen(paint)) {
        // Not all versions of the platform leave out the same pixels.
        edges.right = wrapSub(edges.right, 1);
        edges.bottom = wrapSub(edges.bottom, 1);
        if (hasBrush(paint)) m_context->FillPixels(paint, Region::OfEllipse(edges).Rects());
        return;
    }
    m_context->Use(paint);
    ::Ellipse(m_context->Dc(), edges.left, edges.top, edges.right, edges.bottom);
}

void DcDevice::FillRectangle(const Paint& paint, const RECT& rect) {
    if (hasBrush(paint) && m_context->Clip(paint.clip)) m_context->Fill(paint, {&rect, 1});
}

void DcDevice::FillRegion(const Paint& paint, const Region& region) {
    if (hasBrush(paint) && m_context->Clip(paint.clip)) m_context->Fill(paint, region.Rects());
}

void DcDevice::SetPixel(const Paint& paint, POINT point, COLORREF color) {
    if (!m_context->Clip(paint.clip)) return;
    m_context->Fill({point.x, point.y, wrapAdd(point.x, 1), wrapAdd(point.y, 1)}, color);
}

void DcDevice::DrawText(const TextRun& run) {
    if (!m_context->Clip(run.clip, run.isClipped ? &run.clipRect : nullptr)) return;
    if (run.hasBackground) m_context->Fill(run.background, run.backgroundColor);
    const Scale& scale = m_context->Units();
    const int left = scale.Edge(run.origin.x);
    std::wstring text;
    std::vector<int> advances;
    const auto place = [&](std::size_t index) {
        return scale.Edge(wrapAdd(run.origin.x, run.positions[index])) - left;
    };
    for (std::size_t i = 0; i < run.text.size(); ++i) {
        text += detail::shownCharacter(*run.font, run.text[i]);
        advances.push_back(place(i + 1) - place(i));
    }
    ::SelectObject(m_context->Dc(), m_context->FontFor(run));
    ::SetBkMode(m_context->Dc(), TRANSPARENT);
    ::SetTextColor(m_context->Dc(), run.color);
    ::ExtTextOutW(m_context->Dc(), left, scale.Edge(run.origin.y), 0, nullptr, text.data(),
                  static_cast<UINT>(text.size()), advances.data());
}

}  // namespace tessalink
