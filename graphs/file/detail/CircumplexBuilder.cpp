#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include "graphs/common/PlainLabel.h"
#include "graphs/file/detail/BarSpecs.h"
#include "graphs/file/detail/GraphTypes.h"
#include "graphs/file/detail/SheetSpec.h"
#include "graphs/profile/CircumplexGraph.h"
#include "graphs/profile/CircumplexGraphText.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cMaxRings = 100;
constexpr std::size_t cMaxPoints = 1000;
constexpr std::size_t cMaxProfiles = 100;
constexpr std::size_t cMaxProfilePoints = 72;
constexpr std::size_t cTitleLines = 3;

// What stands where a description says nothing; docs/graph-files.md repeats it.
constexpr double cWidth = 5.5;  // inches
constexpr double cHeight = 4.5;
constexpr double cTitleRoom = 0.5;
constexpr int cRange = 10;
constexpr double cTextSize = 9;  // points, of the texts around the circle
constexpr COLORREF cRingColor = RGB(205, 210, 215);
constexpr double cTop = 90;

constexpr Bounds cAngle = {-3600, 3600};
constexpr Bounds cRadius = {0, 1e9};
constexpr Bounds cWholeRange = {1, 1e6};

constexpr Word cSymbols[] = {{"auto", CircumplexGraph::AnySymbol},
                             {"cross", CircumplexGraph::Cross},
                             {"circle", CircumplexGraph::Disc},
                             {"square", CircumplexGraph::Square},
                             {"triangle", CircumplexGraph::Triangle},
                             {"diamond", CircumplexGraph::Diamond},
                             {"hollow-circle", CircumplexGraph::Ring},
                             {"hollow-square", CircumplexGraph::HollowSquare},
                             {"hollow-triangle", CircumplexGraph::HollowTriangle},
                             {"hollow-diamond", CircumplexGraph::HollowDiamond}};
constexpr Word cNamePlaces[] = {{"none", CircumplexGraph::NoName},
                                {"beside", CircumplexGraph::NameBeside},
                                {"legend", CircumplexGraph::NameInLegend},
                                {"both", CircumplexGraph::NameInBoth}};
constexpr Word cLegends[] = {{"none", CircumplexGraph::NoLegend},
                             {"right", CircumplexGraph::LegendRight},
                             {"below", CircumplexGraph::LegendBelow}};

struct CircleSpec : SheetSpec {
    std::optional<int> range;
    std::optional<double> textSize;
    std::optional<int> labelStep;
    std::optional<int> gridDots;
    std::optional<std::uint16_t> legend;
    const JsonValue* titles = nullptr;
    std::optional<CString> north;
    std::optional<CString> south;
    std::optional<CString> east;
    std::optional<CString> west;
    const JsonValue* northWest = nullptr;
    const JsonValue* northEast = nullptr;
    const JsonValue* southWest = nullptr;
    const JsonValue* southEast = nullptr;
    const JsonValue* rings = nullptr;
    const JsonValue* sectors = nullptr;
    const JsonValue* arcs = nullptr;
    const JsonValue* points = nullptr;
    const JsonValue* profiles = nullptr;
};

struct RingSpec {
    std::optional<double> radius;
    std::optional<COLORREF> color;
};

struct SectorSpec {
    std::optional<double> from;
    std::optional<double> to;
    std::optional<CString> text;
};

struct ArcSpec {
    std::optional<double> from;
    std::optional<double> to;
    std::optional<double> inner;
    std::optional<double> outer;
    std::optional<COLORREF> color;
    std::optional<bool> filled;
};

struct MarkSpec {
    std::optional<double> x;
    std::optional<double> y;
    std::optional<double> angle;
    std::optional<double> length;
    std::optional<CString> name;
    std::optional<COLORREF> color;
    std::optional<std::uint16_t> symbol;
    std::optional<std::uint16_t> show;
};

struct OutlineSpec {
    std::optional<CString> name;
    std::optional<COLORREF> color;
    std::optional<std::uint16_t> symbol;
    std::optional<std::uint16_t> line;
    std::optional<double> start;
    const JsonValue* lengths = nullptr;
};

