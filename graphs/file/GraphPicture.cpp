#include "graphs/file/GraphPicture.h"

#include <cmath>
#include <string>
#include <string_view>

#include "graphs/rtf/MetaFile.h"
#include "platform/base/CodePage.h"
#include "platform/files/CFile.h"
#include "platform/graphics/NullDevice.h"
#include "platform/graphics/PdfDevice.h"
#include "platform/graphics/SvgDevice.h"

namespace tessalink {

namespace {

constexpr int cHundredthsPerInch = 2540;  // of a millimetre
constexpr double cMmPerInch = 25.4;
constexpr std::string_view cDocumentEnd = "\\par}\r\n";

/// The graph's size in units.
CRect sheetRect(const GraphSheet& sheet, int dpi) {
    return {0, 0, static_cast<int>(std::lround(sheet.width * dpi)),
            static_cast<int>(std::lround(sheet.height * dpi))};
}

/// A device with the size of the fixed screen and another resolution.
DeviceCaps referenceOf(int dpi) {
    DeviceCaps caps = fixedScreen();
    const auto units = [dpi](int mm) {
        return static_cast<int>(std::lround(mm * dpi / cMmPerInch));
    };
    caps.dpiX = caps.dpiY = dpi;
    caps.width = units(caps.widthMm);
    caps.height = units(caps.heightMm);
    return caps;
}

HENHMETAFILE record(DescribedGraph& graph, int dpi) {
    const GraphSheet& sheet = graph.GetSheet();
    const RECT frame = sheetRect(sheet, cHundredthsPerInch);
    NullDevice device(referenceOf(dpi));
    CDC reference(device);
    CMetaFileDC recording;
    recording.CreateEnhanced(&reference, nullptr, &frame, nullptr);
    recording.SetAttribDC(&reference);
    graph.Draw(recording, sheetRect(sheet, dpi));
    return recording.CloseEnhanced();
}

template <class Device>
std::string pictureOf(DescribedGraph& graph, const GraphPictureOptions& options) {
    const GraphSheet& sheet = graph.GetSheet();
    const CRect rect = sheetRect(sheet, options.dpi);
    PictureSheet picture = {rect.right, rect.bottom, options.dpi};
    if (options.hasTextAlternative) {
        picture.title = sheet.title.View();
        picture.description = sheet.description.View();
    }
    Device device(picture);
    CDC dc(device);
    graph.Draw(dc, rect);
    return device.Finish();
}

/// The start of a document in the program's code page.
std::string documentStart() {
    const int charset = codePageCharset();
    const std::string ofFont = charset != 0 ? "\\fcharset" + std::to_string(charset) : "";
    return "{\\rtf1\\ansi\\ansicpg" + std::to_string(static_cast<int>(codePage())) +
           "\\deff0{\\fonttbl{\\f0\\fswiss" + ofFont + " Arial;}}\r\n\\pard ";
}

void write(CFile& file, std::string_view text) {
    file.Write(text.data(), text.size());
}

}  // namespace

CString textAlternative(const DescribedGraph& graph) {
    const GraphSheet& sheet = graph.GetSheet();
    if (sheet.title.IsEmpty() || sheet.description.IsEmpty())
        return sheet.title + sheet.description;
    return sheet.title + ". " + sheet.description;
}

std::vector<BYTE> graphAsMetafile(DescribedGraph& graph, int dpi) {
    MetaFile picture;
    picture.Attach(record(graph, dpi));
    const auto bytes = bytesOf(picture.GetHandle());
    return {bytes.begin(), bytes.end()};
}

std::string graphAsSvg(DescribedGraph& graph, const GraphPictureOptions& options) {
    return pictureOf<SvgDevice>(graph, options);
}

std::string graphAsPdf(DescribedGraph& graph, const GraphPictureOptions& options) {
    return pictureOf<PdfDevice>(graph, options);
}

void writeGraphAsRTF(DescribedGraph& graph, CFile& file, const GraphPictureOptions& options) {
    MetaFile picture;
    picture.Attach(record(graph, options.dpi));
    const CString text = options.hasTextAlternative ? textAlternative(graph) : CString();
    const GraphSheet& sheet = graph.GetSheet();
    savePictureAsRTF(picture, file, sheet.width, sheet.height, text.View(), options.pictures);
}

void writeGraphDocument(DescribedGraph& graph, CFile& file, const GraphPictureOptions& options) {
    write(file, documentStart());
    writeGraphAsRTF(graph, file, options);
    write(file, cDocumentEnd);
}

}  // namespace tessalink
