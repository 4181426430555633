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

    const CString& GetName() const { return m_name; }
    void SetName(const CString& name) { m_name = name; }
    COLORREF GetColor() const { return m_color; }
    std::uint32_t GetId() const { return m_id; }
    /// From 0 to 7.
    int GetSymbol() const { return m_symbol; }

    bool HasValue(int index) const { return m_values && index >= 0 && index < m_count; }
    /// The score at an index that has one.
    double GetValue(int index) const { return m_values[static_cast<std::size_t>(index)]; }
    void SetValues(double* values, int count) {
        m_values.reset(values);
        m_count = count;
    }
    /// Settles how many scores there are when that was not known.
    void SettleCount(int count) {
        if (m_count == cUnknownCount) m_count = count;
    }

    ProfilePointType GetPointType() const { return m_pointType; }
    void SetPointType(ProfilePointType type) { m_pointType = type; }
    /// The pen style of the lines, from PS_SOLID to PS_DASHDOTDOT.
    int GetLineStyle() const { return m_lineStyle; }
    void SetLineStyle(int style) { m_lineStyle = style; }
    /// The decimals of the values that are written beside the points.
    int GetDecimals() const { return m_decimals; }
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
