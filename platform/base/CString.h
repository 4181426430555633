#pragma once

#include <compare>
#include <cstdarg>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "platform/base/Export.h"
#include "platform/base/Types.h"

/// A text of 8-bit characters. It may hold NUL characters; where one is read as `const char*` it
/// ends there. Characters are compared, searched and ordered as unsigned bytes; upper and lower
/// case are those of ASCII. A null `const char*` argument is the empty text.
///
/// A position or count out of range raises CInvalidArgException, and so does a text that would pass
/// 2,147,483,647 characters; the text is then as it was before. Mid, Left and Right cut their
/// arguments to what the text has, as they always did.
class TESSALINK_API CString {
public:
    CString() noexcept = default;
    CString(const CString&) = default;
    CString(CString&& other) noexcept : m_text(std::move(other.m_text)) { other.m_text.clear(); }
    /// `repeat` times the character; none when it is not positive.
    explicit CString(char ch, int repeat = 1);
    CString(const char* text) : CString(viewOf(text)) {}
    /// The first `length` characters, NULs included; `text` may be null when `length` is 0.
    CString(const char* text, int length);
    CString(std::string_view text) : m_text(text) { checkLength(text.size()); }
    /// Takes the characters over without copying them.
    explicit CString(std::string&& text) : m_text(std::move(text)) { checkLength(m_text.size()); }
    ~CString() = default;

    CString& operator=(const CString&) = default;
    CString& operator=(CString&& other) noexcept;
    CString& operator=(const char* text) { return Assign(viewOf(text)); }
    CString& operator=(std::string_view text) { return Assign(text); }
    CString& operator=(char ch) { return Assign(std::string_view(&ch, 1)); }

    int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const noexcept { return m_text.empty(); }
    void Empty() noexcept { m_text.clear(); }
    /// Makes room for `length` characters, so that appending up to there moves nothing.
    void Preallocate(int length);

    char GetAt(int index) const { return m_text[checkedIndex(index)]; }
    void SetAt(int index, char ch) { m_text[checkedIndex(index)] = ch; }
    char operator[](int index) const { return GetAt(index); }

    /// The text with a NUL behind it; valid until the text changes.
    operator const char*() const noexcept { return m_text.c_str(); }
    const char* GetString() const noexcept { return m_text.c_str(); }
    /// The whole text, NULs included, without copying; valid until the text changes.
    std::string_view View() const noexcept { return m_text; }

    CString& operator+=(const CString& text) { return Append(text.View()); }
    CString& operator+=(const char* text) { return Append(viewOf(text)); }
    CString& operator+=(std::string_view text) { return Append(text); }
    CString& operator+=(char ch) { return Append(std::string_view(&ch, 1)); }
    void AppendChar(char ch) { *this += ch; }
    CString& Append(std::string_view text) {
        checkLength(m_text.size() + text.size());
        m_text.append(text);
        return *this;
    }

    /// Negative, 0 or positive as this text is before, equal to or after the other.
    int Compare(const char* text) const;
    int CompareNoCase(const char* text) const;

    /// The characters from `first` on, at most `count` of them.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;
    /// The longest start made only of characters of the set, or only of others.
    CString SpanIncluding(const char* set) const;
    CString SpanExcluding(const char* set) const;

    /// The position of the first (ReverseFind: last) occurrence at or after `start`; -1 for none
    /// and for a start outside the text.
    int Find(char ch, int start = 0) const;
    int Find(const char* text, int start = 0) const;
    int ReverseFind(char ch) const;
    int FindOneOf(const char* set) const;

    /// Changes every occurrence; returns how many. An empty `from` changes nothing.
    int Replace(char from, char to);
    int Replace(const char* from, const char* to);
    /// Removes every occurrence of the character; returns how many.
    int Remove(char ch);
    /// Inserts before `index` (behind the end when it is greater than the length, at the start when
    /// it is negative); returns the new length.
    int Insert(int index, char ch);
    int Insert(int index, const char* text);
    /// Deletes up to `count` characters from `index` on; returns the new length.
    int Delete(int index, int count = 1);

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    /// Removes white space (blank and 9 to 13), one character, or the characters of a set from both
    /// ends or one.
    CString& Trim();
    CString& Trim(char ch);
    CString& Trim(const char* set);
    CString& TrimLeft();
    CString& TrimLeft(char ch);
    CString& TrimLeft(const char* set);
    CString& TrimRight();
    CString& TrimRight(char ch);
    CString& TrimRight(const char* set);

