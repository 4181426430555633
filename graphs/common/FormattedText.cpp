#include "graphs/common/FormattedText.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "platform/graphics/DCScope.h"

namespace {

constexpr char cEscape = '\\';
constexpr std::string_view cFontLetters = "nibs";
constexpr UINT cLabelFormat = DT_NOCLIP | DT_NOPREFIX;

/// The fonts of the switches.
struct SwitchFonts {
    CFont* normal = nullptr;
    CFont* italic = nullptr;
    CFont* bold = nullptr;
    CFont* symbol = nullptr;

    /// The font of a switch; null for another letter, too.
    CFont* Find(char letter) const {
        switch (letter) {
            case 'n':
                return normal;
            case 'i':
                return italic;
            case 'b':
                return bold;
            case 's':
                return symbol;
            default:
                return nullptr;
        }
    }
};

/// Cuts a label into runs, calls `onRun` for each that is not empty and `onSwitch` for each letter.
/// Of two backslashes the second starts the next run when `printsEscape`, else both are dropped.
template <class OnRun, class OnSwitch>
void walk(std::string_view text, bool printsEscape, OnRun onRun, OnSwitch onSwitch) {
    std::size_t start = 0;
    std::size_t search = 0;
    for (;;) {
        const auto escape = text.find(cEscape, search);
        const std::string_view run = text.substr(start, escape - start);
        if (!run.empty()) onRun(run);
        if (escape == std::string_view::npos || escape + 1 >= text.size()) return;
        const bool doubled = text[escape + 1] == cEscape;
        if (!doubled) onSwitch(text[escape + 1]);
        start = escape + (doubled && printsEscape ? 1 : 2);
        search = escape + 2;
    }
}

/// Whether the label is one run in one line, as most are.
bool isPlain(std::string_view text) {
    return std::none_of(text.begin(), text.end(),
                        [](char ch) { return ch == cEscape || ch == '\n'; });
}

int widthOf(const CDC& dc, std::string_view run) {
    return dc.GetTextExtent(run.data(), static_cast<int>(run.size())).cx;
}

void printLine(CDC& dc, int x, int y, std::string_view line) {
    dc.TextOut(x, y, line.data(), static_cast<int>(line.size()));
}

void drawRun(CDC& dc, int x, int y, std::string_view run) {
    if (run.find('\n') == std::string_view::npos) {
        printLine(dc, x, y, run);
        return;
    }
    const CSize size = dc.GetTextExtent(run.data(), static_cast<int>(run.size()));
    CRect rect(CPoint(x, y), size);
    dc.DrawText(run.data(), static_cast<int>(run.size()), &rect, cLabelFormat);
}

bool contains(const CString& text, const char* part) {
    return text.Find(part) >= 0;
}

/// Creates in `font` the description after `change`, unless there is a font already or no need.
template <class Change>
CFont* derived(CFont* given, bool needed, CFont& font, LOGFONTA description, Change change) {
    if (given != nullptr || !needed) return given;
    change(description);
    font.CreateFontIndirect(&description);
    return &font;
}

void makeSymbol(LOGFONTA& font) {
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = SYMBOL_CHARSET;
    font.lfPitchAndFamily = VARIABLE_PITCH;
    std::memset(font.lfFaceName, 0, sizeof(font.lfFaceName));
    std::strcpy(font.lfFaceName, "Symbol");
}

int printRuns(CDC& dc, int x, int y, const CString& text, const SwitchFonts& fonts) {
    const tessalink::RestoredState restored(dc);
    const UINT align = dc.GetTextAlign();
    if ((align & TA_CENTER) != 0) {
        dc.SetTextAlign(align & ~TA_CENTER);
        const int width =
            CalcFormattedWidth(&dc, text, fonts.normal, fonts.italic, fonts.bold, fonts.symbol);
        x -= (align & TA_CENTER) == TA_CENTER ? width / 2 : width;
    }
    int cursor = x;
    walk(
        text.View(), true,
        [&](std::string_view run) {
            drawRun(dc, cursor, y, run);
            cursor += widthOf(dc, run);
        },
        [&](char letter) { dc.SelectObject(fonts.Find(letter)); });
    return cursor - x;
}

}  // namespace

int PrintFormatted(CDC* dc, int x, int y, const CString& text, CFont* normal, CFont* italic,
                   CFont* bold) {
    if (dc == nullptr || text.IsEmpty()) return 0;
    if (isPlain(text.View())) {
        printLine(*dc, x, y, text.View());
        return 0;
    }
    if (text.View().find(cEscape) == std::string_view::npos) {
        drawRun(*dc, x, y, text.View());
        return 0;
    }
    SwitchFonts fonts;
    fonts.normal = normal != nullptr ? normal : dc->GetCurrentFont();
    const LOGFONTA& description = fonts.normal->Get();
    CFont italicFont;
    CFont boldFont;
    CFont symbolFont;
    fonts.italic = derived(italic, contains(text, "\\i"), italicFont, description,
                           [](LOGFONTA& font) { font.lfItalic = 1; });
    fonts.bold = derived(bold, contains(text, "\\b"), boldFont, description,
                         [](LOGFONTA& font) { font.lfWeight = FW_BOLD; });
    fonts.symbol = derived(nullptr, contains(text, "\\s"), symbolFont, description, makeSymbol);
    return printRuns(*dc, x, y, text, fonts);
}

int CalcFormattedWidth(CDC* dc, const CString& text, CFont* normal, CFont* italic, CFont* bold,
                       CFont* symbol) {
    if (dc == nullptr) return 0;
    const tessalink::RestoredState restored(*dc);
    const SwitchFonts fonts = {normal, italic, bold, symbol};
    int width = 0;
    walk(
        text.View(), false, [&](std::string_view run) { width += widthOf(*dc, run); },
        [&](char letter) { dc->SelectObject(fonts.Find(letter)); });
    return width;
}

int CalcFormattedWidth(CDC* dc, const CString& text, CFont* normal, CFont* italic, CFont* bold) {
    return CalcFormattedWidth(dc, text, normal, italic, bold, nullptr);
}

CString tessalink::lastFontSwitch(const CString& label) {
    CString last;
    walk(
        label.View(), true, [](std::string_view) {},
        [&](char letter) {
            if (cFontLetters.find(letter) != std::string_view::npos) {
                last = CString(cEscape) + letter;
            }
        });
    return last;
}
