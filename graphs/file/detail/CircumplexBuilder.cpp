#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "graphs/common/PlainLabel.h"
#include "graphs/file/detail/GraphTypes.h"
#include "graphs/file/detail/SheetSpec.h"
#include "graphs/profile/CircumplexGraph.h"
#include "graphs/profile/CircumplexGraphText.h"
#include "graphs/profile/Polar.h"
#include "platform/base/NumberText.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cMaxRings = 100;
constexpr std::size_t cMaxPoints = 1000;
constexpr std::size_t cMaxOutlines = 100;
constexpr std::size_t cMaxProfilePoints = 72;
constexpr std::size_t cTitleLines = 3;

// What is usual where a description says nothing; docs/graph-files.md repeats it.
constexpr double cUsualCircumplexWidth = 5.5;  // inches
constexpr double cUsualCircumplexHeight = 4.5;
constexpr double cTitleRoom = 0.5;
constexpr int cUsualRange = 10;
constexpr double cUsualCircumplexTextSize = 9;  // points, of the texts around the circle
constexpr COLORREF cUsualRingColor = RGB(205, 210, 215);
constexpr double cUsualStart = 90;  // degrees: the top

constexpr JsonBounds cAngle = {-3600, 3600};
constexpr JsonBounds cRadius = {0, 1e9};
constexpr JsonBounds cRange = {1, 1e6};

using SymbolType = CircumplexGraph::SymbolType;
using PointLegend = CircumplexGraph::PointLegend;
using LegendPlacement = CircumplexGraph::LegendPlacement;

constexpr JsonWord cSymbols[] = {{"auto", CircumplexGraph::AnySymbol},
                                 {"cross", CircumplexGraph::Cross},
                                 {"circle", CircumplexGraph::Disc},
                                 {"square", CircumplexGraph::Square},
                                 {"triangle", CircumplexGraph::Triangle},
                                 {"diamond", CircumplexGraph::Diamond},
                                 {"hollow-circle", CircumplexGraph::Ring},
                                 {"hollow-square", CircumplexGraph::HollowSquare},
                                 {"hollow-triangle", CircumplexGraph::HollowTriangle},
                                 {"hollow-diamond", CircumplexGraph::HollowDiamond}};
constexpr JsonWord cNamePlaces[] = {{"none", CircumplexGraph::NoName},
                                    {"beside", CircumplexGraph::NameBeside},
                                    {"legend", CircumplexGraph::NameInLegend},
                                    {"both", CircumplexGraph::NameInBoth}};
constexpr JsonWord cCircumplexLegends[] = {{"none", CircumplexGraph::NoLegend},
                                           {"right", CircumplexGraph::LegendRight},
                                           {"below", CircumplexGraph::LegendBelow}};

struct RingSpec : GraphObject {
    RingSpec(const GraphReader& in, const JsonValue& value, const std::optional<int>& range)
        : GraphObject(in, value) {
        if (range && radius > *range) {
            Fail("radius", "the ring is larger than the circle, whose radius is 'range'");
        }
    }

    double radius = Number(required("radius"), cRadius).value_or(0);
    COLORREF color = Color("color").value_or(cUsualRingColor);
};

struct SectorSpec : GraphObject {
    SectorSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {}

    double from = Number(required("from"), cAngle).value_or(0);
    double to = Number(required("to"), cAngle).value_or(0);
    CString text = Label(required("text")).value_or(CString());
};

struct ArcSpec : GraphObject {
    ArcSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {}

    double from = Number(required("from"), cAngle).value_or(0);
    double to = Number(required("to"), cAngle).value_or(0);
    double inner = Number(required("inner"), cRadius).value_or(0);
    double outer = Number(required("outer"), cRadius).value_or(0);
    COLORREF color = Color("color").value_or(cBlack);
    bool filled = Flag("filled").value_or(false);
};

