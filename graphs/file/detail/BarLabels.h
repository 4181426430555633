#pragma once

#include <string_view>
#include <vector>

#include "graphs/file/detail/GraphObject.h"
#include "platform/graphics/CDC.h"
#include "platform/graphics/NullDevice.h"

// What fits into bar graphs. All lengths are thousandths of the graph's width.
namespace tessalink::detail {

/// Measures texts, and breaks them into lines.
class TextRuler {
public:
    TextRuler() : m_dc(m_device) {}

    /// The width of the widest line; a little more than that where fonts are switched.
    int Width(const CString& text, const TextLook& look);
    /// The space between a description and its bar.
    int Gap(const TextLook& look);
    /// The text with line feeds in place of blanks where a line is wider than `room`; a word that
    /// is wider stays whole.
    CString Wrapped(const CString& text, const TextLook& look, int room);

private:
    void Use(const TextLook& look);
    int LineWidth(std::string_view line) const;
    CString WrappedLine(std::string_view line, int room) const;

    NullDevice m_device;
    CDC m_dc;
    CFont m_font;
    TextLook m_look = {"", 0, cBlack};  ///< of the font
};

/// A body between two columns.
struct BarBody {
    int left = 0;  ///< the space from the graph's edge
    int width = 0;
    int right = 0;
};

/// The labels of a legend, centered at their places, which count from the left end of its body.
class LegendLabels {
public:
    explicit LegendLabels(TextLook look) : m_look(std::move(look)) {}

    void Add(double place, const CString& text) { m_labels.push_back({place, text}); }

    /// Whether any overlaps its neighbors or leaves the graph.
    bool Collide(const BarBody& body, TextRuler& ruler) const;
    /// Breaks the labels that do into lines, and makes all of them smaller where that isn't enough
    /// and `mayShrink`. What can't be helped stays as it is.
    void Fit(const BarBody& body, bool mayShrink, TextRuler& ruler);
    /// How far labels reach beyond the body's ends.
    int BeyondLeft(TextRuler& ruler) const;
    int BeyondRight(const BarBody& body, TextRuler& ruler) const;

    const TextLook& Look() const { return m_look; }
    const CString& Text(std::size_t index) const { return m_labels[index].text; }

private:
    struct Label {
        double place;
        CString text;
    };
    /// The indexes of the labels that collide, each with the room between its neighbors.
    std::vector<std::pair<std::size_t, int>> Colliding(const BarBody& body, TextRuler& ruler) const;

    std::vector<Label> m_labels;
    TextLook m_look;
};

}  // namespace tessalink::detail
