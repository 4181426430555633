#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "graphs/bar/BarSection.h"

/// A bar graph: sections from top to bottom, which it owns, drawn into any rectangle of a screen, a
/// printer or a metafile. It is 1,000 design units wide and as high as its sections; one unit has
/// the same physical length on both axes.
class TESSALINK_API BarGraph {
public:
    static constexpr int cDesignWidth = 1000;  ///< the width of every graph in design units

    /// Where the graph lies in a rectangle that has another shape; together they mean the right and
    /// the bottom. Without any: left and top.
    static constexpr std::uint16_t cCenter = 1;
    static constexpr std::uint16_t cRight = 2;   ///< at the right end of a wider rectangle
    static constexpr std::uint16_t cMiddle = 4;  ///< halfway down a higher rectangle
    static constexpr std::uint16_t cBottom = 8;  ///< at the bottom of a higher rectangle

    /// A graph without sections. `alignment` is one of the above, or a horizontal and a vertical
    /// one together.
    explicit BarGraph(int drawBoundingRect = 1, std::uint16_t alignment = 0)
        : m_drawBoundingRect(drawBoundingRect), m_alignment(alignment) {}
    virtual ~BarGraph();
    BarGraph(const BarGraph&) = delete;
    BarGraph& operator=(const BarGraph&) = delete;

    /// Whether a frame is drawn around the graph.
    virtual void SetDrawBoundingRect(int draw) { m_drawBoundingRect = draw; }
    /// Takes the section over and returns its index; null is no section, and -1. Its height counts
    /// as it is now: a section that changes its height afterwards does not change that of the
    /// graph.
    virtual int AddSection(BarSection* section);
    /// Deletes the section and takes its height, as it is now, off that of the graph. An index out
    /// of range raises CInvalidArgException, here and below.
    virtual void RemoveSectionAt(int index);
    /// Deletes all sections, in their order.
    virtual void Clear();
    /// Draws the graph as large as the rectangle allows. The context's colors, alignment, font,
    /// pen and brush are as before afterwards. A graph without height draws nothing.
    virtual void Draw(CDC* dc, const CRect& rect);

    /// The section at an index; it stays the graph's.
    BarSection* GetSection(int index) const;
    /// How many sections there are.
    int GetSectionCount() const { return static_cast<int>(m_sections.size()); }
    /// The height of all sections, in design units.
    int GetDesignHeight() const { return m_designHeight; }

protected:
    /// For a background and a frame of one's own; nothing here. `rect` is where the graph lies.
    virtual void on_before_draw(CDC* dc, CRect& rect);
    /// For what is to lie over the sections; nothing here.
    virtual void on_end_draw(CDC* dc, CRect& rect);
    /// Draws the sections from top to bottom.
    virtual void draw_sections(CDC* dc, const CRect& rect);
    /// Computes the scales, and the place of the graph in the rectangle.
    virtual void recalc_layout(CDC* dc, CRect& rect);

    /// Device units of one design unit, to the right.
    double x_scale() const { return m_xScale; }
    /// Device units of one design unit, downward.
    double y_scale() const { return m_yScale; }

private:
    std::size_t checked(int index) const;
    int device_height(int index) const;

    int m_designHeight = 0;
    double m_xScale = 1;
    double m_yScale = 1;
    int m_drawBoundingRect;
    std::uint16_t m_alignment;
    std::vector<std::unique_ptr<BarSection>> m_sections;
};