/// A point by its angle and length, or by x and y.
struct MarkSpec : GraphObject {
    MarkSpec(const GraphReader& in, const JsonValue& value)
        : GraphObject(in, value), isPolar(Has("angle")) {
        const auto score = [this](std::string_view key, const JsonBounds& bounds) {
            const auto number = Score(required(key), bounds);
            isMissing = isMissing || (In().HasVariables() && !number);
            return number.value_or(0);
        };
        if (isPolar) {
            polar = {score("angle", cAngle), score("length", cScores)};
        } else {
            x = score("x", cScores);
            y = score("y", cScores);
        }
    }

    bool isPolar;
    bool isMissing = false;  ///< a variable without value
    Polar polar;
    double x = 0;
    double y = 0;
    CString name = Label("name").value_or(CString());
    std::optional<COLORREF> color = Color("color");
    SymbolType symbol = Words<SymbolType>("symbol", cSymbols).value_or(CircumplexGraph::AnySymbol);
    PointLegend show =
        Words<PointLegend>("show", cNamePlaces).value_or(CircumplexGraph::NameBeside);
};

/// A line around the middle.
struct OutlineSpec : GraphObject {
    OutlineSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {}

    CString name = Label("name").value_or(CString());
    std::optional<COLORREF> color = Color("color");
    SymbolType symbol = Words<SymbolType>("symbol", cSymbols).value_or(CircumplexGraph::AnySymbol);
    std::uint16_t line = Words("line", cPenStyles).value_or(PS_SOLID);
    double start = Number("start", cAngle).value_or(cUsualStart);
    /// NaN where there is none.
    std::vector<double> lengths =
        List(required("lengths"), cMaxProfilePoints, [this](const JsonValue& value) {
            return value.Is(JsonValue::Kind::Null) || In().IsMissing(value)
                       ? std::numeric_limits<double>::quiet_NaN()
                       : In().Number(value, cScores).value_or(0);
        });
};

/// Both types of graphs.
struct CircleSpec : SheetSpec {
    using SheetSpec::SheetSpec;

    std::optional<int> range = Whole("range", cRange);
    CString face = Text("font").value_or(cUsualFace);
    double textSize = Number("textSize", cPoints).value_or(cUsualCircumplexTextSize);
    int labelStep = Whole("labelStep", cSteps).value_or(0);
    int gridDots = Whole("gridDots", cSteps).value_or(labelStep);
    std::vector<CString> titles = Labels("titles", cTitleLines);
    CString north = Label("north").value_or(CString());
    CString south = Label("south").value_or(CString());
    CString east = Label("east").value_or(CString());
    CString west = Label("west").value_or(CString());
    std::vector<CString> northWest = Labels("northWest", cTitleLines);
    std::vector<CString> northEast = Labels("northEast", cTitleLines);
    std::vector<CString> southWest = Labels("southWest", cTitleLines);
    std::vector<CString> southEast = Labels("southEast", cTitleLines);
    std::vector<RingSpec> rings = Objects<RingSpec>("rings", cMaxRings, range);
};

struct CircumplexSpec : CircleSpec {
    using CircleSpec::CircleSpec;

    LegendPlacement legend =
        Words<LegendPlacement>("legend", cCircumplexLegends).value_or(CircumplexGraph::LegendBelow);
    std::vector<SectorSpec> sectors = Objects<SectorSpec>("sectors", CircumplexGraph::cMaxSectors);
    std::vector<ArcSpec> arcs = Objects<ArcSpec>("arcs", cMaxRings);
    std::vector<MarkSpec> points = Objects<MarkSpec>("points", cMaxPoints);
    std::vector<OutlineSpec> profiles = Objects<OutlineSpec>("profiles", cMaxOutlines);
};

/// Makes a graph of what both types have, and of a circumplex graph's own parts.
class CircleBuilder {
public:
    CircleBuilder(GraphReader& in, const CString& name, const CircleSpec& spec)
        : m_in(in), m_name(name), m_spec(spec) {}

