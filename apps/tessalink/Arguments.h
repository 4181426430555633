#pragma once

#include <CLI/CLI.hpp>

#include "apps/tessalink/Commands.h"

// What several commands have in common on the command line.
namespace tessalink::cli {

inline constexpr const char* cTemplateText = "a report template; - reads standard input";
inline constexpr const char* cIncludeFolderText =
    "the folder of the included templates, PART.DAT scrambled or else PART.rtf plain (default: the "
    "folder of TEMPLATE)";
inline constexpr const char* cTextAlternativeText =
    "pictures of graphs say what they show, for those who can't see them";
inline constexpr const char* cGraphsText = "graphs in JSON, in UTF-8; - reads standard input";

/// How a template is stored.
void addStorage(CLI::App& command, Storage& storage);
/// The encoding of the variables file that the option names.
void addEncoding(CLI::App& command, VariablesSource& source, CLI::Option* file);
/// How reports are made of a template: includes, graphs, pictures, and how it is stored.
void addReportMaking(CLI::App& command, ReportOptions& options);

}  // namespace tessalink::cli
