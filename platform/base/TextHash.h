#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/base/CString.h"

/// Hashes for the keys of CMap: fast, well mixed, the same in every run on one machine, and no
/// protection against keys that were chosen to collide.
namespace tessalink {

template <class KEY>
concept TextKey = std::same_as<KEY, CString> || std::same_as<KEY, std::string> ||
    std::same_as<KEY, std::string_view> || std::same_as<KEY, const char*> ||
    std::same_as<KEY, char*>;

/// The characters of a text of any kind that can be a key. They are the text's own.
inline std::string_view textOf(const CString& text) noexcept {
    return text.View();
}
/// The same characters.
inline std::string_view textOf(std::string_view text) noexcept {
    return text;
}
/// The characters up to the NUL; `text` is not null.
inline std::string_view textOf(const char* text) noexcept {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

namespace detail {

inline constexpr std::uint64_t cHashSecretA = 0xA0761D6478BD642F;
inline constexpr std::uint64_t cHashSecretB = 0xE7037ED1A0B428DB;

/// A number of 128 bits.
struct WideNumber {
    std::uint64_t high;
    std::uint64_t low;
};

constexpr WideNumber wideProduct(std::uint64_t a, std::uint64_t b) noexcept {
#ifdef __SIZEOF_INT128__
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else  // of halves, on a processor of 32 bits
    constexpr std::uint64_t half = 0xFFFFFFFF;
    const std::uint64_t lows = (a & half) * (b & half);
    const std::uint64_t first = (a >> 32) * (b & half) + (lows >> 32);
    const std::uint64_t second = (a & half) * (b >> 32) + (first & half);
    return {(a >> 32) * (b >> 32) + (first >> 32) + (second >> 32), second << 32 | (lows & half)};
#endif
}

/// Both halves of the product, folded together.
inline std::uint64_t foldedProduct(std::uint64_t a, std::uint64_t b) noexcept {
    const WideNumber product = wideProduct(a, b);
    return product.high ^ product.low;
}

template <class WORD_TYPE>
std::uint64_t loadWord(const char* bytes) noexcept {
    WORD_TYPE word;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

/// Texts of more than 16 bytes: 16 at a time, then the last 16 once more.
inline std::uint64_t hashLong(const char* bytes, std::size_t length) noexcept {
    std::uint64_t hash = length;
    const char* const lastPiece = bytes + length - 16;
    for (; bytes < lastPiece; bytes += 16) {
        hash = foldedProduct(loadWord<std::uint64_t>(bytes) ^ cHashSecretA,
                             loadWord<std::uint64_t>(bytes + 8) ^ hash ^ cHashSecretB);
    }
    return foldedProduct(loadWord<std::uint64_t>(lastPiece) ^ cHashSecretA,
                         loadWord<std::uint64_t>(lastPiece + 8) ^ hash ^ cHashSecretB);
}

/// Texts of more than 8 bytes and at most 16.
inline std::uint64_t hashMiddle(const char* bytes, std::size_t length) noexcept {
    return foldedProduct(loadWord<std::uint64_t>(bytes) ^ cHashSecretA ^ length,
                         loadWord<std::uint64_t>(bytes + length - 8) ^ cHashSecretB);
}

}  // namespace detail

/// The longest text that counts as short: most names do.
inline constexpr std::size_t cShortText = 16;

/// Whether two texts are equal, of which the second has at most cShortText characters.
inline bool equalShortText(std::string_view a, std::string_view b) noexcept {
    using detail::loadWord;
    const std::size_t length = a.size();
    if (length != b.size()) return false;
    const char* const x = a.data();
    const char* const y = b.data();
    if (length >= 8) {
        const std::size_t last = length - 8;
        return ((loadWord<std::uint64_t>(x) ^ loadWord<std::uint64_t>(y)) |
                (loadWord<std::uint64_t>(x + last) ^ loadWord<std::uint64_t>(y + last))) == 0;
    }
    if (length >= 4) {
        const std::size_t last = length - 4;
        return ((loadWord<std::uint32_t>(x) ^ loadWord<std::uint32_t>(y)) |
                (loadWord<std::uint32_t>(x + last) ^ loadWord<std::uint32_t>(y + last))) == 0;
    }
    if (length == 0) return true;
    return x[0] == y[0] && x[length / 2] == y[length / 2] && x[length - 1] == y[length - 1];
}

/// The hash of a number.
inline std::uint32_t hashNumber(std::uint64_t number) noexcept {
    const std::uint64_t mixed =
        detail::foldedProduct(number ^ detail::cHashSecretA, detail::cHashSecretB);
    return static_cast<std::uint32_t>(mixed ^ (mixed >> 32));
}

/// The first up to eight characters of a text as a number, the first one in the lowest byte.
inline std::uint64_t firstEight(std::string_view text) noexcept {
    const char* const bytes = text.data();
    const std::size_t length = text.size();
    if constexpr (std::endian::native != std::endian::little) {
        std::uint64_t word = 0;
        for (std::size_t i = std::min<std::size_t>(length, 8); i > 0; --i) {
            word = word << 8 | static_cast<unsigned char>(bytes[i - 1]);
        }
        return word;
    }
    if (length >= 8) return detail::loadWord<std::uint64_t>(bytes);
    if (length >= 4) {
        return detail::loadWord<std::uint32_t>(bytes) |
               detail::loadWord<std::uint32_t>(bytes + length - 4) << (8 * (length - 4));
    }
    if (length == 0) return 0;
    return detail::loadWord<std::uint8_t>(bytes) |
           detail::loadWord<std::uint8_t>(bytes + length / 2) << (8 * (length / 2)) |
           detail::loadWord<std::uint8_t>(bytes + length - 1) << (8 * (length - 1));
}

/// The hash of a text of up to eight characters, given as firstEight gives them.
inline std::uint32_t hashShortText(std::uint64_t characters, std::size_t length) noexcept {
    const std::uint64_t mixed =
        detail::foldedProduct(characters ^ detail::cHashSecretA, length ^ detail::cHashSecretB);
    return static_cast<std::uint32_t>(mixed ^ (mixed >> 32));
}

/// The hash of a text of any length.
inline std::uint32_t hashText(std::string_view text) noexcept {
    const char* const bytes = text.data();
    const std::size_t length = text.size();
    if (length <= 8) return hashShortText(firstEight(text), length);
    if (length > cShortText) return hashNumber(detail::hashLong(bytes, length));
    const std::uint64_t mixed = detail::hashMiddle(bytes, length);
    return static_cast<std::uint32_t>(mixed ^ (mixed >> 32));
}

/// A hash of 64 bits, of a text of more than eight characters.
inline std::uint64_t wideHash(std::string_view text) noexcept {
    return text.size() > cShortText ? detail::hashLong(text.data(), text.size())
                                    : detail::hashMiddle(text.data(), text.size());
}

/// A text whose hash is known: a map finds it without hashing it once more.
struct HashedText {
    std::string_view text;   ///< the characters, which must outlive this view
    std::uint32_t hash = 0;  ///< what hashText gives for them
};

/// The characters of a text whose hash is known.
inline std::string_view textOf(const HashedText& text) noexcept {
    return text.text;
}
}  // namespace tessalink
