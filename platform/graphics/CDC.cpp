#include "platform/graphics/CDC.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

IMPLEMENT_DYNAMIC(CDC, CObject)

using tessalink::DeviceCaps;
using tessalink::DrawingDevice;
using tessalink::Paint;
using tessalink::Region;
using tessalink::SizedFont;
using tessalink::TextRun;

namespace {

constexpr UINT cVerticalAlign = TA_BASELINE;  // all bits of the vertical part
constexpr LOGPEN cNoPen = {PS_NULL, {}, cBlack};
constexpr LOGBRUSH cNoBrush = {BS_NULL, cBlack, 0};

template <class Object>
Object* stock(int index) {
    return static_cast<Object*>(CGdiObject::FromStock(index));
}

std::string_view viewOf(const char* text, int count) {
    if (text == nullptr) return {};
    return {text, count < 0 ? std::strlen(text) : static_cast<std::size_t>(count)};
}

int kindOf(const Region& region) {
    if (region.IsEmpty()) return NULLREGION;
    return region.Rects().size() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

// Everything that a device can show.
Region wholePlane() {
    constexpr int far = 1 << 26;
    return Region({-far, -far, far, far});
}

// The text without its prefixes, and where the character stands that the last one marks.
std::pair<std::string, std::size_t> withoutPrefixes(std::string_view text) {
    std::string result;
    std::size_t marked = std::string::npos;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&') {
            if (++i == text.size()) break;
            if (text[i] != '&') marked = result.size();
        }
        result += text[i];
    }
    return {result, marked};
}

// The width of a line as it is shown.
int widthOfLine(std::string_view line, UINT format, const SizedFont& font) {
    const bool plain = (format & DT_NOPREFIX) != 0 || line.find('&') == std::string_view::npos;
    return font.WidthOf(plain ? line : withoutPrefixes(line).first);
}

bool endsLine(std::string_view text, std::size_t at) {
    return text.substr(at).starts_with('\n') || text.substr(at).starts_with("\r\n");
}

// The blank at which a line is cut that is wider than there is room: the last one up to which it
// fits, or the first. None when the line fits, or has no blank. What lies behind is not looked at.
std::size_t cutOf(std::string_view text, UINT format, const SizedFont& font, int room) {
    std::size_t blank = std::string_view::npos;
    bool isMarked = (format & DT_NOPREFIX) != 0;
    std::uint64_t width = 0;
    for (std::size_t i = 0; i < text.size() && !endsLine(text, i); ++i) {
        if (text[i] == ' ') blank = i;
        if (text[i] == '&' && !isMarked) {
            isMarked = true;
            continue;
        }
        isMarked = (format & DT_NOPREFIX) != 0;
        width += font.Advance(text[i]);
        if (blank != std::string_view::npos && font.Position(width) > room) return blank;
    }
    return std::string_view::npos;
}

