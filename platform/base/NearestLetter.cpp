#include "platform/base/NearestLetter.h"

#include <optional>

#include "platform/base/CodePage.h"
#include "platform/base/detail/CodePageInForce.h"
#include "platform/base/detail/NearestLetters.h"

namespace tessalink {

namespace {

constexpr char cUnknownLetter = '?';
constexpr unsigned char cFirstUpper = 0x80;

/// What the blocks have for the character; nothing when none of them holds it, or no letter.
template <class Blocks>
auto findLetter(const Blocks& blocks, char32_t character) {
    using Letter = typename decltype(blocks.front().letters)::value_type;
    for (const auto& block : blocks) {
        const char32_t index = character - block.first;  // wraps in front of the block
        if (index >= block.letters.size()) continue;
        const Letter letter = block.letters[index];
        return letter == Letter{detail::cNoLetter} ? std::nullopt : std::optional(letter);
    }
    return std::optional<Letter>();
}

/// The letter of Windows-1252; it has those beyond ASCII that stand in no block.
char westernLetter(char32_t character) {
    constexpr char32_t firstLatin = 0xA0;
    constexpr char32_t lastLatin = 0xFF;
    if (character >= firstLatin && character <= lastLatin) return static_cast<char>(character);
    return findLetter(detail::cNearestLetters, character).value_or(cUnknownLetter);
}

}  // namespace

char nearestLetter(char32_t character) {
    const auto own = findLetter(detail::cOwnLetters, character);
    const auto ofScript = own ? fromUnicode(*own) : std::nullopt;
    if (ofScript) return *ofScript;
    const char western = westernLetter(character);
    if (const auto letter = fromUnicode(detail::westernCharacter(western))) return *letter;
    const char plain = detail::cPlainLetters[static_cast<unsigned char>(western) - cFirstUpper];
    return plain == detail::cNoLetter ? cUnknownLetter : plain;
}

}  // namespace tessalink
