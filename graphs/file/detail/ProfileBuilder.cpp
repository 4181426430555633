#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <type_traits>

#include "graphs/common/PlainLabel.h"
#include "graphs/file/detail/GraphTypes.h"
#include "graphs/file/detail/ScaleRows.h"
#include "graphs/file/detail/SheetSpec.h"
#include "graphs/profile/HorProfileGraph.h"
#include "graphs/profile/ProfileGraph3.h"
#include "graphs/profile/ProfileGraphText.h"
#include "platform/base/NumberText.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cMaxScales = 500;
constexpr std::size_t cMaxProfiles = 1000;
constexpr std::size_t cMaxBands = 100;
constexpr std::size_t cMaxLines = 100;
constexpr std::size_t cMaxColumns = 20;  // of a horizontal graph

// What is usual where a description says nothing; docs/graph-files.md repeats it.
constexpr double cUsualProfileWidth = 6;  // inches
constexpr double cUsualProfileHeight = 4;
constexpr double cUsualProfileTextSize = 9;  // points
constexpr int cUsualMin = 0;
constexpr int cUsualMax = 100;
constexpr double cUsualCorner = 5;  // of a legend inside
constexpr COLORREF cUsualBandColor = RGB(222, 232, 240);
/// The fonts of profile graphs are 7 design units high.
constexpr double cFontUnits = 7;
constexpr double cPointsPerInch = 72;

constexpr JsonBounds cPercent = {-1000, 1000};
constexpr JsonBounds cPointSize = {10, 1000};
constexpr JsonBounds cDecimals = {0, 9};
constexpr JsonBounds cAfterScale = {1, cMaxScales};

constexpr JsonWord cProfileLegends[] = {
    {"none", static_cast<std::uint16_t>(ProfileLegend::None)},
    {"inside", static_cast<std::uint16_t>(ProfileLegend::Inside)},
    {"below", static_cast<std::uint16_t>(ProfileLegend::Below)}};
constexpr JsonWord cPointTypes[] = {
    {"symbol", static_cast<std::uint16_t>(ProfilePointType::Symbol)},
    {"value", static_cast<std::uint16_t>(ProfilePointType::SymbolAndValue)},
    {"none", static_cast<std::uint16_t>(ProfilePointType::LineOnly)}};
constexpr JsonWord cBreaks[] = {{"line", ProfileGraph3::cLineBreak},
                                {"dash", ProfileGraph3::cDashedBreak},
                                {"double", ProfileGraph3::cDoubleBreak},
                                {"gap", ProfileGraph3::cInvisibleBreak}};

/// A scale, or a heading between scales. A text alone stands for a scale.
struct ScaleSpec : GraphObject {
    ScaleSpec(const GraphReader& in, const JsonValue& value, bool mayBeGroup, std::size_t further)
        : GraphObject(in, value, {"text", "a text"}),
          isGroup(mayBeGroup && Has("group")),
          text(Label(required(isGroup ? "group" : "text")).value_or(CString())) {
        if (!isGroup) texts = Labels("texts", further);
    }

    bool isGroup;
    CString text;
    std::vector<CString> texts;
};

struct ProfileSpec : GraphObject {
    ProfileSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {}

    std::optional<CString> name = Text("name");
    const JsonValue* values = Value(required("values"));
    std::optional<COLORREF> color = Color("color");
    std::uint16_t line = Words("line", cPenStyles).value_or(PS_SOLID);
    ProfilePointType points =
        Words<ProfilePointType>("points", cPointTypes).value_or(ProfilePointType::Symbol);
    int decimals = Whole("decimals", cDecimals).value_or(0);
};

/// A band of a horizontal graph.
struct BandSpec : GraphObject {
    BandSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {
        CheckOrder("from", "to", true);
    }

    int from = Whole(required("from"), cScores).value_or(0);
    int to = Whole(required("to"), cScores).value_or(0);
    COLORREF color = Color("color").value_or(cUsualBandColor);
};

/// A band of an upright graph: the same for all scales, or with lists of limits.
struct RegionSpec : GraphObject {
    RegionSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {
        if (!HasLists()) CheckOrder("from", "to", true);
    }

    bool HasLists() const { return from != nullptr && from->Is(JsonValue::Kind::List); }

