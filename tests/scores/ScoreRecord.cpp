#include "tests/scores/ScoreRecord.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "core/MD5Hash.h"

namespace tessalink::test {

namespace {

/// The words of the lines "KIND NAME ..." after the first two.
std::vector<std::vector<std::string>> recordedLines(const std::string& kind,
                                                    const std::string& name) {
    std::ifstream file(TESSALINK_SOURCE_DIR "/tests/scores/exact_scores.txt");
    std::vector<std::vector<std::string>> lines;
    for (std::string line; std::getline(file, line);) {
        std::istringstream stream(line);
        std::string itsKind, itsName;
        stream >> itsKind >> itsName;
        if (itsKind != kind || itsName != name) continue;
        auto& words = lines.emplace_back();
        for (std::string word; stream >> word;) words.push_back(word);
    }
    return lines;
}

std::string digits(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%a", value);
    return text;
}

std::string digestOf(const std::vector<double>& values) {
    std::vector<unsigned char> bytes;
    bytes.reserve(values.size() * sizeof(double));
    for (const double value : values) {
        auto bits = std::bit_cast<std::uint64_t>(value);
        for (std::size_t i = 0; i < sizeof(double); ++i, bits >>= 8) {
            bytes.push_back(static_cast<unsigned char>(bits & 0xff));
        }
    }
    unsigned char digest[16];
    EXPECT_EQ(MD5Hash::GetHash(bytes.data(), bytes.size(), digest), 1);
    std::string text;
    for (const unsigned byte : digest) {
        char hex[3];
        std::snprintf(hex, sizeof hex, "%02x", byte);
        text += hex;
    }
    return text;
}

}  // namespace

std::vector<RecordedValue> recordedValues(const std::string& function) {
    std::vector<RecordedValue> values;
    for (const auto& words : recordedLines("value", function)) {
        values.push_back(
            {std::strtod(words.at(0).c_str(), nullptr), std::strtod(words.at(1).c_str(), nullptr)});
    }
    EXPECT_FALSE(values.empty()) << function << " is not in the record";
    return values;
}

void expectRecordedValues(const std::string& function, const std::function<double(double)>& own) {
    for (const auto& [argument, result] : recordedValues(function)) {
        EXPECT_EQ(digits(own(argument)), digits(result)) << function << " of " << digits(argument);
    }
}

void expectRecordedSweep(const std::string& sweep, const std::vector<double>& results) {
    const auto lines = recordedLines("sweep", sweep);
    ASSERT_EQ(lines.size(), 1u) << sweep;
    EXPECT_EQ(digestOf(results), lines.front().at(0)) << sweep;
}

std::vector<double> zSweep() {
    std::vector<double> sweep;
    for (int i = -80000; i <= 80000; ++i) sweep.push_back(i / 10000.0);
    return sweep;
}

std::vector<double> rankSweep() {
    std::vector<double> sweep;
    for (int i = 1; i < 10000; ++i) sweep.push_back(i / 100.0);
    return sweep;
}

std::vector<double> mapped(std::vector<double> arguments,
                           const std::function<double(double)>& function) {
    std::transform(arguments.begin(), arguments.end(), arguments.begin(), function);
    return arguments;
}

}  // namespace tessalink::test
