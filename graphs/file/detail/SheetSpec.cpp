#include "graphs/file/detail/SheetSpec.h"

#include <algorithm>
#include <cmath>

#include "platform/base/NumberText.h"

namespace tessalink::detail {

GraphSheet sheetOf(const SheetSpec& spec, double width, double height, const CString& name,
                   const CString& sentences) {
    return {spec.width.value_or(width), spec.height.value_or(height), spec.title.value_or(name),
            spec.description.value_or(sentences)};
}

std::vector<CString> readTexts(const ValueReader& in, const JsonValue& list, std::size_t limit) {
    std::vector<CString> texts;
    for (const JsonMember& text : in.Members(list, JsonValue::Kind::List, limit)) {
        texts.push_back(in.Text(text.value, TextForm::Label).value_or(CString()));
    }
    return texts;
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
