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
#include "graphs/file/PercentileScale.h"
#include "graphs/file/detail/BarLabels.h"
#include "graphs/file/detail/BarSpecs.h"
#include "graphs/file/detail/GraphTypes.h"
#include "platform/base/NumberText.h"

namespace tessalink::detail {

namespace {

constexpr double cMaxTicks = 1000;  // of a kind, and labels of a legend

// What is usual where a description says nothing; docs/graph-files.md repeats it.
constexpr double cUsualBarWidth = 6;     // inches
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

/// The section as a T, which may be a base of what it is; null when it is none.
template <class T>
const T* as(const Section& section) {
    return std::visit(
        [](const auto& spec) -> const T* {
            if constexpr (std::is_base_of_v<T, std::decay_t<decltype(spec)>>) return &spec;
            return nullptr;
        },
        section.spec);
}

/// The multiple of the step next to a score, upward or downward.
int roundedTo(int score, int step, double (*round)(double)) {
    return step > 0 ? toInt(round(static_cast<double>(score) / step) * step) : score;
}

/// How far a description moves away from a body beyond whose end labels reach so far, given the
/// space that there is between them anyway. Where less than a quarter of that is left, it becomes
/// half.
int shiftFor(int reach, int space) {
    constexpr int least = 4;
    constexpr int usual = 2;
    return reach > space - space / least ? reach - space + space / usual : 0;
}

/// A legend whose descriptions keep off the labels that reach beyond its body.
template <class Legend>
class SpacedLegend final : public Legend {
public:
    using Legend::Legend;

    /// Lengths in design units.
    void SetReach(int left, int right) {
        m_left = left;
        m_right = right;
    }

protected:
    void draw_left_desc(CDC* dc, double xScale, const CRect& column) override {
        CRect rest = column;
        rest.right -= shift(*dc, m_left * xScale);
        Legend::draw_left_desc(dc, xScale, rest);
    }
    void draw_right_desc(CDC* dc, double xScale, const CRect& column) override {
        CRect rest = column;
        rest.left += shift(*dc, m_right * xScale);
        Legend::draw_right_desc(dc, xScale, rest);
    }

private:
    /// The columns begin a letter's width from the body.
    static int shift(CDC& dc, double reach) {
        return shiftFor(toInt(std::ceil(reach)), dc.GetTextExtent("M", 1).cx);
    }

    int m_left = 0;
    int m_right = 0;
};

/// Makes a bar graph of its description.
class BarBuilder {
public:
    BarBuilder(GraphReader& in, const CString& name, const JsonValue& object)
        : m_in(in), m_name(name), m_graph(readObject<BarSpec>(in, object)) {
        read_sections();
    }

