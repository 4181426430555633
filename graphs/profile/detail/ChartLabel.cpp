#include "graphs/profile/detail/ChartLabel.h"

#include <algorithm>
#include <string_view>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/FormattedText.h"
#include "graphs/common/GraphFont.h"

namespace tessalink {

namespace {

constexpr char cFontSwitch = '\\';

/// Builds the lines of a label from its words.
class LineBuilder {
public:
    LineBuilder(LabelFonts& fonts, int maxWidth) : m_fonts(fonts), m_maxWidth(maxWidth) {}

    void AddWord(std::string_view word) {
        const CString longer = m_isEmpty ? m_line + word : m_line + ' ' + word;
        if (!m_isEmpty && m_fonts.Width(longer) > m_maxWidth) {
            EndLine();
            m_line += word;
        } else {
            m_line = longer;
        }
        m_isEmpty = false;
    }
    void EndLine() {
        const CString before = lastFontSwitch(m_line);
        m_result.width = std::max(m_result.width, m_fonts.Width(m_line));
        m_result.lines.push_back(std::move(m_line));
        m_line = before;
        m_isEmpty = true;
    }
    LabelLines Take() { return std::move(m_result); }

private:
    LabelFonts& m_fonts;
    int m_maxWidth;
    CString m_line;
    bool m_isEmpty = true;
    LabelLines m_result;
};

/// Calls `onPart` for each part of the text between the separators.
template <class OnPart>
void split(std::string_view text, char separator, OnPart onPart) {
    for (;;) {
        const auto end = text.find(separator);
        onPart(text.substr(0, end));
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + 1);
    }
}

}  // namespace

LabelFonts::LabelFonts(CDC& dc, int height, const char* face)
    : m_dc(dc),
      m_height(std::max(1, height)),
      m_selected(dc, (createGraphFont(m_normal, m_height, face, OUT_DEFAULT_PRECIS, DEFAULT_QUALITY,
                                      DEFAULT_PITCH),
                      &m_normal)) {}

void LabelFonts::derive() {
    if (!m_italic.IsNull()) return;
    LOGFONTA description = m_normal.Get();
    description.lfItalic = 1;
    m_italic.CreateFontIndirect(&description);
    description.lfItalic = 0;
    description.lfWeight = FW_BOLD;
    m_bold.CreateFontIndirect(&description);
    m_symbol.CreateFont(m_height, 0, 0, 0, FW_NORMAL, 0, 0, 0, SYMBOL_CHARSET, OUT_DEFAULT_PRECIS,
                        CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, VARIABLE_PITCH, "Symbol");
}

int LabelFonts::Width(const CString& text) {
    if (text.Find(cFontSwitch) < 0) return m_dc.GetTextExtent(text).cx;
    derive();
    return CalcFormattedWidth(&m_dc, text, &m_normal, &m_italic, &m_bold, &m_symbol);
}

void LabelFonts::Print(int x, int y, const CString& text) {
    PrintFormatted(&m_dc, x, y, text, &m_normal, nullptr, nullptr);
}

void LabelFonts::Print(int x, int y, const LabelLines& label) {
    for (const CString& line : label.lines) {
        Print(x, y, line);
        y += m_height;
    }
}

LabelLines wrapLabel(LabelFonts& fonts, const CString& text, int maxWidth) {
    LineBuilder builder(fonts, maxWidth);
    split(text.View(), '\n', [&](std::string_view paragraph) {
        split(paragraph, ' ', [&](std::string_view word) { builder.AddWord(word); });
        builder.EndLine();
    });
    return builder.Take();
}

FittedLabel::FittedLabel(CDC& dc, const CString& text, int height, const char* face, int maxWidth)
    : m_dc(dc), m_face(face), m_fontHeight(std::max(1, height)) {
    constexpr int tries = 4;  // widths are not quite in proportion to heights
    for (int i = 0; i < tries; ++i) {
        LabelFonts fonts(dc, m_fontHeight, face);
        m_lines = wrapLabel(fonts, text, maxWidth);
        if (m_lines.width <= maxWidth || maxWidth <= 0 || m_fontHeight == 1) return;
        const double smaller = static_cast<double>(m_fontHeight) * maxWidth / m_lines.width;
        m_fontHeight = std::clamp(toInt(smaller), 1, m_fontHeight - 1);
    }
}

void FittedLabel::Print(int x, int y, double align) const {
    LabelFonts fonts(m_dc, m_fontHeight, m_face);
    for (const CString& line : m_lines.lines) {
        fonts.Print(x + toDevice((m_lines.width - fonts.Width(line)) * align), y, line);
        y += m_fontHeight;
    }
}

}  // namespace tessalink
