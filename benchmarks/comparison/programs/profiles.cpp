// Profile and circumplex graphs by the product, and the profile graph by libEMF, so often that the
// time of one is the slope between few and many.
//
//     profiles emf|svg|pdf|libemf COUNT       the profile graph, COUNT times
//     profiles circle-emf|circle-svg COUNT    a circumplex graph of 16 points, COUNT times
//     profiles screen|metafile COUNT          one graph of COUNT profiles: drawn, as a metafile
//     profiles data FOLDER                    writes scores.txt, a line of scores for each scale
#if __has_include(<libEMF/emf.h>)
#define HAS_LIBEMF
#endif

#include <string>

#include "benchmarks/comparison/programs/ProfileGraphs.h"
#include "benchmarks/comparison/programs/Timing.h"
#include "platform/graphics/CDC.h"
#include "platform/graphics/MetafileDevice.h"
#include "platform/graphics/NullDevice.h"
#include "platform/graphics/PdfDevice.h"
#include "platform/graphics/SvgDevice.h"

namespace {

template <class Graph, class Device>
auto draw(Graph& graph, Device& device) {
    CDC dc(device);
    graph.Draw(&dc, profiles::cPlace);
    return device.Finish();
}

template <class Graph>
auto emf(const std::unique_ptr<Graph>& graph) {
    const tessalink::NullDevice reference;
    tessalink::MetafileDevice device(reference);
    return draw(*graph, device);
}

template <class Device, class Graph>
auto picture(const std::unique_ptr<Graph>& graph) {
    Device device({profiles::cWidth, profiles::cHeight});
    return draw(*graph, device);
}

template <class Work>
int repeat(const char* count, Work work) {
    for (int i = 0; i < std::atoi(count); ++i) {
        if (work() == 0) timing::fail("nothing is drawn");
    }
    return 0;
}

int productEmf(char** arguments) {
    return repeat(arguments[0], [] { return emf(profiles::graph(profiles::cProfiles)).size(); });
}

template <class Device>
int productPicture(char** arguments) {
    return repeat(arguments[0],
                  [] { return picture<Device>(profiles::graph(profiles::cProfiles)).size(); });
}

int circleEmf(char** arguments) {
    return repeat(arguments[0], [] { return emf(profiles::circle()).size(); });
}

int circleSvg(char** arguments) {
    return repeat(arguments[0],
                  [] { return picture<tessalink::SvgDevice>(profiles::circle()).size(); });
}

int screen(char** arguments) {
    tessalink::NullDevice device;
    CDC dc(device);
    profiles::graph(std::atoi(arguments[0]))->Draw(&dc, profiles::cPlace);
    return 0;
}

int metafile(char** arguments) {
    return emf(profiles::graph(std::atoi(arguments[0]))).empty() ? 1 : 0;
}

int data(char** arguments) {
    std::string lines;
    for (int scale = 0; scale < profiles::cScales; ++scale) {
        lines += std::to_string(scale + 1);
        for (int profile = 0; profile < profiles::cProfiles; ++profile) {
            lines += ' ' + std::to_string(profiles::scoreOf(profile, scale));
        }
        lines += '\n';
    }
    timing::writeFile(std::string(arguments[0]) + "/scores.txt", lines);
    return 0;
}

#ifdef HAS_LIBEMF
int libemf(char** arguments) {
    return repeat(arguments[0], libemfProfiles);
}
#endif

constexpr timing::Mode cModes[] = {{"emf", 1, productEmf},
                                   {"svg", 1, productPicture<tessalink::SvgDevice>},
                                   {"pdf", 1, productPicture<tessalink::PdfDevice>},
                                   {"circle-emf", 1, circleEmf},
                                   {"circle-svg", 1, circleSvg},
                                   {"screen", 1, screen},
                                   {"metafile", 1, metafile},
                                   {"data", 1, data},
#ifdef HAS_LIBEMF
                                   {"libemf", 1, libemf}
#endif
};

}  // namespace

int main(int argc, char** argv) {
    return timing::runMode(cModes, argc, argv);
}
