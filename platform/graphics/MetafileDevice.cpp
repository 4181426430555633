#include "platform/graphics/MetafileDevice.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "platform/base/CodePage.h"
#include "platform/graphics/CDC.h"
#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/detail/EmfFormat.h"

namespace tessalink {

using detail::EmfBuffer;
using detail::EmfCursor;
using detail::EmfRecord;

namespace {

constexpr std::size_t cWord = 4;
constexpr std::size_t cPoint = 8;
constexpr std::size_t cShortPoint = 4;
constexpr std::size_t cRect = 16;
constexpr std::size_t cRecordHead = 8;
constexpr int cHundredths = 100;  // of a millimetre
constexpr int cMicrometres = 1000;
// Handles of each kind that are kept; the one that was used longest ago makes room.
constexpr std::size_t cKeptObjects = 32;

// What any bounds replace.
constexpr RECT cNothing = {std::numeric_limits<LONG>::max(), std::numeric_limits<LONG>::max(),
                           std::numeric_limits<LONG>::min(), std::numeric_limits<LONG>::min()};

bool fitsShort(const POINT& point) {
    using Short = std::numeric_limits<std::int16_t>;
    const auto fits = [](LONG value) { return value >= Short::min() && value <= Short::max(); };
    return fits(point.x) && fits(point.y);
}

// The smallest rectangle around points, its right and bottom edge included.
RECT boundsOf(std::span<const POINT> points) {
    RECT bounds = {points[0].x, points[0].y, points[0].x, points[0].y};
    for (const POINT& point : points) {
        bounds.left = std::min(bounds.left, point.x);
        bounds.top = std::min(bounds.top, point.y);
        bounds.right = std::max(bounds.right, point.x);
        bounds.bottom = std::max(bounds.bottom, point.y);
    }
    return bounds;
}

bool isWithin(const RECT& inner, const RECT& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

// Bounds far off end where the header's numbers do.
LONG saturated(std::int64_t value) {
    using Long = std::numeric_limits<LONG>;
    return static_cast<LONG>(std::clamp<std::int64_t>(value, Long::min(), Long::max()));
}

// Hundredths of a millimetre to the unit, as records of texts tell them.
float textScale(int millimetres, int units) {
    return static_cast<float>(millimetres * cHundredths) / static_cast<float>(units);
}

// The code of a character in a record of text: of symbol faces the byte, else Unicode.
std::uint32_t codeOf(char ch, bool isSymbol) {
    constexpr BYTE firstBeyondAscii = 0x80;
    const auto byte = static_cast<BYTE>(ch);
    return isSymbol || byte < firstBeyondAscii ? byte : static_cast<std::uint32_t>(toUnicode(ch));
}

RECT inclusive(const RECT& rect) {
    return {rect.left, rect.top, rect.right - 1, rect.bottom - 1};
}

// What lies around the rectangle when a pen runs along it.
RECT withPen(const RECT& bounds, const LOGPEN& pen) {
    if (pen.lopnStyle == PS_NULL || pen.lopnWidth.x <= 1) return bounds;
    const std::int64_t reach = pen.lopnWidth.x / 2;
    return {saturated(bounds.left - reach), saturated(bounds.top - reach),
            saturated(bounds.right + reach), saturated(bounds.bottom + reach)};
}

// The objects of one kind that were created, by what they describe.
template <class Description>
struct Objects {
    struct Entry {
        Description description;
        std::uint32_t handle;
        std::uint64_t lastUse;
    };
    std::vector<Entry> entries;

    Entry* Find(const Description& description) {
        const auto entry = std::find_if(entries.rbegin(), entries.rend(), [&](const Entry& e) {
            return e.description == description;
        });
        return entry != entries.rend() ? &*entry : nullptr;
    }
};

// What a player's state is at some place of the recording. Handles of 0 were never selected.
struct Written {
    std::uint32_t pen = 0;
    std::uint32_t brush = 0;
    std::uint32_t font = 0;
    COLORREF textColor = cBlack;
    COLORREF backgroundColor = cWhite;
    int backgroundMode = OPAQUE;
    int fillMode = ALTERNATE;
    bool onBaseLine = false;
    std::optional<POINT> position;
    std::optional<Region> clip;
};

}  // namespace

class MetafileDevice::Recorder {
public:
    Recorder(const DrawingDevice& reference, const std::optional<RECT>& frame,
             std::string_view description)
        : m_reference(reference),
          m_caps(reference.Caps()),
          m_textScaleX(textScale(m_caps.widthMm, m_caps.width)),
          m_textScaleY(textScale(m_caps.heightMm, m_caps.height)),
          m_frame(frame) {
        WriteHeader(description);
    }

