#include "platform/graphics/detail/MetafilePlayer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "platform/base/CodePage.h"
#include "platform/graphics/NullDevice.h"
#include "platform/graphics/detail/EmfFormat.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cRecordHead = 8;
constexpr std::size_t cRect = 16;

// Map modes that let window and viewport extents count.
constexpr std::uint32_t cMapText = 1;
constexpr std::uint32_t cMapIsotropic = 7;
constexpr std::uint32_t cMapAnisotropic = 8;

// The characters of a text without the places of each, as in the classic call.
constexpr std::uint32_t cMaxUnplacedText = 8192;

// One record, read field by field. What lies beyond its end marks it as damaged and reads as 0.
class RecordReader {
public:
    explicit RecordReader(std::span<const BYTE> bytes) : m_bytes(bytes) {}

    bool IsDamaged() const { return m_isDamaged; }
    void Damage() { m_isDamaged = true; }
    std::size_t Size() const { return m_bytes.size(); }

    void At(std::size_t place) { m_next = place; }
    void Skip(std::size_t bytes) { m_next += bytes; }
    std::uint32_t U32() { return Number(4); }
    std::uint32_t U16() { return Number(2); }
    BYTE U8() { return static_cast<BYTE>(Number(1)); }
    LONG I32() { return static_cast<LONG>(U32()); }
    LONG I16() { return static_cast<std::int16_t>(U16()); }
    POINT Point() {
        const LONG x = I32();
        return {x, I32()};
    }
    POINT ShortPoint() {
        const LONG x = I16();
        return {x, I16()};
    }
    RECT Rect() {
        const POINT topLeft = Point();
        const POINT bottomRight = Point();
        return {topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
    }
    // Whether so many elements of this size follow; otherwise the record is damaged.
    bool Has(std::uint64_t count, std::size_t elementSize) {
        const std::uint64_t left = m_next < m_bytes.size() ? m_bytes.size() - m_next : 0;
        if (count * elementSize > left) Damage();
        return !m_isDamaged;
    }

private:
    std::uint32_t Number(std::size_t size) {
        if (m_next > m_bytes.size() || m_bytes.size() - m_next < size) {
            Damage();
            return 0;
        }
        std::uint32_t value = 0;
        for (std::size_t i = size; i-- > 0;) value = value << 8 | m_bytes[m_next + i];
        m_next += size;
        return value;
    }

    std::span<const BYTE> m_bytes;
    std::size_t m_next = 0;
    bool m_isDamaged = false;
};

int nearest(double value) {
    return toInt(std::floor(value + 0.5));
}

// One axis of the way from the coordinates of the records to those of the context:
// (value - window) * viewport / window extent + viewport origin, then from the frame to the target.
struct Axis {
    double scale = 1;
    double shift = 0;

    int Place(LONG value) const { return nearest(value * scale + shift); }
    int Length(LONG value) const { return nearest(value * std::fabs(scale)); }
};

struct Mapping {
    std::uint32_t mode = cMapText;
    POINT windowOrigin{};
    POINT viewportOrigin{};
    SIZE windowExtent = {1, 1};
    SIZE viewportExtent = {1, 1};
};

class Player {
public:
    Player(std::span<const BYTE> bytes, CDC& dc, const RECT& rect);

    bool Play();

private:
    using Handler = void (Player::*)(RecordReader&);
    struct Kind {
        std::uint32_t type;
        Handler handler;
    };
    static const std::array<Kind, 40> cKinds;

    bool IsHeaderSound() const;
    void SetDefaults();
    bool PlayRecords();
    void PlayRecord(RecordReader& record, std::uint32_t type);
    void UpdateMapping();

    POINT MapPoint(POINT point) const { return {m_x.Place(point.x), m_y.Place(point.y)}; }
    CRect MapRect(const RECT& rect) const;
    // Of a rectangle whose right and bottom edge are included.
    CRect MapInclusive(const RECT& rect) const;
    std::span<const POINT> ReadPoints(RecordReader& record, bool isShort,
                                      bool fromPosition = false);
    std::optional<Region> ReadRegion(RecordReader& record);
    std::optional<Region> MapRegion(const Region& region) const;
    void Keep(RecordReader& record, std::uint32_t handle, std::unique_ptr<CGdiObject> object);
    void SelectObject(CGdiObject* object);
    void IntersectClip(const Region& region);
    LOGFONTA ReadFont(RecordReader& record) const;
    void ReadText(RecordReader& record, std::uint32_t count, std::size_t characterSize);
    void ReadAdvances(RecordReader& record, std::uint32_t count);
    void DrawText(RecordReader& record, std::size_t characterSize);

