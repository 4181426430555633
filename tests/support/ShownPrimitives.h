#pragma once

#include <string>
#include <vector>

#include "platform/graphics/RecordingDevice.h"

namespace tessalink::test {

inline Primitive fillOf(const Primitive& primitive, const RECT& rect, const LOGBRUSH& brush) {
    Primitive fill = primitive;
    fill.kind = Primitive::Kind::FillRectangle;
    fill.points.clear();
    fill.rect = rect;
    fill.brush = brush;
    return fill;
}

/// What the primitives show, with regions and backgrounds of texts as the rectangles that they are.
inline std::vector<std::string> shown(const std::vector<Primitive>& primitives) {
    std::vector<std::string> lines;
    for (const Primitive& primitive : primitives) {
        if (primitive.kind <= Primitive::Kind::Ellipse ||
            primitive.kind == Primitive::Kind::Pixel) {
            lines.push_back(toText(primitive));
        } else if (primitive.kind == Primitive::Kind::Text) {
            Primitive text = primitive;
            text.textBackground.reset();
            CRect ground = primitive.textBackground.value_or(RECT());
            if (primitive.textClip) {
                const CRect whole = ground;
                ground.IntersectRect(&whole, &*primitive.textClip);
            }
            const LOGBRUSH brush = {BS_SOLID, primitive.textBackgroundColor, 0};
            if (!ground.IsRectEmpty()) lines.push_back(toText(fillOf(primitive, ground, brush)));
            lines.push_back(toText(text));
        } else if (primitive.brush.lbStyle != BS_NULL) {
            const RECT one[] = {primitive.rect};
            const auto rects = primitive.kind == Primitive::Kind::FillRectangle
                                   ? std::span<const RECT>(one)
                                   : primitive.region.Rects();
            for (const RECT& rect : rects) {
                lines.push_back(toText(fillOf(primitive, rect, primitive.brush)));
            }
        }
    }
    return lines;
}

}  // namespace tessalink::test
