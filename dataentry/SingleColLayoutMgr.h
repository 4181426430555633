#pragma once

#include "dataentry/GridLayoutMgr.h"

/// Places items one below the other, each across the whole width of the form, or of the widest item
/// when that is wider; a height counts up to 65,535 pixels. The arrows up and down go to the item
/// before and after.
class TESSALINK_API SingleColLayoutMgr : public GridLayoutMgr {
public:
    SingleColLayoutMgr() : GridLayoutMgr(0, 1, 1) {}

    void RecalcLayout(DataEntryCtl* form, CDC* dc, const CRect& area) override;
};
