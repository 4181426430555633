#include "platform/base/Utf8.h"

#include <algorithm>
#include <array>

namespace tessalink {

namespace {

constexpr int cTailBits = 6;
constexpr unsigned cTailMask = 0x3F;
constexpr unsigned cTailMark = 0x80;

/// First bytes of one kind: what the second one may be, and how many bytes there are in all.
struct Sequence {
    unsigned char firstLow;
    unsigned char firstHigh;
    unsigned char secondLow;
    unsigned char secondHigh;
    std::size_t length;
};
// The well-formed sequences; the bounds of the second byte keep out longer forms than necessary,
// surrogates, and what lies beyond U+10FFFF.
constexpr std::array<Sequence, 9> cSequences = {{{0x00, 0x7F, 0x00, 0x00, 1},
                                                 {0xC2, 0xDF, 0x80, 0xBF, 2},
                                                 {0xE0, 0xE0, 0xA0, 0xBF, 3},
                                                 {0xE1, 0xEC, 0x80, 0xBF, 3},
                                                 {0xED, 0xED, 0x80, 0x9F, 3},
                                                 {0xEE, 0xEF, 0x80, 0xBF, 3},
                                                 {0xF0, 0xF0, 0x90, 0xBF, 4},
                                                 {0xF1, 0xF3, 0x80, 0xBF, 4},
                                                 {0xF4, 0xF4, 0x80, 0x8F, 4}}};
// The bits of the character in a first byte, by the length of the sequence.
constexpr std::array<unsigned char, 5> cFirstMasks = {0, 0x7F, 0x1F, 0x0F, 0x07};

unsigned char byteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

bool isBetween(unsigned char byte, unsigned char low, unsigned char high) {
    return byte >= low && byte <= high;
}

/// How many bytes at the start of the text belong to the sequence.
std::size_t matching(std::string_view text, const Sequence& sequence) {
    const std::size_t end = std::min(text.size(), sequence.length);
    std::size_t count = 1;
    if (count < end && !isBetween(byteAt(text, 1), sequence.secondLow, sequence.secondHigh))
        return count;
    while (count < end && (byteAt(text, count) & ~cTailMask) == cTailMark) ++count;
    return count;
}

}  // namespace

void appendUtf8(std::string& text, char32_t character) {
    constexpr std::array<char32_t, 4> limits = {0x80, 0x800, 0x10000, 0x110000};
    constexpr std::array<unsigned char, 4> marks = {0x00, 0xC0, 0xE0, 0xF0};
    std::size_t tails = 0;
    while (tails + 1 < limits.size() && character >= limits[tails]) ++tails;
    int shift = static_cast<int>(tails) * cTailBits;
    text += static_cast<char>(marks[tails] | character >> shift);
    while ((shift -= cTailBits) >= 0) {
        text += static_cast<char>(cTailMark | (character >> shift & cTailMask));
    }
}

std::optional<char32_t> takeUtf8(std::string_view& text) {
    const unsigned char first = byteAt(text, 0);
    const auto sequence = std::find_if(
        cSequences.begin(), cSequences.end(),
        [first](const Sequence& s) { return isBetween(first, s.firstLow, s.firstHigh); });
    const std::size_t length = sequence != cSequences.end() ? matching(text, *sequence) : 1;
    const std::string_view bytes = text.substr(0, length);
    text.remove_prefix(length);
    if (sequence == cSequences.end() || length < sequence->length) return std::nullopt;
    char32_t character = first & cFirstMasks[length];
    for (std::size_t i = 1; i < length; ++i) {
        character = character << cTailBits | (byteAt(bytes, i) & cTailMask);
    }
    return character;
}

std::size_t findMalformedUtf8(std::string_view text) {
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t place = text.size() - rest.size();
        if (!takeUtf8(rest)) return place;
    }
    return std::string_view::npos;
}

}  // namespace tessalink
