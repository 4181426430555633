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
    /// Takes the characters over; the other text is empty afterwards.
    CString& operator=(CString&& other) noexcept;
    /// The text becomes a copy of what is given.
    CString& operator=(const char* text) { return Assign(viewOf(text)); }
    /// The characters, NULs included.
    CString& operator=(std::string_view text) { return Assign(text); }
    /// The text becomes this one character.
    CString& operator=(char ch) { return Assign(std::string_view(&ch, 1)); }

    /// The number of characters, without the NUL behind them.
    int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
    /// Whether there is no character.
    bool IsEmpty() const noexcept { return m_text.empty(); }
    /// Removes all characters.
    void Empty() noexcept { m_text.clear(); }
    /// Makes room for `length` characters, so that appending up to there moves nothing.
    void Preallocate(int length);

    /// The character at `index`, which counts from 0.
    char GetAt(int index) const { return m_text[checkedIndex(index)]; }
    /// Replaces the character at `index`.
    void SetAt(int index, char ch) { m_text[checkedIndex(index)] = ch; }
    /// The same as GetAt.
    char operator[](int index) const { return GetAt(index); }

    /// The text with a NUL behind it; valid until the text changes.
    operator const char*() const noexcept { return m_text.c_str(); }
    /// The text with a NUL behind it; valid until the text changes.
    const char* GetString() const noexcept { return m_text.c_str(); }
    /// The whole text, NULs included, without copying; valid until the text changes.
    std::string_view View() const noexcept { return m_text; }

    /// Adds the text at the end.
    CString& operator+=(const CString& text) { return Append(text.View()); }
    /// Adds the text at the end.
    CString& operator+=(const char* text) { return Append(viewOf(text)); }
    /// Adds the characters at the end, NULs included.
    CString& operator+=(std::string_view text) { return Append(text); }
    /// Adds the character at the end.
    CString& operator+=(char ch) { return Append(std::string_view(&ch, 1)); }
    /// Adds the character at the end.
    void AppendChar(char ch) { *this += ch; }
    /// Adds the characters at the end, NULs included, and returns this text.
    CString& Append(std::string_view text) {
        checkLength(m_text.size() + text.size());
        m_text.append(text);
        return *this;
    }

    /// Negative, 0 or positive as this text is before, equal to or after the other.
    int Compare(const char* text) const;
    /// Compare with A to Z taken as a to z.
    int CompareNoCase(const char* text) const;

    /// The characters from `first` on, at most `count` of them.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    /// The first characters, at most `count` of them.
    CString Left(int count) const;
    /// The last characters, at most `count` of them.
    CString Right(int count) const;
    /// The longest start made only of characters of the set, or only of others.
    CString SpanIncluding(const char* set) const;
    /// The longest start in which no character of the set occurs.
    CString SpanExcluding(const char* set) const;

    /// The position of the first (ReverseFind: last) occurrence at or after `start`; -1 for none
    /// and for a start outside the text.
    int Find(char ch, int start = 0) const;
    int Find(const char* text, int start = 0) const;
    /// The position of the last occurrence; -1 for none.
    int ReverseFind(char ch) const;
    /// The position of the first character that is one of the set; -1 for none.
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

    /// A to z become A to Z. Returns this text.
    CString& MakeUpper();
    /// A to Z become a to z. Returns this text.
    CString& MakeLower();
    /// The last character comes first. Returns this text.
    CString& MakeReverse();

    /// Removes white space (blank and 9 to 13), one character, or the characters of a set from both
    /// ends or one.
    CString& Trim();
    CString& Trim(char ch);
    CString& Trim(const char* set);
    /// As Trim, at the start only.
    CString& TrimLeft();
    /// As Trim, at the start only.
    CString& TrimLeft(char ch);
    /// As Trim, at the start only.
    CString& TrimLeft(const char* set);
    /// As Trim, at the end only.
    CString& TrimRight();
    /// As Trim, at the end only.
    CString& TrimRight(char ch);
    /// As Trim, at the end only.
    CString& TrimRight(const char* set);

    /// Makes the text from a printf format: flags, width, precision and length modifiers as in C
    /// (and I32, I64) for d i u x X o c s p f F e E g G a A %. The outcome never depends on the
    /// process locale. A format with anything else raises CInvalidArgException. Arguments may point
    /// into this text. The text is unchanged when the call raises.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    /// Format with the arguments in a list.
    void FormatV(const char* format, std::va_list arguments) __attribute__((format(printf, 2, 0)));
    /// Adds what Format would make at the end.
    void AppendFormat(const char* format, ...) __attribute__((format(printf, 2, 3)));

    /// Takes the text with this number from the host's string table (HostServices.h). Returns
    /// nonzero, or 0 with the text emptied when there is none.
    BOOL LoadString(UINT id);

    /// A buffer for at least `minLength` characters and a NUL, with the text in it, to write to
    /// until ReleaseBuffer, which sets the length: to the first NUL when it is negative. Between
    /// the two no other member may be called.
    char* GetBuffer(int minLength = 0);
    /// A buffer for exactly `length` characters: the text has this length at once, and needs no
    /// ReleaseBuffer.
    char* GetBufferSetLength(int length);
    /// Ends the writing into a buffer, see GetBuffer.
    void ReleaseBuffer(int length = -1);

    /// Whether both have the same characters.
    friend bool operator==(const CString& a, const CString& b) noexcept {
        return a.m_text == b.m_text;
    }
    /// Whether both have the same characters; `b` up to its NUL.
    friend bool operator==(const CString& a, const char* b) noexcept {
        return a.View() == viewOf(b);
    }
    /// Whether both have the same characters.
    friend bool operator==(const CString& a, std::string_view b) noexcept { return a.View() == b; }
    /// The order of the characters as unsigned bytes.
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept {
        return a.View() <=> b.View();
    }
    /// The order of the characters as unsigned bytes.
    friend std::strong_ordering operator<=>(const CString& a, const char* b) noexcept {
        return a.View() <=> viewOf(b);
    }
    /// The order of the characters as unsigned bytes.
    friend std::strong_ordering operator<=>(const CString& a, std::string_view b) noexcept {
        return a.View() <=> b;
    }

    /// Both texts, one behind the other.
    friend CString operator+(const CString& a, const CString& b) {
        return Join(a.View(), b.View());
    }
    /// Both texts, one behind the other.
    friend CString operator+(const CString& a, const char* b) { return Join(a.View(), viewOf(b)); }
    /// Both texts, one behind the other.
    friend CString operator+(const char* a, const CString& b) { return Join(viewOf(a), b.View()); }
    /// Both texts, one behind the other.
    friend CString operator+(const CString& a, std::string_view b) { return Join(a.View(), b); }
    /// Both texts, one behind the other.
    friend CString operator+(std::string_view a, const CString& b) { return Join(a, b.View()); }
    /// The text with the character behind it.
    friend CString operator+(const CString& a, char b) { return Join(a.View(), {&b, 1}); }
    /// The text with the character in front of it.
    friend CString operator+(char a, const CString& b) { return Join({&a, 1}, b.View()); }
    /// Both texts, in the storage of the first one.
    friend CString operator+(CString&& a, const CString& b) { return std::move(a += b); }
    /// Both texts, in the storage of the first one.
    friend CString operator+(CString&& a, const char* b) { return std::move(a += b); }
    /// Both texts, in the storage of the first one.
    friend CString operator+(CString&& a, std::string_view b) { return std::move(a += b); }
    /// The text with the character behind it, in its storage.
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
