#include <algorithm>
#include <memory>
#include <type_traits>

#include "graphs/file/detail/BarSpecs.h"
#include "graphs/file/detail/GraphTypes.h"
#include "graphs/file/detail/SheetSpec.h"
#include "graphs/profile/HorProfileGraph.h"
#include "graphs/profile/ProfileGraph3.h"
#include "graphs/profile/ProfileGraphText.h"

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
constexpr Bounds cAfterScale = {0, cMaxScales};

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

const std::vector<Field<ChartBand>>& bandTable() {
    using B = ChartBand;
    static const std::vector<Field<B>> table = {
        {.key = "from", .member = &B::from, .isRequired = true},
        {.key = "to", .member = &B::to, .isRequired = true},
        {.key = "color", .member = &B::color},
        {.key = "name", .member = &B::name, .form = TextForm::Plain}};
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
        in.SetPalette(readPalette(in, object));
        m_palette = readPalette(in, object);
        m_spec = readBy<ChartSpec>(in, object, cIsUpright ? uprightTable() : horizontalTable());
        checkOrder(in, object, "min", "max", false);
        read_scales();
    }

    std::unique_ptr<DescribedGraph> Make() {
        m_graph = make_graph();
        if constexpr (cIsUpright) {
            add_rows();
            add_breaks();
        } else {
            add_table();
        }
        add_bands();
        add_lines();
        add_profiles();
        m_graph->SetPointScale(m_spec.pointSize.value_or(Graph::cFullPointScale));
        m_graph->ShowLegend(static_cast<ProfileLegend>(
            m_spec.legend.value_or(static_cast<std::uint16_t>(ProfileLegend::Below))));
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
        const int min = m_spec.min.value_or(cMin);
        const int max = m_spec.max.value_or(cMax);
        const int major = m_spec.majorTick.value_or(std::max(1, wrapSub(max, min) / 10));
        const int minor = m_spec.minorTick.value_or(0);
        const double unit =
            m_spec.textSize.value_or(cTextSize) / cPointsPerInch / cFontUnits;  // inches
        const int width = toInt(m_spec.width.value_or(cWidth) / unit);
        const int height = toInt(m_spec.height.value_or(cHeight) / unit);
        std::unique_ptr<Graph> graph;
        if constexpr (cIsUpright) {
            graph = std::make_unique<Graph>(
                min, max, major, minor, m_spec.leftAxis.value_or(true) ? 1 : 0,
                m_spec.rightAxis.value_or(false) ? 1 : 0, width, height);
            graph->ScaleHorzLines(1);
            graph->SetYLegend(m_spec.axisTitle.value_or(CString()));
            if (m_spec.labelsFrom) graph->SetYLabelStart(*m_spec.labelsFrom);
            if (m_spec.labelsTo) graph->SetYLabelEnd(*m_spec.labelsTo);
        } else {
            graph = std::make_unique<Graph>(min, max, major, minor, width, height);
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
        headings.resize(ProfileChart::cMaxLegendRows);
        std::array<CStringArray*, ProfileChart::cMaxLegendRows> rows{};
        auto first = std::make_unique<CStringArray>();
        first->Add(headings[0]);
        for (const Entry& entry : m_entries) first->Add(entry.text);
        rows[0] = first.release();
        for (std::size_t i = 0; i < column_count(0); ++i) {
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

    void add_breaks() {
        if (m_spec.skyLine != nullptr) {
            const auto sky = readBy<ChartProfile>(m_in, *m_spec.skyLine, profileTable());
            m_graph->AddSkyLine(scores(*sky.values).release(), sky.color.value_or(cBlack));
        }
        if (m_spec.breaks == nullptr) return;
        for (const JsonMember& member :
             m_in.Members(*m_spec.breaks, JsonValue::Kind::List, cMaxScales)) {
            ChartBreak spec;
            if (member.value.Is(JsonValue::Kind::Object)) {
                spec = readFields<ChartBreak>(m_in, member.value, breakTable());
            } else {
                spec.after = m_in.Whole(member.value, cAfterScale);
            }
            m_graph->AddBreak(spec.after.value_or(0),
                              spec.kind.value_or(ProfileGraph3::cLineBreak));
        }
    }

    void add_bands() {
        if (m_spec.bands == nullptr) return;
        for (const JsonMember& member :
             m_in.Members(*m_spec.bands, JsonValue::Kind::List, cMaxBands)) {
            const auto band = readBy<ChartBand>(m_in, member.value, bandTable());
            const COLORREF color = band.color.value_or(cBandColor);
            const CString name = band.name.value_or(CString());
            if (cIsUpright && band.from->Is(JsonValue::Kind::List)) {
                add_region(band, color, name);
                continue;
            }
            const double low = m_in.Number(*band.from, cScores).value_or(0);
            const double high = m_in.Number(*band.to, cScores).value_or(0);
            if constexpr (cIsUpright) {
                m_graph->AddBand(low, high, color, name);
            } else {
                m_graph->AddBand(toInt(low), toInt(high), color);
            }
        }
    }

    void add_region(const ChartBand& band, COLORREF color, const CString& name) {
        if constexpr (cIsUpright) {
            m_graph->AddBand(scores(*band.from).get(), scores(*band.to).get(), color, name);
        }
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

    /// One score for each scale; null is none.
    std::unique_ptr<double[]> scores(const JsonValue& list) const {
        const auto& members = m_in.Members(list, JsonValue::Kind::List, cMaxScales);
        if (members.size() != m_scaleCount) {
            CString counts;
            counts.Format("%d values for %d scales", static_cast<int>(members.size()),
                          static_cast<int>(m_scaleCount));
            m_in.Source().Fail(list, counts.GetString());
        }
        auto values = std::make_unique<double[]>(m_scaleCount);
        std::transform(members.begin(), members.end(), values.get(), [this](const auto& member) {
            constexpr double missing = BasicProfileGraph::cDefaultMissingValue;
            if (member.value.Is(JsonValue::Kind::Null)) return missing;
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
            m_graph->AddProfile(profile.name.value_or(CString()), scores(*profile.values).release(),
                                color, id++,
                                static_cast<ProfilePointType>(profile.points.value_or(0)),
                                profile.line.value_or(PS_SOLID), profile.decimals.value_or(0));
        }
    }

    ValueReader& m_in;
    const CString& m_name;
    ChartSpec m_spec;
    std::vector<COLORREF> m_palette;
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