    const DrawingDevice& Reference() const { return m_reference; }
    const DeviceCaps& Caps() const { return m_caps; }
    bool IsOpen() const { return m_isOpen; }

    std::vector<BYTE> Finish();
    void Save();
    void Restore(int levels);

    void Line(const Paint& paint, POINT from, POINT to);
    void Points(const Paint& paint, std::span<const POINT> points, EmfRecord type,
                EmfRecord shortType);
    void Shape(const Paint& paint, const RECT& rect, EmfRecord type);
    void Fill(const Paint& paint, const RECT& rect);
    void Fill(const Paint& paint, const Region& region);
    void Pixel(const Paint& paint, POINT point, COLORREF color);
    void Text(const TextRun& run);

private:
    void WriteHeader(std::string_view description);
    void WriteEnd();
    // Starts a record; false when there is no more room.
    EmfCursor Begin(EmfRecord type, std::size_t size);
    void WriteState(EmfRecord type, std::uint32_t value);
    template <class Value>
    void SetState(Value& written, Value value, EmfRecord type) {
        if (written == value) return;
        WriteState(type, static_cast<std::uint32_t>(value));
        written = value;
    }

    void UsePen(const LOGPEN& pen);
    void UseBrush(const LOGBRUSH& brush);
    void UseFont(const LOGFONTA& font);
    void UseBackground(const Paint& paint);
    void UseClip(const Region* clip);
    void IntersectClip(const Region& clip);
    void Select(std::uint32_t& written, std::uint32_t handle);
    template <class Description, class Create>
    std::uint32_t HandleFor(Objects<Description>& objects, const Description& description,
                            Create create);
    template <class Description>
    void MakeRoom(Objects<Description>& objects);
    bool IsSelected(std::uint32_t handle) const;
    std::uint32_t FreeHandle();
    void DeleteHandle(std::uint32_t handle);
    void CreateFontRecord(std::uint32_t handle, const LOGFONTA& font);

    void AddBounds(const RECT& inclusiveBounds, const Region* clip);
    RECT FrameOf(const RECT& bounds) const;

    const DrawingDevice& m_reference;
    DeviceCaps m_caps;
    float m_textScaleX;
    float m_textScaleY;
    std::optional<RECT> m_frame;
    EmfBuffer m_buffer;
    std::uint32_t m_records = 0;
    bool m_isOpen = true;
    bool m_isTooLarge = false;
    RECT m_bounds = cNothing;  // of all that is drawn, right and bottom included

