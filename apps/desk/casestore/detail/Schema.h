#pragma once

#include <span>
#include <string>
#include <vector>

#include "apps/desk/casestore/detail/Database.h"

// The tables of a file of cases, version by version; docs/case-files.md explains them.
namespace tessalink::desk::detail {

/// What marks a file of cases among those of SQLite ("Tlnk").
inline constexpr int cApplicationId = 0x546C6E6B;

/// The size of pages, the same in every file.
inline constexpr std::size_t cPageSize = 4096;

/// The SQL that leads from each version to the next, from the empty file on: those of this program
/// with the `further` ones behind.
std::vector<std::string> schemaSteps(std::span<const std::string> further);

/// Brings the file from its version to the last one, in one transaction.
void runSteps(Database& database, std::span<const std::string> steps);

/// What the file says: its version, and whether it is a file of cases.
int versionOf(Database& database);
bool isCaseFile(Database& database);

/// Whether the tables are those of the version, to the letter.
bool hasSchema(Database& database, std::span<const std::string> steps);

}  // namespace tessalink::desk::detail
