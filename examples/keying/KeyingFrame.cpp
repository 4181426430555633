#include "examples/keying/KeyingFrame.h"

#include <algorithm>

namespace keying {

namespace {

constexpr UINT cSheetId = 1;
constexpr UINT cNumbersId = 2;
constexpr std::uint32_t cProfileId = 1;
constexpr unsigned cMissingRaw = 999;
constexpr UINT cF2 = 0x71;
constexpr UINT cF3 = 0x72;
constexpr int cLineHeight = 22;
constexpr double cMissing = tessalink::ProfileChart::cDefaultMissingValue;

constexpr std::array<const char*, cDomains> cDomainNames = {
    "Neuroticism", "Extraversion", "Openness", "Agreeableness", "Conscient."};

/// The names and ranges of the forty scales, for as long as the program runs.
struct ScaleTable {
    std::array<CString, cScales> texts;
    std::array<const char*, cScales> names{};
    std::array<int, std::size_t{2} * cScales> ranges{};

    ScaleTable() {
        for (std::size_t i = 0; i < cScales; ++i) {
            texts[i].Format("Scale %d", static_cast<int>(i) + 1);
            names[i] = texts[i].GetString();
            ranges[2 * i + 1] = 32;
        }
    }
};

ScaleTable& scaleTable() {
    static ScaleTable table;
    return table;
}

CStringArray* textsOf(const char* const* names, int count) {
    auto* row = new CStringArray;
    row->Add("");
    for (int i = 0; i < count; ++i) row->Add(names[i]);
    return row;
}

double* missingScores(int count) {
    auto* scores = new double[static_cast<std::size_t>(count)];
    std::fill_n(scores, count, cMissing);
    return scores;
}

void setUp(ProfileGraphCtl& graph, CStringArray* texts, int count) {
    graph.SetXLegend(texts, nullptr, nullptr, nullptr);
    graph.SetYLegend("T");
    graph.AddBand(40, 60, RGB(222, 235, 225));
    graph.AddHorzLine(50);
    graph.AddProfile("Person", missingScores(count), RGB(0, 60, 140), cProfileId);
    graph.ShowLegend(0);
}

}  // namespace

void DomainScores::Change(int item, int answer) {
    if (item < 0 || item >= cItems) return;
    const auto domain = static_cast<std::size_t>(item % cDomains);
    const int valid = answer >= 1 && answer <= 5 ? answer : 0;
    int& own = m_answers[static_cast<std::size_t>(item)];
    m_sums[domain] += valid - own;
    m_counts[domain] += (valid != 0) - (own != 0);
    own = valid;
}

double DomainScores::TScore(int domain) const {
    const auto index = static_cast<std::size_t>(domain);
    if (2 * m_counts[index] < cItems / cDomains) return cMissing;
    const double mean = static_cast<double>(m_sums[index]) / m_counts[index];
    return 50 + 10 * (mean - 3) / 0.6;
}

double scaleTScore(int raw) {
    return 50 + 10 * (raw - 16) / 6.0;
}

KeyingFrame::KeyingFrame()
    : m_sheet(cItems, "[1|1|1][2|2|2][3|3|3][4|4|4][5|5|5][0=?|0|0]", -1),
      m_numbers(cScales, scaleTable().names.data(), scaleTable().ranges.data(), cMissingRaw),
      m_domains(20, 80, 10, 5, 1, 0, 320, 200),
      m_scales(20, 80, 10, 5, 1, 0, 640, 220),
      m_hook([this](CWnd& window, UINT message, WPARAM key, CPoint) {
          return message == WM_KEYDOWN && use_key(window, key);
      }) {
    m_sheet.UseBells(true);
    setUp(m_domains, textsOf(cDomainNames.data(), cDomains), cDomains);
    std::array<CString, cScales> numbers;
    std::array<const char*, cScales> names{};
    for (std::size_t i = 0; i < cScales; ++i) {
        numbers[i].Format("%d", static_cast<int>(i) + 1);
        names[i] = numbers[i];
    }
    setUp(m_scales, textsOf(names.data(), cScales), cScales);
}

KeyingFrame::~KeyingFrame() {
    DestroyWindow();
}

BOOL KeyingFrame::CreateFrame(const RECT& rect) {
    if (Create("Answer sheet", rect) == 0) return 0;
    m_sheet.SetFocus();
    return 1;
}

int KeyingFrame::OnCreate(CREATESTRUCTA* create) {
    if (CFrameWnd::OnCreate(create) != 0) return -1;
    m_sheet.Create(CRect(), cSheetId, this);
    m_numbers.Create(CRect(), cNumbersId, this);
    constexpr DWORD cStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    m_domains.Create(CRect(), this, 3, cStyle, "Domains");
    m_scales.Create(CRect(), this, 4, cStyle, "Scales");
    for (StatusLine* line : {&m_sheetLine, &m_numbersLine}) {
        line->CWnd::Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(), this, 5);
    }
    place();
    m_sheet.ReportCounts(true);
    return 0;
}