const std::vector<Field<CircleSpec>>& circleTable(bool hasPoints) {
    using S = CircleSpec;
    static const std::vector<Field<S>> style =
        withSheetFields<S>({{.key = "range", .member = &S::range, .bounds = cWholeRange},
                            {.key = "textSize", .member = &S::textSize, .bounds = cPoints},
                            {.key = "labelStep", .member = &S::labelStep, .bounds = cSteps},
                            {.key = "gridDots", .member = &S::gridDots, .bounds = cSteps},
                            {.key = "titles", .member = &S::titles},
                            {.key = "north", .member = &S::north},
                            {.key = "south", .member = &S::south},
                            {.key = "east", .member = &S::east},
                            {.key = "west", .member = &S::west},
                            {.key = "northWest", .member = &S::northWest},
                            {.key = "northEast", .member = &S::northEast},
                            {.key = "southWest", .member = &S::southWest},
                            {.key = "southEast", .member = &S::southEast},
                            {.key = "rings", .member = &S::rings}});
    static const std::vector<Field<S>> circumplex = [] {
        std::vector<Field<S>> all = style;
        const std::vector<Field<S>> more = {
            {.key = "legend", .member = &S::legend, .words = cLegends},
            {.key = "sectors", .member = &S::sectors},
            {.key = "arcs", .member = &S::arcs},
            {.key = "points", .member = &S::points},
            {.key = "profiles", .member = &S::profiles}};
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }();
    return hasPoints ? circumplex : style;
}

const std::vector<Field<RingSpec>>& ringTable() {
    using S = RingSpec;
    static const std::vector<Field<S>> table = {
        {.key = "radius", .member = &S::radius, .bounds = cRadius, .isRequired = true},
        {.key = "color", .member = &S::color}};
    return table;
}

const std::vector<Field<SectorSpec>>& sectorTable() {
    using S = SectorSpec;
    static const std::vector<Field<S>> table = {
        {.key = "from", .member = &S::from, .bounds = cAngle, .isRequired = true},
        {.key = "to", .member = &S::to, .bounds = cAngle, .isRequired = true},
        {.key = "text", .member = &S::text, .isRequired = true}};
    return table;
}

const std::vector<Field<ArcSpec>>& arcTable() {
    using S = ArcSpec;
    static const std::vector<Field<S>> table = {
        {.key = "from", .member = &S::from, .bounds = cAngle, .isRequired = true},
        {.key = "to", .member = &S::to, .bounds = cAngle, .isRequired = true},
        {.key = "inner", .member = &S::inner, .bounds = cRadius, .isRequired = true},
        {.key = "outer", .member = &S::outer, .bounds = cRadius, .isRequired = true},
        {.key = "color", .member = &S::color},
        {.key = "filled", .member = &S::filled}};
    return table;
}

const std::vector<Field<MarkSpec>>& markTable(bool isPolar) {
    using S = MarkSpec;
    const auto with = [](std::vector<Field<S>> place) {
        const std::vector<Field<S>> more = {
            {.key = "name", .member = &S::name},
            {.key = "color", .member = &S::color},
            {.key = "symbol", .member = &S::symbol, .words = cSymbols},
            {.key = "show", .member = &S::show, .words = cNamePlaces}};
        place.insert(place.end(), more.begin(), more.end());
        return place;
    };
    static const std::vector<Field<S>> polar =
        with({{.key = "angle", .member = &S::angle, .bounds = cAngle, .isRequired = true},
              {.key = "length", .member = &S::length, .bounds = cScores, .isRequired = true}});
    static const std::vector<Field<S>> planar =
        with({{.key = "x", .member = &S::x, .bounds = cScores, .isRequired = true},
              {.key = "y", .member = &S::y, .bounds = cScores, .isRequired = true}});
    return isPolar ? polar : planar;
}

const std::vector<Field<OutlineSpec>>& outlineTable() {
    using S = OutlineSpec;
    static const std::vector<Field<S>> table = {
        {.key = "name", .member = &S::name},
        {.key = "color", .member = &S::color},
        {.key = "symbol", .member = &S::symbol, .words = cSymbols},
        {.key = "line", .member = &S::line, .words = cPenStyles},
        {.key = "start", .member = &S::start, .bounds = cAngle},
        {.key = "lengths", .member = &S::lengths, .isRequired = true}};
    return table;
}

/// Makes a circumplex graph, or one without points, of its description.
class CircumplexBuilder {
public:
    CircumplexBuilder(ValueReader& in, const CString& name, const JsonValue& object, bool hasPoints)
        : m_in(in), m_name(name) {
        m_palette = readPalette(in, object);
        in.SetPalette(m_palette);
        m_spec = readFields<CircleSpec>(in, object, circleTable(hasPoints));
    }

