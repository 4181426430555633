#pragma once

#include <functional>

#include "apps/tessalink/preview/PreviewOptions.h"

namespace CLI {
class App;
}

namespace tessalink::cli {

/// Adds the command `preview`, which makes `command` what is to be run. All must outlive the app.
void addPreview(CLI::App& app, PreviewOptions& options, std::function<int()>& command);

}  // namespace tessalink::cli
