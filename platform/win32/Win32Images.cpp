#include "platform/win32/Win32Images.h"

#include <objbase.h>
#include <wincodec.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "platform/base/CInvalidArgException.h"
#include "platform/files/WholeFile.h"
#include "platform/win32/CImageException.h"
#include "platform/win32/DcDevice.h"
#include "platform/win32/detail/ComPointer.h"
#include "platform/win32/detail/GdiHandle.h"

namespace tessalink {

using detail::ComPointer;
using detail::ContextHandle;
using detail::GdiHandle;

namespace {

constexpr int cScreenDpi = 96;
constexpr std::size_t cBytesOfPixel = 4;

// Components of the system in this thread, which may use them already in another way.
class Components {
public:
    Components() : m_isOurs(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
    ~Components() {
        if (m_isOurs) ::CoUninitialize();
    }
    Components(const Components&) = delete;
    Components& operator=(const Components&) = delete;

private:
    bool m_isOurs;
};

void check(HRESULT result, const char* what) {
    if (SUCCEEDED(result)) return;
    CString message;
    message.Format("The system %s (error %08X).", what, static_cast<unsigned int>(result));
    throw CImageException(message);
}

ComPointer<IWICImagingFactory> makeFactory() {
    ComPointer<IWICImagingFactory> factory;
    check(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                             IID_IWICImagingFactory, factory.Room()),
          "has no encoder of pictures");
    return factory;
}

std::vector<BYTE> bytesIn(IStream& stream) {
    STATSTG state = {};
    check(stream.Stat(&state, STATFLAG_NONAME), "can't read what it has written");
    std::vector<BYTE> bytes(static_cast<std::size_t>(state.cbSize.QuadPart));
    const LARGE_INTEGER start = {};
    stream.Seek(start, STREAM_SEEK_SET, nullptr);
    ULONG count = 0;
    check(stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), &count),
          "can't read what it has written");
    bytes.resize(count);
    return bytes;
}

}  // namespace

struct MemoryBitmap::Bits {
    int width;
    int height;
    int dpi;
    GdiHandle<HBITMAP> bitmap;
    ContextHandle context;
    BYTE* bits = nullptr;

    std::size_t Stride() const { return static_cast<std::size_t>(width) * cBytesOfPixel; }
    std::size_t Size() const { return Stride() * static_cast<std::size_t>(height); }
};

