#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/graphics/Geometry.h"

// The enhanced-metafile format as far as it is written or played here: little-endian records of a
// type, a size in bytes (a multiple of 4) and fields of 32 bits.
namespace tessalink::detail {

enum EmfRecord : std::uint32_t {
    emrHeader = 1,
    emrPolygon = 3,
    emrPolyline = 4,
    emrPolylineTo = 6,
    emrSetWindowExtEx = 9,
    emrSetWindowOrgEx = 10,
    emrSetViewportExtEx = 11,
    emrSetViewportOrgEx = 12,
    emrSetBrushOrgEx = 13,
    emrEof = 14,
    emrSetPixelV = 15,
    emrSetMapperFlags = 16,
    emrSetMapMode = 17,
    emrSetBkMode = 18,
    emrSetPolyFillMode = 19,
    emrSetRop2 = 20,
    emrSetStretchBltMode = 21,
    emrSetTextAlign = 22,
    emrSetTextColor = 24,
    emrSetBkColor = 25,
    emrMoveToEx = 27,
    emrExcludeClipRect = 29,
    emrIntersectClipRect = 30,
    emrSaveDC = 33,
    emrRestoreDC = 34,
    emrSelectObject = 37,
    emrCreatePen = 38,
    emrCreateBrushIndirect = 39,
    emrDeleteObject = 40,
    emrEllipse = 42,
    emrRectangle = 43,
    emrLineTo = 54,
    emrSetArcDirection = 57,
    emrSetMiterLimit = 58,
    emrGdiComment = 70,
    emrFillRgn = 71,
    emrExtSelectClipRgn = 75,
    emrBitBlt = 76,
    emrExtCreateFontIndirectW = 82,
    emrExtTextOutA = 83,
    emrExtTextOutW = 84,
    emrPolygon16 = 86,
    emrPolyline16 = 87,
    emrPolylineTo16 = 89,
    emrExtCreatePen = 95,
    emrSetIcmMode = 98,
    emrSetLayout = 115,
};

inline constexpr std::uint32_t cEmfSignature = 0x464D4520;  // " EMF"
inline constexpr std::uint32_t cEmfVersion = 0x10000;
inline constexpr std::uint32_t cStockObject = 0x80000000;  // plus the index of the stock object
inline constexpr std::uint32_t cPatCopy = 0x00F00021;      // paint with the brush
inline constexpr std::uint32_t cGraphicsCompatible = 1;
inline constexpr std::uint32_t cRegionHeader = 32;  // bytes
inline constexpr std::uint32_t cRegionRects = 1;    // the only kind of region data

// States that may be saved at a time: each takes far more memory than its record.
inline constexpr std::size_t cMaxSavedStates = 256;

// Where things stand in records, in bytes.
inline constexpr std::size_t cHeaderSize = 108;  // without the description
inline constexpr std::size_t cHeaderBounds = 8;
inline constexpr std::size_t cHeaderFrame = 24;
inline constexpr std::size_t cHeaderBytes = 48;
inline constexpr std::size_t cHeaderRecords = 52;
inline constexpr std::size_t cHeaderHandles = 56;
inline constexpr std::size_t cTextSize = 76;  // an EXTTEXTOUT before its text
inline constexpr std::size_t cFontSize =
    12 + 92;  // EXTCREATEFONTINDIRECTW up to the LOGFONTA's end
inline constexpr std::size_t cExtendedFontSize = 332;  // with the rest of an EXTLOGFONTW

// Where the fields of a record go, one after the other; false where there is no room. A value of
// its own, so that the place of the next field need not be stored after each.
class EmfCursor {
public:
    EmfCursor() = default;
    explicit EmfCursor(BYTE* place) : m_place(place) {}
    explicit operator bool() const { return m_place != nullptr; }

    void Put(std::integral auto value) {
        static_assert(sizeof(value) == sizeof(std::uint32_t));
        Store(static_cast<std::uint32_t>(value));
    }
    void Put16(std::uint32_t value) { Store(static_cast<std::uint16_t>(value)); }
    void Put8(BYTE value) { *m_place++ = value; }
    void Put(float value) { Store(std::bit_cast<std::uint32_t>(value)); }
    void Put(const POINT& point) {
        Put(point.x);
        Put(point.y);
    }
    void Put(const RECT& rect) {
        Put(rect.left);
        Put(rect.top);
        Put(rect.right);
        Put(rect.bottom);
    }
    void Skip(std::size_t bytes) { m_place += bytes; }

private:
    template <class Number>
    void Store(Number value) {
        if constexpr (std::endian::native == std::endian::big) {
            value = static_cast<Number>(sizeof(Number) == 2 ? __builtin_bswap16(value & 0xFFFF)
                                                            : __builtin_bswap32(value));
        }
        std::memcpy(m_place, &value, sizeof(value));
        m_place += sizeof(value);
    }

    BYTE* m_place = nullptr;
};

// The bytes of a metafile while it is written.
class EmfBuffer {
public:
    std::size_t Size() const { return m_size; }
    // What is written, in no more than twice its memory.
    std::vector<BYTE> Take() {
        const auto end = m_bytes.begin() + static_cast<std::ptrdiff_t>(m_size);
        if (m_size < m_bytes.size() / 2) return {m_bytes.begin(), end};
        m_bytes.erase(end, m_bytes.end());
        return std::move(m_bytes);
    }

    // Starts a record of this size, up to the next Begin; what is not put into it is 0.
    EmfCursor Begin(EmfRecord type, std::size_t size) {
        if (size > m_bytes.size() - m_size) Grow(size);
        EmfCursor record(m_bytes.data() + m_size);
        m_size += size;
        record.Put(static_cast<std::uint32_t>(type));
        record.Put(static_cast<std::uint32_t>(size));
        return record;
    }
    // A place in what was written.
    EmfCursor At(std::size_t place) { return EmfCursor(m_bytes.data() + place); }

private:
    static constexpr std::size_t cFirstRoom = std::size_t{64} << 10;

    void Grow(std::size_t size) {
        m_bytes.resize(std::max(2 * m_bytes.size(), std::max(cFirstRoom, m_size + size)));
    }

    std::vector<BYTE> m_bytes;  // with room for more than is written
    std::size_t m_size = 0;     // what is written
};

}  // namespace tessalink::detail
