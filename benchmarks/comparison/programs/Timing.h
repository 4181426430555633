// What the self-timing programs of the comparison share. Each of them writes "KEY VALUE" lines to
// standard output; times are in nanoseconds of processor time, of the program and of the system for
// it. On an idle machine that is the time that passes, as nothing here waits.
#pragma once

#include <time.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace timing {

inline double now() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

/// The time that `work` takes, in nanoseconds.
template <typename Work>
double once(Work&& work) {
    const double start = now();
    work();
    return now() - start;
}

/// The median time of `count` calls after two uncounted ones.
template <typename Work>
double median(int count, Work&& work) {
    work();
    work();
    std::vector<double> times;
    times.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) times.push_back(once(work));
    std::nth_element(times.begin(), times.begin() + count / 2, times.end());
    return times[static_cast<std::size_t>(count / 2)];
}

inline void report(const char* key, double value) {
    std::printf("%s %.3f\n", key, value);
}

[[noreturn]] inline void fail(const std::string& message) {
    std::fprintf(stderr, "%s\n", message.c_str());
    std::exit(2);
}

inline std::string readFile(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    if (!file) fail("cannot read " + name);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeFile(const std::string& name, std::string_view text) {
    std::FILE* file = std::fopen(name.c_str(), "wb");
    if (!file || std::fwrite(text.data(), 1, text.size(), file) != text.size() ||
        std::fclose(file) != 0) {
        fail("cannot write " + name);
    }
}

struct Variable {
    std::string name;
    std::string type;
    std::string value;
};

/// The lines "name TAB type TAB value" of a variables file.
inline std::vector<Variable> readVariables(const std::string& name) {
    std::vector<Variable> variables;
    std::ifstream file(name);
    if (!file) fail("cannot read " + name);
    for (std::string line; std::getline(file, line);) {
        const std::size_t first = line.find('\t');
        const std::size_t second = line.find('\t', first + 1);
        variables.push_back({line.substr(0, first), line.substr(first + 1, second - first - 1),
                             line.substr(second + 1)});
    }
    return variables;
}

/// A piece of a template file that is sorted by its key before it is used: "<?key NUMBER ?>TEXT".
struct Block {
    double key;
    std::string_view text;
};

inline std::vector<Block> splitBlocks(std::string_view text) {
    constexpr std::string_view cMarker = "<?key ";
    constexpr std::string_view cEnd = " ?>";
    std::vector<Block> blocks;
    std::size_t at = text.find(cMarker);
    while (at != std::string_view::npos) {
        const double key = std::strtod(text.data() + at + cMarker.size(), nullptr);
        const std::size_t start = text.find(cEnd, at) + cEnd.size();
        at = text.find(cMarker, start);
        blocks.push_back({key, text.substr(start, std::min(at, text.size()) - start)});
    }
    return blocks;
}

inline std::string sortedText(std::vector<Block> blocks) {
    std::stable_sort(blocks.begin(), blocks.end(),
                     [](const Block& a, const Block& b) { return a.key < b.key; });
    std::string text;
    for (const Block& block : blocks) text.append(block.text);
    return text;
}

/// Names and the order of look-ups for the rows about large variable tables.
inline std::vector<std::string> variableNames(int count) {
    std::vector<std::string> names;
    char name[32];
    for (int i = 0; i < count; ++i) {
        std::snprintf(name, sizeof name, "Scale_%06d", i);
        names.emplace_back(name);
    }
    return names;
}

inline std::vector<std::uint32_t> lookupOrder(int variables, int lookups) {
    std::vector<std::uint32_t> order;
    std::uint64_t state = 12345;
    for (int i = 0; i < lookups; ++i) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        order.push_back(
            static_cast<std::uint32_t>((state >> 33) % static_cast<unsigned>(variables)));
    }
    return order;
}

/// A sum over an output, by which the outputs of two programs are compared.
inline double checksum(std::string_view text) {
    std::uint32_t hash = 2166136261U;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash;
}

/// One thing that a program can be asked to measure, by its name and so many arguments.
struct Mode {
    const char* name;
    int arguments;
    int (*run)(char** arguments);
};

/// Runs the mode that the command line asks for; returns the exit code.
template <std::size_t N>
int runMode(const Mode (&modes)[N], int argc, char** argv) {
    for (const Mode& mode : modes) {
        if (argc == mode.arguments + 2 && std::string_view(argv[1]) == mode.name) {
            return mode.run(argv + 2);
        }
    }
    return 2;
}

}  // namespace timing
