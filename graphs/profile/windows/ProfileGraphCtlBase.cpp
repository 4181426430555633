#include "graphs/profile/windows/ProfileGraphCtlBase.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "graphs/common/PlainLabel.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/CRectTracker.h"
#include "platform/windows/WindowSystem.h"

namespace tessalink {

namespace {

constexpr UINT_PTR cHoverTimer = 1;
/// While a hint is shown: has the mouse left the window?
constexpr UINT_PTR cLeaveTimer = 2;
constexpr int cPercent = 100;
/// Of the font of hints: of variable pitch, and a true-type one (4).
constexpr BYTE cPitchAndFamily = VARIABLE_PITCH | 4;

/// The format with %1 to %4 replaced, each text as it is.
CString filled(const CString& format, const std::array<CString, 4>& texts) {
    CString result;
    const std::string_view rest = format.View();
    for (std::size_t i = 0; i < rest.size(); ++i) {
        const bool isPlace =
            rest[i] == '%' && i + 1 < rest.size() && rest[i + 1] >= '1' && rest[i + 1] <= '4';
        if (isPlace) {
            result += texts[static_cast<std::size_t>(rest[++i] - '1')];
        } else {
            result += rest[i];
        }
    }
    return result;
}

bool isWithin(int value, int center, int radius) {
    return std::abs(std::int64_t{value} - center) <= radius;
}

}  // namespace

template <class Graph>
ProfileGraphWindow<Graph>::ProfileGraphWindow(int yMin, int yMax, int majorStep, int minorStep,
                                              int leftAxis, int rightAxis, int designWidth,
                                              int designHeight)
    : Graph(yMin, yMax, majorStep, minorStep, leftAxis, rightAxis, designWidth, designHeight) {
    const int height = -(2 * tessalink::GetSystemMetrics(SM_CYMENU) / 3);
    m_hintFont.CreateFont(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, OUT_TT_PRECIS,
                          CLIP_DEFAULT_PRECIS, PROOF_QUALITY, cPitchAndFamily, "Arial");
}

template <class Graph>
ProfileGraphWindow<Graph>::~ProfileGraphWindow() {
    this->DestroyWindow();
}

template <class Graph>
BOOL ProfileGraphWindow<Graph>::Create(const RECT& rect, CWnd* parent, UINT id, DWORD style,
                                       const char* name) {
    return CWnd::Create(nullptr, name != nullptr ? name : "", style, rect, parent, id);
}

template <class Graph>
void ProfileGraphWindow<Graph>::UseToolTips(int use) {
    m_hintsOn = use != 0;
    if (!m_hintsOn) hide_hint();
}

template <class Graph>
void ProfileGraphWindow<Graph>::SetHintFormat(const CString& format) {
    m_hintFormat = format;
    m_hintsOn = true;
}

template <class Graph>
void ProfileGraphWindow<Graph>::set_relation(std::uint16_t bit, int use) {
    m_relations = static_cast<std::uint16_t>(use != 0 ? m_relations | bit : m_relations & ~bit);
}

// Painting.

template <class Graph>
BOOL ProfileGraphWindow<Graph>::OnEraseBkgnd(CDC*) {
    return 1;  // the graph covers everything
}

template <class Graph>
void ProfileGraphWindow<Graph>::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    this->Draw(&dc, client);
    refresh_hint();
    if (GetFocus() != this || !is_point(m_cursorProfile, m_cursorScale)) return;
    // A ring of black in white shows on every ground.
    const CPoint place = point_place(m_cursorProfile, m_cursorScale);
    const RestoredState restored(dc);
    dc.SelectStockObject(HOLLOW_BRUSH);
    const int radius = std::max(this->m_charWidth, 6);
    for (const auto& [width, color] : {std::pair(3, cWhite), std::pair(1, cBlack)}) {
        CPen pen(PS_SOLID, width, color);
        const Selected selected(dc, &pen);
        dc.Ellipse(place.x - radius, place.y - radius, place.x + radius + 1, place.y + radius + 1);
    }
}

template <class Graph>
void ProfileGraphWindow<Graph>::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    Invalidate();
}

// Hints.

template <class Graph>
bool ProfileGraphWindow<Graph>::frame_is_active() const {
    const auto* main = DYNAMIC_DOWNCAST(CMDIFrameWnd, AfxGetMainWnd());
    return main == nullptr || main->MDIGetActive() == GetParentFrame();
}

template <class Graph>
void ProfileGraphWindow<Graph>::stop_tracking() {
    KillTimer(cHoverTimer);
    m_isTracking = false;
}

template <class Graph>
void ProfileGraphWindow<Graph>::hide_hint() {
    KillTimer(cLeaveTimer);
    if (m_tip.GetSafeHwnd() != nullptr) m_tip.Hide();
}