    void OnIgnored(RecordReader& record);
    template <bool IS_SHORT>
    void OnPolygon(RecordReader& record);
    template <bool IS_SHORT>
    void OnPolyline(RecordReader& record);
    template <bool IS_SHORT>
    void OnPolylineTo(RecordReader& record);
    template <POINT Mapping::*ORIGIN>
    void OnOrigin(RecordReader& record);
    template <SIZE Mapping::*EXTENT>
    void OnExtent(RecordReader& record);
    void OnMapMode(RecordReader& record);
    void OnSetPixel(RecordReader& record);
    void OnBkMode(RecordReader& record);
    void OnFillMode(RecordReader& record);
    void OnRop2(RecordReader& record);
    void OnTextAlign(RecordReader& record);
    void OnTextColor(RecordReader& record);
    void OnBkColor(RecordReader& record);
    void OnMoveTo(RecordReader& record);
    void OnLineTo(RecordReader& record);
    void OnIntersectClip(RecordReader& record);
    void OnSelectClip(RecordReader& record);
    void OnSave(RecordReader& record);
    void OnRestore(RecordReader& record);
    void OnSelect(RecordReader& record);
    void OnCreatePen(RecordReader& record);
    void OnExtCreatePen(RecordReader& record);
    void OnCreateBrush(RecordReader& record);
    void OnCreateFont(RecordReader& record);
    void OnDelete(RecordReader& record);
    void OnEllipse(RecordReader& record);
    void OnRectangle(RecordReader& record);
    void OnFillRegion(RecordReader& record);
    void OnBitBlt(RecordReader& record);
    void OnTextW(RecordReader& record) { DrawText(record, 2); }
    void OnTextA(RecordReader& record) { DrawText(record, 1); }

