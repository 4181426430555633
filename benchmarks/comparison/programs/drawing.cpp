// Pictures and their hexadecimal text by the product, by packaged libraries and at the physical
// limit, in turns in one process.
//
//     drawing metafile ROUNDS     480 marks with labels into a metafile in memory
//     drawing svg ROUNDS          the same into SVG
//     drawing hex BYTES ROUNDS    the digits of so many bytes into given memory
//     drawing hexfile BYTES FOLDER ROUNDS    the same as an RTF picture into a file
//
// Writes "NAME NANOSECONDS" for each turn of each round.

#include <fcntl.h>
#include <unistd.h>

#include <cstring>

#include "benchmarks/comparison/programs/Marks.h"
#include "benchmarks/comparison/programs/Timing.h"
#include "graphs/rtf/MetaFile.h"
#include "platform/files/WholeFile.h"
#include "platform/graphics/CDC.h"
#include "platform/graphics/MetafileDevice.h"
#include "platform/graphics/NullDevice.h"
#include "platform/graphics/SvgDevice.h"

#if __has_include(<libEMF/emf.h>)
#define HAS_LIBEMF
#endif
#if __has_include(<cairo/cairo-svg.h>)
#include <cairo/cairo-svg.h>
#define HAS_CAIRO
#endif
#if __has_include(<sodium.h>)
#include <sodium.h>
#define HAS_SODIUM
#endif
#if __has_include(<nettle/base16.h>)
#include <nettle/base16.h>
#define HAS_NETTLE
#endif

namespace {

struct Contestant {
    const char* name;
    std::size_t (*draw)();
};

void inTurns(std::span<const Contestant> contestants, int rounds) {
    constexpr int pictures = 20;
    for (const Contestant& one : contestants) {
        if (one.draw() == 0) timing::fail(std::string(one.name) + " drew nothing");
    }
    for (int round = 0; round < rounds; ++round) {
        for (const Contestant& one : contestants) {
            timing::report(one.name, timing::once([&] {
                                         for (int i = 0; i < pictures; ++i) one.draw();
                                     }) / pictures);
        }
    }
}

void drawMarks(CDC& dc) {
    CFont font;
    font.CreateFont(marks::cFontHeight, 0, 0, 0, 400, 0, 0, 0, 0, 4, 0, 2, 6, "Arial");
    CPen pen(PS_SOLID, 1, marks::cPenColor);
    CBrush brush(COLORREF{marks::cBrushColor});
    dc.SelectObject(&font);
    dc.SelectObject(&pen);
    dc.SelectObject(&brush);
    dc.SetBkMode(TRANSPARENT);
    for (const marks::Mark& mark : marks::all()) {
        dc.Ellipse(mark.x, mark.y, mark.x + marks::cSize, mark.y + marks::cSize);
        dc.TextOut(mark.x + marks::cLabelOffset, mark.y, mark.label, mark.length);
    }
}

std::size_t productMetafile() {
    const tessalink::NullDevice reference;
    tessalink::MetafileDevice device(reference);
    CDC dc(device);
    drawMarks(dc);
    return device.Finish().size();
}

std::size_t productSvg() {
    tessalink::PictureSheet sheet;
    sheet.width = marks::cColumns * marks::cPitch;
    sheet.height = marks::cCount / marks::cColumns * marks::cPitch;
    tessalink::SvgDevice device(sheet);
    CDC dc(device);
    drawMarks(dc);
    return device.Finish().size();
}

// The records of the picture and nothing else: field after field into a growing buffer, without
// measuring, comparing or looking anything up.
std::size_t bareRecords() {
    std::vector<unsigned char> bytes;
    std::size_t at = 0;
    const auto begin = [&](std::uint32_t type, std::size_t size) {
        at = bytes.size();
        bytes.resize(at + size);
        const std::uint32_t head[] = {type, static_cast<std::uint32_t>(size)};
        std::memcpy(bytes.data() + at, head, sizeof head);
        at += sizeof head;
    };
    const auto put = [&](auto value) {
        std::memcpy(bytes.data() + at, &value, sizeof value);
        at += sizeof value;
    };
    for (const marks::Mark& mark : marks::all()) {
        begin(42, 24);
        for (const int edge : {mark.x, mark.y, mark.x + marks::cSize, mark.y + marks::cSize}) {
            put(edge);
        }
        const auto length = static_cast<std::size_t>(mark.length);
        const std::size_t text = (2 * length + 3) / 4 * 4;
        begin(84, 76 + text + 4 * length);
        for (const int field : {mark.x, mark.y, mark.x + 20, mark.y + 16, 1, 0, 0, mark.x, mark.y,
                                mark.length, 76, 0, 0, 0, -1, -1, static_cast<int>(76 + text)}) {
            put(field);
        }
        for (const char ch : std::string_view(mark.label, length)) {
            put(static_cast<std::uint16_t>(ch));
        }
        at += text - 2 * length;
        for (std::size_t i = 0; i < length; ++i) put(8);
    }
    return bytes.size();
}

int metafile(char** arguments) {
    const Contestant contestants[] = {{"tessalink", productMetafile},
#ifdef HAS_LIBEMF
                                      {"libemf", libemfMarks},
#endif
                                      {"bare records", bareRecords}};
    inTurns(contestants, std::atoi(arguments[0]));
    return 0;
}

#ifdef HAS_CAIRO
std::size_t cairoSvg() {
    std::string text;
    const auto append = [](void* to, const unsigned char* bytes, unsigned length) {
        static_cast<std::string*>(to)->append(reinterpret_cast<const char*>(bytes), length);
        return CAIRO_STATUS_SUCCESS;
    };
    cairo_surface_t* surface =
        cairo_svg_surface_create_for_stream(append, &text, marks::cColumns * marks::cPitch,
                                            marks::cCount / marks::cColumns * marks::cPitch);
    cairo_t* cr = cairo_create(surface);
    cairo_select_font_face(cr, "Liberation Sans", CAIRO_FONT_SLANT_NORMAL,
                           CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, 14);
    cairo_set_line_width(cr, 1);
    for (const marks::Mark& mark : marks::all()) {
        cairo_new_sub_path(cr);
        cairo_arc(cr, mark.x + marks::cSize / 2.0, mark.y + marks::cSize / 2.0,
                  marks::cSize / 2.0 - 0.5, 0, 2 * 3.14159265358979);
        cairo_set_source_rgb(cr, 0.75, 0, 0);
        cairo_fill_preserve(cr);
        cairo_set_source_rgb(cr, 0, 0, 0.75);
        cairo_stroke(cr);
        cairo_move_to(cr, mark.x + marks::cLabelOffset, mark.y + 13);
        cairo_set_source_rgb(cr, 0, 0, 0);
        cairo_show_text(cr, mark.label);
    }
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
    return text.size();
}
#endif

int svg(char** arguments) {
    const Contestant contestants[] = {
#ifdef HAS_CAIRO
        {"cairo", cairoSvg},
#endif
        {"tessalink", productSvg}};
    inTurns(contestants, std::atoi(arguments[0]));
    return 0;
}

std::vector<BYTE> someBytes(std::size_t size) {
    std::vector<BYTE> bytes(size);
    std::uint64_t state = 1;
    for (BYTE& byte : bytes) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        byte = static_cast<BYTE>(state >> 56);
    }
    return bytes;
}

