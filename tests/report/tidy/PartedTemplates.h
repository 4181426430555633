#pragma once

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/Dice.h"

namespace tessalink::test {

/// The offsets within the commands of a template at which a word processor may put markup: before
/// every character but the first of a command, text constants left out.
class SeamFinder {
public:
    explicit SeamFinder(std::string_view text) : m_text(text) {
        while (m_pos < m_text.size()) {
            if (m_text[m_pos] == '@') {
                read_command();
            } else {
                ++m_pos;
            }
        }
    }

    std::vector<std::size_t> seams;

private:
    char at() const { return m_pos < m_text.size() ? m_text[m_pos] : '\0'; }
    void take() {
        seams.push_back(m_pos);
        ++m_pos;
    }

    void read_command() {
        ++m_pos;
        if (at() == '@') return take();
        std::string word;
        while (std::isalnum(static_cast<unsigned char>(at())) || at() == '_') {
            word += static_cast<char>(std::toupper(at()));
            take();
        }
        if (word == "COMMENT") m_pos = std::min(m_text.find("@COMMENT_END", m_pos), m_text.size());
        if (word == "DEFER_END") read_on({"@DEFER_START", "@PRINT_DEFERRED"});
        if (at() == '(') {
            read_arguments();
            if (word == "IF") read_on({"@THEN"});
        }
    }

    /// What follows belongs to the command as well, if it starts with one of these.
    void read_on(const std::vector<std::string_view>& starts) {
        const std::size_t next = m_text.find_first_not_of(" \r\n", m_pos);
        const auto rest = m_text.substr(std::min(next, m_text.size()));
        if (std::none_of(starts.begin(), starts.end(),
                         [&](std::string_view one) { return rest.starts_with(one); })) {
            return;
        }
        while (at() != '@') take();
        seams.push_back(m_pos);
        read_command();
    }

    void read_arguments() {
        int depth = 0;
        do {
            depth += at() == '(' ? 1 : at() == ')' ? -1 : 0;
            const bool isConstant = at() == '[';
            take();
            if (isConstant) m_pos = std::min(m_text.find(']', m_pos), m_text.size()) + 1;
        } while (depth > 0 && m_pos < m_text.size());
    }

    std::string_view m_text;
    std::size_t m_pos = 0;
};

/// The template with markup at some of its seams, as word processors put it there: groups that end
/// and begin, formatting, bookmarks. It needs a group around it.
inline std::string part(std::string_view text, Dice& dice, std::size_t oneIn) {
    static const std::vector<std::string> markups = {"}{",
                                                     "}{\\b ",
                                                     "}\r\n{\\rtlch\\fcs1 \\af0 ",
                                                     "\\b ",
                                                     "\\b0 ",
                                                     "\\noproof\r\n",
                                                     "{\\*\\bkmkstart a]b}",
                                                     "{\\b{\\i}}\\lang1031 ",
                                                     "\r\n",
                                                     "}}{{\\revised\\revauth1 ",
                                                     "\\u8203 ?",
                                                     "\\-",
                                                     "{\\deleted (gone)}"};
    const std::vector<std::size_t> seams = SeamFinder(text).seams;
    std::string parted;
    std::size_t from = 0;
    for (const std::size_t seam : seams) {
        if (!dice.OneIn(oneIn)) continue;
        parted += text.substr(from, seam - from);
        parted += dice.Pick(markups);
        from = seam;
    }
    return parted + std::string(text.substr(from));
}

}  // namespace tessalink::test
