#pragma once

#include <array>
#include <climits>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/graphics/CDC.h"

namespace tessalink::test {

/// Random calls of everything that a device context can do, the same for several contexts at once.
class DrawingProgram {
public:
    /// Chooses a number below the count; the same choices make the same drawing.
    using Choose = std::function<std::size_t(std::size_t count)>;
    /// Tame coordinates lie around a small picture; wild ones anywhere.
    enum class Coordinates { Tame, Wild };

    DrawingProgram(Choose choose, std::vector<CDC*> contexts, Coordinates coordinates)
        : m_choose(std::move(choose)),
          m_contexts(std::move(contexts)),
          m_coordinates(coordinates) {}

    void Run(std::size_t steps) {
        for (std::size_t i = 0; i < steps; ++i) (this->*cSteps[Below(cSteps.size())])();
    }

private:
    using Step = void (DrawingProgram::*)();

    std::size_t Below(std::size_t count) { return m_choose(count); }
    bool OneIn(std::size_t count) { return Below(count) == 0; }
    int Number(int least, int most) {
        return least + static_cast<int>(Below(static_cast<std::size_t>(most - least) + 1));
    }
    int Place() {
        constexpr std::array wild = {INT_MIN, INT_MIN + 1, -(1 << 26), -(1 << 16), -32769, -32768,
                                     32767,   32768,       1 << 16,    1 << 26,    INT_MAX};
        const bool isWild = m_coordinates == Coordinates::Wild && OneIn(4);
        return isWild ? wild[Below(wild.size())] : Number(-40, 320);
    }
    COLORREF Color() {
        constexpr std::array<COLORREF, 6> colors = {cBlack,   cWhite,   0x0000FF,
                                                    0x00FF00, 0xC08040, 0x123456};
        return colors[Below(colors.size())];
    }
    std::string Text() {
        const std::array<std::string, 6> texts = {
            "Text", "", "a & b", "two\nlines of it", "\x80\xE4\x01<\">\x81", "  \xB3 abc\r\nx"};
        return texts[Below(texts.size())];
    }
    CRect Box() {
        CRect box;
        for (LONG* edge : {&box.left, &box.top, &box.right, &box.bottom}) *edge = Place();
        return box;
    }
    std::vector<POINT> Points() {
        std::vector<POINT> points(Below(7));
        for (POINT& point : points) point = {Place(), Place()};
        return points;
    }
    template <class Call>
    void All(Call call) {
        for (CDC* dc : m_contexts) call(*dc);
    }
    template <class Object>
    Object& Kept(std::unique_ptr<Object> object) {
        Object& kept = *object;
        m_objects.push_back(std::move(object));
        return kept;
    }
    CBrush& NewBrush() {
        CBrush& brush = Kept(std::make_unique<CBrush>());
        const LOGBRUSH description = {static_cast<UINT>(Below(3)), Color(), Below(6)};
        brush.CreateBrushIndirect(&description);
        return brush;
    }
    void Make(CRgn& region) {
        const auto kind = Below(4);
        if (kind == 0) {
            region.CreateRectRgnIndirect(Box());
        } else if (kind == 1) {
            const int left = Number(-20, 200);
            region.CreateEllipticRgn(left, Number(-20, 100), left + Number(0, 90), 120);
        } else if (kind == 2) {
            std::vector<POINT> corners(2 + Below(5));
            for (POINT& corner : corners) corner = {Number(-20, 200), Number(-20, 200)};
            region.CreatePolygonRgn(corners.data(), static_cast<int>(corners.size()), ALTERNATE);
        } else {
            CRgn other;
            other.CreateRectRgnIndirect(Box());
            region.CreateRectRgn(Number(0, 90), Number(0, 90), 150, 150);
            region.CombineRgn(&region, &other, Number(RGN_AND, RGN_COPY));
        }
    }

