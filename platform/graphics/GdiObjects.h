#pragma once

#include <memory>
#include <optional>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/graphics/LogicalObjects.h"
#include "platform/graphics/Region.h"

/// Pens, brushes, fonts and regions, as programs create them and select them into a device context.
/// Creating one returns nonzero, or 0 when the description makes no sense; creating it anew
/// replaces what it was. An object belongs to whoever made it and must stay while it is selected.

/// What pens, brushes, fonts and regions have in common.
class TESSALINK_API CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)

public:
    /// Nonzero when there is no object: it was not created, or was deleted.
    virtual int IsNull() const = 0;
    /// Drops the object; nonzero when there was one. Stock objects stay.
    virtual int DeleteObject() = 0;
    /// Copies the description (LOGPEN, LOGBRUSH, LOGFONTA) when `size` bytes hold it; returns its
    /// size in bytes, or 0.
    virtual int GetObject(int size, void* description) const = 0;

    /// The stock object, or null for a number that is none. It belongs to the library.
    static CGdiObject* FromStock(int index);

protected:
    CGdiObject() = default;
};

namespace tessalink {

/// What the kinds of objects that are plain descriptions share.
template <class Description>
class DescribedObject : public CGdiObject {
public:
    int IsNull() const final { return !m_description.has_value(); }
    int DeleteObject() override {
        const bool was = m_description.has_value() && !m_isStock;
        if (was) m_description.reset();
        return was;
    }
    int GetObject(int size, void* description) const override {
        constexpr int needed = static_cast<int>(sizeof(Description));
        if (!m_description) return 0;
        if (description == nullptr) return needed;
        if (size < needed) return 0;
        *static_cast<Description*>(description) = *m_description;
        return needed;
    }

    /// The description; the default one when there is no object.
    const Description& Get() const {
        static const Description none{};
        return m_description ? *m_description : none;
    }
    /// For the stock: from here on the object can't be deleted or created anew.
    void MakeStock() { m_isStock = true; }

protected:
    /// Makes the object one of this description; returns nonzero, or 0 for an object of the stock.
    int create(const Description& description) {
        if (m_isStock) return 0;
        m_description = description;
        return 1;
    }

private:
    std::optional<Description> m_description;
    bool m_isStock = false;
};

}  // namespace tessalink

/// What lines and outlines are drawn with: style, width and color.
class TESSALINK_API CPen : public tessalink::DescribedObject<LOGPEN> {
    DECLARE_DYNAMIC(CPen)

public:
    CPen() = default;
    /// As CreatePen.
    CPen(UINT style, int width, COLORREF color) { CreatePen(style, width, color); }

    /// A style above PS_INSIDEFRAME is refused.
    int CreatePen(UINT style, int width, COLORREF color);
    /// As CreatePen, from a description.
    int CreatePenIndirect(const LOGPEN* pen);
    /// Copies the description; 0 when there is no object.
    int GetLogPen(LOGPEN* pen) const { return GetObject(sizeof(LOGPEN), pen); }
};

/// What areas are filled with: a color, or hatches in it.
class TESSALINK_API CBrush : public tessalink::DescribedObject<LOGBRUSH> {
    DECLARE_DYNAMIC(CBrush)

public:
    CBrush() = default;
    /// As CreateSolidBrush.
    explicit CBrush(COLORREF color) { CreateSolidBrush(color); }
    /// As CreateHatchBrush.
    CBrush(int hatch, COLORREF color) { CreateHatchBrush(hatch, color); }

    /// Makes a brush of one color.
    int CreateSolidBrush(COLORREF color);
    /// Lines in the color over the background color or, in transparent mode, over what is there.
    /// A hatch above HS_DIAGCROSS is refused.
    int CreateHatchBrush(int hatch, COLORREF color);
    /// A style other than solid, null and hatched is refused.
    int CreateBrushIndirect(const LOGBRUSH* brush);
    /// Copies the description; 0 when there is no object.
    int GetLogBrush(LOGBRUSH* brush) const { return GetObject(sizeof(LOGBRUSH), brush); }
};

/// The typeface, size and style of texts.
class TESSALINK_API CFont : public tessalink::DescribedObject<LOGFONTA> {
    DECLARE_DYNAMIC(CFont)

public:
    CFont() = default;

    /// See LOGFONTA for what each argument means. The name of the face is cut to 31 characters;
    /// null stands for an empty one.
    int CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic,
                   BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision,
                   BYTE clipPrecision, BYTE quality, BYTE pitchAndFamily, const char* face);
    /// As CreateFont, from a description.
    int CreateFontIndirect(const LOGFONTA* font);
    /// Copies the description; 0 when there is no object.
    int GetLogFont(LOGFONTA* font) const { return GetObject(sizeof(LOGFONTA), font); }
};

/// A call has left no region; its fellows are NULLREGION, SIMPLEREGION and COMPLEXREGION.
inline constexpr int ERRORREGION = 0;

/// A set of device units, to clip by or to fill.
class TESSALINK_API CRgn : public CGdiObject {
    DECLARE_DYNAMIC(CRgn)

public:
    CRgn() = default;

    /// Makes the region a rectangle, whose right and bottom edge do not belong to it.
    int CreateRectRgn(int left, int top, int right, int bottom);
    /// As CreateRectRgn.
    int CreateRectRgnIndirect(const RECT* rect);
    /// Makes the region the ellipse in a rectangle.
    int CreateEllipticRgn(int left, int top, int right, int bottom);
    /// Fewer than two points are refused. Both modes fill by the alternating rule.
    int CreatePolygonRgn(const POINT* points, int count, int mode);
    /// Returns the kind of region that this one has become; ERRORREGION when one is missing. Either
    /// may be this one itself.
    int CombineRgn(const CRgn* first, const CRgn* second, int mode);
    /// Moves the region; returns its kind, or ERRORREGION when there is none.
    int OffsetRgn(int dx, int dy);
    /// The smallest rectangle around the region; returns its kind, or ERRORREGION when there is
    /// none.
    int GetRgnBox(RECT* box) const;
    /// Whether the unit belongs to the region.
    int PtInRegion(int x, int y) const;

    int IsNull() const override { return !m_region.has_value(); }
    int DeleteObject() override;
    /// A region has no description: 0.
    int GetObject(int size, void* description) const override;

    /// The region; an empty one when there is none.
    const tessalink::Region& Get() const;
    /// Makes the object this region.
    void Assign(const tessalink::Region& region) { m_region = region; }

private:
    int kind() const;

    std::optional<tessalink::Region> m_region;
};
