#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

namespace tessalink::test {

/// What a program did.
struct Finished {
    int exitCode = -1;  ///< minus the signal when one ended it
    std::string out;
    std::string err;
};

/// How a program is run.
struct Setting {
    std::string folder = ".";
    std::string input = {};
    const char* outputPath = nullptr;  ///< standard output, or null: collected in `out`
    std::size_t maxFileSize = 0;       ///< in bytes; 0: none
    bool hasFewRights = false;         ///< not those of the administrator
    int secondsOfProcessor = 60;       ///< a run that takes longer is ended
};

/// Runs a program to its end; its standard input is `input`.
Finished runProgram(const std::vector<std::string>& arguments, const Setting& setting = {});

}  // namespace tessalink::test
