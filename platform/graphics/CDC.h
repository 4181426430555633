#pragma once

#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/graphics/DrawingDevice.h"
#include "platform/graphics/GdiObjects.h"

/// A device context: something to draw on, with the pen, brush, font and modes that are set. One
/// logical unit is one unit of the device. Without a device nothing is drawn and measures are 0.
///
/// Calls with the meaning of their classic namesakes; those that draw return nonzero, or 0 without
/// a device and for arguments that make no sense. Objects that are selected must stay until others
/// are; a null object selects nothing and returns null. A new context has the black pen, the white
/// brush, the system font, black text on an opaque white background, aligned left and top.
class TESSALINK_API CDC : public CObject {
    DECLARE_DYNAMIC(CDC)

public:
    CDC() { AttachDevice(nullptr); }
    /// A context over the caller's device, which must outlive it.
    explicit CDC(tessalink::DrawingDevice& device) { AttachDevice(&device); }
    ~CDC() override = default;

    /// Changes the device that is drawn on; null for none. The state starts anew.
    void AttachDevice(tessalink::DrawingDevice* device);
    tessalink::DrawingDevice* Device() const { return m_device; }
    /// Changes the device that measures and capabilities are asked of: by default the one that is
    /// drawn on.
    void SetAttribDevice(tessalink::DrawingDevice* device);
    void SetAttribDC(CDC* dc) { SetAttribDevice(dc != nullptr ? dc->m_device : nullptr); }
    void ReleaseAttribDC() { SetAttribDevice(nullptr); }
    virtual BOOL DeleteDC();

    int GetDeviceCaps(int index) const;

    /// State. SaveDC returns the number of the saved state, from 1 on; RestoreDC takes it, or -1
    /// for the last one, and drops those after it.
    int SaveDC();
    BOOL RestoreDC(int savedState);

    CPen* SelectObject(CPen* pen) { return select(m_state.pen, pen); }
    CBrush* SelectObject(CBrush* brush) { return select(m_state.brush, brush); }
    CFont* SelectObject(CFont* font) {
        forget_font();
        return select(m_state.font, font);
    }
    /// The stock object takes the place of the object of its kind, which is returned.
    CGdiObject* SelectStockObject(int index);
    CPen* GetCurrentPen() const { return m_state.pen; }
    CBrush* GetCurrentBrush() const { return m_state.brush; }
    CFont* GetCurrentFont() const { return m_state.font; }
    /// OBJ_PEN, OBJ_BRUSH or OBJ_FONT.
    CGdiObject* GetCurrentObject(UINT type) const;

