#include "report/check/detail/PageWords.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "platform/base/CodePage.h"
#include "platform/base/Utf8.h"
#include "platform/files/CFile.h"
#include "report/detail/CharClasses.h"
#include "report/tidy/detail/RtfReader.h"

namespace tessalink::detail {

namespace {

using Kind = RtfPiece::Kind;

constexpr std::string_view cRtfStart = "{\\rtf";

bool startsAsRtf(CFile& file) {
    std::string start(cRtfStart.size(), '\0');
    file.SeekToBegin();
    start.resize(file.Read(start.data(), start.size()));
    return start == cRtfStart;
}

struct NamedCharacter {
    std::string_view name;
    char32_t character;
};

constexpr NamedCharacter cNamed[] = {
    {"\\endash", 0x2013},    {"\\emdash", 0x2014},    {"\\lquote", 0x2018}, {"\\rquote", 0x2019},
    {"\\ldblquote", 0x201C}, {"\\rdblquote", 0x201D}, {"\\bullet", 0x2022}, {"\\\\", '\\'}};

/// The character that a piece shows; nothing for one that has none of its own, a page number.
std::optional<char32_t> characterOf(const RtfPiece& piece) {
    constexpr int hexadecimal = 16;
    constexpr std::size_t prefix = 2;  // of "\'e4" and "\u228"
    const char* const end = piece.raw.data() + piece.raw.size();
    int number = 0;
    if (piece.isUnicode) {
        std::from_chars(piece.raw.data() + prefix, end, number);
        return static_cast<char16_t>(number);
    }
    if (piece.raw.starts_with("\\'")) {
        std::from_chars(piece.raw.data() + prefix, end, number, hexadecimal);
        return toUnicode(static_cast<char>(number));
    }
    for (const NamedCharacter& named : cNamed) {
        if (piece.raw.starts_with(named.name)) return named.character;
    }
    if (piece.typed == '\0') return std::nullopt;
    return static_cast<char32_t>(piece.typed);
}

bool isSpace(char32_t ch) {
    return ch <= ' ' || ch == 0xA0;
}

/// The words near one place while they are gathered.
class Vicinity {
public:
    /// `line`: what stands before the place.
    explicit Vicinity(std::u32string_view line)
        : m_text(line.substr(line.size() - std::min(line.size(), cWordsReach + 1))),
          m_before(m_text.size()) {}

    bool IsFull() const { return m_text.size() - m_before > cWordsReach; }
    void Add(char32_t ch) { m_text += ch; }
    /// What was gathered, without words that are cut at the ends.
    std::string Words() const {
        std::u32string_view text = m_text;
        // Words end at blanks and before commands.
        constexpr std::u32string_view ends = U" @";
        const std::size_t last = text.find_last_of(ends);
        if (IsFull() && last != std::u32string_view::npos && last > m_before) {
            text = text.substr(0, last);
        }
        const std::size_t first = text.find_first_of(ends);
        if (m_before > cWordsReach && first < m_before) text.remove_prefix(first);
        std::string words;
        for (const char32_t ch : text) {
            if (ch != U' ') {
                appendUtf8(words, ch);
            } else if (!words.empty() && words.back() != ' ') {
                words += ' ';
            }
        }
        if (words.ends_with(' ')) words.pop_back();
        return words;
    }

private:
    std::u32string m_text;
    std::size_t m_before;
};

/// Follows a page, and gathers the words near places on it.
class PageWalk {
public:
    explicit PageWalk(std::size_t count) : m_words(count) {}

    std::size_t Begun() const { return m_begun; }
    bool IsOver() const { return m_begun == m_words.size() && m_open.empty(); }
    /// Whether words are gathered for no place, and are to be for one.
    bool IsIdle() const { return m_open.empty() && m_begun < m_words.size(); }
    void Begin() { m_open.push_back({m_begun++, Vicinity(m_line)}); }
    void Add(char32_t ch) {
        if (isSpace(ch)) ch = U' ';
        if (!m_open.empty()) add_to_open(ch);
        m_line += ch;
        constexpr std::size_t kept = 2 * cWordsReach;
        if (m_line.size() > kept) m_line.erase(0, m_line.size() - cWordsReach - 1);
    }
    void EndLine() {
        const std::string line = Vicinity(m_line).Words();
        if (!line.empty()) m_lastLine = line;
        m_line.clear();
        for (const Open& open : m_open) {
            const std::string words = open.vicinity.Words();
            m_words[open.number] = words.empty() ? m_lastLine : words;
        }
        m_open.clear();
    }
    std::vector<std::string>& Words() { return m_words; }

private:
    struct Open {
        std::size_t number;
        Vicinity vicinity;
    };

    void add_to_open(char32_t ch) {
        for (Open& open : m_open) open.vicinity.Add(ch);
        std::erase_if(m_open, [this](const Open& open) {
            if (open.vicinity.IsFull()) m_words[open.number] = open.vicinity.Words();
            return open.vicinity.IsFull();
        });
    }

    std::u32string m_line;  ///< the end of what the line shows so far
    std::string m_lastLine;
    std::vector<Open> m_open;
    std::vector<std::string> m_words;
    std::size_t m_begun = 0;
};

}  // namespace

std::vector<std::string> wordsNear(CFile& file, std::span<const std::uint64_t> offsets) {
    PageWalk walk(offsets.size());
    const bool isRtf = startsAsRtf(file);
    const auto beginUpTo = [&](std::uint64_t end) {
        while (walk.Begun() < offsets.size() && offsets[walk.Begun()] <= end) walk.Begin();
    };
    // Of a text that no place is in or behind only the end counts.
    const auto firstNeeded = [&](const RtfPiece& piece) {
        constexpr std::size_t needed = 2 * cWordsReach;
        const std::size_t size = piece.raw.size();
        const bool isFar = walk.IsIdle() && offsets[walk.Begun()] > piece.first + size;
        return isFar && size > needed ? size - needed : 0;
    };
    RtfReader reader(file);
    while (!walk.IsOver()) {
        const RtfPiece& piece = reader.Next();
        const bool isLast = piece.kind == Kind::end || piece.kind == Kind::cut;
        beginUpTo(isLast ? UINT64_MAX : piece.first);
        if (isLast) break;
        switch (piece.kind) {
            case Kind::text:
            case Kind::command:
                for (std::size_t i = firstNeeded(piece); i < piece.raw.size(); ++i) {
                    beginUpTo(piece.first + i);
                    const char ch = piece.raw[i];
                    if (isLineEnd(ch) && isRtf) continue;
                    walk.Add(toUnicode(ch));
                }
                break;
            case Kind::character:
                if (const auto ch = characterOf(piece)) walk.Add(*ch);
                break;
            case Kind::lineBreak:
            case Kind::flow:
                walk.EndLine();
                break;
            default:
                break;
        }
    }
    walk.EndLine();
    return std::move(walk.Words());
}

}  // namespace tessalink::detail