// Cuts the next line off a text: up to a line end, or to what fits into the width.
std::string_view takeLine(std::string_view& text, UINT format, const SizedFont& font, int width) {
    const bool single = (format & DT_SINGLELINE) != 0;
    std::size_t end = std::string_view::npos;
    if ((format & DT_WORDBREAK) != 0 && !single) end = cutOf(text, format, font, width);
    const bool isCut = end != std::string_view::npos;
    if (!isCut && !single) end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (!isCut && end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

}  // namespace

void CDC::AttachDevice(DrawingDevice* device) {
    m_device = device;
    m_attributes = nullptr;
    m_saved.clear();
    m_state = State();
    m_state.pen = stock<CPen>(BLACK_PEN);
    m_state.brush = stock<CBrush>(WHITE_BRUSH);
    m_state.font = stock<CFont>(SYSTEM_FONT);
    forget_font();
}

void CDC::SetAttribDevice(DrawingDevice* device) {
    m_attributes = device;
    forget_font();
}

BOOL CDC::DeleteDC() {
    const BOOL was = m_device != nullptr;
    AttachDevice(nullptr);
    return was;
}

int CDC::GetDeviceCaps(int index) const {
    const DrawingDevice* device = attributes();
    if (device == nullptr) return 0;
    const DeviceCaps& caps = device->Caps();
    const std::array<std::pair<int, int>, 7> values = {
        {{LOGPIXELSX, caps.dpiX},
         {LOGPIXELSY, caps.dpiY},
         {HORZRES, caps.width},
         {VERTRES, caps.height},
         {HORZSIZE, caps.widthMm},
         {VERTSIZE, caps.heightMm},
         {TECHNOLOGY, caps.isPrinter ? DT_RASPRINTER : DT_RASDISPLAY}}};
    const auto value =
        std::find_if(values.begin(), values.end(), [&](const auto& v) { return v.first == index; });
    return value != values.end() ? value->second : 0;
}

int CDC::SaveDC() {
    if (m_device == nullptr) return 0;
    m_saved.push_back(m_state);
    m_device->SaveState();
    return static_cast<int>(m_saved.size());
}

BOOL CDC::RestoreDC(int savedState) {
    const int count = static_cast<int>(m_saved.size());
    const int wanted = savedState == -1 ? count : savedState;
    if (m_device == nullptr || wanted < 1 || wanted > count) return 0;
    m_state = m_saved[static_cast<std::size_t>(wanted - 1)];
    m_saved.resize(static_cast<std::size_t>(wanted - 1));
    m_device->RestoreState(count - wanted + 1);
    forget_font();
    return 1;
}

CGdiObject* CDC::SelectStockObject(int index) {
    CGdiObject* const object = CGdiObject::FromStock(index);
    if (CPen* pen = DYNAMIC_DOWNCAST(CPen, object)) return SelectObject(pen);
    if (CBrush* brush = DYNAMIC_DOWNCAST(CBrush, object)) return SelectObject(brush);
    return SelectObject(DYNAMIC_DOWNCAST(CFont, object));
}

CGdiObject* CDC::GetCurrentObject(UINT type) const {
    switch (type) {
        case OBJ_PEN:
            return m_state.pen;
        case OBJ_BRUSH:
            return m_state.brush;
        case OBJ_FONT:
            return m_state.font;
        default:
            return nullptr;
    }
}

int CDC::SetBkMode(int mode) {
    if (mode != OPAQUE && mode != TRANSPARENT) return 0;
    return std::exchange(m_state.backgroundMode, mode);
}

int CDC::SetPolyFillMode(int mode) {
    if (mode != ALTERNATE && mode != WINDING) return 0;
    return std::exchange(m_state.fillMode, mode);
}

CPoint CDC::SetViewportOrg(int x, int y) {
    return std::exchange(m_state.origin, CPoint(x, y));
}

CPoint CDC::OffsetViewportOrg(int dx, int dy) {
    return SetViewportOrg(m_state.origin + CSize(dx, dy));
}

int CDC::set_clip(Region clip) {
    if (m_device == nullptr) return ERRORREGION;
    m_state.clip = std::make_shared<const Region>(std::move(clip));
    return kindOf(*m_state.clip);
}

int CDC::IntersectClipRect(int left, int top, int right, int bottom) {
    const Region rect(device_rect({left, top, right, bottom}));
    return set_clip(m_state.clip ? m_state.clip->And(rect) : rect);
}

int CDC::IntersectClipRect(const RECT* rect) {
    if (rect == nullptr) return ERRORREGION;
    return IntersectClipRect(rect->left, rect->top, rect->right, rect->bottom);
}

int CDC::ExcludeClipRect(int left, int top, int right, int bottom) {
    const Region rect(device_rect({left, top, right, bottom}));
    return set_clip((m_state.clip ? *m_state.clip : wholePlane()).Minus(rect));
}

int CDC::ExcludeClipRect(const RECT* rect) {
    if (rect == nullptr) return ERRORREGION;
    return ExcludeClipRect(rect->left, rect->top, rect->right, rect->bottom);
}

int CDC::SelectClipRgn(const CRgn* region) {
    if (region == nullptr) {
        m_state.clip.reset();
        return m_device != nullptr ? SIMPLEREGION : ERRORREGION;
    }
    return region->IsNull() ? ERRORREGION : set_clip(region->Get());
}

int CDC::GetClipRgn(CRgn* region) const {
    if (!m_state.clip || region == nullptr) return 0;
    region->Assign(*m_state.clip);
    return 1;
}

int CDC::GetClipBox(RECT* box) const {
    const DrawingDevice* device = attributes();
    if (device == nullptr || box == nullptr) return ERRORREGION;
    const CRect whole(0, 0, device->Caps().width, device->Caps().height);
    CRect inside = m_state.clip ? m_state.clip->Bounds() : whole;
    inside.OffsetRect(-m_state.origin.x, -m_state.origin.y);
    *box = inside;
    return m_state.clip ? kindOf(*m_state.clip) : SIMPLEREGION;
}

BOOL CDC::RectVisible(const RECT* rect) const {
    if (m_device == nullptr || rect == nullptr) return 0;
    const Region wanted(device_rect(*rect));
    return !(m_state.clip ? wanted.And(*m_state.clip) : wanted).IsEmpty();
}

BOOL CDC::PtVisible(int x, int y) const {
    return m_device != nullptr && (!m_state.clip || m_state.clip->Contains(device_point(x, y)));
}

CPoint CDC::MoveTo(int x, int y) {
    return std::exchange(m_state.position, CPoint(x, y));
}

BOOL CDC::LineTo(int x, int y) {
    const CPoint from = MoveTo(x, y);
    if (m_device == nullptr) return 0;
    m_device->DrawLine(paint(), device_point(from.x, from.y), device_point(x, y));
    return 1;
}

BOOL CDC::Polyline(const POINT* points, int count) {
    constexpr int least = 2;
    if (m_device == nullptr || points == nullptr || count < least) return 0;
    m_device->DrawPolyline(paint(), device_points(points, count));
    return 1;
}

BOOL CDC::Polygon(const POINT* points, int count) {
    constexpr int least = 2;
    if (m_device == nullptr || points == nullptr || count < least) return 0;
    m_device->DrawPolygon(paint(), device_points(points, count));
    return 1;
}

BOOL CDC::Rectangle(int left, int top, int right, int bottom) {
    if (m_device == nullptr) return 0;
    const CRect rect = device_rect({left, top, right, bottom});
    if (!rect.IsRectEmpty()) m_device->DrawRectangle(paint(), rect);
    return 1;
}

BOOL CDC::Rectangle(const RECT* rect) {
    if (rect == nullptr) return 0;
    return Rectangle(rect->left, rect->top, rect->right, rect->bottom);
}

BOOL CDC::Ellipse(int left, int top, int right, int bottom) {
    if (m_device == nullptr) return 0;
    const CRect rect = device_rect({left, top, right, bottom});
    if (!rect.IsRectEmpty()) m_device->DrawEllipse(paint(), rect);
    return 1;
}

BOOL CDC::Ellipse(const RECT* rect) {
    if (rect == nullptr) return 0;
    return Ellipse(rect->left, rect->top, rect->right, rect->bottom);
}

void CDC::fill(const RECT& rect, const LOGBRUSH& brush) {
    const CRect area = device_rect(rect);
    if (m_device != nullptr && !area.IsRectEmpty()) {
        m_device->FillRectangle(paint_with(brush), area);
    }
}

BOOL CDC::FillRect(const RECT* rect, CBrush* brush) {
    if (m_device == nullptr || rect == nullptr || brush == nullptr || brush->IsNull()) return 0;
    fill(*rect, brush->Get());
    return 1;
}

void CDC::FillSolidRect(const RECT* rect, COLORREF color) {
    if (rect == nullptr) return;
    SetBkColor(color);
    fill(*rect, {BS_SOLID, color, 0});
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF color) {
    FillSolidRect(CRect(CPoint(x, y), CSize(width, height)), color);
}

BOOL CDC::FrameRect(const RECT* rect, CBrush* brush) {
    if (m_device == nullptr || rect == nullptr || brush == nullptr || brush->IsNull()) return 0;
    const CRect outer(*rect);
    if (outer.IsRectEmpty()) return 0;
    const CRect sides[] = {{outer.left, outer.top, outer.right, outer.top + 1},
                           {outer.left, outer.bottom - 1, outer.right, outer.bottom},
                           {outer.left, outer.top, outer.left + 1, outer.bottom},
                           {outer.right - 1, outer.top, outer.right, outer.bottom}};
    for (const CRect& side : sides) fill(side, brush->Get());
    return 1;
}

void CDC::Draw3dRect(const RECT* rect, COLORREF topLeft, COLORREF bottomRight) {
    if (rect == nullptr) return;
    const CRect r(*rect);
    const COLORREF before = m_state.backgroundColor;
    FillSolidRect(r.left, r.top, r.Width() - 1, 1, topLeft);
    FillSolidRect(r.left, r.top, 1, r.Height() - 1, topLeft);
    FillSolidRect(r.right, r.top, -1, r.Height(), bottomRight);
    FillSolidRect(r.left, r.bottom, r.Width(), -1, bottomRight);
    SetBkColor(before);
}

void CDC::DrawFocusRect(const RECT* rect) {
    if (rect == nullptr) return;
    const CRect area = device_rect(*rect);
    if (m_device == nullptr || area.IsRectEmpty()) return;
    Paint dotted = paint_with(cNoBrush);
    dotted.pen = {PS_DOT, {1, 0}, cBlack};
    m_device->DrawRectangle(dotted, area);
}

BOOL CDC::FillRgn(CRgn* region, CBrush* brush) {
    if (m_device == nullptr || region == nullptr || region->IsNull()) return 0;
    if (brush == nullptr || brush->IsNull()) return 0;
    Region area = region->Get();
    area.Offset(m_state.origin.x, m_state.origin.y);
    if (area.IsEmpty()) return 1;
    const Paint paint = paint_with(brush->Get());
    if (!area.Corners().empty()) {
        m_device->DrawPolygon(paint, area.Corners());
    } else {
        m_device->FillRegion(paint, area);
    }
    return 1;
}

COLORREF CDC::SetPixel(int x, int y, COLORREF color) {
    if (m_device != nullptr) m_device->SetPixel(paint(), device_point(x, y), color);
    return color;
}

BOOL CDC::TextOut(int x, int y, const char* text, int count) {
    if (m_device == nullptr) return 0;
    draw_run({x, y}, viewOf(text, count), nullptr, nullptr);
    return 1;
}

BOOL CDC::TextOut(int x, int y, const CString& text) {
    return TextOut(x, y, text, text.GetLength());
}

BOOL CDC::ExtTextOut(int x, int y, UINT options, const RECT* rect, const char* text, UINT count,
                     const int* advances) {
    if (m_device == nullptr) return 0;
    if (rect != nullptr && (options & ETO_OPAQUE) != 0) {
        fill(*rect, {BS_SOLID, m_state.backgroundColor, 0});
    }
    draw_run({x, y}, viewOf(text, static_cast<int>(count)), advances,
             (options & ETO_CLIPPED) != 0 ? rect : nullptr);
    return 1;
}

BOOL CDC::ExtTextOut(int x, int y, UINT options, const RECT* rect, const CString& text,
                     const int* advances) {
    return ExtTextOut(x, y, options, rect, text, static_cast<UINT>(text.GetLength()), advances);
}

int CDC::DrawText(const char* text, int count, RECT* rect, UINT format) {
    const SizedFont& font = sized_font();
    if (attributes() == nullptr || rect == nullptr) return 0;
    std::string_view rest = viewOf(text, count);
    const int height = font.Height();
    const int width = CRect(*rect).Width();
    const bool single = (format & DT_SINGLELINE) != 0;
    int top = rect->top;
    if (single && (format & DT_VCENTER) != 0) top += (CRect(*rect).Height() - height) / 2;
    if (single && (format & DT_BOTTOM) != 0) top = rect->bottom - height;
    int y = top;
    int widest = 0;
    while (!rest.empty()) {
        const std::string_view line = takeLine(rest, format, font, width);
        widest = std::max(widest, widthOfLine(line, format, font));
        if ((format & DT_CALCRECT) == 0) draw_line_of_text(line, *rect, y, format);
        y += height;
    }
    if ((format & DT_CALCRECT) != 0) {
        rect->right = rect->left + widest;
        rect->bottom = y;
    }
    return y - rect->top;
}

int CDC::DrawText(const CString& text, RECT* rect, UINT format) {
    return DrawText(text, text.GetLength(), rect, format);
}

void CDC::draw_line_of_text(std::string_view text, const RECT& rect, int y, UINT format) {
    const bool prefixed = (format & DT_NOPREFIX) == 0 && text.find('&') != std::string_view::npos;
    const auto [plain, marked] =
        prefixed ? withoutPrefixes(text) : std::pair(std::string(), std::string::npos);
    if (prefixed) text = plain;
    const int room = CRect(rect).Width() - sized_font().WidthOf(text);
    int x = rect.left;
    if ((format & DT_CENTER) != 0) x += room / 2;
    if ((format & DT_RIGHT) != 0) x += room;
    draw_run({x, y}, text, nullptr, (format & DT_NOCLIP) != 0 ? nullptr : &rect);
    if (marked != std::string::npos) underline(text, marked, x, y);
}

void CDC::underline(std::string_view text, std::size_t index, int left, int top) {
    const SizedFont& font = sized_font();
    const int from = left + font.WidthOf(text.substr(0, index));
    const int to = left + font.WidthOf(text.substr(0, index + 1));
    const int y = top + font.Ascent() + 1;
    fill({from, y, to, y + 1}, {BS_SOLID, m_state.textColor, 0});
}

CSize CDC::GetTextExtent(const char* text, int count) const {
    if (attributes() == nullptr) return {};
    return {sized_font().WidthOf(viewOf(text, count)), sized_font().Height()};
}

CSize CDC::GetTextExtent(const CString& text) const {
    return GetTextExtent(text, text.GetLength());
}

BOOL CDC::GetTextMetrics(TEXTMETRICA* metrics) const {
    if (attributes() == nullptr || metrics == nullptr) return 0;
    const SizedFont& sized = sized_font();
    const LOGFONTA& font = m_state.font->Get();
    *metrics = TEXTMETRICA();
    metrics->tmHeight = sized.Height();
    metrics->tmAscent = sized.Ascent();
    metrics->tmDescent = sized.Descent();
    metrics->tmInternalLeading = sized.InternalLeading();
    metrics->tmExternalLeading = sized.ExternalLeading();
    metrics->tmAveCharWidth = sized.AverageWidth();
    metrics->tmMaxCharWidth = sized.WidthOf("W");
    metrics->tmWeight = font.lfWeight;
    metrics->tmDigitizedAspectX = attributes()->Caps().dpiX;
    metrics->tmDigitizedAspectY = attributes()->Caps().dpiY;
    metrics->tmFirstChar = ' ';
    metrics->tmLastChar = 0xFF;
    metrics->tmDefaultChar = '?';
    metrics->tmBreakChar = ' ';
    metrics->tmItalic = font.lfItalic;
    metrics->tmUnderlined = font.lfUnderline;
    metrics->tmStruckOut = font.lfStrikeOut;
    metrics->tmPitchAndFamily = font.lfPitchAndFamily;
    metrics->tmCharSet = font.lfCharSet;
    return 1;
}

Paint CDC::paint() const {
    return {m_state.pen->Get(),      m_state.brush->Get(),
            m_state.backgroundColor, m_state.backgroundMode == OPAQUE,
            m_state.fillMode,        clip()};
}

Paint CDC::paint_with(const LOGBRUSH& brush) const {
    Paint result = paint();
    result.pen = cNoPen;
    result.brush = brush;
    return result;
}

POINT CDC::device_point(int x, int y) const {
    return {x + m_state.origin.x, y + m_state.origin.y};
}

CRect CDC::device_rect(const RECT& rect) const {
    CRect result(rect);
    result.OffsetRect(m_state.origin.x, m_state.origin.y);
    result.NormalizeRect();
    return result;
}

std::span<const POINT> CDC::device_points(const POINT* points, int count) {
    const std::span<const POINT> given(points, static_cast<std::size_t>(count));
    if (m_state.origin == CPoint()) return given;
    m_points.assign(given.begin(), given.end());
    for (POINT& point : m_points) point = device_point(point.x, point.y);
    return m_points;
}

void CDC::size_font() const {
    const LOGFONTA& font =
        m_state.font != nullptr ? m_state.font->Get() : stock<CFont>(SYSTEM_FONT)->Get();
    const DrawingDevice* device = attributes();
    const double aspect =
        device != nullptr ? static_cast<double>(device->Caps().dpiX) / device->Caps().dpiY : 1;
    m_sizedFont.emplace(
        device != nullptr ? device->TextMetrics().MetricsOf(font) : tessalink::builtInMetrics(font),
        font, aspect);
}

int CDC::place(std::string_view text, const int* advances) const {
    const SizedFont& font = sized_font();
    m_positions.resize(text.size() + 1);
    int* position = m_positions.data();
    *position = 0;
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < text.size(); ++i, ++position) {
        sum += font.Advance(text[i]);
        position[1] = advances != nullptr ? *position + advances[i] : font.Position(sum);
    }
    return *position;
}

