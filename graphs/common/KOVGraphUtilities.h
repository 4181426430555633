#pragma once

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

/// Scaling, printing and counting of lines, which all graphs share.
namespace KOVGraphUtilities {

/// The factors that turn design units into device units, so that the design fits into the device
/// area and one design unit has the same physical length on both axes: the axis with the larger
/// physical scale is reduced. The resolution is that of the context. Design sizes of 0 give
/// infinities, as division does.
TESSALINK_API void CalcARScaleFactors(CDC* dc, int deviceWidth, int deviceHeight, int designWidth,
                                      int designHeight, double& xScale, double& yScale);

/// Prints the lines of the text, which line feeds part, from (x, y) down, each as a formatted label
/// one text height below the other. A line feed at the end adds no line.
TESSALINK_API void PrintMultipleLines(CDC* dc, int x, int y, const CString& text);

/// The number of lines: 0 for an empty text, otherwise one more than there are line feeds, one at
/// the end included.
TESSALINK_API int CountLines(const char* text);

}  // namespace KOVGraphUtilities
