#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

/// Pictures of pixels, drawn by the platform in memory.
namespace tessalink {

/// The longest side, in pixels.
inline constexpr int cMaxBitmapSide = 16384;

/// A white picture of so many pixels, `dpi` of which make an inch. A size or resolution below 1, or
/// a side above cMaxBitmapSide, raises CInvalidArgException; without enough memory std::bad_alloc.
class TESSALINK_API MemoryBitmap {
public:
    /// See above.
    MemoryBitmap(int width, int height, int dpi);
    ~MemoryBitmap();
    /// The other one can't be used any more.
    MemoryBitmap(MemoryBitmap&& other) noexcept;
    /// The other one can't be used any more.
    MemoryBitmap& operator=(MemoryBitmap&& other) noexcept;

    /// In pixels.
    int Width() const;
    /// In pixels.
    int Height() const;
    /// Pixels per inch.
    int Dpi() const;
    /// For the platform's own calls; it belongs to the bitmap.
    HDC Context() const;
    /// Draws on it with a context of the library, in units of the resolution.
    void Draw(const std::function<void(CDC&)>& draw);
    /// The color of a pixel inside, and those of all pixels, row by row.
    COLORREF Pixel(int x, int y) const;
    /// The colors of all pixels, row by row.
    std::vector<std::uint32_t> Pixels() const;
    /// The picture as a PNG file; its bytes are the same from run to run. What the system's encoder
    /// refuses raises CImageException.
    std::vector<BYTE> Png() const;
    /// A PNG file as a bitmap of 96 dpi; what is none raises CImageException.
    static MemoryBitmap OfPng(const std::vector<BYTE>& png);

private:
    struct Bits;

    std::unique_ptr<Bits> m_bits;
};

using DrawPicture = std::function<void(CDC&)>;

/// A picture of so many pixels as a PNG file, over white. In the named file it stands wholly or not
/// at all: a fault of the file raises CFileException, and what was there stays.
TESSALINK_API std::vector<BYTE> pngOf(int width, int height, int dpi, const DrawPicture& draw);
TESSALINK_API void savePng(const char* path, int width, int height, int dpi,
                           const DrawPicture& draw);

}  // namespace tessalink
