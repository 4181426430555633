// Compiled with the options of tessalink::graphs and a trap at every overflow that they leave
// undefined, together with a source of the library that adds lengths: without -fwrapv it dies.
#include <climits>

#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarSection.h"

namespace {

class EndlessSection : public BarSection {
public:
    EndlessSection() : BarSection(0, 0, 0, 0) {}

    int GetDesignHeight() const override { return INT_MAX; }
    void Draw(CDC*, double, double, const CRect&) override {}
};

}  // namespace

int main() {
    BarGraph graph;
    graph.AddSection(new EndlessSection);
    graph.AddSection(new EndlessSection);
    return graph.GetDesignHeight() == -2 ? 0 : 1;
}