    COLORREF SetTextColor(COLORREF color) { return std::exchange(m_state.textColor, color); }
    COLORREF GetTextColor() const { return m_state.textColor; }
    COLORREF SetBkColor(COLORREF color) { return std::exchange(m_state.backgroundColor, color); }
    COLORREF GetBkColor() const { return m_state.backgroundColor; }
    int SetBkMode(int mode);
    int GetBkMode() const { return m_state.backgroundMode; }
    UINT SetTextAlign(UINT align) { return std::exchange(m_state.textAlign, align); }
    UINT GetTextAlign() const { return m_state.textAlign; }
    int SetPolyFillMode(int mode);
    int GetPolyFillMode() const { return m_state.fillMode; }
    /// Where the origin of the context lies on the device.
    CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT origin) { return SetViewportOrg(origin.x, origin.y); }
    CPoint OffsetViewportOrg(int dx, int dy);
    CPoint GetViewportOrg() const { return m_state.origin; }

    /// Clipping. They return the kind of region that is left (SIMPLEREGION ...).
    int IntersectClipRect(int left, int top, int right, int bottom);
    int IntersectClipRect(const RECT* rect);
    int ExcludeClipRect(int left, int top, int right, int bottom);
    int ExcludeClipRect(const RECT* rect);
    /// Device units, whatever the origin; null removes the clipping.
    int SelectClipRgn(const CRgn* region);
    /// The region of SelectClipRgn or of the rectangles since then; returns 0 when nothing is
    /// clipped.
    int GetClipRgn(CRgn* region) const;
    int GetClipBox(RECT* box) const;
    BOOL RectVisible(const RECT* rect) const;
    BOOL PtVisible(int x, int y) const;

    /// Lines and shapes.
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    CPoint GetCurrentPosition() const { return m_state.position; }
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT point) { return LineTo(point.x, point.y); }
    BOOL Polyline(const POINT* points, int count);
    BOOL Polygon(const POINT* points, int count);
    BOOL Rectangle(int left, int top, int right, int bottom);
    BOOL Rectangle(const RECT* rect);
    BOOL Ellipse(int left, int top, int right, int bottom);
    BOOL Ellipse(const RECT* rect);
    /// Without a pen; the brush is given.
    BOOL FillRect(const RECT* rect, CBrush* brush);
    void FillSolidRect(const RECT* rect, COLORREF color);
    void FillSolidRect(int x, int y, int width, int height, COLORREF color);
    /// The outermost unit on every side.
    BOOL FrameRect(const RECT* rect, CBrush* brush);
    void Draw3dRect(const RECT* rect, COLORREF topLeft, COLORREF bottomRight);
    /// A dotted frame.
    void DrawFocusRect(const RECT* rect);
    BOOL FillRgn(CRgn* region, CBrush* brush);
    COLORREF SetPixel(int x, int y, COLORREF color);

    /// Texts. A count of -1 is that of the characters before the NUL.
    BOOL TextOut(int x, int y, const char* text, int count);
    BOOL TextOut(int x, int y, const CString& text);
    /// ETO_OPAQUE fills the rectangle with the background color first, ETO_CLIPPED shows nothing
    /// outside it. `advances`, one for each character, replace the widths of the characters.
    BOOL ExtTextOut(int x, int y, UINT options, const RECT* rect, const char* text, UINT count,
                    const int* advances);
    BOOL ExtTextOut(int x, int y, UINT options, const RECT* rect, const CString& text,
                    const int* advances);
    /// Returns the height of the text, with DT_VCENTER and DT_BOTTOM how far below the top of the
    /// rectangle the text ends. Without DT_NOPREFIX "&" underlines the next character and
    /// "&&" is one "&". The first line's reference point is the left top of the rectangle, so that
    /// the text alignment counts.
    int DrawText(const char* text, int count, RECT* rect, UINT format);
    int DrawText(const CString& text, RECT* rect, UINT format);
    CSize GetTextExtent(const char* text, int count) const;
    CSize GetTextExtent(const CString& text) const;
    BOOL GetTextMetrics(TEXTMETRICA* metrics) const;

private:
    struct State {
        CPen* pen = nullptr;
        CBrush* brush = nullptr;
        CFont* font = nullptr;
        COLORREF textColor = cBlack;
        COLORREF backgroundColor = cWhite;
        int backgroundMode = OPAQUE;
        UINT textAlign = TA_LEFT | TA_TOP;
        int fillMode = ALTERNATE;
        CPoint origin;
        CPoint position;
        std::shared_ptr<const tessalink::Region> clip;  ///< null: nothing is clipped
    };

    tessalink::DrawingDevice* attributes() const {
        return m_attributes != nullptr ? m_attributes : m_device;
    }
    template <class Object>
    static Object* select(Object*& selected, Object* object) {
        if (object == nullptr || object->IsNull()) return nullptr;
        return std::exchange(selected, object);
    }
    tessalink::Paint paint() const;
    tessalink::Paint paint_with(const LOGBRUSH& brush) const;
    const tessalink::Region* clip() const { return m_state.clip.get(); }
    POINT device_point(int x, int y) const;
    CRect device_rect(const RECT& rect) const;
    std::span<const POINT> device_points(const POINT* points, int count);
    const tessalink::SizedFont& sized_font() const {
        if (!m_sizedFont) size_font();
        return *m_sizedFont;
    }
    void size_font() const;
    int set_clip(tessalink::Region clip);
    void forget_font() { m_sizedFont.reset(); }

    int place(std::string_view text, const int* advances) const;
    void draw_run(CPoint reference, std::string_view text, const int* advances, const RECT* clip);
    void fill(const RECT& rect, const LOGBRUSH& brush);
    void draw_line_of_text(std::string_view text, const RECT& rect, int y, UINT format);
    void underline(std::string_view text, std::size_t index, int left, int top);

    tessalink::DrawingDevice* m_device = nullptr;
    tessalink::DrawingDevice* m_attributes = nullptr;
    State m_state;
    std::vector<State> m_saved;
    mutable std::optional<tessalink::SizedFont> m_sizedFont;
    mutable std::vector<int> m_positions;
    std::vector<POINT> m_points;
};

/// The extent of `count` characters in the context's font; nonzero on success.
TESSALINK_API BOOL GetTextExtentPoint32(const CDC* dc, const char* text, int count, SIZE* size);
