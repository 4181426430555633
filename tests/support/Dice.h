#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace tessalink::test {

/// Random choices that are the same on every machine for the same seed.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_engine(seed) {}

    std::uint64_t Word() { return m_engine(); }
    std::size_t Below(std::size_t count) { return m_engine() % count; }
    bool OneIn(std::size_t count) { return Below(count) == 0; }

    template <class Choices>
    const auto& Pick(const Choices& choices) {
        return choices[Below(std::size(choices))];
    }
    std::string Text(std::size_t length, std::string_view letters) {
        std::string text;
        while (text.size() < length) text += Pick(letters);
        return text;
    }

private:
    std::mt19937_64 m_engine;
};

}  // namespace tessalink::test
