#include "graphs/file/detail/BarSpecs.h"

#include <algorithm>
#include <utility>

#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarPointGraphic.h"
#include "graphs/bar/BarSection.h"
#include "graphs/common/ColorMgr.h"
#include "platform/graphics/GdiObjects.h"

namespace tessalink::detail {

namespace {

constexpr Bounds cInches = {0.1, 200};
constexpr Bounds cScore = {-1e9, 1e9};
constexpr Bounds cStep = {0, 1e9};
constexpr Bounds cFirstStep = {1, 1e9};
constexpr Bounds cLength = {0, 1000};
constexpr Bounds cSize = {1, 1000};
constexpr Bounds cPosition = {-1000, 2000};
constexpr Bounds cLineWidth = {0, 100};
constexpr Bounds cBorderWidth = {-1, 100};
constexpr Bounds cFraction = {0, 1};

// Across and down, of graphs, texts and descriptions alike.
constexpr int cAcross = 0;
constexpr int cDown = 1;
constexpr Word cAlignWords[] = {{"left", 0, cAcross},
                                {"center", BarGraph::cCenter, cAcross},
                                {"right", BarGraph::cRight, cAcross},
                                {"top", 0, cDown},
                                {"middle", BarGraph::cMiddle, cDown},
                                {"bottom", BarGraph::cBottom, cDown}};
constexpr Word cSymbols[] = {{"circle", BarPointGraphic::Circle},
                             {"square", BarPointGraphic::Square},
                             {"triangle", BarPointGraphic::Triangle},
                             {"diamond", BarPointGraphic::Diamond},
                             {"hollow-circle", BarPointGraphic::HollowCircle},
                             {"hollow-square", BarPointGraphic::HollowSquare},
                             {"hollow-triangle", BarPointGraphic::HollowTriangle},
                             {"hollow-diamond", BarPointGraphic::HollowDiamond}};
constexpr Word cLineStyles[] = {
    {"solid", PS_SOLID}, {"dash", PS_DASH}, {"dot", PS_DOT}, {"dash-dot", PS_DASHDOT}};
constexpr Word cSpacings[] = {{"even", 0}, {"normal", cNormalSpacing}};
constexpr Word cDirections[] = {{"up", cDirectionUp}, {"down", 0}};

template <class T>
using Fields = std::vector<Field<T>>;

/// Keys that several objects share, where they have the same meaning.
template <class T>
Fields<T> fontFields() {
    return {{.key = "font", .member = &T::font, .form = TextForm::Plain},
            {.key = "textSize", .member = &T::textSize, .bounds = cSize},
            {.key = "textColor", .member = &T::textColor}};
}

template <class T>
Fields<T> verticalMargins() {
    return {{.key = "marginTop", .member = &T::marginTop, .bounds = cLength},
            {.key = "marginBottom", .member = &T::marginBottom, .bounds = cLength}};
}

template <class T>
Fields<T> horizontalMargins() {
    return {{.key = "marginLeft", .member = &T::marginLeft, .bounds = cLength},
            {.key = "marginRight", .member = &T::marginRight, .bounds = cLength}};
}

template <class T>
Fields<T> joined(std::initializer_list<Fields<T>> tables) {
    Fields<T> all;
    for (const Fields<T>& table : tables) all.insert(all.end(), table.begin(), table.end());
    return all;
}

template <class T>
Fields<T> textFields() {
    return joined<T>({{{.key = "text", .member = &T::text, .isRequired = true},
                       {.key = "position", .member = &T::position, .bounds = cPosition},
                       {.key = "align", .member = &T::align, .words = cAlignWords}},
                      fontFields<T>()});
}

template <class T>
Fields<T> rowFields() {
    return joined<T>({{{.key = "left", .member = &T::left}, {.key = "right", .member = &T::right}},
                      fontFields<T>(),
                      horizontalMargins<T>(),
                      verticalMargins<T>(),
                      {{.key = "lineColor", .member = &T::lineColor},
                       {.key = "lineWidth", .member = &T::lineWidth, .bounds = cLineWidth}}});
}

const Fields<TextSpec>& textTable() {
    static const auto table = textFields<TextSpec>();
    return table;
}

const Fields<HeadingSpec>& headingTable() {
    static const auto table =
        joined<HeadingSpec>({textFields<HeadingSpec>(), verticalMargins<HeadingSpec>()});
    return table;
}

const Fields<HeadingSpec>& textsTable() {
    static const auto table = joined<HeadingSpec>(
        {{{.key = "texts", .member = &HeadingSpec::texts}}, verticalMargins<HeadingSpec>()});
    return table;
}

const Fields<ScaleSpec>& scaleTable() {
    using S = ScaleSpec;
    static const auto table =
        joined<S>({{{.key = "name", .member = &S::name, .form = TextForm::Literal},
                    {.key = "min", .member = &S::min, .bounds = cScore, .isRequired = true},
                    {.key = "max", .member = &S::max, .bounds = cScore, .isRequired = true},
                    {.key = "spacing", .member = &S::spacing, .words = cSpacings},
                    {.key = "plotMin", .member = &S::plotMin, .bounds = cScore},
                    {.key = "plotMax", .member = &S::plotMax, .bounds = cScore},
                    {.key = "leftWidth", .member = &S::leftWidth, .bounds = cLength},
                    {.key = "rightWidth", .member = &S::rightWidth, .bounds = cLength},
                    {.key = "majorTick", .member = &S::majorTick, .bounds = cStep},
                    {.key = "minorTick", .member = &S::minorTick, .bounds = cStep},
                    {.key = "ticksFrom", .member = &S::ticksFrom, .bounds = cScore},
                    {.key = "ticksTo", .member = &S::ticksTo, .bounds = cScore},
                    {.key = "barHeight", .member = &S::barHeight, .bounds = cSize},
                    {.key = "fill", .member = &S::fill},
                    {.key = "majorTickColor", .member = &S::majorTickColor},
                    {.key = "minorTickColor", .member = &S::minorTickColor},
                    {.key = "points", .member = &S::points},
                    {.key = "ranges", .member = &S::ranges}},
                   rowFields<S>()});
    return table;
}

const Fields<PointSpec>& pointTable() {
    using P = PointSpec;
    static const Fields<P> table = {
        {.key = "name", .member = &P::name, .form = TextForm::Plain},
        {.key = "at", .member = &P::at, .bounds = cScore, .isRequired = true},
        {.key = "symbol", .member = &P::symbol, .words = cSymbols},
        {.key = "size", .member = &P::size, .bounds = cSize},
        {.key = "color", .member = &P::color},
        {.key = "lineWidth", .member = &P::lineWidth, .bounds = cLineWidth}};
    return table;
}

const Fields<RangeSpec>& rangeTable() {
    using R = RangeSpec;
    static const Fields<R> table = {
        {.key = "name", .member = &R::name, .form = TextForm::Plain},
        {.key = "from", .member = &R::from, .bounds = cScore, .isRequired = true},
        {.key = "to", .member = &R::to, .bounds = cScore, .isRequired = true},
        {.key = "color", .member = &R::color},
        {.key = "borderColor", .member = &R::borderColor},
        {.key = "lineWidth", .member = &R::lineWidth, .bounds = cBorderWidth},
        {.key = "height", .member = &R::height, .bounds = cFraction}};
    return table;
}

const Fields<LegendSpec>& legendTable() {
    using L = LegendSpec;
    static const auto table =
        joined<L>({{{.key = "scale", .member = &L::scale, .form = TextForm::Literal},
                    {.key = "leftAlign", .member = &L::leftAlign, .words = cAlignWords},
                    {.key = "rightAlign", .member = &L::rightAlign, .words = cAlignWords},
                    {.key = "labelFont", .member = &L::labelFont, .form = TextForm::Plain},
                    {.key = "labelSize", .member = &L::labelSize, .bounds = cSize},
                    {.key = "labelColor", .member = &L::labelColor}},
                   rowFields<L>()});
    return table;
}

const Fields<LegendSpec>& valueLegendTable() {
    using L = LegendSpec;
    static const auto table =
        joined<L>({{{.key = "first", .member = &L::first, .bounds = cScore},
                    {.key = "last", .member = &L::last, .bounds = cScore},
                    {.key = "start", .member = &L::start, .bounds = cScore},
                    {.key = "step", .member = &L::step, .bounds = cFirstStep}},
                   legendTable()});
    return table;
}

const Fields<LegendSpec>& textLegendTable() {
    using L = LegendSpec;
    static const auto table =
        joined<L>({{{.key = "texts", .member = &L::texts},
                    {.key = "lines", .member = &L::lines},
                    {.key = "lineStyle", .member = &L::lineStyle, .words = cLineStyles}},
                   legendTable()});
    return table;
}

const Fields<LegendSpec>& rangeLegendTable() {
    using L = LegendSpec;
    static const auto table =
        joined<L>({{{.key = "ranges", .member = &L::ranges},
                    {.key = "direction", .member = &L::direction, .words = cDirections}},
                   legendTable()});
    return table;
}

const Fields<BarSpec>& barTable() {
    using B = BarSpec;
    static const auto table =
        joined<B>({{{.key = "type", .member = &B::type, .form = TextForm::Literal},
                    {.key = "width", .member = &B::width, .bounds = cInches},
                    {.key = "height", .member = &B::height, .bounds = cInches},
                    {.key = "frame", .member = &B::frame},
                    {.key = "align", .member = &B::align, .words = cAlignWords},
                    {.key = "title", .member = &B::title, .form = TextForm::Plain},
                    {.key = "description", .member = &B::description, .form = TextForm::Plain},
                    {.key = "leftWidth", .member = &B::leftWidth, .bounds = cLength},
                    {.key = "rightWidth", .member = &B::rightWidth, .bounds = cLength},
                    {.key = "palette", .member = &B::palette},
                    {.key = "sections", .member = &B::sections, .isRequired = true}},
                   fontFields<B>(),
                   horizontalMargins<B>()});
    return table;
}

const Fields<LabelSpec>& textLabelTable() {
    using L = LabelSpec;
    static const Fields<L> table = {
        {.key = "at", .member = &L::at, .bounds = cScore, .isRequired = true},
        {.key = "text", .member = &L::text, .isRequired = true}};
    return table;
}

const Fields<LabelSpec>& rangeLabelTable() {
    using L = LabelSpec;
    static const Fields<L> table = {
        {.key = "from", .member = &L::from, .bounds = cScore, .isRequired = true},
        {.key = "to", .member = &L::to, .bounds = cScore, .isRequired = true},
        {.key = "text", .member = &L::text, .isRequired = true}};
    return table;
}

template <class T>
T read(const ValueReader& in, const JsonValue& value, const Fields<T>& table) {
    return readFields<T>(in, value, table);
}

/// The normal curve has a place for ranks between these alone.
void checkRanks(const ValueReader& in, const JsonValue& value, const ScaleSpec& spec) {
    constexpr int lowest = 1;
    constexpr int highest = 99;
    for (const auto& [key, rank] : {std::pair("min", spec.min), std::pair("max", spec.max)}) {
        if (!rank || (*rank >= lowest && *rank <= highest)) continue;
        in.Source().Fail(*value.Find(key), "with normal spacing this must be between 1 and 99");
    }
}

}  // namespace

HeadingSpec readHeading(const ValueReader& in, const JsonValue& value) {
    if (value.Is(JsonValue::Kind::Text)) {
        HeadingSpec heading;
        heading.text = in.Text(value, TextForm::Label);
        return heading;
    }
    in.ExpectObjectOr("a text", value);
    return read(in, value, value.Find("texts") ? textsTable() : headingTable());
}

TextSpec readText(const ValueReader& in, const JsonValue& value) {
    return read(in, value, textTable());
}

ScaleSpec readScale(const ValueReader& in, const JsonValue& value) {
    ScaleSpec spec = read(in, value, scaleTable());
    checkOrder(in, value, "min", "max", false);
    checkOrder(in, value, "plotMin", "plotMax", false);
    if (spec.spacing == cNormalSpacing) checkRanks(in, value, spec);
    return spec;
}

PointSpec readPoint(const ValueReader& in, const JsonValue& value) {
    if (value.Is(JsonValue::Kind::Number) || value.Is(JsonValue::Kind::Text)) {
        PointSpec point;
        point.at = in.Number(value, cScore);
        return point;
    }
    in.ExpectObjectOr("a score", value);
    return read(in, value, pointTable());
}

RangeSpec readRange(const ValueReader& in, const JsonValue& value) {
    RangeSpec spec = read(in, value, rangeTable());
    checkOrder(in, value, "from", "to", true);
    return spec;
}

LegendSpec readLegend(const ValueReader& in, const JsonValue& value) {
    return read(in, value,
                value.Find("texts")    ? textLegendTable()
                : value.Find("ranges") ? rangeLegendTable()
                                       : valueLegendTable());
}

LabelSpec readTextLabel(const ValueReader& in, const JsonValue& value) {
    return read(in, value, textLabelTable());
}

LabelSpec readRangeLabel(const ValueReader& in, const JsonValue& value) {
    LabelSpec spec = read(in, value, rangeLabelTable());
    checkOrder(in, value, "from", "to", true);
    return spec;
}

BarSpec readBar(const ValueReader& in, const JsonValue& value) {
    return read(in, value, barTable());
}

int readSpace(const ValueReader& in, const JsonValue& value) {
    return in.Whole(value, cLength).value_or(0);
}

std::vector<COLORREF> readPalette(const ValueReader& in, const JsonValue& object) {
    static constexpr Word names[] = {{"default", 0}, {"safe", 1}};
    constexpr std::size_t longest = 256;
    const JsonValue* const value = object.Find("palette");
    if (value && value->Is(JsonValue::Kind::List)) {
        std::vector<COLORREF> colors;
        for (const JsonMember& color : in.Members(*value, JsonValue::Kind::List, longest)) {
            in.Expect(color.value, JsonValue::Kind::Text);
            colors.push_back(in.Color(color.value).value_or(cBlack));
        }
        if (colors.empty()) in.Source().Fail(*value, "a palette has a color");
        return colors;
    }
    const bool isSafe = value && in.Words(*value, names).value_or(0) != 0;
    const auto safe = ColorMgr::ColorSafePalette();
    if (isSafe) return {safe.begin(), safe.end()};
    const ColorMgr standard;
    std::vector<COLORREF> colors(static_cast<std::size_t>(standard.GetColorCount()));
    std::generate(colors.begin(), colors.end(),
                  [&, i = 0]() mutable { return standard.GetColor(i++); });
    return colors;
}

void checkOrder(const ValueReader& in, const JsonValue& object, std::string_view lowKey,
                std::string_view highKey, bool mayBeEqual) {
    const JsonValue* const low = object.Find(lowKey);
    const JsonValue* const high = object.Find(highKey);
    if (!low || !high) return;
    const auto lowest = in.Number(*low, cScore);
    const auto highest = in.Number(*high, cScore);
    if (!lowest || !highest || *lowest < *highest || (mayBeEqual && *lowest == *highest)) return;
    in.Source().Fail(*high,
                     "this must be above " + quoted(lowKey) + (mayBeEqual ? ", or the same" : ""));
}

}  // namespace tessalink::detail
