#pragma once

#include <string>
#include <vector>

#include "apps/tessalink/batch/RunFolder.h"

namespace tessalink::cli {

/// Makes NAME.pdf of each NAME.rtf in the folder, by LibreOffice, and NAME-page-1.png and so on of
/// that, by poppler; pages of an earlier preview go. Prints what can't be made, and why; returns
/// whether all was made.
bool makePages(const RunFolder& folder, const std::vector<std::string>& names);

}  // namespace tessalink::cli