    std::unique_ptr<DescribedGraph> Make() {
        m_graph = make_graph();
        add_texts();
        add_parts();
        add_points();
        each<OutlineSpec>(
            m_spec.profiles, cMaxProfiles, outlineTable(),
            [this](const OutlineSpec& profile, const JsonValue&) { add_profile(profile); });
        GraphSheet sheet = sheetOf(m_spec, usual_width(), usual_height(), m_name, sentences());
        design_for(sheet);
        return std::make_unique<DrawnGraph<CircumplexGraph>>(std::move(sheet), std::move(m_graph));
    }

private:
    template <class T, class Add>
    void each(const JsonValue* list, std::size_t limit, const std::vector<Field<T>>& fields,
              Add add) const {
        if (list == nullptr) return;
        for (const JsonMember& member : m_in.Members(*list, JsonValue::Kind::List, limit)) {
            m_in.Expect(member.value, JsonValue::Kind::Object);
            add(readFields<T>(m_in, member.value, fields), member.value);
        }
    }

    std::unique_ptr<CircumplexGraph> make_graph() const {
        const int range = m_spec.range.value_or(cRange);
        const int step = m_spec.labelStep.value_or(0);
        const double size = m_spec.textSize.value_or(cTextSize);
        const auto points = [size](double part) { return std::max(1, toInt(size * part + 0.5)); };
        auto graph = std::make_unique<CircumplexGraph>(
            -range, range, -range, range, step, m_spec.gridDots.value_or(step), points(1.5),
            points(1.1), points(1), points(1), points(0.9), points(0.9), points(0.8), points(0.9));
        graph->SetLegendPlacement(m_spec.legend.value_or(CircumplexGraph::LegendBelow));
        return graph;
    }

    double legend_column() const {
        constexpr double column = 1;
        return m_graph->GetLegendPlacement() == CircumplexGraph::LegendRight ? column : 0;
    }
    double usual_width() const { return cWidth + legend_column(); }
    double title_room() const { return m_graph->GetTitle().IsEmpty() ? 0 : cTitleRoom; }
    double usual_height() const { return cHeight + title_room(); }

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

    /// Rings, sectors and arcs.
    void add_parts() {
        each<RingSpec>(m_spec.rings, cMaxRings, ringTable(),
                       [this](const RingSpec& ring, const JsonValue& value) {
                           if (m_spec.range && ring.radius > *m_spec.range) {
                               m_in.Source().Fail(*value.Find("radius"),
                                                  "a ring is no larger than the circle, 'range'");
                           }
                           m_graph->AddCircle(ring.radius.value_or(0),
                                              ring.color.value_or(cRingColor));
                       });
        each<SectorSpec>(m_spec.sectors, CircumplexGraph::cMaxSectors, sectorTable(),
                         [this](const SectorSpec& sector, const JsonValue&) {
                             m_sectors.push_back(sector);
                             m_graph->AddSector(sector.from.value_or(0), sector.to.value_or(0),
                                                sector.text.value_or(CString()));
                         });
        each<ArcSpec>(m_spec.arcs, cMaxRings, arcTable(),
                      [this](const ArcSpec& arc, const JsonValue&) {
                          m_graph->AddArc(arc.from.value_or(0), arc.to.value_or(0),
                                          arc.inner.value_or(0), arc.outer.value_or(0),
                                          arc.color.value_or(cBlack), arc.filled.value_or(false));
                      });
    }

    /// The sentences of the graph, with the names of profiles and sectors for the points of
    /// profiles.
    CString sentences() const {
        CircumplexText text = circumplexText(*m_graph);
        for (std::size_t i = 0; i < text.points.size(); ++i) {
            if (!m_profileNames[i]) continue;
            CString& name = text.points[i].name;
            name = plainLabel(*m_profileNames[i]);
            const CString sector = plainLabel(sector_at(text.points[i].angle));
            if (!name.IsEmpty() && !sector.IsEmpty()) name += ", ";
            name += sector;
        }
        return sentencesOf(text);
    }

    /// The text of the sector in which an angle lies.
    CString sector_at(double angle) const {
        const auto turn = [](double from, double to) {
            const double rest = std::fmod(to - from, cFullTurn);
            return rest < 0 ? rest + cFullTurn : rest;
        };
        for (const SectorSpec& sector : m_sectors) {
            const double from = sector.from.value_or(0);
            if (turn(from, angle) <= turn(from, sector.to.value_or(0))) {
                return sector.text.value_or(CString());
            }
        }
        return {};
    }

    std::array<CString, cTitleLines> three(const JsonValue* list) const {
        std::array<CString, cTitleLines> lines;
        if (list == nullptr) return lines;
        const auto texts = readTexts(m_in, *list, cTitleLines);
        std::copy(texts.begin(), texts.end(), lines.begin());
        return lines;
    }

