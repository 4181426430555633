#include "apps/desk/windows/KeyedChoices.h"

#include <algorithm>
#include <cctype>

#include "core/ResponseSet.h"

namespace tessalink::desk {

namespace {

constexpr int cMostDigits = 9;
/// Labels that are together no longer than this stand in the cells themselves.
constexpr std::size_t cShortLabels = 16;
constexpr std::string_view cParting = "[|]";

bool isKey(std::string_view text) {
    return text.size() == 1 && text.front() > ' ' && cParting.find(text) == std::string_view::npos;
}

/// The key that the questionnaire names, or the nearest that there is.
std::string keyOf(const Choice& choice, int position) {
    std::string keys;
    for (const char key : choice.key.View()) {
        if (isKey({&key, 1})) keys += key;
    }
    if (!keys.empty()) return keys;
    if (isKey(choice.code.View())) return std::string(choice.code.View());
    return position <= cMostDigits ? std::to_string(position) : std::string();
}

char otherCase(char key) {
    const auto letter = static_cast<unsigned char>(key);
    return static_cast<char>(std::islower(letter) != 0 ? std::toupper(letter)
                                                       : std::tolower(letter));
}

/// Every key once, the first one wins; then the other case of letters, where it is free.
void settleKeys(std::vector<std::string>& keys) {
    std::string taken;
    for (std::string& own : keys) {
        std::erase_if(own, [&](char key) { return taken.find(key) != std::string::npos; });
        taken += own;
    }
    for (std::string& own : keys) {
        for (const char key : std::string(own)) {
            const char other = otherCase(key);
            if (taken.find(other) != std::string::npos) continue;
            own += other;
            taken += other;
        }
    }
}

std::string plain(std::string_view text) {
    std::string result(text.substr(0, cMaxResponseField));
    std::replace(result.begin(), result.end(), '[', '(');
    std::replace(result.begin(), result.end(), ']', ')');
    std::replace(result.begin(), result.end(), '|', '/');
    return result;
}

}  // namespace

std::vector<KeyedChoice> keyedChoices(const std::vector<Choice>& choices) {
    std::vector<std::string> keys;
    std::size_t length = 0;
    for (const Choice& choice : choices) {
        keys.push_back(keyOf(choice, static_cast<int>(keys.size()) + 1));
        length += static_cast<std::size_t>(choice.label.GetLength());
    }
    const std::vector<std::string> first = keys;
    settleKeys(keys);
    std::vector<KeyedChoice> keyed;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        const Choice& choice = choices[i];
        const CString label = choice.label.IsEmpty() ? choice.code : choice.label;
        const bool isShort = length <= cShortLabels || first[i].empty();
        const CString caption = isShort ? label : CString(std::string_view(first[i]).substr(0, 1));
        keyed.push_back(
            {caption, CString(std::string_view(keys[i])), label, static_cast<int>(i) + 1});
    }
    return keyed;
}

std::vector<KeyedChoice> keyedChoices(const ResponseSet& set) {
    if (set.HasChoices()) return keyedChoices(set.choices);
    std::vector<KeyedChoice> keyed;
    if (set.lowest < 0 || set.highest > cMostDigits) return keyed;
    for (int number = set.lowest; number <= set.highest; ++number) {
        const CString digit(std::string_view(std::to_string(number)));
        keyed.push_back({digit, digit, digit, number});
    }
    return keyed;
}

std::string definitionOf(const std::vector<KeyedChoice>& choices, bool isInLines) {
    std::string definition;
    for (const KeyedChoice& choice : choices) {
        if (isInLines && !definition.empty()) definition += "[]";
        definition += "[" + plain(choice.caption.View()) + "|" + std::string(choice.keys.View()) +
                      "|" + std::to_string(choice.code) + "]";
    }
    return definition;
}

}  // namespace tessalink::desk
