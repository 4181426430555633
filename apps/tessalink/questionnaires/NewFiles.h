#pragma once

#include <array>
#include <string_view>

namespace tessalink::cli {

/// A file of the questionnaire to start from.
struct NewFile {
    const char* name;
    std::string_view text;
};

inline constexpr std::size_t cNewFileCount = 6;
/// The files of the folder `new`, which the build puts into the program.
extern const std::array<NewFile, cNewFileCount> cNewFiles;

}  // namespace tessalink::cli
