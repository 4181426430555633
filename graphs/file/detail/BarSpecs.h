#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarHeading.h"
#include "graphs/bar/BarPointGraphic.h"
#include "graphs/bar/BarRangeGraphic.h"
#include "graphs/bar/BarTextLegend.h"
#include "graphs/file/detail/SheetSpec.h"

// Bar graphs as they are described: a structure for each kind of object, a member for each key. A
// member is optional where what is usual depends on other ones. Lengths are thousandths of the
// graph's width.
namespace tessalink::detail {

inline constexpr std::size_t cMaxSections = 1000;
inline constexpr std::size_t cMaxMarks = 100000;  // of a list

inline constexpr JsonBounds cFirstStep = {1, 1e9};
inline constexpr JsonBounds cLength = {0, 1000};
inline constexpr JsonBounds cSize = {1, 1000};
inline constexpr JsonBounds cPosition = {-1000, 2000};
inline constexpr JsonBounds cLineWidth = {0, 100};
inline constexpr JsonBounds cBorderWidth = {-1, 100};
inline constexpr JsonBounds cFraction = {0, 1};

inline constexpr int cUsualSide = 20;  // left and right margin
inline constexpr int cUsualGap = 4;    // top and bottom margin
inline constexpr COLORREF cUsualRangeColor = RGB(173, 216, 230);

// Across and down, of graphs, texts and descriptions alike.
inline constexpr int cAcross = 0;
inline constexpr int cDown = 1;
inline constexpr JsonWord cAlignWords[] = {{"left", 0, cAcross},
                                           {"center", BarGraph::cCenter, cAcross},
                                           {"right", BarGraph::cRight, cAcross},
                                           {"top", 0, cDown},
                                           {"middle", BarGraph::cMiddle, cDown},
                                           {"bottom", BarGraph::cBottom, cDown}};
inline constexpr JsonWord cPointSymbols[] = {{"circle", BarPointGraphic::Circle},
                                             {"square", BarPointGraphic::Square},
                                             {"triangle", BarPointGraphic::Triangle},
                                             {"diamond", BarPointGraphic::Diamond},
                                             {"hollow-circle", BarPointGraphic::HollowCircle},
                                             {"hollow-square", BarPointGraphic::HollowSquare},
                                             {"hollow-triangle", BarPointGraphic::HollowTriangle},
                                             {"hollow-diamond", BarPointGraphic::HollowDiamond}};
inline constexpr JsonWord cLineStyles[] = {
    {"solid", PS_SOLID}, {"dash", PS_DASH}, {"dot", PS_DOT}, {"dash-dot", PS_DASHDOT}};
inline constexpr JsonWord cSpacings[] = {{"even", false}, {"normal", true}};
inline constexpr JsonWord cDirections[] = {{"down", false}, {"up", true}};
inline constexpr LookKeys cLabelKeys = {"labelFont", "labelSize", "labelColor"};

struct BarSpec : SheetSpec {
    using SheetSpec::SheetSpec;

    bool frame = Flag("frame").value_or(true);
    std::uint16_t align = Words("align", cAlignWords).value_or(0);
    TextLook look = Look({});
    std::optional<int> leftWidth = Whole("leftWidth", cLength);
    std::optional<int> rightWidth = Whole("rightWidth", cLength);
    int marginLeft = Whole("marginLeft", cLength).value_or(cUsualSide);
    int marginRight = Whole("marginRight", cLength).value_or(cUsualSide);
    const JsonValue* sections = Value(required("sections"));
};

/// A section, of which one key is there.
struct SectionSpec : GraphObject {
    SectionSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {}

