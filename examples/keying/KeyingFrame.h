#pragma once

#include <array>

#include "graphs/profile/windows/ProfileGraphCtl.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/WindowSystem.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"

namespace keying {

inline constexpr int cItems = 240;
inline constexpr int cDomains = 5;
inline constexpr int cScales = 40;

/// The sums of an answer sheet: item i belongs to domain i modulo 5, answers count from 1 to 5.
class DomainScores {
public:
    void Change(int item, int answer);
    /// The T-score of a domain; the missing value while less than half of its items are answered.
    double TScore(int domain) const;

private:
    std::array<int, cItems> m_answers{};  ///< 0: none
    std::array<int, cDomains> m_sums{};
    std::array<int, cDomains> m_counts{};
};

/// The T-score of a raw score of one of the forty scales.
double scaleTScore(int raw);

/// A line of text, which is also what assistive technology reads.
class StatusLine : public CWnd {
public:
    void Show(const CString& text);
    void OnPaint() override;
    BOOL OnEraseBkgnd(CDC*) override { return 1; }
};

/// A second pass over a list.
struct SecondPass {
    enum class State { None, On, Complete };

    ColumnListCtl& list;
    tessalink::DoubleKeying keying = {};
    State state = State::None;

    void Begin();
    void End(State now);
};

/// An answer sheet of 240 items and a list of forty raw scores, each beside a profile that follows
/// every keystroke, and above a line that counts what is keyed. F2 starts a second pass over the
/// list that has the focus, F3 ends it, and the backspace takes answers back.
class KeyingFrame : public CFrameWnd {
public:
    KeyingFrame();
    ~KeyingFrame() override;

    BOOL CreateFrame(const RECT& rect);
    ItemListCtl& Sheet() { return m_sheet; }
    NumberListCtl3& Numbers() { return m_numbers; }

    int OnCreate(CREATESTRUCTA* create) override;
    void OnSize(UINT type, int width, int height) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    void place();
    bool use_key(const CWnd& window, WPARAM key);
    int keyed_numbers() const;
    void show_counts();
    void show_domains();
    void show_scales();

    ItemListCtl m_sheet;
    NumberListCtl3 m_numbers;
    ProfileGraphCtl m_domains;
    ProfileGraphCtl m_scales;
    StatusLine m_sheetLine;
    StatusLine m_numbersLine;
    SecondPass m_sheetPass{m_sheet};
    SecondPass m_numbersPass{m_numbers};
    DomainScores m_scores;
    tessalink::InputHook m_hook;
};

}  // namespace keying
