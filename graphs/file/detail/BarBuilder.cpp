#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <type_traits>
#include <variant>

#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarGraphText.h"
#include "graphs/bar/BarRangeLegend.h"
#include "graphs/bar/BarScale2.h"
#include "graphs/bar/BarSimpleLegend.h"
#include "graphs/bar/BarValueLegend.h"
#include "graphs/common/FormattedText.h"
#include "graphs/common/GraphFont.h"
#include "graphs/file/PercentileScale.h"
#include "graphs/file/detail/BarSpecs.h"
#include "graphs/file/detail/GraphTypes.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"
#include "platform/graphics/NullDevice.h"

namespace tessalink::detail {

namespace {

constexpr double cMaxTicks = 1000;  // of a kind, and labels of a legend

// What is usual where a description says nothing; docs/graph-files.md repeats it.
constexpr double cUsualWidth = 6;        // inches
constexpr double cPointOfBar = 0.6;      // the size of a point, of the bar's height
constexpr int cMaxColumn = 400;          // of a column whose width is found
constexpr double cHighest = 200;         // inches, of a graph whose height is found
constexpr double cFrameRoom = 0.03;      // inches, for the frame and what is rounded up
constexpr int cUsualScale[] = {0, 100};  // for scales that wait for variables

/// A section as it was read.
struct Section {
    using Spec = std::variant<TextHeadingSpec, HeadingSpec, ScaleSpec, ValueLegendSpec,
                              TextLegendSpec, RangeLegendSpec, int>;

    const JsonValue* value;  ///< what stands under its kind
    Spec spec;
    BarScale* scale = nullptr;  ///< of a scale
};

/// The scale or the legend that a section is; null for others.
const RowSpec* rowOf(const Section& section) {
    return std::visit(
        [](const auto& spec) -> const RowSpec* {
            if constexpr (std::is_base_of_v<RowSpec, std::decay_t<decltype(spec)>>) return &spec;
            return nullptr;
        },
        section.spec);
}

/// The multiple of the step next to a score, upward or downward.
int roundedTo(int score, int step, double (*round)(double)) {
    return step > 0 ? toInt(round(static_cast<double>(score) / step) * step) : score;
}

/// Measures texts in design units.
class Ruler {
public:
    Ruler() : m_dc(m_device) {}

    /// How wide a column must be for the text and the space between it and the bar.
    int ColumnFor(const CString& text, const TextLook& look) {
        constexpr BYTE pitch = 4;
        CFont normal;
        createGraphFont(normal, look.size, look.face, OUT_DEFAULT_PRECIS, DEFAULT_QUALITY, pitch);
        const Selected selected(m_dc, &normal);
        int widest = 0;
        for (std::string_view rest = text.View(); !rest.empty();) {
            const std::string_view line = rest.substr(0, rest.find('\n'));
            widest = std::max(widest, width(CString(line)));
            rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        }
        return std::min(widest + m_dc.GetTextExtent("M", 1).cx + 2, cMaxColumn);
    }

private:
    /// Bold runs may need a tenth more.
    int width(const CString& line) const {
        constexpr int tenth = 10;
        const int plain = m_dc.GetTextExtent(line).cx;
        return line.Find('\\') >= 0 ? plain + plain / tenth : plain;
    }

    NullDevice m_device;
    CDC m_dc;
};

/// Makes a bar graph of its description.
class BarBuilder {
public:
    BarBuilder(GraphReader& in, const CString& name, const JsonValue& object)
        : m_in(in), m_name(name), m_graph(readObject<BarSpec>(in, object)) {
        read_sections();
    }

    std::unique_ptr<DescribedGraph> Make() {
        m_left = m_graph.leftWidth.value_or(column(&RowSpec::left, &ScaleSpec::leftWidth));
        m_right = m_graph.rightWidth.value_or(column(&RowSpec::right, &ScaleSpec::rightWidth));
        auto graph = std::make_unique<BarGraph>(m_graph.frame, m_graph.align);
        std::vector<std::unique_ptr<BarSection>> sections(m_sections.size());
        // A legend may stand before its scale.
        for (std::size_t i = 0; i < m_sections.size(); ++i) {
            if (auto* spec = std::get_if<ScaleSpec>(&m_sections[i].spec)) {
                auto scale = make_scale(*spec);
                m_sections[i].scale = scale.get();
                sections[i] = std::move(scale);
            }
        }
        double height = 0;
        for (std::size_t i = 0; i < m_sections.size(); ++i) {
            if (!sections[i]) sections[i] = make_section(i);
            height += sections[i]->GetDesignHeight();
            check_height(height, *m_sections[i].value);
            graph->AddSection(sections[i].release());
        }
        const double usualHeight =
            width() * graph->GetDesignHeight() / BarGraph::cDesignWidth + cFrameRoom;
        GraphSheet sheet = m_graph.Sheet(cUsualWidth, usualHeight, m_name, sentences(*graph));
        return std::make_unique<DrawnGraph<BarGraph>>(std::move(sheet), std::move(graph));
    }

private:
    double width() const { return m_graph.width.value_or(cUsualWidth); }