int hex(char** arguments) {
    const std::size_t size = std::strtoull(arguments[0], nullptr, 10);
    const std::vector<BYTE> bytes = someBytes(size);
    std::vector<char> digits(2 * size + 1);
    std::vector<char> copy(2 * size + 1);
    for (int round = 0; round < std::atoi(arguments[1]); ++round) {
        timing::report("tessalink", timing::once([&] {
                           tessalink::writeHexDigits(bytes.data(), size, digits.data());
                       }));
        timing::report("memcpy",
                       timing::once([&] { std::memcpy(copy.data(), digits.data(), 2 * size); }));
        if (std::memcmp(copy.data(), digits.data(), 2 * size) != 0) timing::fail("no copy");
#ifdef HAS_SODIUM
        timing::report("libsodium", timing::once([&] {
                           sodium_bin2hex(copy.data(), copy.size(), bytes.data(), size);
                       }));
#endif
#ifdef HAS_NETTLE
        timing::report("nettle", timing::once([&] {
                           nettle_base16_encode_update(copy.data(), size, bytes.data());
                       }));
#endif
    }
    return 0;
}

// A metafile of about this many bytes: a comment record fills it up.
HENHMETAFILE largePicture(std::size_t size) {
    const tessalink::NullDevice reference;
    tessalink::MetafileDevice device(reference);
    CDC dc(device);
    const std::size_t pictures = size / productMetafile() + 1;
    for (std::size_t i = 0; i < pictures; ++i) drawMarks(dc);
    std::vector<BYTE> bytes = device.Finish();
    return tessalink::makeEnhMetaFile(std::move(bytes));
}

// As cp does it: large blocks, one file to the other.
void copyFile(const std::string& from, const std::string& to) {
    constexpr std::size_t block = 256 * 1024;
    std::vector<char> buffer(block);
    const int in = ::open(from.c_str(), O_RDONLY);
    const int out = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    for (ssize_t count = 0; (count = ::read(in, buffer.data(), block)) > 0;) {
        if (::write(out, buffer.data(), static_cast<std::size_t>(count)) != count) {
            timing::fail("cannot write " + to);
        }
    }
    ::close(in);
    ::close(out);
}

int hexfile(char** arguments) {
    const std::string folder = arguments[1];
    const HENHMETAFILE picture = largePicture(std::strtoull(arguments[0], nullptr, 10));
    const std::string emf = folder + "/picture.emf";
    DeleteEnhMetaFile(CopyEnhMetaFile(picture, emf.c_str()));
    MetaFile meta(emf.c_str());
    const std::string rtf = folder + "/picture.rtf";
    const std::string copy = folder + "/copy.rtf";
    for (int round = 0; round < std::atoi(arguments[2]); ++round) {
        ::unlink(rtf.c_str());
        timing::report("tessalink", timing::once([&] {
                           CFile file(rtf.c_str(), CFile::modeCreate | CFile::modeWrite);
                           meta.SaveAsRTF(file, 6, 4);
                           file.Close();
                       }));
        ::unlink(copy.c_str());
        timing::report("copy of the file", timing::once([&] { copyFile(rtf, copy); }));
    }
    DeleteEnhMetaFile(picture);
    return 0;
}

constexpr timing::Mode cModes[] = {
    {"metafile", 1, metafile}, {"svg", 1, svg}, {"hex", 2, hex}, {"hexfile", 3, hexfile}};

}  // namespace

int main(int argc, char** argv) {
    return timing::runMode(cModes, argc, argv);
}
