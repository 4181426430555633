// The chart of 480 marks by PLplot, as a whole process.
//
//     plplot_peer svg|pdf OUTPUT
#include <plplot.h>

#include <string>
#include <vector>

#include "benchmarks/comparison/programs/Marks.h"

namespace {

constexpr PLFLT cHighest = 240;

void drawBar(int bar) {
    std::vector<PLFLT> xs = {0, cHighest, cHighest, 0, 0};
    const PLFLT middle = -bar;
    std::vector<PLFLT> ys = {middle - 0.2, middle - 0.2, middle + 0.2, middle + 0.2, middle - 0.2};
    plline(static_cast<PLINT>(xs.size()), xs.data(), ys.data());
}

void drawMark(int mark) {
    const PLFLT x = mark % marks::cColumns * 10.0 + 5;
    const PLFLT y = -static_cast<PLFLT>(mark / marks::cColumns);
    plpoin(1, &x, &y, 17);
    plptex(x, y - 0.45, 1, 0, 0.5, marks::all()[static_cast<std::size_t>(mark)].label);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    plsdev(argv[1]);
    plsfnam(argv[2]);
    plinit();
    pladv(0);
    plvsta();
    plwind(0, cHighest, -21, 1);
    plschr(0, 0.5);
    plbox("bnt", 40, 1, "", 0, 0);
    for (int bar = 0; bar < marks::cCount / marks::cColumns; ++bar) drawBar(bar);
    for (int mark = 0; mark < marks::cCount; ++mark) drawMark(mark);
    const PLFLT x = 200;
    const PLFLT y = -20.5;
    plpoin(1, &x, &y, 17);
    plptex(x + 5, y, 1, 0, 0, "marks");
    plend();
    return 0;
}