    void read_sections() {
        for (const JsonMember& member :
             m_in.Members(*m_graph.sections, JsonValue::Kind::List, cMaxSections)) {
            m_sections.push_back(read_section(member.value));
            const auto* scale = std::get_if<ScaleSpec>(&m_sections.back().spec);
            if (scale != nullptr && scale->name) check_name(*scale);
        }
        if (m_sections.empty()) m_in.Fail(*m_graph.sections, "a graph needs at least one section");
    }

    Section read_section(const JsonValue& value) const {
        const auto section = readObject<SectionSpec>(m_in, value);
        if (value.members.size() != 1) {
            m_in.Fail(value, "a section must have one key: heading, scale, legend or space");
        }
        const JsonValue& content = value.members.front().value;
        if (section.heading != nullptr) return {&content, read_heading(content)};
        if (section.scale != nullptr) return {&content, read<ScaleSpec>(content)};
        if (section.legend != nullptr) return {&content, read_legend(content)};
        return {&content, m_in.Whole(content, cLength).value_or(0)};
    }

    template <class T, class... More>
    T read(const JsonValue& value, const More&... more) const {
        return readObject<T>(m_in, value, m_graph, more...);
    }

    Section::Spec read_heading(const JsonValue& value) const {
        if (value.Find("texts") != nullptr) return read<HeadingSpec>(value);
        return read<TextHeadingSpec>(value, JsonShorthand{"text", "a text"});
    }

    Section::Spec read_legend(const JsonValue& value) const {
        if (value.Find("texts") != nullptr) return read<TextLegendSpec>(value);
        if (value.Find("ranges") != nullptr) return read<RangeLegendSpec>(value);
        return read<ValueLegendSpec>(value);
    }

    /// The scale was read last; no other may have its name.
    void check_name(const ScaleSpec& scale) const {
        const auto same = [&](const Section& section) {
            const auto* other = std::get_if<ScaleSpec>(&section.spec);
            return other != nullptr && other->name == scale.name;
        };
        if (std::count_if(m_sections.begin(), m_sections.end(), same) > 1) {
            scale.Fail("name", "duplicate name of a scale");
        }
    }

    /// The width that all descriptions of one side need, so that the bars line up.
    int column(CString RowSpec::*text, std::optional<int> ScaleSpec::*width) const {
        Ruler ruler;
        int widest = 0;
        for (const Section& section : m_sections) {
            const RowSpec* const row = rowOf(section);
            if (row == nullptr || (row->*text).IsEmpty()) continue;
            const auto* scale = std::get_if<ScaleSpec>(&section.spec);
            if (scale != nullptr && scale->*width) continue;
            // Labels at the ends of a legend reach into the column.
            const int label =
                scale == nullptr ? static_cast<const LegendSpec*>(row)->labels.size : 0;
            widest = std::max(widest, ruler.ColumnFor(row->*text, row->look) + label);
        }
        return widest;
    }

    void check_height(double height, const JsonValue& section) const {
        if (height / BarGraph::cDesignWidth * width() > cHighest) {
            m_in.Fail(section, "with this section the graph is higher than 200 inches");
        }
    }

    std::unique_ptr<BarSection> make_section(std::size_t index) const {
        return std::visit([&](const auto& spec) { return make(spec, index); },
                          m_sections[index].spec);
    }

    std::unique_ptr<BarSection> make(int space, std::size_t) const {
        return std::make_unique<BarHeading>(0, 0, space, 0);
    }

    std::unique_ptr<BarSection> make(const TextHeadingSpec& spec, std::size_t) const {
        auto heading = std::make_unique<BarHeading>(0, 0, spec.marginTop, spec.marginBottom);
        add_text(*heading, spec);
        return heading;
    }

    std::unique_ptr<BarSection> make(const HeadingSpec& spec, std::size_t) const {
        auto heading = std::make_unique<BarHeading>(0, 0, spec.marginTop, spec.marginBottom);
        for (const TextSpec& text : spec.texts) add_text(*heading, text);
        return heading;
    }

    void add_text(BarHeading& heading, const TextSpec& text) const {
        heading.AddText(text.text, text.position.value_or(anchor(text.align)), text.align,
                        text.look.size, text.look.color, text.look.face);
    }

