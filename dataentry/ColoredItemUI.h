#pragma once

#include "dataentry/DataEntryItemUI.h"
#include "dataentry/SystemColor.h"

/// What the interfaces of texts and choices share: colors, those of the system until others are
/// set, two fonts, and a label on the left.
class TESSALINK_API ColoredItemUI : public DataEntryItemUI {
    DECLARE_DYNAMIC(ColoredItemUI)

public:
    /// The colors of the value of the current item.
    void SetFocusColors(COLORREF text, COLORREF background);
    /// The colors of labels.
    void SetLabelColors(COLORREF text, COLORREF background);
    /// The colors of values.
    void SetTextColors(COLORREF text, COLORREF background);
    /// The color of values that the user can't change.
    void SetReadOnlyColor(COLORREF text);
    /// The color behind the value of the current item.
    COLORREF GetFocusBgColor() const { return m_focusBackground; }
    /// The color of the value of the current item.
    COLORREF GetFocusFgColor() const { return m_focusText; }
    /// The color of values that the user can't change.
    COLORREF GetReadOnlyColor() const { return m_readOnlyText; }
    /// The color behind values.
    COLORREF GetTextBgColor() const { return m_textBackground; }
    /// The color of values.
    COLORREF GetTextFgColor() const { return m_text; }

protected:
    ColoredItemUI() = default;

    /// Makes the fonts of values and of labels.
    virtual void create_fonts(int height);
    /// Draws everything anew, in other colors.
    void colors_changed();
    /// The color in which the value of an item is shown.
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

    /// Behind the value of the current item.
    tessalink::SystemColor m_focusBackground{COLOR_WINDOW};
    tessalink::SystemColor m_focusText{COLOR_WINDOWTEXT};  ///< of the value of the current item
    tessalink::SystemColor m_labelBackground{COLOR_BTNSHADOW};  ///< behind labels
    tessalink::SystemColor m_labelText{COLOR_BTNHIGHLIGHT};     ///< of labels
    tessalink::SystemColor m_textBackground{COLOR_BTNFACE};     ///< behind values
    tessalink::SystemColor m_text{COLOR_BTNTEXT};               ///< of values
    /// Of values that the user can't change.
    tessalink::SystemColor m_readOnlyText{COLOR_GRAYTEXT};
    mutable CFont m_normalFont;  ///< of values
    mutable CFont m_boldFont;    ///< of labels
    int m_halfWidth = 0;         ///< half the width of a wide letter
    int m_labelMargin = 0;       ///< between the text of a label and its right edge
};
