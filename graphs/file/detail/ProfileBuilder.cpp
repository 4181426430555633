#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <type_traits>

#include "graphs/file/detail/BarSpecs.h"
#include "graphs/file/detail/GraphTypes.h"
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

// What stands where a description says nothing; docs/graph-files.md repeats it.
constexpr double cWidth = 6;  // inches
constexpr double cHeight = 4;
constexpr double cTextSize = 9;  // points
constexpr int cMin = 0;
constexpr int cMax = 100;
constexpr COLORREF cBandColor = RGB(222, 232, 240);
/// The fonts of profile graphs are 7 design units high.
constexpr double cFontUnits = 7;
constexpr double cPointsPerInch = 72;

constexpr Bounds cPercent = {-1000, 1000};
constexpr Bounds cPointSize = {10, 1000};
constexpr Bounds cDecimals = {0, 9};
constexpr Bounds cAfterScale = {1, cMaxScales};

constexpr Word cLegends[] = {{"none", static_cast<std::uint16_t>(ProfileLegend::None)},
                             {"inside", static_cast<std::uint16_t>(ProfileLegend::Inside)},
                             {"below", static_cast<std::uint16_t>(ProfileLegend::Below)}};
constexpr Word cPointTypes[] = {
    {"symbol", static_cast<std::uint16_t>(ProfilePointType::Symbol)},
    {"value", static_cast<std::uint16_t>(ProfilePointType::SymbolAndValue)},
    {"none", static_cast<std::uint16_t>(ProfilePointType::LineOnly)}};
constexpr Word cBreaks[] = {{"line", ProfileGraph3::cLineBreak},
                            {"dash", ProfileGraph3::cDashedBreak},
                            {"double", ProfileGraph3::cDoubleBreak},
                            {"gap", ProfileGraph3::cInvisibleBreak}};

/// What both directions have; each has more keys in its table.
struct ChartSpec : SheetSpec {
    std::optional<double> textSize;
    std::optional<int> min;
    std::optional<int> max;
    std::optional<int> majorTick;
    std::optional<int> minorTick;
    std::optional<int> labelsFrom;
    std::optional<int> labelsTo;
    std::optional<CString> axisTitle;
    std::optional<std::uint16_t> legend;
    std::optional<double> legendX;
    std::optional<double> legendY;
    std::optional<int> pointSize;
    const JsonValue* scales = nullptr;
    const JsonValue* profiles = nullptr;
    const JsonValue* bands = nullptr;
    const JsonValue* lines = nullptr;
    // Upright.
    std::optional<bool> leftAxis;
    std::optional<bool> rightAxis;
    const JsonValue* rows = nullptr;
    const JsonValue* breaks = nullptr;
    const JsonValue* skyLine = nullptr;
    // Horizontal.
    std::optional<CString> columnsHeading;
    const JsonValue* columns = nullptr;
};

struct ChartScale {
    std::optional<CString> text;
    const JsonValue* texts = nullptr;
    std::optional<CString> group;  ///< instead of a scale
};

struct ChartProfile {
    std::optional<CString> name;
    const JsonValue* values = nullptr;
    std::optional<COLORREF> color;
    std::optional<std::uint16_t> line;
    std::optional<std::uint16_t> points;
    std::optional<int> decimals;
};

struct ChartBand {
    const JsonValue* from = nullptr;
    const JsonValue* to = nullptr;
    std::optional<COLORREF> color;
    std::optional<CString> name;
};

struct ChartSkyLine {
    const JsonValue* values = nullptr;
    std::optional<COLORREF> color;
};

struct ChartBreak {
    std::optional<int> after;
    std::optional<std::uint16_t> kind;
};

std::vector<Field<ChartSpec>> commonFields() {
    using S = ChartSpec;
    return withSheetFields<S>({{.key = "textSize", .member = &S::textSize, .bounds = cPoints},
                               {.key = "min", .member = &S::min, .bounds = cScores},
                               {.key = "max", .member = &S::max, .bounds = cScores},
                               {.key = "majorTick", .member = &S::majorTick, .bounds = cSteps},
                               {.key = "minorTick", .member = &S::minorTick, .bounds = cSteps},
                               {.key = "labelsFrom", .member = &S::labelsFrom, .bounds = cScores},
                               {.key = "labelsTo", .member = &S::labelsTo, .bounds = cScores},
                               {.key = "axisTitle", .member = &S::axisTitle},
                               {.key = "legend", .member = &S::legend, .words = cLegends},
                               {.key = "legendX", .member = &S::legendX, .bounds = cPercent},
                               {.key = "legendY", .member = &S::legendY, .bounds = cPercent},
                               {.key = "pointSize", .member = &S::pointSize, .bounds = cPointSize},
                               {.key = "scales", .member = &S::scales, .isRequired = true},
                               {.key = "profiles", .member = &S::profiles},
                               {.key = "bands", .member = &S::bands},
                               {.key = "lines", .member = &S::lines}});
}

