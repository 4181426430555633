#include "graphs/bar/BarScale2.h"

#include "platform/graphics/DCScope.h"

BarScale2::~BarScale2() = default;

void BarScale2::draw_bar(CDC* dc, double xScale, const CRect& box) {
    CBrush fill(m_boxFillColor);
    const tessalink::Selected selected(*dc, &fill);
    BarScale::draw_bar(dc, xScale, box);
}
