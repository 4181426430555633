#pragma once

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessalink::test {

/// RTF read in the plainest way: what it shows, typographic characters as the keys that type them
/// and `{}` that was typed left out; and its markup, with what is not shown.
class PlainRtf {
public:
    explicit PlainRtf(std::string_view rtf) : m_rtf(rtf) {
        while (m_pos < m_rtf.size()) read();
        const auto count = [this](char ch) { return std::count(markup.begin(), markup.end(), ch); };
        depth = count('{') - count('}');
        text = withoutPairs(text);
        markup = withoutPairs(markup);
    }

    /// Whether markup has kept its order. That in a text in brackets stays there, while other
    /// markup passes it: then it is only as much as before.
    bool HasMarkupOf(const PlainRtf& other) const {
        if (depth != other.depth) return false;
        return markup == other.markup ||
               (text.find('[') != std::string::npos && sorted() == other.sorted());
    }

    std::string text;
    std::string markup;
    std::ptrdiff_t depth = 0;  ///< groups that are not closed
    bool isBalanced = true;    ///< no group is closed that was not opened

private:
    struct Group {
        long long count = 1;  ///< of characters that stand for one
        bool isHidden = false;
        bool isDeleted = false;
        bool isStarred = false;
    };

    static std::string withoutPairs(const std::string& text) {
        std::string left;
        for (const char ch : text) {
            if (ch == '}' && left.ends_with('{')) {
                left.pop_back();
            } else {
                left += ch;
            }
        }
        return left;
    }
    std::string sorted() const {
        std::string letters;
        for (const char ch : markup) {
            if (ch != '{' && ch != '}') letters += ch;
        }
        std::sort(letters.begin(), letters.end());
        return letters;
    }
    bool isHidden() const { return m_groups.back().isHidden || m_groups.back().isDeleted; }
    std::string& shown() { return isHidden() ? markup : text; }

    void read() {
        const char ch = m_rtf[m_pos++];
        if (ch == '{') {
            m_groups.push_back(m_groups.back());
            m_groups.back().isStarred = false;
            add_markup("{");
        } else if (ch == '}') {
            isBalanced &= m_groups.size() > 1;
            if (isBalanced) m_groups.pop_back();
            add_markup("}");
        } else if (ch == '\\') {
            read_control();
        } else if (ch != '\r' && ch != '\n') {
            add_text(typed(static_cast<unsigned char>(ch), true));
        }
    }

    void read_control() {
        const std::size_t start = m_pos - 1;
        const char symbol = m_pos < m_rtf.size() ? m_rtf[m_pos] : '\0';
        if (std::isalpha(static_cast<unsigned char>(symbol))) return read_word(start);
        m_pos = std::min(m_pos + 1, m_rtf.size());
        static const std::map<char, std::string> texts = {{'~', " "},   {'_', "-"},   {'{', "{"},
                                                          {'}', "}"},   {'\t', "\t"}, {'\n', "\n"},
                                                          {'\r', "\n"}, {'\\', "\\"}};
        if (symbol == '*') {
            m_groups.back().isStarred = true;
            markup += "\\*";
            return;
        }
        if (symbol == '\'') {
            std::size_t length = 0;
            while (length < 2 && m_pos + length < m_rtf.size() &&
                   std::isxdigit(static_cast<unsigned char>(m_rtf[m_pos + length]))) {
                ++length;
            }
            const std::string digits(m_rtf.substr(m_pos, length));
            m_pos += length;
            add_text(typed(std::strtoul(digits.c_str(), nullptr, 16), true));
        } else if (m_fallback > 0) {
            --m_fallback;
        } else if (const auto found = texts.find(symbol); found != texts.end()) {
            shown() += found->second;
        } else {
            markup += m_rtf.substr(start, m_pos - start);
        }
    }

    void read_word(std::size_t start) {
        const auto run = [this](auto is, std::size_t most) {
            std::size_t length = 0;
            while (length < most && m_pos + length < m_rtf.size() &&
                   is(static_cast<unsigned char>(m_rtf[m_pos + length]))) {
                ++length;
            }
            m_pos += length;
            return std::string(m_rtf.substr(m_pos - length, length));
        };
        const std::string name = run([](int ch) { return std::isalpha(ch); }, 32);
        const bool isNegative = m_rtf.substr(m_pos, 1) == "-" && m_pos + 1 < m_rtf.size() &&
                                std::isdigit(static_cast<unsigned char>(m_rtf[m_pos + 1]));
        m_pos += isNegative;
        const std::string digits = run([](int ch) { return std::isdigit(ch); }, 10);
        const long long number =
            std::min(std::atoll(digits.c_str()), 2147483647LL) * (isNegative ? -1 : 1);
        const std::string word(m_rtf.substr(start, m_pos - start));
        if (m_rtf.substr(m_pos, 1) == " ") ++m_pos;
        act(name, !digits.empty(), number, word);
    }

    void act(const std::string& name, bool hasNumber, long long number, const std::string& word) {
        static const std::map<std::string, std::string> texts = {
            {"endash", "-"},     {"emdash", "-"},     {"lquote", "'"}, {"rquote", "'"},
            {"ldblquote", "\""}, {"rdblquote", "\""}, {"tab", "\t"},   {"enspace", " "},
            {"emspace", " "},    {"qmspace", " "},    {"par", "\n"},   {"line", "\n"},
            {"cell", "\n"}};
        m_fallback = 0;
        if (enter(name)) {
            markup += word + " ";
            return;
        }
        if (name == "u" && hasNumber) {
            const auto code = static_cast<unsigned long>(number < 0 ? number + 65536 : number);
            if (isHidden() || !isInvisible(code)) shown() += typed(code, false);
            m_fallback = m_groups.back().count;
        } else if (const auto found = texts.find(name); found != texts.end()) {
            shown() += found->second;
        } else {
            markup += word + " ";
        }
        if (name == "uc") m_groups.back().count = std::clamp(number, 0LL, 8LL);
        if (name == "deleted") m_groups.back().isDeleted = !hasNumber || number != 0;
        if (name == "bin") {
            const auto rest = static_cast<long long>(m_rtf.size() - m_pos);
            m_pos += static_cast<std::size_t>(std::clamp(number, 0LL, rest));
        }
    }

    /// Whether the word opens a destination.
    bool enter(const std::string& name) {
        static const std::set<std::string> hidden = {
            "fonttbl",      "colortbl",  "stylesheet",
            "info",         "listtable", "listoverridetable",
            "filetbl",      "pict",      "nonshppict",
            "nonesttables", "objdata",   "fldinst",
            "formfield",    "datafield", "listtext",
            "pntext",       "pntxta",    "pntxtb",
            "sp",           "tc",        "xe",
            "template"};
        static const std::set<std::string> shown = {"header",   "headerl", "headerr", "headerf",
                                                    "footer",   "footerl", "footerr", "footerf",
                                                    "footnote", "shptxt",  "shprslt", "dptxbxtext"};
        Group& group = m_groups.back();
        const bool isStarred = std::exchange(group.isStarred, false);
        const bool isFlow = shown.contains(name);
        if (!isFlow && !hidden.contains(name) && !isStarred) return false;
        group.isHidden = !isFlow;
        return true;
    }

    void add_markup(std::string_view brace) {
        m_fallback = 0;
        markup += brace;
    }
    void add_text(const std::string& letter) {
        if (m_fallback > 0) {
            --m_fallback;
        } else {
            shown() += letter;
        }
    }
    static bool isInvisible(unsigned long code) {
        return code == 0xAD || code == 0xFEFF || code == 0x2060 ||
               (code >= 0x200B && code <= 0x200D);
    }

    static std::string typed(unsigned long code, bool isByte) {
        if (isByte ? code == 0x91 || code == 0x92 : code >= 0x2018 && code <= 0x201B) return "'";
        if (isByte ? code == 0x93 || code == 0x94 : code >= 0x201C && code <= 0x201F) return "\"";
        if (isByte ? code == 0x96 || code == 0x97 : code >= 0x2010 && code <= 0x2015) return "-";
        if (code == 0xA0) return " ";
        if (!isByte && (code == 0x202F || (code >= 0x2000 && code <= 0x200A))) return " ";
        if (!isByte && code == 0x2212) return "-";
        if (code < 0x80) return std::string(1, static_cast<char>(code));
        return "<" + std::to_string(code) + ">";
    }

    std::string_view m_rtf;
    std::size_t m_pos = 0;
    long long m_fallback = 0;
    std::vector<Group> m_groups{Group{}};
};

}  // namespace tessalink::test
