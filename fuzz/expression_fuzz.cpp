// Any text as an expression: the engine agrees with the plain evaluator.
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/detail/require.h"
#include "tests/report/RandomExpressions.h"

namespace {

/// Whether the text stays within one pair of parentheses and makes no other kind of token.
bool isPlainExpression(std::string_view text) {
    constexpr std::string_view others = "+-*/<>=&|~.,_ \t\r\n";
    int depth = 0;
    for (const char ch : text) {
        const bool isWord = (ch >= '0' && ch <= '9') || ((ch | 0x20) >= 'a' && (ch | 0x20) <= 'z');
        if (ch == '(') {
            ++depth;
        } else if (ch == ')') {
            if (--depth < 0) return false;
        } else if (!isWord && others.find(ch) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t maxSize = 2000;
    if (size > maxSize) return 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (!isPlainExpression(text)) return 0;
    tessalink::test::ExpressionComparison comparison(1);
    tessalink::fuzz::require(comparison.CompareOn(text).empty(), "both evaluators agree");
    return 0;
}
