#pragma once

#include <string>

#include "apps/tessalink/batch/BatchRecord.h"

namespace tessalink::cli {

/// Tells on standard error how many respondents are done, and where the failed ones are listed.
void printSummary(const BatchRecord& record, const std::string& failedPath);

/// The exit code of a run that came to its end.
int exitCodeOf(const BatchRecord& record);

}  // namespace tessalink::cli