template <class T>
std::vector<Field<T>> joinedWith(std::vector<Field<T>> fields, std::vector<Field<T>> more) {
    fields.insert(fields.end(), more.begin(), more.end());
    return fields;
}

const std::vector<Field<ChartSpec>>& uprightTable() {
    using S = ChartSpec;
    static const auto table =
        joinedWith<S>(commonFields(), {{.key = "leftAxis", .member = &S::leftAxis},
                                       {.key = "rightAxis", .member = &S::rightAxis},
                                       {.key = "rows", .member = &S::rows},
                                       {.key = "breaks", .member = &S::breaks},
                                       {.key = "skyLine", .member = &S::skyLine}});
    return table;
}

const std::vector<Field<ChartSpec>>& horizontalTable() {
    using S = ChartSpec;
    static const auto table =
        joinedWith<S>(commonFields(), {{.key = "columns", .member = &S::columns},
                                       {.key = "columnsHeading", .member = &S::columnsHeading}});
    return table;
}

const std::vector<Field<ChartScale>>& scaleTable(bool mayBeGroup) {
    using S = ChartScale;
    static const std::vector<Field<S>> scale = {
        {.key = "text", .member = &S::text, .isRequired = true},
        {.key = "texts", .member = &S::texts}};
    static const std::vector<Field<S>> group = {
        {.key = "group", .member = &S::group, .isRequired = true}};
    return mayBeGroup ? group : scale;
}

const std::vector<Field<ChartProfile>>& profileTable() {
    using P = ChartProfile;
    static const std::vector<Field<P>> table = {
        {.key = "name", .member = &P::name, .form = TextForm::Plain},
        {.key = "values", .member = &P::values, .isRequired = true},
        {.key = "color", .member = &P::color},
        {.key = "line", .member = &P::line, .words = cPenStyles},
        {.key = "points", .member = &P::points, .words = cPointTypes},
        {.key = "decimals", .member = &P::decimals, .bounds = cDecimals}};
    return table;
}

const std::vector<Field<ChartBand>>& bandTable(bool hasName) {
    using B = ChartBand;
    static const std::vector<Field<B>> plain = {
        {.key = "from", .member = &B::from, .isRequired = true},
        {.key = "to", .member = &B::to, .isRequired = true},
        {.key = "color", .member = &B::color}};
    static const auto named =
        joinedWith<B>(plain, {{.key = "name", .member = &B::name, .form = TextForm::Plain}});
    return hasName ? named : plain;
}

const std::vector<Field<ChartSkyLine>>& skyLineTable() {
    using L = ChartSkyLine;
    static const std::vector<Field<L>> table = {
        {.key = "values", .member = &L::values, .isRequired = true},
        {.key = "color", .member = &L::color}};
    return table;
}

const std::vector<Field<ChartBreak>>& breakTable() {
    using B = ChartBreak;
    static const std::vector<Field<B>> table = {
        {.key = "after", .member = &B::after, .bounds = cAfterScale, .isRequired = true},
        {.key = "kind", .member = &B::kind, .words = cBreaks}};
    return table;
}

template <class T>
T readBy(const ValueReader& in, const JsonValue& value, const std::vector<Field<T>>& fields) {
    in.Expect(value, JsonValue::Kind::Object);
    return readFields<T>(in, value, fields);
}

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
    using ProfileGraph3::ProfileGraph3;

    void SetRows(const LegendRows& rows) { set_legend_rows(rows); }
};

/// Makes a profile graph of its description. Graph is UprightGraph or HorProfileGraph.
template <class Graph>
class ProfileBuilder {
public:
    static constexpr bool cIsUpright = std::is_same_v<Graph, UprightGraph>;

    ProfileBuilder(ValueReader& in, const CString& name, const JsonValue& object)
        : m_in(in), m_name(name) {
        m_palette = readPalette(in, object);
        in.SetPalette(m_palette);
        m_spec = readBy<ChartSpec>(in, object, cIsUpright ? uprightTable() : horizontalTable());
        check_range(object);
        read_scales();
    }

