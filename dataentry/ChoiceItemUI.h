#pragma once

#include <vector>

#include "core/ResponseSet.h"
#include "dataentry/ColoredItemUI.h"

/// Shows items as a label and a choice of responses, each of which may be clicked or selected by
/// its keys. Serves IntegerDataEntryItem: with a single choice its number is the code of the
/// response, otherwise the bits of all that are chosen.
///
/// A response set is read once: "[Yes|Yy|1][No|Nn|0]" (see core/ResponseSet.h). An empty pair "[]"
/// starts a new group, which stands on a line of its own. A response without code has its place,
/// from 0 on, or the bit of its place. What follows a malformed response is left out.
///
/// Besides its keys, a response is chosen by the blank when Ctrl and an arrow have led to it.
class TESSALINK_API ChoiceItemUI : public ColoredItemUI {
    DECLARE_DYNAMIC(ChoiceItemUI)

public:
    void OnMeasureItem(const DataEntryItem* item, CDC* dc, CSize& size) override;
    bool OnClick(CPoint point) override;
    tessalink::AccessibleRole Role() const override;
    std::vector<tessalink::AccessibleChoice> Choices(const DataEntryItem* item,
                                                     const CRect& place) const override;
    int FocusedChoice() const override { return m_cursor; }
    CString ValueText(DataEntryItem* item) override;

    int OnCreate(CREATESTRUCTA* create) override;
    void OnChar(UINT ch, UINT repeat, UINT flags) override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    BOOL Attach(DataEntryItem* item, const CRect& rect, int focused) override;

protected:
    /// A response and where it stands in an item.
    struct Choice {
        CString caption;  ///< what is shown
        CString keys;     ///< the characters that select it
        int value = 0;    ///< its code, or its bit
        int group = 0;    ///< the group that it stands in, from 0
        int x = 0;        ///< its left edge in the item, in pixels
        int y = 0;        ///< its top edge in the item, in pixels
        int width = 0;    ///< its width in pixels
    };

    /// For derived interfaces. `labelWidth` in pixels; 0 for that of a number.
    ChoiceItemUI(const char* responseSet, int labelWidth, bool singleChoice);

    /// Reads a response set; 0 when it is malformed.
    int parse_rsp_set(const char* responseSet);
    /// Computes sizes and makes the fonts. It is called once.
    virtual void initialize(CDC* dc);
    /// Places the choices, whose widths are known.
    virtual void place_choices();
    /// What a choice needs besides its caption.
    virtual int mark_width() const;
    /// Where the caption starts in the choice's cell.
    virtual int caption_x() const { return mark_width(); }
    /// Draws the mark and caption of a choice at a place; the colors and the font are set.
    virtual void draw_choice(CDC& dc, const Choice& choice, const CRect& cell, bool chosen,
                             bool readOnly) const = 0;
    /// Chooses a response, or takes the choice back; 0 when that is refused, or when the item is
    /// read-only. An index out of range raises CInvalidArgException.
    int set_curr_cell_value_index(int index);
    /// Whether a choice is chosen in an item.
    bool is_chosen(const DataEntryItem& item, const Choice& choice) const;
    void draw_item(CDC& dc, DataEntryItem& item, const CRect& place, bool focused) override;

    /// Where the choices begin, in pixels.
    int first_x() const { return m_labelWidth + m_halfWidth; }
    /// The height of a choice in pixels.
    int choice_height() const { return m_height; }
    /// The top of a line of choices, in pixels.
    int line_top(int line) const { return line * (m_height + m_height / 4) + m_height / 4; }

    std::vector<Choice> m_choices;  ///< in the order of the response set
    int m_boxSide = 0;              ///< the side of a mark's square in pixels

private:
    void prepare(CDC& dc);
    int label_margin(CDC& dc) const;
    CRect cell_of(const Choice& choice, const CRect& place) const;
    int change(IntegerDataEntryItem& item, const Choice& choice) const;
    int choice_for(char key) const;
    void draw_read_only_frame(CDC& dc, const CRect& place) const;
    void move_cursor(int step);

    bool m_singleChoice;
    bool m_initialized = false;
    int m_labelPixels;
    int m_labelWidth = 0;
    int m_labelEdge = 0;  ///< where the label ends and the choices' ground begins
    int m_height = 0;
    int m_totalWidth = 0;
    int m_totalHeight = 0;
    int m_cursor = -1;  ///< the choice that the blank chooses
};