    void add_texts() {
        using Setter = CircumplexGraph& (CircumplexGraph::*)(const char*, const char*, const char*);
        const std::pair<const JsonValue*, Setter> threes[] = {
            {m_spec.titles, &CircumplexGraph::SetTitle},
            {m_spec.northWest, &CircumplexGraph::SetNWText},
            {m_spec.northEast, &CircumplexGraph::SetNEText},
            {m_spec.southWest, &CircumplexGraph::SetSWText},
            {m_spec.southEast, &CircumplexGraph::SetSEText}};
        for (const auto& [list, set] : threes) {
            const auto lines = three(list);
            (m_graph.get()->*set)(lines[0], lines[1], lines[2]);
        }
        m_graph->SetNAxisText(m_spec.north.value_or(CString()));
        m_graph->SetSAxisText(m_spec.south.value_or(CString()));
        m_graph->SetEAxisText(m_spec.east.value_or(CString()));
        m_graph->SetWAxisText(m_spec.west.value_or(CString()));
    }

    COLORREF next_color(const std::optional<COLORREF>& color) {
        return color.value_or(m_palette[m_colors++ % m_palette.size()]);
    }

    void add_points() {
        if (m_spec.points == nullptr) return;
        for (const JsonMember& member :
             m_in.Members(*m_spec.points, JsonValue::Kind::List, cMaxPoints)) {
            m_in.Expect(member.value, JsonValue::Kind::Object);
            const bool isPolar = member.value.Find("angle") != nullptr;
            const auto mark = readFields<MarkSpec>(m_in, member.value, markTable(isPolar));
            const auto symbol = static_cast<CircumplexGraph::SymbolType>(mark.symbol.value_or(0));
            const auto show = static_cast<CircumplexGraph::PointLegend>(
                mark.show.value_or(CircumplexGraph::NameBeside));
            const CString label = mark.name.value_or(CString());
            const COLORREF color = next_color(mark.color);
            m_profileNames.emplace_back();
            if (isPolar) {
                m_graph->AddPoint(Polar{mark.angle.value_or(0), mark.length.value_or(0)}, m_id++,
                                  label, color, symbol, show);
            } else {
                m_graph->AddPoint(mark.x.value_or(0), mark.y.value_or(0), m_id++, label, color,
                                  symbol, show);
            }
        }
    }

    /// A line around the middle: one length for each of the angles, from the first one on; null is
    /// none.
    void add_profile(const OutlineSpec& spec) {
        const auto& lengths = m_in.Members(*spec.lengths, JsonValue::Kind::List, cMaxProfilePoints);
        const COLORREF color = next_color(spec.color);
        const double step =
            cFullTurn / static_cast<double>(std::max<std::size_t>(lengths.size(), 1));
        const CString name = spec.name.value_or(CString());
        auto symbol = static_cast<CircumplexGraph::SymbolType>(spec.symbol.value_or(0));
        double angle = spec.start.value_or(cTop);
        bool isFirst = true;
        std::vector<std::optional<int>> ids;
        for (const JsonMember& length : lengths) {
            const Polar place = {std::exchange(angle, angle + step), length_of(length.value)};
            if (std::isnan(place.length)) {
                ids.emplace_back();
                continue;
            }
            m_graph->AddPoint(place, m_id, isFirst ? name : CString(), color, symbol,
                              isFirst ? CircumplexGraph::NameInLegend : CircumplexGraph::NoName);
            symbol = m_graph->GetPoint(m_graph->GetPointCount() - 1).symbol;
            isFirst = false;
            m_profileNames.emplace_back(name);
            ids.emplace_back(m_id++);
        }
        connect(ids, color, spec.line.value_or(PS_SOLID));
    }

    /// NaN when there is none.
    double length_of(const JsonValue& value) const {
        if (value.Is(JsonValue::Kind::Null)) return std::numeric_limits<double>::quiet_NaN();
        return m_in.Number(value, cScores).value_or(0);
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

    ValueReader& m_in;
    const CString& m_name;
    CircleSpec m_spec;
    std::vector<COLORREF> m_palette;
    std::unique_ptr<CircumplexGraph> m_graph;
    std::vector<SectorSpec> m_sectors;
    std::vector<std::optional<CString>> m_profileNames;  ///< of points that belong to one
    std::size_t m_colors = 0;
    int m_id = 0;
};

}  // namespace

std::unique_ptr<DescribedGraph> makeCircumplex(ValueReader& in, const CString& name,
                                               const JsonValue& object) {
    return CircumplexBuilder(in, name, object, true).Make();
}

std::unique_ptr<DescribedGraph> makeStyleGraph(ValueReader& in, const CString& name,
                                               const JsonValue& object) {
    return CircumplexBuilder(in, name, object, false).Make();
}

}  // namespace tessalink::detail