    std::unique_ptr<DescribedGraph> Make() {
        m_graph = make_graph();
        if constexpr (cIsUpright) {
            add_rows();
            add_breaks();
            add_sky_line();
        } else {
            add_table();
        }
        add_bands();
        add_lines();
        add_profiles();
        m_graph->SetPointScale(m_spec.pointSize.value_or(Graph::cFullPointScale));
        const ProfileLegend legend = m_hasNames ? ProfileLegend::Below : ProfileLegend::None;
        m_graph->ShowLegend(
            static_cast<ProfileLegend>(m_spec.legend.value_or(static_cast<std::uint16_t>(legend))));
        constexpr double corner = 5;
        m_graph->SetLegendPosition(toInt(m_spec.legendX.value_or(corner)),
                                   toInt(m_spec.legendY.value_or(corner)));
        GraphSheet sheet =
            sheetOf(m_spec, cWidth, cHeight, m_name, sentencesOf(profileText(*m_graph)));
        return std::make_unique<DrawnGraph<Graph>>(std::move(sheet), std::move(m_graph));
    }

private:
    /// A scale, or a heading between scales.
    struct Entry {
        const JsonValue* value = nullptr;
        CString text;
        std::vector<CString> texts;
        bool isGroup = false;
    };

    /// The ends of the scores, also where one is left out, and in them those of the labels.
    void check_range(const JsonValue& object) {
        checkOrder(m_in, object, "min", "max", false);
        checkOrder(m_in, object, "labelsFrom", "labelsTo", false);
        const JsonValue* const min = object.Find("min");
        const JsonValue* const max = object.Find("max");
        if ((min && !m_spec.min) || (max && !m_spec.max)) return;
        m_min = m_spec.min.value_or(cMin);
        m_max = m_spec.max.value_or(cMax);
        if (m_min >= m_max) {
            const JsonValue& wrong = max != nullptr ? *max : min != nullptr ? *min : object;
            m_in.Source().Fail(wrong, "'max' must be above 'min'; they are " +
                                          std::to_string(cMin) + " and " + std::to_string(cMax) +
                                          " when left out");
        }
        for (const auto& [key, score] :
             {std::pair("labelsFrom", m_spec.labelsFrom), std::pair("labelsTo", m_spec.labelsTo)}) {
            if (!score || (*score >= m_min && *score <= m_max)) continue;
            m_in.Source().Fail(*object.Find(key), "this must lie from 'min' to 'max'");
        }
    }

    std::size_t further_texts() const {
        return cIsUpright ? ProfileChart::cMaxLegendRows - 1 : cMaxColumns;
    }

    void read_scales() {
        for (const JsonMember& member :
             m_in.Members(*m_spec.scales, JsonValue::Kind::List, cMaxScales)) {
            m_entries.push_back(read_scale(member.value));
            m_scaleCount += m_entries.back().isGroup ? 0 : 1;
        }
        if (m_scaleCount == 0) m_in.Source().Fail(*m_spec.scales, "a profile has a scale");
    }

    Entry read_scale(const JsonValue& value) const {
        Entry entry;
        entry.value = &value;
        if (value.Is(JsonValue::Kind::Text)) {
            entry.text = m_in.Text(value, TextForm::Label).value_or(CString());
            return entry;
        }
        m_in.ExpectObjectOr("a text", value);
        entry.isGroup = !cIsUpright && value.Find("group") != nullptr;
        const auto spec = readFields<ChartScale>(m_in, value, scaleTable(entry.isGroup));
        entry.text = entry.isGroup ? spec.group.value_or(CString()) : spec.text.value_or(CString());
        if (spec.texts != nullptr) entry.texts = readTexts(m_in, *spec.texts, further_texts());
        return entry;
    }

