#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarGraphText.h"
#include "graphs/bar/BarHeading.h"
#include "graphs/bar/BarPointGraphic.h"
#include "graphs/bar/BarRangeGraphic.h"
#include "graphs/bar/BarRangeLegend.h"
#include "graphs/bar/BarScale2.h"
#include "graphs/bar/BarSimpleLegend.h"
#include "graphs/bar/BarValueLegend.h"
#include "graphs/common/FormattedText.h"
#include "graphs/common/GraphFont.h"
#include "graphs/file/PercentileScale.h"
#include "graphs/file/detail/BarSpecs.h"
#include "graphs/file/detail/GraphTypes.h"
#include "graphs/file/detail/SheetSpec.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"
#include "platform/graphics/NullDevice.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cMaxSections = 1000;
constexpr std::size_t cMaxMarks = 100000;  // of a list
constexpr double cMaxTicks = 1000;         // of a kind, and labels of a legend

// What stands where a description says nothing; docs/graph-files.md repeats it.
constexpr double cDefaultWidth = 6;  // inches
constexpr int cDefaultTextSize = 24;
constexpr int cDefaultSide = 20;  // left and right margin
constexpr int cDefaultGap = 4;    // top and bottom margin
constexpr const char* cDefaultFont = "Arial";
constexpr COLORREF cDefaultRangeColor = RGB(173, 216, 230);
constexpr double cPointOfBar = 0.6;        // the size of a point, of the bar's height
constexpr int cMaxColumn = 400;            // of a column whose width is found
constexpr double cHighest = 200;           // inches, of a graph whose height is found
constexpr double cFrameRoom = 0.03;        // inches, for the frame and what is rounded up
constexpr int cDefaultScale[] = {0, 100};  // for scales that wait for variables

/// A section as it was read.
struct SectionSpec {
    const JsonValue* value = nullptr;  ///< what stands under its kind
    std::variant<HeadingSpec, ScaleSpec, LegendSpec, int> spec;
    BarScale* scale = nullptr;  ///< of a scale
};

/// The multiple of the step next to a score, upward or downward.
int roundedTo(int score, int step, double (*round)(double)) {
    return step > 0 ? toInt(round(static_cast<double>(score) / step) * step) : score;
}

/// Measures texts in design units.
class Ruler {
public:
    Ruler() : m_dc(m_device) {}

