#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <regex>
#include <string>

namespace tessalink::test {

// Faults that a template easily gets: braces out of balance, a control word that runs into the text
// behind it, words or sentences that have lost the blank between them, a command left over.
inline void expectSoundRtf(const std::string& text) {
    ASSERT_TRUE(text.starts_with("{\\rtf1"));
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else {
            depth += text[i] == '{' ? 1 : text[i] == '}' ? -1 : 0;
            ASSERT_TRUE(depth > 0 || text.find_first_not_of('}', i) == std::string::npos) << i;
        }
    }
    EXPECT_EQ(0, depth);
    const std::regex glued(R"(\\[a-z]+-?\d+[A-Za-z]|[a-z],?[.;:]?@|[a-z][.;:,][A-Z]|  (?![ 0-9]))");
    std::string rest = std::regex_replace(text, std::regex("assessment@example.org"), "");
    rest = std::regex_replace(rest, std::regex(R"(\\'[0-9a-f]{2})"), "~");
    for (std::sregex_iterator fault(rest.begin(), rest.end(), glued), end; fault != end; ++fault) {
        ADD_FAILURE() << rest.substr(
            static_cast<std::size_t>(std::max<std::ptrdiff_t>(fault->position() - 40, 0)), 80);
    }
    EXPECT_EQ(std::string::npos, rest.find('@'));
    EXPECT_EQ(text.find("@example.org"), text.rfind('@')) << "more than one address";
}

}  // namespace tessalink::test
