#pragma once

#include <cstdint>
#include <memory>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/graphics/Colors.h"

namespace tessalink {

/// What is drawn at the points of a profile. Graphs without point types draw symbols only.
enum class ProfilePointType { Symbol = 0, SymbolAndValue = 1, LineOnly = 2 };

/// One profile of a graph: a score for each scale, and how it is drawn. It owns its scores.
class TESSALINK_API ProfileInfo : public CObject {
    DECLARE_DYNAMIC(ProfileInfo)

public:
    /// The number of scores is not known yet.
    static constexpr int cUnknownCount = -1;

    /// `values` comes from an array new; the profile deletes it. It holds `count` scores, or
    /// cUnknownCount, and may be null: a profile without scores.
    ProfileInfo(const CString& name, double* values, int count, COLORREF color, std::uint32_t id,
                int symbol)
        : m_name(name),
          m_values(values),
          m_count(count),
          m_color(color),
          m_id(id),
          m_symbol(symbol) {}

    /// The name, for the legend.
    const CString& GetName() const { return m_name; }
    /// Changes the name.
    void SetName(const CString& name) { m_name = name; }
    /// The color of line and symbols.
    COLORREF GetColor() const { return m_color; }
    /// The caller's number, by which profiles are found.
    std::uint32_t GetId() const { return m_id; }
    /// From 0 to 7.
    int GetSymbol() const { return m_symbol; }

    /// Whether the array has a place for this scale, counted from 0.
    bool HasValue(int index) const { return m_values && index >= 0 && index < m_count; }
    /// The score at an index that has one.
    double GetValue(int index) const { return m_values[static_cast<std::size_t>(index)]; }
    /// Takes over other scores, from an array new; `count` as for the constructor.
    void SetValues(double* values, int count) {
        m_values.reset(values);
        m_count = count;
    }
    /// Settles how many scores there are when that was not known.
    void SettleCount(int count) {
        if (m_count == cUnknownCount) m_count = count;
    }

    /// What is drawn at its points.
    ProfilePointType GetPointType() const { return m_pointType; }
    /// Changes what is drawn at its points.
    void SetPointType(ProfilePointType type) { m_pointType = type; }
    /// The pen style of the lines, from PS_SOLID to PS_DASHDOTDOT.
    int GetLineStyle() const { return m_lineStyle; }
    /// Changes the pen style of the lines.
    void SetLineStyle(int style) { m_lineStyle = style; }
    /// The decimals of the values that are written beside the points.
    int GetDecimals() const { return m_decimals; }
    /// Changes the decimals of the values.
    void SetDecimals(int decimals) { m_decimals = decimals; }

private:
    CString m_name;
    std::unique_ptr<double[]> m_values;
    int m_count;
    COLORREF m_color;
    std::uint32_t m_id;
    int m_symbol;
    int m_lineStyle = 0;
    int m_decimals = 0;
    ProfilePointType m_pointType = ProfilePointType::Symbol;
};

}  // namespace tessalink