    std::span<const BYTE> m_bytes;
    CDC& m_dc;
    ENHMETAHEADER m_header{};
    // From the reference device to the context.
    Axis m_targetX;
    Axis m_targetY;
    // From the coordinates of the records to the context.
    Axis m_x;
    Axis m_y;
    Mapping m_mapping;
    std::vector<Mapping> m_saved;
    int m_firstState = 0;
    CRgn m_outerClip;  // what the context clipped before; null when nothing
    std::vector<std::unique_ptr<CGdiObject>> m_objects;
    std::vector<std::unique_ptr<CGdiObject>> m_deleted;  // may still be selected
    std::vector<POINT> m_points;
    std::string m_text;
    std::vector<int> m_advances;
};

const std::array<Player::Kind, 40> Player::cKinds = {{
    {emrPolygon, &Player::OnPolygon<false>},
    {emrPolyline, &Player::OnPolyline<false>},
    {emrPolylineTo, &Player::OnPolylineTo<false>},
    {emrSetWindowExtEx, &Player::OnExtent<&Mapping::windowExtent>},
    {emrSetWindowOrgEx, &Player::OnOrigin<&Mapping::windowOrigin>},
    {emrSetViewportExtEx, &Player::OnExtent<&Mapping::viewportExtent>},
    {emrSetViewportOrgEx, &Player::OnOrigin<&Mapping::viewportOrigin>},
    {emrSetBrushOrgEx, &Player::OnIgnored},
    {emrSetPixelV, &Player::OnSetPixel},
    {emrSetMapperFlags, &Player::OnIgnored},
    {emrSetMapMode, &Player::OnMapMode},
    {emrSetBkMode, &Player::OnBkMode},
    {emrSetPolyFillMode, &Player::OnFillMode},
    {emrSetRop2, &Player::OnRop2},
    {emrSetStretchBltMode, &Player::OnIgnored},
    {emrSetTextAlign, &Player::OnTextAlign},
    {emrSetTextColor, &Player::OnTextColor},
    {emrSetBkColor, &Player::OnBkColor},
    {emrMoveToEx, &Player::OnMoveTo},
    {emrIntersectClipRect, &Player::OnIntersectClip},
    {emrSaveDC, &Player::OnSave},
    {emrRestoreDC, &Player::OnRestore},
    {emrSelectObject, &Player::OnSelect},
    {emrCreatePen, &Player::OnCreatePen},
    {emrCreateBrushIndirect, &Player::OnCreateBrush},
    {emrDeleteObject, &Player::OnDelete},
    {emrEllipse, &Player::OnEllipse},
    {emrRectangle, &Player::OnRectangle},
    {emrLineTo, &Player::OnLineTo},
    {emrSetArcDirection, &Player::OnIgnored},
    {emrSetMiterLimit, &Player::OnIgnored},
    {emrGdiComment, &Player::OnIgnored},
    {emrFillRgn, &Player::OnFillRegion},
    {emrExtSelectClipRgn, &Player::OnSelectClip},
    {emrBitBlt, &Player::OnBitBlt},
    {emrExtCreateFontIndirectW, &Player::OnCreateFont},
    {emrExtTextOutA, &Player::OnTextA},
    {emrExtTextOutW, &Player::OnTextW},
    {emrPolygon16, &Player::OnPolygon<true>},
    {emrPolyline16, &Player::OnPolyline<true>},
}};

// The frame of a picture along one axis, in units of the reference device, filling the target.
Axis targetAxis(LONG frameStart, LONG frameEnd, int units, int millimetres, LONG start, LONG end) {
    constexpr double hundredths = 100;
    const double perUnit = units / (millimetres * hundredths);
    const double first = frameStart * perUnit;
    const double length = frameEnd * perUnit - first;
    Axis axis;
    axis.scale = length != 0 ? (static_cast<double>(end) - start) / length : 1;
    axis.shift = start - first * axis.scale;
    return axis;
}

Player::Player(std::span<const BYTE> bytes, CDC& dc, const RECT& rect)
    : m_bytes(bytes), m_dc(dc), m_header(headerOf(bytes)) {
    if (!IsHeaderSound()) return;
    const auto& frame = m_header.rclFrame;
    const auto& units = m_header.szlDevice;
    const auto& millimetres = m_header.szlMillimeters;
    // The picture is placed on the device, so that points need not be moved once more.
    CRect place(rect);
    place.OffsetRect(dc.GetViewportOrg());
    m_targetX = m_x =
        targetAxis(frame.left, frame.right, units.cx, millimetres.cx, place.left, place.right);
    m_targetY = m_y =
        targetAxis(frame.top, frame.bottom, units.cy, millimetres.cy, place.top, place.bottom);
}

bool Player::IsHeaderSound() const {
    return m_header.iType == emrHeader && m_header.dSignature == cEmfSignature &&
           m_header.nBytes == m_bytes.size() && m_header.nHandles >= 1 &&
           m_header.nHandles <= m_header.nRecords && m_header.szlDevice.cx > 0 &&
           m_header.szlDevice.cy > 0 && m_header.szlMillimeters.cx > 0 &&
           m_header.szlMillimeters.cy > 0 && m_header.nRecords <= m_bytes.size() / cRecordHead;
}

void Player::SetDefaults() {
    for (const int stock : {BLACK_PEN, WHITE_BRUSH, SYSTEM_FONT}) m_dc.SelectStockObject(stock);
    m_dc.SetTextColor(cBlack);
    m_dc.SetBkColor(cWhite);
    m_dc.SetBkMode(OPAQUE);
    m_dc.SetTextAlign(TA_LEFT | TA_TOP);
    m_dc.SetPolyFillMode(ALTERNATE);
    m_dc.SetViewportOrg(0, 0);
    m_dc.MoveTo(MapPoint({0, 0}));
    m_dc.GetClipRgn(&m_outerClip);
}

bool Player::Play() {
    if (!IsHeaderSound()) return false;
    m_firstState = m_dc.SaveDC();
    if (m_firstState == 0) return false;
    // What a device throws leaves the context as it was, without the objects of the picture.
    try {
        const bool isSound = PlayRecords();
        m_dc.RestoreDC(m_firstState);
        return isSound;
    } catch (...) {
        m_dc.RestoreDC(m_firstState);
        throw;
    }
}

bool Player::PlayRecords() {
    m_objects.resize(m_header.nHandles);
    SetDefaults();
    bool isSound = true;
    std::uint32_t type = emrHeader;
    std::uint32_t count = 0;
    for (std::size_t place = 0; isSound && type != emrEof && place < m_bytes.size();) {
        RecordReader head(m_bytes.subspan(place));
        type = head.U32();
        const std::size_t size = head.U32();
        isSound = !head.IsDamaged() && size >= cRecordHead && size % 4 == 0 &&
                  size <= m_bytes.size() - place && (type == emrHeader) == (place == 0);
        if (!isSound) break;
        RecordReader record(m_bytes.subspan(place, size));
        record.Skip(cRecordHead);
        PlayRecord(record, type);
        isSound = !record.IsDamaged();
        place += size;
        ++count;
        if (type == emrEof) isSound = isSound && place == m_bytes.size();
    }
    return isSound && type == emrEof && count == m_header.nRecords;
}

void Player::PlayRecord(RecordReader& record, std::uint32_t type) {
    if (type == emrHeader || type == emrEof) return;
    const auto kind = std::find_if(cKinds.begin(), cKinds.end(),
                                   [type](const Kind& k) { return k.type == type; });
    if (kind == cKinds.end()) return record.Damage();
    (this->*kind->handler)(record);
}

// Coordinates.

void Player::UpdateMapping() {
    const bool scaled = m_mapping.mode != cMapText;
    const auto axis = [&](LONG window, LONG windowExtent, LONG viewport, LONG viewportExtent,
                          const Axis& target) {
        const double scale = scaled ? static_cast<double>(viewportExtent) / windowExtent : 1;
        return Axis{scale * target.scale,
                    (viewport - window * scale) * target.scale + target.shift};
    };
    m_x = axis(m_mapping.windowOrigin.x, m_mapping.windowExtent.cx, m_mapping.viewportOrigin.x,
               m_mapping.viewportExtent.cx, m_targetX);
    m_y = axis(m_mapping.windowOrigin.y, m_mapping.windowExtent.cy, m_mapping.viewportOrigin.y,
               m_mapping.viewportExtent.cy, m_targetY);
}

CRect Player::MapRect(const RECT& rect) const {
    CRect mapped(CPoint(MapPoint({rect.left, rect.top})),
                 CPoint(MapPoint({rect.right, rect.bottom})));
    mapped.NormalizeRect();
    return mapped;
}

CRect Player::MapInclusive(const RECT& rect) const {
    return MapRect({rect.left, rect.top, rect.right + 1, rect.bottom + 1});
}

template <POINT Mapping::*ORIGIN>
void Player::OnOrigin(RecordReader& record) {
    m_mapping.*ORIGIN = record.Point();
    UpdateMapping();
}

template <SIZE Mapping::*EXTENT>
void Player::OnExtent(RecordReader& record) {
    const POINT extent = record.Point();
    if (extent.x == 0 || extent.y == 0) return record.Damage();
    m_mapping.*EXTENT = {extent.x, extent.y};
    UpdateMapping();
}

void Player::OnMapMode(RecordReader& record) {
    m_mapping.mode = record.U32();
    const bool known = m_mapping.mode == cMapText || m_mapping.mode == cMapIsotropic ||
                       m_mapping.mode == cMapAnisotropic;
    if (!known) return record.Damage();
    UpdateMapping();
}

// State.

void Player::OnIgnored(RecordReader&) {}

void Player::OnBkMode(RecordReader& record) {
    if (m_dc.SetBkMode(record.I32()) == 0) record.Damage();
}

void Player::OnFillMode(RecordReader& record) {
    if (m_dc.SetPolyFillMode(record.I32()) == 0) record.Damage();
}

void Player::OnRop2(RecordReader& record) {
    constexpr std::uint32_t copyPen = 13;
    if (record.U32() != copyPen) record.Damage();
}

void Player::OnTextAlign(RecordReader& record) {
    m_dc.SetTextAlign(record.U32());
}

void Player::OnTextColor(RecordReader& record) {
    m_dc.SetTextColor(record.U32() & cWhite);
}

void Player::OnBkColor(RecordReader& record) {
    m_dc.SetBkColor(record.U32() & cWhite);
}

void Player::OnSave(RecordReader& record) {
    if (m_saved.size() == cMaxSavedStates) return record.Damage();
    m_dc.SaveDC();
    m_saved.push_back(m_mapping);
}

void Player::OnRestore(RecordReader& record) {
    const LONG relative = record.I32();
    const auto count = static_cast<LONG>(m_saved.size());
    const LONG wanted = relative < 0 ? count + relative : relative - 1;
    if (wanted < 0 || wanted >= count) return record.Damage();
    m_dc.RestoreDC(m_firstState + 1 + wanted);
    m_mapping = m_saved[static_cast<std::size_t>(wanted)];
    m_saved.resize(static_cast<std::size_t>(wanted));
    UpdateMapping();
}

void Player::IntersectClip(const Region& region) {
    CRgn clip;
    CRgn both;
    both.Assign(region);
    if (m_dc.GetClipRgn(&clip) != 0) both.CombineRgn(&clip, &both, RGN_AND);
    m_dc.SelectClipRgn(&both);
}

void Player::OnIntersectClip(RecordReader& record) {
    m_dc.IntersectClipRect(MapRect(record.Rect()));
}

void Player::OnSelectClip(RecordReader& record) {
    const std::uint32_t size = record.U32();
    const std::uint32_t mode = record.U32();
    if (mode != std::uint32_t{RGN_COPY} && mode != std::uint32_t{RGN_AND}) return record.Damage();
    if (mode == std::uint32_t{RGN_COPY}) {
        m_dc.SelectClipRgn(m_outerClip.IsNull() ? nullptr : &m_outerClip);
        if (size == 0) return;
    }
    if (const auto region = ReadRegion(record)) IntersectClip(*region);
}

std::optional<Region> Player::ReadRegion(RecordReader& record) {
    const std::uint32_t headerSize = record.U32();
    const std::uint32_t kind = record.U32();
    const std::uint32_t count = record.U32();
    record.Skip(sizeof(std::uint32_t) + cRect);  // the size of the data, the bounds
    if (headerSize != cRegionHeader || kind != cRegionRects) record.Damage();
    if (!record.Has(count, cRect)) return std::nullopt;
    std::vector<RECT> rects;
    rects.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) rects.push_back(record.Rect());
    const auto sound = Region::OfBands(std::move(rects));
    if (!sound) {
        record.Damage();
        return std::nullopt;
    }
    return MapRegion(*sound);
}