    std::unique_ptr<DescribedGraph> Make() {
        find_columns();
        auto graph = std::make_unique<BarGraph>(m_graph.frame, m_graph.align);
        std::vector<std::unique_ptr<BarSection>> sections(m_sections.size());
        // A legend may stand before its scale.
        for (std::size_t i = 0; i < m_sections.size(); ++i) {
            if (const auto* spec = as<ScaleSpec>(m_sections[i])) {
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
        GraphSheet sheet = m_graph.Sheet(cUsualBarWidth, usualHeight, m_name, sentences(*graph));
        return std::make_unique<DrawnGraph<BarGraph>>(std::move(sheet), std::move(graph));
    }

private:
    double width() const { return m_graph.width.value_or(cUsualBarWidth); }

    void read_sections() {
        for (const JsonMember& member :
             m_in.Members(*m_graph.sections, JsonValue::Kind::List, cMaxSections)) {
            m_sections.push_back(read_section(member.value));
            const auto* scale = as<ScaleSpec>(m_sections.back());
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
            const auto* other = as<ScaleSpec>(section);
            return other != nullptr && other->name == scale.name;
        };
        if (std::count_if(m_sections.begin(), m_sections.end(), same) > 1) {
            scale.Fail("name", "duplicate name of a scale");
        }
    }

    /// The columns beside the bars. Where labels reach into them, they get wider and the bars
    /// narrower, so that others may reach farther.
    void find_columns() {
        m_left = m_graph.leftWidth.value_or(column(&RowSpec::left, &ScaleSpec::leftWidth));
        m_right = m_graph.rightWidth.value_or(column(&RowSpec::right, &ScaleSpec::rightWidth));
        constexpr int rounds = 4;
        for (int i = 0; m_in.HasVariables() && i < rounds; ++i) {
            const auto [left, right] = columns_of_labels();
            if (!m_graph.leftWidth) m_left = std::max(m_left, left);
            if (!m_graph.rightWidth) m_right = std::max(m_right, right);
        }
    }

    /// The width that all descriptions of one side need, so that the bars line up.
    int column(CString RowSpec::*text, std::optional<int> ScaleSpec::*width) const {
        int widest = 0;
        for (const Section& section : m_sections) {
            const auto* row = as<RowSpec>(section);
            if (row == nullptr || (row->*text).IsEmpty()) continue;
            const auto* scale = as<ScaleSpec>(section);
            if (scale != nullptr && scale->*width) continue;
            const auto* legend = as<LegendSpec>(section);
            widest = std::max(widest, column_for(row->*text, row->look) +
                                          (legend != nullptr ? legend->labels.size : 0));
        }
        return widest;
    }
    int column_for(const CString& text, const TextLook& look) const {
        return std::min(m_ruler.Width(text, look) + m_ruler.Gap(look) + 2, cMaxColumn);
    }

    /// The widths that legends need for descriptions and labels side by side.
    std::pair<int, int> columns_of_labels() const {
        int left = 0;
        int right = 0;
        const auto needed = [&](const CString& text, const TextLook& look, int reach, int margin) {
            if (text.IsEmpty()) return std::min(reach - margin, cMaxColumn);
            return column_for(text, look) + shiftFor(reach, m_ruler.Gap(look));
        };
        for (std::size_t i = 0; i < m_sections.size(); ++i) {
            const auto* legend = as<LegendSpec>(m_sections[i]);
            if (legend == nullptr) continue;
            const auto& scale = std::get<ScaleSpec>(scale_for(*legend, i).spec);
            const LegendFit fit = fit_of(i);
            if (!scale.leftWidth) {
                left = std::max(left, needed(legend->left, legend->look, fit.left,
                                             scale.marginLeft.value_or(m_graph.marginLeft)));
            }
            if (!scale.rightWidth) {
                right = std::max(right, needed(legend->right, legend->look, fit.right,
                                               scale.marginRight.value_or(m_graph.marginRight)));
            }
        }
        return {left, right};
    }

    /// The labels of a legend as they fit, and how far they reach beyond the bar's ends.
    struct LegendFit {
        LegendLabels labels;
        int step = 0;  ///< of values
        int left = 0;
        int right = 0;
    };
    LegendFit fit_of(std::size_t index) const {
        const auto& legend = *as<LegendSpec>(m_sections[index]);
        const auto& scale = std::get<ScaleSpec>(scale_for(legend, index).spec);
        const auto axis = new_scale(scale);
        const BarBody body = body_of(*axis);
        LegendFit fit = {LegendLabels(legend.labels), 0, 0, 0};
        std::visit([&](const auto& spec) { add_labels(fit, spec, *axis, body); },
                   m_sections[index].spec);
        if (!m_in.HasVariables() || body.width <= 0) return fit;
        fit.labels.Fit(body, !legend.hasLabelSize, m_ruler);
        fit.left = fit.labels.BeyondLeft(m_ruler);
        fit.right = fit.labels.BeyondRight(body, m_ruler);
        return fit;
    }

    static BarBody body_of(const BarScale& scale) {
        const int left = scale.GetLeftMargin() + scale.GetLeftTextWidth();
        const int right = scale.GetRightMargin() + scale.GetRightTextWidth();
        return {left, BarGraph::cDesignWidth - left - right, right};
    }
    static double place_of(double score, const BarScale& axis, const BarBody& body) {
        return axis.PixXUnrestricted(score, CRect(0, 0, body.width, 1));
    }

    template <class Spec>
    void add_labels(LegendFit&, const Spec&, const BarScale&, const BarBody&) const {}

    void add_labels(LegendFit& fit, const TextLegendSpec& spec, const BarScale& axis,
                    const BarBody& body) const {
        for (const LabelSpec& label : spec.texts) {
            fit.labels.Add(place_of(label.at, axis, body), label.text);
        }
    }

    void add_labels(LegendFit& fit, const RangeLegendSpec& spec, const BarScale& axis,
                    const BarBody& body) const {
        for (const RangeLabelSpec& label : spec.ranges) {
            const double ends = place_of(label.from, axis, body) + place_of(label.to, axis, body);
            fit.labels.Add(ends / 2, label.text);
        }
    }

    /// Numbers at so many major ticks that they have room, unless it is said how many.
    void add_labels(LegendFit& fit, const ValueLegendSpec& spec, const BarScale& axis,
                    const BarBody& body) const {
        const int major = axis.GetMajTick();
        const int first = spec.first.value_or(axis.GetTickStart());
        const int last = spec.last.value_or(axis.GetTickEnd());
        const int start = spec.start.value_or(first);
        fit.step = spec.step.value_or(major);
        if (!m_in.HasVariables() || body.width <= 0 || fit.step <= 0 ||
            (double{1} * last - std::min(first, start)) / fit.step >= cMaxTicks) {
            return;
        }
        const auto numbers = [&](double step) {
            LegendLabels labels(spec.labels);
            const auto add = [&](double score) {
                labels.Add(place_of(score, axis, body), formatInt(toInt(score), 0, -1));
            };
            add(first);
            for (double score = start; score < last; score += step) {
                if (score > first) add(score);
            }
            add(last);
            return labels;
        };
        const BarBody anywhere = {BarGraph::cDesignWidth, body.width, BarGraph::cDesignWidth};
        fit.labels = numbers(fit.step);
        if (spec.step) return;
        for (double factor = 1; major * factor < double{1} * last - first; factor *= 10) {
            for (const double digit : {1, 2, 5}) {
                const double step = major * factor * digit;
                LegendLabels labels = numbers(step);
                if (labels.Collide(anywhere, m_ruler)) continue;
                fit.step = toInt(step);
                fit.labels = std::move(labels);
                return;
            }
        }
    }

    /// A description, which stays in its column and the margin.
    CString description(const CString& text, const TextLook& look, int room) const {
        room -= m_ruler.Gap(look);
        if (!m_in.HasVariables() || m_ruler.Width(text, look) <= room) return text;
        return m_ruler.Wrapped(text, look, room);
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

    /// A text whose place is not given stays between the margins.
    void add_text(BarHeading& heading, const TextSpec& text) const {
        const int room = BarGraph::cDesignWidth - m_graph.marginLeft - m_graph.marginRight;
        const bool isWide =
            m_in.HasVariables() && !text.position && m_ruler.Width(text.text, text.look) > room;
        heading.AddText(isWide ? m_ruler.Wrapped(text.text, text.look, room) : text.text,
                        text.position.value_or(anchor(text.align)), text.align, text.look.size,
                        text.look.color, text.look.face);
    }

    /// Where a text goes that only says how it is aligned.
    double anchor(std::uint16_t align) const {
        constexpr int middle = BarGraph::cDesignWidth / 2;
        if (align & BarHeading::cRight) return BarGraph::cDesignWidth - m_graph.marginRight;
        return align & BarHeading::cCenter ? middle : m_graph.marginLeft;
    }

    std::unique_ptr<BarScale2> new_scale(const ScaleSpec& spec) const {
        if (spec.isNormal) return new_scale<PercentileScale>(spec);
        return new_scale<BarScale2>(spec);
    }

    template <class Scale>
    std::unique_ptr<BarScale2> new_scale(const ScaleSpec& spec) const {
        const auto [min, max] = ends(spec);
        const int major = spec.majorTick.value_or(niceStep(min, max));
        const int from = spec.ticksFrom.value_or(roundedTo(min, major, std::ceil));
        const int to = spec.ticksTo.value_or(roundedTo(max, major, std::floor));
        const int leftWidth = spec.leftWidth.value_or(m_left);
        const int rightWidth = spec.rightWidth.value_or(m_right);
        const int leftMargin = spec.marginLeft.value_or(m_graph.marginLeft);
        const int rightMargin = spec.marginRight.value_or(m_graph.marginRight);
        return std::make_unique<Scale>(
            min, max, description(spec.left, spec.look, leftWidth + leftMargin),
            description(spec.right, spec.look, rightWidth + rightMargin), leftWidth, rightWidth,
            major, spec.minorTick, from, to, leftMargin, rightMargin, spec.marginTop,
            spec.marginBottom, spec.look.size, spec.barHeight, spec.plotMin.value_or(min),
            spec.plotMax.value_or(max));
    }

    std::unique_ptr<BarScale> make_scale(const ScaleSpec& spec) const {
        auto scale = new_scale(spec);
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
        auto range = std::make_unique<BarRangeGraphic>(*spec.from, *spec.to, spec.color,
                                                       spec.borderColor, spec.lineWidth);
        range->SetHeightFraction(spec.height);
        return range;
    }

    static std::unique_ptr<BarGraphic> make_point(const PointSpec& spec, int barHeight) {
        const int usual = std::max(1, toInt(cPointOfBar * barHeight));
        return std::make_unique<BarPointGraphic>(*spec.at, spec.size.value_or(usual), spec.color,
                                                 spec.symbol, spec.lineWidth);
    }

    /// The section of the scale that a legend names, or of the nearest above it.
    const Section& scale_for(const LegendSpec& legend, std::size_t index) const {
        std::vector<std::string_view> names;
        const Section* above = nullptr;
        for (std::size_t i = 0; i < m_sections.size(); ++i) {
            const auto* scale = as<ScaleSpec>(m_sections[i]);
            if (scale == nullptr) continue;
            if (i < index) above = &m_sections[i];
            if (!scale->name) continue;
            if (legend.scale == scale->name) return m_sections[i];
            names.push_back(scale->name->View());
        }
        if (legend.scale) {
            legend.Fail("scale",
                        "there is no scale of this name" + nameHint(legend.scale->View(), names));
        }
        if (above == nullptr) {
            m_in.Fail(legend.Place(), "there is no scale above this legend: name one by \"scale\"");
        }
        return *above;
    }

    std::unique_ptr<BarSection> make(const ValueLegendSpec& spec, std::size_t index) const {
        const LegendFit fit = fit_of(index);
        auto legend = new_legend<BarValueLegend>(spec, index, fit);
        if (spec.first) legend->SetFirstLabelPos(*spec.first);
        if (spec.last) legend->SetLastLabelPos(*spec.last);
        legend->SetLabelCalcStart(spec.start.value_or(legend->GetFirstLabelPos()));
        legend->SetLabelDelta(fit.step);
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
        const LegendFit fit = fit_of(index);
        auto legend = new_legend<BarSimpleLegend>(spec, index, fit);
        legend->SetUseLine(spec.lines);
        legend->SetLineStyle(spec.lineStyle);
        set_lines(*legend, spec);
        for (std::size_t i = 0; i < spec.texts.size(); ++i) {
            legend->AddText(spec.texts[i].at, fit.labels.Text(i));
        }
        return legend;
    }

    std::unique_ptr<BarSection> make(const RangeLegendSpec& spec, std::size_t index) const {
        const LegendFit fit = fit_of(index);
        auto legend = new_legend<BarRangeLegend>(spec, index, fit);
        legend->SetDirectionUp(spec.isUp);
        set_lines(*legend, spec);
        for (std::size_t i = 0; i < spec.ranges.size(); ++i) {
            legend->AddRange(spec.ranges[i].from, spec.ranges[i].to, fit.labels.Text(i));
        }
        return legend;
    }

    static void set_lines(BarTextLegend& legend, const LegendSpec& spec) {
        if (spec.lineColor) legend.SetLineColor(*spec.lineColor);
        if (spec.lineWidth) legend.SetLineSize(*spec.lineWidth);
    }

    /// A legend with what all kinds have; it lines up with its scale.
    template <class Legend>
    std::unique_ptr<Legend> new_legend(const LegendSpec& spec, std::size_t index,
                                       const LegendFit& fit) const {
        BarScale* const scale = scale_for(spec, index).scale;
        const BarBody body = body_of(*scale);
        const int gap = m_ruler.Gap(spec.look);
        auto legend = std::make_unique<SpacedLegend<Legend>>(
            scale, description(spec.left, spec.look, body.left - shiftFor(fit.left, gap)),
            description(spec.right, spec.look, body.right - shiftFor(fit.right, gap)),
            spec.labels.color, spec.look.color, spec.marginLeft.value_or(scale->GetLeftMargin()),
            spec.marginRight.value_or(scale->GetRightMargin()), spec.marginTop, spec.marginBottom,
            spec.look.size, fit.labels.Look().size, spec.look.face, spec.labels.face);
        if (spec.leftAlign) legend->SetLeftDescAlignment(*spec.leftAlign);
        if (spec.rightAlign) legend->SetRightDescAlignment(*spec.rightAlign);
        legend->SetReach(fit.left, fit.right);
        return legend;
    }

    /// The sentences of the scales, with the names that the description gives to marks.
    CString sentences(const BarGraph& graph) const {
        auto texts = scaleTexts(graph);
        auto text = texts.begin();
        for (const Section& section : m_sections) {
            const auto* scale = as<ScaleSpec>(section);
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
    mutable TextRuler m_ruler;
};

}  // namespace

std::unique_ptr<DescribedGraph> makeBarGraph(GraphReader& in, const CString& name,
                                             const JsonValue& object) {
    return BarBuilder(in, name, object).Make();
}

}  // namespace tessalink::detail