    void SelectPen() {
        constexpr std::array widths = {0, 1, 1, 2, 3, 8, -1};
        CPen& pen = Kept(std::make_unique<CPen>(static_cast<UINT>(Below(7)),
                                                widths[Below(widths.size())], Color()));
        All([&](CDC& dc) { dc.SelectObject(&pen); });
    }
    void SelectBrush() {
        CBrush& brush = NewBrush();
        All([&](CDC& dc) { dc.SelectObject(&brush); });
    }
    void SelectFont() {
        constexpr std::array heights = {0, 16, 11, 40, -12, -13, -33};
        constexpr std::array<const char*, 5> faces = {"Arial", "Times New Roman", "Symbol",
                                                      "Caf\xE9 'x' <y>", ""};
        const auto flag = [this] { return static_cast<BYTE>(Below(2)); };
        const int height = heights[Below(heights.size())];
        CFont& font = Kept(std::make_unique<CFont>());
        font.CreateFont(m_coordinates == Coordinates::Wild && OneIn(4) ? Place() : height, 0, 0, 0,
                        OneIn(3) ? FW_BOLD : FW_NORMAL, flag(), flag(), flag(), ANSI_CHARSET, 0, 0,
                        0, OneIn(3) ? FF_ROMAN : FF_DONTCARE, faces[Below(faces.size())]);
        All([&](CDC& dc) { dc.SelectObject(&font); });
    }
    void SelectStock() {
        const int index = Number(-1, 18);
        All([&](CDC& dc) { dc.SelectStockObject(index); });
    }
    void SetColors() {
        const COLORREF text = Color();
        const COLORREF background = Color();
        All([&](CDC& dc) {
            dc.SetTextColor(text);
            dc.SetBkColor(background);
        });
    }
    void SetModes() {
        constexpr std::array<UINT, 3> vertical = {TA_TOP, TA_BOTTOM, TA_BASELINE};
        constexpr std::array<UINT, 3> horizontal = {TA_LEFT, TA_RIGHT, TA_CENTER};
        const UINT align = vertical[Below(3)] | horizontal[Below(3)] | (OneIn(4) ? TA_UPDATECP : 0);
        const int background = Number(TRANSPARENT, OPAQUE);
        const int fill = Number(ALTERNATE, WINDING);
        All([&](CDC& dc) {
            dc.SetTextAlign(align);
            dc.SetBkMode(background);
            dc.SetPolyFillMode(fill);
        });
    }
    void SetOrigin() {
        const CPoint origin(OneIn(2) ? 0 : Place(), OneIn(2) ? 0 : Place());
        All([&](CDC& dc) { dc.SetViewportOrg(origin); });
    }
    void Save() {
        All([](CDC& dc) { dc.SaveDC(); });
    }
    void Restore() {
        const int which = Number(-1, 3);
        All([&](CDC& dc) { dc.RestoreDC(which); });
    }
    void ClipTo() {
        const CRect box = Box();
        const bool exclude = OneIn(2);
        All([&](CDC& dc) { exclude ? dc.ExcludeClipRect(&box) : dc.IntersectClipRect(&box); });
    }
    void ClipToRegion() {
        CRgn region;
        Make(region);
        All([&](CDC& dc) { dc.SelectClipRgn(&region); });
    }
    void ClipNothing() {
        All([](CDC& dc) { dc.SelectClipRgn(nullptr); });
    }
    void DrawLines() {
        const std::vector<POINT> points = Points();
        const auto count = static_cast<int>(points.size());
        const bool continued = OneIn(2);
        All([&](CDC& dc) {
            if (!continued) dc.MoveTo(7, 9);
            for (const POINT& point : points) dc.LineTo(point);
            dc.Polyline(points.data(), count);
        });
    }
    void DrawPolygon() {
        const std::vector<POINT> points = Points();
        All([&](CDC& dc) { dc.Polygon(points.data(), static_cast<int>(points.size())); });
    }
    void DrawShapes() {
        const CRect box = Box();
        const CRect other = Box();
        const CPoint dot(Place(), Place());
        const COLORREF color = Color();
        All([&](CDC& dc) {
            dc.Rectangle(&box);
            dc.Ellipse(&other);
            dc.SetPixel(dot.x, dot.y, color);
        });
    }
    void DrawFills() {
        const CRect box = Box();
        const COLORREF color = Color();
        CBrush& brush = NewBrush();
        All([&](CDC& dc) {
            dc.FillRect(&box, &brush);
            dc.FrameRect(&box, &brush);
            dc.Draw3dRect(&box, color, cBlack);
            dc.DrawFocusRect(&box);
            dc.FillSolidRect(5, 6, 7, 8, color);
        });
    }
    void FillRegion() {
        CRgn region;
        Make(region);
        CBrush& brush = NewBrush();
        All([&](CDC& dc) { dc.FillRgn(&region, &brush); });
    }
    void DrawTexts() {
        const std::string text = Text();
        const CPoint place(Place(), Place());
        const CRect box = Box();
        const UINT options = static_cast<UINT>(Below(4)) * ETO_OPAQUE;
        const std::vector<int> advances(text.size(), Number(-3, 30));
        const bool given = OneIn(2);
        All([&](CDC& dc) {
            dc.TextOut(place.x, place.y, CString(text));
            dc.ExtTextOut(place.x, place.y, options, &box, CString(text),
                          given ? advances.data() : nullptr);
        });
    }
    void DrawParagraph() {
        const std::string text = Text();
        const CRect box = Box();
        constexpr UINT all = DT_CENTER | DT_RIGHT | DT_VCENTER | DT_BOTTOM | DT_WORDBREAK |
                             DT_SINGLELINE | DT_NOCLIP | DT_CALCRECT | DT_NOPREFIX;
        const UINT format = static_cast<UINT>(Below(all + 1)) & all;
        All([&](CDC& dc) {
            CRect room = box;
            dc.DrawText(CString(text), &room, format);
        });
    }

    static constexpr std::array<Step, 21> cSteps = {
        &DrawingProgram::SelectPen,   &DrawingProgram::SelectBrush,  &DrawingProgram::SelectFont,
        &DrawingProgram::SelectStock, &DrawingProgram::SetColors,    &DrawingProgram::SetModes,
        &DrawingProgram::SetOrigin,   &DrawingProgram::Save,         &DrawingProgram::Restore,
        &DrawingProgram::ClipTo,      &DrawingProgram::ClipToRegion, &DrawingProgram::ClipNothing,
        &DrawingProgram::DrawLines,   &DrawingProgram::DrawPolygon,  &DrawingProgram::DrawShapes,
        &DrawingProgram::DrawFills,   &DrawingProgram::FillRegion,   &DrawingProgram::DrawTexts,
        &DrawingProgram::DrawTexts,   &DrawingProgram::DrawShapes,   &DrawingProgram::DrawParagraph,
    };

    Choose m_choose;
    std::vector<CDC*> m_contexts;
    Coordinates m_coordinates;
    std::vector<std::unique_ptr<CGdiObject>> m_objects;
};

}  // namespace tessalink::test
