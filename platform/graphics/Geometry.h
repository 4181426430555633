#pragma once

#include <algorithm>
#include <cstdint>

#include "platform/base/Export.h"
#include "platform/base/NumberText.h"
#include "platform/base/Types.h"
#include "platform/graphics/GraphicsNames.h"

/// Points, sizes and rectangles in whole units of a device, with x to the right and y downward. A
/// rectangle includes its left and top edge and excludes the others. Sums and differences wrap at
/// 32 bits.

constexpr bool operator==(const POINT& a, const POINT& b) {
    return a.x == b.x && a.y == b.y;
}
constexpr bool operator==(const SIZE& a, const SIZE& b) {
    return a.cx == b.cx && a.cy == b.cy;
}
constexpr bool operator==(const RECT& a, const RECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

/// A width and a height.
struct CSize : SIZE {
    constexpr CSize() {
        cx = 0;
        cy = 0;
    }
    /// A size of this width and height.
    constexpr CSize(int width, int height) {
        cx = width;
        cy = height;
    }
    /// The same size.
    constexpr CSize(const SIZE& size) : SIZE(size) {}
};

/// A point.
struct CPoint : POINT {
    constexpr CPoint() {
        x = 0;
        y = 0;
    }
    /// The point at these coordinates.
    constexpr CPoint(int px, int py) {
        x = px;
        y = py;
    }
    /// The same point.
    constexpr CPoint(const POINT& point) : POINT(point) {}

    /// Moves the point.
    constexpr void Offset(int dx, int dy) {
        x = tessalink::wrapAdd(x, dx);
        y = tessalink::wrapAdd(y, dy);
    }
    /// The point moved by a size.
    constexpr CPoint operator+(const SIZE& size) const {
        return {tessalink::wrapAdd(x, size.cx), tessalink::wrapAdd(y, size.cy)};
    }
    /// The point moved back by a size.
    constexpr CPoint operator-(const SIZE& size) const {
        return {tessalink::wrapSub(x, size.cx), tessalink::wrapSub(y, size.cy)};
    }
    /// How far this point is from another.
    constexpr CSize operator-(const POINT& point) const {
        return {tessalink::wrapSub(x, point.x), tessalink::wrapSub(y, point.y)};
    }
};

/// A rectangle.
struct CRect : RECT {
    constexpr CRect() : CRect(0, 0, 0, 0) {}
    /// A rectangle with these edges.
    constexpr CRect(int l, int t, int r, int b) {
        left = l;
        top = t;
        right = r;
        bottom = b;
    }
    /// The same rectangle.
    constexpr CRect(const RECT& rect) : RECT(rect) {}
    /// The rectangle of this size at a left top corner.
    constexpr CRect(const POINT& topLeft, const SIZE& size)
        : CRect(topLeft.x, topLeft.y, tessalink::wrapAdd(topLeft.x, size.cx),
                tessalink::wrapAdd(topLeft.y, size.cy)) {}
    /// The rectangle between two corners.
    constexpr CRect(const POINT& topLeft, const POINT& bottomRight)
        : CRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y) {}

    /// Right edge less left edge; negative when they are the wrong way round.
    constexpr int Width() const { return tessalink::wrapSub(right, left); }
    /// Bottom edge less top edge; negative when they are the wrong way round.
    constexpr int Height() const { return tessalink::wrapSub(bottom, top); }
    /// Width and height.
    constexpr CSize Size() const { return {Width(), Height()}; }
    /// The left top corner.
    constexpr CPoint TopLeft() const { return {left, top}; }
    /// The corner of the right and the bottom edge, which does not belong to the rectangle.
    constexpr CPoint BottomRight() const { return {right, bottom}; }
    /// The point halfway between the corners.
    constexpr CPoint CenterPoint() const {
        return {static_cast<int>((std::int64_t{left} + right) / 2),
                static_cast<int>((std::int64_t{top} + bottom) / 2)};
    }

    /// Whether it holds no unit.
    constexpr bool IsRectEmpty() const { return left >= right || top >= bottom; }
    /// Whether all four edges are 0.
    constexpr bool IsRectNull() const { return static_cast<const RECT&>(*this) == RECT(); }
    /// Whether the point lies in the rectangle.
    constexpr bool PtInRect(const POINT& point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    /// Whether all four edges are the same.
    constexpr bool EqualRect(const RECT* other) const {
        return static_cast<const RECT&>(*this) == *other;
    }

    /// Sets all four edges.
    constexpr void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    /// All four edges become 0.
    constexpr void SetRectEmpty() { *this = CRect(); }
    /// Takes over the edges of another rectangle.
    constexpr void CopyRect(const RECT* other) { *this = CRect(*other); }
    /// Moves the rectangle.
    constexpr void OffsetRect(int dx, int dy) {
        left = tessalink::wrapAdd(left, dx);
        top = tessalink::wrapAdd(top, dy);
        right = tessalink::wrapAdd(right, dx);
        bottom = tessalink::wrapAdd(bottom, dy);
    }
    /// Moves the rectangle.
    constexpr void OffsetRect(const POINT& offset) { OffsetRect(offset.x, offset.y); }
    /// Moves the rectangle.
    constexpr void OffsetRect(const SIZE& offset) { OffsetRect(offset.cx, offset.cy); }
    /// Moves each edge outward by so much.
    constexpr void InflateRect(int l, int t, int r, int b) {
        left = tessalink::wrapSub(left, l);
        top = tessalink::wrapSub(top, t);
        right = tessalink::wrapAdd(right, r);
        bottom = tessalink::wrapAdd(bottom, b);
    }
    /// Moves both vertical edges outward by `dx`, both horizontal ones by `dy`.
    constexpr void InflateRect(int dx, int dy) { InflateRect(dx, dy, dx, dy); }
    /// Moves each edge inward by so much.
    constexpr void DeflateRect(int l, int t, int r, int b) {
        InflateRect(tessalink::wrapNeg(l), tessalink::wrapNeg(t), tessalink::wrapNeg(r),
                    tessalink::wrapNeg(b));
    }
    /// Moves both vertical edges inward by `dx`, both horizontal ones by `dy`.
    constexpr void DeflateRect(int dx, int dy) { DeflateRect(dx, dy, dx, dy); }
    /// Exchanges edges that are the wrong way round.
    constexpr void NormalizeRect() {
        if (left > right) std::swap(left, right);
        if (top > bottom) std::swap(top, bottom);
    }
    /// The part that both have, or the empty rectangle (all 0); returns whether there is one.
    constexpr bool IntersectRect(const RECT* a, const RECT* b) {
        *this = CRect(std::max(a->left, b->left), std::max(a->top, b->top),
                      std::min(a->right, b->right), std::min(a->bottom, b->bottom));
        if (!IsRectEmpty()) return true;
        SetRectEmpty();
        return false;
    }
    /// The smallest rectangle around both, of which empty ones don't count; returns whether it is
    /// not empty.
    constexpr bool UnionRect(const RECT* a, const RECT* b) {
        const CRect first(*a);
        const CRect second(*b);
        if (first.IsRectEmpty() || second.IsRectEmpty()) {
            *this = first.IsRectEmpty() ? second : first;
            if (!IsRectEmpty()) return true;
            SetRectEmpty();
            return false;
        }
        *this = CRect(std::min(first.left, second.left), std::min(first.top, second.top),
                      std::max(first.right, second.right), std::max(first.bottom, second.bottom));
        return true;
    }

    /// For calls that take a pointer.
    operator const RECT*() const { return this; }
    /// For calls that take a pointer.
    operator RECT*() { return this; }
};
