#pragma once

#include <vector>

#include "graphs/file/detail/BarLabels.h"

namespace tessalink::detail {

/// The rows of texts under the scales of an upright profile graph. Each holds a heading and a text
/// for each scale, of one line.
class ScaleRows {
public:
    using Row = std::vector<CString>;

    /// Rows of texts that may have line feeds, in this face.
    ScaleRows(std::vector<Row> rows, const CString& face);

    /// Whether the texts find room beside one another on a sheet so wide, in thousandths of the
    /// font's height. Where they don't in their own lines, they are broken at blanks, into more
    /// rows.
    bool Fit(double width, bool hasLeftAxis, bool hasRightAxis);
    /// Takes such breaks back, and line feeds that make more rows than there can be.
    void GiveUp();

    const std::vector<Row>& Rows() const { return m_rows; }
    /// Whether the name of a scale, counted from 0, has several lines.
    bool IsBroken(std::size_t scale) const { return m_isBroken[scale]; }

private:
    void Break(int room);
    bool HasRoom(double cell, double left, double right);

    std::vector<Row> m_given;
    TextLook m_look;
    std::vector<Row> m_rows;
    std::vector<bool> m_isBroken;
    TextRuler m_ruler;
};

}  // namespace tessalink::detail
