// The chart of 480 marks and the profile graph as PNG by the product's toolkit part and as PDF by
// its own device, in turns with QCustomPlot.
//
//     qt_charts png|pdf ROUNDS FOLDER
//     qt_charts profile-png|profile-pdf ROUNDS FOLDER
//
// Both write a file into the folder, from nothing to the file. Writes "NAME NANOSECONDS" for each
// turn of each round.
#include <qcustomplot.h>

#include <QApplication>
#include <string>

#include "benchmarks/comparison/programs/ChartGraph.h"
#include "benchmarks/comparison/programs/ProfileGraphs.h"
#include "benchmarks/comparison/programs/Timing.h"
#include "platform/graphics/PdfDevice.h"
#include "platform/qt/QtImages.h"

namespace {

constexpr int cDpi = 96;

template <class Graph>
void savePdf(Graph& graph, const CRect& place, const std::string& path) {
    tessalink::PdfDevice device({place.Width(), place.Height(), cDpi});
    CDC dc(device);
    graph.Draw(&dc, place);
    if (tessalink::savePicture(device.Finish(), path.c_str()) == 0) timing::fail("no file");
}

template <class Graph>
void saveProduct(Graph& graph, const CRect& place, bool isPng, const std::string& path) {
    if (!isPng) return savePdf(graph, place, path);
    tessalink::savePng(path.c_str(), place.Width(), place.Height(), cDpi,
                       [&](CDC& dc) { graph.Draw(&dc, place); });
}

void savePeer(QCustomPlot& plot, const CSize& size, bool isPng, const std::string& path) {
    const QString name = QString::fromStdString(path);
    const bool saved =
        isPng ? plot.savePng(name, size.cx, size.cy) : plot.savePdf(name, size.cx, size.cy);
    if (!saved) timing::fail("QCustomPlot wrote no file");
}

void productChart(bool isPng, const std::string& path) {
    BarGraph graph;
    charts::fill(graph, marks::cCount);
    saveProduct(graph, charts::placeOf(graph), isPng, path);
}

QPointF placeOfMark(int mark) {
    return {mark % charts::cMarksOfScale * 10.0 + 5, -double(mark / charts::cMarksOfScale)};
}

void addBars(QCustomPlot& plot) {
    for (int bar = 0; bar < marks::cCount / charts::cMarksOfScale; ++bar) {
        auto* const rect = new QCPItemRect(&plot);
        rect->topLeft->setCoords(0, -bar + 0.2);
        rect->bottomRight->setCoords(charts::cHighest, -bar - 0.2);
    }
}

void addMarks(QCustomPlot& plot) {
    QCPGraph* const graph = plot.addGraph();
    graph->setName("marks");
    graph->setLineStyle(QCPGraph::lsNone);
    graph->setScatterStyle(
        QCPScatterStyle(QCPScatterStyle::ssCircle, QColor(192, 0, 0), QColor(192, 0, 0), 7));
    for (int mark = 0; mark < marks::cCount; ++mark) {
        const QPointF place = placeOfMark(mark);
        graph->addData(place.x(), place.y());
        auto* const label = new QCPItemText(&plot);
        label->setText(marks::all()[static_cast<std::size_t>(mark)].label);
        label->setFont(QFont("Arial", 6));
        label->position->setCoords(place.x(), place.y() - 0.45);
    }
}

void peerChart(bool isPng, const std::string& path) {
    QCustomPlot plot;
    addBars(plot);
    addMarks(plot);
    plot.xAxis->setRange(0, charts::cHighest);
    const auto ticks = QSharedPointer<QCPAxisTickerFixed>::create();
    ticks->setTickStep(charts::cTick);
    plot.xAxis->setTicker(ticks);
    plot.xAxis->setSubTicks(false);
    plot.yAxis->setRange(-21, 1);
    plot.yAxis->setVisible(false);
    for (QCPAxis* const axis : {plot.xAxis, plot.yAxis}) axis->grid()->setVisible(false);
    plot.legend->setVisible(true);
    static const CSize size = [] {
        BarGraph graph;
        charts::fill(graph, marks::cCount);
        return charts::placeOf(graph).Size();
    }();
    savePeer(plot, size, isPng, path);
}

// The profile graph.

QColor color(unsigned bgr) {
    return {int(bgr & 0xFF), int(bgr >> 8 & 0xFF), int(bgr >> 16 & 0xFF)};
}

void productProfile(bool isPng, const std::string& path) {
    saveProduct(*profiles::graph(profiles::cProfiles), profiles::cPlace, isPng, path);
}

void addBands(QCustomPlot& plot) {
    plot.addLayer("bands", plot.layer("grid"), QCustomPlot::limBelow);
    for (const profiles::Band& band : profiles::cBands) {
        auto* const rect = new QCPItemRect(&plot);
        rect->setLayer("bands");
        rect->setPen(Qt::NoPen);
        rect->setBrush(color(band.color));
        rect->topLeft->setCoords(0, band.to);
        rect->bottomRight->setCoords(profiles::cScales + 1, band.from);
    }
}

void addProfile(QCustomPlot& plot, int profile) {
    constexpr std::array shapes = {QCPScatterStyle::ssCircle, QCPScatterStyle::ssSquare,
                                   QCPScatterStyle::ssTriangle, QCPScatterStyle::ssDiamond};
    constexpr double size = 10;
    const auto index = static_cast<std::size_t>(profile);
    const QColor paint = color(profiles::cColors[index]);
    const QBrush filling = index < shapes.size() ? QBrush(paint) : QBrush(Qt::NoBrush);
    QCPGraph* const graph = plot.addGraph();
    graph->setName(profiles::profileName(profile).text);
    graph->setPen(QPen(paint));
    graph->setScatterStyle(
        QCPScatterStyle(shapes[index % shapes.size()], QPen(paint), filling, size));
    for (int scale = 0; scale < profiles::cScales; ++scale) {
        graph->addData(scale + 1, profiles::scoreOf(profile, scale));
    }
}

void setAxes(QCustomPlot& plot) {
    const auto names = QSharedPointer<QCPAxisTickerText>::create();
    for (int scale = 0; scale < profiles::cScales; ++scale) {
        names->addTick(scale + 1, profiles::scaleName(scale).text);
    }
    const auto scores = QSharedPointer<QCPAxisTickerFixed>::create();
    scores->setTickStep(profiles::cTick);
    plot.xAxis->setTicker(names);
    plot.yAxis->setTicker(scores);
    plot.xAxis->setRange(0, profiles::cScales + 1);
    plot.yAxis->setRange(profiles::cLowest, profiles::cHighest);
    for (QCPAxis* const axis : {plot.xAxis, plot.yAxis}) {
        axis->setSubTicks(false);
        axis->grid()->setVisible(false);
        QFont font("Times New Roman");
        font.setPixelSize(profiles::cFontHeight);
        axis->setTickLabelFont(font);
        plot.legend->setFont(font);
    }
}

void peerProfile(bool isPng, const std::string& path) {
    QCustomPlot plot;
    addBands(plot);
    for (int i = 0; i < profiles::cProfiles; ++i) addProfile(plot, i);
    setAxes(plot);
    plot.legend->setVisible(true);
    savePeer(plot, profiles::cPlace.Size(), isPng, path);
}

using Chart = void (*)(bool isPng, const std::string& path);

template <Chart product, Chart peer, bool isPng>
int compare(char** arguments) {
    const std::string folder = arguments[1];
    const std::string end = isPng ? ".png" : ".pdf";
    const auto ours = [&] { product(isPng, folder + "/product" + end); };
    const auto theirs = [&] { peer(isPng, folder + "/qcustomplot" + end); };
    ours();
    theirs();
    for (int round = 0; round < std::atoi(arguments[0]); ++round) {
        timing::report("tessalink", timing::once(ours));
        timing::report("qcustomplot", timing::once(theirs));
    }
    return 0;
}

constexpr timing::Mode cModes[] = {{"png", 2, compare<productChart, peerChart, true>},
                                   {"pdf", 2, compare<productChart, peerChart, false>},
                                   {"profile-png", 2, compare<productProfile, peerProfile, true>},
                                   {"profile-pdf", 2, compare<productProfile, peerProfile, false>}};

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return timing::runMode(cModes, argc, argv);
}