    const JsonValue* heading = Value("heading");
    const JsonValue* scale = Value("scale");
    const JsonValue* legend = Value("legend");
    const JsonValue* space = Value("space");
};

/// An object within a graph, whose texts look as those of the graph unless it says otherwise.
struct BarObject : GraphObject {
    BarObject(const GraphReader& in, const JsonValue& value, const BarSpec& whole)
        : GraphObject(in, value), graph(&whole) {}
    BarObject(const GraphReader& in, const JsonValue& value, const BarSpec& whole,
              const JsonShorthand& shorthand)
        : GraphObject(in, value, shorthand), graph(&whole) {}

    const BarSpec* graph;
};

/// A text of a heading.
struct TextSpec : BarObject {
    using BarObject::BarObject;

    CString text = Label(required("text")).value_or(CString());
    std::optional<double> position = Number("position", cPosition);
    std::uint16_t align = Words("align", cAlignWords).value_or(BarHeading::cCenter);
    TextLook look = Look(graph->look);
};

/// A heading that is one text, or of many.
struct TextHeadingSpec : TextSpec {
    using TextSpec::TextSpec;

    int marginTop = Whole("marginTop", cLength).value_or(cUsualGap);
    int marginBottom = Whole("marginBottom", cLength).value_or(cUsualGap);
};
struct HeadingSpec : BarObject {
    using BarObject::BarObject;

    std::vector<TextSpec> texts = Objects<TextSpec>("texts", cMaxMarks, *graph);
    int marginTop = Whole("marginTop", cLength).value_or(cUsualGap);
    int marginBottom = Whole("marginBottom", cLength).value_or(cUsualGap);
};

/// A score alone stands for a point at it.
struct PointSpec : GraphObject {
    PointSpec(const GraphReader& in, const JsonValue& value)
        : GraphObject(in, value, {"at", "a score"}) {}

    CString name = Text("name").value_or(CString());
    std::optional<double> at = Score(required("at"), cScores);
    BarPointGraphic::Symbol symbol =
        Words<BarPointGraphic::Symbol>("symbol", cPointSymbols).value_or(BarPointGraphic::Diamond);
    std::optional<int> size = Whole("size", cSize);
    COLORREF color = Color("color").value_or(BarPointGraphic::cDefaultColor);
    int lineWidth = Whole("lineWidth", cLineWidth).value_or(BarPointGraphic::cDefaultLineSize);
};

struct RangeSpec : GraphObject {
    RangeSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {
        if (from && to) CheckOrder("from", "to", true);
    }

    CString name = Text("name").value_or(CString());
    std::optional<double> from = Score(required("from"), cScores);
    std::optional<double> to = Score(required("to"), cScores);
    COLORREF color = Color("color").value_or(cUsualRangeColor);
    COLORREF borderColor = Color("borderColor").value_or(color);
    int lineWidth = Whole("lineWidth", cBorderWidth).value_or(0);
    double height = Number("height", cFraction).value_or(BarRangeGraphic::cDefaultHeightFraction);
};

/// A scale or a legend: descriptions on both sides of a body.
struct RowSpec : BarObject {
    using BarObject::BarObject;

    CString left = Label("left").value_or(CString());
    CString right = Label("right").value_or(CString());
    TextLook look = Look(graph->look);
    std::optional<int> marginLeft = Whole("marginLeft", cLength);
    std::optional<int> marginRight = Whole("marginRight", cLength);
    int marginTop = Whole("marginTop", cLength).value_or(cUsualGap);
    int marginBottom = Whole("marginBottom", cLength).value_or(cUsualGap);
    std::optional<COLORREF> lineColor = Color("lineColor");
    std::optional<int> lineWidth = Whole("lineWidth", cLineWidth);
};

struct ScaleSpec : RowSpec {
    ScaleSpec(const GraphReader& in, const JsonValue& value, const BarSpec& whole)
        : RowSpec(in, value, whole) {
        CheckOrder("min", "max", false);
        CheckOrder("plotMin", "plotMax", false);
        // Marks without a score are not drawn.
        std::erase_if(points, [](const PointSpec& point) { return !point.at; });
        std::erase_if(ranges, [](const RangeSpec& range) { return !range.from || !range.to; });
        if (!isNormal) return;
        CheckRank("min", min);
        CheckRank("max", max);
    }