    std::unique_ptr<DescribedGraph> Make(const CircumplexSpec* own) {
        m_graph = make_graph();
        m_graph->SetTypeface(m_spec.face);
        if (own != nullptr) m_graph->SetLegendPlacement(own->legend);
        add_texts();
        for (const RingSpec& ring : m_spec.rings) m_graph->AddCircle(ring.radius, ring.color);
        if (own != nullptr) add_parts(*own);
        GraphSheet sheet = m_spec.Sheet(usual_width(), usual_height(), m_name, sentences(own));
        design_for(sheet);
        return std::make_unique<DrawnGraph<CircumplexGraph>>(std::move(sheet), std::move(m_graph));
    }

private:
    std::unique_ptr<CircumplexGraph> make_graph() const {
        const int range = m_spec.range.value_or(cUsualRange);
        const double size = m_spec.textSize;
        const auto points = [size](double part) { return std::max(1, toInt(size * part + 0.5)); };
        auto graph = std::make_unique<CircumplexGraph>(
            -range, range, -range, range, m_spec.labelStep, m_spec.gridDots, points(1.5),
            points(1.1), points(1), points(1), points(0.9), points(0.9), points(0.8), points(0.9));
        graph->SetLegendPlacement(CircumplexGraph::LegendBelow);
        return graph;
    }

    double legend_column() const {
        constexpr double column = 1;
        return m_graph->GetLegendPlacement() == CircumplexGraph::LegendRight ? column : 0;
    }
    double usual_width() const { return cUsualCircumplexWidth + legend_column(); }
    double title_room() const { return m_graph->GetTitle().IsEmpty() ? 0 : cTitleRoom; }
    double usual_height() const { return cUsualCircumplexHeight + title_room(); }

    /// The sizes of the usual sheet in proportion; fonts keep theirs.
    void design_for(const GraphSheet& sheet) {
        constexpr double styleMargin = 0.5;
        constexpr double padding = 0.5;
        constexpr double plot = 3.5;
        constexpr double side = 0.75;
        constexpr double symbol = 0.08;
        const double scale = std::min(sheet.width / usual_width(), sheet.height / usual_height());
        const double column = legend_column() * scale;
        // Without a title graphs take their room off what they are designed for.
        m_graph->SetAdvancedOptions(sheet.width - column, sheet.height + cTitleRoom - title_room(),
                                    styleMargin * scale, styleMargin * scale, column,
                                    padding * scale, padding * scale, plot * scale, side * scale,
                                    symbol * scale);
    }

    void add_texts() {
        using Setter = CircumplexGraph& (CircumplexGraph::*)(const char*, const char*, const char*);
        const std::pair<const std::vector<CString>*, Setter> threes[] = {
            {&m_spec.titles, &CircumplexGraph::SetTitle},
            {&m_spec.northWest, &CircumplexGraph::SetNWText},
            {&m_spec.northEast, &CircumplexGraph::SetNEText},
            {&m_spec.southWest, &CircumplexGraph::SetSWText},
            {&m_spec.southEast, &CircumplexGraph::SetSEText}};
        for (const auto& [texts, set] : threes) {
            std::array<CString, cTitleLines> lines;
            std::copy(texts->begin(), texts->end(), lines.begin());
            (m_graph.get()->*set)(lines[0], lines[1], lines[2]);
        }
        m_graph->SetNAxisText(m_spec.north);
        m_graph->SetSAxisText(m_spec.south);
        m_graph->SetEAxisText(m_spec.east);
        m_graph->SetWAxisText(m_spec.west);
    }

    void add_parts(const CircumplexSpec& own) {
        for (const SectorSpec& sector : own.sectors) {
            m_graph->AddSector(sector.from, sector.to, sector.text);
        }
        for (const ArcSpec& arc : own.arcs) {
            m_graph->AddArc(arc.from, arc.to, arc.inner, arc.outer, arc.color, arc.filled);
        }
        for (const MarkSpec& mark : own.points) add_point(mark);
        for (const OutlineSpec& profile : own.profiles) add_profile(profile);
    }

    /// Points and profiles are counted, also those that have a color.
    COLORREF next_color(const std::optional<COLORREF>& color) {
        return color.value_or(m_in.PaletteColor(m_colors++));
    }