    const JsonValue* from = Value(required("from"));
    const JsonValue* to = Value(required("to"));
    COLORREF color = Color("color").value_or(cUsualBandColor);
    std::optional<CString> name = Text("name");
};

struct SkyLineSpec : GraphObject {
    SkyLineSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {}

    const JsonValue* values = Value(required("values"));
    COLORREF color = Color("color").value_or(cBlack);
};

/// The number of a scale alone stands for a break after it.
struct BreakSpec : GraphObject {
    BreakSpec(const GraphReader& in, const JsonValue& value)
        : GraphObject(in, value, {"after", "the number of a scale"}) {}

    std::optional<int> after = Whole(required("after"), cAfterScale);
    std::uint16_t kind = Words("kind", cBreaks).value_or(ProfileGraph3::cLineBreak);
};

/// What both directions have.
struct ChartSpec : SheetSpec {
    ChartSpec(GraphReader& in, const JsonValue& value, bool mayHaveGroups, std::size_t furtherTexts)
        : SheetSpec(in, value),
          scales(Objects<ScaleSpec>(required("scales"), cMaxScales, mayHaveGroups, furtherTexts)) {
        CheckOrder("min", "max", false);
        CheckOrder("labelsFrom", "labelsTo", false);
        FindRange();
    }

    /// The ends of the scores, also where one is left out, and within them those of the labels.
    void FindRange() {
        if ((Has("min") && !min) || (Has("max") && !max)) return;
        low = min.value_or(cUsualMin);
        high = max.value_or(cUsualMax);
        if (low >= high) {
            Fail(Has("max") ? "max" : "min", "'max' must be greater than 'min'; they are " +
                                                 std::to_string(cUsualMin) + " and " +
                                                 std::to_string(cUsualMax) + " when left out");
        }
        CheckLabels("labelsFrom", labelsFrom);
        CheckLabels("labelsTo", labelsTo);
    }
    void CheckLabels(std::string_view key, const std::optional<int>& score) const {
        if (!score || (*score >= low && *score <= high)) return;
        Fail(key, "must not lie outside 'min' and 'max'");
    }

    std::vector<ScaleSpec> scales;
    CString face = Text("font").value_or(cUsualFace);
    double textSize = Number("textSize", cPoints).value_or(cUsualProfileTextSize);
    bool hasTextSize = Has("textSize");
    std::optional<int> min = Whole("min", cScores);
    std::optional<int> max = Whole("max", cScores);
    std::optional<int> majorTick = Whole("majorTick", cSteps);
    int minorTick = Whole("minorTick", cSteps).value_or(0);
    std::optional<int> labelsFrom = Whole("labelsFrom", cScores);
    std::optional<int> labelsTo = Whole("labelsTo", cScores);
    CString axisTitle = Label("axisTitle").value_or(CString());
    std::optional<ProfileLegend> legend = Words<ProfileLegend>("legend", cProfileLegends);
    int legendX = toInt(Number("legendX", cPercent).value_or(cUsualCorner));
    int legendY = toInt(Number("legendY", cPercent).value_or(cUsualCorner));
    std::optional<int> pointSize = Whole("pointSize", cPointSize);
    std::vector<ProfileSpec> profiles = Objects<ProfileSpec>("profiles", cMaxProfiles);
    std::vector<int> lines = List("lines", cMaxLines, [this](const JsonValue& value) {
        return In().Whole(value, cScores).value_or(0);
    });
    int low = cUsualMin;
    int high = cUsualMax;
};

struct UprightSpec : ChartSpec {
    UprightSpec(GraphReader& in, const JsonValue& value)
        : ChartSpec(in, value, false, ProfileChart::cMaxLegendRows - 1) {}

    std::vector<CString> rows = Labels("rows", ProfileChart::cMaxLegendRows);
    bool leftAxis = Flag("leftAxis").value_or(true);
    bool rightAxis = Flag("rightAxis").value_or(false);
    std::vector<RegionSpec> bands = Objects<RegionSpec>("bands", cMaxBands);
    std::vector<BreakSpec> breaks = Objects<BreakSpec>("breaks", cMaxScales);
    const JsonValue* skyLine = Value("skyLine");
};

/// There is room for one line over the columns.
CString inOneLine(CString text) {
    text.Replace('\n', ' ');
    return text;
}