void CDC::draw_run(CPoint reference, std::string_view text, const int* advances, const RECT* clip) {
    if (m_device == nullptr || text.empty()) return;
    const SizedFont& font = sized_font();
    const int width = place(text, advances);
    const bool moves = (m_state.textAlign & TA_UPDATECP) != 0;
    if (moves) reference = m_state.position;
    const UINT horizontal = m_state.textAlign & TA_CENTER;
    const UINT vertical = m_state.textAlign & cVerticalAlign;
    const int left = reference.x - (horizontal == TA_CENTER  ? width / 2
                                    : horizontal == TA_RIGHT ? width
                                                             : 0);
    const int top = reference.y - (vertical == TA_BASELINE ? font.Ascent()
                                   : vertical == TA_BOTTOM ? font.Height()
                                                           : 0);
    if (moves && horizontal != TA_CENTER) {
        m_state.position.x = horizontal == TA_RIGHT ? left : left + width;
    }
    TextRun run;
    run.text = text;
    run.font = &m_state.font->Get();
    run.sizedFont = &font;
    run.origin = device_point(left, top + font.Ascent());
    run.positions = m_positions;
    run.color = m_state.textColor;
    run.hasBackground = m_state.backgroundMode == OPAQUE;
    run.background = device_rect({left, top, left + width, top + font.Height()});
    run.backgroundColor = m_state.backgroundColor;
    run.isClipped = clip != nullptr;
    if (clip != nullptr) run.clipRect = device_rect(*clip);
    run.clip = this->clip();
    m_device->DrawText(run);
}

BOOL GetTextExtentPoint32(const CDC* dc, const char* text, int count, SIZE* size) {
    if (dc == nullptr || size == nullptr || text == nullptr || count < 0) return 0;
    *size = dc->GetTextExtent(text, count);
    return 1;
}
