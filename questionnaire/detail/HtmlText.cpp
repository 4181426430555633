#include "questionnaire/detail/HtmlText.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>

#include "platform/base/Utf8.h"
#include "questionnaire/detail/FieldText.h"

namespace tessalink::detail {

namespace {

/// Characters that labels of questionnaires name, by their names in HTML.
struct Entity {
    std::string_view name;
    char32_t character;
};
constexpr Entity cEntities[] = {
    {"amp", '&'},       {"lt", '<'},       {"gt", '>'},       {"quot", '"'},     {"apos", '\''},
    {"nbsp", ' '},      {"auml", 0xE4},    {"ouml", 0xF6},    {"uuml", 0xFC},    {"Auml", 0xC4},
    {"Ouml", 0xD6},     {"Uuml", 0xDC},    {"szlig", 0xDF},   {"agrave", 0xE0},  {"ccedil", 0xE7},
    {"egrave", 0xE8},   {"eacute", 0xE9},  {"ecirc", 0xEA},   {"ntilde", 0xF1},  {"oslash", 0xF8},
    {"aring", 0xE5},    {"aelig", 0xE6},   {"deg", 0xB0},     {"euro", 0x20AC},  {"ndash", 0x2013},
    {"mdash", 0x2014},  {"lsquo", 0x2018}, {"rsquo", 0x2019}, {"ldquo", 0x201C}, {"rdquo", 0x201D},
    {"hellip", 0x2026}, {"bull", 0x2022},  {"frac12", 0xBD},  {"times", 0xD7},   {"iexcl", 0xA1},
    {"iquest", 0xBF}};
constexpr std::size_t cMaxEntity = 10;
constexpr std::string_view cCommentStart = "<!--";
constexpr std::string_view cCommentEnd = "-->";
/// Elements whose text is not shown.
constexpr std::string_view cHidden[] = {"style", "script"};

bool isLetter(char ch) {
    return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z');
}

bool isSpace(char ch) {
    return ch == ' ' || ch == '\t' || ch == '\r' || ch == '\n';
}

/// The character of "#8217" or "#x2019".
std::optional<char32_t> numberedCharacter(std::string_view digits) {
    constexpr std::uint32_t last = 0x10FFFF;
    constexpr int hexadecimal = 16;
    digits.remove_prefix(1);
    const bool isHexadecimal = digits.starts_with('x') || digits.starts_with('X');
    if (isHexadecimal) digits.remove_prefix(1);
    std::uint32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [behind, error] =
        std::from_chars(digits.data(), end, number, isHexadecimal ? hexadecimal : 10);
    const bool isSurrogate = number >= 0xD800 && number <= 0xDFFF;
    if (error != std::errc() || behind != end || number > last || isSurrogate) return std::nullopt;
    return number < ' ' || number == 0xA0 ? U' ' : static_cast<char32_t>(number);
}

/// Takes an entity off the start of a text.
std::optional<char32_t> takeEntity(std::string_view& text) {
    const std::size_t end = text.substr(0, cMaxEntity).find(';');
    if (text[0] != '&' || end == std::string_view::npos || end < 2) return std::nullopt;
    const std::string_view name = text.substr(1, end - 1);
    std::optional<char32_t> character;
    if (name[0] == '#') {
        character = numberedCharacter(name);
    } else {
        const auto* const entity = std::find_if(std::begin(cEntities), std::end(cEntities),
                                                [name](const Entity& e) { return e.name == name; });
        if (entity != std::end(cEntities)) character = entity->character;
    }
    if (character) text.remove_prefix(end + 1);
    return character;
}

/// Takes tags off a text, piece by piece.
class TagReader {
public:
    explicit TagReader(std::string_view text)
        : m_text(text), m_tagEnds(endOf(text, '>')), m_commentEnds(endOf(text, cCommentEnd)) {}

    /// Takes a tag or comment off the start of the rest of the text.
    bool TakeTag(std::string_view& rest) {
        if (rest.size() < 3 || rest[0] != '<') return false;
        if (rest[1] != '/' && rest[1] != '!' && !isLetter(rest[1])) return false;
        const bool isComment = rest.starts_with(cCommentStart) && hasMore(rest, m_commentEnds);
        if (!isComment && !hasMore(rest, m_tagEnds)) return false;
        const std::size_t end =
            isComment ? rest.find(cCommentEnd, cCommentStart.size() - 2) + cCommentEnd.size()
                      : rest.find('>') + 1;
        note(rest.substr(1, end - 2));
        rest.remove_prefix(end);
        return true;
    }
    /// Whether what stands here is none of the text, but a style or a program.
    bool IsHidden() const { return !m_hiding.empty(); }

private:
    /// Behind the last one; 0 without any.
    template <class Mark>
    static std::size_t endOf(std::string_view text, const Mark& mark) {
        return text.rfind(mark) + 1;
    }
    /// Whether a mark is still ahead: so that no text is searched to its end again and again.
    bool hasMore(std::string_view rest, std::size_t last) const {
        return last > m_text.size() - rest.size();
    }
    void note(std::string_view tag) {
        for (const std::string_view name : cHidden) {
            if (m_hiding.empty() && startsWithName(tag, name)) m_hiding = name;
            if (m_hiding == name && tag[0] == '/' && startsWithName(tag.substr(1), name)) {
                m_hiding = {};
            }
        }
    }
    static bool startsWithName(std::string_view tag, std::string_view name) {
        return lowered(tag.substr(0, name.size())) == name &&
               (tag.size() == name.size() || !isLetter(tag[name.size()]));
    }

    std::string_view m_text;
    std::size_t m_tagEnds;
    std::size_t m_commentEnds;
    std::string_view m_hiding;  ///< the element whose text is not shown
};

}  // namespace

std::string withoutHtml(std::string_view utf8) {
    std::string plain;
    TagReader tags(utf8);
    while (!utf8.empty()) {
        if (tags.TakeTag(utf8)) {
            plain += ' ';
        } else if (tags.IsHidden()) {
            utf8.remove_prefix(1);
        } else if (const auto character = takeEntity(utf8)) {
            appendUtf8(plain, *character);
        } else {
            plain += utf8.front();
            utf8.remove_prefix(1);
        }
    }
    return withSingleBlanks(plain);
}

std::string withSingleBlanks(std::string_view text) {
    std::string result;
    for (const char ch : text) {
        if (!isSpace(ch)) {
            result += ch;
        } else if (!result.empty() && result.back() != ' ') {
            result += ' ';
        }
    }
    if (!result.empty() && result.back() == ' ') result.pop_back();
    return result;
}

}  // namespace tessalink::detail
