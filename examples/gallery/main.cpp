// Draws the test cards through every device that needs no toolkit.
//
//     gallery write FOLDER     writes CARD.svg, CARD-played.svg (a metafile played), CARD.pdf,
//                              CARD.emf and CARD.rtf; CARD-objects.rtf where there are drawing
//                              objects, too; on Windows CARD.png and CARD-played.png, drawn and
//                              played by the system
//     gallery check FOLDER     exit code 1 when the SVG pictures of the folder are not those, or
//                              texts of the graphs can't be read, random ones of graph
//                              files included
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "examples/gallery/BarGraphs.h"
#include "examples/gallery/Cards.h"
#include "examples/gallery/CircleGraphs.h"
#include "examples/gallery/GraphFiles.h"
#include "examples/gallery/NativePictures.h"
#include "examples/gallery/ProfileGraphs.h"
#include "examples/gallery/TextFaults.h"
#include "graphs/rtf/MetaFile.h"
#include "platform/base/HostServices.h"
#include "platform/files/CFileException.h"
#include "platform/files/CMemFile.h"
#include "platform/files/WholeFile.h"
#include "platform/graphics/PdfDevice.h"
#include "platform/graphics/SvgDevice.h"

namespace {

constexpr double cUnitsPerInch = 96;
constexpr double cPageWidth = 610;

// The picture over white.
template <class Device, class Draw>
std::string pictureOf(const gallery::Card& card, Draw draw) {
    Device device({card.width, card.height, 96, card.title, card.description});
    CDC dc(device);
    dc.FillRect(CRect(0, 0, card.width, card.height),
                static_cast<CBrush*>(CGdiObject::FromStock(WHITE_BRUSH)));
    draw(dc);
    return device.Finish();
}

void record(MetaFile& metafile, const gallery::Card& card) {
    metafile.Create(card.width / cUnitsPerInch, card.height / cUnitsPerInch, nullptr);
    card.draw(metafile);
    metafile.Close();
}

std::string svgOf(const gallery::Card& card) {
    return pictureOf<tessalink::SvgDevice>(card, card.draw);
}

std::string playedSvgOf(const gallery::Card& card, const MetaFile& metafile) {
    return pictureOf<tessalink::SvgDevice>(card, [&](CDC& dc) {
        CRect whole(0, 0, card.width, card.height);
        metafile.Play(dc, whole);
    });
}

void store(const std::string& name, const std::string& text) {
    tessalink::WholeFile file(name.c_str());
    file.Write(text.data(), text.size());
    file.Commit();
}

std::string rtfOf(const gallery::Card& card, const MetaFile& metafile) {
    // As large as it is, unless the page is narrower.
    const double scale = std::min(1.0, cPageWidth / card.width) / cUnitsPerInch;
    return "{\\rtf1\\ansi " +
           std::string(metafile.GetAsRTF(card.width * scale, card.height * scale).GetString()) +
           "\\par}";
}

std::string objectsOf(const gallery::Card& card) {
    CMemFile objects;
    card.writeObjects(objects);
    std::string text(objects.GetLength(), '\0');
    objects.SeekToBegin();
    objects.Read(text.data(), text.size());
    return "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\froman Times New Roman;}}" + text + "\\par}";
}

void writeCard(const gallery::Card& card, const std::string& start) {
    MetaFile metafile;
    record(metafile, card);
    store(start + ".svg", svgOf(card));
    store(start + ".pdf", pictureOf<tessalink::PdfDevice>(card, card.draw));
    store(start + "-played.svg", playedSvgOf(card, metafile));
    store(start + ".rtf", rtfOf(card, metafile));
    metafile.Save((start + ".emf").c_str());
    gallery::writeNativePictures(card, start);
    if (card.writeObjects != nullptr) store(start + "-objects.rtf", objectsOf(card));
}

bool isStored(const std::string& name, const std::string& text) {
    std::ifstream file(name, std::ios::binary);
    const std::string stored{std::istreambuf_iterator<char>(file),
                             std::istreambuf_iterator<char>()};
    if (stored == text) return true;
    std::fprintf(stderr, "%s is not what is drawn now: gallery write FOLDER, and look at it\n",
                 name.c_str());
    return false;
}

bool checkCard(const gallery::Card& card, const std::string& start) {
    MetaFile metafile;
    record(metafile, card);
    const bool direct = isStored(start + ".svg", svgOf(card));
    return isStored(start + "-played.svg", playedSvgOf(card, metafile)) && direct;
}

// Also that its texts can be read.
template <gallery::UnderText ALLOWED>
bool checkGraph(const gallery::Card& card, const std::string& start) {
    const std::vector<std::string> faults = gallery::textFaults(card, ALLOWED);
    for (const std::string& fault : faults) {
        std::fprintf(stderr, "%s: %s\n", card.name, fault.c_str());
    }
    return isStored(start + ".svg", svgOf(card)) && faults.empty();
}

struct Set {
    std::span<const gallery::Card> (*cards)();
    bool (*check)(const gallery::Card& card, const std::string& start);
};
constexpr Set cSets[] = {
    {gallery::cards, checkCard},
    {gallery::barGraphs, checkGraph<gallery::UnderText::Nothing>},
    {gallery::profileGraphs, checkGraph<gallery::UnderText::Nothing>},
    {gallery::circleGraphs, checkGraph<gallery::UnderText::LinesAndRings>},
};

}  // namespace

int main(int count, char** arguments) {
    const std::string task = count == 3 ? arguments[1] : "";
    if (task != "write" && task != "check") {
        std::fprintf(stderr, "usage: gallery write|check FOLDER\n");
        return 2;
    }
    tessalink::HostServices services;
    services.stringTable = gallery::styleText;
    tessalink::setHostServices(services);
    bool same = true;
    try {
        for (const Set& set : cSets) {
            for (const gallery::Card& card : set.cards()) {
                const std::string start = std::string(arguments[2]) + '/' + card.name;
                if (task == "write") {
                    writeCard(card, start);
                } else {
                    same = set.check(card, start) && same;
                }
            }
        }
    } catch (const CFileException& error) {
        std::fprintf(stderr, "%s: %s\n", error.m_strFileName.GetString(), error.what());
        return 2;
    }
    if (task == "check") {
        const std::vector<std::string> faults = gallery::describedTextFaults();
        for (const std::string& fault : faults) std::fprintf(stderr, "%s\n", fault.c_str());
        same = same && faults.empty();
    }
    return same ? 0 : 1;
}
