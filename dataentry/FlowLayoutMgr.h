#pragma once

#include "dataentry/DataEntryLayoutMgr.h"

/// Places items one after the other, each as wide as it is: in rows, as text flows, or, when the
/// form scrolls horizontally, in columns. The items of a row share its height, those of a column
/// its width.
///
/// The arrows along the reading order go to the item before and after, whatever row it is in.
class TESSALINK_API FlowLayoutMgr : public DataEntryLayoutMgr {
public:
    /// Nonzero for columns and a form that scrolls horizontally, 0 for rows and one that scrolls
    /// vertically.
    explicit FlowLayoutMgr(int horzScroll) : DataEntryLayoutMgr(horzScroll, horzScroll == 0) {}

    int NavigateOnKeyDown(DataEntryCtl* form, UINT key, UINT repeat, UINT flags,
                          int& item) override;
    void RecalcLayout(DataEntryCtl* form, CDC* dc, const CRect& area) override;
};
