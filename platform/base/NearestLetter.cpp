#include "platform/base/NearestLetter.h"

#include "platform/base/detail/NearestLetters.h"

namespace tessalink {

namespace {

constexpr char cUnknownLetter = '?';

}  // namespace

char nearestLetter(char32_t character) {
    for (const detail::NearestBlock& block : detail::cNearestLetters) {
        const char32_t index = character - block.first;  // wraps in front of the block
        if (index >= block.letters.size()) continue;
        const char letter = block.letters[index];
        return letter == detail::cNoLetter ? cUnknownLetter : letter;
    }
    return cUnknownLetter;
}

}  // namespace tessalink
