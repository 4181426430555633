#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "graphs/file/detail/ValueReader.h"

// Bar graphs as they are described: what an object says, without defaults, and the tables of keys.
// Lengths are thousandths of the graph's width.
namespace tessalink::detail {

struct TextSpec {
    std::optional<CString> text;
    std::optional<double> position;
    std::optional<std::uint16_t> align;
    std::optional<CString> font;
    std::optional<int> textSize;
    std::optional<COLORREF> textColor;
};

/// Either texts or one text of its own.
struct HeadingSpec : TextSpec {
    const JsonValue* texts = nullptr;
    std::optional<int> marginTop;
    std::optional<int> marginBottom;
};

/// Descriptions on both sides of a body.
struct RowSpec {
    std::optional<CString> left;
    std::optional<CString> right;
    std::optional<CString> font;
    std::optional<int> textSize;
    std::optional<COLORREF> textColor;
    std::optional<int> marginLeft;
    std::optional<int> marginRight;
    std::optional<int> marginTop;
    std::optional<int> marginBottom;
    std::optional<int> lineWidth;
    std::optional<COLORREF> lineColor;
};

struct ScaleSpec : RowSpec {
    std::optional<CString> name;
    std::optional<int> min;
    std::optional<int> max;
    std::optional<std::uint16_t> spacing;
    std::optional<int> plotMin;
    std::optional<int> plotMax;
    std::optional<int> leftWidth;
    std::optional<int> rightWidth;
    std::optional<int> majorTick;
    std::optional<int> minorTick;
    std::optional<int> ticksFrom;
    std::optional<int> ticksTo;
    std::optional<int> barHeight;
    std::optional<COLORREF> fill;
    std::optional<COLORREF> majorTickColor;
    std::optional<COLORREF> minorTickColor;
    const JsonValue* points = nullptr;
    const JsonValue* ranges = nullptr;
};

struct PointSpec {
    std::optional<CString> name;
    std::optional<double> at;
    std::optional<std::uint16_t> symbol;
    std::optional<int> size;
    std::optional<COLORREF> color;
    std::optional<int> lineWidth;
};

struct RangeSpec {
    std::optional<CString> name;
    std::optional<double> from;
    std::optional<double> to;
    std::optional<COLORREF> color;
    std::optional<COLORREF> borderColor;
    std::optional<int> lineWidth;
    std::optional<double> height;
};

struct LegendSpec : RowSpec {
    std::optional<CString> scale;
    std::optional<std::uint16_t> leftAlign;
    std::optional<std::uint16_t> rightAlign;
    std::optional<CString> labelFont;
    std::optional<int> labelSize;
    std::optional<COLORREF> labelColor;
    // Of a legend of values.
    std::optional<int> first;
    std::optional<int> last;
    std::optional<int> start;
    std::optional<int> step;
    // Of one of texts.
    const JsonValue* texts = nullptr;
    std::optional<bool> lines;
    std::optional<std::uint16_t> lineStyle;
    // Of one of ranges.
    const JsonValue* ranges = nullptr;
    std::optional<std::uint16_t> direction;
};

/// A text of a legend, at a score or over a range.
struct LabelSpec {
    std::optional<double> at;
    std::optional<double> from;
    std::optional<double> to;
    std::optional<CString> text;
};

struct BarSpec {
    std::optional<CString> type;
    std::optional<double> width;
    std::optional<double> height;
    std::optional<bool> frame;
    std::optional<std::uint16_t> align;
    std::optional<CString> title;
    std::optional<CString> description;
    std::optional<CString> font;
    std::optional<int> textSize;
    std::optional<COLORREF> textColor;
    std::optional<int> leftWidth;
    std::optional<int> rightWidth;
    std::optional<int> marginLeft;
    std::optional<int> marginRight;
    const JsonValue* palette = nullptr;
    const JsonValue* sections = nullptr;
};

/// "normal" of a scale.
inline constexpr std::uint16_t cNormalSpacing = 1;
/// "up" of a legend of ranges.
inline constexpr std::uint16_t cDirectionUp = 1;

HeadingSpec readHeading(const ValueReader& in, const JsonValue& value);
TextSpec readText(const ValueReader& in, const JsonValue& value);
ScaleSpec readScale(const ValueReader& in, const JsonValue& value);
/// A number stands for a point at it.
PointSpec readPoint(const ValueReader& in, const JsonValue& value);
RangeSpec readRange(const ValueReader& in, const JsonValue& value);
LegendSpec readLegend(const ValueReader& in, const JsonValue& value);
LabelSpec readTextLabel(const ValueReader& in, const JsonValue& value);
LabelSpec readRangeLabel(const ValueReader& in, const JsonValue& value);
BarSpec readBar(const ValueReader& in, const JsonValue& value);
int readSpace(const ValueReader& in, const JsonValue& value);
std::vector<COLORREF> readPalette(const ValueReader& in, const JsonValue& object);

/// A range whose ends are in the wrong order is a fault.
void checkOrder(const ValueReader& in, const JsonValue& object, std::string_view lowKey,
                std::string_view highKey, bool mayBeEqual);

}  // namespace tessalink::detail