    /// Where a text goes that only says how it is aligned.
    double anchor(std::uint16_t align) const {
        constexpr int middle = BarGraph::cDesignWidth / 2;
        if (align & BarHeading::cRight) return BarGraph::cDesignWidth - m_graph.marginRight;
        return align & BarHeading::cCenter ? middle : m_graph.marginLeft;
    }

    template <class Scale>
    std::unique_ptr<BarScale2> new_scale(const ScaleSpec& spec) const {
        const auto [min, max] = ends(spec);
        const int major = spec.majorTick.value_or(niceStep(min, max));
        const int from = spec.ticksFrom.value_or(roundedTo(min, major, std::ceil));
        const int to = spec.ticksTo.value_or(roundedTo(max, major, std::floor));
        return std::make_unique<Scale>(
            min, max, spec.left, spec.right, spec.leftWidth.value_or(m_left),
            spec.rightWidth.value_or(m_right), major, spec.minorTick, from, to,
            spec.marginLeft.value_or(m_graph.marginLeft),
            spec.marginRight.value_or(m_graph.marginRight), spec.marginTop, spec.marginBottom,
            spec.look.size, spec.barHeight, spec.plotMin.value_or(min), spec.plotMax.value_or(max));
    }

    std::unique_ptr<BarScale> make_scale(const ScaleSpec& spec) const {
        auto scale = spec.isNormal ? new_scale<PercentileScale>(spec) : new_scale<BarScale2>(spec);
        check_ticks(*scale, spec);
        check_room(*scale, spec);
        const COLORREF lines = spec.lineColor.value_or(cBlack);
        scale->SetTypeface(spec.look.face);
        scale->SetLineSize(spec.lineWidth.value_or(BarScale::cDefaultLineSize));
        scale->SetBoxColor(lines);
        scale->SetMajTickColor(spec.majorTickColor.value_or(lines));
        scale->SetMinTickColor(spec.minorTickColor.value_or(lines));
        scale->SetDescColor(spec.look.color);
        scale->SetBoxFillColor(spec.fill);
        // Points lie over ranges.
        for (const RangeSpec& range : spec.ranges) scale->AddGraphic(make_range(range).release());
        for (const PointSpec& point : spec.points) {
            scale->AddGraphic(make_point(point, scale->GetBarHeight()).release());
        }
        return scale;
    }

    std::unique_ptr<BarSection> make(const ScaleSpec& spec, std::size_t) const {
        return make_scale(spec);
    }

    /// The ends of a scale; while variables are missing, some.
    static std::pair<int, int> ends(const ScaleSpec& spec) {
        if (spec.isNormal) return {spec.min.value_or(1), spec.max.value_or(99)};
        const int width = cUsualScale[1] - cUsualScale[0];
        const int min = spec.min.value_or(spec.max ? *spec.max - width : cUsualScale[0]);
        return {min, spec.max.value_or(min + width)};
    }

    static void check_ticks(const BarScale& scale, const ScaleSpec& spec) {
        const double length = static_cast<double>(scale.GetTickEnd()) - scale.GetTickStart();
        for (const auto& [key, step] : {std::pair("majorTick", scale.GetMajTick()),
                                        std::pair("minorTick", scale.GetMinTick())}) {
            if (step == 0 || length / step < cMaxTicks) continue;
            spec.Fail(key, "more than 1000 ticks: take larger steps");
        }
    }

    void check_room(const BarScale& scale, const ScaleSpec& spec) const {
        const int sides = scale.GetLeftMargin() + scale.GetLeftTextWidth() +
                          scale.GetRightMargin() + scale.GetRightTextWidth();
        if (sides < BarGraph::cDesignWidth) return;
        m_in.Fail(spec.Place(), "margins and text widths take " + std::to_string(sides) +
                                    " of 1000: there is no room for the bar");
    }

    static std::unique_ptr<BarGraphic> make_range(const RangeSpec& spec) {
        auto range = std::make_unique<BarRangeGraphic>(spec.from, spec.to, spec.color,
                                                       spec.borderColor, spec.lineWidth);
        range->SetHeightFraction(spec.height);
        return range;
    }

    static std::unique_ptr<BarGraphic> make_point(const PointSpec& spec, int barHeight) {
        const int usual = std::max(1, toInt(cPointOfBar * barHeight));
        return std::make_unique<BarPointGraphic>(spec.at, spec.size.value_or(usual), spec.color,
                                                 spec.symbol, spec.lineWidth);
    }

