#pragma once

#include <QRect>
#include <QRegion>
#include <vector>

#include "platform/graphics/Geometry.h"
#include "platform/graphics/Region.h"

namespace tessalink::detail {

inline QRect toQRect(const RECT& rect) {
    return {QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1)};
}

inline QRegion toQRegion(const Region& region) {
    std::vector<QRect> rects;
    rects.reserve(region.Rects().size());
    for (const RECT& rect : region.Rects()) rects.push_back(toQRect(rect));
    QRegion result;
    result.setRects(rects.data(), static_cast<int>(rects.size()));
    return result;
}

}  // namespace tessalink::detail
