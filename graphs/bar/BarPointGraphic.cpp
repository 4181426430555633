#include "graphs/bar/BarPointGraphic.h"

#include <algorithm>
#include <cmath>

#include "graphs/bar/BarScale.h"
#include "graphs/common/DeviceUnits.h"
#include "graphs/common/MarkShape.h"
#include "platform/graphics/DCScope.h"

using tessalink::halved;
using tessalink::Selected;
using tessalink::toDevice;

void BarPointGraphic::Draw(CDC* dc, double xScale, double yScale, const CRect& box) {
    const BarScale* const scale = GetContainer();
    if (dc == nullptr || scale == nullptr || std::isnan(m_value)) return;
    // The sizes round up: one is added here, and a half when they become device units.
    const int size = std::min(m_size, scale->GetBarHeight());
    const int rx = halved(toDevice(size * xScale + 1));
    const int ry = halved(toDevice(size * yScale + 1));
    const double value =
        std::min<double>(std::max<double>(m_value, scale->GetMinPlotVal()), scale->GetMaxPlotVal());
    draw_symbol(dc, scale->PixX(value, box), box.top + halved(box.Height()), xScale, rx, ry);
}

void BarPointGraphic::draw_symbol(CDC* dc, int x, int y, double xScale, int rx, int ry) {
    const int width = toDevice(m_lineSize * xScale);
    CBrush fill(m_color);
    CPen pen(PS_SOLID, m_lineSize == 0 || width == 0 ? 1 : width, m_color);
    const Selected brush(*dc, &fill);
    const Selected outline(*dc, &pen);
    tessalink::drawNumberedMark(*dc, x, y, rx, ry, m_symbol);
}
