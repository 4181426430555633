#include "report/tidy/detail/RtfReader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include "platform/files/CFile.h"
#include "report/detail/CharClasses.h"
#include "report/detail/TextSearch.h"

namespace tessalink::detail {

namespace {

using Kind = RtfPiece::Kind;

constexpr char cControl = '\\';
constexpr char cOpen = '{';
constexpr char cClose = '}';
constexpr char cCommandSign = '@';
constexpr std::string_view cParagraph = "par";

/// The first character from `text` on, up to `end`, that text does not have; NULs stand behind it.
const char* findTextStop(const char* text, const char* end) {
    for (; text < end; text += sizeof(std::uint64_t)) {
        const std::uint64_t word = loadEight(text);
        const std::uint64_t marks = markFirst(word, cControl) | markFirst(word, cOpen) |
                                    markFirst(word, cClose) | markFirst(word, cCommandSign);
        if (marks != 0) return std::min(text + firstMarked(marks), end);
    }
    return end;
}

unsigned digitOf(char ch) {
    return static_cast<unsigned>(ch - '0');
}

std::optional<unsigned> hexDigit(char ch) {
    if (isDigit(ch)) return digitOf(ch);
    const char small = lower(ch);
    if (small < 'a' || small > 'f') return std::nullopt;
    return static_cast<unsigned>(small - 'a' + 10);
}

/// A range of characters, and the key that types them.
struct Typed {
    char32_t first;
    char32_t last;
    char key;
};

constexpr Typed cTypedCharacters[] = {
    {0x20, 0x3F, '\0'},     {0x41, 0x5B, '\0'},    {0x5D, 0x7A, '\0'},    {0x7C, 0x7C, '\0'},
    {0x7E, 0x7E, '\0'},     {0xA0, 0xA0, ' '},     {0x2000, 0x200A, ' '}, {0x2010, 0x2015, '-'},
    {0x2018, 0x201B, '\''}, {0x201C, 0x201F, '"'}, {0x202F, 0x202F, ' '}, {0x2212, 0x2212, '-'}};

/// The same in the code pages that texts can be in, which agree on these.
constexpr Typed cTypedBytes[] = {
    {0x91, 0x92, '\''}, {0x93, 0x94, '"'}, {0x96, 0x97, '-'}, {0xA0, 0xA0, ' '}};

constexpr char32_t cInvisible[] = {0xAD, 0x200B, 0x200C, 0x200D, 0x2060, 0xFEFF};

template <std::size_t COUNT>
char keyOf(char32_t character, const Typed (&ranges)[COUNT]) {
    for (const Typed& range : ranges) {
        if (character < range.first || character > range.last) continue;
        return range.key != '\0' ? range.key : static_cast<char>(character);
    }
    return '\0';
}

}  // namespace

char keyOfByte(char byte) {
    constexpr unsigned firstOfPage = 0x80;
    const auto code = static_cast<unsigned char>(byte);
    return code < firstOfPage ? keyOf(code, cTypedCharacters) : keyOf(code, cTypedBytes);
}

RtfReader::RtfReader(CFile& file)
    : m_file(file),
      m_block(cSlack + (file.GetLength() < cSmallBlockSize ? cSmallBlockSize : cBlockSize)) {
    m_file.SeekToBegin();
}

void RtfReader::fill() {
    const std::size_t left = m_end - m_next;
    std::memmove(m_block.data(), m_block.data() + m_next, left);
    m_blockStart += m_next;
    m_next = 0;
    const std::size_t room = m_block.size() - cSlack - left;
    const std::size_t count = m_file.Read(m_block.data() + left, room);
    m_isLast = count < room;
    m_end = left + count;
    std::memset(m_block.data() + m_end, 0, cSlack);
}

inline const RtfPiece& RtfReader::finish(Kind kind, std::size_t end, char typed) {
    m_piece.kind = kind;
    m_piece.typed = typed;
    m_piece.isMark = m_piece.isUnicode = false;
    m_piece.unicodeCount = m_groups.back().unicodeCount;
    m_piece.raw = {m_block.data() + m_next, end - m_next};
    m_piece.first = m_blockStart + m_next;
    m_next = end;
    return m_piece;
}

inline const RtfPiece& RtfReader::finish_shown(Kind kind, std::size_t end, char typed) {
    return finish(is_hidden() ? Kind::hidden : kind, end, typed);
}

const RtfPiece& RtfReader::Next() {
    if (m_end - m_next < cLongestToken && !m_isLast) fill();
    if (m_next == m_end) return read_end();
    if (m_binary > 0) return read_binary();
    return read();
}

const RtfPiece& RtfReader::NextRun() {
    if (m_end - m_next < cLongestToken && !m_isLast) fill();
    const std::size_t start = m_next;
    while (is_run()) read();
    if (m_next == start) return Next();
    const std::size_t end = m_next;
    m_next = start;
    return finish(Kind::markup, end);
}

/// Whether the next piece belongs to a run, and lies in the block.
bool RtfReader::is_run() const {
    const bool isInBlock = m_isLast ? m_next < m_end : m_end - m_next >= cLongestToken;
    if (!isInBlock || m_binary > 0) return false;
    const char ch = m_block[m_next];
    return ch != cCommandSign && !(ch == cClose && m_groups.size() == 1 && m_tooDeep == 0);
}

inline const RtfPiece& RtfReader::read() {
    switch (m_block[m_next]) {
        case cControl:
            return read_control();
        case cOpen:
            return read_open();
        case cClose:
            return read_close();
        case cCommandSign:
            return read_at();
        default:
            return read_text();
    }
}

const RtfPiece& RtfReader::read_end() {
    const bool isCut = m_groups.size() > 1 || m_tooDeep > 0 || m_binary > 0;
    return finish(isCut ? Kind::cut : Kind::end, m_end);
}

const RtfPiece& RtfReader::read_text() {
    if (m_fallback > 0) {
        const bool isShown = !isLineEnd(m_block[m_next]);
        m_fallback -= isShown;
        return finish_shown(isShown ? Kind::fallback : Kind::text, m_next + 1);
    }
    const char* start = m_block.data() + m_next;
    const char* stop = findTextStop(start, m_block.data() + m_end);
    return finish_shown(Kind::text, m_next + static_cast<std::size_t>(stop - start));
}

const RtfPiece& RtfReader::read_at() {
    const bool isHidden = is_hidden() || m_fallback > 0;
    if (m_fallback > 0) --m_fallback;
    return finish(isHidden ? Kind::hiddenCommand : Kind::command, m_next + 1);
}

const RtfPiece& RtfReader::read_open() {
    m_fallback = 0;
    if (m_groups.size() > cMaxGroups) {
        m_wasTooDeep = true;
        ++m_tooDeep;
        return finish(Kind::open, m_next + 1);
    }
    Group group = m_groups.back();
    group.isFlow = group.isStarred = false;
    m_groups.push_back(group);
    return finish(Kind::open, m_next + 1);
}

const RtfPiece& RtfReader::read_close() {
    m_fallback = 0;
    if (m_tooDeep > 0) {
        --m_tooDeep;
        return finish(Kind::close, m_next + 1);
    }
    if (m_groups.size() == 1) return finish(Kind::unopened, m_next + 1);
    const bool isFlow = m_groups.back().isFlow;
    m_groups.pop_back();
    return finish(isFlow ? Kind::flow : Kind::close, m_next + 1);
}

const RtfPiece& RtfReader::read_binary() {
    const std::size_t count = std::min<std::uint64_t>(m_binary, m_end - m_next);
    m_binary -= count;
    const bool hasCommand = std::memchr(m_block.data() + m_next, cCommandSign, count) != nullptr;
    return finish(hasCommand ? Kind::hiddenCommand : Kind::hidden, m_next + count);
}

const RtfPiece& RtfReader::read_control() {
    const char next = m_next + 1 < m_end ? m_block[m_next + 1] : '\0';
    return isLetter(next) ? read_word() : read_symbol(next);
}

const RtfPiece& RtfReader::read_symbol(char symbol) {
    const std::size_t end = std::min(m_next + 2, m_end);
    if (symbol == '*') {
        m_groups.back().isStarred = true;
        return finish(Kind::markup, end);
    }
    if (symbol == '\'') return read_hex();
    if (m_fallback > 0) {
        --m_fallback;
        return finish_shown(Kind::fallback, end);
    }
    switch (symbol) {
        case '~':
            return finish_shown(Kind::character, end, ' ');
        case '_':
            return finish_shown(Kind::character, end, '-');
        case '\t':
            return finish_shown(Kind::character, end, '\t');
        case cOpen:
        case cClose:
            return finish_shown(Kind::character, end, symbol);
        case cControl:
            return finish_shown(Kind::character, end);
        case '\r':
        case '\n':
            return finish_shown(Kind::lineBreak, end);
        default:
            return finish_shown(Kind::markup, end);
    }
}

const RtfPiece& RtfReader::read_hex() {
    constexpr unsigned base = 16;
    constexpr std::size_t prefix = 2;
    std::size_t end = std::min(m_next + prefix, m_end);
    unsigned byte = 0;
    for (std::size_t i = 0; i < 2 && end < m_end; ++i, ++end) {
        const auto digit = hexDigit(m_block[end]);
        if (!digit) break;
        byte = byte * base + *digit;
    }
    if (m_fallback > 0) {
        --m_fallback;
        return finish_shown(Kind::fallback, end);
    }
    return finish_shown(Kind::character, end, keyOfByte(static_cast<char>(byte)));
}

const RtfPiece& RtfReader::read_word() {
    const char* const start = m_block.data() + m_next + 1;
    const char* p = start;
    while (isLetter(*p)) ++p;
    p = std::min(p, start + cMaxLetters);
    const std::string_view name(start, static_cast<std::size_t>(p - start));
    const bool isNegative = *p == '-' && isDigit(p[1]);
    p += isNegative;
    const char* const digits = p;
    std::uint64_t number = 0;
    while (isDigit(*p) && p != digits + cMaxDigits) number = number * 10 + digitOf(*p++);
    const bool hasNumber = p != digits;
    const bool isMark = !hasNumber && name == cParagraph && (*p == cControl || isBlank(*p));
    p += *p == ' ';
    m_fallback = 0;
    constexpr std::uint64_t most = INT32_MAX;
    const auto size = static_cast<int>(std::min(number, most));
    finish_word({name, hasNumber, isNegative ? -size : size},
                std::min(static_cast<std::size_t>(p - m_block.data()), m_end));
    m_piece.isMark = isMark;
    return m_piece;
}

bool RtfReader::enter(RtfRole role, Group& group) {
    const bool isFlow = role == RtfRole::flow;
    const bool isHidden = !isFlow && (role == RtfRole::hidden || group.isStarred);
    group.isStarred = false;
    if (isFlow || isHidden) {
        group.isFlow = isFlow;
        group.isHidden = isHidden;
    }
    return isFlow || isHidden;
}

inline const RtfPiece& RtfReader::finish_word(const Control& control, std::size_t end) {
    const RtfWord& word = cRtfWordTable.Find(control.name);
    const bool isPlain = word.role == RtfRole::formatting && !m_groups.back().isStarred;
    return isPlain ? finish(Kind::markup, end) : finish_special(word, control, end);
}

const RtfPiece& RtfReader::finish_special(const RtfWord& word, const Control& control,
                                          std::size_t end) {
    constexpr int maxCount = 8;
    const auto [name, hasNumber, number] = control;
    Group ignored;
    Group& group = m_tooDeep > 0 ? ignored : m_groups.back();
    if (enter(word.role, group)) return finish(group.isFlow ? Kind::flow : Kind::markup, end);
    switch (word.role) {
        case RtfRole::character:
            return finish_shown(Kind::character, end, word.typed);
        case RtfRole::lineBreak:
            return finish_shown(Kind::lineBreak, end);
        case RtfRole::unicode:
            if (hasNumber) return finish_unicode(number, end);
            break;
        case RtfRole::unicodeCount:
            group.unicodeCount = static_cast<std::uint16_t>(std::clamp(number, 0, maxCount));
            break;
        case RtfRole::binary:
            m_binary = static_cast<std::uint64_t>(std::max(number, 0));
            break;
        case RtfRole::deleted:
            group.isDeleted = !hasNumber || number != 0;
            break;
        default:
            break;
    }
    return finish(Kind::markup, end);
}

const RtfPiece& RtfReader::finish_unicode(int number, std::size_t end) {
    constexpr int wrap = 65536;
    m_fallback = m_groups.back().unicodeCount;
    const auto character = static_cast<char32_t>(number < 0 ? number + wrap : number);
    const bool isInvisible =
        std::find(std::begin(cInvisible), std::end(cInvisible), character) != std::end(cInvisible);
    if (isInvisible) return finish_shown(Kind::invisible, end);
    finish_shown(Kind::character, end, keyOf(character, cTypedCharacters));
    m_piece.isUnicode = true;
    return m_piece;
}

}  // namespace tessalink::detail