template <class Graph>
void ProfileGraphWindow<Graph>::OnMouseMove(UINT flags, CPoint point) {
    CWnd::OnMouseMove(flags, point);
    if (point != m_lastPoint) hide_hint();
    if (m_isTracking) {
        CRect client;
        GetClientRect(&client);
        m_isAtRest = false;
        if (!m_hintsOn || !client.PtInRect(point)) stop_tracking();
    } else if (m_hintsOn && frame_is_active()) {
        SetTimer(cHoverTimer, cHoverPeriod);
        m_isTracking = m_isAtRest = true;
    }
    m_lastPoint = point;
}

template <class Graph>
void ProfileGraphWindow<Graph>::OnTimer(UINT_PTR id) {
    CPoint cursor;
    CRect window;
    tessalink::GetCursorPos(&cursor);
    GetWindowRect(&window);
    const bool isInside = window.PtInRect(cursor);
    if (id == cLeaveTimer) {
        if (!isInside) hide_hint();
        return;
    }
    if (id != cHoverTimer) {
        CWnd::OnTimer(id);
        return;
    }
    if (!m_isAtRest) {
        m_isAtRest = true;
        return;
    }
    if (isInside && m_tip.IsWindowVisible() != 0) return;
    stop_tracking();
    CString text;
    CPoint point = m_lastPoint;
    if (isInside && OnHint(text, point) != 0) display_hint(text);
}

template <class Graph>
void ProfileGraphWindow<Graph>::show_tip(const CString& text) {
    CPoint point = m_lastPoint;
    ClientToScreen(&point);
    m_tip.ShowText(text, point, &m_hintFont);
}

template <class Graph>
void ProfileGraphWindow<Graph>::display_hint(CString& text) {
    show_tip(text);
    m_hintIsOfCursor = false;
    SetTimer(cLeaveTimer, cHoverPeriod);
}

// What was drawn anew may have other scores, or other places for them.
template <class Graph>
void ProfileGraphWindow<Graph>::refresh_hint() {
    if (m_tip.IsWindowVisible() == 0) return;
    CString text;
    CPoint point = m_lastPoint;
    if (!m_hintIsOfCursor) {
        if (OnHint(text, point) == 0) text.Empty();
    } else if (is_point(m_cursorProfile, m_cursorScale)) {
        text = cursor_text();
        m_lastPoint = point_place(m_cursorProfile, m_cursorScale);
    }
    if (text.IsEmpty()) {
        hide_hint();
    } else if (text != m_tip.GetText() || m_lastPoint != point) {
        show_tip(text);
    }
}

template <class Graph>
tessalink::ProfileInfo* ProfileGraphWindow<Graph>::profile_at(CPoint point, int& scale) const {
    if (this->m_yScale == 0 || this->m_scaleCount == 0) return nullptr;
    const double score = (this->m_plotBottom - point.y) / this->m_yScale + this->m_scores.min;
    if (score < this->m_scores.min || score > this->m_scores.max) return nullptr;
    // The scales lie at equal distances.
    const double first = this->dev_x(1);
    scale = toInt(std::floor((point.x - first) / this->m_xScale + 1.5));
    if (scale < 1 || scale > this->m_scaleCount) return nullptr;
    const int radius = this->m_charWidth / 2;
    if (!isWithin(point.x, this->dev_x(scale), radius)) return nullptr;
    const auto found =
        std::find_if(this->m_profiles.begin(), this->m_profiles.end(), [&](const auto& profile) {
            return this->IsScore(*profile, scale - 1) &&
                   isWithin(point.y, this->dev_y_in_plot(get_y_disp_val(scale, profile.get())),
                            radius);
        });
    return found != this->m_profiles.end() ? found->get() : nullptr;
}

template <class Graph>
BOOL ProfileGraphWindow<Graph>::OnHint(CString& text, CPoint& point) {
    int scale = 0;
    ProfileInfo* profile = profile_at(point, scale);
    if (profile == nullptr) return 0;
    text = format_hint_text(profile, scale);
    return 1;
}

template <class Graph>
double ProfileGraphWindow<Graph>::get_y_disp_val(int scale, ProfileInfo* profile) const {
    return profile->GetValue(scale - 1);
}

template <class Graph>
CString ProfileGraphWindow<Graph>::format_hint_value(ProfileInfo*, int, double value) const {
    return formatDouble(value, 1, m_decPlaces);
}

