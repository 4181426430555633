#include "graphs/bar/BarGraph.h"

#include <cmath>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

using tessalink::halved;
using tessalink::toDevice;

BarGraph::~BarGraph() {
    BarGraph::Clear();
}

int BarGraph::AddSection(BarSection* section) {
    if (section == nullptr) return -1;
    m_designHeight += section->GetDesignHeight();
    m_sections.emplace_back(section);
    return GetSectionCount() - 1;
}

void BarGraph::RemoveSectionAt(int index) {
    m_designHeight -= GetSection(index)->GetDesignHeight();
    m_sections.erase(m_sections.begin() + index);
}

void BarGraph::Clear() {
    for (auto& section : m_sections) section.reset();
    m_sections.clear();
    m_designHeight = 0;
}

BarSection* BarGraph::GetSection(int index) const {
    return m_sections[checked(index)].get();
}

std::size_t BarGraph::checked(int index) const {
    if (index < 0 || index >= GetSectionCount()) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

void BarGraph::Draw(CDC* dc, const CRect& rect) {
    if (dc == nullptr || m_designHeight == 0) return;
    const tessalink::RestoredState restored(*dc);
    CRect place = rect;
    dc->SetBkColor(cWhite);
    recalc_layout(dc, place);
    on_before_draw(dc, place);
    if (m_drawBoundingRect != 0) {
        CRect frame = place;
        frame.InflateRect(1, 1);
        dc->Rectangle(&frame);
    }
    draw_sections(dc, place);
    on_end_draw(dc, place);
}

void BarGraph::recalc_layout(CDC* dc, CRect& rect) {
    if (m_drawBoundingRect != 0) rect.DeflateRect(1, 1);
    KOVGraphUtilities::CalcARScaleFactors(dc, rect.Width(), rect.Height(), cDesignWidth,
                                          m_designHeight, m_xScale, m_yScale);
    int height = 0;
    for (int i = 0; i < GetSectionCount(); ++i) height += device_height(i);
    if ((m_alignment & cBottom) != 0) {
        rect.top = rect.bottom - height;
    } else if ((m_alignment & cMiddle) != 0) {
        rect.top += halved(rect.Height() - height);
    }
    rect.bottom = rect.top + height;
    // A tenth more than a whole number is cut to that number, whatever its last bit.
    const int width = tessalink::toInt(std::ceil(cDesignWidth * m_xScale) + 0.1);
    if ((m_alignment & cRight) != 0) {
        rect.left = rect.right - width;
        return;
    }
    if ((m_alignment & cCenter) != 0) {
        rect.left += halved(rect.Width() - width);
    }
    rect.right = rect.left + width;
}

int BarGraph::device_height(int index) const {
    return toDevice(GetSection(index)->GetDesignHeight() * m_yScale);
}

void BarGraph::draw_sections(CDC* dc, const CRect& rect) {
    int y = rect.top;
    for (int i = 0; i < GetSectionCount(); ++i) {
        const int bottom = y + device_height(i);
        GetSection(i)->Draw(dc, m_xScale, m_yScale, CRect(rect.left, y, rect.right, bottom));
        y = bottom;
    }
}

void BarGraph::on_before_draw(CDC*, CRect&) {}

void BarGraph::on_end_draw(CDC*, CRect&) {}
