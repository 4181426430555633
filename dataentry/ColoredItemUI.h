#pragma once

#include "dataentry/DataEntryItemUI.h"
#include "dataentry/SystemColor.h"

/// What the interfaces of texts and choices share: colors, those of the system until others are
/// set, two fonts, and a label on the left.
class TESSALINK_API ColoredItemUI : public DataEntryItemUI {
    DECLARE_DYNAMIC(ColoredItemUI)

public:
    void SetFocusColors(COLORREF text, COLORREF background);
    void SetLabelColors(COLORREF text, COLORREF background);
    void SetTextColors(COLORREF text, COLORREF background);
    void SetReadOnlyColor(COLORREF text);
    COLORREF GetFocusBgColor() const { return m_focusBackground; }
    COLORREF GetFocusFgColor() const { return m_focusText; }
    COLORREF GetReadOnlyColor() const { return m_readOnlyText; }
    COLORREF GetTextBgColor() const { return m_textBackground; }
    COLORREF GetTextFgColor() const { return m_text; }

protected:
    ColoredItemUI() = default;

    /// Makes the fonts of values and of labels.
    virtual void create_fonts(int height);
    void colors_changed();
    COLORREF value_color(const DataEntryItem& item) const {
        return item.IsReadOnly() != 0 ? m_readOnlyText : m_text;
    }
    /// Draws the label of an item over an area, in the bold font, from `top` below its upper edge
    /// on; the current one is darker and has a bar at its left edge.
    void draw_label(CDC& dc, const CString& label, CRect area, bool focused, int top,
                    int lineHeight) const;
    /// Where a label starts that is in the middle of a height.
    static int centered(const CString& label, int height, int lineHeight);
    /// Draws an empty rectangle.
    static void draw_frame(CDC& dc, const CRect& frame, CPen& pen);
    /// Draws what a field without the focus looks like: a frame, dotted for one that is read-only,
    /// and, for one without a value, a line to write on; at a negative height there is none.
    void draw_field_frame(CDC& dc, const DataEntryItem& item, const CRect& box, int baseline) const;

    tessalink::SystemColor m_focusBackground{COLOR_WINDOW};
    tessalink::SystemColor m_focusText{COLOR_WINDOWTEXT};
    tessalink::SystemColor m_labelBackground{COLOR_BTNSHADOW};
    tessalink::SystemColor m_labelText{COLOR_BTNHIGHLIGHT};
    tessalink::SystemColor m_textBackground{COLOR_BTNFACE};
    tessalink::SystemColor m_text{COLOR_BTNTEXT};
    tessalink::SystemColor m_readOnlyText{COLOR_GRAYTEXT};
    mutable CFont m_normalFont;
    mutable CFont m_boldFont;
    int m_halfWidth = 0;    ///< half the width of a wide letter
    int m_labelMargin = 0;  ///< between the text of a label and its right edge
};
