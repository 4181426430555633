#pragma once

#include <QString>
#include <cstddef>

#include "platform/files/WholeFile.h"
#include "questionnaire/RespondentReports.h"

namespace tessalink::desk {

/// A file that cases are written into: whole or not at all, for its owner alone to read unless it
/// replaces one. CFileException passes through.
WholeFile outputFile(const QString& path);

/// Writes a report of the person whom `reports` has, whole or not at all. ParseException,
/// InputError and CFileException pass through.
void writeReport(RespondentReports& reports, std::size_t report, const QString& path);

/// Copies a file, whole or not at all, over one that is there. Returns what is wrong and what to
/// do; empty when it was done.
QString copyWhole(const QString& from, const QString& to);

}  // namespace tessalink::desk