    std::unique_ptr<Graph> make_graph() const {
        const int major = m_spec.majorTick.value_or(niceStep(m_min, m_max));
        const int minor = m_spec.minorTick.value_or(0);
        const int majorBase = stepBase(m_min, major);
        const int minorBase = stepBase(m_min, minor);
        const double unit =
            m_spec.textSize.value_or(cTextSize) / cPointsPerInch / cFontUnits;  // inches
        const int width = toInt(m_spec.width.value_or(cWidth) / unit);
        const int height = toInt(m_spec.height.value_or(cHeight) / unit);
        std::unique_ptr<Graph> graph;
        if constexpr (cIsUpright) {
            graph = std::make_unique<Graph>(
                m_min, m_max, major, minor, m_spec.leftAxis.value_or(true) ? 1 : 0,
                m_spec.rightAxis.value_or(false) ? 1 : 0, width, height);
            graph->SetYRange(m_min, m_max, major, minor, majorBase, minorBase);
            graph->ScaleHorzLines(1);
            graph->SetYLegend(m_spec.axisTitle.value_or(CString()));
            if (m_spec.labelsFrom) graph->SetYLabelStart(*m_spec.labelsFrom);
            if (m_spec.labelsTo) graph->SetYLabelEnd(*m_spec.labelsTo);
        } else {
            graph = std::make_unique<Graph>(m_min, m_max, major, minor, width, height);
            graph->SetXRange(m_min, m_max, major, minor, majorBase, minorBase);
            graph->SetXLegend(m_spec.axisTitle.value_or(CString()));
            graph->SetScoreColsHeading(m_spec.columnsHeading.value_or(CString()));
            if (m_spec.labelsFrom) graph->SetXLabelStart(*m_spec.labelsFrom);
            if (m_spec.labelsTo) graph->SetXLabelEnd(*m_spec.labelsTo);
        }
        return graph;
    }

    /// The headings of rows or columns, and one array with the texts of each.
    std::size_t column_count(std::size_t headings) const {
        std::size_t count = headings;
        for (const Entry& entry : m_entries) count = std::max(count, entry.texts.size());
        return count;
    }
    std::unique_ptr<CStringArray> column(std::size_t index) const {
        auto texts = std::make_unique<CStringArray>();
        for (const Entry& entry : m_entries) {
            if (entry.isGroup) continue;
            texts->Add(index < entry.texts.size() ? entry.texts[index] : CString());
        }
        return texts;
    }

    void add_rows() {
        std::vector<CString> headings;
        if (m_spec.rows != nullptr) {
            headings = readTexts(m_in, *m_spec.rows, ProfileChart::cMaxLegendRows);
        }
        const std::size_t further = column_count(std::max<std::size_t>(headings.size(), 1) - 1);
        headings.resize(ProfileChart::cMaxLegendRows);
        std::array<CStringArray*, ProfileChart::cMaxLegendRows> rows{};
        auto first = std::make_unique<CStringArray>();
        first->Add(headings[0]);
        for (const Entry& entry : m_entries) first->Add(entry.text);
        rows[0] = first.release();
        for (std::size_t i = 0; i < further; ++i) {
            auto texts = column(i);
            texts->InsertAt(0, headings[i + 1]);
            rows[i + 1] = texts.release();
        }
        m_graph->SetRows(rows);
    }

    void add_table() {
        for (const Entry& entry : m_entries) {
            if (entry.isGroup) {
                m_graph->AddHeaderRow(entry.text);
            } else {
                m_graph->AddRow(entry.text);
            }
        }
        std::vector<CString> headings;
        if (m_spec.columns != nullptr) headings = readTexts(m_in, *m_spec.columns, cMaxColumns);
        for (std::size_t i = 0; i < column_count(headings.size()); ++i) {
            m_graph->AddScoreCol(i < headings.size() ? headings[i] : CString(),
                                 column(i).release());
        }
    }

    void add_sky_line() {
        if (m_spec.skyLine == nullptr) return;
        const auto sky = readBy<ChartSkyLine>(m_in, *m_spec.skyLine, skyLineTable());
        m_graph->AddSkyLine(scores(*sky.values, false).release(), sky.color.value_or(cBlack));
    }

    void add_breaks() {
        if (m_spec.breaks == nullptr) return;
        int last = 0;
        for (const JsonMember& member :
             m_in.Members(*m_spec.breaks, JsonValue::Kind::List, cMaxScales)) {
            const ChartBreak spec = read_break(member.value);
            if (!spec.after) continue;
            check_break(*spec.after, last, member.value);
            last = *spec.after;
            m_graph->AddBreak(last, spec.kind.value_or(ProfileGraph3::cLineBreak));
        }
    }

    ChartBreak read_break(const JsonValue& value) const {
        if (value.Is(JsonValue::Kind::Object)) {
            return readFields<ChartBreak>(m_in, value, breakTable());
        }
        return {m_in.Whole(value, cAfterScale), {}};
    }

    void check_break(int after, int last, const JsonValue& value) const {
        if (after >= static_cast<int>(m_scaleCount)) {
            m_in.Source().Fail(value, "a break comes before the last scale");
        }
        if (after <= last) m_in.Source().Fail(value, "breaks go from the first scale to the last");
    }

