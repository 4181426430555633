#include "platform/graphics/GdiObjects.h"

#include <algorithm>
#include <array>
#include <cstring>

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

namespace {

using tessalink::Region;

// The pixel heights of the stock fonts of a screen of 96 dots per inch.
constexpr int cSystemFontHeight = 16;
constexpr int cGuiFontHeight = -11;

class Stock {
public:
    Stock() {
        static constexpr std::array<COLORREF, 5> grays = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040,
                                                          0x000000};
        for (std::size_t i = 0; i < grays.size(); ++i) m_brushes[i].CreateSolidBrush(grays[i]);
        const LOGBRUSH none = {BS_NULL, cBlack, 0};
        m_brushes[NULL_BRUSH].CreateBrushIndirect(&none);
        m_pens[0].CreatePen(PS_SOLID, 0, cWhite);
        m_pens[1].CreatePen(PS_SOLID, 0, cBlack);
        m_pens[2].CreatePen(PS_NULL, 0, cBlack);
        create_font(m_system, cSystemFontHeight, FW_BOLD);
        create_font(m_gui, cGuiFontHeight, FW_NORMAL);
        for (CBrush& brush : m_brushes) brush.MakeStock();
        for (CPen& pen : m_pens) pen.MakeStock();
    }

    CGdiObject* Find(int index) {
        if (index >= WHITE_BRUSH && index <= NULL_BRUSH) {
            return &m_brushes[static_cast<std::size_t>(index)];
        }
        if (index >= WHITE_PEN && index <= NULL_PEN) {
            return &m_pens[static_cast<std::size_t>(index - WHITE_PEN)];
        }
        if (index == SYSTEM_FONT || index == DEVICE_DEFAULT_FONT) return &m_system;
        const bool font = index >= OEM_FIXED_FONT && index <= DEFAULT_GUI_FONT && index != 15;
        return font ? &m_gui : nullptr;
    }

private:
    static void create_font(CFont& font, int height, int weight) {
        font.CreateFont(height, 0, 0, 0, weight, 0, 0, 0, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                        CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, VARIABLE_PITCH | FF_SWISS, "Arial");
        font.MakeStock();
    }

    std::array<CBrush, 6> m_brushes;
    std::array<CPen, 3> m_pens;
    CFont m_system;
    CFont m_gui;
};

}  // namespace

CGdiObject* CGdiObject::FromStock(int index) {
    static Stock stock;
    return stock.Find(index);
}

int CPen::CreatePen(UINT style, int width, COLORREF color) {
    const LOGPEN pen = {style, {width, 0}, color};
    return CreatePenIndirect(&pen);
}

int CPen::CreatePenIndirect(const LOGPEN* pen) {
    return pen != nullptr && pen->lopnStyle <= PS_INSIDEFRAME ? create(*pen) : 0;
}

int CBrush::CreateSolidBrush(COLORREF color) {
    const LOGBRUSH brush = {BS_SOLID, color, 0};
    return CreateBrushIndirect(&brush);
}

int CBrush::CreateHatchBrush(int hatch, COLORREF color) {
    const LOGBRUSH brush = {BS_HATCHED, color, static_cast<std::uintptr_t>(hatch)};
    return CreateBrushIndirect(&brush);
}

int CBrush::CreateBrushIndirect(const LOGBRUSH* brush) {
    if (brush == nullptr || brush->lbStyle > BS_HATCHED) return 0;
    if (brush->lbStyle == BS_HATCHED && brush->lbHatch > HS_DIAGCROSS) return 0;
    return create(*brush);
}

int CFont::CreateFont(int height, int width, int escapement, int orientation, int weight,
                      BYTE italic, BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision,
                      BYTE clipPrecision, BYTE quality, BYTE pitchAndFamily, const char* face) {
    LOGFONTA font = {height,        width,     escapement,     orientation, weight,
                     italic,        underline, strikeOut,      charSet,     outPrecision,
                     clipPrecision, quality,   pitchAndFamily, {}};
    if (face != nullptr) {
        std::copy_n(face, ::strnlen(face, LF_FACESIZE - 1), font.lfFaceName);
    }
    return CreateFontIndirect(&font);
}

int CFont::CreateFontIndirect(const LOGFONTA* font) {
    if (font == nullptr) return 0;
    LOGFONTA ended = *font;
    ended.lfFaceName[LF_FACESIZE - 1] = '\0';
    return create(ended);
}

int CRgn::CreateRectRgn(int left, int top, int right, int bottom) {
    CRect rect(left, top, right, bottom);
    rect.NormalizeRect();
    m_region = Region(rect);
    return 1;
}

int CRgn::CreateRectRgnIndirect(const RECT* rect) {
    return rect != nullptr ? CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom) : 0;
}

int CRgn::CreateEllipticRgn(int left, int top, int right, int bottom) {
    m_region = Region::OfEllipse({left, top, right, bottom});
    return 1;
}

int CRgn::CreatePolygonRgn(const POINT* points, int count, int mode) {
    if (points == nullptr || count < 2 || (mode != ALTERNATE && mode != WINDING)) return 0;
    m_region = Region::OfPolygon({points, static_cast<std::size_t>(count)});
    return 1;
}

int CRgn::CombineRgn(const CRgn* first, const CRgn* second, int mode) {
    if (first == nullptr || first->IsNull()) return ERRORREGION;
    const Region a = first->Get();
    if (mode == RGN_COPY) {
        m_region = a;
        return kind();
    }
    if (second == nullptr || second->IsNull()) return ERRORREGION;
    const Region b = second->Get();
    switch (mode) {
        case RGN_AND:
            m_region = a.And(b);
            break;
        case RGN_OR:
            m_region = a.Or(b);
            break;
        case RGN_XOR:
            m_region = a.Minus(b).Or(b.Minus(a));
            break;
        case RGN_DIFF:
            m_region = a.Minus(b);
            break;
        default:
            return ERRORREGION;
    }
    return kind();
}

int CRgn::OffsetRgn(int dx, int dy) {
    if (!m_region) return ERRORREGION;
    m_region->Offset(dx, dy);
    return kind();
}

int CRgn::GetRgnBox(RECT* box) const {
    if (!m_region || box == nullptr) return ERRORREGION;
    *box = m_region->Bounds();
    return kind();
}

int CRgn::PtInRegion(int x, int y) const {
    return m_region && m_region->Contains({x, y});
}

int CRgn::DeleteObject() {
    const bool was = m_region.has_value();
    m_region.reset();
    return was;
}

int CRgn::GetObject(int, void*) const {
    return 0;
}

const Region& CRgn::Get() const {
    static const Region none;
    return m_region ? *m_region : none;
}

int CRgn::kind() const {
    if (m_region->IsEmpty()) return NULLREGION;
    return m_region->Rects().size() == 1 ? SIMPLEREGION : COMPLEXREGION;
}
