// The chart of 480 marks as PNG and PDF by the product's toolkit part, in turns with QCustomPlot.
//
//     qt_charts png|pdf ROUNDS FOLDER
//
// Both write a file into the folder, from nothing to the file. Writes "NAME NANOSECONDS" for each
// turn of each round.
#include <qcustomplot.h>

#include <QApplication>
#include <string>

#include "benchmarks/comparison/programs/ChartGraph.h"
#include "benchmarks/comparison/programs/Timing.h"
#include "platform/qt/QtImages.h"

namespace {

constexpr int cDpi = 96;

void productChart(bool isPng, const std::string& path) {
    BarGraph graph;
    charts::fill(graph, marks::cCount);
    const CRect place = charts::placeOf(graph);
    const auto draw = [&](CDC& dc) { graph.Draw(&dc, place); };
    (isPng ? tessalink::savePng : tessalink::savePdf)(path.c_str(), place.Width(), place.Height(),
                                                      cDpi, draw);
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

void peerChart(bool isPng, const std::string& path, int width, int height) {
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
    const QString name = QString::fromStdString(path);
    const bool saved =
        isPng ? plot.savePng(name, width, height) : plot.savePdf(name, width, height);
    if (!saved) timing::fail("QCustomPlot wrote no file");
}

int compare(bool isPng, char** arguments) {
    const std::string folder = arguments[1];
    const std::string end = isPng ? ".png" : ".pdf";
    BarGraph graph;
    charts::fill(graph, marks::cCount);
    const CRect size = charts::placeOf(graph);
    const auto product = [&] { productChart(isPng, folder + "/product" + end); };
    const auto peer = [&] {
        peerChart(isPng, folder + "/qcustomplot" + end, size.Width(), size.Height());
    };
    product();
    peer();
    for (int round = 0; round < std::atoi(arguments[0]); ++round) {
        timing::report("tessalink", timing::once(product));
        timing::report("qcustomplot", timing::once(peer));
    }
    return 0;
}

constexpr timing::Mode cModes[] = {
    {"png", 2, [](char** arguments) { return compare(true, arguments); }},
    {"pdf", 2, [](char** arguments) { return compare(false, arguments); }}};

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return timing::runMode(cModes, argc, argv);
}
