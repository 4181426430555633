#pragma once

#include <cstdint>

#include "graphs/profile/ProfileGraph.h"
#include "graphs/profile/ProfileGraph2.h"
#include "graphs/profile/ProfileGraph3.h"
#include "platform/windows/CWnd.h"
#include "platform/windows/TipWindow.h"

namespace tessalink {

/// What the windows that show profile graphs have in common: ProfileGraphCtl to ProfileGraphCtl4.
/// The graph fills the client area.
///
/// Where the mouse rests for a period, or the arrows lead on the keyboard, a hint shows the exact
/// score of the point. Within a multi-document frame there are hints in the active document only.
/// The legend can be dragged to another place.
template <class Graph>
class TESSALINK_API ProfileGraphWindow : public CWnd, public Graph {
public:
    /// A profile of the graph.
    using ProfileInfo = tessalink::ProfileInfo;

    /// How long the mouse has to rest, in milliseconds.
    static constexpr UINT cHoverPeriod = 200;

    /// The eight values of the graph's constructor.
    ProfileGraphWindow(int yMin, int yMax, int majorStep, int minorStep, int leftAxis,
                       int rightAxis, int designWidth, int designHeight);
    ~ProfileGraphWindow() override;

    /// Creates the child window; a null name is an empty one. Returns nonzero on success.
    BOOL Create(const RECT& rect, CWnd* parent, UINT id, DWORD style, const char* name);

    /// The decimals of scores in hints; 0 at start.
    void SetDecPlaces(unsigned short places) { m_decPlaces = places; }
    /// Whether there are hints; on at start.
    void UseToolTips(int use);
    /// The text of hints, in which %1 is the scale, %2 the relation, %3 the score and %4 the
    /// profile; "%1 %2 %3 (%4)" at start. Hints are on afterwards.
    void SetHintFormat(const CString& format);
    /// Whether scores at the ends of the labels and beyond show as "<=" and ">=" the end.
    void UseLe(int use) { set_relation(cLessOrEqual, use); }
    /// See UseLe.
    void UseGe(int use) { set_relation(cGreaterOrEqual, use); }

    /// Builds the hint for a point of the client area; returns whether there is one.
    virtual BOOL OnHint(CString& text, CPoint& point);
    /// Shows a hint below the point that the mouse rests on.
    void display_hint(CString& text);
    /// Goes from point to point, as the arrows do: to the next score of the profile in steps of
    /// scales, or to the next profile with any score, there to the nearest scale. At the ends it
    /// stays.
    void MoveCursor(int scaleStep, int profileStep);

    void OnPaint() override;
    BOOL OnEraseBkgnd(CDC* dc) override;
    void OnMouseMove(UINT flags, CPoint point) override;
    void OnTimer(UINT_PTR id) override;
    void OnLButtonDown(UINT flags, CPoint point) override;
    BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message) override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    UINT OnGetDlgCode() override;
    void OnSetFocus(CWnd* old) override;
    void OnKillFocus(CWnd* next) override;
    void OnSize(UINT type, int width, int height) override;
    void OnDestroy() override;
    AccessibleElement Accessible() const override;
    int AccessibleChildCount() const override;
    AccessibleElement AccessibleChild(int index) const override;
    int AccessibleFocusChild() const override;
    void ChooseAccessibleChild(int index) override;
    using CWnd::Create;

protected:
    /// Scores from the upper end of the labels on show as ">=" that.
    static constexpr std::uint16_t cGreaterOrEqual = 1;
    /// Scores up to the lower end of the labels show as "<=" that.
    static constexpr std::uint16_t cLessOrEqual = 2;
    /// Scores from the upper end of the labels on show as ">" that.
    static constexpr std::uint16_t cGreater = 4;
    /// Scores up to the lower end of the labels show as "<" that.
    static constexpr std::uint16_t cLess = 8;

    /// What every press of a button does first: the window comes to the top, gets the focus, and
    /// its document becomes the active one.
    void handle_mouse_down();
    /// Sets or clears one of the four signs.
    void set_relation(std::uint16_t bit, int use);

    /// The parts of a hint; `scale` counts from 1.
    virtual CString format_hint_text(ProfileInfo* profile, int scale) const;
    /// The score in a hint, and the sign before it.
    virtual CString format_hint_value(ProfileInfo* profile, int scale, double value) const;
    /// The score that a hint tells and that the point stands at.
    virtual double get_y_disp_val(int scale, ProfileInfo* profile) const;

private:
    bool frame_is_active() const;
    void stop_tracking();
    void hide_hint();
    void refresh_hint();
    void show_tip(const CString& text);
    CString cursor_text() const;
    bool is_movable_legend(CPoint point) const;
    void drag_legend(CPoint point);
    ProfileInfo* profile_at(CPoint point, int& scale) const;
    bool is_point(int profile, int scale) const;
    int nearest_score(int profile, int scale) const;
    bool go_to_profile(int first, int step, int scale);
    CPoint point_place(int profile, int scale) const;
    void show_cursor();

    bool m_isTracking = false;
    bool m_isAtRest = false;
    CPoint m_lastPoint;
    CFont m_hintFont;
    TipWindow m_tip;
    unsigned short m_decPlaces = 0;
    bool m_hintsOn = true;
    std::uint16_t m_relations = 0;
    CString m_hintFormat = "%1 %2 %3 (%4)";
    int m_cursorProfile = -1;  ///< the point that the keyboard has led to
    int m_cursorScale = 0;
    bool m_hintIsOfCursor = false;
};

extern template class ProfileGraphWindow<ProfileGraph>;
extern template class ProfileGraphWindow<ProfileGraph2>;
extern template class ProfileGraphWindow<ProfileGraph3>;

}  // namespace tessalink
