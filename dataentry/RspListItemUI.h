#pragma once

#include "dataentry/ChoiceItemUI.h"

/// The responses as a list of captions, of which the chosen one is circled, as on paper. One
/// response is chosen, and the item holds its code.
class TESSALINK_API RspListItemUI : public ChoiceItemUI {
    DECLARE_DYNAMIC(RspListItemUI)

public:
    /// See ChoiceItemUI. `labelWidth` in pixels; 0 for that of a number.
    RspListItemUI(const char* responseSet, int labelWidth);

    /// The colors of the circle and of what is in it.
    void SetCircleColors(COLORREF line, COLORREF background);

protected:
    int mark_width() const override { return 0; }
    int caption_x() const override { return m_halfWidth; }
    void draw_choice(CDC& dc, const Choice& choice, const CRect& cell, bool chosen,
                     bool readOnly) const override;

private:
    tessalink::SystemColor m_circle{COLOR_WINDOWTEXT};
    tessalink::SystemColor m_circleBackground{COLOR_WINDOW};
};
