#pragma once

#include <utility>

#include "platform/graphics/CDC.h"

namespace tessalink {

/// Selects a pen, brush or font for as long as it lives, and then what was selected before. A null
/// object selects nothing.
template <class Object>
class Selected {
public:
    /// Selects the object; it and the context must outlive this.
    Selected(CDC& dc, Object* object) : m_dc(dc), m_before(dc.SelectObject(object)) {}
    ~Selected() {
        if (m_before != nullptr) m_dc.SelectObject(m_before);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    CDC& m_dc;
    Object* m_before;
};

/// Restores the pen, brush, font, colors, background mode and text alignment that a context had
/// when this was made.
class RestoredState {
public:
    /// Remembers the state of the context, which must outlive this.
    explicit RestoredState(CDC& dc)
        : m_dc(dc),
          m_pen(dc.GetCurrentPen()),
          m_brush(dc.GetCurrentBrush()),
          m_font(dc.GetCurrentFont()),
          m_textColor(dc.GetTextColor()),
          m_backgroundColor(dc.GetBkColor()),
          m_backgroundMode(dc.GetBkMode()),
          m_textAlign(dc.GetTextAlign()) {}
    ~RestoredState() {
        m_dc.SelectObject(m_pen);
        m_dc.SelectObject(m_brush);
        m_dc.SelectObject(m_font);
        m_dc.SetTextColor(m_textColor);
        m_dc.SetBkColor(m_backgroundColor);
        m_dc.SetBkMode(m_backgroundMode);
        m_dc.SetTextAlign(m_textAlign);
    }
    RestoredState(const RestoredState&) = delete;
    RestoredState& operator=(const RestoredState&) = delete;

private:
    CDC& m_dc;
    CPen* m_pen;
    CBrush* m_brush;
    CFont* m_font;
    COLORREF m_textColor;
    COLORREF m_backgroundColor;
    int m_backgroundMode;
    UINT m_textAlign;
};

/// Restores everything that a context had when this was made, the clip too.
class SavedState {
public:
    /// Saves the state of the context, which must outlive this.
    explicit SavedState(CDC& dc) : m_dc(dc), m_number(dc.SaveDC()) {}
    ~SavedState() { m_dc.RestoreDC(m_number); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

private:
    CDC& m_dc;
    int m_number;
};

}  // namespace tessalink