template <class Graph>
CString ProfileGraphWindow<Graph>::format_hint_text(ProfileInfo* profile, int scale) const {
    struct Relation {
        std::uint16_t bit;
        const char* sign;
        bool isLower;
    };
    constexpr Relation cRelations[] = {{cLessOrEqual, "<=", true},
                                       {cGreaterOrEqual, ">=", false},
                                       {cLess, "<", true},
                                       {cGreater, ">", false}};
    double value = get_y_disp_val(scale, profile);
    CString sign = "=";
    for (const Relation& relation : cRelations) {
        const double end = relation.isLower ? this->m_scores.labelStart : this->m_scores.labelEnd;
        const bool isBeyond = relation.isLower ? value <= end : value >= end;
        if ((m_relations & relation.bit) == 0 || !isBeyond) continue;
        value = end;
        sign = relation.sign;
        break;
    }
    return filled(m_hintFormat, {plainLabel(this->GetScaleText(scale)), sign,
                                 format_hint_value(profile, scale, value), profile->GetName()});
}

// The mouse.

template <class Graph>
void ProfileGraphWindow<Graph>::handle_mouse_down() {
    const WindowGuard alive(*this);
    BringWindowToTop();
    SetFocus();
    if (!alive || (GetStyle() & WS_CHILD) == 0) return;
    CWnd* frame = GetParentFrame();
    if (frame == nullptr || frame == AfxGetMainWnd() || frame->GetParent() == nullptr) return;
    frame->GetParent()->SendMessage(WM_MDIACTIVATE, reinterpret_cast<WPARAM>(frame->GetSafeHwnd()));
}

// A legend below everything stays there.
template <class Graph>
bool ProfileGraphWindow<Graph>::is_movable_legend(CPoint point) const {
    return this->m_legend == ProfileLegend::Inside && this->legend_is_drawn() &&
           this->m_legendRect.PtInRect(point);
}

template <class Graph>
void ProfileGraphWindow<Graph>::OnLButtonDown(UINT flags, CPoint point) {
    const WindowGuard alive(*this);
    handle_mouse_down();
    if (!alive) return;
    CWnd::OnLButtonDown(flags, point);
    if (is_movable_legend(point)) drag_legend(point);
}

template <class Graph>
void ProfileGraphWindow<Graph>::drag_legend(CPoint point) {
    stop_tracking();
    hide_hint();
    CRectTracker tracker(this->m_legendRect);
    const WindowGuard alive(*this);
    if (tracker.Track(this, point) == 0 || !alive) return;
    this->m_legendRect = tracker.m_rect;
    const CRect plot = this->plot_rect();
    const auto percent = [](int distance, int length) {
        return length == 0 ? 0 : toInt(std::floor(distance * 1.0 * cPercent / length + 0.5));
    };
    this->SetLegendPosition(percent(this->m_legendRect.left - plot.left, plot.Width()),
                            percent(this->m_legendRect.top - plot.top, plot.Height()));
    Invalidate();
}

template <class Graph>
BOOL ProfileGraphWindow<Graph>::OnSetCursor(CWnd* window, UINT hitTest, UINT message) {
    CPoint point;
    tessalink::GetCursorPos(&point);
    ScreenToClient(&point);
    if (!is_movable_legend(point)) {
        return CWnd::OnSetCursor(window, hitTest, message);
    }
    native()->SetCursor(tessalink::cMoveCursor);
    return 1;
}

// The keyboard.

template <class Graph>
UINT ProfileGraphWindow<Graph>::OnGetDlgCode() {
    return DLGC_WANTARROWS;
}

template <class Graph>
bool ProfileGraphWindow<Graph>::is_point(int profile, int scale) const {
    return profile >= 0 && profile < this->GetProfileCount() && scale >= 1 &&
           scale <= this->m_scaleCount && this->IsScore(this->GetProfile(profile), scale - 1);
}

template <class Graph>
CPoint ProfileGraphWindow<Graph>::point_place(int profile, int scale) const {
    ProfileInfo* info = this->m_profiles[static_cast<std::size_t>(profile)].get();
    return {this->dev_x(scale), this->dev_y_in_plot(get_y_disp_val(scale, info))};
}

template <class Graph>
void ProfileGraphWindow<Graph>::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    switch (key) {
        case VK_LEFT:
            return MoveCursor(-1, 0);
        case VK_RIGHT:
            return MoveCursor(1, 0);
        case VK_UP:
            return MoveCursor(0, -1);
        case VK_DOWN:
            return MoveCursor(0, 1);
        default:
            CWnd::OnKeyDown(key, repeat, flags);
    }
}

// The scale nearest to `scale` at which the profile has a score; 0 when it has none.
template <class Graph>
int ProfileGraphWindow<Graph>::nearest_score(int profile, int scale) const {
    for (int distance = 0; distance <= this->m_scaleCount; ++distance) {
        for (const int candidate : {scale - distance, scale + distance}) {
            if (is_point(profile, candidate)) return candidate;
        }
    }
    return 0;
}

// To the first profile with a score, counting on from one.
template <class Graph>
bool ProfileGraphWindow<Graph>::go_to_profile(int first, int step, int scale) {
    for (int profile = first; profile >= 0 && profile < this->GetProfileCount(); profile += step) {
        const int nearest = nearest_score(profile, scale);
        if (nearest == 0) continue;
        m_cursorProfile = profile;
        m_cursorScale = nearest;
        return true;
    }
    return false;
}

