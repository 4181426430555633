#include "graphs/profile/ProfileGraph3.h"

#include <algorithm>
#include <utility>

#include "graphs/common/DashedPath.h"
#include "graphs/common/DeviceUnits.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

using tessalink::Selected;

ProfileGraph3::~ProfileGraph3() {
    Clear();
}

void ProfileGraph3::AddBand(double low, double high, COLORREF color, const char* label) {
    add_region({{low}, {high}, color, label != nullptr ? label : "", true});
}

void ProfileGraph3::AddBand(const double* lows, const double* highs, COLORREF color,
                            const char* label) {
    if (lows == nullptr || highs == nullptr) AfxThrowInvalidArgException();
    add_region({{lows, lows + m_scaleCount},
                {highs, highs + m_scaleCount},
                color,
                label != nullptr ? label : "",
                false});
}

void ProfileGraph3::add_region(RegionInfo region) {
    m_regions.push_back(std::make_unique<RegionInfo>(std::move(region)));
    if (!m_regions.back()->label.IsEmpty()) m_labeled.push_back(m_regions.back().get());
}

void ProfileGraph3::RemoveBands() {
    ProfileGraph2::RemoveBands();
    m_labeled.clear();
    m_regions.clear();
}

void ProfileGraph3::AddBreak(int scale, int kind) {
    ProfileGraph2::AddBreak(scale);
    m_breakKinds.SetAtGrow(m_breaks.GetUpperBound(), static_cast<BYTE>(kind));
}

void ProfileGraph3::Clear() {
    ProfileGraph2::Clear();
    RemoveBands();
    m_breakKinds.RemoveAll();
}

std::vector<tessalink::ProfileRegion> ProfileGraph3::GetRegions() const {
    std::vector<tessalink::ProfileRegion> regions;
    if (m_bandsShown == 0) return regions;
    regions.reserve(m_regions.size());
    for (const auto& region : m_regions) regions.push_back(*region);
    return regions;
}

void ProfileGraph3::draw_bands(CDC* dc) {
    draw_regions(dc);
}

void ProfileGraph3::draw_regions(CDC* dc) {
    if (m_bandsShown == 0 || m_scaleCount == 0) return;
    for (const auto& region : m_regions) draw_region(dc, *region);
}

void ProfileGraph3::draw_region(CDC* dc, const RegionInfo& region) const {
    CBrush brush(region.color);
    const int left = dev_x(m_xMin);
    const int right = dev_x(m_xMax);
    if (region.isConstant) {
        const CRect rect(left, dev_y_in_plot(region.highs[0]), right,
                         dev_y_in_plot(region.lows[0]));
        dc->FillRect(&rect, &brush);
        return;
    }
    // Scales that came after the region have no limits.
    const auto count = std::min(static_cast<std::size_t>(m_scaleCount), region.lows.size());
    if (count == 0) return;
    std::vector<POINT> points;
    points.reserve(2 * count + 4);
    points.push_back({left, dev_y_in_plot(region.highs.front())});
    for (std::size_t i = 0; i < count; ++i) {
        points.push_back({dev_x(static_cast<double>(i) + 1), dev_y_in_plot(region.highs[i])});
    }
    points.push_back({right, dev_y_in_plot(region.highs[count - 1])});
    points.push_back({right, dev_y_in_plot(region.lows[count - 1])});
    for (std::size_t i = count; i-- > 0;) {
        points.push_back({dev_x(static_cast<double>(i) + 1), dev_y_in_plot(region.lows[i])});
    }
    points.push_back({left, dev_y_in_plot(region.lows.front())});
    CRgn area;
    if (area.CreatePolygonRgn(points.data(), static_cast<int>(points.size()), ALTERNATE) != 0) {
        dc->FillRgn(&area, &brush);
    }
}

void ProfileGraph3::draw_breaks(CDC* dc) {
    if (m_breaks.IsEmpty() || is_empty_plot()) return;
    CPen pen(PS_SOLID, line_width(), cBlack);
    const Selected selected(*dc, &pen);
    for (int i = 0; i < m_breaks.GetSize(); ++i) {
        const int kind = i < m_breakKinds.GetSize() ? m_breakKinds[i] : cLineBreak;
        if (kind == cInvisibleBreak) continue;
        const int apart = kind == cDoubleBreak ? line_width() : 0;
        const int x = dev_x(m_breaks[i] + 0.5);
        tessalink::DashedPath path(kind == cDashedBreak ? PS_DASH : PS_SOLID, m_scaleFactor);
        for (const int offset : {-apart, apart}) {
            path.MoveTo({x + offset, dev_y(m_scores.min)});
            path.LineTo(*dc, {x + offset, dev_y(m_scores.max)});
            if (apart == 0) break;
        }
    }
}

// The legend: the profiles, then the regions that have a label.

int ProfileGraph3::legend_entry_count() const {
    return ProfileGraph2::legend_entry_count() + static_cast<int>(m_labeled.size());
}

const ProfileGraph3::RegionInfo& ProfileGraph3::labeled_region(int index) const {
    const auto place = static_cast<std::size_t>(index - ProfileGraph2::legend_entry_count());
    if (place >= m_labeled.size()) AfxThrowInvalidArgException();
    return *m_labeled[place];
}

CString ProfileGraph3::legend_entry_name(int index) const {
    return index < ProfileGraph2::legend_entry_count() ? ProfileGraph2::legend_entry_name(index)
                                                       : labeled_region(index).label;
}

void ProfileGraph3::draw_legend_sample(CDC* dc, int index, int left, int y) {
    if (index < ProfileGraph2::legend_entry_count()) {
        ProfileGraph2::draw_legend_sample(dc, index, left, y);
        return;
    }
    CPen pen(PS_SOLID, line_width(), cBlack);
    CBrush brush(labeled_region(index).color);
    const Selected selectedPen(*dc, &pen);
    const Selected selectedBrush(*dc, &brush);
    const int half = m_charHeight / 3;
    dc->Rectangle(left, y - half, left + 3 * m_charWidth, y + half);
}
