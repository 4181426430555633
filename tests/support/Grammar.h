#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/Dice.h"

namespace tessalink::test {

/// Writes random texts by rules. In an alternative "$X" stands for an alternative of X, and "$#"
/// for a number that no other place gets.
class Grammar {
public:
    using Rules = std::map<char, std::vector<std::string_view>>;

    explicit Grammar(Rules rules) : m_rules(std::move(rules)) {}

    /// At most `depth` levels of rules; deeper ones take alternatives without rules, if any.
    std::string Write(char symbol, int depth, Dice& dice) {
        std::string text;
        const std::string_view chosen = Choose(m_rules.at(symbol), depth, dice);
        for (std::size_t i = 0; i < chosen.size(); ++i) {
            if (chosen[i] != '$') {
                text += chosen[i];
            } else if (chosen[++i] == '#') {
                text += std::to_string(++m_number);
            } else {
                text += Write(chosen[i], depth - 1, dice);
            }
        }
        return text;
    }

private:
    static std::string_view Choose(const std::vector<std::string_view>& alternatives, int depth,
                                   Dice& dice) {
        std::string_view chosen = dice.Pick(alternatives);
        for (int i = 0; i < 30 && depth <= 0 && chosen.find('$') != std::string_view::npos; ++i) {
            chosen = dice.Pick(alternatives);
        }
        return chosen;
    }

    Rules m_rules;
    int m_number = 0;
};

}  // namespace tessalink::test