struct HorizontalSpec : ChartSpec {
    HorizontalSpec(GraphReader& in, const JsonValue& value)
        : ChartSpec(in, value, true, cMaxColumns) {}

    std::vector<CString> columns = Labels("columns", cMaxColumns);
    CString columnsHeading = inOneLine(Label("columnsHeading").value_or(CString()));
    std::vector<BandSpec> bands = Objects<BandSpec>("bands", cMaxBands);
};

/// A score that steps are counted from so that they lie at their multiples.
int stepBase(int min, int step) {
    if (step <= 0) return 0;
    const int base = toInt(std::floor(static_cast<double>(min) / step) * step);
    // A base of 0 would mean the minimum.
    return base != 0 ? base : step;
}

/// A profile graph with up to four rows of texts, and regions.
class UprightGraph final : public ProfileGraph3 {
public:
    using Spec = UprightSpec;
    using ProfileGraph3::ProfileGraph3;

    void SetRows(const LegendRows& rows) { set_legend_rows(rows); }
};

class HorizontalGraph final : public HorProfileGraph {
public:
    using Spec = HorizontalSpec;
    using HorProfileGraph::HorProfileGraph;
};

/// Makes a profile graph of its description. Graph is UprightGraph or HorizontalGraph.
template <class Graph>
class ProfileBuilder {
public:
    static constexpr bool cIsUpright = std::is_same_v<Graph, UprightGraph>;

    ProfileBuilder(GraphReader& in, const CString& name, const JsonValue& object)
        : m_in(in), m_name(name), m_spec(readObject<typename Graph::Spec>(in, object)) {
        m_scaleCount = static_cast<std::size_t>(
            std::count_if(m_spec.scales.begin(), m_spec.scales.end(),
                          [](const ScaleSpec& scale) { return !scale.isGroup; }));
        if (m_scaleCount == 0) m_spec.Fail("scales", "a profile needs at least one scale");
    }

    std::unique_ptr<DescribedGraph> Make() {
        std::optional<ScaleRows> rows;
        if constexpr (cIsUpright) fit_rows(rows.emplace(scale_texts(), m_spec.face));
        m_graph = make_graph();
        m_graph->SetTypeface(m_spec.face);
        if constexpr (cIsUpright) {
            add_rows(*rows);
            add_breaks();
            add_sky_line();
        } else {
            add_table();
        }
        for (const auto& band : m_spec.bands) add_band(band);
        for (const int line : m_spec.lines) add_line(line);
        for (const ProfileSpec& profile : m_spec.profiles) add_profile(profile);
        m_graph->SetPointScale(m_spec.pointSize.value_or(Graph::cFullPointScale));
        m_graph->ShowLegend(
            m_spec.legend.value_or(m_hasNames ? ProfileLegend::Below : ProfileLegend::None));
        m_graph->SetLegendPosition(m_spec.legendX, m_spec.legendY);
        ProfileText text = profileText(*m_graph);
        for (std::size_t i = 0; rows && i < m_scaleCount; ++i) {
            if (rows->IsBroken(i)) text.scales[i] = plainLabel(m_spec.scales[i].text);
        }
        GraphSheet sheet =
            m_spec.Sheet(cUsualProfileWidth, usual_height(), m_name, sentencesOf(text));
        return std::make_unique<DrawnGraph<Graph>>(std::move(sheet), std::move(m_graph));
    }

private:
    /// Names of several lines need higher rows; more are given to the axes and the legend.
    double usual_height() const {
        if (cIsUpright) return cUsualProfileHeight;
        std::ptrdiff_t lines = 1;
        for (const ScaleSpec& scale : m_spec.scales) {
            const std::string_view text = scale.text.View();
            lines = std::max(lines, 1 + std::count(text.begin(), text.end(), '\n'));
        }
        constexpr double lineHeight = 1.25;  // of the font's
        constexpr double besideRows = 7;
        const double all = static_cast<double>(m_spec.scales.size()) * static_cast<double>(lines);
        const double needed = (all + besideRows) * lineHeight * m_spec.textSize / cPointsPerInch;
        return lines > 1 ? std::max(cUsualProfileHeight, needed) : cUsualProfileHeight;
    }

    /// There is room for one line.
    CString axis_title() const {
        CString title = m_spec.axisTitle;
        title.Replace("\n", " ");
        return title;
    }