// The order of the rectangles stays, unless the picture is mirrored.
std::optional<Region> Player::MapRegion(const Region& region) const {
    std::vector<RECT> rects;
    rects.reserve(region.Rects().size());
    for (const RECT& rect : region.Rects()) {
        const CRect mapped = MapRect(rect);
        if (!mapped.IsRectEmpty()) rects.push_back(mapped);
    }
    std::sort(rects.begin(), rects.end(), [](const RECT& a, const RECT& b) {
        return a.top != b.top ? a.top < b.top : a.left < b.left;
    });
    return Region::OfBands(std::move(rects));
}

// Objects.

void Player::Keep(RecordReader& record, std::uint32_t handle, std::unique_ptr<CGdiObject> object) {
    const bool usable = handle > 0 && handle < m_objects.size() && !m_objects[handle];
    if (!usable || object->IsNull()) return record.Damage();
    m_objects[handle] = std::move(object);
}

void Player::SelectObject(CGdiObject* object) {
    if (CPen* pen = DYNAMIC_DOWNCAST(CPen, object)) m_dc.SelectObject(pen);
    if (CBrush* brush = DYNAMIC_DOWNCAST(CBrush, object)) m_dc.SelectObject(brush);
    if (CFont* font = DYNAMIC_DOWNCAST(CFont, object)) m_dc.SelectObject(font);
}