    /// Makes the text from a printf format: flags, width, precision and length modifiers as in C
    /// (and I32, I64) for d i u x X o c s p f F e E g G a A %. The outcome never depends on the
    /// process locale. A format with anything else raises CInvalidArgException. Arguments may point
    /// into this text. The text is unchanged when the call raises.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void FormatV(const char* format, std::va_list arguments) __attribute__((format(printf, 2, 0)));
    void AppendFormat(const char* format, ...) __attribute__((format(printf, 2, 3)));

    /// Takes the text with this number from the host's string table (HostServices.h). Returns
    /// nonzero, or 0 with the text emptied when there is none.
    BOOL LoadString(UINT id);

    /// A buffer for at least `minLength` characters and a NUL, with the text in it, to write to
    /// until ReleaseBuffer, which sets the length: to the first NUL when it is negative. Between
    /// the two no other member may be called.
    char* GetBuffer(int minLength = 0);
    char* GetBufferSetLength(int length);
    void ReleaseBuffer(int length = -1);

    friend bool operator==(const CString& a, const CString& b) noexcept {
        return a.m_text == b.m_text;
    }
    friend bool operator==(const CString& a, const char* b) noexcept {
        return a.View() == viewOf(b);
    }
    friend bool operator==(const CString& a, std::string_view b) noexcept { return a.View() == b; }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept {
        return a.View() <=> b.View();
    }
    friend std::strong_ordering operator<=>(const CString& a, const char* b) noexcept {
        return a.View() <=> viewOf(b);
    }
    friend std::strong_ordering operator<=>(const CString& a, std::string_view b) noexcept {
        return a.View() <=> b;
    }

    friend CString operator+(const CString& a, const CString& b) {
        return Join(a.View(), b.View());
    }
    friend CString operator+(const CString& a, const char* b) { return Join(a.View(), viewOf(b)); }
    friend CString operator+(const char* a, const CString& b) { return Join(viewOf(a), b.View()); }
    friend CString operator+(const CString& a, std::string_view b) { return Join(a.View(), b); }
    friend CString operator+(std::string_view a, const CString& b) { return Join(a, b.View()); }
    friend CString operator+(const CString& a, char b) { return Join(a.View(), {&b, 1}); }
    friend CString operator+(char a, const CString& b) { return Join({&a, 1}, b.View()); }
    friend CString operator+(CString&& a, const CString& b) { return std::move(a += b); }
    friend CString operator+(CString&& a, const char* b) { return std::move(a += b); }
    friend CString operator+(CString&& a, std::string_view b) { return std::move(a += b); }
    friend CString operator+(CString&& a, char b) { return std::move(a += b); }

private:
    static constexpr std::size_t cMaxLength = std::numeric_limits<int>::max();

    static std::string_view viewOf(const char* text) noexcept {
        return text != nullptr ? std::string_view(text) : std::string_view();
    }
    [[noreturn]] static void raiseInvalidArg();
    static void checkLength(std::size_t length) {
        if (length > cMaxLength) [[unlikely]]
            raiseInvalidArg();
    }
    static std::size_t checkedCount(int count) {
        if (count < 0) [[unlikely]]
            raiseInvalidArg();
        return static_cast<std::size_t>(count);
    }
    std::size_t checkedIndex(int index) const {
        const auto position = static_cast<std::size_t>(static_cast<unsigned>(index));
        if (position >= m_text.size()) [[unlikely]]
            raiseInvalidArg();
        return position;
    }
    static CString Join(std::string_view a, std::string_view b);
    CString& Assign(std::string_view text);
    CString& TrimEnds(std::string_view set, bool left, bool right);

    std::string m_text;
};
