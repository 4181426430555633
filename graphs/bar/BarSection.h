#pragma once

#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

/// One of the sections that a bar graph stacks from top to bottom. Margins, sizes and heights are
/// in design units, of which the graph is 1,000 wide.
class TESSALINK_API BarSection {
public:
    /// A section with these margins, in design units.
    BarSection(int left, int right, int top, int bottom)
        : m_leftMargin(left), m_rightMargin(right), m_topMargin(top), m_bottomMargin(bottom) {}
    virtual ~BarSection();

    /// How high the section is, margins included.
    virtual int GetDesignHeight() const = 0;
    /// Draws the section into a rectangle of device units; the factors turn design units into
    /// those. The context's colors, alignment, font, pen and brush are as before afterwards.
    virtual void Draw(CDC* dc, double xScale, double yScale, const CRect& rect) = 0;

    /// What is left free at the left side, in design units.
    int GetLeftMargin() const { return m_leftMargin; }
    /// Changes what is left free at the left side, in design units.
    void SetLeftMargin(int margin) { m_leftMargin = margin; }
    /// What is left free at the right side, in design units.
    int GetRightMargin() const { return m_rightMargin; }
    /// Changes what is left free at the right side, in design units.
    void SetRightMargin(int margin) { m_rightMargin = margin; }
    /// What is left free at the top, in design units.
    int GetTopMargin() const { return m_topMargin; }
    /// Changes what is left free at the top, in design units.
    void SetTopMargin(int margin) { m_topMargin = margin; }
    /// What is left free at the bottom, in design units.
    int GetBottomMargin() const { return m_bottomMargin; }
    /// Changes what is left free at the bottom, in design units.
    void SetBottomMargin(int margin) { m_bottomMargin = margin; }

protected:
    BarSection(const BarSection&) = default;
    BarSection& operator=(const BarSection&) = default;

private:
    int m_leftMargin;
    int m_rightMargin;
    int m_topMargin;
    int m_bottomMargin;
};
