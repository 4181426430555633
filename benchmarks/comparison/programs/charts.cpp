// A chart of marks with labels and a legend by the product, in turns with what others need for it.
//
//     charts emf ROUNDS       480 marks as an enhanced metafile; beside it the marks by libEMF
//     charts svg ROUNDS       the same as SVG
//     charts rtf ROUNDS       480 marks as RTF drawing objects; beside it the same text by snprintf
//     charts linear ROUNDS    metafiles of 480 to 100,000 marks, in nanoseconds for a mark
//
// Writes "NAME NANOSECONDS" for each turn of each round.

#if __has_include(<libEMF/emf.h>)
#define HAS_LIBEMF
#endif

#include <cmath>
#include <string>

#include "benchmarks/comparison/programs/ChartGraph.h"
#include "benchmarks/comparison/programs/Timing.h"
#include "graphs/rtf/RTFGraph.h"
#include "platform/files/CMemFile.h"
#include "platform/graphics/CDC.h"
#include "platform/graphics/MetafileDevice.h"
#include "platform/graphics/NullDevice.h"
#include "platform/graphics/SvgDevice.h"

namespace {

template <class Device>
std::size_t draw(Device& device, int marks) {
    BarGraph graph;
    charts::fill(graph, marks);
    CDC dc(device);
    graph.Draw(&dc, charts::placeOf(graph));
    return device.Finish().size();
}

std::size_t productEmf(int marks) {
    const tessalink::NullDevice reference;
    tessalink::MetafileDevice device(reference);
    return draw(device, marks);
}

std::size_t productSvg() {
    tessalink::PictureSheet sheet;
    sheet.width = charts::cWidth;
    sheet.height = charts::cWidth;
    tessalink::SvgDevice device(sheet);
    return draw(device, marks::cCount);
}

template <class Work>
void report(const char* name, Work work) {
    constexpr int pictures = 20;
    timing::report(name, timing::once([&] {
                             for (int i = 0; i < pictures; ++i) {
                                 if (work() == 0) timing::fail(std::string(name) + " is empty");
                             }
                         }) / pictures);
}

int emf(char** arguments) {
    for (int round = 0; round < std::atoi(arguments[0]); ++round) {
        report("tessalink", [] { return productEmf(marks::cCount); });
#ifdef HAS_LIBEMF
        report("libemf", libemfMarks);
#endif
    }
    return 0;
}

int svg(char** arguments) {
    for (int round = 0; round < std::atoi(arguments[0]); ++round) report("tessalink", productSvg);
    return 0;
}

std::size_t productRtf() {
    CMemFile file;
    RTFGraph graph(file, 1, 1, 6, 4, 0, marks::cCount, 0, 100, RTFGraph::alPage);
    for (int i = 0; i < marks::cCount; ++i)
        graph.Plot(i, i % 100, marks::all()[static_cast<std::size_t>(i)].label);
    return file.GetLength();
}

// The text of those objects, its numbers computed likewise, and nothing else.
std::size_t printedRtf() {
    CMemFile file;
    for (int i = 0; i < marks::cCount; ++i) {
        const double radius = 16 / 288.0;
        const double x = i * (5.0 / marks::cCount) + 1 - radius;
        const double y = (100 - i % 100) * 0.03 + 1 - radius;
        const auto twips = [](double inches) { return static_cast<int>(inches * 1440 + 0.5); };
        char text[600];
        const int size = std::snprintf(
            text, sizeof text,
            "{\\do\\dobx%s\\doby%s\\dptxbx\\dptxbxmar0 {\\dptxbxtext \\plain\\sa0\\sb0 \\fs%d %s "
            "{%s\\par }}\r\n\\dpx%d\\dpy%d\\dpxsize%d\\dpysize%d\\dplinehollow\\dplinecor0"
            "\\dplinecog0\\dplinecob0\\dplinew0\\dpfillbgcr255\\dpfillbgcg255\\dpfillbgcb255"
            "\\dpfillpat0}\r\n",
            "page", "page", 16, "\\qc", marks::all()[static_cast<std::size_t>(i)].label, twips(x),
            twips(y), twips(x + 2 * radius) - twips(x), twips(y + 2 * radius) - twips(y));
        file.Write(text, static_cast<std::size_t>(size));
    }
    return file.GetLength();
}

int rtf(char** arguments) {
    if (productRtf() != printedRtf()) timing::fail("the texts differ");
    for (int round = 0; round < std::atoi(arguments[0]); ++round) {
        report("tessalink", productRtf);
        report("snprintf", printedRtf);
    }
    return 0;
}

int linear(char** arguments) {
    for (int round = 0; round < std::atoi(arguments[0]); ++round) {
        for (const int count : {480, 4'800, 48'000, 100'000}) {
            const std::string name = std::to_string(count) + "-marks";
            timing::report(name.c_str(), timing::once([&] { productEmf(count); }) / count);
        }
    }
    return 0;
}

constexpr timing::Mode cModes[] = {
    {"emf", 1, emf}, {"svg", 1, svg}, {"rtf", 1, rtf}, {"linear", 1, linear}};

}  // namespace

int main(int argc, char** argv) {
    return timing::runMode(cModes, argc, argv);
}
