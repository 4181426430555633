#include "graphs/common/PlainLabel.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "platform/base/CodePage.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/SymbolText.h"

namespace tessalink {

namespace {

constexpr char cSwitch = '\\';
constexpr std::string_view cFontLetters = "nibs";
constexpr int cDecimals = 2;

/// What the letters of the symbol face are called.
constexpr std::array<std::string_view, 26> cGreek = {
    "alpha", "beta",  "chi",     "delta", "epsilon", "phi",     "gamma", "eta",   "iota",
    "phi",   "kappa", "lambda",  "mu",    "nu",      "omicron", "pi",    "theta", "rho",
    "sigma", "tau",   "upsilon", "omega", "omega",   "xi",      "psi",   "zeta"};

/// Signs that code pages lack.
struct Sign {
    char32_t character;
    std::string_view text;
};
constexpr Sign cSigns[] = {{U'\x2212', "-"},  {U'\x2264', "<="}, {U'\x2265', ">="},
                           {U'\x2260', "<>"}, {U'\x2248', "~"},  {U'\x223C', "~"}};

void appendLetter(CString& plain, char letter, char first) {
    CString name = cGreek[static_cast<std::size_t>(letter - first)];
    if (first == 'A') name.SetAt(0, static_cast<char>(name[0] - 'a' + 'A'));
    plain += name;
}

/// A sign of the symbol face in words or in the code page; one that has neither is left out.
void appendSymbol(CString& plain, char code) {
    for (const char first : {'a', 'A'}) {
        if (code >= first && code < first + static_cast<int>(cGreek.size())) {
            return appendLetter(plain, code, first);
        }
    }
    const char32_t character = symbolToUnicode(code);
    const auto* const sign =
        std::find_if(std::begin(cSigns), std::end(cSigns),
                     [&](const Sign& each) { return each.character == character; });
    if (sign != std::end(cSigns)) {
        plain += sign->text;
    } else if (const auto byte = fromUnicode(character)) {
        plain += *byte;
    }
}

}  // namespace

CString plainLabel(const CString& label) {
    CString plain;
    bool isSymbol = false;
    for (std::string_view rest = label.View(); !rest.empty(); rest.remove_prefix(1)) {
        if (rest.front() == cSwitch && rest.size() > 1) {
            rest.remove_prefix(1);
            const char letter = rest.front();
            if (letter == cSwitch) plain += cSwitch;
            if (cFontLetters.find(letter) != std::string_view::npos) isSymbol = letter == 's';
        } else if (rest.front() == '\n' || rest.front() == '\r') {
            plain += ' ';
        } else if (isSymbol) {
            appendSymbol(plain, rest.front());
        } else {
            plain += rest.front();
        }
    }
    return plain.Trim();
}

CString plainNumber(double value) {
    CString text = formatDouble(value, 0, cDecimals);
    if (text.Find('.') >= 0) text.TrimRight('0').TrimRight('.');
    return text == "-0" ? CString("0") : text;
}

}  // namespace tessalink
