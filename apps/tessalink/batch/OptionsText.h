#pragma once

#include <string>

#include "apps/tessalink/batch/BatchOptions.h"

namespace tessalink::cli {

/// The options that results depend on, the same for the same ones, as one would write them.
std::string optionsText(const BatchOptions& options);

}  // namespace tessalink::cli
