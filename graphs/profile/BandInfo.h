#pragma once

#include "platform/base/CArray.h"
#include "platform/base/Export.h"
#include "platform/graphics/Colors.h"

class CArchive;

/// A horizontal band of a profile graph, between two scores.
struct TESSALINK_API BandInfo {
    int from = 0;        ///< the score at one edge
    int to = 0;          ///< the score at the other edge
    COLORREF color = 0;  ///< of the band

    bool operator==(const BandInfo&) const = default;

    /// The record in an archive: both scores and the color, 32 bits each. Faults are those of
    /// CArchive.
    void Serialize(CArchive& archive);
};

/// Its archive form is the count and then the records.
using BandInfoArray = CArray<BandInfo, const BandInfo&>;
