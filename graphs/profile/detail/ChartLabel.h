#pragma once

#include <memory>
#include <vector>

#include "platform/base/CString.h"
#include "platform/graphics/CDC.h"
#include "platform/graphics/DCScope.h"

namespace tessalink {

inline constexpr char cArial[] = "Arial";

/// The lines of a label, and the width of the widest.
struct LabelLines {
    std::vector<CString> lines;
    int width = 0;
};

/// A font for labels with switches, and what they switch to; selected as long as this lives.
class LabelFonts {
public:
    /// `height` is that of the cell, at least 1 counts.
    LabelFonts(CDC& dc, int height, const char* face);

    int Height() const { return m_height; }
    int Width(const CString& text);
    /// Prints one line with its left top corner at (x, y), in the context's alignment of left top.
    void Print(int x, int y, const CString& text);
    /// Prints lines one below the other.
    void Print(int x, int y, const LabelLines& label);

private:
    void derive();

    CDC& m_dc;
    int m_height;
    CFont m_normal;
    CFont m_italic;
    CFont m_bold;
    CFont m_symbol;
    Selected<CFont> m_selected;
};

/// Cuts the text at line feeds, and at blanks so that lines are no wider than `maxWidth` where
/// words allow it. Switches of fonts hold on through the following lines.
LabelLines wrapLabel(LabelFonts& fonts, const CString& text, int maxWidth);

/// A label of several lines that fits into a width: words that are wider still make its font
/// smaller.
class FittedLabel {
public:
    FittedLabel(CDC& dc, const CString& text, int height, const char* face, int maxWidth);

    int LineCount() const { return static_cast<int>(m_lines.lines.size()); }
    int Width() const { return m_lines.width; }
    int Height() const { return LineCount() * m_fontHeight; }
    CSize Size() const { return {Width(), Height()}; }
    /// Prints the lines from (x, y) down; of what a line is narrower than the widest, the fraction
    /// `align` is left free on its left.
    void Print(int x, int y, double align) const;

private:
    CDC& m_dc;
    const char* m_face;
    int m_fontHeight;
    LabelLines m_lines;
};

}  // namespace tessalink