    /// The scale that a legend names, or the nearest above it.
    BarScale* scale_for(const LegendSpec& spec, std::size_t index) const {
        std::vector<std::string_view> names;
        BarScale* above = nullptr;
        for (std::size_t i = 0; i < m_sections.size(); ++i) {
            const auto* scale = std::get_if<ScaleSpec>(&m_sections[i].spec);
            if (scale == nullptr) continue;
            if (i < index) above = m_sections[i].scale;
            if (!scale->name) continue;
            if (spec.scale == scale->name) return m_sections[i].scale;
            names.push_back(scale->name->View());
        }
        if (spec.scale) {
            spec.Fail("scale",
                      "there is no scale of this name" + nameHint(spec.scale->View(), names));
        }
        if (above == nullptr) {
            m_in.Fail(spec.Place(), "there is no scale above this legend: name one by \"scale\"");
        }
        return above;
    }

    std::unique_ptr<BarSection> make(const ValueLegendSpec& spec, std::size_t index) const {
        auto legend = new_legend<BarValueLegend>(spec, index);
        if (spec.first) legend->SetFirstLabelPos(*spec.first);
        if (spec.last) legend->SetLastLabelPos(*spec.last);
        legend->SetLabelCalcStart(spec.start.value_or(legend->GetFirstLabelPos()));
        if (spec.step) legend->SetLabelDelta(*spec.step);
        check_labels(*legend, spec);
        return legend;
    }

    void check_labels(const BarValueLegend& legend, const ValueLegendSpec& spec) const {
        if (!m_in.HasVariables()) return;
        const double from = std::min(legend.GetFirstLabelPos(), legend.GetLabelCalcStart());
        const int step = legend.GetLabelDelta();
        if (step <= 0 || (legend.GetLastLabelPos() - from) / step < cMaxTicks) return;
        m_in.Fail(spec.Place(), "more than 1000 labels: take larger steps");
    }

    std::unique_ptr<BarSection> make(const TextLegendSpec& spec, std::size_t index) const {
        auto legend = new_legend<BarSimpleLegend>(spec, index);
        legend->SetUseLine(spec.lines);
        legend->SetLineStyle(spec.lineStyle);
        set_lines(*legend, spec);
        for (const LabelSpec& label : spec.texts) legend->AddText(label.at, label.text);
        return legend;
    }

    std::unique_ptr<BarSection> make(const RangeLegendSpec& spec, std::size_t index) const {
        auto legend = new_legend<BarRangeLegend>(spec, index);
        legend->SetDirectionUp(spec.isUp);
        set_lines(*legend, spec);
        for (const RangeLabelSpec& label : spec.ranges) {
            legend->AddRange(label.from, label.to, label.text);
        }
        return legend;
    }

    static void set_lines(BarTextLegend& legend, const LegendSpec& spec) {
        if (spec.lineColor) legend.SetLineColor(*spec.lineColor);
        if (spec.lineWidth) legend.SetLineSize(*spec.lineWidth);
    }

    /// A legend with what all kinds have; it lines up with its scale.
    template <class Legend>
    std::unique_ptr<Legend> new_legend(const LegendSpec& spec, std::size_t index) const {
        BarScale* const scale = scale_for(spec, index);
        auto legend = std::make_unique<Legend>(
            scale, spec.left, spec.right, spec.labels.color, spec.look.color,
            spec.marginLeft.value_or(scale->GetLeftMargin()),
            spec.marginRight.value_or(scale->GetRightMargin()), spec.marginTop, spec.marginBottom,
            spec.look.size, spec.labels.size, spec.look.face, spec.labels.face);
        if (spec.leftAlign) legend->SetLeftDescAlignment(*spec.leftAlign);
        if (spec.rightAlign) legend->SetRightDescAlignment(*spec.rightAlign);
        return legend;
    }

    /// The sentences of the scales, with the names that the description gives to marks.
    CString sentences(const BarGraph& graph) const {
        auto texts = scaleTexts(graph);
        auto text = texts.begin();
        for (const Section& section : m_sections) {
            const auto* scale = std::get_if<ScaleSpec>(&section.spec);
            if (scale == nullptr) continue;
            name_marks(text->points, scale->points);
            name_marks(text->ranges, scale->ranges);
            ++text;
        }
        return sentencesOf(texts);
    }

    /// The texts may be those of the first marks alone.
    template <class Texts, class Specs>
    static void name_marks(Texts& texts, const Specs& specs) {
        for (std::size_t i = 0; i < texts.size(); ++i) texts[i].name = specs[i].name;
    }

    GraphReader& m_in;
    const CString& m_name;
    BarSpec m_graph;
    std::vector<Section> m_sections;
    int m_left = 0;
    int m_right = 0;
};

}  // namespace

std::unique_ptr<DescribedGraph> makeBarGraph(GraphReader& in, const CString& name,
                                             const JsonValue& object) {
    return BarBuilder(in, name, object).Make();
}

}  // namespace tessalink::detail