void Player::OnSelect(RecordReader& record) {
    const std::uint32_t handle = record.U32();
    if ((handle & cStockObject) != 0) {
        // Palettes and the like select nothing.
        return SelectObject(CGdiObject::FromStock(static_cast<int>(handle & ~cStockObject)));
    }
    if (handle >= m_objects.size() || !m_objects[handle]) return record.Damage();
    SelectObject(m_objects[handle].get());
}

void Player::OnDelete(RecordReader& record) {
    const std::uint32_t handle = record.U32();
    if (handle >= m_objects.size() || !m_objects[handle]) return record.Damage();
    m_deleted.push_back(std::move(m_objects[handle]));
}

void Player::OnCreatePen(RecordReader& record) {
    const std::uint32_t handle = record.U32();
    const std::uint32_t style = record.U32();
    const POINT width = record.Point();
    const COLORREF color = record.U32() & cWhite;
    Keep(record, handle,
         std::make_unique<CPen>(style, width.x > 1 ? std::max(1, m_x.Length(width.x)) : width.x,
                                color));
}

void Player::OnCreateBrush(RecordReader& record) {
    const std::uint32_t handle = record.U32();
    LOGBRUSH brush{};
    brush.lbStyle = record.U32();
    brush.lbColor = record.U32() & cWhite;
    brush.lbHatch = brush.lbStyle == BS_HATCHED ? record.U32() : 0;
    auto object = std::make_unique<CBrush>();
    object->CreateBrushIndirect(&brush);
    Keep(record, handle, std::move(object));
}