    void add_point(const MarkSpec& mark) {
        const COLORREF color = next_color(mark.color);
        if (mark.isMissing) return;
        m_profileNames.emplace_back();
        if (mark.isPolar) {
            m_graph->AddPoint(mark.polar, m_id++, mark.name, color, mark.symbol, mark.show);
        } else {
            m_graph->AddPoint(mark.x, mark.y, m_id++, mark.name, color, mark.symbol, mark.show);
        }
    }

    /// One length for each of the angles, from the first one on.
    void add_profile(const OutlineSpec& spec) {
        const COLORREF color = next_color(spec.color);
        const double step =
            cFullTurn / static_cast<double>(std::max<std::size_t>(spec.lengths.size(), 1));
        SymbolType symbol = spec.symbol;
        double angle = spec.start;
        bool isFirst = true;
        std::vector<std::optional<int>> ids;
        for (const double length : spec.lengths) {
            const Polar place = {std::exchange(angle, angle + step), length};
            if (std::isnan(length)) {
                ids.emplace_back();
                continue;
            }
            m_graph->AddPoint(place, m_id, isFirst ? spec.name : CString(), color, symbol,
                              isFirst ? CircumplexGraph::NameInLegend : CircumplexGraph::NoName);
            symbol = m_graph->GetPoint(m_graph->GetPointCount() - 1).symbol;
            isFirst = false;
            m_profileNames.emplace_back(spec.name);
            ids.emplace_back(m_id++);
        }
        connect(ids, color, spec.line);
    }

    /// Joins neighbours in the circle; those that are missing part the line.
    void connect(std::vector<std::optional<int>> ids, COLORREF color, int penStyle) {
        const auto gap = std::find(ids.begin(), ids.end(), std::nullopt);
        const bool isClosed = gap == ids.end();
        if (!isClosed) std::rotate(ids.begin(), gap, ids.end());
        std::vector<int> run;
        const auto finish = [&] {
            if (run.size() > 1) m_graph->AddConnection(run, color, penStyle, isClosed);
            run.clear();
        };
        for (const auto& id : ids) {
            if (id) {
                run.push_back(*id);
            } else {
                finish();
            }
        }
        finish();
    }

    /// The sentences of the graph, with the names of profiles and sectors for the points of
    /// profiles.
    CString sentences(const CircumplexSpec* own) const {
        CircumplexText text = circumplexText(*m_graph);
        for (std::size_t i = 0; i < text.points.size(); ++i) {
            if (!m_profileNames[i]) continue;
            CString& name = text.points[i].name;
            name = plainLabel(*m_profileNames[i]);
            const CString sector = plainLabel(sector_at(text.points[i].angle, own->sectors));
            if (!name.IsEmpty() && !sector.IsEmpty()) name += ", ";
            name += sector;
        }
        return sentencesOf(text);
    }

    /// The text of the sector in which an angle lies.
    static CString sector_at(double angle, const std::vector<SectorSpec>& sectors) {
        const auto turn = [](double from, double to) {
            const double rest = std::fmod(to - from, cFullTurn);
            return rest < 0 ? rest + cFullTurn : rest;
        };
        const auto sector =
            std::find_if(sectors.begin(), sectors.end(), [&](const SectorSpec& candidate) {
                return turn(candidate.from, angle) <= turn(candidate.from, candidate.to);
            });
        return sector != sectors.end() ? sector->text : CString();
    }

    GraphReader& m_in;
    const CString& m_name;
    const CircleSpec& m_spec;
    std::unique_ptr<CircumplexGraph> m_graph;
    std::vector<std::optional<CString>> m_profileNames;  ///< of points that belong to one
    std::size_t m_colors = 0;
    int m_id = 0;
};

}  // namespace

std::unique_ptr<DescribedGraph> makeCircumplex(GraphReader& in, const CString& name,
                                               const JsonValue& object) {
    const auto spec = readObject<CircumplexSpec>(in, object);
    return CircleBuilder(in, name, spec).Make(&spec);
}

std::unique_ptr<DescribedGraph> makeStyleGraph(GraphReader& in, const CString& name,
                                               const JsonValue& object) {
    const auto spec = readObject<CircleSpec>(in, object);
    return CircleBuilder(in, name, spec).Make(nullptr);
}

}  // namespace tessalink::detail
