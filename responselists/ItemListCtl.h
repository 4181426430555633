#pragma once

#include <cstdint>
#include <vector>

#include "core/ResponseSet.h"
#include "responselists/ColumnListCtl.h"

/// Told on request (ItemListCtl::ReportCounts) when the number of answered items or of all items
/// has changed, by the user or by the program.
struct ITEMLIST_COUNTS_NOTIFICATION {
    NMHDR hdr{};            ///< who tells, and what: ITEMLIST_COUNTS
    std::int32_t answered;  ///< how many items have an answer
    std::int32_t missing;   ///< how many have none
    std::int32_t total;     ///< how many there are
};

/// The code of ITEMLIST_COUNTS_NOTIFICATION.
inline constexpr int ITEMLIST_COUNTS = 3;

/// A list for keying in the answers to numbered test items, one keystroke per item: every item
/// shows its number and the captions of its responses; a key that belongs to a response circles it,
/// and the next item becomes current. A key that is held down counts once. The backspace takes the
/// last answers back. A click on a caption chooses that response, and its item stays current.
///
/// In a second pass the answer of the first one is circled at a difference and the other one boxed;
/// each further character rings the bell until the backspace takes the second answer back, so that
/// who keys on without listening settles nothing. A click needs no backspace. What was keyed before
/// the pass can't be taken back any more.
///
/// The responses are defined as "[Yes|Yy|1][No|Nn|2]" (see core/ResponseSet.h); a code that is left
/// out is the response's place, codes have 16 bits. An index out of range raises
/// CInvalidArgException.
///
/// The parent is told of every change that the user makes (LISTCTL_NOTIFICATION): first the value,
/// then the counts, then the next item.
class TESSALINK_API ItemListCtl : public ColumnListCtl {
    DECLARE_DYNAMIC(ItemListCtl)

public:
    /// The answer to an item without response.
    static constexpr std::uint16_t cNoResponse = 0xFFFF;
    /// So many answers can be taken back.
    static constexpr std::size_t cMaxUndo = 100'000;

    /// As SetLegend; an empty list when that refuses.
    ItemListCtl(int count, const char* definition, int defaultResponse);
    ~ItemListCtl() override;

    /// Replaces the list: so many items, each with the default response, an index within its
    /// responses, or none when that is negative. Returns 1; an invalid definition, a default beyond
    /// the responses, a negative count or no definition give 0, the former two an empty list.
    int SetLegend(int count, const char* definition, int defaultResponse);
    /// The code of an item's answer; cNoResponse without one.
    std::uint16_t GetItem(int index) const { return m_answers[checked(index)]; }
    /// Gives an item another answer. The parent is not told of its value.
    void SetItem(int index, std::uint16_t value);
    /// Removes items and responses, and ends a second pass.
    void Clear();

    /// Takes the last answer back and makes its item current; false when there is none to take
    /// back, or the list is read-only.
    bool Undo();
    /// Whether the parent is told how many items are answered; it is at once.
    void ReportCounts(bool report);
    /// How many items have an answer.
    int GetAnsweredCount() const { return m_answered; }
    /// How many items have none.
    int GetMissingCount() const { return m_count - m_answered; }

    /// For who does not look at the screen; off at start: whether the bell sounds at a character
    /// that belongs to no response, and when a key has answered the last item in a first pass.
    void UseBells(bool use) { m_usesBells = use; }

    UINT OnGetDlgCode() override;
    void OnChar(UINT ch, UINT repeat, UINT flags) override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    void OnLButtonDown(UINT flags, CPoint point) override;
    void OnLButtonDblClk(UINT flags, CPoint point) override;
    void OnSetFocus(CWnd* old) override;
    void OnKillFocus(CWnd* next) override;

protected:
    /// One response, with the width of its caption.
    struct Response {
        CString caption;          ///< what is shown
        CString keys;             ///< the characters that select it
        std::uint16_t value = 0;  ///< its code
        int width = 0;            ///< of the caption, in pixels
    };
    /// The responses of an item.
    using ResponseList = std::vector<Response>;

    ItemListCtl();

    /// Reads the definition into m_sets (and m_setOfItem); false when it is invalid.
    virtual bool parse_def_str(std::string_view definition, int count);
    /// Reads responses off the front of a text.
    static bool parse_responses(std::string_view& text, ResponseList& responses);
    /// The responses of an item; null when it has none.
    virtual const ResponseList* responses_of(int index) const;
    CString cell_name(int index) const override { return number_text(index).Trim(); }
    int cell_value(int index) const override { return GetItem(index); }
    CString cell_reading(int index, int value) const override;
    bool cell_is_keyed(int index) const override;
    void keep_value(int index, int value) override;
    void pass_changed() override { m_undo.clear(); }
    /// Makes the font of numbers and captions.
    virtual void create_fonts(int height);
    void measure_cells(CDC& dc) override;
    void draw_cell(CDC& dc, int index, const CRect& rect) override;
    /// Draws number, captions and the marks around them.
    void draw_item(CDC& dc, int index, const CRect& rect);
    /// Makes a response of the current item its answer; false when it differs in a second pass.
    bool set_curr_cell_value_index(int response);
    /// Goes to the next item, if there is one.
    void advance_to_next_cell();

    std::vector<ResponseList> m_sets;  ///< the responses of all items, or several sets
    int m_firstNumber = 1;             ///< the number that is shown for item 0

private:
    enum class Mark { Circle, Box };
    struct Undone {
        int item;
        std::uint16_t before;
    };

    std::size_t checked(int index) const;
    void reset();
    bool is_default(int response) const;
    void store(int index, std::uint16_t value);
    bool is_stopped() const;
    void tell_counts();
    int response_of_key(UINT ch) const;
    CString number_text(int index) const;
    void draw_mark(CDC& dc, const CRect& caption, Mark mark) const;
    int response_at(int index, int x) const;

    std::vector<std::uint16_t> m_answers;
    std::vector<Undone> m_undo;
    int m_answered = 0;
    bool m_reportsCounts = false;
    bool m_usesBells = false;
    bool m_isStopped = false;  ///< at a difference, until the backspace is pressed
    int m_numberWidth = 0;
    mutable CFont m_font;
    mutable CFont m_boldFont;
};

/// A list whose items have different responses: "[T|Tt][F|Ff]:0-9,12;[1|1][2|2][3|3]:10,11" gives
/// the first ten items and the thirteenth two responses, the others three. Items are numbered from
/// 0 here; a number past the last item raises CInvalidArgException and leaves an empty list. An
/// item that no set names shows its number only.
class TESSALINK_API ItemListCtl2 : public ItemListCtl {
    DECLARE_DYNAMIC(ItemListCtl2)

public:
    /// As that of ItemListCtl, with a definition as told above.
    ItemListCtl2(int count, const char* definition, int defaultResponse);

    /// The number that is shown for item 0; 1 at start.
    void SetFirstItemNumber(int number);
    /// The number that is shown for item 0.
    int GetFirstItemNumber() const { return m_firstNumber; }

protected:
    bool parse_def_str(std::string_view definition, int count) override;
    const ResponseList* responses_of(int index) const override;

private:
    bool assign_items(std::string_view& text, int set);

    std::vector<std::int32_t> m_setOfItem;  ///< -1: none
};