LOGFONTA Player::ReadFont(RecordReader& record) const {
    LOGFONTA font{};
    const LONG height = record.I32();
    const LONG mapped = std::max(1, m_y.Length(height < 0 ? -height : height));
    font.lfHeight = height == 0 ? 0 : height < 0 ? -mapped : mapped;
    record.Skip(3 * sizeof(std::uint32_t));  // width, escapement, orientation
    font.lfWeight = record.I32();
    for (BYTE* field :
         {&font.lfItalic, &font.lfUnderline, &font.lfStrikeOut, &font.lfCharSet,
          &font.lfOutPrecision, &font.lfClipPrecision, &font.lfQuality, &font.lfPitchAndFamily}) {
        *field = record.U8();
    }
    bool ended = false;
    for (std::size_t i = 0; i < LF_FACESIZE; ++i) {
        const char32_t character = record.U16();
        ended = ended || character == 0 || i + 1 == LF_FACESIZE;
        font.lfFaceName[i] = ended ? '\0' : fromUnicode(character).value_or('?');
    }
    return font;
}

void Player::OnCreateFont(RecordReader& record) {
    const std::uint32_t handle = record.U32();
    const LOGFONTA description = ReadFont(record);
    auto font = std::make_unique<CFont>();
    font->CreateFontIndirect(&description);
    Keep(record, handle, std::move(font));
}

// Drawing.

std::span<const POINT> Player::ReadPoints(RecordReader& record, bool isShort, bool fromPosition) {
    record.Skip(cRect);
    const std::uint32_t count = record.U32();
    m_points.clear();
    constexpr std::size_t shortPoint = 4;
    if (!record.Has(count, isShort ? shortPoint : sizeof(POINT))) return {};
    m_points.reserve(std::size_t{count} + 1);
    if (fromPosition) m_points.push_back(m_dc.GetCurrentPosition());
    for (std::uint32_t i = 0; i < count; ++i) {
        m_points.push_back(MapPoint(isShort ? record.ShortPoint() : record.Point()));
    }
    return m_points;
}

template <bool IS_SHORT>
void Player::OnPolygon(RecordReader& record) {
    const auto points = ReadPoints(record, IS_SHORT);
    m_dc.Polygon(points.data(), static_cast<int>(points.size()));
}

template <bool IS_SHORT>
void Player::OnPolyline(RecordReader& record) {
    const auto points = ReadPoints(record, IS_SHORT);
    m_dc.Polyline(points.data(), static_cast<int>(points.size()));
}

template <bool IS_SHORT>
void Player::OnPolylineTo(RecordReader& record) {
    const auto points = ReadPoints(record, IS_SHORT, true);
    m_dc.Polyline(points.data(), static_cast<int>(points.size()));
    if (!points.empty()) m_dc.MoveTo(points.back());
}

void Player::OnSetPixel(RecordReader& record) {
    const POINT point = MapPoint(record.Point());
    m_dc.SetPixel(point.x, point.y, record.U32() & cWhite);
}

void Player::OnMoveTo(RecordReader& record) {
    m_dc.MoveTo(MapPoint(record.Point()));
}

void Player::OnLineTo(RecordReader& record) {
    m_dc.LineTo(MapPoint(record.Point()));
}

void Player::OnEllipse(RecordReader& record) {
    m_dc.Ellipse(MapInclusive(record.Rect()));
}

void Player::OnRectangle(RecordReader& record) {
    m_dc.Rectangle(MapInclusive(record.Rect()));
}

void Player::OnFillRegion(RecordReader& record) {
    record.Skip(cRect + sizeof(std::uint32_t));
    const std::uint32_t handle = record.U32();
    CGdiObject* const object =
        handle < m_objects.size() ? m_objects[handle].get()
                                  : CGdiObject::FromStock(static_cast<int>(handle & ~cStockObject));
    CBrush* const brush = DYNAMIC_DOWNCAST(CBrush, object);
    const auto region = ReadRegion(record);
    if (brush == nullptr || !region) return record.Damage();
    CRgn area;
    area.Assign(*region);
    m_dc.FillRgn(&area, brush);
}