    /// The normal curve has a place for ranks between these alone.
    void CheckRank(std::string_view key, const std::optional<int>& rank) const {
        constexpr int lowest = 1;
        constexpr int highest = 99;
        if (!rank || (*rank >= lowest && *rank <= highest)) return;
        Fail(key, "must be between 1 and 99 with normal spacing");
    }

    std::optional<CString> name = Literal("name");
    std::optional<int> min = Whole(required("min"), cScores);
    std::optional<int> max = Whole(required("max"), cScores);
    bool isNormal = Words<bool>("spacing", cSpacings).value_or(false);
    std::optional<int> plotMin = Whole("plotMin", cScores);
    std::optional<int> plotMax = Whole("plotMax", cScores);
    std::optional<int> leftWidth = Whole("leftWidth", cLength);
    std::optional<int> rightWidth = Whole("rightWidth", cLength);
    std::optional<int> majorTick = Whole("majorTick", cSteps);
    int minorTick = Whole("minorTick", cSteps).value_or(0);
    std::optional<int> ticksFrom = Whole("ticksFrom", cScores);
    std::optional<int> ticksTo = Whole("ticksTo", cScores);
    int barHeight = Whole("barHeight", cSize).value_or(0);
    COLORREF fill = Color("fill").value_or(cWhite);
    std::optional<COLORREF> majorTickColor = Color("majorTickColor");
    std::optional<COLORREF> minorTickColor = Color("minorTickColor");
    std::vector<PointSpec> points = Objects<PointSpec>("points", cMaxMarks);
    std::vector<RangeSpec> ranges = Objects<RangeSpec>("ranges", cMaxMarks);
};

/// What all legends have.
struct LegendSpec : RowSpec {
    using RowSpec::RowSpec;

    std::optional<CString> scale = Literal("scale");
    std::optional<std::uint16_t> leftAlign = Words("leftAlign", cAlignWords);
    std::optional<std::uint16_t> rightAlign = Words("rightAlign", cAlignWords);
    TextLook labels = Look(graph->look, cLabelKeys);
    bool hasLabelSize = Has("labelSize");
};

struct ValueLegendSpec : LegendSpec {
    using LegendSpec::LegendSpec;

    std::optional<int> first = Whole("first", cScores);
    std::optional<int> last = Whole("last", cScores);
    std::optional<int> start = Whole("start", cScores);
    std::optional<int> step = Whole("step", cFirstStep);
};

/// A text of a legend at a score.
struct LabelSpec : GraphObject {
    LabelSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {}

    double at = Number(required("at"), cScores).value_or(0);
    CString text = Label(required("text")).value_or(CString());
};

struct TextLegendSpec : LegendSpec {
    using LegendSpec::LegendSpec;

    std::vector<LabelSpec> texts = Objects<LabelSpec>("texts", cMaxMarks);
    bool lines = Flag("lines").value_or(false);
    std::uint16_t lineStyle = Words("lineStyle", cLineStyles).value_or(PS_SOLID);
};

/// A text of a legend below a range.
struct RangeLabelSpec : GraphObject {
    RangeLabelSpec(const GraphReader& in, const JsonValue& value) : GraphObject(in, value) {
        CheckOrder("from", "to", true);
    }

    double from = Number(required("from"), cScores).value_or(0);
    double to = Number(required("to"), cScores).value_or(0);
    CString text = Label(required("text")).value_or(CString());
};

struct RangeLegendSpec : LegendSpec {
    using LegendSpec::LegendSpec;

    std::vector<RangeLabelSpec> ranges = Objects<RangeLabelSpec>("ranges", cMaxMarks);
    bool isUp = Words<bool>("direction", cDirections).value_or(true);
};

}  // namespace tessalink::detail