void KeyingFrame::place() {
    CRect client;
    GetClientRect(&client);
    const int x = client.right * 11 / 20;
    const int y = client.bottom / 2;
    m_sheet.MoveWindow(CRect(0, 0, x, y - cLineHeight));
    m_sheetLine.MoveWindow(CRect(0, y - cLineHeight, x, y));
    m_domains.MoveWindow(CRect(x, 0, client.right, y));
    m_numbers.MoveWindow(CRect(0, y, x, client.bottom - cLineHeight));
    m_numbersLine.MoveWindow(CRect(0, client.bottom - cLineHeight, x, client.bottom));
    m_scales.MoveWindow(CRect(x, y, client.right, client.bottom));
}

void KeyingFrame::OnSize(UINT type, int width, int height) {
    CFrameWnd::OnSize(type, width, height);
    place();
}

void KeyingFrame::show_domains() {
    double* scores = missingScores(cDomains);
    for (int i = 0; i < cDomains; ++i) scores[i] = m_scores.TScore(i);
    m_domains.UpdateProfile(cProfileId, nullptr, scores);
    m_domains.Invalidate();
}

void KeyingFrame::show_scales() {
    double* scores = missingScores(cScales);
    for (int i = 0; i < cScales; ++i) {
        const int raw = m_numbers.GetItem(i);
        if (raw != static_cast<int>(cMissingRaw)) scores[i] = scaleTScore(raw);
    }
    m_scales.UpdateProfile(cProfileId, nullptr, scores);
    m_scales.Invalidate();
}

BOOL KeyingFrame::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT*) {
    const auto& header = *reinterpret_cast<NMHDR*>(lParam);
    const auto& change = *reinterpret_cast<LISTCTL_NOTIFICATION*>(lParam);
    if (header.code == LIST_VALUE_CHANGED && wParam == cSheetId) {
        m_scores.Change(change.itemIndex, change.value);
        show_domains();
    } else if (header.code == LIST_VALUE_CHANGED) {
        show_scales();
    } else if (header.code == LIST_PASS_COMPLETE) {
        (wParam == cSheetId ? m_sheetPass : m_numbersPass).End(SecondPass::State::Complete);
    }
    show_counts();
    return 1;
}

// Second passes.

void SecondPass::Begin() {
    if (state != State::On && list.BeginVerification(keying)) state = State::On;
}

void SecondPass::End(State now) {
    if (state != State::On) return;
    state = now;
    list.EndVerification();
}

bool KeyingFrame::use_key(const CWnd& window, WPARAM key) {
    if (key != cF2 && key != cF3) return false;
    for (SecondPass* pass : {&m_sheetPass, &m_numbersPass}) {
        if (!pass->list.Holds(&window)) continue;
        key == cF2 ? pass->Begin() : pass->End(SecondPass::State::None);
    }
    show_counts();
    return true;
}

// Counts.

namespace {

CString countsOf(const char* what, int keyed, int all, const char* keys) {
    CString text;
    text.Format("%s %d, missing %d, of %d.   %s", what, keyed, all - keyed, all, keys);
    return text;
}

CString passOf(const SecondPass& pass, const char* remedy) {
    const tessalink::DoubleKeying& keying = pass.keying;
    CString text;
    if (pass.state == SecondPass::State::Complete) {
        text.Format("Second pass complete: all %d keyed twice, %d corrected.   F2 keys twice",
                    keying.SettledCount(), keying.CorrectionCount());
    } else if (keying.OpenItem() >= 0) {
        text.Format("Number %d differs: %s.", keying.OpenItem() + 1, remedy);
    } else {
        text.Format("Second pass: %d of %d keyed twice, %d corrected.   F3 ends it",
                    keying.SettledCount(), pass.list.GetItemCount(), keying.CorrectionCount());
    }
    return text;
}

}  // namespace

int KeyingFrame::keyed_numbers() const {
    int keyed = 0;
    for (int i = 0; i < cScales; ++i) {
        if (m_numbers.GetItem(i) != static_cast<int>(cMissingRaw)) ++keyed;
    }
    return keyed;
}

void KeyingFrame::show_counts() {
    constexpr auto cNone = SecondPass::State::None;
    m_sheetLine.Show(m_sheetPass.state != cNone
                         ? passOf(m_sheetPass, "Backspace, then the right answer")
                         : countsOf("Answered", m_sheet.GetAnsweredCount(), cItems,
                                    "Backspace takes back, F2 keys twice"));
    m_numbersLine.Show(m_numbersPass.state != cNone
                           ? passOf(m_numbersPass, "key the right one")
                           : countsOf("Scores", keyed_numbers(), cScales, "F2 keys twice"));
}

void StatusLine::Show(const CString& text) {
    CString before;
    GetWindowText(before);
    if (text == before) return;
    SetWindowText(text);
    Invalidate();
}

void StatusLine::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    CString text;
    GetWindowText(text);
    dc.FillSolidRect(&client, tessalink::GetSysColor(COLOR_BTNFACE));
    dc.SetTextColor(tessalink::GetSysColor(COLOR_BTNTEXT));
    dc.TextOut(4, (client.Height() - dc.GetTextExtent(text).cy) / 2, text);
}

}  // namespace keying
