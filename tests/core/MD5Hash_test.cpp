#include "core/MD5Hash.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "tests/support/Dice.h"
#include "tests/support/Environment.h"
#include "tests/support/Process.h"

namespace tessalink::test {
namespace {

using Digest = std::array<unsigned char, 16>;
using Words = std::array<std::uint32_t, 4>;

const unsigned char* bytesOf(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

std::string hex(const Digest& digest) {
    std::string text;
    for (const unsigned char byte : digest) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

std::string hashOf(const unsigned char* data, std::uint64_t length) {
    Digest digest;
    EXPECT_EQ(MD5Hash::GetHash(data, length, digest.data()), 1) << length;
    return hex(digest);
}

/// The digest as RFC 1321 tells it, with no thought of speed.
class PlainMD5 {
public:
    PlainMD5() {
        for (std::size_t i = 0; i < m_sines.size(); ++i) {
            m_sines[i] = static_cast<std::uint32_t>(
                std::floor(std::ldexp(std::fabs(std::sin(static_cast<double>(i + 1))), 32)));
        }
    }

    void Add(const unsigned char* data, std::size_t blocks) {
        for (; blocks > 0; --blocks, data += 64) AddBlock(data);
    }
    /// Ends the message with less than a block; `bits` is what it says its length in bits is.
    std::string Finish(std::string rest, std::uint64_t bits) const {
        rest += '\x80';
        while (rest.size() % 64 != 56) rest += '\0';
        for (int i = 0; i < 64; i += 8) rest += static_cast<char>(bits >> i & 0xFF);
        PlainMD5 end = *this;
        end.Add(bytesOf(rest), rest.size() / 64);
        Digest digest;
        for (std::size_t i = 0; i < digest.size(); ++i) {
            digest[i] = static_cast<unsigned char>(end.m_state[i / 4] >> i % 4 * 8);
        }
        return hex(digest);
    }

    static std::string Of(const std::string& text) {
        PlainMD5 hash;
        hash.Add(bytesOf(text), text.size() / 64);
        return hash.Finish(text.substr(text.size() / 64 * 64), text.size() * 8);
    }

private:
    void AddBlock(const unsigned char* block) {
        std::uint32_t words[16] = {};
        for (std::size_t i = 0; i < 64; ++i) {
            words[i / 4] |= static_cast<std::uint32_t>(block[i]) << i % 4 * 8;
        }
        Words state = m_state;
        AddRound<0>(state, words, [](auto b, auto c, auto d) { return (b & c) | (~b & d); });
        AddRound<1>(state, words, [](auto b, auto c, auto d) { return (b & d) | (c & ~d); });
        AddRound<2>(state, words, [](auto b, auto c, auto d) { return b ^ c ^ d; });
        AddRound<3>(state, words, [](auto b, auto c, auto d) { return c ^ (b | ~d); });
        for (std::size_t i = 0; i < state.size(); ++i) m_state[i] += state[i];
    }
    template <std::size_t ROUND, class Mix>
    void AddRound(Words& state, const std::uint32_t (&words)[16], Mix mix) const {
        static constexpr int rotations[4][4] = {
            {7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};
        auto [a, b, c, d] = state;
        for (std::size_t i = 0; i < 16; ++i) {
            const std::array<std::size_t, 4> places = {i, 5 * i + 1, 3 * i + 5, 7 * i};
            const std::uint32_t sum =
                a + mix(b, c, d) + words[places[ROUND] % 16] + m_sines[16 * ROUND + i];
            a = d;
            d = c;
            c = b;
            b += std::rotl(sum, rotations[ROUND][i % 4]);
        }
        state = {a, b, c, d};
    }

    std::array<std::uint32_t, 64> m_sines;
    Words m_state = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
};

TEST(MD5Hash, TheSuiteOfTheStandard) {
    const struct {
        const char* text;
        const char* hash;
    } suite[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
         "d174ab98d277d9f5a5611c2c9f419d9f"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const auto& [text, hash] : suite) {
        Digest digest;
        ASSERT_EQ(MD5Hash::GetHash(text, digest.data()), 1);
        EXPECT_EQ(hex(digest), hash);
        EXPECT_EQ(PlainMD5::Of(text), hash);
    }
}

TEST(MD5Hash, EveryLengthUpTo1000AtEveryAlignment) {
    Dice dice(1);
    std::string bytes;
    while (bytes.size() < 1016) bytes += static_cast<char>(dice.Word() & 0xFF);
    for (std::size_t length = 0; length <= 1000; ++length) {
        const std::size_t start = length % 16;
        ASSERT_EQ(hashOf(bytesOf(bytes) + start, length), PlainMD5::Of(bytes.substr(start, length)))
            << length;
    }
    for (std::size_t start = 0; start < 16; ++start) {
        ASSERT_EQ(hashOf(bytesOf(bytes) + start, 777), PlainMD5::Of(bytes.substr(start, 777)));
    }
}

TEST(MD5Hash, AgreesWithTheSystemSProgram) {
    const char* const program = "/usr/bin/md5sum";
    if (cIsWindows || !std::filesystem::exists(program)) GTEST_SKIP() << "there is no " << program;
    Dice dice(2);
    for (const std::size_t length : {0u, 55u, 56u, 119u, 120u, 65536u, 1000003u, 5000000u}) {
        std::string bytes(length, '\0');
        for (char& byte : bytes) byte = static_cast<char>(dice.Word() & 0xFF);
        Setting setting;
        setting.input = bytes;
        EXPECT_EQ(runProgram({program}, setting).out.substr(0, 32),
                  hashOf(bytesOf(bytes), bytes.size()))
            << length;
    }
}

TEST(MD5Hash, AllFormsAgree) {
    Dice dice(3);
    for (std::size_t length = 0; length < 200; ++length) {
        const std::string text = dice.Text(length, "ab\xFF\x80 \r\n");
        const unsigned char* const data = bytesOf(text);
        Digest digest, textDigest;
        Words words, textWords;
        std::array<std::uint64_t, 2> numbers, textNumbers;
        std::uint32_t sum = 0, textSum = 0;
        ASSERT_EQ(MD5Hash::GetHash(data, length, digest.data()), 1);
        ASSERT_EQ(MD5Hash::GetHash(data, length, words.data()), 1);
        ASSERT_EQ(MD5Hash::GetHash(data, length, numbers.data()), 1);
        ASSERT_EQ(MD5Hash::GetShortHash(data, length, &sum), 1);
        ASSERT_EQ(MD5Hash::GetHash(text.c_str(), textDigest.data()), 1);
        ASSERT_EQ(MD5Hash::GetHash(text.c_str(), textWords.data()), 1);
        ASSERT_EQ(MD5Hash::GetHash(text.c_str(), textNumbers.data()), 1);
        ASSERT_EQ(MD5Hash::GetShortHash(text.c_str(), &textSum), 1);

        for (std::size_t i = 0; i < digest.size(); ++i) {
            ASSERT_EQ(words[i / 4] >> i % 4 * 8 & 0xFF, digest[i]) << "least significant first";
        }
        ASSERT_EQ(std::memcmp(numbers.data(), digest.data(), digest.size()), 0);
        ASSERT_EQ(sum, words[0] + words[1] + words[2] + words[3]);
        ASSERT_EQ(std::tie(textDigest, textWords, textNumbers, textSum),
                  std::tie(digest, words, numbers, sum));
    }
    Digest whole;
    ASSERT_EQ(MD5Hash::GetHash("abc\0def", whole.data()), 1);
    EXPECT_EQ(hex(whole), "900150983cd24fb0d6963f7d28e17f72") << "a text ends at its NUL";
}

TEST(MD5Hash, AResultMayLieInTheData) {
    std::uint32_t sum = 0x64636261;
    std::uint32_t sumOfCopy = 0;
    const std::uint32_t copy = sum;
    MD5Hash::GetShortHash(reinterpret_cast<const unsigned char*>(&copy), 4, &sumOfCopy);
    EXPECT_EQ(MD5Hash::GetShortHash(reinterpret_cast<unsigned char*>(&sum), 4, &sum), 1);
    EXPECT_EQ(sum, sumOfCopy);
}

TEST(MD5Hash, From512MibOnOnlyTheLowHalfOfTheLengthCounts) {
#ifndef NDEBUG
    GTEST_SKIP() << "takes too long in a build for finding faults";
#endif
    constexpr std::size_t size = std::size_t{1} << 29;
    constexpr std::size_t rest = 7;
    const std::unique_ptr<unsigned char, decltype(&std::free)> zeros(
        static_cast<unsigned char*>(std::calloc(size + rest, 1)), std::free);
    ASSERT_NE(zeros, nullptr);
    PlainMD5 plain;
    plain.Add(zeros.get(), size / 64);
    const std::string end(rest, '\0');
    EXPECT_EQ(hashOf(zeros.get(), size + rest), plain.Finish(end, rest * 8));
    const std::string standard = plain.Finish(end, (size + rest) * 8);
    EXPECT_NE(hashOf(zeros.get(), size + rest), standard);
}

TEST(MD5Hash, RefusesTwoGibAndNullPointers) {
    // Nothing is there to be read.
    const auto* const data = reinterpret_cast<const unsigned char*>(std::uintptr_t{64});
    const char* const noText = nullptr;
    Digest digest;
    Words words;
    std::array<std::uint64_t, 2> numbers;
    std::uint32_t sum;
    const auto preset = [&] {
        digest.fill(7);
        words.fill(7);
        numbers.fill(7);
        sum = 7;
    };
    const auto expectFailure = [&](std::initializer_list<int> results) {
        for (const int result : results) EXPECT_EQ(result, 0);
        EXPECT_EQ(digest, Digest{});
        EXPECT_EQ(words, (Words{7, 7, 7, 7}));
        EXPECT_EQ(numbers, (std::array<std::uint64_t, 2>{}));
        EXPECT_EQ(sum, 0u);
    };
    const struct {
        const unsigned char* data;
        std::uint64_t length;
    } refused[] = {{data, std::uint64_t{1} << 31},
                   {data, (std::uint64_t{1} << 31) + 5},
                   {data, (std::uint64_t{1} << 32) + 5},
                   {data, ~std::uint64_t{0}},
                   {nullptr, 1}};
    for (const auto& [start, length] : refused) {
        preset();
        expectFailure({MD5Hash::GetHash(start, length, digest.data()),
                       MD5Hash::GetHash(start, length, words.data()),
                       MD5Hash::GetHash(start, length, numbers.data()),
                       MD5Hash::GetShortHash(start, length, &sum)});
    }
    preset();
    expectFailure({MD5Hash::GetHash(noText, digest.data()), MD5Hash::GetHash(noText, words.data()),
                   MD5Hash::GetHash(noText, numbers.data()), MD5Hash::GetShortHash(noText, &sum)});

    EXPECT_EQ(MD5Hash::GetHash("x", static_cast<unsigned char*>(nullptr)), 0);
    EXPECT_EQ(MD5Hash::GetHash("x", static_cast<std::uint32_t*>(nullptr)), 0);
    EXPECT_EQ(MD5Hash::GetHash("x", static_cast<std::uint64_t*>(nullptr)), 0);
    EXPECT_EQ(MD5Hash::GetShortHash("x", nullptr), 0);
    EXPECT_EQ(hashOf(nullptr, 0), "d41d8cd98f00b204e9800998ecf8427e");
}

}  // namespace
}  // namespace tessalink::test