template <class Graph>
void ProfileGraphWindow<Graph>::MoveCursor(int scaleStep, int profileStep) {
    if (!is_point(m_cursorProfile, m_cursorScale)) {
        // The first key leads to the first point.
        if (go_to_profile(0, 1, 1)) show_cursor();
        return;
    }
    if (profileStep != 0) {
        const int next = m_cursorProfile + profileStep;
        if (go_to_profile(next, profileStep, m_cursorScale)) show_cursor();
        return;
    }
    int scale = m_cursorScale + scaleStep;
    while (scale >= 1 && scale <= this->m_scaleCount && !is_point(m_cursorProfile, scale)) {
        scale += scaleStep;
    }
    if (scaleStep == 0 || !is_point(m_cursorProfile, scale)) return;
    m_cursorScale = scale;
    show_cursor();
}

template <class Graph>
CString ProfileGraphWindow<Graph>::cursor_text() const {
    ProfileInfo* profile = this->m_profiles[static_cast<std::size_t>(m_cursorProfile)].get();
    return format_hint_text(profile, m_cursorScale);
}

template <class Graph>
void ProfileGraphWindow<Graph>::show_cursor() {
    hide_hint();
    Invalidate();
    UpdateWindow();
    const CString text = cursor_text();
    if (m_hintsOn) {
        m_lastPoint = point_place(m_cursorProfile, m_cursorScale);
        show_tip(text);
        m_hintIsOfCursor = true;
    }
    NotifyAccessible(AccessibleEvent::Focus, AccessibleFocusChild());
    NotifyAccessible(AccessibleEvent::Announcement, AccessibleFocusChild(), text);
}

template <class Graph>
void ProfileGraphWindow<Graph>::OnSetFocus(CWnd* old) {
    CWnd::OnSetFocus(old);
    Invalidate();
}

template <class Graph>
void ProfileGraphWindow<Graph>::OnKillFocus(CWnd* next) {
    CWnd::OnKillFocus(next);
    hide_hint();
    Invalidate();
}

template <class Graph>
void ProfileGraphWindow<Graph>::OnDestroy() {
    if (m_isTracking) stop_tracking();
    m_tip.DestroyWindow();
    CWnd::OnDestroy();
}

// Accessibility: the points, profile by profile.

template <class Graph>
AccessibleElement ProfileGraphWindow<Graph>::Accessible() const {
    AccessibleElement element = CWnd::Accessible();
    element.role = AccessibleRole::Graph;
    return element;
}

template <class Graph>
int ProfileGraphWindow<Graph>::AccessibleChildCount() const {
    return this->GetProfileCount() * this->m_scaleCount;
}

template <class Graph>
int ProfileGraphWindow<Graph>::AccessibleFocusChild() const {
    if (!is_point(m_cursorProfile, m_cursorScale)) return cNoAccessibleChild;
    return m_cursorProfile * this->m_scaleCount + m_cursorScale - 1;
}

template <class Graph>
AccessibleElement ProfileGraphWindow<Graph>::AccessibleChild(int index) const {
    AccessibleElement element;
    element.role = AccessibleRole::GraphPoint;
    element.isReadOnly = true;
    if (index < 0 || index >= AccessibleChildCount()) return element;
    const int profile = index / this->m_scaleCount;
    const int scale = index % this->m_scaleCount + 1;
    element.name =
        this->GetProfile(profile).GetName() + ", " + plainLabel(this->GetScaleText(scale));
    element.isFocused = index == AccessibleFocusChild() && GetFocus() == this;
    if (!is_point(profile, scale)) return element;
    ProfileInfo* info = this->m_profiles[static_cast<std::size_t>(profile)].get();
    element.value = format_hint_value(info, scale, get_y_disp_val(scale, info));
    const CPoint place = point_place(profile, scale);
    const int radius = std::max(this->m_charWidth / 2, 1);
    element.rect = CRect(place.x - radius, place.y - radius, place.x + radius, place.y + radius);
    return element;
}

template <class Graph>
void ProfileGraphWindow<Graph>::ChooseAccessibleChild(int index) {
    if (index < 0 || index >= AccessibleChildCount()) return;
    const int profile = index / this->m_scaleCount;
    const int scale = index % this->m_scaleCount + 1;
    if (!is_point(profile, scale)) return;
    m_cursorProfile = profile;
    m_cursorScale = scale;
    SetFocus();
    show_cursor();
}

template class ProfileGraphWindow<ProfileGraph>;
template class ProfileGraphWindow<ProfileGraph2>;
template class ProfileGraphWindow<ProfileGraph3>;

}  // namespace tessalink
