#include "graphs/bar/BarRangeGraphic.h"

#include <algorithm>
#include <cmath>

#include "graphs/bar/BarScale.h"
#include "graphs/common/DeviceUnits.h"
#include "platform/graphics/DCScope.h"

using tessalink::halved;
using tessalink::Selected;
using tessalink::toDevice;

void BarRangeGraphic::Draw(CDC* dc, double xScale, double yScale, const CRect& box) {
    const BarScale* const scale = GetContainer();
    if (dc == nullptr || scale == nullptr || std::isnan(m_from) || std::isnan(m_to)) return;
    const double lowest = scale->GetScaleMin();
    const double highest = scale->GetScaleMax();
    const double from = std::min(std::max(m_from, lowest), highest);
    const double to = std::max(std::min(m_to, highest), lowest);
    if (from == to) return;
    const int height = toDevice(scale->GetBarHeight() * m_heightFraction * yScale);
    const int inset = halved(box.Height() - height);
    CRect bar(scale->PixXUnrestricted(from, box), box.top, scale->PixXUnrestricted(to, box),
              box.bottom);
    bar.DeflateRect(0, inset);
    draw_bar(dc, xScale, bar);
}

void BarRangeGraphic::draw_bar(CDC* dc, double xScale, const CRect& rect) {
    CBrush fill(m_fillColor);
    CPen border(PS_SOLID, m_lineSize == 0 ? 1 : std::max(toDevice(m_lineSize * xScale), 1),
                m_borderColor);
    auto* const none = static_cast<CPen*>(CGdiObject::FromStock(NULL_PEN));
    const Selected brush(*dc, &fill);
    const Selected pen(*dc, m_lineSize < 0 ? none : &border);
    dc->Rectangle(&rect);
}
