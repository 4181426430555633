#include "graphs/file/detail/SheetSpec.h"

#include <algorithm>
#include <cmath>

#include "graphs/common/ColorMgr.h"
#include "platform/base/NumberText.h"

namespace tessalink::detail {

namespace {

constexpr JsonBounds cInches = {0.1, 200};
constexpr std::size_t cMaxColors = 256;

std::vector<COLORREF> listedColors(const GraphReader& in, const JsonValue& list) {
    std::vector<COLORREF> colors;
    for (const JsonMember& color : in.Members(list, JsonValue::Kind::List, cMaxColors)) {
        in.Expect(color.value, JsonValue::Kind::Text);
        colors.push_back(in.Color(color.value).value_or(cBlack));
    }
    if (colors.empty()) in.Fail(list, "the palette needs at least one color");
    return colors;
}

std::vector<COLORREF> paletteOf(const GraphReader& in, const JsonValue* value) {
    static constexpr JsonWord names[] = {{"default", 0}, {"safe", 1}};
    if (value != nullptr && value->Is(JsonValue::Kind::List)) return listedColors(in, *value);
    if (value != nullptr && in.Words(*value, names).value_or(0) != 0) {
        const auto safe = ColorMgr::ColorSafePalette();
        return {safe.begin(), safe.end()};
    }
    const ColorMgr standard;
    std::vector<COLORREF> colors;
    colors.reserve(static_cast<std::size_t>(standard.GetColorCount()));
    for (int i = 0; i < standard.GetColorCount(); ++i) colors.push_back(standard.GetColor(i));
    return colors;
}

}  // namespace

SheetSpec::SheetSpec(GraphReader& in, const JsonValue& value) : GraphObject(in, value) {
    in.SetPalette(paletteOf(in, Value("palette")));
    Value("type");  // which led here
    width = Number("width", cInches);
    height = Number("height", cInches);
    title = Text("title");
    description = Text("description");
}

GraphSheet SheetSpec::Sheet(double usualWidth, double usualHeight, const CString& name,
                            const CString& sentences) const {
    return {width.value_or(usualWidth), height.value_or(usualHeight), title.value_or(name),
            description.value_or(sentences)};
}

int niceStep(int min, int max) {
    constexpr double mostParts = 10;
    constexpr double ten = 10;
    const double smallest = (static_cast<double>(max) - min) / mostParts;
    const double power = std::pow(ten, std::floor(std::log10(smallest)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= smallest) return std::max(1, toInt(factor * power));
    }
    return std::max(1, toInt(ten * power));
}

}  // namespace tessalink::detail