MemoryBitmap::MemoryBitmap(int width, int height, int dpi)
    : m_bits(std::make_unique<Bits>(Bits{width, height, dpi, {}, {}})) {
    if (std::min({width, height, dpi}) < 1 || std::max(width, height) > cMaxBitmapSide) {
        AfxThrowInvalidArgException();
    }
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // from the top down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 8 * cBytesOfPixel;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    m_bits->context.reset(::CreateCompatibleDC(nullptr));
    m_bits->bitmap.reset(
        ::CreateDIBSection(m_bits->context.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!m_bits->context || !m_bits->bitmap) throw std::bad_alloc();
    m_bits->bits = static_cast<BYTE*>(bits);
    ::SelectObject(m_bits->context.get(), m_bits->bitmap.get());
    std::memset(m_bits->bits, 0xFF, m_bits->Size());
}

MemoryBitmap::~MemoryBitmap() {
    // A bitmap does not end while it is selected.
    if (m_bits) m_bits->context.reset();
}

MemoryBitmap::MemoryBitmap(MemoryBitmap&& other) noexcept = default;
MemoryBitmap& MemoryBitmap::operator=(MemoryBitmap&& other) noexcept {
    std::swap(m_bits, other.m_bits);
    return *this;
}

int MemoryBitmap::Width() const {
    return m_bits->width;
}

int MemoryBitmap::Height() const {
    return m_bits->height;
}

int MemoryBitmap::Dpi() const {
    return m_bits->dpi;
}

HDC MemoryBitmap::Context() const {
    return m_bits->context.get();
}

void MemoryBitmap::Draw(const std::function<void(CDC&)>& draw) {
    DcDevice device(Context(), Width(), Height(), Dpi());
    CDC dc(device);
    draw(dc);
    ::GdiFlush();
}

COLORREF MemoryBitmap::Pixel(int x, int y) const {
    ::GdiFlush();
    const BYTE* const pixel = m_bits->bits + static_cast<std::size_t>(y) * m_bits->Stride() +
                              static_cast<std::size_t>(x) * cBytesOfPixel;
    return RGB(pixel[2], pixel[1], pixel[0]);
}

std::vector<std::uint32_t> MemoryBitmap::Pixels() const {
    ::GdiFlush();
    std::vector<std::uint32_t> pixels;
    pixels.reserve(m_bits->Size() / cBytesOfPixel);
    for (const BYTE* pixel = m_bits->bits; pixel < m_bits->bits + m_bits->Size();
         pixel += cBytesOfPixel) {
        pixels.push_back(RGB(pixel[2], pixel[1], pixel[0]));
    }
    return pixels;
}

std::vector<BYTE> MemoryBitmap::Png() const {
    ::GdiFlush();
    const Components components;
    const ComPointer<IWICImagingFactory> factory = makeFactory();
    constexpr const char* cRefused = "refuses the picture";
    ComPointer<IStream> stream;
    check(::CreateStreamOnHGlobal(nullptr, TRUE, stream.Place()), "has no memory for a picture");
    ComPointer<IWICBitmapEncoder> encoder;
    check(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.Place()),
          "has no encoder of PNG");
    check(encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache), cRefused);
    ComPointer<IWICBitmapFrameEncode> frame;
    check(encoder->CreateNewFrame(frame.Place(), nullptr), cRefused);
    check(frame->Initialize(nullptr), cRefused);
    check(frame->SetSize(static_cast<UINT>(Width()), static_cast<UINT>(Height())), cRefused);
    check(frame->SetResolution(Dpi(), Dpi()), cRefused);
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    check(frame->SetPixelFormat(&format), cRefused);
    if (::IsEqualGUID(format, GUID_WICPixelFormat24bppBGR) == 0) {
        check(WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT, cRefused);
    }
    constexpr std::size_t cBytesOfColor = 3;
    std::vector<BYTE> row(static_cast<std::size_t>(Width()) * cBytesOfColor);
    for (int y = 0; y < Height(); ++y) {
        const BYTE* from = m_bits->bits + static_cast<std::size_t>(y) * m_bits->Stride();
        for (std::size_t to = 0; to < row.size(); to += cBytesOfColor, from += cBytesOfPixel) {
            std::copy_n(from, cBytesOfColor, row.data() + to);
        }
        const auto length = static_cast<UINT>(row.size());
        check(frame->WritePixels(1, length, length, row.data()), cRefused);
    }
    check(frame->Commit(), cRefused);
    check(encoder->Commit(), cRefused);
    return bytesIn(*stream.Get());
}

MemoryBitmap MemoryBitmap::OfPng(const std::vector<BYTE>& png) {
    const Components components;
    const ComPointer<IWICImagingFactory> factory = makeFactory();
    constexpr const char* cNone = "finds no picture in the bytes";
    std::vector<BYTE> bytes = png;
    ComPointer<IWICStream> stream;
    check(factory->CreateStream(stream.Place()), cNone);
    check(stream->InitializeFromMemory(bytes.data(), static_cast<DWORD>(bytes.size())), cNone);
    ComPointer<IWICBitmapDecoder> decoder;
    check(factory->CreateDecoderFromStream(stream.Get(), nullptr, WICDecodeMetadataCacheOnDemand,
                                           decoder.Place()),
          cNone);
    ComPointer<IWICBitmapFrameDecode> frame;
    check(decoder->GetFrame(0, frame.Place()), cNone);
    ComPointer<IWICFormatConverter> converter;
    check(factory->CreateFormatConverter(converter.Place()), cNone);
    check(converter->Initialize(frame.Get(), GUID_WICPixelFormat32bppBGR, WICBitmapDitherTypeNone,
                                nullptr, 0, WICBitmapPaletteTypeCustom),
          cNone);
    UINT width = 0;
    UINT height = 0;
    check(converter->GetSize(&width, &height), cNone);
    MemoryBitmap result(static_cast<int>(std::min(width, UINT{cMaxBitmapSide} + 1)),
                        static_cast<int>(std::min(height, UINT{cMaxBitmapSide} + 1)), cScreenDpi);
    check(converter->CopyPixels(nullptr, static_cast<UINT>(result.m_bits->Stride()),
                                static_cast<UINT>(result.m_bits->Size()), result.m_bits->bits),
          cNone);
    return result;
}

std::vector<BYTE> pngOf(int width, int height, int dpi, const DrawPicture& draw) {
    MemoryBitmap bitmap(width, height, dpi);
    bitmap.Draw(draw);
    return bitmap.Png();
}

void savePng(const char* path, int width, int height, int dpi, const DrawPicture& draw) {
    const std::vector<BYTE> png = pngOf(width, height, dpi, draw);
    WholeFile file(path);
    file.Write(png.data(), png.size());
    file.Commit();
}

}  // namespace tessalink