    /// How wide a column must be for the text and the space between it and the bar.
    int ColumnFor(const CString& text, const CString& font, int size) {
        constexpr BYTE pitch = 4;
        CFont normal;
        createGraphFont(normal, size, font, OUT_DEFAULT_PRECIS, DEFAULT_QUALITY, pitch);
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
    BarBuilder(ValueReader& in, const CString& name, const JsonValue& object)
        : m_in(in), m_name(name) {
        in.SetPalette(readPalette(in, object));
        m_bar = readBar(in, object);
        read_sections();
    }

    std::unique_ptr<DescribedGraph> Make() {
        m_left = m_bar.leftWidth.value_or(column(&RowSpec::left, &ScaleSpec::leftWidth));
        m_right = m_bar.rightWidth.value_or(column(&RowSpec::right, &ScaleSpec::rightWidth));
        auto graph =
            std::make_unique<BarGraph>(m_bar.frame.value_or(true), m_bar.align.value_or(0));
        std::vector<std::unique_ptr<BarSection>> sections(m_sections.size());
        // A legend may stand before its scale.
        for (std::size_t i = 0; i < m_sections.size(); ++i) {
            if (std::holds_alternative<ScaleSpec>(m_sections[i].spec)) {
                sections[i] = make_scale(m_sections[i]);
            }
        }
        double height = 0;
        for (std::size_t i = 0; i < m_sections.size(); ++i) {
            if (!sections[i]) sections[i] = make_section(i);
            height += sections[i]->GetDesignHeight();
            check_height(height, *m_sections[i].value);
            graph->AddSection(sections[i].release());
        }
        GraphSheet sheet = sheet_of(*graph);
        return std::make_unique<DrawnGraph<BarGraph>>(std::move(sheet), std::move(graph));
    }

private:
    void read_sections() {
        static constexpr std::string_view kinds[] = {"heading", "scale", "legend", "space"};
        for (const JsonMember& member :
             m_in.Members(*m_bar.sections, JsonValue::Kind::List, cMaxSections)) {
            m_in.CheckKeys(member.value, kinds);
            if (member.value.members.size() != 1) {
                m_in.Source().Fail(member.value,
                                   "a section is one of heading, scale, legend and space");
            }
            m_sections.push_back(read_section(member.value.members.front()));
            const auto* scale = std::get_if<ScaleSpec>(&m_sections.back().spec);
            if (scale && scale->name) check_name(*scale->name, *m_sections.back().value);
        }
        if (m_sections.empty()) m_in.Source().Fail(*m_bar.sections, "a graph has a section");
    }

    SectionSpec read_section(const JsonMember& section) const {
        const JsonValue& value = section.value;
        if (section.key == "heading") return {&value, readHeading(m_in, value)};
        if (section.key == "scale") return {&value, readScale(m_in, value)};
        if (section.key == "legend") return {&value, readLegend(m_in, value)};
        return {&value, readSpace(m_in, value)};
    }

    /// The scale that was read last has the name; no other may have it.
    void check_name(const CString& name, const JsonValue& scale) const {
        const auto same = [&](const SectionSpec& section) {
            const auto* other = std::get_if<ScaleSpec>(&section.spec);
            return other && other->name == name;
        };
        if (std::count_if(m_sections.begin(), m_sections.end(), same) > 1) {
            m_in.Source().Fail(*scale.Find("name"), "another scale has this name");
        }
    }

    // What a section says, or else the graph.
    CString font(const std::optional<CString>& own) const {
        return own.value_or(m_bar.font.value_or(cDefaultFont));
    }
    int text_size(const std::optional<int>& own) const {
        return own.value_or(m_bar.textSize.value_or(cDefaultTextSize));
    }
    COLORREF text_color(const std::optional<COLORREF>& own) const {
        return own.value_or(m_bar.textColor.value_or(cBlack));
    }

    /// The width that all descriptions of one side need, so that the bars line up.
    int column(std::optional<CString> RowSpec::*text, std::optional<int> ScaleSpec::*width) const {
        Ruler ruler;
        int widest = 0;
        for (const SectionSpec& section : m_sections) {
            const auto* scale = std::get_if<ScaleSpec>(&section.spec);
            const auto* legend = std::get_if<LegendSpec>(&section.spec);
            if (!legend && (!scale || scale->*width)) continue;
            const RowSpec& row = scale ? static_cast<const RowSpec&>(*scale) : *legend;
            const CString words = (row.*text).value_or(CString());
            if (words.IsEmpty()) continue;
            // Labels at the ends of a legend reach into the column.
            const int label = legend ? text_size(legend->labelSize) : 0;
            widest = std::max(
                widest, ruler.ColumnFor(words, font(row.font), text_size(row.textSize)) + label);
        }
        return widest;
    }

    void check_height(double height, const JsonValue& section) const {
        const double inches = height / BarGraph::cDesignWidth * m_bar.width.value_or(cDefaultWidth);
        if (inches > cHighest) {
            m_in.Source().Fail(section, "with this section the graph is higher than 200 inches");
        }
    }

    std::unique_ptr<BarSection> make_section(std::size_t index) const {
        const SectionSpec& section = m_sections[index];
        if (const auto* heading = std::get_if<HeadingSpec>(&section.spec)) {
            return make_heading(*heading);
        }
        if (const auto* legend = std::get_if<LegendSpec>(&section.spec)) {
            return make_legend(*legend, *section.value, scale_for(*legend, index));
        }
        return std::make_unique<BarHeading>(0, 0, std::get<int>(section.spec), 0);
    }

    std::unique_ptr<BarSection> make_heading(const HeadingSpec& spec) const {
        auto heading = std::make_unique<BarHeading>(0, 0, spec.marginTop.value_or(cDefaultGap),
                                                    spec.marginBottom.value_or(cDefaultGap));
        if (!spec.texts) {
            add_text(*heading, spec);
        } else {
            for (const JsonMember& text :
                 m_in.Members(*spec.texts, JsonValue::Kind::List, cMaxMarks)) {
                add_text(*heading, readText(m_in, text.value));
            }
        }
        return heading;
    }

    void add_text(BarHeading& heading, const TextSpec& text) const {
        const std::uint16_t align = text.align.value_or(BarHeading::cCenter);
        heading.AddText(text.text.value_or(CString()), text.position.value_or(anchor(align)), align,
                        text_size(text.textSize), text_color(text.textColor), font(text.font));
    }

    /// Where a text goes that only says how it is aligned.
    double anchor(std::uint16_t align) const {
        constexpr int middle = BarGraph::cDesignWidth / 2;
        if (align & BarHeading::cRight) return BarGraph::cDesignWidth - margin_right({});
        return align & BarHeading::cCenter ? middle : margin_left({});
    }
    int margin_left(const std::optional<int>& own) const {
        return own.value_or(m_bar.marginLeft.value_or(cDefaultSide));
    }
    int margin_right(const std::optional<int>& own) const {
        return own.value_or(m_bar.marginRight.value_or(cDefaultSide));
    }

    template <class Scale>
    std::unique_ptr<BarScale2> new_scale(const ScaleSpec& spec) const {
        const auto [min, max] = ends(spec);
        const int major = spec.majorTick.value_or(niceStep(min, max));
        const int from = spec.ticksFrom.value_or(roundedTo(min, major, std::ceil));
        const int to = spec.ticksTo.value_or(roundedTo(max, major, std::floor));
        return std::make_unique<Scale>(
            min, max, spec.left.value_or(CString()), spec.right.value_or(CString()),
            spec.leftWidth.value_or(m_left), spec.rightWidth.value_or(m_right), major,
            spec.minorTick.value_or(0), from, to, margin_left(spec.marginLeft),
            margin_right(spec.marginRight), spec.marginTop.value_or(cDefaultGap),
            spec.marginBottom.value_or(cDefaultGap), text_size(spec.textSize),
            spec.barHeight.value_or(0), spec.plotMin.value_or(min), spec.plotMax.value_or(max));
    }

    std::unique_ptr<BarSection> make_scale(SectionSpec& section) const {
        const ScaleSpec& spec = std::get<ScaleSpec>(section.spec);
        const JsonValue& value = *section.value;
        const auto make = spec.spacing == cNormalSpacing ? &BarBuilder::new_scale<PercentileScale>
                                                         : &BarBuilder::new_scale<BarScale2>;
        auto scale = (this->*make)(spec);
        check_ticks(*scale, value);
        check_room(*scale, value);
        const COLORREF lines = spec.lineColor.value_or(cBlack);
        scale->SetTypeface(font(spec.font));
        scale->SetLineSize(spec.lineWidth.value_or(BarScale::cDefaultLineSize));
        scale->SetBoxColor(lines);
        scale->SetMajTickColor(spec.majorTickColor.value_or(lines));
        scale->SetMinTickColor(spec.minorTickColor.value_or(lines));
        scale->SetDescColor(text_color(spec.textColor));
        scale->SetBoxFillColor(spec.fill.value_or(cWhite));
        add_marks(*scale, spec);
        section.scale = scale.get();
        return scale;
    }

    /// The ends of a scale; while variables are missing, some.
    static std::pair<int, int> ends(const ScaleSpec& spec) {
        if (spec.spacing == cNormalSpacing) return {spec.min.value_or(1), spec.max.value_or(99)};
        const int width = cDefaultScale[1] - cDefaultScale[0];
        const int min = spec.min.value_or(spec.max ? *spec.max - width : cDefaultScale[0]);
        return {min, spec.max.value_or(min + width)};
    }

    void check_ticks(const BarScale& scale, const JsonValue& value) const {
        const double length = static_cast<double>(scale.GetTickEnd()) - scale.GetTickStart();
        for (const auto& [key, step] : {std::pair("majorTick", scale.GetMajTick()),
                                        std::pair("minorTick", scale.GetMinTick())}) {
            if (step == 0 || length / step < cMaxTicks) continue;
            const JsonValue* const own = value.Find(key);
            m_in.Source().Fail(own ? *own : value, "more than 1000 ticks: take larger steps");
        }
    }

    void check_room(const BarScale& scale, const JsonValue& value) const {
        const int sides = scale.GetLeftMargin() + scale.GetLeftTextWidth() +
                          scale.GetRightMargin() + scale.GetRightTextWidth();
        if (sides < BarGraph::cDesignWidth) return;
        m_in.Source().Fail(value, "margins and text widths take " + std::to_string(sides) +
                                      " of 1000: there is no room for the bar");
    }

    /// Ranges first: points lie over them.
    void add_marks(BarScale& scale, const ScaleSpec& spec) const {
        if (spec.ranges) {
            for (const JsonMember& range :
                 m_in.Members(*spec.ranges, JsonValue::Kind::List, cMaxMarks)) {
                scale.AddGraphic(make_range(readRange(m_in, range.value)).release());
            }
        }
        if (spec.points) {
            for (const JsonMember& point :
                 m_in.Members(*spec.points, JsonValue::Kind::List, cMaxMarks)) {
                scale.AddGraphic(make_point(readPoint(m_in, point.value), scale).release());
            }
        }
    }

    static std::unique_ptr<BarGraphic> make_range(const RangeSpec& spec) {
        const COLORREF color = spec.color.value_or(cDefaultRangeColor);
        auto range = std::make_unique<BarRangeGraphic>(spec.from.value_or(0), spec.to.value_or(0),
                                                       color, spec.borderColor.value_or(color),
                                                       spec.lineWidth.value_or(0));
        range->SetHeightFraction(spec.height.value_or(BarRangeGraphic::cDefaultHeightFraction));
        return range;
    }

    static std::unique_ptr<BarGraphic> make_point(const PointSpec& spec, const BarScale& scale) {
        const int size = std::max(1, toInt(cPointOfBar * scale.GetBarHeight()));
        return std::make_unique<BarPointGraphic>(
            spec.at.value_or(0), spec.size.value_or(size),
            spec.color.value_or(BarPointGraphic::cDefaultColor),
            static_cast<BarPointGraphic::Symbol>(spec.symbol.value_or(BarPointGraphic::Diamond)),
            spec.lineWidth.value_or(BarPointGraphic::cDefaultLineSize));
    }

    /// The scale that a legend names, or the nearest above it.
    BarScale* scale_for(const LegendSpec& spec, std::size_t index) const {
        std::vector<std::string_view> names;
        BarScale* above = nullptr;
        for (std::size_t i = 0; i < m_sections.size(); ++i) {
            const auto* scale = std::get_if<ScaleSpec>(&m_sections[i].spec);
            if (!scale) continue;
            if (i < index) above = m_sections[i].scale;
            if (!scale->name) continue;
            if (spec.scale == scale->name) return m_sections[i].scale;
            names.push_back(scale->name->View());
        }
        const JsonValue& value = *m_sections[index].value;
        if (spec.scale) {
            m_in.Source().Fail(*value.Find("scale"),
                               "no scale has this name" + hintAt(spec.scale->View(), names));
        }
        if (!above) {
            m_in.Source().Fail(value, "no scale stands above this legend: say which by \"scale\"");
        }
        return above;
    }

    std::unique_ptr<BarSection> make_legend(const LegendSpec& spec, const JsonValue& value,
                                            BarScale* scale) const {
        if (spec.texts) return make_text_legend(spec, scale);
        if (spec.ranges) return make_range_legend(spec, scale);
        auto legend = make<BarValueLegend>(spec, scale);
        legend->SetFirstLabelPos(spec.first.value_or(scale->GetTickStart()));
        legend->SetLastLabelPos(spec.last.value_or(scale->GetTickEnd()));
        legend->SetLabelCalcStart(spec.start.value_or(legend->GetFirstLabelPos()));
        if (spec.step) legend->SetLabelDelta(*spec.step);
        check_labels(*legend, value);
        return legend;
    }

    void check_labels(const BarValueLegend& legend, const JsonValue& value) const {
        if (!m_in.HasVariables()) return;
        const double from = std::min(legend.GetFirstLabelPos(), legend.GetLabelCalcStart());
        const int step = legend.GetLabelDelta();
        if (step <= 0 || (legend.GetLastLabelPos() - from) / step < cMaxTicks) return;
        m_in.Source().Fail(value, "more than 1000 labels: take larger steps");
    }

    std::unique_ptr<BarSection> make_text_legend(const LegendSpec& spec, BarScale* scale) const {
        auto legend = make<BarSimpleLegend>(spec, scale);
        legend->SetUseLine(spec.lines.value_or(false));
        legend->SetLineStyle(spec.lineStyle.value_or(PS_SOLID));
        set_lines(*legend, spec);
        for (const JsonMember& text : m_in.Members(*spec.texts, JsonValue::Kind::List, cMaxMarks)) {
            const LabelSpec label = readTextLabel(m_in, text.value);
            legend->AddText(label.at.value_or(0), label.text.value_or(CString()));
        }
        return legend;
    }

    std::unique_ptr<BarSection> make_range_legend(const LegendSpec& spec, BarScale* scale) const {
        auto legend = make<BarRangeLegend>(spec, scale);
        legend->SetDirectionUp(spec.direction.value_or(cDirectionUp));
        set_lines(*legend, spec);
        for (const JsonMember& range :
             m_in.Members(*spec.ranges, JsonValue::Kind::List, cMaxMarks)) {
            const LabelSpec label = readRangeLabel(m_in, range.value);
            legend->AddRange(label.from.value_or(0), label.to.value_or(0),
                             label.text.value_or(CString()));
        }
        return legend;
    }

    template <class Legend>
    static void set_lines(Legend& legend, const LegendSpec& spec) {
        if (spec.lineColor) legend.SetLineColor(*spec.lineColor);
        if (spec.lineWidth) legend.SetLineSize(*spec.lineWidth);
    }

    /// A legend with what all kinds have; it lines up with its scale.
    template <class Legend>
    std::unique_ptr<Legend> make(const LegendSpec& spec, BarScale* scale) const {
        auto legend = std::make_unique<Legend>(
            scale, spec.left.value_or(CString()), spec.right.value_or(CString()),
            text_color(spec.labelColor), text_color(spec.textColor),
            spec.marginLeft.value_or(scale->GetLeftMargin()),
            spec.marginRight.value_or(scale->GetRightMargin()),
            spec.marginTop.value_or(cDefaultGap), spec.marginBottom.value_or(cDefaultGap),
            text_size(spec.textSize), text_size(spec.labelSize), font(spec.font),
            font(spec.labelFont));
        if (spec.leftAlign) legend->SetLeftDescAlignment(*spec.leftAlign);
        if (spec.rightAlign) legend->SetRightDescAlignment(*spec.rightAlign);
        return legend;
    }

    GraphSheet sheet_of(const BarGraph& graph) const {
        GraphSheet sheet;
        sheet.width = m_bar.width.value_or(cDefaultWidth);
        sheet.height = m_bar.height.value_or(
            sheet.width * graph.GetDesignHeight() / BarGraph::cDesignWidth + cFrameRoom);
        sheet.title = m_bar.title.value_or(m_name);
        sheet.description = m_bar.description ? *m_bar.description : sentences(graph);
        return sheet;
    }

    /// The sentences of the scales, with the names that the description gives to marks.
    CString sentences(const BarGraph& graph) const {
        auto texts = scaleTexts(graph);
        auto text = texts.begin();
        for (const SectionSpec& section : m_sections) {
            if (const auto* scale = std::get_if<ScaleSpec>(&section.spec)) {
                name_marks(*text, *scale);
                ++text;
            }
        }
        return sentencesOf(texts);
    }

    void name_marks(ScaleText& text, const ScaleSpec& scale) const {
        for (std::size_t i = 0; i < text.points.size(); ++i) {
            text.points[i].name =
                readPoint(m_in, scale.points->members[i].value).name.value_or(CString());
        }
        for (std::size_t i = 0; i < text.ranges.size(); ++i) {
            text.ranges[i].name =
                readRange(m_in, scale.ranges->members[i].value).name.value_or(CString());
        }
    }

    ValueReader& m_in;
    const CString& m_name;
    BarSpec m_bar;
    std::vector<SectionSpec> m_sections;
    int m_left = 0;
    int m_right = 0;
};

}  // namespace

std::unique_ptr<DescribedGraph> makeBarGraph(ValueReader& in, const CString& name,
                                             const JsonValue& object) {
    return BarBuilder(in, name, object).Make();
}

}  // namespace tessalink::detail
