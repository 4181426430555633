#include "graphs/profile/BasicProfileGraph.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "graphs/common/DashedPath.h"
#include "graphs/common/MarkShape.h"
#include "graphs/profile/ProfileFont.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"

namespace tessalink {

namespace {

constexpr double cFontDesignHeight = 7.0;
constexpr double cThinLine = 0.5;

/// The characters of a legend's sample line, and of everything in an entry but its name.
constexpr int cSampleCharacters = 3;
constexpr int cEntryCharacters = 5;
constexpr int cPercent = 100;

constexpr char cLessOrEqual = '\xA3';
constexpr char cGreaterOrEqual = '\xB3';

constexpr int cMaxDecimals = 9;

int compare(double a, double b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

int part(int length, int percent) {
    return static_cast<int>(std::int64_t{length} * percent / cPercent);
}

}  // namespace

BasicProfileGraph::~BasicProfileGraph() = default;

// Profiles.

std::size_t BasicProfileGraph::checked_profile(int index) const {
    if (index < 0 || index >= GetProfileCount()) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

bool BasicProfileGraph::IsScore(const ProfileInfo& profile, int scaleIndex) const {
    if (!profile.HasValue(scaleIndex)) return false;
    const double value = profile.GetValue(scaleIndex);
    return value != m_missingValue && !std::isnan(value);
}

ProfileInfo* BasicProfileGraph::add_profile(const char* name, double* values, COLORREF color,
                                            std::uint32_t id) {
    std::unique_ptr<double[]> owned(values);
    try {
        const int count = m_scaleCount > 0 ? m_scaleCount : ProfileInfo::cUnknownCount;
        const int symbol = get_symbol();
        auto profile = std::make_unique<ProfileInfo>(name, nullptr, count, color, id, symbol);
        m_profiles.push_back(std::move(profile));
        m_profiles.back()->SetValues(owned.release(), count);
        ++m_symbolUse[static_cast<std::size_t>(symbol)];
        return m_profiles.back().get();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

int BasicProfileGraph::add_profile(const char* name, double* values, COLORREF color,
                                   std::uint32_t id, ProfilePointType type, int lineStyle,
                                   int decimals) {
    ProfileInfo* profile = add_profile(name, values, color, id);
    if (profile == nullptr) return 0;
    profile->SetPointType(type);
    profile->SetLineStyle(lineStyle);
    profile->SetDecimals(decimals);
    return 1;
}

int BasicProfileGraph::UpdateProfile(std::uint32_t id, const char* name, double* values) {
    int index = 0;
    if (!find_profile_location(id, index)) return 0;
    ProfileInfo& profile = *m_profiles[static_cast<std::size_t>(index)];
    if (name != nullptr) profile.SetName(name);
    if (values != nullptr) {
        profile.SetValues(values, m_scaleCount > 0 ? m_scaleCount : ProfileInfo::cUnknownCount);
    }
    return 1;
}

void BasicProfileGraph::RemoveProfile(std::uint32_t id) {
    int index = 0;
    if (!find_profile_location(id, index)) return;
    const auto place = m_profiles.begin() + index;
    --m_symbolUse[static_cast<std::size_t>((*place)->GetSymbol())];
    m_profiles.erase(place);
}

void BasicProfileGraph::RemoveProfiles() {
    m_profiles.clear();
    m_symbolUse.fill(0);
}

bool BasicProfileGraph::find_profile_location(std::uint32_t id, int& index) const {
    const auto found = std::find_if(m_profiles.begin(), m_profiles.end(),
                                    [id](const auto& profile) { return profile->GetId() == id; });
    if (found == m_profiles.end()) return false;
    index = static_cast<int>(found - m_profiles.begin());
    return true;
}

int BasicProfileGraph::get_symbol() const {
    return static_cast<int>(std::min_element(m_symbolUse.begin(), m_symbolUse.end()) -
                            m_symbolUse.begin());
}

std::vector<ProfileRegion> BasicProfileGraph::GetRegions() const {
    std::vector<ProfileRegion> regions;
    if (m_bandsShown == 0) return regions;
    regions.reserve(static_cast<std::size_t>(m_bands.GetSize()));
    for (int i = 0; i < m_bands.GetSize(); ++i) {
        const BandInfo& band = m_bands[i];
        regions.push_back({{1.0 * band.from}, {1.0 * band.to}, band.color, {}, true});
    }
    return regions;
}

// Drawing.

void BasicProfileGraph::Draw(CDC* dc, CRect rect) {
    if (dc == nullptr) return;
    const RestoredState restored(*dc);
    dc->SetBkColor(cWhite);
    const double wide = static_cast<double>(rect.Width()) / m_designWidth;
    const double high = static_cast<double>(rect.Height()) / m_designHeight;
    m_scaleFactor = high < wide ? high : wide;
    dc->Rectangle(rect.left, rect.top, rect.right, rect.bottom);
    rect.DeflateRect(1, 1);
    m_fontHeight = toInt(m_scaleFactor * cFontDesignHeight + cRoundUp);
    if (!std::isfinite(m_scaleFactor) || m_fontHeight <= 0) return;
    CFont font;
    createProfileFont(font, m_fontHeight, m_typeface);
    const Selected selected(*dc, &font);
    draw_contents(dc, rect);
}

int BasicProfileGraph::line_width() const {
    return toInt(m_scaleFactor * cThinLine + cRoundUp);
}

int BasicProfileGraph::axis_width() const {
    return toInt(m_scaleFactor + cRoundUp);
}

void BasicProfileGraph::measure_letter(CDC* dc) {
    const CSize letter = dc->GetTextExtent("M", 1);
    m_charWidth = letter.cx;
    m_charHeight = letter.cy;
}

BasicProfileGraph::EndLabel BasicProfileGraph::end_label(CDC* dc, bool isLower,
                                                         CFont& symbols) const {
    EndLabel label;
    const bool hasSign = has_end_sign(isLower);
    label.text.Format(hasSign ? " %d" : "%d", isLower ? m_scores.labelStart : m_scores.labelEnd);
    label.width = dc->GetTextExtent(label.text).cx;
    if (!hasSign) return label;
    label.sign = CString(isLower ? cLessOrEqual : cGreaterOrEqual, 1);
    const Selected selected(*dc, &symbols);
    label.signWidth = dc->GetTextExtent(label.sign).cx;
    label.width += label.signWidth;
    return label;
}

void BasicProfileGraph::draw_end_label(CDC* dc, int left, int top, const EndLabel& label,
                                       CFont& symbols) const {
    TEXTMETRICA metrics{};
    dc->GetTextMetrics(&metrics);
    const int baseLine = top + metrics.tmAscent;
    dc->SetTextAlign(TA_LEFT | TA_BASELINE);
    dc->TextOut(left + label.signWidth, baseLine, label.text);
    if (label.sign.IsEmpty()) return;
    const Selected selected(*dc, &symbols);
    dc->TextOut(left, baseLine, label.sign);
}

// Profiles in the plot.

int BasicProfileGraph::symbol_size() const {
    const std::int64_t size = (((m_charWidth * 3) >> 3) + 1) & ~1;
    return toInt(static_cast<double>(size * m_pointScale) / cFullPointScale) & ~1;
}

void BasicProfileGraph::draw_data_series(CDC* dc) {
    m_lineEnds = line_ends();
    const int size = symbol_size();
    for (const auto& profile : m_profiles) draw_profile(dc, *profile, size);
}

void BasicProfileGraph::draw_profile(CDC* dc, ProfileInfo& profile, int size) {
    CPen pen(PS_SOLID, line_width(), profile.GetColor());
    CBrush brush(profile.GetColor());
    const Selected selectedPen(*dc, &pen);
    const Selected selectedBrush(*dc, &brush);
    DashedPath path(profile.GetLineStyle(), m_scaleFactor);
    bool connected = false;
    for (int i = 0; i < m_scaleCount; ++i) {
        const bool isScore = IsScore(profile, i);
        if (isScore) {
            const CPoint point = score_place(i, drawn_score(&profile, i));
            plot_data(dc, point.x, point.y, size, i, &profile);
            if (connected) {
                path.LineTo(*dc, point);
            } else {
                path.MoveTo(point);
            }
        }
        connected = isScore && !m_lineEnds[static_cast<std::size_t>(i)];
    }
}

void BasicProfileGraph::plot_data(CDC* dc, int x, int y, int size, int scaleIndex,
                                  ProfileInfo* profile) {
    if (profile->GetPointType() == ProfilePointType::LineOnly) return;
    draw_symbol(dc, x, y, size, profile->GetSymbol());
    if (profile->GetPointType() == ProfilePointType::SymbolAndValue) {
        draw_point_text(dc, x, y, size, scaleIndex, profile);
    }
}

void BasicProfileGraph::draw_symbol(CDC* dc, int x, int y, int size, int symbol) {
    drawNumberedMark(*dc, x, y, size, size, symbol);
}

BasicProfileGraph::Slope BasicProfileGraph::slope_to(const ProfileInfo& profile, int scaleIndex,
                                                     int neighbor) const {
    if (neighbor < 0 || neighbor >= m_scaleCount || !IsScore(profile, neighbor)) return {};
    const auto first = static_cast<std::size_t>(std::min(scaleIndex, neighbor));
    if (first < m_lineEnds.size() && m_lineEnds[first]) return {};
    const auto inRange = [this](double score) {
        return std::clamp<double>(score, std::min(m_scores.min, m_scores.max),
                                  std::max(m_scores.min, m_scores.max));
    };
    return {true,
            compare(inRange(profile.GetValue(neighbor)), inRange(profile.GetValue(scaleIndex)))};
}

CString BasicProfileGraph::point_text(const ProfileInfo& profile, int scaleIndex) const {
    const double value = profile.GetValue(scaleIndex);
    return formatDouble(value, 0, std::clamp(profile.GetDecimals(), 0, cMaxDecimals));
}

CString BasicProfileGraph::point_label(const ProfileInfo& profile, int scaleIndex, char towardMin,
                                       char towardMax) const {
    const double value = profile.GetValue(scaleIndex);
    const auto [lowest, highest] = std::minmax(m_scores.min, m_scores.max);
    CString label = point_text(profile, scaleIndex);
    if (value >= lowest && value <= highest) return label;
    const bool isPastMax = (value > highest) == (m_scores.max >= m_scores.min);
    return label + "\\s" + (isPastMax ? towardMax : towardMin);
}

// The legend.

bool BasicProfileGraph::legend_is_drawn() const {
    return m_legend != ProfileLegend::None && legend_entry_count() > 0;
}

template <class Visit>
int BasicProfileGraph::flow_entries(const CDC& dc, int width, Visit visit) const {
    const int fixed = (cSampleCharacters + 1) * m_charWidth + legend_symbol_size();
    int row = 0;
    int left = 0;
    for (int i = 0; i < legend_entry_count(); ++i) {
        const int entry = fixed + dc.GetTextExtent(legend_entry_name(i)).cx;
        if (left > 0 && left > width - entry) {
            ++row;
            left = 0;
        }
        visit(i, left, row);
        left += entry + m_charWidth;
    }
    return row + 1;
}

void BasicProfileGraph::take_legend_room(CDC* dc, CRect& rect) {
    if (m_legend != ProfileLegend::Below || !legend_is_drawn()) return;
    m_legendArea = rect;
    m_legendArea.DeflateRect(m_charWidth, 0);
    const int rows = flow_entries(*dc, m_legendArea.Width(), [](int, int, int) {});
    m_legendArea.top = rect.bottom - rows * m_charHeight - m_charHeight / 2;
    rect.bottom = m_legendArea.top;
}

void BasicProfileGraph::calc_legend_rect(CDC* dc) {
    if (m_legend == ProfileLegend::Below) {
        m_legendRect = m_legendArea;
        return;
    }
    int widest = 0;
    const int count = legend_entry_count();
    for (int i = 0; i < count; ++i) {
        const int width = dc->GetTextExtent(legend_entry_name(i)).cx;
        widest = std::max(widest, width);
    }
    const CRect plot = plot_rect();
    m_legendRect.left = plot.left + part(plot.right - plot.left, m_legendX);
    m_legendRect.top = plot.top + part(plot.bottom - plot.top, m_legendY);
    m_legendRect.right = m_legendRect.left + cEntryCharacters * m_charWidth + widest;
    m_legendRect.bottom = m_legendRect.top + (count + 1) * m_charHeight;
}

void BasicProfileGraph::draw_line_legends(CDC* dc) {
    if (!legend_is_drawn()) return;
    calc_legend_rect(dc);
    const RestoredState restored(*dc);
    dc->SelectStockObject(NULL_PEN);
    dc->SelectStockObject(HOLLOW_BRUSH);
    dc->SetTextAlign(TA_LEFT | TA_TOP);
    if (m_legend == ProfileLegend::Below) {
        flow_entries(*dc, m_legendRect.Width(), [&](int i, int left, int row) {
            draw_legend_entry(dc, i, m_legendRect.left + left,
                              m_legendRect.top + row * m_charHeight);
        });
        return;
    }
    int top = m_legendRect.top;
    for (int i = 0; i < legend_entry_count(); ++i, top += m_charHeight) {
        draw_legend_entry(dc, i, m_legendRect.left, top);
    }
}

void BasicProfileGraph::draw_legend_entry(CDC* dc, int index, int left, int top) {
    left += legend_symbol_size();
    draw_legend_sample(dc, index, left, top + m_charHeight / 2);
    dc->TextOut(left + (cSampleCharacters + 1) * m_charWidth, top, legend_entry_name(index));
}

void BasicProfileGraph::draw_legend_sample(CDC* dc, int index, int left, int y) {
    draw_sample(dc, GetProfile(index), left, y);
}

void BasicProfileGraph::draw_sample(CDC* dc, const ProfileInfo& profile, int left, int y) {
    CPen pen(PS_SOLID, line_width(), profile.GetColor());
    CBrush brush(profile.GetColor());
    const Selected selectedPen(*dc, &pen);
    const Selected selectedBrush(*dc, &brush);
    const int length = cSampleCharacters * m_charWidth;
    DashedPath path(profile.GetLineStyle(), m_scaleFactor);
    path.MoveTo({left, y});
    path.LineTo(*dc, {left + length, y});
    if (profile.GetPointType() == ProfilePointType::LineOnly) return;
    draw_symbol(dc, left + length / 2, y, legend_symbol_size(), profile.GetSymbol());
}

}  // namespace tessalink