    std::unique_ptr<Graph> make_graph() const {
        const int min = m_spec.low;
        const int max = m_spec.high;
        const int major = m_spec.majorTick.value_or(niceStep(min, max));
        const int minor = m_spec.minorTick;
        const int majorBase = stepBase(min, major);
        const int minorBase = stepBase(min, minor);
        const double unit = m_spec.textSize / cPointsPerInch / cFontUnits;  // inches
        const int width = toInt(m_spec.width.value_or(cUsualProfileWidth) / unit);
        const int height = toInt(m_spec.height.value_or(usual_height()) / unit);
        std::unique_ptr<Graph> graph;
        if constexpr (cIsUpright) {
            graph = std::make_unique<Graph>(min, max, major, minor, m_spec.leftAxis,
                                            m_spec.rightAxis, width, height);
            graph->SetYRange(min, max, major, minor, majorBase, minorBase);
            graph->ScaleHorzLines(true);
            graph->SetYLegend(axis_title());
            if (m_spec.labelsFrom) graph->SetYLabelStart(*m_spec.labelsFrom);
            if (m_spec.labelsTo) graph->SetYLabelEnd(*m_spec.labelsTo);
        } else {
            graph = std::make_unique<Graph>(min, max, major, minor, width, height);
            graph->SetXRange(min, max, major, minor, majorBase, minorBase);
            graph->SetXLegend(axis_title());
            graph->SetScoreColsHeading(m_spec.columnsHeading);
            if (m_spec.labelsFrom) graph->SetXLabelStart(*m_spec.labelsFrom);
            if (m_spec.labelsTo) graph->SetXLabelEnd(*m_spec.labelsTo);
        }
        return graph;
    }

    /// How many texts scales have beside their names, headings counted.
    std::size_t column_count(std::size_t headings) const {
        std::size_t count = headings;
        for (const ScaleSpec& scale : m_spec.scales) count = std::max(count, scale.texts.size());
        return count;
    }
    std::unique_ptr<CStringArray> column(std::size_t index) const {
        auto texts = std::make_unique<CStringArray>();
        for (const ScaleSpec& scale : m_spec.scales) {
            if (scale.isGroup) continue;
            texts->Add(index < scale.texts.size() ? scale.texts[index] : CString());
        }
        return texts;
    }

    /// Names and further texts under the scales, each row with its heading.
    std::vector<ScaleRows::Row> scale_texts() const {
        const std::size_t count =
            1 + column_count(std::max<std::size_t>(m_spec.rows.size(), 1) - 1);
        std::vector<ScaleRows::Row> rows(count);
        for (std::size_t i = 0; i < count; ++i) {
            rows[i].push_back(i < m_spec.rows.size() ? m_spec.rows[i] : CString());
            for (const ScaleSpec& scale : m_spec.scales) {
                rows[i].push_back(i == 0                       ? scale.text
                                  : i - 1 < scale.texts.size() ? scale.texts[i - 1]
                                                               : CString());
            }
        }
        return rows;
    }

    /// Where the texts under the scales have no room, they get smaller unless their size is given.
    void fit_rows(ScaleRows& rows) {
        if (!m_in.HasVariables()) return rows.GiveUp();
        constexpr double smallest = 6;  // points
        constexpr double step = 0.5;
        constexpr double thousandths = 1000;
        const double sheet =
            m_spec.width.value_or(cUsualProfileWidth) * cPointsPerInch * thousandths;
        const double usual = m_spec.textSize;
        for (; m_spec.textSize >= smallest; m_spec.textSize -= step) {
            if (rows.Fit(sheet / m_spec.textSize, m_spec.leftAxis, m_spec.rightAxis)) return;
            if (m_spec.hasTextSize) break;
        }
        m_spec.textSize = usual;
        rows.GiveUp();
    }

    void add_rows(const ScaleRows& rows) {
        std::array<CStringArray*, ProfileChart::cMaxLegendRows> arrays{};
        std::transform(rows.Rows().begin(), rows.Rows().end(), arrays.begin(), [](const auto& row) {
            auto texts = std::make_unique<CStringArray>();
            for (const CString& text : row) texts->Add(text);
            return texts.release();
        });
        m_graph->SetRows(arrays);
    }

