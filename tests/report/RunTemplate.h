#pragma once

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

/// Runs a template over fresh variables, plain and scrambled, which must agree.
inline std::string outcomeOf(std::string_view text) {
    VarTable variables;
    const std::string plain = runTemplate(text, variables).Outcome();
    VarTable again;
    const std::string other =
        runTemplate(scrambled(std::string(text)), again, nullptr, 1).Outcome();
    return plain == other ? plain : "plain: " + plain + " scrambled: " + other;
}

}  // namespace tessalink::test
