#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "core/BufferedFile.h"
#include "platform/files/CMemFile.h"
#include "report/FctTable.h"
#include "report/FileParser.h"
#include "report/VarTable.h"

namespace tessalink::test {

inline std::string scrambled(std::string text) {
    scramble(text.data(), text.size());
    return text;
}

/// What a run of a template gave.
struct Run {
    int result = 0;
    std::string output;
    ParseException error;

    /// The output of a good run, the message of a bad one.
    std::string Outcome() const { return result ? output : error.what(); }
};

inline Run runTemplate(std::string_view text, VarTable& variables, FctTable* functions = nullptr,
                       int isScrambled = 0) {
    Run run;
    CMemFile file(text);
    file.SetFilePath("test.rtf");
    CMemFile output;
    if (functions) {
        functions->Attach(&output);
        FileParser parser(file, output, variables, *functions, isScrambled);
        run.result = parser.Parse(&run.error);
    } else {
        FileParser parser(file, output, variables, isScrambled);
        run.result = parser.Parse(&run.error);
    }
    run.output = std::string(output.View());
    return run;
}

/// Runs a template over fresh variables: plain, scrambled, and behind so much text that a block of
/// the reader ends at each of its first bytes in turn. All runs must agree.
inline std::string outcomeOf(std::string_view text) {
    constexpr std::size_t seams = 200;
    const auto outcome = [](std::string_view content, int isScrambled) {
        VarTable variables;
        return runTemplate(content, variables, nullptr, isScrambled);
    };
    const Run plain = outcome(text, 0);
    for (std::size_t k = 0; k <= std::min(text.size(), seams); ++k) {
        const std::string before(BufferedFile::cBlockSize - 2 - k, 'x');
        const std::string content = scrambled(before + "@@" + std::string(text));
        const Run other = k == 0 ? outcome(scrambled(std::string(text)), 1) : outcome(content, 1);
        const std::string expected = (k == 0 ? "" : before + "@") + plain.output;
        if (other.result != plain.result || other.output != expected ||
            std::string_view(other.error.what()) != plain.error.what()) {
            return "plain: " + plain.Outcome() + ", cut at " + std::to_string(k) + ": " +
                   other.Outcome();
        }
    }
    return plain.Outcome();
}

}  // namespace tessalink::test
