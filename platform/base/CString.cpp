#include "platform/base/CString.h"

#include <algorithm>
#include <cstring>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/HostServices.h"
#include "platform/base/detail/FormatText.h"

namespace {

constexpr std::string_view cWhiteSpace = " \t\n\v\f\r";

char toUpper(char ch) {
    return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 'a' + 'A') : ch;
}

char toLower(char ch) {
    return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
}

int asIndex(std::size_t position) {
    return position == std::string_view::npos ? -1 : static_cast<int>(position);
}

int asSign(std::strong_ordering order) {
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

// Counts and positions of the substring functions: below zero is zero.
std::size_t atLeastZero(int value) {
    return value > 0 ? static_cast<std::size_t>(value) : 0;
}

}  // namespace

void CString::raiseInvalidArg() {
    AfxThrowInvalidArgException();
}

CString::CString(char ch, int repeat) : m_text(atLeastZero(repeat), ch) {}

CString::CString(const char* text, int length) {
    const std::size_t count = checkedCount(length);
    if (count == 0) return;
    if (text == nullptr) raiseInvalidArg();
    m_text.assign(text, count);
}

CString& CString::operator=(CString&& other) noexcept {
    if (this != &other) {
        m_text = std::move(other.m_text);
        other.m_text.clear();
    }
    return *this;
}

CString& CString::Assign(std::string_view text) {
    checkLength(text.size());
    m_text.assign(text);
    return *this;
}

void CString::Preallocate(int length) {
    m_text.reserve(checkedCount(length));
}

CString CString::Join(std::string_view a, std::string_view b) {
    checkLength(a.size() + b.size());
    CString joined;
    joined.m_text.reserve(a.size() + b.size());
    joined.m_text.append(a).append(b);
    return joined;
}

int CString::Compare(const char* text) const {
    return asSign(View() <=> viewOf(text));
}

int CString::CompareNoCase(const char* text) const {
    const std::string_view other = viewOf(text);
    const auto less = [](char a, char b) {
        return static_cast<unsigned char>(toLower(a)) <=> static_cast<unsigned char>(toLower(b));
    };
    return asSign(std::lexicographical_compare_three_way(m_text.begin(), m_text.end(),
                                                         other.begin(), other.end(), less));
}

CString CString::Mid(int first) const {
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const {
    const std::size_t start = std::min(atLeastZero(first), m_text.size());
    return CString(View().substr(start, atLeastZero(count)));
}

CString CString::Left(int count) const {
    return CString(View().substr(0, atLeastZero(count)));
}

CString CString::Right(int count) const {
    const std::size_t length = std::min(atLeastZero(count), m_text.size());
    return CString(View().substr(m_text.size() - length));
}

CString CString::SpanIncluding(const char* set) const {
    return CString(View().substr(0, m_text.find_first_not_of(viewOf(set))));
}

CString CString::SpanExcluding(const char* set) const {
    return CString(View().substr(0, m_text.find_first_of(viewOf(set))));
}

int CString::Find(char ch, int start) const {
    return start < 0 ? -1 : asIndex(m_text.find(ch, atLeastZero(start)));
}

int CString::Find(const char* text, int start) const {
    return start < 0 ? -1 : asIndex(m_text.find(viewOf(text), atLeastZero(start)));
}

int CString::ReverseFind(char ch) const {
    return asIndex(m_text.rfind(ch));
}

int CString::FindOneOf(const char* set) const {
    return asIndex(m_text.find_first_of(viewOf(set)));
}

int CString::Replace(char from, char to) {
    const auto found = std::count(m_text.begin(), m_text.end(), from);
    std::replace(m_text.begin(), m_text.end(), from, to);
    return from == to ? 0 : static_cast<int>(found);
}

int CString::Replace(const char* from, const char* to) {
    const std::string_view old = viewOf(from);
    if (old.empty()) return 0;
    const std::string_view changed = viewOf(to);
    std::string result;
    int count = 0;
    std::size_t start = 0;
    for (std::size_t at; (at = m_text.find(old, start)) != std::string::npos; ++count) {
        result.append(m_text, start, at - start).append(changed);
        checkLength(result.size());
        start = at + old.size();
    }
    if (count == 0) return 0;
    result.append(m_text, start);
    checkLength(result.size());
    m_text.swap(result);
    return count;
}

int CString::Remove(char ch) {
    return static_cast<int>(std::erase(m_text, ch));
}

int CString::Insert(int index, char ch) {
    checkLength(m_text.size() + 1);
    m_text.insert(std::min(atLeastZero(index), m_text.size()), 1, ch);
    return GetLength();
}

int CString::Insert(int index, const char* text) {
    const std::string_view inserted = viewOf(text);
    checkLength(m_text.size() + inserted.size());
    m_text.insert(std::min(atLeastZero(index), m_text.size()), inserted);
    return GetLength();
}

int CString::Delete(int index, int count) {
    const std::size_t start = atLeastZero(index);
    if (start < m_text.size()) m_text.erase(start, atLeastZero(count));
    return GetLength();
}

CString& CString::MakeUpper() {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), toUpper);
    return *this;
}

CString& CString::MakeLower() {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), toLower);
    return *this;
}

CString& CString::MakeReverse() {
    std::reverse(m_text.begin(), m_text.end());
    return *this;
}

CString& CString::TrimEnds(std::string_view set, bool left, bool right) {
    if (right) m_text.erase(m_text.find_last_not_of(set) + 1);
    if (left) m_text.erase(0, m_text.find_first_not_of(set));
    return *this;
}

CString& CString::Trim() {
    return TrimEnds(cWhiteSpace, true, true);
}
CString& CString::Trim(char ch) {
    return TrimEnds({&ch, 1}, true, true);
}
CString& CString::Trim(const char* set) {
    return TrimEnds(viewOf(set), true, true);
}
CString& CString::TrimLeft() {
    return TrimEnds(cWhiteSpace, true, false);
}
CString& CString::TrimLeft(char ch) {
    return TrimEnds({&ch, 1}, true, false);
}
CString& CString::TrimLeft(const char* set) {
    return TrimEnds(viewOf(set), true, false);
}
CString& CString::TrimRight() {
    return TrimEnds(cWhiteSpace, false, true);
}
CString& CString::TrimRight(char ch) {
    return TrimEnds({&ch, 1}, false, true);
}
CString& CString::TrimRight(const char* set) {
    return TrimEnds(viewOf(set), false, true);
}

void CString::FormatV(const char* format, std::va_list arguments) {
    std::string text;
    tessalink::detail::appendFormat(text, format, arguments);
    checkLength(text.size());
    m_text.swap(text);
}

void CString::Format(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::AppendFormat(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    CString text;
    text.FormatV(format, arguments);
    va_end(arguments);
    *this += text;
}

BOOL CString::LoadString(UINT id) {
    Empty();
    if (tessalink::hostServices().stringTable(id, *this)) return 1;
    Empty();
    return 0;
}

char* CString::GetBuffer(int minLength) {
    m_text.resize(std::max(checkedCount(minLength), m_text.size()));
    return m_text.data();
}

char* CString::GetBufferSetLength(int length) {
    m_text.resize(checkedCount(length));
    return m_text.data();
}

void CString::ReleaseBuffer(int length) {
    const std::size_t end = length < 0 ? std::strlen(m_text.c_str()) : checkedCount(length);
    if (end > m_text.size()) raiseInvalidArg();
    m_text.resize(end);
}