    Written m_written;
    std::vector<Written> m_saved;
    std::size_t m_unwrittenSaves = 0;
    Objects<LOGPEN> m_pens;
    Objects<LOGBRUSH> m_brushes;
    Objects<LOGFONTA> m_fonts;
    std::vector<bool> m_handles = {true};  // 0 is the metafile itself
    std::uint64_t m_uses = 0;
};

void MetafileDevice::Recorder::WriteHeader(std::string_view description) {
    constexpr std::uint32_t ends =
        1;  // the NUL behind an empty first and second text, and one more
    const std::size_t characters = std::max<std::size_t>(description.size() + ends, 3);
    const std::size_t size = (detail::cHeaderSize + 2 * characters + cWord - 1) / cWord * cWord;
    EmfCursor record = Begin(detail::emrHeader, size);
    record.Skip(2 * cRect);  // bounds and frame, known at the end
    record.Put(detail::cEmfSignature);
    record.Put(detail::cEmfVersion);
    record.Skip(3 * cWord);  // size, records, handles
    record.Put(static_cast<std::uint32_t>(characters));
    record.Put(static_cast<std::uint32_t>(detail::cHeaderSize));
    record.Put(std::uint32_t{0});  // no palette
    record.Put(POINT{m_caps.width, m_caps.height});
    record.Put(POINT{m_caps.widthMm, m_caps.heightMm});
    record.Skip(3 * cWord);  // no pixel format, no OpenGL
    record.Put(POINT{m_caps.widthMm * cMicrometres, m_caps.heightMm * cMicrometres});
    for (const char ch : description) record.Put16(static_cast<std::uint32_t>(toUnicode(ch)));
}

void MetafileDevice::Recorder::WriteEnd() {
    constexpr std::size_t size = 20;
    EmfCursor record = Begin(detail::emrEof, size);
    if (!record) return;
    record.Skip(2 * cWord);  // no palette
    record.Put(static_cast<std::uint32_t>(size));
    const RECT bounds = m_bounds.left <= m_bounds.right ? m_bounds : RECT{0, 0, -1, -1};
    record = m_buffer.At(detail::cHeaderBounds);
    record.Put(bounds);
    record.Put(m_frame ? *m_frame : FrameOf(bounds));
    record = m_buffer.At(detail::cHeaderBytes);
    record.Put(static_cast<std::uint32_t>(m_buffer.Size()));
    record.Put(m_records);
    record.Put16(static_cast<std::uint32_t>(m_handles.size()));
}

RECT MetafileDevice::Recorder::FrameOf(const RECT& bounds) const {
    const auto scaled = [](LONG value, int millimetres, int units) {
        return units == 0 ? 0 : saturated(std::int64_t{value} * millimetres * cHundredths / units);
    };
    return {scaled(bounds.left, m_caps.widthMm, m_caps.width),
            scaled(bounds.top, m_caps.heightMm, m_caps.height),
            scaled(bounds.right, m_caps.widthMm, m_caps.width),
            scaled(bounds.bottom, m_caps.heightMm, m_caps.height)};
}

std::vector<BYTE> MetafileDevice::Recorder::Finish() {
    if (!m_isOpen) return {};
    m_unwrittenSaves = 0;
    if (!m_saved.empty()) Restore(static_cast<int>(m_saved.size()));
    const auto deleteAll = [this](const auto& objects) {
        for (const auto& entry : objects.entries) DeleteHandle(entry.handle);
    };
    for (const int stock : {BLACK_PEN, WHITE_BRUSH, SYSTEM_FONT}) {
        WriteState(detail::emrSelectObject,
                   detail::cStockObject | static_cast<std::uint32_t>(stock));
    }
    deleteAll(m_pens);
    deleteAll(m_brushes);
    deleteAll(m_fonts);
    WriteEnd();
    m_isOpen = false;
    return m_isTooLarge ? std::vector<BYTE>() : m_buffer.Take();
}

EmfCursor MetafileDevice::Recorder::Begin(EmfRecord type, std::size_t size) {
    m_isTooLarge = m_isTooLarge || size > cMaxMetafile - m_buffer.Size();
    if (m_isTooLarge) return {};
    ++m_records;
    return m_buffer.Begin(type, size);
}

void MetafileDevice::Recorder::WriteState(EmfRecord type, std::uint32_t value) {
    if (auto record = Begin(type, cRecordHead + cWord)) record.Put(value);
}

// States beyond what a player takes are not written; every primitive brings its state anyway.
void MetafileDevice::Recorder::Save() {
    if (m_saved.size() == detail::cMaxSavedStates) {
        ++m_unwrittenSaves;
        return;
    }
    Begin(detail::emrSaveDC, cRecordHead);
    m_saved.push_back(m_written);
}

void MetafileDevice::Recorder::Restore(int levels) {
    const auto wanted = static_cast<std::size_t>(levels);
    const auto unwritten = std::min(wanted, m_unwrittenSaves);
    m_unwrittenSaves -= unwritten;
    const auto count = std::min(wanted - unwritten, m_saved.size());
    if (count == 0) return;
    WriteState(detail::emrRestoreDC, static_cast<std::uint32_t>(-static_cast<int>(count)));
    m_written = m_saved[m_saved.size() - count];
    m_saved.resize(m_saved.size() - count);
}

// Objects.

bool MetafileDevice::Recorder::IsSelected(std::uint32_t handle) const {
    const auto has = [handle](const Written& state) {
        return state.pen == handle || state.brush == handle || state.font == handle;
    };
    return has(m_written) || std::any_of(m_saved.begin(), m_saved.end(), has);
}

std::uint32_t MetafileDevice::Recorder::FreeHandle() {
    const auto free = std::find(m_handles.begin(), m_handles.end(), false);
    const auto index = static_cast<std::uint32_t>(free - m_handles.begin());
    if (free == m_handles.end()) m_handles.push_back(true);
    m_handles[index] = true;
    return index;
}

void MetafileDevice::Recorder::DeleteHandle(std::uint32_t handle) {
    WriteState(detail::emrDeleteObject, handle);
    m_handles[handle] = false;
}

template <class Description>
void MetafileDevice::Recorder::MakeRoom(Objects<Description>& objects) {
    auto& entries = objects.entries;
    auto oldest = entries.end();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        if (IsSelected(entry->handle)) continue;
        if (oldest == entries.end() || entry->lastUse < oldest->lastUse) oldest = entry;
    }
    if (oldest == entries.end()) return;
    DeleteHandle(oldest->handle);
    entries.erase(oldest);
}

template <class Description, class Create>
std::uint32_t MetafileDevice::Recorder::HandleFor(Objects<Description>& objects,
                                                  const Description& description, Create create) {
    ++m_uses;
    if (auto* known = objects.Find(description)) {
        known->lastUse = m_uses;
        return known->handle;
    }
    if (objects.entries.size() >= cKeptObjects) MakeRoom(objects);
    const std::uint32_t handle = FreeHandle();
    create(handle);
    objects.entries.push_back({description, handle, m_uses});
    return handle;
}

void MetafileDevice::Recorder::Select(std::uint32_t& written, std::uint32_t handle) {
    SetState(written, handle, detail::emrSelectObject);
}

void MetafileDevice::Recorder::UsePen(const LOGPEN& pen) {
    if (pen.lopnStyle == PS_NULL)
        return Select(m_written.pen, detail::cStockObject | std::uint32_t{NULL_PEN});
    const LOGPEN plain = {pen.lopnStyle, {std::max<LONG>(pen.lopnWidth.x, 0), 0}, pen.lopnColor};
    Select(m_written.pen, HandleFor(m_pens, plain, [&](std::uint32_t handle) {
               EmfCursor record = Begin(detail::emrCreatePen, 28);
               if (!record) return;
               record.Put(handle);
               record.Put(plain.lopnStyle);
               record.Put(plain.lopnWidth);
               record.Put(plain.lopnColor);
           }));
}

void MetafileDevice::Recorder::UseBrush(const LOGBRUSH& brush) {
    if (brush.lbStyle == BS_NULL) {
        return Select(m_written.brush, detail::cStockObject | std::uint32_t{NULL_BRUSH});
    }
    Select(m_written.brush, HandleFor(m_brushes, brush, [&](std::uint32_t handle) {
               EmfCursor record = Begin(detail::emrCreateBrushIndirect, 24);
               if (!record) return;
               record.Put(handle);
               record.Put(brush.lbStyle);
               record.Put(brush.lbColor);
               record.Put(static_cast<std::uint32_t>(brush.lbHatch));
           }));
}

void MetafileDevice::Recorder::UseFont(const LOGFONTA& font) {
    Select(m_written.font,
           HandleFor(m_fonts, font, [&](std::uint32_t handle) { CreateFontRecord(handle, font); }));
}

void MetafileDevice::Recorder::CreateFontRecord(std::uint32_t handle, const LOGFONTA& font) {
    EmfCursor record = Begin(detail::emrExtCreateFontIndirectW, detail::cExtendedFontSize);
    if (!record) return;
    record.Put(handle);
    for (const LONG field : {font.lfHeight, LONG{0}, LONG{0}, LONG{0}, font.lfWeight}) {
        record.Put(field);
    }
    for (const BYTE field :
         {font.lfItalic, font.lfUnderline, font.lfStrikeOut, font.lfCharSet, font.lfOutPrecision,
          font.lfClipPrecision, font.lfQuality, font.lfPitchAndFamily}) {
        record.Put8(field);
    }
    for (const char* ch = font.lfFaceName; *ch != '\0'; ++ch) {
        record.Put16(static_cast<std::uint32_t>(toUnicode(*ch)));
    }
}

// State.

void MetafileDevice::Recorder::UseBackground(const Paint& paint) {
    SetState(m_written.backgroundColor, paint.background, detail::emrSetBkColor);
    SetState(m_written.backgroundMode, paint.opaque ? OPAQUE : TRANSPARENT, detail::emrSetBkMode);
}

// Some readers take a copied region for none at all: a clip is reset and then intersected.
void MetafileDevice::Recorder::UseClip(const Region* clip) {
    if (clip == nullptr ? !m_written.clip : m_written.clip == *clip) return;
    if (m_written.clip) {
        if (auto record = Begin(detail::emrExtSelectClipRgn, cRecordHead + 2 * cWord)) {
            record.Put(std::uint32_t{0});
            record.Put(static_cast<std::uint32_t>(RGN_COPY));
        }
    }
    m_written.clip = clip != nullptr ? std::optional(*clip) : std::nullopt;
    if (clip != nullptr) IntersectClip(*clip);
}

void MetafileDevice::Recorder::IntersectClip(const Region& clip) {
    const auto count = clip.Rects().size();
    if (count <= 1) {
        if (auto record = Begin(detail::emrIntersectClipRect, cRecordHead + cRect)) {
            record.Put(clip.Bounds());
        }
        return;
    }
    const std::size_t data = detail::cRegionHeader + count * cRect;
    EmfCursor record = Begin(detail::emrExtSelectClipRgn, cRecordHead + 2 * cWord + data);
    if (!record) return;
    record.Put(static_cast<std::uint32_t>(data));
    record.Put(static_cast<std::uint32_t>(RGN_AND));
    record.Put(detail::cRegionHeader);
    record.Put(detail::cRegionRects);
    record.Put(static_cast<std::uint32_t>(count));
    record.Put(static_cast<std::uint32_t>(count * cRect));
    record.Put(clip.Bounds());
    for (const RECT& rect : clip.Rects()) record.Put(rect);
}

void MetafileDevice::Recorder::AddBounds(const RECT& inclusiveBounds, const Region* clip) {
    if (isWithin(inclusiveBounds, m_bounds)) return;
    RECT bounds = inclusiveBounds;
    if (clip != nullptr) {
        const RECT inside = inclusive(clip->Bounds());
        bounds = {std::max(bounds.left, inside.left), std::max(bounds.top, inside.top),
                  std::min(bounds.right, inside.right), std::min(bounds.bottom, inside.bottom)};
    }
    if (bounds.left > bounds.right || bounds.top > bounds.bottom) return;
    m_bounds = {std::min(bounds.left, m_bounds.left), std::min(bounds.top, m_bounds.top),
                std::max(bounds.right, m_bounds.right), std::max(bounds.bottom, m_bounds.bottom)};
}

// Drawing.

void MetafileDevice::Recorder::Line(const Paint& paint, POINT from, POINT to) {
    UseClip(paint.clip);
    UsePen(paint.pen);
    if (paint.pen.lopnStyle != PS_SOLID) UseBackground(paint);
    constexpr std::size_t size = cRecordHead + cPoint;
    if (m_written.position != from) {
        if (auto record = Begin(detail::emrMoveToEx, size)) record.Put(from);
    }
    if (auto record = Begin(detail::emrLineTo, size)) record.Put(to);
    m_written.position = to;
    const std::array<POINT, 2> ends = {from, to};
    AddBounds(withPen(boundsOf(ends), paint.pen), paint.clip);
}

void MetafileDevice::Recorder::Points(const Paint& paint, std::span<const POINT> points,
                                      EmfRecord type, EmfRecord shortType) {
    const bool closed = type == detail::emrPolygon;
    UseClip(paint.clip);
    UsePen(paint.pen);
    if (closed) {
        UseBrush(paint.brush);
        SetState(m_written.fillMode, paint.fillMode, detail::emrSetPolyFillMode);
    }
    if (paint.pen.lopnStyle != PS_SOLID || paint.brush.lbStyle == BS_HATCHED) UseBackground(paint);
    const RECT bounds = withPen(boundsOf(points), paint.pen);
    const bool isShort = std::all_of(points.begin(), points.end(), fitsShort);
    const std::size_t data = points.size() * (isShort ? cShortPoint : cPoint);
    EmfCursor record = Begin(isShort ? shortType : type, cRecordHead + cRect + cWord + data);
    if (!record) return;
    record.Put(bounds);
    record.Put(static_cast<std::uint32_t>(points.size()));
    for (const POINT& point : points) {
        if (isShort) {
            record.Put16(static_cast<std::uint32_t>(point.x));
            record.Put16(static_cast<std::uint32_t>(point.y));
        } else {
            record.Put(point);
        }
    }
    AddBounds(bounds, paint.clip);
}

void MetafileDevice::Recorder::Shape(const Paint& paint, const RECT& rect, EmfRecord type) {
    UseClip(paint.clip);
    UsePen(paint.pen);
    UseBrush(paint.brush);
    if (paint.pen.lopnStyle != PS_SOLID || paint.brush.lbStyle == BS_HATCHED) UseBackground(paint);
    EmfCursor record = Begin(type, cRecordHead + cRect);
    if (!record) return;
    record.Put(inclusive(rect));
    AddBounds(withPen(inclusive(rect), paint.pen), paint.clip);
}

void MetafileDevice::Recorder::Fill(const Paint& paint, const RECT& rect) {
    if (paint.brush.lbStyle == BS_NULL) return;
    UseClip(paint.clip);
    UseBrush(paint.brush);
    if (paint.brush.lbStyle == BS_HATCHED) UseBackground(paint);
    constexpr std::size_t size = 100;
    EmfCursor record = Begin(detail::emrBitBlt, size);
    if (!record) return;
    record.Put(inclusive(rect));
    record.Put(POINT{rect.left, rect.top});
    record.Put(POINT{CRect(rect).Width(), CRect(rect).Height()});
    record.Put(detail::cPatCopy);
    record.Skip(cPoint);
    for (const float part : {1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F}) record.Put(part);
    AddBounds(inclusive(rect), paint.clip);
}

void MetafileDevice::Recorder::Fill(const Paint& paint, const Region& region) {
    for (const RECT& rect : region.Rects()) Fill(paint, rect);
}

void MetafileDevice::Recorder::Pixel(const Paint& paint, POINT point, COLORREF color) {
    UseClip(paint.clip);
    EmfCursor record = Begin(detail::emrSetPixelV, cRecordHead + cPoint + cWord);
    if (!record) return;
    record.Put(point);
    record.Put(color);
    AddBounds({point.x, point.y, point.x, point.y}, paint.clip);
}

void MetafileDevice::Recorder::Text(const TextRun& run) {
    CRect background(run.background);
    if (run.isClipped && run.hasBackground) {
        const CRect whole = background;
        background.IntersectRect(&whole, &run.clipRect);
        Paint paint;
        paint.brush = {BS_SOLID, run.backgroundColor, 0};
        paint.clip = run.clip;
        if (!background.IsRectEmpty()) Fill(paint, background);
    }
    const bool opaque = run.hasBackground && !run.isClipped;
    UseClip(run.clip);
    UseFont(*run.font);
    SetState(m_written.textColor, run.color, detail::emrSetTextColor);
    if (opaque) SetState(m_written.backgroundColor, run.backgroundColor, detail::emrSetBkColor);
    SetState(m_written.backgroundMode, TRANSPARENT, detail::emrSetBkMode);
    if (!std::exchange(m_written.onBaseLine, true)) {
        WriteState(detail::emrSetTextAlign, TA_LEFT | TA_BASELINE);
    }
    const std::size_t length = run.text.size();
    const std::size_t textBytes = (2 * length + 3) / 4 * 4;
    EmfCursor record =
        Begin(detail::emrExtTextOutW, detail::cTextSize + textBytes + cWord * length);
    if (!record) return;
    const RECT cell = {run.origin.x, run.origin.y - run.sizedFont->Ascent(),
                       run.origin.x + run.positions.back(),
                       run.origin.y + run.sizedFont->Descent()};
    record.Put(inclusive(cell));
    record.Put(detail::cGraphicsCompatible);
    record.Put(static_cast<float>(m_caps.widthMm * cHundredths) / static_cast<float>(m_caps.width));
    record.Put(static_cast<float>(m_caps.heightMm * cHundredths) /
               static_cast<float>(m_caps.height));
    record.Put(run.origin);
    record.Put(static_cast<std::uint32_t>(length));
    record.Put(static_cast<std::uint32_t>(detail::cTextSize));
    record.Put(opaque ? ETO_OPAQUE : run.isClipped ? ETO_CLIPPED : 0);
    record.Put(opaque ? run.background : run.isClipped ? run.clipRect : RECT{0, 0, -1, -1});
    record.Put(static_cast<std::uint32_t>(detail::cTextSize + textBytes));
    const bool isSymbol = isSymbolFont(*run.font);
    for (const char ch : run.text) record.Put16(codeOf(ch, isSymbol));
    record.Skip(textBytes - 2 * length);
    for (std::size_t i = 0; i < length; ++i) {
        record.Put(run.positions[i + 1] - run.positions[i]);
    }
    AddBounds(inclusive(cell), run.clip);
    if (opaque) AddBounds(inclusive(run.background), run.clip);
}

// The device.

MetafileDevice::MetafileDevice(const DrawingDevice& reference, const std::optional<RECT>& frame,
                               std::string_view description)
    : m_recorder(std::make_unique<Recorder>(reference, frame, description)) {}

MetafileDevice::~MetafileDevice() = default;

std::vector<BYTE> MetafileDevice::Finish() {
    return m_recorder->Finish();
}

const DeviceCaps& MetafileDevice::Caps() const {
    return m_recorder->Caps();
}

const TextMetricsSource& MetafileDevice::TextMetrics() const {
    return m_recorder->Reference().TextMetrics();
}

void MetafileDevice::DrawLine(const Paint& paint, POINT from, POINT to) {
    if (m_recorder->IsOpen()) m_recorder->Line(paint, from, to);
}

void MetafileDevice::DrawPolyline(const Paint& paint, std::span<const POINT> points) {
    if (!m_recorder->IsOpen()) return;
    m_recorder->Points(paint, points, detail::emrPolyline, detail::emrPolyline16);
}

void MetafileDevice::DrawPolygon(const Paint& paint, std::span<const POINT> points) {
    if (!m_recorder->IsOpen()) return;
    m_recorder->Points(paint, points, detail::emrPolygon, detail::emrPolygon16);
}

void MetafileDevice::DrawRectangle(const Paint& paint, const RECT& rect) {
    if (m_recorder->IsOpen()) m_recorder->Shape(paint, rect, detail::emrRectangle);
}

void MetafileDevice::DrawEllipse(const Paint& paint, const RECT& rect) {
    if (m_recorder->IsOpen()) m_recorder->Shape(paint, rect, detail::emrEllipse);
}

void MetafileDevice::FillRectangle(const Paint& paint, const RECT& rect) {
    if (m_recorder->IsOpen()) m_recorder->Fill(paint, rect);
}

void MetafileDevice::FillRegion(const Paint& paint, const Region& region) {
    if (m_recorder->IsOpen()) m_recorder->Fill(paint, region);
}

void MetafileDevice::SetPixel(const Paint& paint, POINT point, COLORREF color) {
    if (m_recorder->IsOpen()) m_recorder->Pixel(paint, point, color);
}

void MetafileDevice::DrawText(const TextRun& run) {
    if (m_recorder->IsOpen()) m_recorder->Text(run);
}

void MetafileDevice::SaveState() {
    if (m_recorder->IsOpen()) m_recorder->Save();
}

void MetafileDevice::RestoreState(int levels) {
    if (m_recorder->IsOpen()) m_recorder->Restore(levels);
}

}  // namespace tessalink
