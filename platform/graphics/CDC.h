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
    /// The device that is drawn on; null for none.
    tessalink::DrawingDevice* Device() const { return m_device; }
    /// Changes the device that measures and capabilities are asked of: by default the one that is
    /// drawn on.
    void SetAttribDevice(tessalink::DrawingDevice* device);
    /// As SetAttribDevice, with the device that another context draws on; null for none.
    void SetAttribDC(CDC* dc) { SetAttribDevice(dc != nullptr ? dc->m_device : nullptr); }
    /// Nothing is measured any more: as SetAttribDevice with null.
    void ReleaseAttribDC() { SetAttribDevice(nullptr); }
    /// Lets go of the device; nonzero when there was one.
    virtual BOOL DeleteDC();

    /// One of the device's capabilities, for instance LOGPIXELSX; 0 for a number that is none.
    int GetDeviceCaps(int index) const;

    /// Saves the state and returns its number, from 1 on. RestoreDC takes it, or -1 for the last
    /// one, and drops those after it.
    int SaveDC();
    /// Goes back to a saved state, see SaveDC; 0 when there is none of that number.
    BOOL RestoreDC(int savedState);

    /// Selects a pen and returns the one that was selected before.
    CPen* SelectObject(CPen* pen) { return select(m_state.pen, pen); }
    /// Selects a brush and returns the one that was selected before.
    CBrush* SelectObject(CBrush* brush) { return select(m_state.brush, brush); }
    /// Selects a font and returns the one that was selected before.
    CFont* SelectObject(CFont* font) {
        forget_font();
        return select(m_state.font, font);
    }
    /// The stock object takes the place of the object of its kind, which is returned.
    CGdiObject* SelectStockObject(int index);
    /// The pen that is selected.
    CPen* GetCurrentPen() const { return m_state.pen; }
    /// The brush that is selected.
    CBrush* GetCurrentBrush() const { return m_state.brush; }
    /// The font that is selected.
    CFont* GetCurrentFont() const { return m_state.font; }
    /// The object of a kind that is selected: OBJ_PEN, OBJ_BRUSH or OBJ_FONT.
    CGdiObject* GetCurrentObject(UINT type) const;

    /// Changes the color of texts; returns the one before.
    COLORREF SetTextColor(COLORREF color) { return std::exchange(m_state.textColor, color); }
    /// The color of texts.
    COLORREF GetTextColor() const { return m_state.textColor; }
    /// Changes the color behind texts, between dashes and between hatches; returns the one before.
    COLORREF SetBkColor(COLORREF color) { return std::exchange(m_state.backgroundColor, color); }
    /// The color behind texts, between dashes and between hatches.
    COLORREF GetBkColor() const { return m_state.backgroundColor; }
    /// OPAQUE fills the background in its color, TRANSPARENT leaves what is there. Returns the mode
    /// before, or 0 for a mode that is none.
    int SetBkMode(int mode);
    /// OPAQUE or TRANSPARENT.
    int GetBkMode() const { return m_state.backgroundMode; }
    /// Changes how the reference point of texts lies to them, TA_... together; returns what it was.
    UINT SetTextAlign(UINT align) { return std::exchange(m_state.textAlign, align); }
    /// How the reference point of texts lies to them.
    UINT GetTextAlign() const { return m_state.textAlign; }
    /// ALTERNATE or WINDING, for polygons that cross themselves. Returns the mode before, or 0 for
    /// a mode that is none.
    int SetPolyFillMode(int mode);
    /// ALTERNATE or WINDING.
    int GetPolyFillMode() const { return m_state.fillMode; }
    /// Where the origin of the context lies on the device.
    CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT origin) { return SetViewportOrg(origin.x, origin.y); }
    /// Moves the origin; returns where it was.
    CPoint OffsetViewportOrg(int dx, int dy);
    /// Where the origin lies on the device.
    CPoint GetViewportOrg() const { return m_state.origin; }

    /// Nothing shows outside the rectangle any more; returns the kind of region that is left
    /// (SIMPLEREGION ...).
    int IntersectClipRect(int left, int top, int right, int bottom);
    int IntersectClipRect(const RECT* rect);
    /// Takes a rectangle out of what shows; returns the kind of region that is left.
    int ExcludeClipRect(int left, int top, int right, int bottom);
    /// Takes a rectangle out of what shows; returns the kind of region that is left.
    int ExcludeClipRect(const RECT* rect);
    /// Nothing shows outside the region, which is in device units whatever the origin is; null
    /// removes the clipping.
    int SelectClipRgn(const CRgn* region);
    /// The region of SelectClipRgn or of the rectangles since then; returns 0 when nothing is
    /// clipped.
    int GetClipRgn(CRgn* region) const;
    /// The smallest rectangle around what shows, on a device without clipping all of it; returns
    /// the kind of that region.
    int GetClipBox(RECT* box) const;
    /// Whether any of the rectangle shows.
    BOOL RectVisible(const RECT* rect) const;
    /// Whether the point shows.
    BOOL PtVisible(int x, int y) const;

    /// The next line begins at the point; returns where it would have begun.
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    /// Where the next line begins.
    CPoint GetCurrentPosition() const { return m_state.position; }
    /// Draws a line with the pen from the current position to the point, which becomes the current
    /// position. The last unit is left out.
    BOOL LineTo(int x, int y);
    /// Draws a line with the pen from the current position to the point, which becomes the current
    /// position. The last unit is left out.
    BOOL LineTo(POINT point) { return LineTo(point.x, point.y); }
    /// Draws lines with the pen from point to point; two points at least. The current position
    /// stays.
    BOOL Polyline(const POINT* points, int count);
    /// Draws a closed polygon with the pen and fills it with the brush; two points at least.
    BOOL Polygon(const POINT* points, int count);
    /// Draws a rectangle with the pen and fills it with the brush; right and bottom are left out.
    BOOL Rectangle(int left, int top, int right, int bottom);
    /// Draws a rectangle with the pen and fills it with the brush; right and bottom are left out.
    BOOL Rectangle(const RECT* rect);
    /// Draws the ellipse in a rectangle with the pen and fills it with the brush.
    BOOL Ellipse(int left, int top, int right, int bottom);
    /// Draws the ellipse in a rectangle with the pen and fills it with the brush.
    BOOL Ellipse(const RECT* rect);
    /// Fills a rectangle with a brush, without a pen.
    BOOL FillRect(const RECT* rect, CBrush* brush);
    /// Fills a rectangle with a color, which becomes the background color.
    void FillSolidRect(const RECT* rect, COLORREF color);
    /// Fills a rectangle with a color, which becomes the background color.
    void FillSolidRect(int x, int y, int width, int height, COLORREF color);
    /// Fills the outermost unit on every side of a rectangle with a brush.
    BOOL FrameRect(const RECT* rect, CBrush* brush);
    /// A frame of one unit: left and top in one color, right and bottom in the other.
    void Draw3dRect(const RECT* rect, COLORREF topLeft, COLORREF bottomRight);
    /// Draws a dotted frame, as around what has the focus.
    void DrawFocusRect(const RECT* rect);
    /// Fills a region with a brush.
    BOOL FillRgn(CRgn* region, CBrush* brush);
    /// Gives one unit a color, and returns that.
    COLORREF SetPixel(int x, int y, COLORREF color);

    /// Draws a text, its reference point at (x, y). A count of -1 is that of the characters before
    /// the NUL.
    BOOL TextOut(int x, int y, const char* text, int count);
    BOOL TextOut(int x, int y, const CString& text);
    /// Draws a text. ETO_OPAQUE fills the rectangle with the background color first, ETO_CLIPPED
    /// shows nothing outside it. `advances`, one for each character, replace the widths of the
    /// characters.
    BOOL ExtTextOut(int x, int y, UINT options, const RECT* rect, const char* text, UINT count,
                    const int* advances);
    BOOL ExtTextOut(int x, int y, UINT options, const RECT* rect, const CString& text,
                    const int* advances);
    /// Draws a text of one or several lines into a rectangle, as DT_... together say. Returns the
    /// height of the text, with DT_VCENTER and DT_BOTTOM how far below the top of the
    /// rectangle the text ends. Without DT_NOPREFIX "&" underlines the next character and
    /// "&&" is one "&". The first line's reference point is the left top of the rectangle, so that
    /// the text alignment counts.
    int DrawText(const char* text, int count, RECT* rect, UINT format);
    int DrawText(const CString& text, RECT* rect, UINT format);
    /// The width of the text and the height of the font, with the device that measures.
    CSize GetTextExtent(const char* text, int count) const;
    /// The width of the text and the height of the font, with the device that measures.
    CSize GetTextExtent(const CString& text) const;
    /// What the selected font measures on the device that measures.
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
