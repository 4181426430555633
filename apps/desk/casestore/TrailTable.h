#pragma once

#include <optional>

#include "apps/desk/casestore/CaseStore.h"

class CFile;

namespace tessalink::desk {

/// An act as tables and the file name it: "answer", "second answer", "questionnaire" ...
const char* nameOf(TrailAct act);

/// Writes the trail of a case, or of all, as CSV (RFC 4180, UTF-8): number, case, when (UTC, ISO
/// 8601), account, initials, act, name, from, to. What spreadsheets would run has an apostrophe
/// before it. CaseStoreError and CFileException pass through.
void writeTrail(CaseStore& store, std::optional<CaseId> id, CFile& output);

}  // namespace tessalink::desk
