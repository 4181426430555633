#include "core/MD5Hash.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

namespace {

using Word = std::uint32_t;
using State = std::array<Word, 4>;
using Digest = std::array<unsigned char, 16>;

constexpr std::size_t cBlock = 64;
constexpr std::size_t cLengthField = 8;
constexpr unsigned char cEndOfMessage = 0x80;
constexpr State cInitialState = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};

// The integer part of 2 to the 32nd times |sin(i + 1)|, from RFC 1321.
constexpr std::array<Word, 64> cSines = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

// Each of the four rounds takes the words of the block in steps of its own.
struct Round {
    std::size_t firstWord;
    std::size_t wordStep;
    std::array<int, 4> rotations;
};
constexpr std::array<Round, 4> cRounds = {{{0, 1, {7, 12, 17, 22}},
                                           {1, 5, {5, 9, 14, 20}},
                                           {5, 3, {4, 11, 16, 23}},
                                           {0, 7, {6, 10, 15, 21}}}};
constexpr std::size_t cStepsPerRound = 16;

Word loadWord(const unsigned char* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof(word));
    if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap32(word);
    return word;
}

void storeWord(unsigned char* bytes, Word word) {
    if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap32(word);
    std::memcpy(bytes, &word, sizeof(word));
}

// A sum that is complete here: the compiler adds what comes later to it, in no other order.
inline Word complete(Word sum) {
    asm("" : "+r"(sum));
    return sum;
}

// The sum of `a` and the round's function of the others. `b` comes last, from the step before: each
// function is written so that little is left to do once it is there. In the second the two parts
// share no bit, so that they can be added one after the other.
template <std::size_t ROUND>
[[gnu::always_inline]] inline Word mixed(Word a, Word b, Word c, Word d) {
    if constexpr (ROUND == 0) {
        return a + (d ^ (b & (c ^ d)));
    } else if constexpr (ROUND == 1) {
        return complete(a + (c & ~d)) + (b & d);
    } else if constexpr (ROUND == 2) {
        return a + (b ^ (c ^ d));
    } else {
        return a + (c ^ (b | ~d));
    }
}

template <std::size_t STEP>
[[gnu::always_inline]] inline void step(State& state, const unsigned char* block) {
    constexpr std::size_t index = STEP / cStepsPerRound;
    constexpr const Round& round = cRounds[index];
    constexpr std::size_t word = (round.firstWord + STEP * round.wordStep) % cStepsPerRound;
    constexpr std::size_t a = (0 - STEP) % 4;
    const Word b = state[(a + 1) % 4];
    const Word input = loadWord(block + word * sizeof(Word));
    const Word sum = mixed<index>(complete(state[a] + cSines[STEP] + input), b, state[(a + 2) % 4],
                                  state[(a + 3) % 4]);
    state[a] = std::rotl(sum, round.rotations[STEP % 4]) + b;
}

template <std::size_t... STEPS>
[[gnu::always_inline]] inline void allSteps(State& state, const unsigned char* block,
                                            std::index_sequence<STEPS...>) {
    (step<STEPS>(state, block), ...);
}

State afterBlocks(State state, const unsigned char* data, std::size_t count) {
    for (; count > 0; --count, data += cBlock) {
        const State before = state;
        allSteps(state, data, std::make_index_sequence<4 * cStepsPerRound>());
        for (std::size_t i = 0; i < state.size(); ++i) state[i] += before[i];
    }
    return state;
}

State stateOf(const unsigned char* data, std::size_t length) {
    const std::size_t whole = length / cBlock;
    const std::size_t rest = length % cBlock;
    std::array<unsigned char, 2 * cBlock> end{};
    if (rest > 0) std::memcpy(end.data(), data + whole * cBlock, rest);
    end[rest] = cEndOfMessage;
    const std::size_t endBlocks = rest + 1 + cLengthField <= cBlock ? 1 : 2;
    // The high half of the length in bits stays 0.
    storeWord(end.data() + endBlocks * cBlock - cLengthField, static_cast<Word>(length * 8));
    return afterBlocks(afterBlocks(cInitialState, data, whole), end.data(), endBlocks);
}

int isUsable(const unsigned char* data, std::uint64_t length, const void* result) {
    return length < MD5Hash::cTooLong && (data != nullptr || length == 0) && result != nullptr;
}

Digest digestOf(const unsigned char* data, std::size_t length) {
    Digest digest;
    const State state = stateOf(data, length);
    for (std::size_t i = 0; i < state.size(); ++i) {
        storeWord(digest.data() + i * sizeof(Word), state[i]);
    }
    return digest;
}

/// The digest into 16 bytes of any type, or zeros.
int writeDigest(const unsigned char* data, std::uint64_t length, void* result) {
    const int usable = isUsable(data, length, result);
    const Digest digest = usable ? digestOf(data, static_cast<std::size_t>(length)) : Digest{};
    if (result != nullptr) std::memcpy(result, digest.data(), digest.size());
    return usable;
}

const unsigned char* bytesOf(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

/// The length of the text; too long for a null pointer, which is no text.
std::uint64_t lengthOf(const char* text) {
    return text != nullptr ? std::strlen(text) : MD5Hash::cTooLong;
}

}  // namespace

int MD5Hash::GetHash(const unsigned char* data, std::uint64_t length, std::uint32_t* words) {
    if (!isUsable(data, length, words)) return 0;
    const State state = stateOf(data, static_cast<std::size_t>(length));
    std::copy(state.begin(), state.end(), words);
    return 1;
}

int MD5Hash::GetHash(const unsigned char* data, std::uint64_t length, unsigned char* digest) {
    return writeDigest(data, length, digest);
}

int MD5Hash::GetHash(const unsigned char* data, std::uint64_t length, std::uint64_t* digest) {
    return writeDigest(data, length, digest);
}

int MD5Hash::GetShortHash(const unsigned char* data, std::uint64_t length, std::uint32_t* hash) {
    if (hash == nullptr) return 0;
    const int usable = isUsable(data, length, hash);
    // Summed up apart: the result may lie in the data.
    Word sum = 0;
    if (usable) {
        for (const Word word : stateOf(data, static_cast<std::size_t>(length))) sum += word;
    }
    *hash = sum;
    return usable;
}

int MD5Hash::GetHash(const char* text, std::uint32_t* words) {
    return GetHash(bytesOf(text), lengthOf(text), words);
}

int MD5Hash::GetHash(const char* text, unsigned char* digest) {
    return GetHash(bytesOf(text), lengthOf(text), digest);
}

int MD5Hash::GetHash(const char* text, std::uint64_t* digest) {
    return GetHash(bytesOf(text), lengthOf(text), digest);
}

int MD5Hash::GetShortHash(const char* text, std::uint32_t* hash) {
    return GetShortHash(bytesOf(text), lengthOf(text), hash);
}
