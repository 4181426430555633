#pragma once

#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

/// One of the sections that a bar graph stacks from top to bottom. Margins, sizes and heights are
/// in design units, of which the graph is 1,000 wide.
class TESSALINK_API BarSection {
public:
    BarSection(int left, int right, int top, int bottom)
        : m_leftMargin(left), m_rightMargin(right), m_topMargin(top), m_bottomMargin(bottom) {}
    virtual ~BarSection();

    /// How high the section is, margins included.
    virtual int GetDesignHeight() const = 0;
    /// Draws the section into a rectangle of device units; the factors turn design units into
    /// those. The context's colors, alignment, font, pen and brush are as before afterwards.
    virtual void Draw(CDC* dc, double xScale, double yScale, const CRect& rect) = 0;

    int GetLeftMargin() const { return m_leftMargin; }
    void SetLeftMargin(int margin) { m_leftMargin = margin; }
    int GetRightMargin() const { return m_rightMargin; }
    void SetRightMargin(int margin) { m_rightMargin = margin; }
    int GetTopMargin() const { return m_topMargin; }
    void SetTopMargin(int margin) { m_topMargin = margin; }
    int GetBottomMargin() const { return m_bottomMargin; }
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