    void add_bands() {
        if (m_spec.bands == nullptr) return;
        for (const JsonMember& member :
             m_in.Members(*m_spec.bands, JsonValue::Kind::List, cMaxBands)) {
            const auto band = readBy<ChartBand>(m_in, member.value, bandTable(cIsUpright));
            const COLORREF color = band.color.value_or(cBandColor);
            if constexpr (cIsUpright) {
                m_hasNames = m_hasNames || band.name;
                add_region(member.value, band, color);
            } else {
                checkOrder(m_in, member.value, "from", "to", true);
                m_graph->AddBand(m_in.Whole(*band.from, cScores).value_or(0),
                                 m_in.Whole(*band.to, cScores).value_or(0), color);
            }
        }
    }

    /// A band that is the same for all scales, or one with limits for each.
    void add_region(const JsonValue& value, const ChartBand& band, COLORREF color) {
        const CString name = band.name.value_or(CString());
        if (!band.from->Is(JsonValue::Kind::List)) {
            checkOrder(m_in, value, "from", "to", true);
            m_graph->AddBand(m_in.Number(*band.from, cScores).value_or(0),
                             m_in.Number(*band.to, cScores).value_or(0), color, name);
            return;
        }
        const auto lows = scores(*band.from, false);
        const auto highs = scores(*band.to, false);
        for (std::size_t i = 0; m_in.HasVariables() && i < m_scaleCount; ++i) {
            if (lows[i] <= highs[i]) continue;
            m_in.Source().Fail(band.to->members[i].value,
                               "this must be above the same score in 'from', or the same");
        }
        m_graph->AddBand(lows.get(), highs.get(), color, name);
    }

    void add_lines() {
        if (m_spec.lines == nullptr) return;
        for (const JsonMember& member :
             m_in.Members(*m_spec.lines, JsonValue::Kind::List, cMaxLines)) {
            const int score = m_in.Whole(member.value, cScores).value_or(0);
            if constexpr (cIsUpright) {
                m_graph->AddHorzLine(score);
            } else {
                m_graph->AddVertLine(score);
            }
        }
    }

    /// One score for each scale; where one may be missing, null is none.
    std::unique_ptr<double[]> scores(const JsonValue& list, bool mayMiss) const {
        const auto& members = m_in.Members(list, JsonValue::Kind::List, cMaxScales);
        if (members.size() != m_scaleCount) {
            m_in.Source().Fail(list, "there must be as many as scales, " +
                                         std::to_string(m_scaleCount) + ", and are " +
                                         std::to_string(members.size()));
        }
        auto values = std::make_unique<double[]>(m_scaleCount);
        std::transform(members.begin(), members.end(), values.get(), [&](const auto& member) {
            constexpr double missing = BasicProfileGraph::cDefaultMissingValue;
            if (mayMiss && member.value.Is(JsonValue::Kind::Null)) return missing;
            return m_in.Number(member.value, cScores).value_or(missing);
        });
        return values;
    }

    void add_profiles() {
        if (m_spec.profiles == nullptr) return;
        std::uint32_t id = 0;
        for (const JsonMember& member :
             m_in.Members(*m_spec.profiles, JsonValue::Kind::List, cMaxProfiles)) {
            const auto profile = readBy<ChartProfile>(m_in, member.value, profileTable());
            const COLORREF color = profile.color.value_or(m_palette[id % m_palette.size()]);
            m_hasNames = m_hasNames || profile.name;
            auto values = scores(*profile.values, true);
            m_graph->AddProfile(profile.name.value_or(CString()), values.release(), color, id++,
                                static_cast<ProfilePointType>(profile.points.value_or(0)),
                                profile.line.value_or(PS_SOLID), profile.decimals.value_or(0));
        }
    }

    ValueReader& m_in;
    const CString& m_name;
    ChartSpec m_spec;
    std::vector<COLORREF> m_palette;
    int m_min = cMin;
    int m_max = cMax;
    bool m_hasNames = false;  ///< of profiles or bands
    std::vector<Entry> m_entries;
    std::size_t m_scaleCount = 0;
    std::unique_ptr<Graph> m_graph;
};

}  // namespace

std::unique_ptr<DescribedGraph> makeProfileGraph(ValueReader& in, const CString& name,
                                                 const JsonValue& object) {
    return ProfileBuilder<UprightGraph>(in, name, object).Make();
}

std::unique_ptr<DescribedGraph> makeHorizontalProfile(ValueReader& in, const CString& name,
                                                      const JsonValue& object) {
    return ProfileBuilder<HorProfileGraph>(in, name, object).Make();
}

}  // namespace tessalink::detail