void Player::OnBitBlt(RecordReader& record) {
    record.Skip(cRect);
    const POINT corner = record.Point();
    const POINT size = record.Point();
    const std::uint32_t operation = record.U32();
    constexpr std::size_t bitmapSize = 88;
    record.At(bitmapSize);
    const bool hasBitmap = record.U32() != 0;
    if (operation != cPatCopy || hasBitmap) return record.Damage();
    m_dc.FillRect(MapRect({corner.x, corner.y, corner.x + size.x, corner.y + size.y}),
                  m_dc.GetCurrentBrush());
}

void Player::ReadText(RecordReader& record, std::uint32_t count, std::size_t characterSize) {
    m_text.clear();
    m_text.reserve(count);
    const bool codes = isSymbolFont(m_dc.GetCurrentFont()->Get());
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t character = characterSize == 1 ? record.U8() : record.U16();
        m_text += codes || characterSize == 1 ? static_cast<char>(character & 0xFF)
                                              : fromUnicode(character).value_or('?');
    }
}

void Player::ReadAdvances(RecordReader& record, std::uint32_t count) {
    m_advances.clear();
    m_advances.reserve(count);
    std::int64_t sum = 0;
    int before = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        sum += record.I32();
        const int place = nearest(static_cast<double>(sum) * std::fabs(m_x.scale));
        m_advances.push_back(place - before);
        before = place;
    }
}

void Player::DrawText(RecordReader& record, std::size_t characterSize) {
    constexpr std::size_t text = 36;           // behind bounds, mode and scales
    constexpr std::uint32_t refused = 0x2010;  // glyph numbers, vertical advances
    record.At(text);
    const POINT reference = MapPoint(record.Point());
    const std::uint32_t count = record.U32();
    const std::uint32_t textPlace = record.U32();
    const std::uint32_t options = record.U32();
    const RECT rect = record.Rect();
    const std::uint32_t advancesPlace = record.U32();
    if ((options & refused) != 0) return record.Damage();
    record.At(textPlace);
    if (!record.Has(count, characterSize)) return;
    ReadText(record, count, characterSize);
    record.At(advancesPlace);
    if (advancesPlace != 0 && !record.Has(count, sizeof(std::uint32_t))) return;
    if (advancesPlace == 0 && count > cMaxUnplacedText) return record.Damage();
    if (advancesPlace != 0) ReadAdvances(record, count);
    const CRect mapped = MapRect(rect);
    m_dc.ExtTextOut(reference.x, reference.y, options & (ETO_OPAQUE | ETO_CLIPPED), &mapped,
                    m_text.data(), count, advancesPlace != 0 ? m_advances.data() : nullptr);
}

/// As headers have it: on Windows that is a type of its own.
decltype(ENHMETAHEADER::rclFrame) edgesOf(const RECT& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

}  // namespace

ENHMETAHEADER headerOf(std::span<const BYTE> bytes) {
    RecordReader record(bytes);
    ENHMETAHEADER header{};
    header.iType = record.U32();
    header.nSize = record.U32();
    header.rclBounds = edgesOf(record.Rect());
    header.rclFrame = edgesOf(record.Rect());
    header.dSignature = record.U32();
    header.nVersion = record.U32();
    header.nBytes = record.U32();
    header.nRecords = record.U32();
    header.nHandles = static_cast<std::uint16_t>(record.U16());
    header.sReserved = static_cast<std::uint16_t>(record.U16());
    header.nDescription = record.U32();
    header.offDescription = record.U32();
    header.nPalEntries = record.U32();
    const POINT units = record.Point();
    const POINT millimetres = record.Point();
    header.szlDevice = {units.x, units.y};
    header.szlMillimeters = {millimetres.x, millimetres.y};
    return record.IsDamaged() || header.nSize > bytes.size() ? ENHMETAHEADER() : header;
}

bool isPlayable(std::span<const BYTE> bytes) {
    NullDevice device;
    CDC dc(device);
    return play(bytes, dc, {0, 0, 1, 1});
}

bool play(std::span<const BYTE> bytes, CDC& dc, const RECT& rect) {
    return Player(bytes, dc, rect).Play();
}

}  // namespace tessalink::detail