    void add_table() {
        for (const ScaleSpec& scale : m_spec.scales) {
            if (scale.isGroup) {
                m_graph->AddHeaderRow(scale.text);
            } else {
                m_graph->AddRow(scale.text);
            }
        }
        const std::vector<CString>& headings = m_spec.columns;
        for (std::size_t i = 0; i < column_count(headings.size()); ++i) {
            m_graph->AddScoreCol(i < headings.size() ? headings[i] : CString(),
                                 column(i).release());
        }
    }

    void add_sky_line() {
        if (m_spec.skyLine == nullptr) return;
        const auto sky = readObject<SkyLineSpec>(m_in, *m_spec.skyLine);
        m_graph->AddSkyLine(scores(*sky.values, false).release(), sky.color);
    }

    void add_breaks() {
        int last = 0;
        for (const BreakSpec& spec : m_spec.breaks) {
            if (!spec.after) continue;
            if (*spec.after >= static_cast<int>(m_scaleCount)) {
                m_in.Fail(spec.Place(), "there is no scale after this break");
            }
            if (*spec.after <= last) {
                m_in.Fail(spec.Place(), "breaks must be in ascending order");
            }
            last = *spec.after;
            m_graph->AddBreak(last, spec.kind);
        }
    }

    void add_band(const BandSpec& band) { m_graph->AddBand(band.from, band.to, band.color); }

    void add_band(const RegionSpec& band) {
        m_hasNames = m_hasNames || band.name;
        const CString name = band.name.value_or(CString());
        if (!band.HasLists()) {
            m_graph->AddBand(m_in.Number(*band.from, cScores).value_or(0),
                             m_in.Number(*band.to, cScores).value_or(0), band.color, name);
            return;
        }
        const auto lows = scores(*band.from, false);
        const auto highs = scores(*band.to, false);
        for (std::size_t i = 0; m_in.HasVariables() && i < m_scaleCount; ++i) {
            if (lows[i] <= highs[i]) continue;
            m_in.Fail(band.to->members[i].value, "must not be less than the same score in 'from'");
        }
        m_graph->AddBand(lows.get(), highs.get(), band.color, name);
    }

    void add_line(int score) {
        if constexpr (cIsUpright) {
            m_graph->AddHorzLine(score);
        } else {
            m_graph->AddVertLine(score);
        }
    }

    /// One score for each scale; where one may be missing, null and a variable without value are
    /// none.
    std::unique_ptr<double[]> scores(const JsonValue& list, bool mayMiss) const {
        const auto& members = m_in.Members(list, JsonValue::Kind::List, cMaxScales);
        if (members.size() != m_scaleCount) {
            m_in.Fail(list, "there must be a score for each of the " +
                                std::to_string(m_scaleCount) + " scales, not " +
                                std::to_string(members.size()));
        }
        auto values = std::make_unique<double[]>(m_scaleCount);
        std::transform(members.begin(), members.end(), values.get(), [&](const auto& member) {
            constexpr double missing = BasicProfileGraph::cDefaultMissingValue;
            if (mayMiss && (member.value.Is(JsonValue::Kind::Null) || m_in.IsMissing(member.value)))
                return missing;
            return m_in.Number(member.value, cScores).value_or(missing);
        });
        return values;
    }

    void add_profile(const ProfileSpec& profile) {
        const std::uint32_t id = m_profileCount++;
        m_hasNames = m_hasNames || profile.name;
        m_graph->AddProfile(profile.name.value_or(CString()),
                            scores(*profile.values, true).release(),
                            profile.color.value_or(m_in.PaletteColor(id)), id, profile.points,
                            profile.line, profile.decimals);
    }

    GraphReader& m_in;
    const CString& m_name;
    typename Graph::Spec m_spec;
    std::size_t m_scaleCount = 0;
    std::uint32_t m_profileCount = 0;
    bool m_hasNames = false;  ///< of profiles or bands
    std::unique_ptr<Graph> m_graph;
};

}  // namespace

std::unique_ptr<DescribedGraph> makeProfileGraph(GraphReader& in, const CString& name,
                                                 const JsonValue& object) {
    return ProfileBuilder<UprightGraph>(in, name, object).Make();
}

std::unique_ptr<DescribedGraph> makeHorizontalProfile(GraphReader& in, const CString& name,
                                                      const JsonValue& object) {
    return ProfileBuilder<HorizontalGraph>(in, name, object).Make();
}

}  // namespace tessalink::detail
